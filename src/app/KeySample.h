// KeySample: a few keys, drawn according to the preferences.
#pragma once

#include "qxcontrols/common/Types.h"
#include "views/KeyPainting.h"

#include <QWidget>

#include <functional>
#include <vector>

namespace qx::app {

class KeySample : public QWidget {
    Q_OBJECT
public:
    struct Look {
        std::vector<views::KeyCap> caps; // positioned by the sample
        double pointSize = 8;
    };

    // `look` is called whenever the sample is drawn; each row has `columns` keys.
    KeySample(int columns, std::function<Look()> look, QWidget* parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] Look Placed() const;

    int m_columns;
    std::function<Look()> m_look;
};

// A key for a sample.
[[nodiscard]] views::KeyCap SampleKey(const QString& caption, Long lColor, views::KeyState state);

} // namespace qx::app
