#include "app/SettingWords.h"

#include <QCoreApplication>

namespace qx::app {

namespace {

// For the translators: all words of the host layer that a language has.
[[maybe_unused]] constexpr const char* kWords[] = {
    QT_TRANSLATE_NOOP("SettingWords", "keyboard"),
    QT_TRANSLATE_NOOP("SettingWords", "magnetic card"),
    QT_TRANSLATE_NOOP("SettingWords", "barcode"),
    QT_TRANSLATE_NOOP("SettingWords", "free programmable"),
    QT_TRANSLATE_NOOP("SettingWords", "function keys 4610"),
    QT_TRANSLATE_NOOP("SettingWords", "function keys 4620"),
    QT_TRANSLATE_NOOP("SettingWords", "function keys 4630"),
    QT_TRANSLATE_NOOP("SettingWords", "layered function key"),
    QT_TRANSLATE_NOOP("SettingWords", "output delay"),
    QT_TRANSLATE_NOOP("SettingWords", "send immediately"),
    QT_TRANSLATE_NOOP("SettingWords", "verify LRC"),
    QT_TRANSLATE_NOOP("SettingWords", "verify last character"),
    QT_TRANSLATE_NOOP("SettingWords", "track"),
    QT_TRANSLATE_NOOP("SettingWords", "reader"),
    QT_TRANSLATE_NOOP("SettingWords", "enabled"),
    QT_TRANSLATE_NOOP("SettingWords", "header enabled"),
    QT_TRANSLATE_NOOP("SettingWords", "header"),
    QT_TRANSLATE_NOOP("SettingWords", "terminator enabled"),
    QT_TRANSLATE_NOOP("SettingWords", "terminator"),
    QT_TRANSLATE_NOOP("SettingWords", "common settings"),
    QT_TRANSLATE_NOOP("SettingWords", "Code25 overlapped"),
    QT_TRANSLATE_NOOP("SettingWords", "Code25 industrial"),
    QT_TRANSLATE_NOOP("SettingWords", "Code25 matrix"),
    QT_TRANSLATE_NOOP("SettingWords", "minimum length"),
    QT_TRANSLATE_NOOP("SettingWords", "maximum length"),
    QT_TRANSLATE_NOOP("SettingWords", "option"),
    QT_TRANSLATE_NOOP("SettingWords", "identifier"),
    QT_TRANSLATE_NOOP("SettingWords", "layer"),
    QT_TRANSLATE_NOOP("SettingWords", "key"),
    QT_TRANSLATE_NOOP("SettingWords", "keys"),
    QT_TRANSLATE_NOOP("SettingWords", "description"),
    QT_TRANSLATE_NOOP("SettingWords", "label"),
    QT_TRANSLATE_NOOP("SettingWords", "colour"),
    QT_TRANSLATE_NOOP("SettingWords", "on"),
    QT_TRANSLATE_NOOP("SettingWords", "off"),
    QT_TRANSLATE_NOOP("SettingWords", "(empty)"),
    QT_TRANSLATE_NOOP("SettingWords", "(none)"),
    QT_TRANSLATE_NOOP("SettingWords", "section"),
    QT_TRANSLATE_NOOP("SettingWords", "(damaged)"),
    QT_TRANSLATE_NOOP("SettingWords", "(sound)"),
};

// The same for the test drive.
[[maybe_unused]] constexpr const char* kTestDriveTexts[] = {
    QT_TRANSLATE_NOOP("TestDrive", "ordinary key %1"),
    QT_TRANSLATE_NOOP("TestDrive", "free key %1"),
    QT_TRANSLATE_NOOP("TestDrive", "layer %2 key %1"),
    QT_TRANSLATE_NOOP("TestDrive", "POS block %1"),
    QT_TRANSLATE_NOOP("TestDrive", "header of track %1"),
    QT_TRANSLATE_NOOP("TestDrive", "track %1 data"),
    QT_TRANSLATE_NOOP("TestDrive", "terminator of track %1"),
    QT_TRANSLATE_NOOP("TestDrive", "header of reader %1"),
    QT_TRANSLATE_NOOP("TestDrive", "reader %1 data"),
    QT_TRANSLATE_NOOP("TestDrive", "terminator of reader %1"),
    QT_TRANSLATE_NOOP("TestDrive", "the LRC of track %1 is wrong, so the reader refuses it"),
    QT_TRANSLATE_NOOP("TestDrive",
                      "the LRC of track %1 is wrong, which the reader does not verify"),
    QT_TRANSLATE_NOOP("TestDrive",
                      "the last character of track %1 is wrong, so the reader refuses it"),
    QT_TRANSLATE_NOOP("TestDrive",
                      "the last character of track %1 is wrong, which the reader does not verify"),
    QT_TRANSLATE_NOOP("TestDrive", "%1 accepts %2 to %3 characters; the code has %4"),
    QT_TRANSLATE_NOOP("TestDrive", "this keyboard has no key %1"),
    QT_TRANSLATE_NOOP("TestDrive", "the POS keys' memory is damaged: %1"),
    QT_TRANSLATE_NOOP("TestDrive", "this keyboard has no layered function keys"),
    QT_TRANSLATE_NOOP("TestDrive", "layer %1 key %2 has no sequence"),
    QT_TRANSLATE_NOOP("TestDrive", "this keyboard has no magnetic-stripe reader"),
    QT_TRANSLATE_NOOP("TestDrive", "this keyboard has no reader head for track %1"),
    QT_TRANSLATE_NOOP("TestDrive", "track %1 is switched off"),
    QT_TRANSLATE_NOOP("TestDrive", "each track is sent as soon as it has been read"),
    QT_TRANSLATE_NOOP("TestDrive", "the tracks are sent once all have been read"),
    QT_TRANSLATE_NOOP("TestDrive", "this keyboard has no barcode reader"),
    QT_TRANSLATE_NOOP("TestDrive", "a barcode needs at least one character"),
    QT_TRANSLATE_NOOP("TestDrive", "%1 is switched off: its option 0 is not set"),
};

} // namespace

std::string SettingWord(std::string_view word) {
    return QCoreApplication::translate("SettingWords", std::string(word).c_str()).toStdString();
}

std::string TestDriveWord(std::string_view text) {
    return QCoreApplication::translate("TestDrive", std::string(text).c_str()).toStdString();
}

} // namespace qx::app
