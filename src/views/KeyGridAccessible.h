// KeyGridAccessible: the keys of a KeyGrid for screen readers and other assistive programs, each a
// button with a name, a position, and actions to press and to focus it.
#pragma once

#include <set>
#include <vector>

namespace qx::views {

struct KeyCap;
class KeyGrid;

// Makes every KeyGrid accessible; later calls do nothing.
void InstallKeyGridAccessible();

// Announce changes; cheap if no assistive program listens.
void AnnounceFocusKey(KeyGrid* grid);
void AnnounceKeysChanged(KeyGrid* grid, const std::vector<KeyCap>& old);
void AnnounceMarksChanged(KeyGrid* grid, const std::set<int>& keys);

} // namespace qx::views
