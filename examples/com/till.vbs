' Reads the keyboard, gives the magnetic reader's second track a header, and writes it back.
'
' Runs with cscript: cscript //nologo till.vbs
' Its events need a script host that connects them (WScript.ConnectObject); without one the script
' does the same work in silence.
Option Explicit

Sub keyboard_InitDriver() : WScript.Echo "opening the driver" : End Sub
Sub keyboard_InitConfigurationTable() : WScript.Echo "reading the directory" : End Sub
Sub keyboard_InitFailed(lErrID) : WScript.Echo "start-up failed: " & lErrID : End Sub

' The magnetic reader asks before it clears a header: answer by reference.
Sub magnet_ClearCurrentHeader(nTrackId, fCanRemoveIt)
    WScript.Echo "keeping the header of track " & nTrackId
    fCanRemoveIt = False
End Sub

Sub ConnectIfPossible(source, prefix)
    On Error Resume Next
    WScript.ConnectObject source, prefix
End Sub

Dim keyboard, layout, settings, magnet
Set keyboard = CreateObject("QXControls.QXKeyboardAccess")
Set layout = CreateObject("QXControls.QXKeyboardLayoutData")
Set settings = CreateObject("QXControls.QXProgSettings")
ConnectIfPossible keyboard, "keyboard_"

settings.Load
If Not keyboard.Init() Then
    WScript.Echo "The keyboard cannot be opened."
    WScript.Quit 1
End If
WScript.Echo "keyboard " & keyboard.Keyboard & ", program " & keyboard.Program

Set magnet = CreateObject("QXControls.QXMagnetCard")
ConnectIfPossible magnet, "magnet_"
Set magnet.Keyboard = keyboard
Set magnet.LayoutSource = layout
Set magnet.PrefSource = settings
magnet.ConfigID = 1 ' MODULE_MAGNET_CONFIG

Dim status
keyboard.DataTransferPrepare
magnet.PrepareDataUpload True
status = keyboard.Upload()
If status = 0 Then magnet.DataUpload True
keyboard.DataTransferFixUp
WScript.Echo "upload: status " & status

WScript.Echo "track 2 had the header """ & magnet.Track2.Header.KeyString & """"
magnet.Track2.Header.KeyString = " 30158" ' press key 30, release it (30 + 128)
magnet.Track2.HeaderEnabled = True

keyboard.DataTransferPrepare
magnet.DataDownload True
magnet.PrepareDataDownload True
status = keyboard.Download()
keyboard.DataTransferFixUp
WScript.Echo "download: status " & status
keyboard.Done
WScript.Echo "done"
