// Desk: the application as a technician uses it: its real widgets, clicked, on a simulated keyboard
// whose memory can be looked at.
#pragma once

#include "app/Language.h"
#include "app/MainWindow.h"
#include "simulator/FixedAreas.h"
#include "simulator/SimulatedDriver.h"
#include "support/TempFolder.h"
#include "support/TestKeyboard.h"
#include "support/Widgets.h"
#include "views/KeyGrid.h"
#include "views/QtPlatform.h"

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QListWidget>
#include <QPointer>
#include <QSettings>
#include <QTabBar>
#include <QTimer>
#include <QToolButton>
#include <QTreeWidget>

namespace qx::test {

using app::DocumentMenu;
using app::MainWindow;

class Desk {
public:
    using Ending = app::Transfers::Ending;
    // In a separate folder, or in this one; with separate records, or these.
    explicit Desk(const char* model = "full", const std::filesystem::path& where = {},
                  const std::filesystem::path& records = {})
        : folder(where.empty() ? m_own / "" : where),
          workbench(platform.Services(), {{{}, folder / "keyboard.qxk", model},
                                          QX_LAYOUTS,
                                          {},
                                          folder / "settings.ini",
                                          records.empty() ? folder / "records" : records}) {
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope,
                           QString::fromStdString((folder / "qt").string()));
        workbench.Preferences().SetPreferedAppLang(1033);
        window = std::make_unique<MainWindow>(workbench, platform.Services(), language);
        window->screen.ask = [this](const QString&) { return answer; };
        window->screen.warn = [this, usual = window->screen.warn](const app::Failure& failure) {
            warnings.append(failure.text);
            details.append(failure.details);
            usual(failure);
        };
        window->Documents().questions.unsaved = [this](const QString&) { return unsaved; };
        window->Documents().questions.fileToSave = [this](const QString&) {
            return QString::fromStdString((folder / saveAs).string());
        };
        window->Documents().questions.notSaved = [this](const app::Failure& failure, bool closing) {
            warnings.append(failure.text);
            wasClosing = closing;
            return notSaved;
        };
        window->Documents().questions.leftCopy = [this](const QString& text) {
            leftCopies.append(text);
            return leftCopy;
        };
        window->Transfers().questions.recover = [this](const QString& text, const QString&) {
            ++timesAsked;
            askedToRecover = text;
            return recover;
        };
        window->Transfers().questions.mayRepair = [this](const QString& text, const QString&) {
            askedToRepair.append(text);
            return answer;
        };
        window->Transfers().questions.mayWrite = [this](const QString&, const QString& text) {
            askedToWrite.append(text);
            return answer;
        };
        window->resize(1100, 760);
        bool hasAppeared = false;
        QObject::connect(window.get(), &MainWindow::Appeared, window.get(),
                         [&] { hasAppeared = true; });
        window->show();
        EXPECT_TRUE(QTest::qWaitFor([&] { return hasAppeared; }));
        EXPECT_TRUE(window->Keyboards().Connect(workbench.Choice()));
        window->Transfers().Read();
    }

    // The widget of this name that is on the screen.
    template <typename Widget>
    Widget* Find(const char* name) {
        const QString wanted = QString::fromLatin1(name);
        for (Widget* widget : window->findChildren<Widget*>(wanted))
            if (widget->isVisible())
                return widget;
        throw std::runtime_error(std::string("no widget ") + name);
    }
    // The control of a section.
    template <typename Control>
    Control& ControlOf(const char* section) {
        return dynamic_cast<Control&>(workbench.Configuration().Find(section)->Control());
    }
    void Page(const char* id) { window->ShowPage(QString::fromLatin1(id)); }
    void Click(const char* name) {
        auto* widget = Find<QWidget>(name);
        EXPECT_TRUE(widget->isEnabled()) << name;
        QTest::mouseClick(widget, Qt::LeftButton, {}, {8, widget->height() / 2});
    }
    void ShowLayer(int layer) {
        auto* tabs = Find<QTabBar>("layers");
        QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(layer).center());
    }
    void ClickKey(const char* grid, int key) {
        auto* keys = Find<views::KeyGrid>(grid);
        QTest::mouseClick(keys, Qt::LeftButton, {}, keys->KeyRect(key).center());
    }
    static void Drag(QWidget& widget, const QPoint& from, const QPoint& to,
                     Qt::KeyboardModifiers modifiers = {}) {
        QTest::mousePress(&widget, Qt::LeftButton, modifiers, from);
        for (const QPoint& at : {(from + to) / 2, to}) {
            QMouseEvent move(QEvent::MouseMove, at, widget.mapToGlobal(at), Qt::NoButton,
                             Qt::LeftButton, modifiers);
            QApplication::sendEvent(&widget, &move);
        }
        QTest::mouseRelease(&widget, Qt::LeftButton, modifiers, to);
    }
    // Waits until the chip shows this.
    bool ShowsState(const QString& text) {
        return QTest::qWaitFor([&] { return Find<QToolButton>("stateChip")->text() == text; });
    }
    // Waits until the window speaks this language, which it does in the event loop.
    void Speak(Integer nLanguage) {
        workbench.Preferences().SetPreferedAppLang(nLanguage);
        window->ApplyPreferences();
        AwaitTitle(nLanguage == 1031 ? QStringLiteral("Überblick") : QStringLiteral("Overview"));
    }
    void AwaitTitle(const QString& firstPage) {
        EXPECT_TRUE(QTest::qWaitFor(
            [&] { return Find<QListWidget>("pages")->item(1)->text() == firstPage; }));
    }
    // Does this when a write begins this step.
    void AtStep(host::Step wanted, const std::function<void()>& act) {
        auto* once = new QObject(window.get());
        QObject::connect(&workbench, &app::Workbench::Stepped, once, [=, this](host::Step step) {
            if (step != wanted)
                return;
            QObject::disconnect(&workbench, nullptr, once, nullptr);
            once->deleteLater();
            act();
        });
    }
    // Does this in the dialog that comes up next, as long as the result lives.
    QPointer<QTimer> InDialog(const std::function<void(QWidget& dialog)>& act) {
        auto* watch = new QTimer(window.get());
        QObject::connect(watch, &QTimer::timeout, window.get(), [watch, act] {
            QWidget* dialog = QApplication::activeModalWidget();
            if (dialog == nullptr || !dialog->isVisible())
                return;
            watch->deleteLater();
            watch->stop();
            const QPointer<QWidget> guard(dialog);
            act(*dialog);
            if (guard != nullptr && guard->isVisible()) {
                ADD_FAILURE() << "the dialog stays open";
                guard->close();
            }
        });
        watch->start(5);
        return watch;
    }
    static void ClickIn(QWidget& dialog, const char* name) {
        auto* widget = dialog.findChild<QWidget*>(QString::fromLatin1(name));
        ASSERT_NE(widget, nullptr) << name;
        QTest::mouseClick(widget, Qt::LeftButton);
    }
    // Lets a key of the page send A, by clicks in the sequence editor.
    void Edit(const char* page, int key) {
        Page(page);
        ClickKey("layoutDisplay", key);
        InDialog([](QWidget& dialog) {
            auto* keys = dialog.findChild<views::KeyGrid*>();
            QTest::mouseClick(keys, Qt::LeftButton, {}, keys->KeyRect(31).center());
            ClickIn(dialog, "cmdOK");
        });
        Click("cmdEdit_0");
    }
    bool IsShownProgrammed(const char* grid, int key) {
        const auto& caps = Find<views::KeyGrid>(grid)->Keys();
        return std::any_of(caps.begin(), caps.end(), [&](const views::KeyCap& cap) {
            return cap.index == key && cap.state == views::KeyState::Programmed;
        });
    }
    // Reviews and writes; returns the texts of the review's changes.
    QStringList Write() {
        QStringList changes;
        const QPointer<QTimer> review = InDialog([&](QWidget& dialog) {
            const auto* warning = dialog.findChild<QLabel*>(QStringLiteral("identifierWarning"));
            identifierWarning = warning == nullptr ? QString() : warning->text();
            auto* tree = dialog.findChild<QTreeWidget*>();
            for (int i = 0; i < tree->topLevelItemCount(); ++i)
                for (int j = 0; j < tree->topLevelItem(i)->childCount(); ++j) {
                    const auto* item = tree->topLevelItem(i)->child(j);
                    changes.append(item->text(0) + ": " + item->text(1) + " -> " + item->text(2));
                }
            ClickIn(dialog, "cmdWrite");
        });
        window->Transfers().Write();
        delete review; // nothing was to be written
        return changes;
    }
    [[nodiscard]] std::string Memory(KeyboardModuleIDs eModule, Long offset, Long size) {
        const Long base = workbench.Session().Access().GetBaseAddressForModule(eModule);
        return workbench.Simulated()->Memory(base + offset, size);
    }
    // The notice above the page.
    [[nodiscard]] QString Notice() const {
        const auto* text = window->findChild<QLabel*>(QStringLiteral("lblNotice"));
        return text->isVisible() ? text->text() : QString();
    }
    [[nodiscard]] QStringList FilesIn(const char* name) const {
        QStringList files;
        std::error_code none;
        for (const auto& entry : std::filesystem::directory_iterator(folder / name, none))
            if (entry.path().extension() != ".lock")
                files.append(QString::fromStdString(entry.path().filename().string()));
        return files;
    }
    // All that the keyboard holds.
    [[nodiscard]] std::string Held() { return workbench.Simulated()->Memory(0, sim::kMemorySize); }
    // The window's own Undo, which also shows what it has undone.
    QAction& UndoAction() {
        for (auto* action : window->findChildren<QAction*>())
            if (action->shortcut() == QKeySequence(Qt::CTRL | Qt::Key_Z))
                return *action;
        throw std::runtime_error("no action undoes");
    }
    void UndoAll() {
        while (workbench.History().CanUndo())
            workbench.Undo();
    }
    [[nodiscard]] std::string Document() { return workbench.History().Document().ToText(); }

private:
    TempFolder m_own;

public:
    std::filesystem::path folder;
    bool answer = true;
    const char* saveAs = "till.json";
    Ending recover = Ending::RollBack;
    int timesAsked = 0; // to recover
    QString askedToRecover;
    QStringList askedToWrite;
    QStringList askedToRepair;
    DocumentMenu::Answer unsaved = DocumentMenu::Answer::Cancel;
    DocumentMenu::Answer notSaved = DocumentMenu::Answer::Cancel;
    bool wasClosing = false;   // when it could not be saved
    QString identifierWarning; // of the last review
    DocumentMenu::LeftAnswer leftCopy = DocumentMenu::LeftAnswer::Later;
    QStringList leftCopies;
    QStringList warnings;
    QStringList details;
    views::QtPlatform platform;
    app::Language language;
    app::Workbench workbench;
    std::unique_ptr<MainWindow> window;
};

} // namespace qx::test
