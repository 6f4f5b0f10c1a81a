#include "app/LayerActions.h"

#include "app/KeyEdits.h"
#include "qxcontrols/keyprog/QXLayeredFuncKeys.h"
#include "views/EntryLine.h"
#include "views/KeyGrid.h"
#include "views/LineIcon.h"
#include "views/QXLayeredFuncKeysView.h"

#include <QHBoxLayout>
#include <QMenu>
#include <QPushButton>
#include <QTabBar>

#include <utility>

namespace qx::app {

using views::ToQt;

namespace {

constexpr int kMostOfName = FuncKeyLayer::kNameLength;

} // namespace

LayerActions::LayerActions(KeyEdits& edits, views::QXLayeredFuncKeysView& view,
                           QXLayeredFuncKeys& control)
    : QObject(&view), m_edits(edits), m_control(control), m_name(new views::EntryLine) {
    m_name->setObjectName(QStringLiteral("layerName"));
    m_name->setMaxLength(kMostOfName);
    m_name->setMaximumWidth(m_name->fontMetrics().averageCharWidth() * kMostOfName);
    m_name->setPlaceholderText(tr("Name of this layer"));
    m_name->setAccessibleName(m_name->placeholderText());
    auto* menu = new QMenu(&view);
    menu->setTitle(tr("Copy or swap layer"));
    view.findChild<views::KeyGrid*>()->addAction(menu->menuAction()); // for the Edit menu
    auto* button = new QPushButton;
    button->setObjectName(QStringLiteral("layerMenu"));
    button->setText(tr("Copy or swap"));
    button->setIcon(views::LineIcon(QStringLiteral("layers")));
    button->setMenu(menu);
    auto* row = new QWidget;
    auto* widgets = new QHBoxLayout(row);
    widgets->setContentsMargins({});
    widgets->addWidget(m_name, 1);
    widgets->addWidget(button);
    widgets->addStretch(1);
    view.AddBelowTabs(row);
    QWidget::setTabOrder(view.findChild<QTabBar*>(), m_name); // as they are seen
    QWidget::setTabOrder(m_name, button);
    QWidget::setTabOrder(button, view.findChild<views::KeyGrid*>());

    connect(m_name, &QLineEdit::textEdited, this, &LayerActions::Rename);
    connect(menu, &QMenu::aboutToShow, this, [this, menu] {
        qDeleteAll(menu->findChildren<QMenu*>()); // clear() leaves them
        menu->clear();
        Fill(*menu, m_control.CurrentLayer());
    });
    connect(&view, &views::QXLayeredFuncKeysView::LayerMenuRequested, this,
            [this, &view](int layer, const QPoint& globalAt) {
                auto* ofTab = new QMenu(&view);
                ofTab->setObjectName(QStringLiteral("tabMenu"));
                ofTab->setAttribute(Qt::WA_DeleteOnClose);
                Fill(*ofTab, static_cast<Integer>(layer));
                ofTab->popup(globalAt);
            });
    const auto show = [this] {
        const QString name = ToQt(m_control.Layer(m_control.CurrentLayer()).Name());
        if (m_name->text() != name)
            m_name->setText(name);
    };
    m_refreshed = control.Refreshed.Subscribe(show);
    show();
}

QString LayerActions::TitleOf(Integer nLayer) const {
    const QString name = ToQt(m_control.Layer(nLayer).Name());
    return name.isEmpty() ? QString::number(nLayer) : QStringLiteral("%1 %2").arg(nLayer).arg(name);
}

void LayerActions::Fill(QMenu& menu, Integer nLayer) {
    QAction* title = menu.addAction(tr("Layer %1").arg(TitleOf(nLayer)));
    title->setEnabled(false);
    menu.addSeparator();
    QMenu* copy = menu.addMenu(views::LineIcon(QStringLiteral("copy")), tr("&Copy to layer"));
    QMenu* swap = menu.addMenu(views::LineIcon(QStringLiteral("swap")), tr("&Swap with layer"));
    for (Integer other = 0; other < kFuncKeyLayers; ++other) {
        if (other == nLayer)
            continue;
        const QString text =
            QStringLiteral("&%1").arg(TitleOf(other).replace(u'&', QStringLiteral("&&")));
        copy->addAction(text, this, [this, nLayer, other] { Copy(nLayer, other); });
        swap->addAction(text, this, [this, nLayer, other] { Swap(nLayer, other); });
    }
}

// The other layer keeps its name.
void LayerActions::Copy(Integer nFrom, Integer nTo) {
    const bool hasChanged = m_edits.Edit([&] {
        FuncKeyLayer copy = m_control.Layer(nFrom);
        copy.SetName(m_control.Layer(nTo).Name());
        m_control.Layer(nTo) = std::move(copy);
        m_control.ReloadKeySettings();
    });
    if (hasChanged)
        m_edits.ReportDone(
            tr("Layer %1 now has the keys of layer %2.").arg(TitleOf(nTo), TitleOf(nFrom)));
}

void LayerActions::Swap(Integer nOne, Integer nOther) {
    const bool hasChanged = m_edits.Edit([&] {
        std::swap(m_control.Layer(nOne), m_control.Layer(nOther));
        m_control.ReloadKeySettings();
    });
    if (hasChanged)
        m_edits.ReportDone(tr("Layers %1 and %2 have been swapped.").arg(nOne).arg(nOther));
}

// At every letter, as descriptions are: the history makes one step of them.
void LayerActions::Rename() {
    m_control.Layer(m_control.CurrentLayer()).SetName(m_name->text().toStdString());
    m_control.SetDataChanged(true);
    m_control.ReloadKeySettings();
}

} // namespace qx::app
