#include "views/KeySelection.h"

#include <algorithm>
#include <utility>

namespace qx::views {

void KeySelection::Only(int key) {
    m_anchor = key;
    m_keys.clear();
    if (key >= 0)
        m_keys.insert(key);
}

void KeySelection::Toggle(int key) {
    if (m_keys.insert(key).second) {
        m_anchor = key;
    } else if (m_keys.size() > 1) {
        m_keys.erase(key);
        if (m_anchor == key)
            m_anchor = *m_keys.begin();
    }
}

void KeySelection::Range(std::set<int> keys) {
    m_keys = std::move(keys);
    if (m_anchor >= 0)
        m_keys.insert(m_anchor);
    else if (!m_keys.empty())
        m_anchor = *m_keys.begin();
}

void KeySelection::KeepTo(const std::vector<KeyCap>& caps) {
    std::erase_if(m_keys, [&](int key) {
        return std::none_of(caps.begin(), caps.end(),
                            [key](const KeyCap& cap) { return cap.index == key; });
    });
    if (!m_keys.contains(m_anchor))
        m_anchor = m_keys.empty() ? -1 : *m_keys.begin();
}

std::set<int> KeysBetween(const std::vector<KeyCap>& caps, int from, int to) {
    QRectF around;
    for (const KeyCap& cap : caps)
        if (cap.index == from || cap.index == to)
            around |= cap.place;
    std::set<int> keys;
    for (const KeyCap& cap : caps)
        if (cap.joinsRanges && around.contains(cap.place.center()))
            keys.insert(cap.index);
    return keys;
}

} // namespace qx::views
