// Light and dark windows: lines of controls, texts, and switches that are on.
#include "app/Appearance.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QImage>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QSpinBox>
#include <QStyle>
#include <QTabBar>
#include <QToolButton>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace qx::test {
namespace {

constexpr double kSeen = 3; // the contrast that lines and large texts need

double Luminance(const QColor& color) {
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
           0.0722 * linear(color.blueF());
}

double Contrast(const QColor& a, const QColor& b) {
    const auto [least, most] = std::minmax({Luminance(a), Luminance(b)});
    return (most + 0.05) / (least + 0.05);
}

QImage Picture(QWidget& control) {
    QWidget window;
    control.setParent(&window);
    control.resize(120, control.sizeHint().height());
    window.resize(control.size());
    const QImage picture = window.grab().toImage();
    control.setParent(nullptr);
    return picture;
}

class AppearanceTest : public testing::TestWithParam<app::Appearance> {
protected:
    AppearanceTest() { app::UseAppearance(GetParam()); }
    ~AppearanceTest() override { app::UseAppearance(app::Appearance::System); }

    static QColor Color(QPalette::ColorRole role, QPalette::ColorGroup group = QPalette::Active) {
        return QApplication::palette().color(group, role);
    }
};

INSTANTIATE_TEST_SUITE_P(Schemes, AppearanceTest,
                         testing::Values(app::Appearance::Light, app::Appearance::Dark));

TEST_P(AppearanceTest, TheLineAroundEachControlIsSeen) {
    QCheckBox check;
    QRadioButton choice;
    QLineEdit text;
    QSpinBox number;
    QComboBox list;
    QPushButton button;
    for (QWidget* control :
         std::initializer_list<QWidget*>{&check, &choice, &text, &number, &list, &button}) {
        const QImage picture = Picture(*control);
        double most = 0;
        for (int x = 0; x < 6; ++x) // from the left edge inwards
            most = std::max(most, Contrast(picture.pixelColor(x, picture.height() / 2),
                                           Color(QPalette::Window)));
        EXPECT_GE(most, kSeen) << control->metaObject()->className();
    }
    QSlider slider(Qt::Horizontal);
    const int knob = slider.style()->pixelMetric(QStyle::PM_SliderLength) / 2;
    const QImage picture = Picture(slider);
    EXPECT_GE(Contrast(picture.pixelColor(knob, picture.height() / 2), Color(QPalette::Window)),
              kSeen);
}

TEST_P(AppearanceTest, TextsAreReadAndDisabledOnesLookDisabled) {
    for (const auto& [text, ground] : {std::pair(QPalette::WindowText, QPalette::Window),
                                       std::pair(QPalette::Text, QPalette::Base),
                                       std::pair(QPalette::Text, QPalette::AlternateBase),
                                       std::pair(QPalette::ButtonText, QPalette::Button)}) {
        const double enabled = Contrast(Color(text), Color(ground));
        const double disabled =
            Contrast(Color(text, QPalette::Disabled), Color(ground, QPalette::Disabled));
        EXPECT_GE(enabled, 7) << ground;
        EXPECT_GE(disabled, kSeen) << ground;
        EXPECT_LE(disabled, enabled / 2) << ground;
    }
    QPushButton button;
    button.setEnabled(false);
    const QImage picture = Picture(button);
    for (const int y : {3, picture.height() - 4}) // the lightest and the darkest
        EXPECT_GE(Contrast(picture.pixelColor(picture.width() / 2, y),
                           Color(QPalette::ButtonText, QPalette::Disabled)),
                  kSeen)
            << y;
    EXPECT_GE(Contrast(Color(QPalette::PlaceholderText), Color(QPalette::Base)), 4.5);
    EXPECT_GE(Contrast(Color(QPalette::HighlightedText), Color(QPalette::Highlight)), 4.5);
}

TEST_P(AppearanceTest, AButtonThatIsOnDiffersFromOneThatIsNot) {
    QToolButton button;
    button.setCheckable(true);
    const auto middle = [&](bool isOn) {
        button.setChecked(isOn);
        const QImage picture = Picture(button);
        return picture.pixelColor(picture.rect().center());
    };
    const QColor on = middle(true);
    const QColor off = middle(false);
    EXPECT_GE(std::max({std::abs(on.red() - off.red()), std::abs(on.green() - off.green()),
                        std::abs(on.blue() - off.blue())}),
              40);
    EXPECT_GE(Contrast(on, Color(QPalette::ButtonText)), 4.5);
}

TEST_P(AppearanceTest, TabsAreReadAndTheOneThatIsChosenHasALine) {
    QTabBar tabs; // without pages, as that of the layers
    tabs.addTab({});
    tabs.addTab({});
    const QImage picture = Picture(tabs);
    for (const int tab : {0, 1})
        EXPECT_GE(
            Contrast(picture.pixelColor(tabs.tabRect(tab).center()), Color(QPalette::WindowText)),
            7)
            << tab;
    const QRect chosen = tabs.tabRect(0);
    EXPECT_GE(Contrast(picture.pixelColor(chosen.center().x(), chosen.top()),
                       picture.pixelColor(chosen.center())),
              kSeen);
}

} // namespace
} // namespace qx::test
