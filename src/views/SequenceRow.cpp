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

SequenceRow::SequenceRow(QGridLayout& grid, int row)
    : use(new QCheckBox), keys(new SequenceLabel), edit(new QPushButton), remove(new QPushButton) {
    keys->setMinimumHeight(edit->sizeHint().height());
    grid.addWidget(use, row, 0, 1, 3);
    grid.addWidget(keys, row + 1, 0, 1, 3);
    grid.addWidget(edit, row + 2, 1);
    grid.addWidget(remove, row + 2, 2);
    grid.setColumnStretch(0, 1);
    grid.setVerticalSpacing(6);
}

void SequenceRow::ShowAccessibleNames() const {
    const QString which = Plain(use->text());
    keys->ShowAccessibleName(which + u':');
    for (QPushButton* button : {edit, remove})
        button->setAccessibleName(which + QLatin1String(": ") + Plain(button->text()));
}

} // namespace qx::views
