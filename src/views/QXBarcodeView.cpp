#include "views/QXBarcodeView.h"

#include "views/BarcodeReaderPanel.h"
#include "views/PageList.h"

#include <QGridLayout>
#include <QShowEvent>
#include <QStackedWidget>
#include <QVBoxLayout>

namespace qx::views {

QXBarcodeView::QXBarcodeView(QXBarcode& control, QWidget* parent)
    : QWidget(parent), m_control(control) {
    auto* caption = new QLabel;
    auto* list = new PageList;
    caption->setBuddy(list);
    m_bindings.Bind(caption, QStringLiteral("lblList"), control.lblList);
    m_bindings.Bind(list, QStringLiteral("lstPrefGroup"), control.lstPrefGroup,
                    [&control] { control.lstPrefGroup_Click(); });
    m_bindings.OnShow([caption, list] { list->setAccessibleName(caption->text()); });

    auto* pages = new QStackedWidget;
    QWidget* options = MakeOptionPage();
    auto* reader = new BarcodeReaderPanel(control);
    pages->addWidget(options);
    pages->addWidget(reader);
    m_bindings.OnShow([&control, pages, options, reader] {
        pages->setCurrentWidget(control.lblHint.Visible ? reader : options);
    });

    auto* grid = new QGridLayout(this);
    grid->setHorizontalSpacing(24);
    grid->addWidget(caption, 0, 0);
    grid->addWidget(list, 1, 0);
    grid->addWidget(pages, 1, 1);
    grid->setColumnStretch(1, 1);

    m_refreshed = control.Refreshed.Subscribe([this] { m_bindings.ShowAll(); });
    m_bindings.ShowAll();
}

void QXBarcodeView::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    if (!event->spontaneous())
        m_control.UserControl_Show();
}

QWidget* QXBarcodeView::MakeOptionPage() {
    auto* page = new QWidget;
    auto* column = new QVBoxLayout(page);
    column->setContentsMargins(0, 0, 0, 0);
    for (Integer nID = 0; nID < BarcodeOptionPage::kFlags; ++nID) {
        auto* box = new QCheckBox;
        m_bindings.Bind(box, ChildName("chkBarOption", nID),
                        m_control.chkBarOption[static_cast<std::size_t>(nID)],
                        [this, nID] { m_control.chkBarOption_Click(nID); });
        column->addWidget(box);
    }

    auto* sizes = new QGridLayout;
    sizes->setContentsMargins(0, 12, 0, 0);
    sizes->setHorizontalSpacing(12);
    sizes->setVerticalSpacing(10);
    for (Integer nIndex = 0; nIndex < 2; ++nIndex) {
        const auto i = static_cast<std::size_t>(nIndex);
        auto* caption = new QLabel;
        auto* slider = new QSlider(Qt::Horizontal);
        auto* value = new QLabel;
        caption->setBuddy(slider);
        slider->setMaximumWidth(420);
        value->setMinimumWidth(value->fontMetrics().horizontalAdvance(QStringLiteral("000")));
        value->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        m_bindings.Bind(caption, ChildName("lblRange", nIndex), m_control.lblRange[i]);
        m_bindings.Bind(slider, ChildName("slidRange", nIndex), m_control.slidRange[i],
                        [this, nIndex] { m_control.slidRange_Change(nIndex); });
        m_bindings.Bind(value, ChildName("lblCurrSize", nIndex), m_control.lblCurrSize[i]);
        m_bindings.OnShow([slider, caption] { slider->setAccessibleName(caption->text()); });
        sizes->addWidget(caption, nIndex, 0);
        sizes->addWidget(slider, nIndex, 1);
        sizes->addWidget(value, nIndex, 2);
    }
    sizes->setColumnStretch(1, 8); // the slider gets the extra width, the rest keeps its size
    sizes->setColumnStretch(3, 1);
    column->addLayout(sizes);
    column->addStretch(1);
    return page;
}

} // namespace qx::views
