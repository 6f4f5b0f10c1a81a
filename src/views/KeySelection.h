// KeySelection: which keys of a grid are selected.
//
// The anchor is the selected key that was chosen last by itself; ranges begin there. It is -1 only
// while nothing is selected.
#pragma once

#include "views/KeyPainting.h"

#include <set>
#include <vector>

namespace qx::views {

class KeySelection {
public:
    [[nodiscard]] bool Has(int key) const { return m_keys.contains(key); }
    [[nodiscard]] const std::set<int>& Keys() const { return m_keys; }
    [[nodiscard]] int Anchor() const { return m_anchor; }

    void Only(int key); // -1: none
    // Adds the key, or removes it unless it is the only one.
    void Toggle(int key);
    // These keys, with the anchor where it is if there is one.
    void Range(std::set<int> keys);
    // Removes the keys that are not in `caps`.
    void KeepTo(const std::vector<KeyCap>& caps);

    bool operator==(const KeySelection&) const = default;

private:
    std::set<int> m_keys;
    int m_anchor = -1;
};

// The keys that take part in ranges and whose middle is in the rectangle around these two keys.
[[nodiscard]] std::set<int> KeysBetween(const std::vector<KeyCap>& caps, int from, int to);

} // namespace qx::views
