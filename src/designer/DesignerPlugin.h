// DesignerPlugin: offers the controls' widgets in Qt Designer and to its form loader.
#pragma once

#include <QtUiPlugin/QDesignerCustomWidgetCollectionInterface>

#include <QObject>

#include <memory>
#include <vector>

namespace qx::designer {

class DesignerPlugin : public QObject, public QDesignerCustomWidgetCollectionInterface {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QDesignerCustomWidgetCollectionInterface_iid)
    Q_INTERFACES(QDesignerCustomWidgetCollectionInterface)
public:
    explicit DesignerPlugin(QObject* parent = nullptr);
    ~DesignerPlugin() override;
    [[nodiscard]] QList<QDesignerCustomWidgetInterface*> customWidgets() const override;

private:
    std::vector<std::unique_ptr<QDesignerCustomWidgetInterface>> m_widgets;
};

} // namespace qx::designer
