// A Windows Forms window with the barcode control. It is to be read: the project's tests do not
// compile or run it.
//
// The interop assemblies come from the type library: "aximp QXControls.ocx" makes
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

        keyboard.DataTransferPrepare();
        barcode.PrepareDataUpload(true);
        if (keyboard.Upload() == 0)
            barcode.DataUpload(true);
        keyboard.DataTransferFixUp();
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
