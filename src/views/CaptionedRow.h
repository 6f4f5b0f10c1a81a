// CaptionedRow: a caption and the value that it names, as one phrase: "Blocks: 2".
#pragma once

#include <QHBoxLayout>
#include <QWidget>

namespace qx::views {

[[nodiscard]] inline QLayout* CaptionedRow(QWidget* caption, QWidget* value) {
    auto* row = new QHBoxLayout;
    row->setSpacing(caption->fontMetrics().horizontalAdvance(u' '));
    row->addWidget(caption);
    row->addWidget(value);
    return row;
}

} // namespace qx::views
