#include "app/LintWords.h"

#include "app/SettingWords.h"
#include "qxcontrols/keys/KeyName.h"
#include "views/Bindings.h"

#include <QCoreApplication>

namespace qx::app {

namespace {

struct LintWords {
    Q_DECLARE_TR_FUNCTIONS(LintWords)
};

} // namespace

QString WarningText(const host::SequenceWarning& warning, const QXKeyboardLayoutData& layout) {
    using host::SequenceWarningKind;
    const auto name = [&](Long key) { return views::ToQt(KeyName(key, &layout)); };
    switch (warning.kind) {
    case SequenceWarningKind::NeverReleased:
        return LintWords::tr("Key %1 is pressed and never released.").arg(name(warning.key));
    case SequenceWarningKind::NeverPressed:
        return LintWords::tr("Key %1 is released and was not pressed.").arg(name(warning.key));
    case SequenceWarningKind::KeyAbove127:
        return LintWords::tr("Key %1 is released and was not pressed; a sequence cannot press key "
                             "%2.")
            .arg(name(warning.key), name(warning.key + kRelease));
    case SequenceWarningKind::NotInLayout:
        return LintWords::tr("This layout has no key %1.").arg(warning.key);
    case SequenceWarningKind::NeverSent:
        return LintWords::tr("Never sent, as the key sends the sequence of %1 instead.")
            .arg(NameText(warning.by));
    }
    return {};
}

} // namespace qx::app
