#include "app/Language.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>

namespace qx::app {

namespace {

constexpr Integer kSystem = 0;
constexpr Integer kEnglish = 1033;
constexpr Integer kGerman = 1031;
constexpr Integer kPrimaryLanguage = 0x3FF; // of a language id; the rest tells the country

bool IsGerman(Integer nLanguage) {
    if (nLanguage == kSystem)
        return QLocale::system().language() == QLocale::German;
    return (nLanguage & kPrimaryLanguage) == (kGerman & kPrimaryLanguage);
}

} // namespace

std::vector<LanguageInfo> Languages() {
    return {{kSystem, QCoreApplication::translate("Language", "As the system")},
            {kEnglish, QStringLiteral("English")},
            {kGerman, QStringLiteral("Deutsch")}};
}

void Language::Switch(Integer nLanguage) {
    QCoreApplication::removeTranslator(&m_program);
    QCoreApplication::removeTranslator(&m_toolkit);
    const QString name = IsGerman(nLanguage) ? QStringLiteral("de") : QStringLiteral("en");
    QLocale::setDefault(QLocale(name));
    if (m_program.load(QStringLiteral(":/i18n/qxcontrols_") + name))
        QCoreApplication::installTranslator(&m_program);
    if (m_toolkit.load(QStringLiteral("qtbase_") + name,
                       QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(&m_toolkit);
}

} // namespace qx::app
