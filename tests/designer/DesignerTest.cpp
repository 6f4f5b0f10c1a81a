// The plug-in as Qt Designer and the form loader use it: from its file.
#include "designer/ControlWidgets.h"

#include <QApplication>
#include <QBuffer>
#include <QCheckBox>
#include <QFormBuilder>
#include <QUiLoader>
#include <QtDesigner/QDesignerFormEditorInterface>
#include <QtDesigner/QDesignerWidgetDataBaseInterface>
#include <QtDesigner/QDesignerWidgetFactoryInterface>

#include <gtest/gtest.h>

// Qt Designer's own start-up, whose header Qt does not install.
class QDesignerComponents {
public:
    static void initializeResources();
    static void initializePlugins(QDesignerFormEditorInterface* core);
    static QDesignerFormEditorInterface* createFormEditor(QObject* parent);
};

namespace qx::designer {

namespace {

const QStringList kNames = {
    "qx::designer::CommonKeyboardWidget",  "qx::designer::MagnetCardWidget",
    "qx::designer::BarcodeWidget",         "qx::designer::FreeProgKeysWidget",
    "qx::designer::LayeredFuncKeysWidget", "qx::designer::PosWidget",
};

QByteArray Form() {
    return QStringLiteral(R"(<ui version="4.0"><class>Form</class>
<widget class="QWidget" name="Form"><layout class="QVBoxLayout">
 <item><widget class="qx::designer::FreeProgKeysWidget" name="keys">
  <property name="keyboardLayout"><string>%1us.qxl</string></property>
  <property name="module"><enum>qx::designer::FreeProgKeysWidget::FunctionKeys4620</enum></property>
  <property name="showReleases"><bool>true</bool></property></widget></item>
 <item><widget class="qx::designer::BarcodeWidget" name="barcode"/></item>
 <item><widget class="qx::designer::PosWidget" name="pos">
  <property name="keyboardLayout"><string>%1missing.qxl</string></property></widget></item>
</layout></widget></ui>)")
        .arg(QStringLiteral(QX_LAYOUTS))
        .toUtf8();
}

std::unique_ptr<QWidget> Load(const QByteArray& form) {
    QFormBuilder loader;
    loader.setPluginPath({QStringLiteral(QX_DESIGNER_FOLDER)});
    QBuffer file;
    file.setData(form);
    file.open(QIODevice::ReadOnly);
    std::unique_ptr<QWidget> widget(loader.load(&file));
    EXPECT_NE(widget, nullptr) << loader.errorString().toStdString();
    return widget;
}

} // namespace

TEST(Designer, TheFormLoaderKnowsTheWidgets) {
    QUiLoader loader;
    loader.addPluginPath(QStringLiteral(QX_DESIGNER_FOLDER));
    for (const QString& name : kNames)
        EXPECT_TRUE(loader.availableWidgets().contains(name)) << name.toStdString();
}

TEST(Designer, AFormKeepsThePropertiesOfItsWidgets) {
    const auto form = Load(Form());
    auto* keys = form->findChild<QWidget*>("keys");
    ASSERT_NE(keys, nullptr);
    EXPECT_EQ(keys->property("module").toInt(), MODULE_FUNCKEYS_X1_4620);
    EXPECT_TRUE(keys->property("showReleases").toBool());
    EXPECT_TRUE(keys->findChild<QCheckBox*>("chkShowDetails")->isChecked());
    EXPECT_NE(form->findChild<QWidget*>("barcode"), nullptr);
}

TEST(Designer, DesignersFactoryMakesEveryWidget) {
    QDesignerComponents::initializeResources();
    const std::unique_ptr<QDesignerFormEditorInterface> editor(
        QDesignerComponents::createFormEditor(nullptr));
    QDesignerComponents::initializePlugins(editor.get());
    for (const QString& name : kNames) {
        EXPECT_GE(editor->widgetDataBase()->indexOfClassName(name), 0) << name.toStdString();
        const std::unique_ptr<QWidget> widget(editor->widgetFactory()->createWidget(name));
        ASSERT_NE(widget, nullptr) << name.toStdString();
        EXPECT_STREQ(widget->metaObject()->className(), name.toLatin1().constData());
    }
}

} // namespace qx::designer

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    // Designer looks for plug-ins in the folder "designer" of each of these.
    QApplication::addLibraryPath(QStringLiteral(QX_DESIGNER_FOLDER "/.."));
    return RUN_ALL_TESTS();
}
