// Language: the language of the program, switched while it runs.
#pragma once

#include "qxcontrols/common/Types.h"

#include <QTranslator>

#include <memory>

namespace qx::app {

class Language {
public:
    Language();
    ~Language();

    // Switches to a language as the preferences have it: a Windows language id, 0 for the system's.
    // For a language that the program does not have, English.
    void Switch(Integer nLanguage);

private:
    class Texts;

    std::unique_ptr<Texts> m_program;
    QTranslator m_toolkit;
};

} // namespace qx::app
