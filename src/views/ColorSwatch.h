// ColorSwatch: one colour to choose, shown with its number because colours can look alike.
#pragma once

#include <QAbstractButton>
#include <QColor>

namespace qx::views {

class ColorSwatch : public QAbstractButton {
    Q_OBJECT
public:
    explicit ColorSwatch(QWidget* parent = nullptr);

    // The button's checked state marks the chosen colour.
    void SetColor(const QColor& color);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QColor m_color;
};

} // namespace qx::views
