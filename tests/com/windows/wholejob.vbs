' A host's whole job: identify the keyboard, upload, edit, download, and upload again to check.
' wholejob.json is the same work as a document of qxconf.
Option Explicit

Dim stages
Sub keyboard_InitDriver() : stages = stages & "1 " : End Sub
Sub keyboard_InitDriverWithDelta(lDelta) : stages = stages & "2:" & lDelta & " " : End Sub
Sub keyboard_InitDriverOK() : stages = stages & "3 " : End Sub
Sub keyboard_InitConfigurationTable() : stages = stages & "5 " : End Sub
Sub keyboard_InitConfigurationTableOK() : stages = stages & "6 " : End Sub
Sub keyboard_InitKeyboardNaming() : stages = stages & "8 " : End Sub
Sub keyboard_InitKeyboardNamingOK() : stages = stages & "9 " : End Sub
Sub keyboard_InitFailed(lErrID) : stages = stages & "failed:" & lErrID : End Sub

Dim helped : helped = 0
Sub sequencer_UserNeedsHelp() : helped = helped + 1 : End Sub

Dim failures : failures = 0
Sub Expect(what, did, expected)
    If did <> expected Then
        Host.Echo what & ": " & did & " in place of " & expected
        failures = failures + 1
    End If
End Sub

Dim keyboard, layout, settings, sequencer
Set keyboard = CreateObject("QXControls.QXKeyboardAccess")
Set layout = CreateObject("QXControls.QXKeyboardLayoutData")
Set settings = CreateObject("QXControls.QXProgSettings")
Set sequencer = CreateObject("QXControls.QXSequencer")
settings.Load
layout.LayoutPath = "layouts\"
Expect "layout", layout.OpenLayoutByName("us.qxl"), True

Host.Connect keyboard, "keyboard_"
Expect "Init", keyboard.Init(), True
Expect "stages", stages, "1 2:0 3 5 6 8 9 "
Expect "keyboard", keyboard.Keyboard, "QX-POS-FULL"
Expect "barcode reader", keyboard.FlagBarcodeReader, True
Expect "first module", keyboard.DirectoryItem(1).StartAddress, 4096
Expect "no such module", keyboard.DirectoryItem(99) Is Nothing, True
Host.Disconnect keyboard

Host.Connect sequencer, "sequencer_"
sequencer.RaiseHelp
Host.Disconnect sequencer
sequencer.RaiseHelp
Expect "help", helped, 1

Function NewControl(name, id)
    Dim control
    Set control = CreateObject("QXControls." & name)
    Set control.Keyboard = keyboard
    Set control.LayoutSource = layout
    Set control.PrefSource = settings
    control.ConfigID = id
    control.ReloadKeySettings
    Set NewControl = control
End Function

Sub Upload(controls)
    Dim control
    keyboard.DataTransferPrepare
    For Each control In controls : control.PrepareDataUpload True : Next
    Expect "upload", keyboard.Upload(), 0
    For Each control In controls : control.DataUpload True : Next
    keyboard.DataTransferFixUp
End Sub

Sub Download(controls)
    Dim control
    keyboard.DataTransferPrepare
    For Each control In controls
        control.DataDownload True
        control.PrepareDataDownload True
    Next
    Expect "download", keyboard.Download(), 0
    keyboard.DataTransferFixUp
End Sub

Dim barcode, magnet, pos
Set barcode = NewControl("QXBarcode", 2)
Set magnet = NewControl("QXMagnetCard", 1)
Set pos = NewControl("QXPos", 6)
Upload Array(barcode, magnet, pos)

barcode.BitPage(1).Flag(3).Value = True
barcode.BitPage(12).MinSize = 17
magnet.ReaderOptions.VerifyLRC.Value = False
magnet.Track2.Header.KeyString = " 30158"
magnet.Track2.TerminatorEnabled = False
Dim block
Set block = pos.PosData.Block(3)
block.AddKey 3
block.AddKey 10
block.Sequence.AddByte 31
block.Sequence.AddByte 159
Download Array(barcode, magnet, pos)

Dim again
Set again = NewControl("QXMagnetCard", 1)
Upload Array(again)
Expect "header", again.Track2.Header.KeyString, " 30158"
Expect "terminator", again.Track2.TerminatorEnabled, False

Dim memory : memory = "earlier"
Expect "read", keyboard.ReadFromMemory(memory, keyboard.GetBaseAddressForModule(1), 8), True
Expect "bytes", Len(memory), 8

' Preferences are kept for the next host.
settings.AutoSave = False
settings.ColorProg = &H8000000F
settings.PosCodePage = "C:\pages\1.bin"
settings.Save
Dim other
Set other = CreateObject("QXControls.QXProgSettings")
other.Load
Expect "AutoSave", other.AutoSave, False
Expect "AutoTestdrive", other.AutoTestdrive, True
Expect "ColorProg", other.ColorProg, &H8000000F
Expect "PosCodePage", other.PosCodePage, "C:\pages\1.bin"

' Faults of the host come with the numbers that it knows.
Sub ExpectError(number)
    Expect "error", Err.Number, number
    Err.Clear
End Sub
On Error Resume Next
magnet.Track2.Header.AddByte 70000 : ExpectError 6
magnet.Track2.Header.AddByte 1000 : ExpectError 5
pos.PosData.Block(106).AddKey 1 : ExpectError 9
Set magnet.Keyboard = layout : ExpectError 13
Set magnet.Keyboard = CreateObject("Scripting.Dictionary") : ExpectError 13
magnet.Keyboard = 5 : ExpectError 424
magnet.NoSuchMember : ExpectError 438
keyboard.MemRequestAdd 1 : ExpectError 449
keyboard.MemRequestAdd 1, 2, 3, 4 : ExpectError 450
On Error Goto 0
If failures = 0 Then
    Host.Echo "the whole job is done"
    Host.Quit 0
End If
