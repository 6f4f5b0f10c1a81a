// BarcodeTable: all kinds of code of QXBarcode at once, one per row: whether it is read, the
// accepted lengths, and the other options.
//
// The control works on one page at a time: a change first makes the row's page the current one. A
// widget is named after its setting in a document: "Code39.minSize", "Code39.flags.1".
#pragma once

#include "qxcontrols/readers/QXBarcode.h"

#include <QWidget>

#include <array>
#include <vector>

class QCheckBox;
class QGridLayout;
class QLabel;
class QSpinBox;

namespace qx::views {

class BarcodeTable : public QWidget {
    Q_OBJECT
public:
    // The control outlives the table; its host has set how many options each page has.
    explicit BarcodeTable(QXBarcode& control, QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    // Those that the page does not have are null.
    struct Row {
        BarcodePage page;
        QWidget* name; // of a symbology: its switch, option 0
        QWidget* box;  // with its options
        std::array<QSpinBox*, 2> sizes;
        std::vector<QCheckBox*> options; // by number; the first is the switch, if there is one
    };

    void AddHeadings();
    void AddRow(BarcodePage page);
    QCheckBox* MakeOption(BarcodePage page, Integer nID);
    QSpinBox* MakeSize(BarcodePage page, Integer nIndex);
    void ShowAll();
    void ShowRow(const Row& row);
    void Choose(BarcodePage page);
    bool MoveFocus(const QObject& from, int rows);
    [[nodiscard]] QRect RectOf(const Row& row) const;

    QXBarcode& m_control;
    QGridLayout* m_grid;
    int m_lineHeight;
    std::array<QLabel*, 2> m_sizeHeadings;
    std::vector<Row> m_rows;
    bool m_isShowing = false;
    Subscription m_refreshed;
};

} // namespace qx::views
