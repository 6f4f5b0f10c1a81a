// A Windows Forms window with the barcode control. An example to read: the project's tests do not
// compile or run it.
//
// The interop assemblies are generated from the type library: "aximp QXControls.ocx" creates
// AxQXControls.dll (the controls) and QXControls.dll (the classes).
using System;
using System.Windows.Forms;
using AxQXControls;
using QXControls;

public class BarcodeForm : Form
{
    private readonly QXKeyboardAccess keyboard = new QXKeyboardAccess();
    private readonly QXKeyboardLayoutData layout = new QXKeyboardLayoutData();
    private readonly QXProgSettings settings = new QXProgSettings();
    private readonly QXSequencer sequencer = new QXSequencer();
    private readonly AxQXBarcode barcode = new AxQXBarcode();

    public BarcodeForm()
    {
        Text = "Barcode reader";
        ((System.ComponentModel.ISupportInitialize)barcode).BeginInit();
        barcode.Dock = DockStyle.Fill;
        Controls.Add(barcode);
        ((System.ComponentModel.ISupportInitialize)barcode).EndInit();
        barcode.EditHeader += OnEditHeader;
        barcode.RemoveHeader += (sender, e) => e.fRemoveIt = IsSure("Remove the header?");
        barcode.RemoveTerminator += (sender, e) => e.fRemoveIt = IsSure("Remove the terminator?");
        var write = new Button { Text = "Write to the keyboard", Dock = DockStyle.Bottom };
        write.Click += (sender, e) => Download();
        Controls.Add(write);
    }

    protected override void OnLoad(EventArgs e)
    {
        base.OnLoad(e);
        settings.Load();
        layout.LayoutPath = AppDomain.CurrentDomain.BaseDirectory + "layouts\\";
        layout.OpenLayoutByName("us.qxl");
        if (!keyboard.Init())
        {
            MessageBox.Show(this, "The keyboard cannot be opened.");
            Close();
            return;
        }
        sequencer.Keyboard = keyboard;
        sequencer.LayoutSource = layout;
        sequencer.PrefSource = settings;
        barcode.Keyboard = keyboard;
        barcode.LayoutSource = layout;
        barcode.PrefSource = settings;
        barcode.ConfigID = KeyboardModuleIDs.MODULE_BARCODE_CONFIG;
        // The other pages are labelled in the same way.
        barcode.SetListEntry(BarcodePage.BP_Reader_1, "First reader");
        barcode.SetListEntry(BarcodePage.BP_Reader_2, "Second reader");
        barcode.OptionHeader.Caption = "Send a header";
        barcode.OptionTerminator.Caption = "Send a terminator";
        barcode.ButtonEdit.Caption = "Edit...";
        barcode.ButtonRemove.Caption = "Remove";
        barcode.Translate();
        Upload();
    }

    protected override void OnFormClosed(FormClosedEventArgs e)
    {
        keyboard.Done(); // returns the layer keys to the user
        base.OnFormClosed(e);
    }

    private void Upload()
    {
        keyboard.DataTransferPrepare();
        barcode.PrepareDataUpload(true);
        if (keyboard.Upload() == 0)
            barcode.DataUpload(true);
        keyboard.DataTransferFixUp();
    }

    private void Download()
    {
        keyboard.DataTransferPrepare();
        barcode.DataDownload(true);
        barcode.PrepareDataDownload(true);
        if (keyboard.Download() == 0)
            barcode.DataChanged = false;
        else
            MessageBox.Show(this, "The keyboard could not be written.");
        keyboard.DataTransferFixUp();
    }

    private bool IsSure(string question)
    {
        return MessageBox.Show(this, question, Text, MessageBoxButtons.YesNo) == DialogResult.Yes;
    }

    // The answers are fields of the event's argument, which the control reads afterwards.
    private void OnEditHeader(object sender, __QXBarcode_EditHeaderEvent e)
    {
        e.fCancelEdit = !sequencer.ShowSequenceEditor(0, e.sCurrSeq, ref e.sNewSeq, 32);
    }

    [STAThread] // the controls live in single-threaded apartments
    public static void Main()
    {
        Application.EnableVisualStyles();
        Application.Run(new BarcodeForm());
    }
}
