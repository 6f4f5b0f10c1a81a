// No exception leaves an event handler: the program continues, and the document is intact.
#include "app/Application.h"
#include "Desk.h"
#include "qxcontrols/keyprog/QXLayeredFuncKeys.h"

#include <QLineEdit>
#include <QMouseEvent>
#include <QSlider>

// From the leak checker, where there is one.
extern "C" {
[[gnu::weak]] void __lsan_disable();
[[gnu::weak]] void __lsan_enable();
}

namespace qx::test {
namespace {

// Makes the leak checker ignore allocations during its lifetime: an exception that passes through
// the toolkit leaks small objects of the toolkit.
struct Unchecked {
    Unchecked() {
        if (__lsan_disable != nullptr)
            __lsan_disable();
    }
    ~Unchecked() {
        if (__lsan_enable != nullptr)
            __lsan_enable();
    }
    Unchecked(const Unchecked&) = delete;
    Unchecked& operator=(const Unchecked&) = delete;
};

// A widget whose handlers throw.
class Thrower : public QWidget {
public:
    using QWidget::QWidget;
    void mousePressEvent(QMouseEvent*) override { throw std::runtime_error("a press"); }
    void keyPressEvent(QKeyEvent*) override { throw 42; }
    void paintEvent(QPaintEvent*) override {
        if (std::exchange(throwsWhenPainted, false))
            throw std::runtime_error("a picture");
    }
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::User)
            throw std::runtime_error("a filter");
        return false;
    }
    bool throwsWhenPainted = false;
};

TEST(Application, KeepsTheDocumentWhateverAHandlerThrows) {
    const Unchecked unchecked;
    auto& application = static_cast<app::Application&>(*qApp);
    const auto usual = application.show;
    QStringList shown;
    application.show = [&](const QString&, const QString& details) { shown.append(details); };

    Desk desk;
    QObject::connect(&application, &app::Application::Failed, desk.window.get(),
                     [&] { desk.window->Documents().KeepUnsaved(); });
    desk.Page("commonKeyboard");
    desk.Find<QSlider>("slidOutputDelay")->setValue(9);
    const std::string edited = desk.Document();
    Thrower thrower;
    thrower.resize(80, 80);
    thrower.show();
    desk.window->installEventFilter(&thrower);

    const auto after = [&](const char* what, const std::function<void()>& act) {
        shown.clear();
        act();
        EXPECT_TRUE(QTest::qWaitFor([&] { return !shown.isEmpty(); }, 5000)) << what;
        QTest::qWait(20); // a second one must not follow
        ASSERT_EQ(shown.size(), 1);
        EXPECT_TRUE(shown.front().contains(QLatin1String(what))) << shown.front().toStdString();
        EXPECT_EQ(desk.Document(), edited) << what;
    };
    after("a press", [&] { QTest::mouseClick(&thrower, Qt::LeftButton); });
    EXPECT_EQ(desk.FilesIn("records/unsaved").size(), 1) << "saved at once";
    after("", [&] { QTest::keyClick(&thrower, Qt::Key_A); });
    after("No keyboard is connected.", [&] { // in the window's words
        QTimer::singleShot(0, &thrower,
                           [] { throw host::Error(host::Cause::NoKeyboardConnected); });
    });
    after("a call", [&] {
        QMetaObject::invokeMethod(
            &thrower, [] { throw std::runtime_error("a call"); }, Qt::QueuedConnection);
    });
    after("a filter",
          [&] { QApplication::postEvent(desk.window.get(), new QEvent(QEvent::User)); });
    after("a picture", [&] {
        thrower.throwsWhenPainted = true;
        thrower.repaint();
    });
    after("many", [&] { // reported in one message
        for (int i = 0; i < 5; ++i)
            QTimer::singleShot(0, &thrower, [] { throw std::runtime_error("many"); });
    });
    after("in a dialog", [&] {
        desk.InDialog([](QWidget& dialog) {
            QTimer::singleShot(0, &dialog, [&dialog] {
                dialog.close();
                throw std::runtime_error("in a dialog");
            });
            QTest::qWait(20);
        });
        desk.Page("freeProgKeys");
        desk.ClickKey("layoutDisplay", 75);
        desk.Click("cmdEdit_0");
    });
    desk.window->removeEventFilter(&thrower);

    desk.Page("commonKeyboard"); // still works as before
    desk.Find<QSlider>("slidOutputDelay")->setValue(11);
    EXPECT_EQ(desk.Write().size(), 1);
    EXPECT_EQ(desk.Memory(MODULE_MAGNET_CONFIG, 0, 1), Bytes("0B"));
    application.show = usual;
}

TEST(Application, ALongDescriptionIsCutAndNeverEndsTheProgram) {
    Desk desk;
    desk.Page("layeredFuncKeys");
    desk.ClickKey("funcKeys", 3);
    auto* box = desk.Find<QLineEdit>("txtSymbolDesc");
    QTest::keyClicks(box, QString(70, QLatin1Char('x')));
    EXPECT_EQ(box->text().size(), 64);
    auto& keys = desk.ControlOf<QXLayeredFuncKeys>("layeredFuncKeys");
    EXPECT_EQ(keys.Layer(0).GetKeyDesc(3), std::string(64, 'x'));

    // A host may set a longer text than a keyboard stores: undo and redo restore it exactly, and
    // the document reports the loss.
    const std::string tooLong(80, 'y');
    desk.ClickKey("funcKeys", 4);
    keys.txtSymbolDesc.Text = tooLong;
    keys.txtSymbolDesc_Change();
    desk.ClickKey("funcKeys", 5);
    QTest::keyClicks(box, QStringLiteral("Cash"));
    desk.UndoAll();
    for (const Integer key : {Integer{3}, Integer{4}, Integer{5}})
        EXPECT_EQ(keys.Layer(0).GetKeyDesc(key), "") << key;
    while (desk.workbench.History().CanRedo())
        desk.workbench.Redo();
    EXPECT_EQ(keys.Layer(0).GetKeyDesc(4), tooLong);
    EXPECT_EQ(keys.Layer(0).GetKeyDesc(5), "Cash");
    EXPECT_TRUE(keys.DataChanged());
    EXPECT_TRUE(desk.window->Documents().Save());
    EXPECT_FALSE(keys.DataChanged());
    EXPECT_TRUE(desk.Notice().contains(QStringLiteral("Layered function keys: a text was cut")));
    desk.workbench.Undo();
    EXPECT_TRUE(keys.DataChanged()) << "it differs from the saved state";
    desk.unsaved = DocumentMenu::Answer::Discard;
    desk.window->Documents().Open(QString::fromStdString((desk.folder / "till.json").string()));
    EXPECT_EQ(keys.Layer(0).GetKeyDesc(4), std::string(64, 'y'));
    EXPECT_TRUE(desk.warnings.isEmpty()) << desk.warnings.join(' ').toStdString();
}

} // namespace
} // namespace qx::test
