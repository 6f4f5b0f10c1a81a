// KeyboardState: whether the keyboard holds the document, as far as that is known without asking
// the keyboard.
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
        Interrupted, // a write is on record as interrupted
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
    void FindOutSoon(); // once for all changes of an action
    void FindOut();
    [[nodiscard]] Kind Compared();
    [[nodiscard]] bool IsInterrupted() const;

    Workbench& m_workbench;
    std::map<std::string, std::vector<host::Setting>, std::less<>> m_held; // by the sections' keys
    Kind m_kind = Kind::NoKeyboard;
    int m_changes = 0;
    bool m_isDue = false;
};

} // namespace qx::app
