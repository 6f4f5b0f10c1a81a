#include "app/Places.h"

#include <algorithm>
#include <charconv>

namespace qx::app {

Place Place::Of(std::string_view place) {
    Place parts;
    for (std::size_t start = 0; start < place.size();) {
        const std::size_t end = std::min(place.find_first_of("/[]", start), place.size());
        const std::string_view word = place.substr(start, end - start);
        Integer number = 0;
        const auto [last, error] = std::from_chars(word.data(), word.data() + word.size(), number);
        if (error == std::errc() && last == word.data() + word.size())
            parts.numbers.push_back(number);
        else if (!word.empty())
            parts.words.push_back(word);
        start = end + 1;
    }
    return parts;
}

std::string_view SectionOfPlace(std::string_view place) {
    return Place::Of(place).Section();
}

} // namespace qx::app
