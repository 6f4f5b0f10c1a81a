#include "views/BarcodeTable.h"

#include "qxcontrols/readers/BarcodeBlocks.h"
#include "views/Bindings.h"
#include "views/FlowLayout.h"
#include "views/WindowUndo.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QScopedValueRollback>
#include <QSpinBox>

#include <algorithm>

namespace qx::views {

namespace {

constexpr int kRowGap = 8;
constexpr int kColumnGap = 16;

// A number that is not being typed leaves undo and redo to the window.
class SizeBox : public QSpinBox {
protected:
    bool event(QEvent* event) override {
        const bool isTyped = text() != textFromValue(value());
        return LeaveUndo(*event, isTyped, isTyped) || QSpinBox::event(event);
    }
};

QString NameOf(BarcodePage page, const QString& member) {
    const std::string_view name = kBarcodePageNames[static_cast<std::size_t>(page)];
    return QString::fromLatin1(name.data(), static_cast<qsizetype>(name.size())) + u'.' + member;
}

bool IsSymbology(BarcodePage page) {
    return page != BP_CommonSettings;
}

} // namespace

BarcodeTable::BarcodeTable(QXBarcode& control, QWidget* parent)
    : QWidget(parent), m_control(control), m_grid(new QGridLayout(this)),
      m_lineHeight(QSpinBox().sizeHint().height()) {
    m_grid->setContentsMargins(0, 2 * kRowGap, 0, kRowGap);
    m_grid->setHorizontalSpacing(kColumnGap);
    m_grid->setVerticalSpacing(kRowGap);
    m_grid->setColumnStretch(3, 1);
    AddHeadings();
    for (Integer page = BP_EAN; page < kBarcodeOptionPages; ++page)
        AddRow(static_cast<BarcodePage>(page));
    AddRow(BP_CommonSettings);
    m_grid->setRowStretch(m_grid->rowCount(), 1);
    m_refreshed = control.Refreshed.Subscribe([this] { ShowAll(); });
    ShowAll();
}

void BarcodeTable::AddHeadings() {
    m_sizeHeadings = {new QLabel, new QLabel};
    int column = 0;
    for (QLabel* heading : {new QLabel(tr("Code")), m_sizeHeadings[0], m_sizeHeadings[1],
                            new QLabel(tr("Options"))}) {
        QFont font = heading->font();
        font.setBold(true);
        heading->setFont(font);
        m_grid->addWidget(heading, 0, column++);
    }
}

void BarcodeTable::AddRow(BarcodePage page) {
    Row row{page, nullptr, new QWidget, {}, {}};
    const int line = m_grid->rowCount();
    const BarcodeOptionPage& settings = m_control.BitPage(page);
    auto* flow = new FlowLayout(kColumnGap, row.box, 0);
    flow->AlignInColumns();
    for (Integer nID = 0; nID < settings.OptionNum(); ++nID) {
        row.options.push_back(MakeOption(page, nID));
        if (nID > 0 || !IsSymbology(page))
            flow->addWidget(row.options.back());
    }
    const bool hasSwitch = IsSymbology(page) && !row.options.empty();
    row.name = hasSwitch ? static_cast<QWidget*>(row.options.front()) : new QLabel;
    row.name->setMinimumHeight(m_lineHeight);
    m_grid->addWidget(row.name, line, 0, Qt::AlignTop);
    if (settings.SupportsSizing())
        for (Integer nIndex = 0; nIndex < 2; ++nIndex) {
            QSpinBox* size = MakeSize(page, nIndex);
            row.sizes[static_cast<std::size_t>(nIndex)] = size;
            m_grid->addWidget(size, line, 1 + nIndex, Qt::AlignTop);
        }
    m_grid->addWidget(row.box, line, 3, Qt::AlignTop);
    m_rows.push_back(std::move(row));
}

QCheckBox* BarcodeTable::MakeOption(BarcodePage page, Integer nID) {
    auto* box = new QCheckBox;
    box->setObjectName(NameOf(page, QStringLiteral("flags.%1").arg(nID)));
    box->setMinimumHeight(m_lineHeight);
    box->installEventFilter(this);
    connect(box, &QCheckBox::toggled, this, [this, page, nID](bool isOn) {
        if (m_isShowing)
            return;
        Choose(page);
        m_control.chkBarOption[static_cast<std::size_t>(nID)].Value = isOn ? 1 : 0;
        m_control.chkBarOption_Click(nID);
    });
    return box;
}

QSpinBox* BarcodeTable::MakeSize(BarcodePage page, Integer nIndex) {
    auto* box = new SizeBox;
    box->setObjectName(
        NameOf(page, nIndex == 0 ? QStringLiteral("minSize") : QStringLiteral("maxSize")));
    box->setKeyboardTracking(false); // one change per number, not per digit
    box->setFocusPolicy(Qt::StrongFocus);
    box->installEventFilter(this);
    connect(box, &QSpinBox::valueChanged, this, [this, page, nIndex](int value) {
        if (m_isShowing)
            return;
        Choose(page);
        m_control.slidRange[static_cast<std::size_t>(nIndex)].Value = static_cast<Integer>(value);
        m_control.slidRange_Change(nIndex);
    });
    return box;
}

// Makes the page the current one. The change that the user has begun on a widget stays in it.
void BarcodeTable::Choose(BarcodePage page) {
    const QScopedValueRollback showing(m_isShowing, true);
    if (m_control.lstPrefGroup.ListIndex == page)
        return;
    m_control.lstPrefGroup.ListIndex = page;
    m_control.lstPrefGroup_Click();
}

void BarcodeTable::ShowAll() {
    if (m_isShowing)
        return;
    const QScopedValueRollback showing(m_isShowing, true);
    for (std::size_t i = 0; i < m_sizeHeadings.size(); ++i)
        m_sizeHeadings[i]->setText(ToQt(m_control.lblRange[i].Caption));
    for (const Row& row : m_rows)
        ShowRow(row);
    update();
}

void BarcodeTable::ShowRow(const Row& row) {
    const BarcodeOptionPage& page = m_control.BitPage(row.page);
    const QString name = ToQt(m_control.lstPrefGroup.Items[static_cast<std::size_t>(row.page)]);
    for (std::size_t i = 0; i < row.options.size(); ++i) {
        const auto nID = static_cast<Integer>(i);
        QCheckBox* box = row.options[i];
        const QString caption = ToQt(page.Flag(nID).Caption());
        const bool isSwitch = box == row.name;
        box->setText(isSwitch ? name : caption);
        box->setToolTip(isSwitch ? caption : QString());
        box->setAccessibleName(isSwitch ? name : name + QStringLiteral(": ") + caption);
        box->setChecked(page.Flag(nID).Value());
        box->setEnabled(HasBarcodeConfigBit(row.page, nID));
    }
    if (auto* label = qobject_cast<QLabel*>(row.name))
        label->setText(name);
    const std::array<Integer, 2> sizes{page.MinSize(), page.MaxSize()};
    for (std::size_t i = 0; i < sizes.size(); ++i)
        if (QSpinBox* box = row.sizes[i]) {
            // Includes a size outside the limits, as a keyboard may have it.
            box->setRange(std::min(page.LimitMinSize(), sizes[i]),
                          std::max(page.LimitMaxSize(), sizes[i]));
            box->setValue(sizes[i]);
            box->setAccessibleName(name + QStringLiteral(": ") + m_sizeHeadings[i]->text());
        }
}

QRect BarcodeTable::RectOf(const Row& row) const {
    const QRect cells = row.name->geometry().united(row.box->geometry());
    return {0, cells.top() - kRowGap / 2, width(), cells.height() + kRowGap};
}

void BarcodeTable::paintEvent(QPaintEvent* event) {
    QWidget::paintEvent(event);
    QPainter painter(this);
    for (std::size_t i = 0; i < m_rows.size(); ++i) {
        if (i % 2 == 0)
            painter.fillRect(RectOf(m_rows[i]), palette().alternateBase());
    }
}

// Up and Down go from one row's option to the next row's.
bool BarcodeTable::MoveFocus(const QObject& from, int rows) {
    for (std::size_t row = 0; row < m_rows.size(); ++row) {
        const auto& options = m_rows[row].options;
        const auto found = std::find(options.begin(), options.end(), &from);
        if (found == options.end())
            continue;
        const auto column = found - options.begin();
        for (auto next = static_cast<int>(row) + rows;
             next >= 0 && next < static_cast<int>(m_rows.size()); next += rows) {
            const auto& others = m_rows[static_cast<std::size_t>(next)].options;
            if (column < static_cast<std::ptrdiff_t>(others.size()) &&
                others[static_cast<std::size_t>(column)]->isEnabled()) {
                others[static_cast<std::size_t>(column)]->setFocus(
                    rows > 0 ? Qt::TabFocusReason : Qt::BacktabFocusReason);
                return true;
            }
        }
        return true;
    }
    return false;
}

bool BarcodeTable::eventFilter(QObject* watched, QEvent* event) {
    const auto* widget = static_cast<const QWidget*>(watched);
    // The wheel scrolls the page, rather than changing what happens to be below the pointer.
    if (event->type() == QEvent::Wheel && !widget->hasFocus()) {
        event->ignore();
        return true;
    }
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<const QKeyEvent*>(event)->key();
        if ((key == Qt::Key_Up || key == Qt::Key_Down) &&
            MoveFocus(*watched, key == Qt::Key_Down ? 1 : -1))
            return true;
    }
    return QWidget::eventFilter(watched, event);
}

} // namespace qx::views
