// Language: the program's language, which can be switched at run time.
#pragma once

#include "qxcontrols/common/Types.h"

#include <QTranslator>

#include <memory>
#include <string>

namespace qx::app {

struct ProgramLanguage {
    Integer id;       // a Windows language id, as in the preferences
    const char* code; // of its translation file and of its locale
    const char* name; // in the language itself, UTF-8
};

// A new language is an entry here, and its translation file in CMakeLists.txt.
inline constexpr ProgramLanguage kLanguages[] = {
    {1031, "de", "Deutsch"},
    {1033, "en", "English"},
};

// The code of the program's language, "de".
[[nodiscard]] std::string LanguageCode();

class Language {
public:
    Language();
    ~Language();

    // Switches to a language as in the preferences: a Windows language id, 0 for the system's. If
    // the program does not have the language, switches to English.
    void Switch(Integer nLanguage);

private:
    class Texts;

    std::unique_ptr<Texts> m_program;
    QTranslator m_toolkit;
};

} // namespace qx::app
