#include "designer/DesignerPlugin.h"

#include "designer/ControlWidgets.h"
#include "views/LineIcon.h"

#include <QtUiPlugin/QDesignerCustomWidgetInterface>

namespace qx::designer {

namespace {

struct WidgetInfo {
    const char* name; // of the class, with its namespace
    const char* icon;
    const char* toolTip;
    QWidget* (*make)(QWidget* parent);
};

template <typename Widget>
QWidget* Make(QWidget* parent) {
    return new Widget(parent);
}

constexpr WidgetInfo kWidgets[] = {
    {"qx::designer::CommonKeyboardWidget", "common", "Settings of the whole keyboard",
     Make<CommonKeyboardWidget>},
    {"qx::designer::MagnetCardWidget", "magnet-card", "Settings of the magnetic card reader",
     Make<MagnetCardWidget>},
    {"qx::designer::BarcodeWidget", "barcode", "Settings of the barcode reader",
     Make<BarcodeWidget>},
    {"qx::designer::FreeProgKeysWidget", "free-keys", "Free keys", Make<FreeProgKeysWidget>},
    {"qx::designer::LayeredFuncKeysWidget", "layers", "Function keys in ten layers",
     Make<LayeredFuncKeysWidget>},
    {"qx::designer::PosWidget", "pos", "POS keys in blocks", Make<PosWidget>},
};

class ControlPlugin : public QDesignerCustomWidgetInterface {
public:
    explicit ControlPlugin(const WidgetInfo& info) : m_info(info) {}

    [[nodiscard]] QString name() const override { return QString::fromLatin1(m_info.name); }
    [[nodiscard]] QString group() const override { return QStringLiteral("QXControls"); }
    [[nodiscard]] QString toolTip() const override { return QString::fromLatin1(m_info.toolTip); }
    [[nodiscard]] QString whatsThis() const override { return toolTip(); }
    [[nodiscard]] QString includeFile() const override {
        return QStringLiteral("designer/ControlWidgets.h");
    }
    [[nodiscard]] QIcon icon() const override {
        return views::LineIcon(QString::fromLatin1(m_info.icon));
    }
    [[nodiscard]] bool isContainer() const override { return false; }
    [[nodiscard]] QWidget* createWidget(QWidget* parent) override { return m_info.make(parent); }

private:
    const WidgetInfo& m_info;
};

} // namespace

DesignerPlugin::DesignerPlugin(QObject* parent) : QObject(parent) {
    for (const WidgetInfo& info : kWidgets)
        m_widgets.push_back(std::make_unique<ControlPlugin>(info));
}

DesignerPlugin::~DesignerPlugin() = default;

QList<QDesignerCustomWidgetInterface*> DesignerPlugin::customWidgets() const {
    QList<QDesignerCustomWidgetInterface*> widgets;
    for (const auto& widget : m_widgets)
        widgets.append(widget.get());
    return widgets;
}

} // namespace qx::designer
