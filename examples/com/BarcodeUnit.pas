unit BarcodeUnit;

// A form with the barcode control. An example to read: the project's tests do not compile or run
// it.
//
// The unit QXControls_TLB is generated from the type library: Component, Import Component.

interface

uses
  Classes, Controls, Dialogs, Forms, StdCtrls, SysUtils, QXControls_TLB;

type
  TBarcodeForm = class(TForm)
  private
    FKeyboard: TQXKeyboardAccess;
    FLayout: TQXKeyboardLayoutData;
    FSettings: TQXProgSettings;
    FSequencer: TQXSequencer;
    FBarcode: TQXBarcode;
    procedure EditHeader(ASender: TObject; const sCurrSeq: WideString;
      var fCancelEdit: WordBool; var sNewSeq: WideString);
    procedure RemoveHeader(ASender: TObject; var fRemoveIt: WordBool);
    procedure Upload;
    procedure Download(Sender: TObject);
  public
    constructor Create(AOwner: TComponent); override;
    destructor Destroy; override;
  end;

implementation

constructor TBarcodeForm.Create(AOwner: TComponent);
var
  WriteButton: TButton;
begin
  inherited CreateNew(AOwner);
  Caption := 'Barcode reader';
  FKeyboard := TQXKeyboardAccess.Create(Self);
  FLayout := TQXKeyboardLayoutData.Create(Self);
  FSettings := TQXProgSettings.Create(Self);
  FSequencer := TQXSequencer.Create(Self);
  FSettings.Load;
  FLayout.LayoutPath := ExtractFilePath(Application.ExeName) + 'layouts\';
  FLayout.OpenLayoutByName('us.qxl');
  if not FKeyboard.Init then
    raise Exception.Create('The keyboard cannot be opened.');

  FSequencer.Keyboard := FKeyboard.DefaultInterface;
  FSequencer.LayoutSource := FLayout.DefaultInterface;
  FSequencer.PrefSource := FSettings.DefaultInterface;

  FBarcode := TQXBarcode.Create(Self);
  FBarcode.Parent := Self;
  FBarcode.Align := alClient;
  FBarcode.OnEditHeader := EditHeader;
  FBarcode.OnRemoveHeader := RemoveHeader;
  FBarcode.OnRemoveTerminator := RemoveHeader;
  FBarcode.Keyboard := FKeyboard.DefaultInterface;
  FBarcode.LayoutSource := FLayout.DefaultInterface;
  FBarcode.PrefSource := FSettings.DefaultInterface;
  FBarcode.ConfigID := MODULE_BARCODE_CONFIG;
  // The other pages are labelled in the same way.
  FBarcode.SetListEntry(BP_Reader_1, 'First reader');
  FBarcode.SetListEntry(BP_Reader_2, 'Second reader');
  FBarcode.OptionHeader.Caption := 'Send a header';
  FBarcode.OptionTerminator.Caption := 'Send a terminator';
  FBarcode.ButtonEdit.Caption := 'Edit...';
  FBarcode.ButtonRemove.Caption := 'Remove';
  FBarcode.Translate;
  WriteButton := TButton.Create(Self);
  WriteButton.Parent := Self;
  WriteButton.Align := alBottom;
  WriteButton.Caption := 'Write to the keyboard';
  WriteButton.OnClick := Download;
  Upload;
end;

destructor TBarcodeForm.Destroy;
begin
  if FKeyboard <> nil then
    FKeyboard.Done; // returns the layer keys to the user
  inherited;
end;

// The answers are given by reference.
procedure TBarcodeForm.EditHeader(ASender: TObject; const sCurrSeq: WideString;
  var fCancelEdit: WordBool; var sNewSeq: WideString);
begin
  fCancelEdit := not FSequencer.ShowSequenceEditor(0, sCurrSeq, sNewSeq, 32);
end;

procedure TBarcodeForm.RemoveHeader(ASender: TObject; var fRemoveIt: WordBool);
begin
  fRemoveIt := MessageDlg('Remove it?', mtConfirmation, [mbYes, mbNo], 0) = mrYes;
end;

procedure TBarcodeForm.Upload;
begin
  FKeyboard.DataTransferPrepare;
  FBarcode.PrepareDataUpload(True);
  if FKeyboard.Upload = 0 then
    FBarcode.DataUpload(True);
  FKeyboard.DataTransferFixUp;
end;

procedure TBarcodeForm.Download(Sender: TObject);
begin
  FKeyboard.DataTransferPrepare;
  FBarcode.DataDownload(True);
  FBarcode.PrepareDataDownload(True);
  if FKeyboard.Download = 0 then
    FBarcode.DataChanged := False
  else
    ShowMessage('The keyboard could not be written.');
  FKeyboard.DataTransferFixUp;
end;

end.
