// PlacedVisitor: a walk that knows each setting's place, as in Setting.
#pragma once

#include "host/Section.h"

#include <string>
#include <string_view>
#include <utility>

namespace qx::host {

// "/freeProgKeys/keys" and the id 12 give "/freeProgKeys/keys[12]".
[[nodiscard]] inline std::string ElementPlace(const std::string& listPlace,
                                              const FieldList::Id& id) {
    std::string place = listPlace;
    for (const Integer number : id)
        place += "[" + std::to_string(number) + "]";
    return place;
}

// The place of a key or block of the section, "/pos/blocks[3]".
[[nodiscard]] inline std::string ElementOf(const SectionInfo& section, const FieldList::Id& id) {
    return ElementPlace("/" + std::string(section.key) + "/" + std::string(section.list), id);
}

class PlacedVisitor : public FieldVisitor {
public:
    explicit PlacedVisitor(std::string_view section) : m_place("/" + std::string(section)) {}

    // These keep the values.
    bool Flag(const Field& /*field*/, bool fValue) override { return fValue; }
    Integer Number(const Field& /*field*/, Integer nValue, Integer /*nMin*/,
                   Integer /*nMax*/) override {
        return nValue;
    }
    std::vector<Integer> Keys(const Field& /*field*/, const std::vector<Integer>& keys,
                              Integer /*nMin*/, Integer /*nMax*/,
                              const PositionCodeOf& /*positionCodeOf*/) override {
        return keys;
    }
    std::string Text(const Field& /*field*/, const std::string& sValue,
                     std::size_t /*maxUnits*/) override {
        return sValue;
    }
    void Object(const Field& field, const std::function<void()>& members) override {
        Within(PlaceOf(field), members);
    }
    void Array(const Field& field, std::size_t count, Integer /*nFirst*/,
               const std::function<void(const Field&, std::size_t)>& element) override {
        Within(PlaceOf(field), [&] {
            for (std::size_t i = 0; i < count; ++i) {
                const std::string index = std::to_string(i);
                element({index, ""}, i);
            }
        });
    }

protected:
    [[nodiscard]] std::string PlaceOf(const Field& field) const {
        return m_place + "/" + std::string(field.key);
    }
    void Within(std::string place, const std::function<void()>& walk) {
        std::swap(m_place, place);
        walk();
        std::swap(m_place, place);
    }

private:
    std::string m_place;
};

} // namespace qx::host
