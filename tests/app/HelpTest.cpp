// Help: every page has some in both languages, and every setting its description.
#include "Desk.h"
#include "app/StartWizard.h"

#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QRegularExpression>
#include <QSlider>
#include <QTextBlock>
#include <QTextBrowser>

namespace qx::test {
namespace {

constexpr Integer kLanguages[] = {1033, 1031};

std::vector<QString> PagesOf(Desk& desk) {
    std::vector<QString> ids;
    const auto* pages = desk.Find<QListWidget>("pages");
    for (int row = 0; row < pages->count(); ++row)
        if (const QString id = pages->item(row)->data(Qt::UserRole).toString(); !id.isEmpty())
            ids.push_back(id);
    return ids;
}

QAction& HelpAction(Desk& desk) {
    for (auto* action : desk.window->findChildren<QAction*>())
        if (action->shortcut() == QKeySequence(Qt::Key_F1))
            return *action;
    throw std::runtime_error("no action shows help");
}

TEST(Help, EveryPageHasSomeUnderItsTitleAndLinksLeadToOtherPages) {
    Desk desk;
    for (const Integer language : kLanguages) {
        desk.Speak(language);
        for (const QString& id : PagesOf(desk)) {
            desk.Page(qPrintable(id));
            HelpAction(desk).trigger();
            auto* text = desk.window->findChild<QTextBrowser*>(QStringLiteral("helpText"));
            ASSERT_NE(text, nullptr);
            EXPECT_TRUE(text->isVisible());
            const QString title = text->document()->firstBlock().text();
            const auto* item = desk.Find<QListWidget>("pages")->currentItem();
            const bool isShared = id.startsWith(QLatin1String("funcKeys")); // by the free keys
            EXPECT_TRUE(isShared || title == item->text()) << title.toStdString();
            EXPECT_GT(text->toPlainText().size(), 200) << id.toStdString();
            EXPECT_FALSE(text->toPlainText().contains(u'@')) << id.toStdString() << ": an include";
            const QString page = text->source().toString();
            for (const auto& link : QRegularExpression(QStringLiteral("href=\"([^\"]+)\""))
                                        .globalMatch(text->toHtml())) {
                text->setSource(text->source().resolved(QUrl(link.captured(1))));
                EXPECT_GT(text->toPlainText().size(), 200)
                    << page.toStdString() << " links to " << link.captured(1).toStdString();
            }
        }
    }
}

// The window and its menus are blocked meanwhile.
TEST(Help, DialogsHaveTheirOwnWhichStaysBesideThem) {
    Desk desk;
    const auto expectHelp = [](QWidget& dialog, const char* title) {
        EXPECT_TRUE(QTest::qWaitForWindowActive(&dialog));
        QTest::keyClick(&dialog, Qt::Key_F1);
        auto* text = dialog.findChild<QTextBrowser*>(QStringLiteral("helpText"));
        ASSERT_NE(text, nullptr);
        EXPECT_TRUE(text->isVisible());
        EXPECT_EQ(text->document()->firstBlock().text(), QString::fromUtf8(title));
        EXPECT_GT(text->toPlainText().size(), 200);
        QTest::keyClick(text, Qt::Key_Escape);
        EXPECT_FALSE(text->isVisible());
        EXPECT_TRUE(dialog.isVisible()) << "Esc closes the help alone";
    };
    for (const Integer language : kLanguages) {
        desk.Speak(language);
        const bool isGerman = language == 1031;
        app::StartWizard wizard(desk.workbench.Preferences(), true, desk.window.get());
        wizard.open();
        expectHelp(wizard, "Start");
        wizard.close();
        desk.Page("commonKeyboard");
        desk.Find<QSlider>("slidOutputDelay")->setValue(9);
        desk.InDialog([&](QWidget& dialog) {
            expectHelp(dialog, isGerman ? "Prüfung vor dem Schreiben" : "Review before writing");
            dialog.close();
        });
        desk.window->Transfers().Write();
    }
}

bool IsSetting(const QWidget& widget) {
    return qobject_cast<const QLineEdit*>(&widget) || qobject_cast<const QComboBox*>(&widget) ||
           qobject_cast<const QAbstractSpinBox*>(&widget) ||
           qobject_cast<const QCheckBox*>(&widget) ||
           qobject_cast<const views::KeyGrid*>(&widget) ||
           (qobject_cast<const QAbstractSlider*>(&widget) && widget.focusPolicy() != Qt::NoFocus);
}

TEST(Help, EverySettingOfEveryPageHasADescription) {
    Desk desk;
    std::map<QString, QString> english;
    for (const Integer language : kLanguages) {
        desk.Speak(language);
        for (const QString& id : PagesOf(desk)) {
            desk.Page(qPrintable(id));
            for (const auto* widget : desk.window->centralWidget()->findChildren<QWidget*>()) {
                if (!IsSetting(*widget) ||
                    qobject_cast<QAbstractSpinBox*>(widget->parentWidget()) ||
                    qobject_cast<QComboBox*>(widget->parentWidget()))
                    continue;
                const QString name = widget->objectName();
                EXPECT_FALSE(widget->whatsThis().isEmpty())
                    << id.toStdString() << ": " << name.toStdString() << " "
                    << widget->metaObject()->className();
                const auto known = english.emplace(name, widget->whatsThis()).first;
                EXPECT_EQ(known->second == widget->whatsThis(), language == kLanguages[0])
                    << name.toStdString();
            }
        }
    }
}

} // namespace
} // namespace qx::test
