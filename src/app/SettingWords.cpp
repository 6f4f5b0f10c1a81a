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
};

} // namespace

std::string SettingWord(std::string_view word) {
    return QCoreApplication::translate("SettingWords", std::string(word).c_str()).toStdString();
}

} // namespace qx::app
