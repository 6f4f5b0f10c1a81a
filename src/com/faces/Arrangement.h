// Places the parts of a face in rows and columns, as large as their texts need; parts that stretch
// share the remaining room. Hidden parts take no room.
#pragma once

#include "com/faces/Part.h"

#include <vector>

namespace qx::com {

struct Place {
    int left = 0, top = 0, width = 0, height = 0;
};

// The toolkit's sizes for parts that are not boxes, and the distances between parts; in pixels.
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

// The frames and the parts that show something, in tab order.
[[nodiscard]] std::vector<PlacedPart> Arranged(const Part& root, const Place& place,
                                               const Measures& measures);

} // namespace qx::com
