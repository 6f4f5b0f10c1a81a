#include "qxcontrols/keys/KeyNames.h"

#include "qxcontrols/common/Text.h"
#include "qxcontrols/common/Utf.h"
#include "qxcontrols/keys/KeyCharacters.h"
#include "qxcontrols/keys/KeyName.h"
#include "qxcontrols/keys/QXKeyboardLayoutData.h"

#include <algorithm>
#include <numeric>

namespace qx {

namespace {

constexpr std::string_view kBlanks = " \t\r\n";

bool IsBlank(char character) {
    return kBlanks.find(character) != std::string_view::npos;
}

// The number of characters to insert, remove or replace.
std::size_t EditDistance(std::u16string_view from, std::u16string_view to) {
    std::vector<std::size_t> row(to.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < from.size(); ++i) {
        std::size_t diagonal = row[0];
        row[0] = i + 1;
        for (std::size_t j = 0; j < to.size(); ++j) {
            const std::size_t replaced = diagonal + (from[i] == to[j] ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({replaced, row[j] + 1, diagonal + 1});
        }
    }
    return row.back();
}

} // namespace

KeyNames::KeyNames(const QXKeyboardLayoutData& layout) {
    for (Long id = layout.GetMinKeyID(); id <= layout.GetMaxKeyID(); ++id) {
        const std::string name = KeyLabel(id, &layout);
        const std::string_view longCaption = Trim(layout.KeyLongCaption(id));
        m_longest = std::max({m_longest, name.size(), longCaption.size()});
        if (!name.empty())
            m_keys.push_back({id, name, std::string(longCaption), LowerCase(Utf16FromUtf8(name)),
                              LowerCase(Utf16FromUtf8(longCaption)),
                              CharactersOf(name, longCaption).shifted});
    }
}

const std::string& KeyNames::Name(Long lID) const {
    static const std::string none;
    const auto key = std::find_if(m_keys.begin(), m_keys.end(),
                                  [lID](const Key& candidate) { return candidate.id == lID; });
    return key == m_keys.end() ? none : key->name;
}

template <typename Matches>
std::vector<Long> KeyNames::KeysWhere(bool pressable, Matches matches) const {
    std::vector<Long> found;
    for (const Key& key : m_keys)
        if ((key.id < kFirstUnpressable) == pressable && matches(key))
            found.push_back(key.id);
    return found;
}

std::vector<Long> KeyNames::Find(std::string_view sText) const {
    if (sText.size() > m_longest)
        return {};
    for (const bool pressable : {true, false}) {
        auto found = KeysWhere(pressable, [&](const Key& key) { return key.name == sText; });
        if (found.empty())
            found = KeysWhere(pressable, [&](const Key& key) { return key.longCaption == sText; });
        if (found.empty())
            found =
                KeysWhere(pressable, [folded = LowerCase(Utf16FromUtf8(sText))](const Key& key) {
                    return key.foldedName == folded || key.foldedLongCaption == folded;
                });
        if (!found.empty())
            return found;
    }
    return {};
}

std::vector<Long> KeyNames::FindShifted(std::string_view sText) const {
    if (sText.empty() || sText.size() > m_longest)
        return {};
    const std::u16string character = Utf16FromUtf8(sText);
    return KeysWhere(true, [&](const Key& key) { return key.shifted == character; });
}

std::string_view KeyNames::FindWords(std::string_view sText) const {
    std::string_view found;
    for (const Key& key : m_keys) {
        const std::string_view name = key.name;
        if (name.size() > found.size() && sText.starts_with(name) &&
            (name.size() == sText.size() || IsBlank(sText[name.size()])) &&
            name.find_first_of(kBlanks) != std::string_view::npos)
            found = name;
    }
    return found;
}

bool KeyNames::BeginsWords(std::string_view sText) const {
    return std::any_of(m_keys.begin(), m_keys.end(), [sText](const Key& key) {
        return key.name.size() > sText.size() && key.name.starts_with(sText) &&
               IsBlank(key.name[sText.size()]);
    });
}

std::vector<Long> KeyNames::Nearest(std::string_view sText) const {
    constexpr std::size_t kMost = 3;
    constexpr std::size_t kLongestText = 64; // limits the time for a huge text
    struct Candidate {
        double difference; // as a fraction of the longer text
        Long id;
    };
    const std::u16string folded = LowerCase(Utf16FromUtf8(sText.substr(0, kLongestText)));
    std::vector<Candidate> candidates;
    for (const Key& key : m_keys) {
        const double difference =
            static_cast<double>(EditDistance(folded, key.foldedName)) /
            static_cast<double>(std::max(folded.size(), key.foldedName.size()));
        if (key.id < kFirstUnpressable && difference <= 0.5)
            candidates.push_back({difference, key.id});
    }
    std::stable_sort(
        candidates.begin(), candidates.end(),
        [](const Candidate& a, const Candidate& b) { return a.difference < b.difference; });
    std::vector<Long> nearest;
    for (const Candidate& candidate : candidates)
        if (nearest.size() < kMost)
            nearest.push_back(candidate.id);
    return nearest;
}

} // namespace qx
