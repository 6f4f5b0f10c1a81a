// KeyboardState: whether the keyboard holds the document, as far as that is known from the last
// transfer, and whether a write to it was interrupted.
#pragma once

#include "app/Workbench.h"

#include <QObject>

#include <map>
#include <string>
#include <vector>

namespace qx::app {

class KeyboardState : public QObject {
    Q_OBJECT
public:
    enum class Kind {
        NoKeyboard,
        Interrupted, // it holds a part of an interrupted write, or cannot be asked about one
        Unknown,     // the keyboard was not read, or was changed by something else
        Same,        // everything in the document that this keyboard has modules for
        Differs,
    };

    explicit KeyboardState(Workbench& workbench, QObject* parent = nullptr);

    [[nodiscard]] Kind Now() const { return m_kind; }
    // The number of settings that differ.
    [[nodiscard]] int Changes() const { return m_changes; }

signals:
    void Changed();

private:
    void TakeHeld(bool isDocument);
    void LookAgain();   // at the keyboard
    void FindOutSoon(); // once for all changes of an action
    void FindOut();
    [[nodiscard]] Kind Compared();
    [[nodiscard]] bool HoldsInterrupted() const;

    Workbench& m_workbench;
    std::map<std::string, std::vector<host::Setting>, std::less<>> m_held; // by the sections' keys
    Kind m_kind = Kind::NoKeyboard;
    int m_changes = 0;
    bool m_isInterrupted = false;
    bool m_looks = true; // at the keyboard, when it finds out
    bool m_isDue = false;
};

} // namespace qx::app
