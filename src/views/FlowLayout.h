// FlowLayout: arranges widgets in lines, as many to a line as fit the width.
#pragma once

#include <QLayout>
#include <QList>

namespace qx::views {

class FlowLayout : public QLayout {
    Q_OBJECT
public:
    // The lines are as far apart as the widgets unless `lineSpacing` is given.
    explicit FlowLayout(int spacing, QWidget* parent = nullptr, int lineSpacing = -1);
    ~FlowLayout() override;

    // Widgets begin at multiples of the narrowest one's width, so that lines look like a table.
    void AlignInColumns() { m_isAligned = true; }

    void addItem(QLayoutItem* item) override { m_items.append(item); }
    [[nodiscard]] int count() const override { return static_cast<int>(m_items.size()); }
    [[nodiscard]] QLayoutItem* itemAt(int index) const override { return m_items.value(index); }
    [[nodiscard]] QLayoutItem* takeAt(int index) override;
    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override;
    [[nodiscard]] QSize minimumSize() const override;
    [[nodiscard]] QSize sizeHint() const override { return minimumSize(); }
    [[nodiscard]] Qt::Orientations expandingDirections() const override { return {}; }
    void setGeometry(const QRect& rect) override;

private:
    // The height that the widgets need in this rectangle; puts them there if `isPlaced`.
    int Arrange(const QRect& rect, bool isPlaced) const;

    QList<QLayoutItem*> m_items;
    int m_lineSpacing;
    bool m_isAligned = false;
};

} // namespace qx::views
