#include "host/Snapshot.h"

#include "host/PlacedVisitor.h"

#include <algorithm>
#include <charconv>

namespace qx::host {

namespace {

class Taker : public PlacedVisitor {
public:
    Taker(const Section& section, Snapshot::Values& values)
        : PlacedVisitor(section.Info().key), m_values(values) {}

    bool Flag(const Field& field, bool fValue) override {
        Add(field, fValue ? "1" : "0");
        return fValue;
    }
    Integer Number(const Field& field, Integer nValue, Integer, Integer) override {
        Add(field, std::to_string(nValue));
        return nValue;
    }
    std::vector<Integer> Keys(const Field& field, const std::vector<Integer>& keys, Integer,
                              Integer, const PositionCodeOf&) override {
        std::string text;
        for (const Integer key : keys)
            text += std::to_string(key) + " ";
        Add(field, std::move(text));
        return keys;
    }
    std::string Text(const Field& field, const std::string& sValue, std::size_t) override {
        Add(field, sValue);
        return sValue;
    }
    void Sequence(const Field& field, KeySequence& sequence, Integer) override {
        Add(field, sequence.KeyString());
    }
    void List(const FieldList& list) override {
        const std::string place = PlaceOf(list.field);
        for (const FieldList::Id& id : list.present)
            Within(ElementPlace(place, id), [&] { list.visit(id); });
    }
    [[nodiscard]] bool IsExact() const override { return true; }

private:
    void Add(const Field& field, std::string value) {
        m_values.emplace(PlaceOf(field), std::move(value));
    }
    Snapshot::Values& m_values;
};

class Putter : public PlacedVisitor {
public:
    Putter(const Section& section, const Snapshot::Values& values)
        : PlacedVisitor(section.Info().key), m_values(values) {
        for (const auto& [place, value] : values)
            m_places.insert(place);
    }

    bool Flag(const Field& field, bool fValue) override {
        const std::string* value = Find(field);
        return value == nullptr ? fValue : *value == "1";
    }
    Integer Number(const Field& field, Integer nValue, Integer, Integer) override {
        if (const std::string* value = Find(field))
            nValue = Numbers(*value).front();
        return nValue;
    }
    std::vector<Integer> Keys(const Field& field, const std::vector<Integer>& keys, Integer,
                              Integer, const PositionCodeOf&) override {
        const std::string* value = Find(field);
        if (value == nullptr)
            return keys;
        return value->empty() ? std::vector<Integer>() : Numbers(*value);
    }
    std::string Text(const Field& field, const std::string& sValue, std::size_t) override {
        const std::string* value = Find(field);
        return value == nullptr ? sValue : *value;
    }
    void Sequence(const Field& field, KeySequence& sequence, Integer) override {
        if (const std::string* value = Find(field))
            sequence.SetKeyString(*value);
    }
    void List(const FieldList& list) override {
        const std::string place = PlaceOf(list.field);
        for (const FieldList::Id& id : IdsIn(m_places, place))
            Within(ElementPlace(place, id), [&] { list.visit(id); });
    }
    [[nodiscard]] bool IsReading() const override { return true; }
    [[nodiscard]] bool IsExact() const override { return true; }

private:
    [[nodiscard]] const std::string* Find(const Field& field) const {
        const auto found = m_values.find(PlaceOf(field));
        return found == m_values.end() ? nullptr : &found->second;
    }
    // The numbers in a text, with 0 for each that is missing.
    [[nodiscard]] static std::vector<Integer> Numbers(const std::string& text) {
        std::vector<Integer> numbers;
        const char* const end = text.data() + text.size();
        for (const char* next = text.data(); next < end; ++next) {
            Integer& number = numbers.emplace_back();
            next = std::from_chars(next, end, number).ptr;
        }
        return numbers.empty() ? std::vector<Integer>{0} : numbers;
    }

    const Snapshot::Values& m_values;
    std::set<std::string> m_places;
};

} // namespace

Snapshot Snapshot::Of(Section& section) {
    Snapshot snapshot;
    Taker taker(section, snapshot.m_values);
    section.Visit(taker);
    return snapshot;
}

Snapshot::Change Snapshot::To(const Snapshot& later) const {
    Change change;
    for (const auto& [place, value] : m_values) {
        const auto match = later.m_values.find(place);
        const std::string after = match == later.m_values.end() ? std::string() : match->second;
        if (match == later.m_values.end() || value != after)
            change.emplace(place, TwoValues{value, after});
    }
    for (const auto& [place, value] : later.m_values)
        if (!m_values.contains(place))
            change.emplace(place, TwoValues{{}, value});
    return change;
}

void Snapshot::Put(Section& section, const Values& values) {
    if (values.empty())
        return;
    Putter putter(section, values);
    section.Visit(putter);
    section.Show();
}

void Snapshot::Restore(Section& section) const {
    Values values;
    for (const auto& [place, two] : Of(section).To(*this))
        values.emplace(place, two.after);
    Put(section, values);
}

FieldList::Id IdIn(std::string_view place) {
    FieldList::Id id;
    const char* const end = place.data() + place.size();
    for (const char* next = place.data() + std::min(place.find('['), place.size());
         next < end && *next == '['; ++next) {
        Integer& number = id.emplace_back();
        next = std::from_chars(next + 1, end, number).ptr;
    }
    return id;
}

std::set<FieldList::Id> IdsIn(const std::set<std::string>& places, const std::string& listPlace) {
    std::set<FieldList::Id> ids;
    const std::string prefix = listPlace + "[";
    for (auto place = places.lower_bound(prefix);
         place != places.end() && place->starts_with(prefix); ++place)
        ids.insert(IdIn(*place));
    return ids;
}

} // namespace qx::host
