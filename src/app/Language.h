// Language: the program's language, which can be switched at run time.
#pragma once

#include "qxcontrols/common/Types.h"

#include <QTranslator>

#include <memory>

namespace qx::app {

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
