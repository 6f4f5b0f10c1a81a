#include "app/Pages.h"

#include "app/ControlTexts.h"
#include "app/Workbench.h"
#include "qxcontrols/device/QXCommonKeyboard.h"
#include "qxcontrols/keyprog/QXFreeProgKeys.h"
#include "qxcontrols/keyprog/QXLayeredFuncKeys.h"
#include "qxcontrols/pos/QXPos.h"
#include "qxcontrols/readers/QXBarcode.h"
#include "qxcontrols/readers/QXMagnetCard.h"
#include "views/QXBarcodeView.h"
#include "views/QXCommonKeyboardView.h"
#include "views/QXFreeProgKeysView.h"
#include "views/QXLayeredFuncKeysView.h"
#include "views/QXMagnetCardView.h"
#include "views/QXPosView.h"

#include <QLabel>
#include <QVBoxLayout>

namespace qx::app {

namespace {

template <typename View, typename Control>
QWidget* MakeView(ModuleControl& control) {
    return new View(dynamic_cast<Control&>(control));
}

struct ViewKind {
    std::string_view sectionKey;
    QWidget* (*make)(ModuleControl& control);
};

constexpr ViewKind kViews[] = {
    {"commonKeyboard", MakeView<views::QXCommonKeyboardView, QXCommonKeyboard>},
    {"magnetCard", MakeView<views::QXMagnetCardView, QXMagnetCard>},
    {"barcode", MakeView<views::QXBarcodeView, QXBarcode>},
    {"freeProgKeys", MakeView<views::QXFreeProgKeysView, QXFreeProgKeys>},
    {"funcKeys4610", MakeView<views::QXFreeProgKeysView, QXFreeProgKeys>},
    {"funcKeys4620", MakeView<views::QXFreeProgKeysView, QXFreeProgKeys>},
    {"funcKeys4630", MakeView<views::QXFreeProgKeysView, QXFreeProgKeys>},
    {"layeredFuncKeys", MakeView<views::QXLayeredFuncKeysView, QXLayeredFuncKeys>},
    {"pos", MakeView<views::QXPosView, QXPos>},
};

QWidget* ViewOf(host::Section& section) {
    for (const ViewKind& kind : kViews)
        if (kind.sectionKey == section.Info().key)
            return kind.make(section.Control());
    return new QWidget;
}

QLabel* Heading(const QString& title) {
    auto* heading = new QLabel(title);
    QFont font = heading->font();
    font.setPointSizeF(font.pointSizeF() * 1.4);
    font.setBold(true);
    heading->setFont(font);
    // Some fonts draw accents above their line, where the label ends.
    heading->setContentsMargins(0, heading->fontMetrics().height() / 6, 0, 0);
    return heading;
}

} // namespace

ModulePage::ModulePage(Workbench& workbench, std::string sectionKey, QWidget* parent)
    : QWidget(parent), m_workbench(workbench), m_sectionKey(std::move(sectionKey)),
      m_state(new QLabel), m_view(ViewOf(*workbench.Configuration().Find(m_sectionKey))) {
    m_state->setWordWrap(true);
    m_state->setForegroundRole(QPalette::PlaceholderText);
    auto* column = new QVBoxLayout(this);
    column->addWidget(Heading(SectionTitle(m_sectionKey)));
    column->addWidget(m_state);
    column->addWidget(m_view, 1);
    connect(&workbench, &Workbench::KeyboardChanged, this, &ModulePage::ShowState);
    connect(&workbench, &Workbench::DocumentChanged, this, &ModulePage::ShowState);
    ShowState();
}

void ModulePage::ShowState() {
    const host::Section& section = *m_workbench.Configuration().Find(m_sectionKey);
    const bool isThere = m_workbench.Has(section);
    const bool takesPart = m_workbench.History().TakesPart(section);
    QString state;
    if (!isThere && takesPart)
        state = tr("This keyboard has no such module. The document keeps these settings; writing "
                   "leaves them out.");
    else if (!isThere)
        state = tr("This keyboard has no such module.");
    else if (!takesPart)
        state = tr("The document has no settings for this module, and writing leaves the "
                   "keyboard's as they are. What you change here becomes part of the document.");
    m_state->setText(state);
    m_state->setVisible(!state.isEmpty());
    m_view->setEnabled(isThere || takesPart);
}

QWidget* TitledPage(const QString& title, QWidget* content) {
    auto* page = new QWidget;
    auto* column = new QVBoxLayout(page);
    column->addWidget(Heading(title));
    column->addWidget(content, 1);
    return page;
}

} // namespace qx::app
