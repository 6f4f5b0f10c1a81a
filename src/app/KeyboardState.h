// KeyboardState: whether the keyboard holds the document, as far as that is known from the last
// transfer, and whether a write to it was interrupted.
#pragma once

#include "app/Workbench.h"

#include <QObject>

#include <map>
#include <set>
#include <string>
#include <string_view>
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
    // Whether one of them belongs to this element of a section: "keys[0]", "keys[0][12]".
    [[nodiscard]] bool IsChanged(std::string_view section, std::string_view element) const;
    // Whether the key, on the page of its section, does something else than in the keyboard.
    [[nodiscard]] bool IsKeyChanged(std::string_view section, int key) const;

signals:
    void Looks(); // at the keyboard, for an interrupted write, which can take a while
    void Changed();

private:
    // A section as the keyboard holds it.
    struct Held {
        std::vector<host::Setting> settings;
        SectionFace::Groups groups;
        std::size_t revision = 0;      // of the document's section, when they were compared
        std::set<std::string> changes; // the places of the settings that differed then
    };

    void TakeHeld(bool isDocument);
    void TakeCompared(const std::vector<host::Difference>& differences);
    void LookAgain();   // at the keyboard
    void FindOutSoon(); // once for all changes of an action
    void FindOut();
    [[nodiscard]] Kind Compared();
    [[nodiscard]] bool HoldsInterrupted();
    [[nodiscard]] const Held* HeldOf(std::string_view section) const; // null for nothing to compare

    Workbench& m_workbench;
    std::map<std::string, Held, std::less<>> m_held; // by the sections' keys
    Kind m_kind = Kind::NoKeyboard;
    int m_changes = 0;
    bool m_isInterrupted = false;
    bool m_looks = true; // at the keyboard, when it finds out
    bool m_isDue = false;
};

} // namespace qx::app
