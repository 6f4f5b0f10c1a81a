#include "views/SequenceRow.h"

#include "views/SequenceLabel.h"

namespace qx::views {

namespace {

// A caption without its mnemonic marks.
QString Plain(QString caption) {
    const QString ampersand(QChar(u'\uE000')); // replaces "&&" temporarily
    return caption.replace(QLatin1String("&&"), ampersand)
        .remove(u'&')
        .replace(ampersand, QLatin1String("&"));
}

} // namespace

SequenceRow::SequenceRow(QBoxLayout& column)
    : use(new QCheckBox), keys(new SequenceLabel), edit(new QPushButton), remove(new QPushButton) {
    keys->setMinimumHeight(edit->sizeHint().height());
    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(8);
    buttons->addStretch(1);
    buttons->addWidget(edit);
    buttons->addWidget(remove);
    auto* parts = new QVBoxLayout;
    parts->setSpacing(6);
    parts->addWidget(use);
    parts->addWidget(keys);
    parts->addLayout(buttons);
    column.addLayout(parts);
}

void SequenceRow::ShowAccessibleNames() const {
    const QString which = Plain(use->text());
    keys->ShowAccessibleName(which + u':');
    for (QPushButton* button : {edit, remove})
        button->setAccessibleName(which + QLatin1String(": ") + Plain(button->text()));
}

} // namespace qx::views
