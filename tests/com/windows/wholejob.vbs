' A host's complete job: identify the keyboard, upload, edit every module, download, and upload
' again to check. The user works on forms, and the host answers the controls' events. wholejob.json
' is the same job as a document for qxconf.
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

Host.ConnectObject keyboard, "keyboard_"
Expect "Init", keyboard.Init(), True
Expect "stages", stages, "1 2:0 3 5 6 8 9 "
Expect "keyboard", keyboard.Keyboard, "QX-POS-FULL"
Expect "barcode reader", keyboard.FlagBarcodeReader, True
Expect "first module", keyboard.DirectoryItem(1).StartAddress, 4096
Expect "no such module", keyboard.DirectoryItem(99) Is Nothing, True
Host.DisconnectObject keyboard

Host.ConnectObject sequencer, "sequencer_"
sequencer.RaiseHelp
Host.DisconnectObject sequencer
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
    keyboard.MemRequestAdd 255, 70000, 30720 ' the descriptions, which no control queues
    Expect "download", keyboard.Download(), 0
    keyboard.DataTransferFixUp
End Sub

Dim common, barcode, magnet, free, layered, pos, controls, control
Set common = NewControl("QXCommonKeyboard", 0)
Set barcode = NewControl("QXBarcode", 2)
Set magnet = NewControl("QXMagnetCard", 1)
Set free = NewControl("QXFreeProgKeys", 5)
Set layered = NewControl("QXLayeredFuncKeys", 9)
Set pos = NewControl("QXPos", 6)
controls = Array(common, barcode, magnet, free, layered, pos)

' The requests of the controls, and the host's answers.
Dim asked
Sub barcode_EditHeader(sCurrSeq, fCancelEdit, sNewSeq)
    asked = asked & "barcode " & fCancelEdit & ";"
    sNewSeq = " 30158"
    fCancelEdit = False
End Sub
Sub barcode_RemoveHeader(fRemoveIt) : asked = asked & "remove " & fRemoveIt & ";" : End Sub
Sub magnet_EditCurrentHeader(nTrackId, sInSequence, fCancelAction, sOutSequence)
    asked = asked & "track " & nTrackId & " " & fCancelAction & ";"
    sOutSequence = " 31159"
End Sub
Sub magnet_ClearCurrentHeader(nTrackId, fCanRemoveIt)
    asked = asked & "clear " & nTrackId & " " & fCanRemoveIt & ";"
    fCanRemoveIt = False
End Sub
Sub free_EditSequence(nPosCode, sOutSeq, fCancelEdit, sInSeq)
    asked = asked & "key " & nPosCode & " " & fCancelEdit & ";"
    sInSeq = " 32160"
End Sub
Sub layered_EditLayeredFuncKey(sCurrSeq, fCancelEdit, sNewSeq)
    asked = asked & "function key " & fCancelEdit & ";"
    If layered.DataChanged Then sNewSeq = " 34162" Else sNewSeq = " 33161"
    fCancelEdit = False
End Sub
Sub pos_POSEditorRequested(fCancelEdit)
    Dim block
    asked = asked & "blocks " & fCancelEdit & ";"
    Set block = pos.PosData.Block(3)
    block.AddKey 3
    block.AddKey 10
    block.Sequence.AddByte 31
    block.Sequence.AddByte 159
    fCancelEdit = False
End Sub
Sub pos_RemoveAllBlocks(fCancelRemoving) : asked = asked & "no blocks " & fCancelRemoving & ";" : End Sub

barcode.SetListEntry 1, "EAN"
barcode.SetListEntry 14, "First reader"
barcode.BitPage(1).OptionNum = 6
barcode.BitPage(1).Flag(3).Caption = "Two digits"
barcode.ButtonEdit.Caption = "Edit"
barcode.ButtonRemove.Caption = "Remove"
barcode.OptionTerminator.Caption = "Send terminator"
magnet.Track2.Caption = "Second track"
magnet.Captions.CreateHeader.Caption = "Edit header"
magnet.Captions.RemoveHeader.Caption = "Clear header"
magnet.Captions.UseThisTerminator = "Send terminator"
magnet.ReaderOptions.VerifyLRC.Caption = "Verify LRC"
free.ButtonEdit.Caption = "Edit"
layered.ButtonEdit.Caption = "Edit"
layered.ButtonLayerInc.Caption = "Next layer"
pos.ButtonEdit.Caption = "Edit blocks"
pos.ButtonCleanAll.Caption = "Remove all"
Upload controls
For Each control In controls
    control.DefaultValues ' whatever the keyboard held: the user presses check boxes
    control.Translate
    Host.Show control
Next
magnet.RescanTracks
Host.ConnectObject barcode, "barcode_"
Host.ConnectObject magnet, "magnet_"
Host.ConnectObject free, "free_"
Host.ConnectObject layered, "layered_"
Host.ConnectObject pos, "pos_"

Host.Slide common, 11
Host.Choose barcode, "EAN"
Host.Press barcode, "Two digits"
Host.Choose barcode, "First reader"
Host.Press barcode, "Edit"
Host.Press barcode, "Remove" ' is asked, and refused
Host.Press barcode, "Send terminator"
barcode.BitPage(12).MinSize = 17
Host.Press magnet, "Verify LRC"
Host.Choose magnet, "Second track"
Host.Press magnet, "Edit header"
Host.Press magnet, "Clear header"
Host.Press magnet, "Send terminator"
Host.Pick free, "Key 75 (Ins)"
Host.Press free, "Edit"
Host.Pick layered, "F3"
Host.Press layered, "Edit"
Host.Type layered, "Cash"
Host.Press layered, "Next layer"
Host.Pick layered, "F1"
Host.Press layered, "Edit"
Host.Press pos, "Edit blocks"
Host.Press pos, "Remove all"
Expect "asked", asked, "barcode True;remove False;track 2 False;clear 2 True;key 75 False;" & _
    "function key True;function key True;blocks True;no blocks True;"
Download controls
For Each control In controls
    Host.DisconnectObject control
    Host.Hide control
Next

Dim again
Set again = NewControl("QXMagnetCard", 1)
Upload Array(again)
Expect "header", again.Track2.Header.KeyString, " 31159"
Expect "terminator", again.Track2.TerminatorEnabled, False

Dim memory : memory = "earlier"
Expect "read", keyboard.ReadFromMemory(memory, keyboard.GetBaseAddressForModule(1), 8), True
Expect "bytes", Len(memory), 8

' Preferences are saved for the next host.
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

' Errors have the numbers that the host knows.
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
keyboard.Done
If failures = 0 Then
    Host.Echo "the whole job is done"
    Host.Quit 0
End If
