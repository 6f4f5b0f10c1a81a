// KeyboardPicture: the connected keyboard with its programmed keys, to look at. A click on a key
// leads to the page where it is programmed.
#pragma once

#include "views/KeyGrid.h"

#include <string>

namespace qx {
class KeySequence;
}

namespace qx::app {

class Workbench;

class KeyboardPicture : public views::KeyGrid {
    Q_OBJECT
public:
    explicit KeyboardPicture(Workbench& workbench, QWidget* parent = nullptr);

signals:
    void PlaceChosen(const std::string& place);

protected:
    void showEvent(QShowEvent* event) override;

private:
    // A key of a section.
    struct Owner {
        std::string section;
        int key = -1;
        const KeySequence* sent = nullptr;
    };
    [[nodiscard]] Owner OwnerOf(int positionCode) const;
    void ShowKeys();

    Workbench& m_workbench;
};

} // namespace qx::app
