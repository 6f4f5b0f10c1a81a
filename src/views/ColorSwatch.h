// ColorSwatch: one colour to choose, with its number, because two colours can be alike.
#pragma once

#include <QAbstractButton>
#include <QColor>

namespace qx::views {

class ColorSwatch : public QAbstractButton {
    Q_OBJECT
public:
    explicit ColorSwatch(QWidget* parent = nullptr);

    // Whether it is the chosen one is the button's checked state.
    void SetColor(const QColor& color);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QColor m_color;
};

} // namespace qx::views
