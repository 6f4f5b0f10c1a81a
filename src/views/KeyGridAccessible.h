// KeyGridAccessible: the keys of a KeyGrid for screen readers and other assistive programs, each a
// button with a name, a place, and actions to press it and to give it the focus.
#pragma once

#include <vector>

namespace qx::views {

struct KeyCap;
class KeyGrid;

// Makes every KeyGrid accessible; calls after the first do nothing.
void InstallKeyGridAccessible();

// Announce what has changed; cheap when nobody listens.
void TellFocusKey(KeyGrid* grid);
void TellKeysChanged(KeyGrid* grid, const std::vector<KeyCap>& old);

} // namespace qx::views
