#include "com/faces/Arrangement.h"

#include <algorithm>
#include <numeric>

namespace qx::com {
namespace {

using Parts = std::vector<const Part*>;
using Sizes = std::vector<int>;

Parts VisibleOf(const Part& box) {
    Parts visible;
    for (const Part& part : box.parts)
        if (part.IsVisible())
            visible.push_back(&part);
    return visible;
}

// Whether the part is as high as its row.
bool FillsRow(const Part& part) {
    return part.kind <= PartKind::Frame || part.kind == PartKind::List ||
           part.kind == PartKind::Keys;
}

class Arranger {
public:
    explicit Arranger(const Measures& measures) : m_measures(measures) {}

    void Put(const Part& part, const Place& place) {
        switch (part.kind) {
        case PartKind::Row:
            PutRow(VisibleOf(part), place);
            break;
        case PartKind::Flow:
            PutFlow(part, place);
            break;
        case PartKind::Column:
            PutColumn(part, place);
            break;
        case PartKind::Grid:
            PutGrid(part, place);
            break;
        case PartKind::Frame:
            m_placed.push_back({&part, place});
            PutColumn(part, Inside(place));
            break;
        default:
            m_placed.push_back({&part, place});
        }
    }

    [[nodiscard]] std::vector<PlacedPart> Taken() { return std::move(m_placed); }

private:
    [[nodiscard]] int Gaps(std::size_t count) const {
        return count < 2 ? 0 : m_measures.Gap() * static_cast<int>(count - 1);
    }

    [[nodiscard]] Place Inside(const Place& frame) const {
        const int gap = m_measures.Gap();
        const int top = m_measures.TitleHeight() + gap / 2;
        return {frame.left + gap, frame.top + top, frame.width - 2 * gap, frame.height - top - gap};
    }

    [[nodiscard]] int NaturalWidth(const Part& part) const {
        const Parts parts = VisibleOf(part);
        int width = 0;
        switch (part.kind) {
        case PartKind::Row:
        case PartKind::Flow:
            for (const Part* inner : parts)
                width += NaturalWidth(*inner);
            return width + Gaps(parts.size());
        case PartKind::Grid: {
            const Sizes columns = ColumnsOf(part);
            return std::accumulate(columns.begin(), columns.end(), Gaps(columns.size()));
        }
        case PartKind::Column:
        case PartKind::Frame:
            for (const Part* inner : parts)
                width = std::max(width, NaturalWidth(*inner));
            return width + (part.kind == PartKind::Frame ? 2 * m_measures.Gap() : 0);
        default:
            return m_measures.WidthOf(part);
        }
    }

    [[nodiscard]] int HeightFor(const Part& part, int width) const {
        int height = 0;
        switch (part.kind) {
        case PartKind::Row:
            return HeightOfRow(VisibleOf(part), width);
        case PartKind::Flow: {
            const std::vector<Parts> lines = LinesOf(part, width);
            for (const Parts& line : lines)
                height += HeightOfRow(line, width);
            return height + Gaps(lines.size());
        }
        case PartKind::Grid: {
            const Parts rows = VisibleOf(part);
            const Sizes columns = GridWidths(part, width);
            for (const Part* row : rows)
                height += HeightOfRow(VisibleOf(*row), columns);
            return height + Gaps(rows.size());
        }
        case PartKind::Column:
            for (const int inner : HeightsOf(part, width))
                height += inner;
            return height + Gaps(VisibleOf(part).size());
        case PartKind::Frame: {
            const int gap = m_measures.Gap();
            for (const int inner : HeightsOf(part, width - 2 * gap))
                height += inner;
            return height + Gaps(VisibleOf(part).size()) + m_measures.TitleHeight() + gap / 2 + gap;
        }
        default:
            return m_measures.HeightOf(part, width);
        }
    }

    [[nodiscard]] Sizes HeightsOf(const Part& column, int width) const {
        Sizes heights;
        for (const Part* part : VisibleOf(column))
            heights.push_back(HeightFor(*part, width));
        return heights;
    }

    [[nodiscard]] int HeightOfRow(const Parts& row, int width) const {
        return HeightOfRow(row, WidthsOf(row, width));
    }
    [[nodiscard]] int HeightOfRow(const Parts& row, const Sizes& widths) const {
        int height = 0;
        std::size_t column = 0;
        for (const Part* part : row)
            height = std::max(height, HeightFor(*part, widths[column++]));
        return height;
    }

    // Grows or shrinks the sizes to fit the room: stretching parts take the extra space, and are
    // the first to shrink when there is too little.
    [[nodiscard]] Sizes Fitted(Sizes sizes, const Parts& parts, int room) const {
        room -= std::accumulate(sizes.begin(), sizes.end(), Gaps(sizes.size()));
        auto stretching =
            std::ranges::count_if(parts, [](const Part* part) { return part->stretches; });
        for (std::size_t i = 0; i < sizes.size() && stretching > 0; ++i) {
            if (!parts[i]->stretches)
                continue;
            const int share = std::max(room / static_cast<int>(stretching), -sizes[i]);
            sizes[i] += share;
            room -= share;
            --stretching;
        }
        for (std::size_t i = sizes.size(); i-- > 0 && room < 0;) {
            const int taken = std::min(sizes[i] / 2, -room);
            sizes[i] -= taken;
            room += taken;
        }
        return sizes;
    }

    [[nodiscard]] Sizes WidthsOf(const Parts& row, int width) const {
        Sizes widths;
        for (const Part* part : row)
            widths.push_back(NaturalWidth(*part));
        return Fitted(std::move(widths), row, width);
    }

    // Fills each line with as many parts as fit.
    [[nodiscard]] std::vector<Parts> LinesOf(const Part& flow, int width) const {
        std::vector<Parts> lines;
        int room = 0;
        for (const Part* part : VisibleOf(flow)) {
            const int needed = NaturalWidth(*part) + m_measures.Gap();
            if (lines.empty() || needed > room) {
                lines.emplace_back();
                room = width + m_measures.Gap();
            }
            lines.back().push_back(part);
            room -= needed;
        }
        return lines;
    }

    [[nodiscard]] Sizes ColumnsOf(const Part& grid) const {
        Sizes columns;
        for (const Part* row : VisibleOf(grid)) {
            std::size_t column = 0;
            for (const Part* part : VisibleOf(*row)) {
                columns.resize(std::max(columns.size(), column + 1));
                columns[column] = std::max(columns[column], NaturalWidth(*part));
                ++column;
            }
        }
        return columns;
    }

    [[nodiscard]] Sizes GridWidths(const Part& grid, int width) const {
        const Parts rows = VisibleOf(grid);
        const auto longest = std::ranges::max_element(
            rows, {}, [](const Part* row) { return VisibleOf(*row).size(); });
        return Fitted(ColumnsOf(grid), VisibleOf(**longest), width);
    }

    void PutRow(const Parts& row, const Place& place) {
        PutRow(row, WidthsOf(row, place.width), place);
    }
    void PutRow(const Parts& row, const Sizes& widths, const Place& place) {
        int left = place.left;
        std::size_t column = 0;
        for (const Part* part : row) {
            const int width = widths[column++];
            int height = place.height;
            if (!FillsRow(*part))
                height = std::min(height, HeightFor(*part, width));
            Put(*part, {left, place.top + (place.height - height) / 2, width, height});
            left += width + m_measures.Gap();
        }
    }

    void PutFlow(const Part& flow, const Place& place) {
        int top = place.top;
        for (const Parts& line : LinesOf(flow, place.width)) {
            const int height = HeightOfRow(line, place.width);
            PutRow(line, {place.left, top, place.width, height});
            top += height + m_measures.Gap();
        }
    }

    void PutColumn(const Part& column, const Place& place) {
        const Parts parts = VisibleOf(column);
        const Sizes heights = Fitted(HeightsOf(column, place.width), parts, place.height);
        int top = place.top;
        for (std::size_t i = 0; i < parts.size(); ++i) {
            Put(*parts[i], {place.left, top, place.width, heights[i]});
            top += heights[i] + m_measures.Gap();
        }
    }

    void PutGrid(const Part& grid, const Place& place) {
        const Sizes columns = GridWidths(grid, place.width);
        int top = place.top;
        for (const Part* row : VisibleOf(grid)) {
            const int height = HeightOfRow(VisibleOf(*row), columns);
            PutRow(VisibleOf(*row), columns, {place.left, top, place.width, height});
            top += height + m_measures.Gap();
        }
    }

    const Measures& m_measures;
    std::vector<PlacedPart> m_placed;
};

} // namespace

std::vector<PlacedPart> Arranged(const Part& root, const Place& place, const Measures& measures) {
    Arranger arranger(measures);
    if (root.IsVisible())
        arranger.Put(root, place);
    return arranger.Taken();
}

} // namespace qx::com
