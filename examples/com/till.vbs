' Prepares a keyboard's magnetic reader for a till: identifies the keyboard, uploads the settings,
' sets a header for the second track, downloads the settings, and reads them back.
'
'   cscript //nologo till.vbs
'
' The exit status is 0 if the keyboard holds the settings.
Option Explicit

Const MODULE_KEYBOARD = 0
Const MODULE_MAGNET_CONFIG = 1
Const MODULE_MAGNET_HEADERS = 4

' The events of the start-up, in order.
Sub keyboard_InitDriver() : WScript.Echo "opening the driver" : End Sub
Sub keyboard_InitConfigurationTable() : WScript.Echo "reading the directory" : End Sub
Sub keyboard_InitKeyboardNamingOK()
    WScript.Echo "keyboard " & keyboard.Keyboard & ", program " & keyboard.Program
End Sub
Sub keyboard_InitDriverFailed(lErrID) : WScript.Echo "the driver reports error " & lErrID : End Sub

Dim keyboard, layout, settings
Set keyboard = CreateObject("QXControls.QXKeyboardAccess")
Set layout = CreateObject("QXControls.QXKeyboardLayoutData")
Set settings = CreateObject("QXControls.QXProgSettings")

' Some script hosts other than cscript cannot connect events; everything else works the same.
Sub HearKeyboard()
    On Error Resume Next
    WScript.ConnectObject keyboard, "keyboard_"
    If Err.Number <> 0 Then WScript.Echo "this script host connects no events"
End Sub

Function NewControl(name, id)
    Set NewControl = CreateObject("QXControls." & name)
    Set NewControl.Keyboard = keyboard
    Set NewControl.LayoutSource = layout
    Set NewControl.PrefSource = settings
    NewControl.ConfigID = id
End Function

Function Uploaded(controls)
    Dim control
    keyboard.DataTransferPrepare
    For Each control In controls : control.PrepareDataUpload True : Next
    Uploaded = keyboard.Upload() = 0
    If Uploaded Then
        For Each control In controls : control.DataUpload True : Next
    End If
    keyboard.DataTransferFixUp
End Function

Function Downloaded(controls)
    Dim control
    keyboard.DataTransferPrepare
    For Each control In controls
        control.DataDownload True
        control.PrepareDataDownload True
    Next
    Downloaded = keyboard.Download() = 0
    keyboard.DataTransferFixUp
End Function

' Whether the open keyboard now has the header.
Function HeaderWritten()
    Dim magnet, again, controls
    HeaderWritten = False
    If Not keyboard.HasItem(MODULE_MAGNET_HEADERS) Then
        WScript.Echo "the keyboard has no magnetic reader"
        Exit Function
    End If
    Set magnet = NewControl("QXMagnetCard", MODULE_MAGNET_CONFIG)
    controls = Array(NewControl("QXCommonKeyboard", MODULE_KEYBOARD), magnet)
    If Not Uploaded(controls) Then Exit Function
    WScript.Echo "track 2 had the header """ & magnet.Track2.Header.KeyString & """"

    magnet.Track2.Header.KeyString = " 30158" ' press key 30, release it (30 + 128)
    magnet.Track2.HeaderEnabled = True
    If Not Downloaded(controls) Then Exit Function

    Set again = NewControl("QXMagnetCard", MODULE_MAGNET_CONFIG)
    If Not Uploaded(Array(again)) Then Exit Function
    WScript.Echo "track 2 has the header """ & again.Track2.Header.KeyString & """"
    HeaderWritten = again.Track2.HeaderEnabled And again.Track2.Header.KeyString = " 30158"
End Function

' Whether the keyboard holds the settings.
Function Prepared()
    Prepared = False
    settings.Load
    If Not keyboard.Init() Then Exit Function
    Prepared = HeaderWritten()
    keyboard.Done ' gives the user the layer keys back
End Function

HearKeyboard
If Prepared() Then
    WScript.Echo "done"
    WScript.Quit 0
Else
    WScript.Echo "The keyboard was not prepared."
    WScript.Quit 1
End If
