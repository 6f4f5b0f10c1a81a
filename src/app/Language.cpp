#include "app/Language.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>

#include <string_view>

namespace qx::app {

namespace {

constexpr Integer kSystem = 0;
constexpr Integer kPrimaryLanguage = 0x3FF; // of a language id; the rest is the country

QString CodeOf(Integer nLanguage) {
    const QString system = QLocale::system().name().section('_', 0, 0);
    for (const ProgramLanguage& language : kLanguages)
        if (nLanguage == kSystem
                ? system == QLatin1String(language.code)
                : (nLanguage & kPrimaryLanguage) == (language.id & kPrimaryLanguage))
            return QString::fromLatin1(language.code);
    return QStringLiteral("en");
}

} // namespace

// The translation files contain class names without namespaces.
class Language::Texts : public QTranslator {
public:
    [[nodiscard]] QString translate(const char* context, const char* text,
                                    const char* disambiguation, int n) const override {
        const std::string_view name(context);
        const std::size_t last = name.rfind(':');
        return QTranslator::translate(context + (last == std::string_view::npos ? 0 : last + 1),
                                      text, disambiguation, n);
    }
};

std::string LanguageCode() {
    return QLocale().name().section(u'_', 0, 0).toStdString();
}

Language::Language() : m_program(std::make_unique<Texts>()) {}

Language::~Language() = default;

void Language::Switch(Integer nLanguage) {
    QCoreApplication::removeTranslator(m_program.get());
    QCoreApplication::removeTranslator(&m_toolkit);
    const QString code = CodeOf(nLanguage);
    const QString system = QLocale::system().name(); // dates as in the user's country
    QLocale::setDefault(QLocale(system.section(u'_', 0, 0) == code ? system : code));
    if (m_program->load(QStringLiteral(":/i18n/qxcontrols_") + code))
        QCoreApplication::installTranslator(m_program.get());
    if (m_toolkit.load(QStringLiteral("qtbase_") + code,
                       QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(&m_toolkit);
}

} // namespace qx::app
