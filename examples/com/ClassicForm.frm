VERSION 5.00
Object = "{8D6FFDE2-7BDE-4BBA-A043-DEA500F3AA72}#1.0#0"; "QXControls.ocx"
Begin VB.Form ClassicForm
   Caption         =   "Barcode reader"
   ClientHeight    =   4200
   ClientLeft      =   60
   ClientTop       =   345
   ClientWidth     =   6600
   Begin QXControls.QXKeyboardAccess Keyboard
      Left            =   120
      Top             =   120
      _ExtentX        =   2540
      _ExtentY        =   847
   End
   Begin QXControls.QXKeyboardLayoutData Layout
      Left            =   120
      Top             =   600
      _ExtentX        =   2540
      _ExtentY        =   847
   End
   Begin QXControls.QXProgSettings Settings
      Left            =   120
      Top             =   1080
      _ExtentX        =   2540
      _ExtentY        =   847
   End
   Begin QXControls.QXSequencer Sequencer
      Left            =   120
      Top             =   1560
      _ExtentX        =   2540
      _ExtentY        =   847
   End
   Begin QXControls.QXBarcode Barcode
      Height          =   3375
      Left            =   120
      TabIndex        =   0
      Top             =   120
      Width           =   6375
      _ExtentX        =   11245
      _ExtentY        =   5953
   End
   Begin VB.CommandButton cmdDownload
      Caption         =   "Write to the keyboard"
      Height          =   375
      Left            =   120
      TabIndex        =   1
      Top             =   3660
      Width           =   2415
   End
End
Attribute VB_Name = "ClassicForm"
' A classic form with the barcode control. An example to read: the project's tests do not run it.
Option Explicit

Private Sub Form_Load()
    Settings.Load
    Layout.LayoutPath = App.Path & "\layouts\"
    Layout.OpenLayoutByName "us.qxl"
    If Not Keyboard.Init Then
        Unload Me
        Exit Sub
    End If
    Set Barcode.Keyboard = Keyboard
    Set Barcode.LayoutSource = Layout
    Set Barcode.PrefSource = Settings
    Barcode.ConfigID = MODULE_BARCODE_CONFIG
    ' The other pages are labelled in the same way.
    Barcode.SetListEntry BP_Reader_1, "First reader"
    Barcode.SetListEntry BP_Reader_2, "Second reader"
    Barcode.OptionHeader.Caption = "Send a header"
    Barcode.OptionTerminator.Caption = "Send a terminator"
    Barcode.ButtonEdit.Caption = "Edit..."
    Barcode.ButtonRemove.Caption = "Remove"
    Barcode.Translate
    Set Sequencer.Keyboard = Keyboard
    Set Sequencer.LayoutSource = Layout
    Set Sequencer.PrefSource = Settings

    Keyboard.DataTransferPrepare
    Barcode.PrepareDataUpload True
    If Keyboard.Upload = 0 Then Barcode.DataUpload True
    Keyboard.DataTransferFixUp
End Sub

Private Sub Form_Unload(Cancel As Integer)
    Keyboard.Done ' gives the user the layer keys back
End Sub

' The user wants to edit a header or a terminator: the answers are given by reference.
Private Sub Barcode_EditHeader(ByVal sCurrSeq As String, fCancelEdit As Boolean, sNewSeq As String)
    fCancelEdit = Not Sequencer.ShowSequenceEditor(0, sCurrSeq, sNewSeq, 32)
End Sub

Private Sub Barcode_RemoveHeader(fRemoveIt As Boolean)
    fRemoveIt = (MsgBox("Remove the header?", vbYesNo) = vbYes)
End Sub

Private Sub Barcode_RemoveTerminator(fRemoveIt As Boolean)
    fRemoveIt = (MsgBox("Remove the terminator?", vbYesNo) = vbYes)
End Sub

Private Sub Keyboard_InitDriverFailed(ByVal lErrID As Long)
    MsgBox "The keyboard cannot be opened: the driver reports error " & lErrID
End Sub

Private Sub cmdDownload_Click()
    Keyboard.DataTransferPrepare
    Barcode.DataDownload True
    Barcode.PrepareDataDownload True
    If Keyboard.Download = 0 Then Barcode.DataChanged = False
    Keyboard.DataTransferFixUp
End Sub
