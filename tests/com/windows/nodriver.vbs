' A host without a driver: the start-up fails, and everything else is harmless.
Option Explicit

Dim failed
Sub keyboard_InitDriverFailed(lErrID) : failed = lErrID : End Sub

Dim keyboard
Set keyboard = CreateObject("QXControls.QXKeyboardAccess")
Host.ConnectObject keyboard, "keyboard_"
If keyboard.Init() Then
    Host.Echo "a driver was found"
ElseIf failed <> -1 Then
    Host.Echo "the start-up failed with " & failed
ElseIf keyboard.Upload() = -1 And keyboard.ReadByteFromImage(0) = 0 And Not keyboard.HasItem(2) Then
    Host.Quit 0
End If
