#include "views/BarcodeEditor.h"

#include "views/BarcodeReaderPanel.h"
#include "views/BarcodeTable.h"
#include "views/Bindings.h"
#include "views/ScrollArea.h"

#include <QShowEvent>
#include <QTabBar>

#include <algorithm>

namespace qx::views {

namespace {

constexpr int kPadding = 16; // around the keys of a reader

} // namespace

BarcodeEditor::BarcodeEditor(QXBarcode& control, QWidget* parent)
    : QTabWidget(parent), m_control(control) {
    setObjectName(QStringLiteral("barcodeTabs"));
    setDocumentMode(true);
    addTab(new BarcodeTable(control), tr("Codes"));
    for (int reader = 0; reader < kBarcodeReaders; ++reader) {
        auto* panel = new BarcodeReaderPanel(control);
        panel->layout()->setContentsMargins(0, kPadding, 0, 0);
        addTab(panel, {});
    }
    ShowPage();
    connect(this, &QTabWidget::currentChanged, this, [this](int tab) {
        m_control.lstPrefGroup.ListIndex =
            tab == 0 ? m_code : static_cast<Integer>(BP_Reader_1 + tab - 1);
        m_control.lstPrefGroup_Click();
    });
    m_refreshed = control.Refreshed.Subscribe([this] { ShowPage(); });
}

void BarcodeEditor::ShowPage() {
    const QSignalBlocker showing(this);
    const auto& titles = m_control.lstPrefGroup.Items;
    for (int reader = 0; reader < kBarcodeReaders; ++reader)
        setTabText(1 + reader, ToQt(titles[static_cast<std::size_t>(BP_Reader_1 + reader)]));
    const Integer page = m_control.lstPrefGroup.ListIndex;
    if (page < BP_Reader_1)
        m_code = page;
    setCurrentIndex(std::max(0, page - BP_Reader_1 + 1));
}

void BarcodeEditor::Reveal(const QString& name) {
    if (auto* setting = findChild<QWidget*>(name)) {
        setting->setFocus(Qt::OtherFocusReason);
        QMetaObject::invokeMethod( // when it has been laid out
            setting, [setting] { ScrollArea::Reveal(*setting, setting->rect()); },
            Qt::QueuedConnection);
    }
}

void BarcodeEditor::showEvent(QShowEvent* event) {
    QTabWidget::showEvent(event);
    if (!event->spontaneous())
        m_control.UserControl_Show();
}

} // namespace qx::views
