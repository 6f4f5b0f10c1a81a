#include "designer/ControlWidgets.h"

#include "views/QXBarcodeView.h"
#include "views/QXCommonKeyboardView.h"
#include "views/QXFreeProgKeysView.h"
#include "views/QXLayeredFuncKeysView.h"
#include "views/QXMagnetCardView.h"
#include "views/QXPosView.h"

#include <QFileInfo>
#include <QVBoxLayout>

namespace qx::designer {

namespace {

// As if the user had clicked the box.
template <typename Control>
void SetShowsReleases(Control& control, bool isWanted) {
    control.chkShowDetails.Value = isWanted ? 1 : 0;
    control.chkShowDetails_Click();
}

} // namespace

ControlWidget::ControlWidget(QWidget* parent) : QWidget(parent), m_platform(this) {}

QWidget* ControlWidget::Show(ModuleControl& control, QWidget* view) {
    m_control = &control;
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(view);
    return view;
}

void ControlWidget::setKeyboardLayout(const QString& file) {
    m_layoutFile = file;
    const QFileInfo info(file);
    m_layout.SetLayoutPath(info.absolutePath().toStdString() + "/");
    const bool isOpen = !file.isEmpty() && m_layout.OpenLayoutByName(info.fileName().toStdString());
    m_control->SetLayoutSource(isOpen ? &m_layout : nullptr);
    m_control->AdjustControls();
    m_control->ReloadKeySettings();
}

QString ControlWidget::LayoutError() const {
    return QString::fromStdString(m_layout.Error());
}

CommonKeyboardWidget::CommonKeyboardWidget(QWidget* parent)
    : ControlWidget(parent), control(Services()),
      m_shown(Show(control, new views::QXCommonKeyboardView(control))) {}

MagnetCardWidget::MagnetCardWidget(QWidget* parent)
    : ControlWidget(parent), control(Services()),
      m_shown(Show(control, new views::QXMagnetCardView(control))) {}

void MagnetCardWidget::setShowReleases(bool isWanted) {
    SetShowsReleases(control, isWanted);
}

BarcodeWidget::BarcodeWidget(QWidget* parent)
    : ControlWidget(parent), control(Services()),
      m_shown(Show(control, new views::QXBarcodeView(control))) {}

void BarcodeWidget::setShowReleases(bool isWanted) {
    SetShowsReleases(control, isWanted);
}

FreeProgKeysWidget::FreeProgKeysWidget(QWidget* parent)
    : ControlWidget(parent), control(Services()),
      m_shown(Show(control, new views::QXFreeProgKeysView(control))) {}

void FreeProgKeysWidget::setModule(Module module) {
    control.SetConfigID(static_cast<KeyboardModuleIDs>(module));
}

void FreeProgKeysWidget::setShowReleases(bool isWanted) {
    SetShowsReleases(control, isWanted);
}

LayeredFuncKeysWidget::LayeredFuncKeysWidget(QWidget* parent)
    : ControlWidget(parent), control(Services()),
      m_shown(Show(control, new views::QXLayeredFuncKeysView(control))) {}

void LayeredFuncKeysWidget::setShowReleases(bool isWanted) {
    SetShowsReleases(control, isWanted);
}

PosWidget::PosWidget(QWidget* parent)
    : ControlWidget(parent), control(Services()),
      m_shown(Show(control, new views::QXPosView(control))) {}

} // namespace qx::designer
