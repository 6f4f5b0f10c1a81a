unit BarcodeUnit;

// A form with the barcode control. It is to be read: the project's tests do not compile or run it.
//
// The unit QXControls_TLB comes from the type library: Component, Import Component.

interface

uses
  Classes, Controls, Dialogs, Forms, SysUtils, QXControls_TLB;

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
  public
    constructor Create(AOwner: TComponent); override;
    procedure Upload;
    procedure Download;
  end;

implementation

constructor TBarcodeForm.Create(AOwner: TComponent);
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
  FBarcode.Keyboard := FKeyboard.DefaultInterface;
  FBarcode.LayoutSource := FLayout.DefaultInterface;
  FBarcode.PrefSource := FSettings.DefaultInterface;
  FBarcode.ConfigID := MODULE_BARCODE_CONFIG;
  Upload;
end;

// The answers are given by reference.
procedure TBarcodeForm.EditHeader(ASender: TObject; const sCurrSeq: WideString;
  var fCancelEdit: WordBool; var sNewSeq: WideString);
begin
  fCancelEdit := not FSequencer.ShowSequenceEditor(0, sCurrSeq, sNewSeq, 32);
end;

procedure TBarcodeForm.Upload;
begin
  FKeyboard.DataTransferPrepare;
  FBarcode.PrepareDataUpload(True);
  if FKeyboard.Upload = 0 then
    FBarcode.DataUpload(True);
  FKeyboard.DataTransferFixUp;
end;

procedure TBarcodeForm.Download;
begin
  FKeyboard.DataTransferPrepare;
  FBarcode.DataDownload(True);
  FBarcode.PrepareDataDownload(True);
  if FKeyboard.Download <> 0 then
    ShowMessage('The keyboard could not be written.');
  FKeyboard.DataTransferFixUp;
end;

end.
