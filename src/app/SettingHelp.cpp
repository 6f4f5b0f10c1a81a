#include "app/Help.h"

#include <QCoreApplication>
#include <QWidget>

#include <algorithm>
#include <string_view>

namespace qx::app {

namespace {

// By the name of the widget, without the number of one of several.
struct Description {
    std::string_view name;
    const char* text; // in the translations' context SettingHelp
};

constexpr Description kDescriptions[] = {
    // The keyboard and its readers.
    {"slidOutputDelay",
     QT_TRANSLATE_NOOP("SettingHelp",
                       "How long the keyboard waits between two characters. Raise it for a "
                       "program that loses characters; 0 is the fastest.")},
    {"chkMagneticOptions",
     QT_TRANSLATE_NOOP("SettingHelp", "Applies to all tracks of the magnetic card reader.")},
    {"trackList", QT_TRANSLATE_NOOP("SettingHelp", "The track whose settings are shown.")},
    {"chkEnableCurrentTrack",
     QT_TRANSLATE_NOOP("SettingHelp", "Whether the reader sends this track.")},
    {"chkUseThisHeader",
     QT_TRANSLATE_NOOP("SettingHelp",
                       "Sends the prefix before the data of this track. A prefix that is "
                       "not sent is kept.")},
    {"chkUseThisTerminator",
     QT_TRANSLATE_NOOP("SettingHelp",
                       "Sends the suffix after the data of this track. A suffix that "
                       "is not sent is kept.")},
    {"lblCurrHeader",
     QT_TRANSLATE_NOOP("SettingHelp", "The keys sent before the data of this track.")},
    {"lblCurrTerminator",
     QT_TRANSLATE_NOOP("SettingHelp", "The keys sent after the data of this track.")},
    {"minSize", QT_TRANSLATE_NOOP("SettingHelp", "Codes with fewer characters are not read.")},
    {"maxSize", QT_TRANSLATE_NOOP("SettingHelp", "Codes with more characters are not read.")},
    {"flags",
     QT_TRANSLATE_NOOP("SettingHelp",
                       "An option of the barcode reader; the reader's manual describes it.")},
    {"barcodeTabs",
     QT_TRANSLATE_NOOP("SettingHelp", "The kinds of code, and the keys that each reader sends.")},
    {"chkReader",
     QT_TRANSLATE_NOOP("SettingHelp",
                       "Sends these keys with each code of this reader. Keys that are not sent "
                       "are kept.")},
    {"lblReader", QT_TRANSLATE_NOOP("SettingHelp", "The keys sent with each code of this reader.")},
    {"chkShowDetails",
     QT_TRANSLATE_NOOP("SettingHelp",
                       "Shows the release of each key in sequences, marked with ^.")},
    // Keys.
    {"keyboardPicture",
     QT_TRANSLATE_NOOP("SettingHelp",
                       "The keyboard with its programmed keys. Choose a key to open the page where "
                       "it is programmed.")},
    {"layoutDisplay",
     QT_TRANSLATE_NOOP("SettingHelp",
                       "Select a key to program it. Shift, Ctrl or a frame drawn with the "
                       "mouse selects several.")},
    {"funcKeys",
     QT_TRANSLATE_NOOP("SettingHelp",
                       "The function keys of the layer shown. Select one to program it.")},
    {"posDisplay",
     QT_TRANSLATE_NOOP("SettingHelp",
                       "Select a key or block to program it; several keys can be joined to a "
                       "block.")},
    {"layers", QT_TRANSLATE_NOOP(
                   "SettingHelp",
                   "The ten layers of function keys. The number in brackets counts the programmed "
                   "keys; a dot marks a layer with changes that are not yet written to the "
                   "keyboard.")},
    {"layerName",
     QT_TRANSLATE_NOOP("SettingHelp",
                       "A name for the layer, kept in the document. The keyboard does not store "
                       "it.")},
    {"lblCurrSeq", QT_TRANSLATE_NOOP("SettingHelp", "The keys that the selected key sends.")},
    {"txtSymbolDesc",
     QT_TRANSLATE_NOOP("SettingHelp",
                       "A description of the function key, at most 64 characters. The "
                       "keyboard stores it.")},
    {"keys",
     QT_TRANSLATE_NOOP("SettingHelp",
                       "The keys that the selected key sends, in order. The arrow keys move the "
                       "caret, in a text by character; Delete and Backspace remove, Ctrl with an "
                       "arrow key moves.")},
    {"typedText",
     QT_TRANSLATE_NOOP("SettingHelp",
                       "Text to type: Enter adds the keys that type it, Ctrl+Enter also adds "
                       "Enter.")},
    {"searchKey",
     QT_TRANSLATE_NOOP("SettingHelp", "Finds keys of the layout by their label, name or number.")},
    {"keyGroups", QT_TRANSLATE_NOOP("SettingHelp", "Keys to add to the sequence.")},
    {"hold", QT_TRANSLATE_NOOP("SettingHelp", "Holds this key while the next one is pressed.")},
    {"record",
     QT_TRANSLATE_NOOP("SettingHelp",
                       "Records the keys that are pressed on this PC's keyboard. Pause stops "
                       "it.")},
    {"recordDevice",
     QT_TRANSLATE_NOOP("SettingHelp",
                       "Records the keys that are pressed on the connected keyboard. It types "
                       "nothing until the recording stops.")},
    {"receivedCodes",
     QT_TRANSLATE_NOOP("SettingHelp",
                       "Each press and release that the PC receives, in order; ^ marks a "
                       "release. If another module's sequence is sent instead, that one.")},
    {"seriesText", QT_TRANSLATE_NOOP("SettingHelp", "The text before the number of each key.")},
    {"seriesFirst",
     QT_TRANSLATE_NOOP("SettingHelp",
                       "The number of the first key; each further key has the next one.")},
    {"seriesDigits",
     QT_TRANSLATE_NOOP("SettingHelp", "The least number of digits, filled with zeros.")},
    {"seriesEnter", QT_TRANSLATE_NOOP("SettingHelp", "Adds Enter after each text.")},
    // Tools.
    {"quickFind",
     QT_TRANSLATE_NOOP("SettingHelp",
                       "Finds actions, pages, keys, settings and preferences by name.")},
    {"pages", QT_TRANSLATE_NOOP("SettingHelp",
                                "The pages of this window; a number counts the programmed keys.")},
    {"backups",
     QT_TRANSLATE_NOOP("SettingHelp", "Keyboard contents saved before each write, newest first.")},
    {"backupChanges",
     QT_TRANSLATE_NOOP("SettingHelp",
                       "The settings of the chosen backup that differ from the document.")},
    {"directory",
     QT_TRANSLATE_NOOP("SettingHelp",
                       "The modules of the keyboard, and where each is in its memory.")},
    {"testDriveKeys",
     QT_TRANSLATE_NOOP("SettingHelp", "Click a key to press it on the copy of the keyboard.")},
    {"tryDocument",
     QT_TRANSLATE_NOOP("SettingHelp",
                       "The copy has what the keyboard would hold after writing the document.")},
    {"tryKeyboard", QT_TRANSLATE_NOOP("SettingHelp", "The copy has what the keyboard holds now.")},
    {"testLayers", QT_TRANSLATE_NOOP("SettingHelp", "The layer of the function keys below.")},
    {"testFunctionKeys",
     QT_TRANSLATE_NOOP("SettingHelp", "Click a function key to press it in the layer shown.")},
    {"track", QT_TRANSLATE_NOOP("SettingHelp", "The data of this track on the card to swipe.")},
    {"codeKind", QT_TRANSLATE_NOOP("SettingHelp", "The kind of the code to scan.")},
    {"codeData", QT_TRANSLATE_NOOP("SettingHelp", "The characters of the code to scan.")},
    {"codeReader", QT_TRANSLATE_NOOP("SettingHelp", "The reader that scans the code.")},
    {"received", QT_TRANSLATE_NOOP("SettingHelp", "The codes that the PC has received, in order.")},
    // Preferences.
    {"ShowStartupWizard", QT_TRANSLATE_NOOP("SettingHelp", "Asks at startup how to begin.")},
    {"ShowStartupAction",
     QT_TRANSLATE_NOOP("SettingHelp", "How the program starts, or whether it asks.")},
    {"LastDownloadFile",
     QT_TRANSLATE_NOOP("SettingHelp", "The document that was opened or saved last.")},
    {"AutoSave", QT_TRANSLATE_NOOP("SettingHelp",
                                   "Saves changes to a document that has a file, without asking.")},
    {"AutoTestdrive",
     QT_TRANSLATE_NOOP("SettingHelp",
                       "Opens the test page after writing to the simulated keyboard.")},
    {"ShowUpcodes",
     QT_TRANSLATE_NOOP("SettingHelp",
                       "Shows the release of each key in sequences, marked with ^.")},
    {"AdvancedEditor",
     QT_TRANSLATE_NOOP("SettingHelp", "Whether typing on a sequence also opens its editor.")},
    {"PreferedAppLang", QT_TRANSLATE_NOOP("SettingHelp", "The language of the program's texts.")},
    {"PreferedKeyLang",
     QT_TRANSLATE_NOOP("SettingHelp", "The labels of keys and the characters that they type, for a "
                                      "keyboard without a layout of its own.")},
    {"CommandDelta",
     QT_TRANSLATE_NOOP("SettingHelp",
                       "A number that some drivers use. It is only stored: this program does not "
                       "use it, and starts every driver with 0.")},
    {"ChipcardPort",
     QT_TRANSLATE_NOOP("SettingHelp", "The serial port of the chipcard reader, for its firmware.")},
    {"ChipcardBaudrate",
     QT_TRANSLATE_NOOP("SettingHelp", "The speed of that port, as an index of the driver.")},
    {"VerifyFirmware",
     QT_TRANSLATE_NOOP("SettingHelp",
                       "Warns of a keyboard whose firmware is older than the version below.")},
    {"VersionFirmware",
     QT_TRANSLATE_NOOP("SettingHelp", "The oldest suitable firmware of a keyboard.")},
    {"KeyFontSize",
     QT_TRANSLATE_NOOP(
         "SettingHelp",
         "The smallest size of texts on keys, but never below 8 points; where there is room, "
         "they are larger.")},
    {"appearance",
     QT_TRANSLATE_NOOP("SettingHelp",
                       "Whether all windows are light or dark. Keys with the light or the dark "
                       "set of colours follow.")},
    {"colourSet", QT_TRANSLATE_NOOP("SettingHelp", "Sets all colours of keys at once.")},
    {"ColorProg", QT_TRANSLATE_NOOP("SettingHelp", "The colour of keys that have a sequence.")},
    {"ColorEmpty",
     QT_TRANSLATE_NOOP("SettingHelp",
                       "The colour of keys that can be programmed and have no sequence.")},
    {"ColorCurr", QT_TRANSLATE_NOOP("SettingHelp", "The colour of the selected key.")},
    {"ColorUnused",
     QT_TRANSLATE_NOOP("SettingHelp", "The colour of keys that cannot be programmed.")},
    {"PosCodePage",
     QT_TRANSLATE_NOOP("SettingHelp", "The file with which the keyboard's code page is compared.")},
    {"POSColorBlock", QT_TRANSLATE_NOOP("SettingHelp", "The colour of the keys of this block.")},
    {"POSColorCurrent", QT_TRANSLATE_NOOP("SettingHelp", "The colour of the selected block.")},
    {"POSColorUnused",
     QT_TRANSLATE_NOOP("SettingHelp", "The colour of keys that are in no block.")},
};

// "Code39.flags.1" is described by "flags", "POSColorBlock3" and "hold_58" without the number.
QString KindOf(const QString& name) {
    QString kind = name.section(u'.', 1, 1);
    if (kind.isEmpty())
        kind = name;
    while (!kind.isEmpty() && (kind.back().isDigit() || kind.back() == u'_'))
        kind.chop(1);
    return kind;
}

} // namespace

void DescribeSettings(QWidget& page) {
    for (QWidget* widget : page.findChildren<QWidget*>()) {
        const std::string kind = KindOf(widget->objectName()).toStdString();
        const auto* found = std::ranges::find(kDescriptions, kind, &Description::name);
        if (found != std::end(kDescriptions))
            widget->setWhatsThis(QCoreApplication::translate("SettingHelp", found->text));
    }
}

} // namespace qx::app
