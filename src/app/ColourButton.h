// ColourButton: shows a colour of the preferences and lets the user choose another.
//
// A click opens the colour dialog; the context menu restores the default colour. A system colour
// remains one until the user chooses a colour different from its current one.
#pragma once

#include "qxcontrols/common/Types.h"

#include <QPushButton>

#include <functional>

namespace qx::app {

class ColourButton : public QPushButton {
    Q_OBJECT
public:
    // `defaultColour` is called when the user chooses that colour.
    explicit ColourButton(std::function<Long()> defaultColour, QWidget* parent = nullptr);

    // In the form of the preferences; see PreferenceType::Colour.
    [[nodiscard]] Long Colour() const { return m_colour; }
    void SetColour(Long lColor);

signals:
    void Picked(qx::Long lColor); // by the user

protected:
    void changeEvent(QEvent* event) override;

private:
    void AskUser();
    void Pick(Long lColor);
    void ShowColour();

    Long m_colour = 0;
};

} // namespace qx::app
