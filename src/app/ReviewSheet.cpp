#include "app/ReviewSheet.h"

#include "app/DifferenceTree.h"
#include "app/Help.h"
#include "app/SettingWords.h"
#include "views/Bindings.h"
#include "views/LineIcon.h"
#include "views/RoomyRows.h"

#include <QDialogButtonBox>
#include <QKeyEvent>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QStyle>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>

namespace qx::app {

using views::ToQt;

namespace {

constexpr int kPlaceRole = Qt::UserRole;
constexpr int kHeightOfWarning = 150; // of the window: large ones show more without scrolling

// A warning for users who write one document to several keyboards; empty if the keyboard keeps its
// identifier.
QString IdentifierWarning(const host::WritePlan& plan) {
    if (plan.ReplacesIdentifier())
        return ReviewSheet::tr("The keyboard's identifier is replaced by another one. If the "
                               "document belongs to another keyboard, both then have the same "
                               "identifier.");
    if (plan.GivesIdentifier())
        return ReviewSheet::tr("The keyboard has no identifier and is given one. If the document "
                               "is written to several keyboards, they all have the same "
                               "identifier.");
    return {};
}

bool IsIdentifier(const host::Difference& difference) {
    return difference.place == host::ConfigurationDocument::kIdentifierPlace;
}

QLabel* NoteOf(const char* name, const QString& text) {
    auto* label = new QLabel(text);
    label->setObjectName(QLatin1String(name));
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    return label;
}

} // namespace

ReviewSheet::ReviewSheet(const host::WritePlan& plan, const QString& title,
                         const QString& keyboardName, const Remarks& remarks, QWidget* parent)
    : QDialog(parent) {
    setObjectName(QStringLiteral("reviewSheet"));
    setWindowTitle(title);
    const int count = static_cast<int>(plan.settings.size());
    const QString change =
        count > 0 ? tr("This changes %n setting(s) of the keyboard %1.", "", count)
                  : tr("This changes no setting of the keyboard %1, only bytes that no "
                       "setting uses.");
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Cancel);
    buttons->button(QDialogButtonBox::Cancel)->setDefault(true);
    auto* write = buttons->addButton(tr("&Write to keyboard"), QDialogButtonBox::AcceptRole);
    write->setObjectName(QStringLiteral("cmdWrite"));
    write->setAutoDefault(false);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* column = new QVBoxLayout(this);
    column->addWidget(NoteOf("changeCount", change.arg(keyboardName)));
    if (const QString warning = IdentifierWarning(plan); !warning.isEmpty())
        column->addWidget(NoteOf("identifierWarning", warning));
    if (!remarks.absentSections.isEmpty())
        column->addWidget(NoteOf("absentSections",
                                 tr("The keyboard has no module for these, which are left out: %1")
                                     .arg(remarks.absentSections)));
    QWidget* changes = MakeChanges(plan);
    column->addWidget(changes, 1);
    if (!remarks.warnings.empty())
        column->addWidget(MakeWarnings(remarks.warnings));
    column->addWidget(MakeDetails(plan));
    column->addWidget(buttons);
    resize(820, std::max(560, parent->window()->height() * 3 / 4));
    OfferHelp(*this, QStringLiteral("review"));
    changes->setFocus();
}

QWidget* ReviewSheet::MakeChanges(const host::WritePlan& plan) {
    std::vector<host::Difference> shown = plan.settings;
    std::erase_if(shown, IsIdentifier);
    auto* tree = new DifferenceTree(shown, tr("In the keyboard now"), tr("After writing"));
    connect(tree, &DifferenceTree::Chosen, this, &ReviewSheet::Choose);
    return tree;
}

QWidget* ReviewSheet::MakeWarnings(const std::vector<Remarks::Warning>& warnings) {
    auto* list = new QListWidget;
    list->setObjectName(QStringLiteral("warnings"));
    list->setWordWrap(true);
    list->setItemDelegate(new views::RoomyRows(list));
    const int iconSize = style()->pixelMetric(QStyle::PM_SmallIconSize);
    list->setIconSize({iconSize, iconSize});
    const QIcon icon = views::LineIcon(QStringLiteral("warning"));
    for (const Remarks::Warning& warning : warnings) {
        auto* item = new QListWidgetItem(icon, warning.text, list);
        item->setData(kPlaceRole, ToQt(warning.place));
        item->setToolTip(tr("Show this sequence on its page"));
    }
    const int count = static_cast<int>(warnings.size());
    list->setFixedHeight(
        list->sizeHintForRow(0) *
            std::min(count, parentWidget()->window()->height() / kHeightOfWarning) +
        2 * list->frameWidth());
    connect(list, &QListWidget::itemActivated, this, [this](const QListWidgetItem* item) {
        Choose(item->data(kPlaceRole).toString().toStdString());
    });
    auto* caption = new QLabel(tr("%n warning(s) about sequences:", nullptr, count));
    caption->setBuddy(list);
    list->setAccessibleName(caption->text());
    auto* both = new QWidget;
    auto* column = new QVBoxLayout(both);
    column->setContentsMargins({});
    column->addWidget(caption);
    column->addWidget(list);
    return both;
}

QWidget* ReviewSheet::MakeDetails(const host::WritePlan& plan) {
    QStringList lines = {tr("%n byte(s) are sent.", "", static_cast<int>(plan.BytesToSend()))};
    for (const host::Difference& difference : plan.settings)
        if (IsIdentifier(difference))
            lines += tr("%1: %2 → %3")
                         .arg(NameInSection(difference.name), ValueText(difference.from),
                              ValueText(difference.to));
    auto* hint =
        NoteOf("safety", tr("The keyboard's contents are backed up first; after writing, they "
                            "are read back and compared."));
    auto* details = NoteOf("technical", lines.join(u'\n'));
    details->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    details->hide();
    auto* fold = new QToolButton;
    fold->setObjectName(QStringLiteral("foldTechnical"));
    fold->setText(tr("Technical details"));
    fold->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    fold->setArrowType(Qt::RightArrow);
    fold->setAutoRaise(true);
    fold->setCheckable(true);
    fold->setFocusPolicy(Qt::StrongFocus);
    connect(fold, &QToolButton::toggled, this, [fold, details](bool isOpen) {
        fold->setArrowType(isOpen ? Qt::DownArrow : Qt::RightArrow);
        details->setVisible(isOpen);
    });
    auto* all = new QWidget;
    auto* column = new QVBoxLayout(all);
    column->setContentsMargins({});
    column->addWidget(hint);
    column->addWidget(fold);
    column->addWidget(details);
    return all;
}

void ReviewSheet::Choose(const std::string& place) {
    m_place = place;
    if (!m_place.empty())
        reject();
}

void ReviewSheet::keyPressEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter)
        QDialog::keyPressEvent(event);
}

} // namespace qx::app
