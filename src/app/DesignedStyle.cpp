#include "app/DesignedStyle.h"

#include "views/LineIcon.h"

#include <QAbstractItemView>
#include <QPainter>
#include <QStyleOption>
#include <QWidget>

#include <algorithm>

namespace qx::app {

namespace {

constexpr int kDarker = 140; // percent: Fusion's lines are that much darker than the window
constexpr double kRadius = 2;
constexpr float kTint = 0.3F;
constexpr int kGrid = 8;              // pixels: between widgets, and around them
constexpr int kButtonPadding = kGrid; // at the sides of a text
constexpr int kTabMark = 2;
constexpr int kGroupTitleMargin = 3; // between a group's title and its frame

void PaintChecked(QPainter& painter, const QRect& rect, const QPalette& palette) {
    QColor color = palette.color(QPalette::Highlight);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(color);
    color.setAlphaF(kTint);
    painter.setBrush(color);
    painter.drawRoundedRect(QRectF(rect).adjusted(0.5, 0.5, -0.5, -0.5), kRadius, kRadius);
    painter.restore();
}

// A frame that the user operates, other than a list, whose rows show what it is.
bool IsField(const QWidget* widget) {
    return widget != nullptr && widget->focusPolicy() != Qt::NoFocus &&
           qobject_cast<const QAbstractItemView*>(widget) == nullptr;
}

// Tabs and their pages are hardly brighter than the window; groups on them are seen as on others.
template <typename Option>
Option OnWindow(Option tab, const QStyleOption& original) {
    tab.palette.setColor(QPalette::Button, original.palette.color(QPalette::Window));
    return tab;
}

} // namespace

DesignedStyle::DesignedStyle() : QProxyStyle(QStringLiteral("fusion")), m_palettes(64) {}

template <typename Option>
Option DesignedStyle::Lined(const Option& option, QPalette::ColorRole line) const {
    const Key key{{option.palette.cacheKey(), option.palette.currentColorGroup()}, line};
    QPalette* palette = m_palettes.object(key);
    if (palette == nullptr) {
        palette = new QPalette(option.palette);
        palette->setColor(QPalette::Window, option.palette.color(line).lighter(kDarker));
        m_palettes.insert(key, palette);
    }
    Option lined = option;
    lined.palette = *palette;
    return lined;
}

void DesignedStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option,
                                  QPainter* painter, const QWidget* widget) const {
    const auto draw = [&](const QStyleOption& lined) {
        QProxyStyle::drawPrimitive(element, &lined, painter, widget);
    };
    switch (element) {
    case PE_IndicatorCheckBox:
    case PE_IndicatorRadioButton:
    case PE_PanelButtonCommand: // tool buttons too
        if (const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option))
            draw(Lined(*button, QPalette::Mid));
        else
            draw(Lined(*option, QPalette::Mid));
        if (element == PE_PanelButtonCommand && option->state.testAnyFlags(State_On | State_Sunken))
            PaintChecked(*painter, option->rect, option->palette);
        return;
    case PE_FrameLineEdit:
    case PE_Frame:
        if (const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(option))
            return draw(Lined(*frame, element == PE_FrameLineEdit || IsField(widget)
                                          ? QPalette::Mid
                                          : QPalette::Midlight));
        break;
    case PE_FrameTabWidget:
        if (const auto* tabs = qstyleoption_cast<const QStyleOptionTabWidgetFrame*>(option))
            return draw(OnWindow(Lined(*tabs, QPalette::Midlight), *option));
        break;
    case PE_FrameTabBarBase:
        if (const auto* tabs = qstyleoption_cast<const QStyleOptionTabBarBase*>(option))
            return draw(Lined(*tabs, QPalette::Midlight));
        break;
    case PE_FrameGroupBox: {
        const int title = std::max(proxy()->pixelMetric(PM_IndicatorHeight, option, widget),
                                   option->fontMetrics.height()) +
                          kGroupTitleMargin;
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->setPen(option->palette.color(QPalette::Midlight));
        painter->setBrush(Qt::NoBrush);
        painter->drawRoundedRect(QRectF(option->rect).adjusted(0.5, title + 0.5, -0.5, -0.5),
                                 kRadius, kRadius);
        painter->restore();
        return;
    }
    default:
        break;
    }
    QProxyStyle::drawPrimitive(element, option, painter, widget);
}

void DesignedStyle::drawControl(ControlElement element, const QStyleOption* option,
                                QPainter* painter, const QWidget* widget) const {
    const auto* button = qstyleoption_cast<const QStyleOptionToolButton*>(option);
    if (element == CE_ToolButtonLabel && button != nullptr)
        return DrawLabel(*button, painter, widget);
    const auto* tab = qstyleoption_cast<const QStyleOptionTab*>(option);
    if (element != CE_TabBarTabShape || tab == nullptr)
        return QProxyStyle::drawControl(element, option, painter, widget);
    QStyleOptionTab lined = OnWindow(Lined(*tab, QPalette::Midlight), *option);
    lined.features |= QStyleOptionTab::HasFrame; // else the line's colour fills the tab
    QProxyStyle::drawControl(element, &lined, painter, widget);
    if (tab->state.testFlag(State_Selected)) {
        const QRect& rect = tab->rect;
        painter->fillRect(QRect(rect.left() + 1, rect.top(), rect.width() - 2, kTabMark),
                          tab->palette.color(QPalette::Highlight));
    }
}

// In a button with a frame, the icon and the text beside it are in its middle.
void DesignedStyle::DrawLabel(const QStyleOptionToolButton& button, QPainter* painter,
                              const QWidget* widget) const {
    constexpr int kAroundIcon = 4; // the style centres the icon in a place this much wider
    QStyleOptionToolButton label = button;
    if (!button.icon.isNull() && !button.text.isEmpty() &&
        !button.state.testFlag(State_AutoRaise) &&
        button.toolButtonStyle == Qt::ToolButtonTextBesideIcon) {
        const int text = button.fontMetrics.size(Qt::TextShowMnemonic, button.text).width();
        const int content = button.iconSize.width() + kAroundIcon + text;
        label.rect.setWidth(content +
                            kAroundIcon / 2); // the same gap after the text as before the icon
        label.rect.moveCenter(button.rect.center());
    }
    QProxyStyle::drawControl(CE_ToolButtonLabel, &label, painter, widget);
}

void DesignedStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                       QPainter* painter, const QWidget* widget) const {
    const auto draw = [&](const QStyleOptionComplex& lined) {
        QProxyStyle::drawComplexControl(control, &lined, painter, widget);
    };
    if (const auto* number = qstyleoption_cast<const QStyleOptionSpinBox*>(option))
        return draw(Lined(*number, QPalette::Mid));
    if (const auto* choice = qstyleoption_cast<const QStyleOptionComboBox*>(option))
        return draw(Lined(*choice, QPalette::Mid));
    const auto* button = qstyleoption_cast<const QStyleOptionToolButton*>(option);
    if (button != nullptr && button->features.testFlag(QStyleOptionToolButton::Arrow)) {
        QStyleOptionToolButton fold = *button; // its arrow shows that it is open
        fold.state.setFlag(State_On, false);
        return draw(fold);
    }
    const auto* slider = qstyleoption_cast<const QStyleOptionSlider*>(option);
    if (control != CC_Slider || slider == nullptr)
        return draw(*option);
    QStyleOptionSlider part = Lined(*slider, QPalette::Mid);
    part.subControls = slider->subControls & ~SC_SliderHandle;
    draw(part);
    part.subControls = slider->subControls & SC_SliderHandle;
    part.palette.setColor(QPalette::Button, part.palette.color(QPalette::PlaceholderText));
    draw(part);
}

QSize DesignedStyle::sizeFromContents(ContentsType type, const QStyleOption* option,
                                      const QSize& contents, const QWidget* widget) const {
    const QSize size = QProxyStyle::sizeFromContents(type, option, contents, widget);
    if (type != CT_PushButton)
        return size;
    return size.expandedTo({contents.width() + 2 * kButtonPadding, 0});
}

int DesignedStyle::pixelMetric(PixelMetric metric, const QStyleOption* option,
                               const QWidget* widget) const {
    switch (metric) {
    case PM_LayoutLeftMargin:
    case PM_LayoutTopMargin:
    case PM_LayoutRightMargin:
    case PM_LayoutBottomMargin:
    case PM_LayoutHorizontalSpacing:
    case PM_LayoutVerticalSpacing:
        return kGrid;
    default:
        return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

int DesignedStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                             QStyleHintReturn* returned) const {
    return hint == SH_DialogButtonBox_ButtonsHaveIcons
               ? 0
               : QProxyStyle::styleHint(hint, option, widget, returned);
}

QIcon DesignedStyle::standardIcon(StandardPixmap icon, const QStyleOption* option,
                                  const QWidget* widget) const {
    switch (icon) {
    case SP_MessageBoxInformation:
        return views::LineIcon(QStringLiteral("information"));
    case SP_MessageBoxQuestion:
        return views::LineIcon(QStringLiteral("help"));
    case SP_MessageBoxWarning:
        return views::LineIcon(QStringLiteral("warning"));
    case SP_MessageBoxCritical:
        return views::LineIcon(QStringLiteral("error"));
    case SP_LineEditClearButton:
        return views::LineIcon(QStringLiteral("close"));
    default:
        return QProxyStyle::standardIcon(icon, option, widget);
    }
}

} // namespace qx::app
