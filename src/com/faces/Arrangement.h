// Where the parts of a face go: in rows and columns, as large as their texts need, with the room
// that is left for those that stretch. Hidden parts take no room.
#pragma once

#include "com/faces/Part.h"

#include <vector>

namespace qx::com {

struct Place {
    int left = 0, top = 0, width = 0, height = 0;
};

// How large the toolkit shows a part that is no box, and the distances between parts; in pixels.
class Measures {
public:
    virtual ~Measures() = default;
    [[nodiscard]] virtual int WidthOf(const Part& part) const = 0;
    [[nodiscard]] virtual int HeightOf(const Part& part, int width) const = 0;
    [[nodiscard]] virtual int Gap() const = 0;
    [[nodiscard]] virtual int TitleHeight() const = 0; // of a frame
};

struct PlacedPart {
    const Part* part;
    Place place;
};

// The frames and the parts that show something, in the order in which the user passes them.
[[nodiscard]] std::vector<PlacedPart> Arranged(const Part& root, const Place& place,
                                               const Measures& measures);

} // namespace qx::com
