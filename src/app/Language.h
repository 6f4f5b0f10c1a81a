// Language: the language of the program, switched while it runs.
#pragma once

#include "qxcontrols/common/Types.h"

#include <QString>
#include <QTranslator>

#include <vector>

namespace qx::app {

struct LanguageInfo {
    Integer id;   // as the preferences have it: a Windows language id; 0 for the system's
    QString name; // in the language itself
};

// The languages that the program has, the system's first.
[[nodiscard]] std::vector<LanguageInfo> Languages();

class Language {
public:
    // Switches to the language, or to the one that comes nearest to it.
    void Switch(Integer nLanguage);

private:
    QTranslator m_program;
    QTranslator m_toolkit;
};

} // namespace qx::app
