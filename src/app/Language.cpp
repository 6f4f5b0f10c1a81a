#include "app/Language.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>

#include <string_view>

namespace qx::app {

namespace {

constexpr Integer kSystem = 0;
constexpr Integer kGerman = 1031;
constexpr Integer kPrimaryLanguage = 0x3FF; // of a language id; the rest is the country

bool IsGerman(Integer nLanguage) {
    if (nLanguage == kSystem)
        return QLocale::system().language() == QLocale::German;
    return (nLanguage & kPrimaryLanguage) == (kGerman & kPrimaryLanguage);
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

Language::Language() : m_program(std::make_unique<Texts>()) {}

Language::~Language() = default;

void Language::Switch(Integer nLanguage) {
    QCoreApplication::removeTranslator(m_program.get());
    QCoreApplication::removeTranslator(&m_toolkit);
    const QString name = IsGerman(nLanguage) ? QStringLiteral("de") : QStringLiteral("en");
    QLocale::setDefault(QLocale(name));
    if (m_program->load(QStringLiteral(":/i18n/qxcontrols_") + name))
        QCoreApplication::installTranslator(m_program.get());
    if (m_toolkit.load(QStringLiteral("qtbase_") + name,
                       QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(&m_toolkit);
}

} // namespace qx::app
