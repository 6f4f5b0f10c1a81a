#include "host/DocumentSchema.h"

#include "host/Configuration.h"
#include "host/FieldVisitor.h"

#include <utility>

namespace qx::host {

namespace {

constexpr const char* kWithoutNul = "^[^\\u0000]*$";
constexpr const char* kPlaceholder = "^\\$\\{[A-Za-z][A-Za-z0-9_-]*\\}$";

Json WholeNumber(Integer nMin, Integer nMax) {
    return {{"type", "integer"}, {"minimum", nMin}, {"maximum", nMax}};
}

// An object of these members and no others.
Json ObjectOf(Json properties, Json required) {
    Json schema = {
        {"type", "object"}, {"properties", std::move(properties)}, {"additionalProperties", false}};
    if (!required.empty())
        schema["required"] = std::move(required);
    return schema;
}

class SchemaWriter : public FieldVisitor {
public:
    explicit SchemaWriter(bool fTakesPlaceholders) : m_takesPlaceholders(fTakesPlaceholders) {}

    // The schema of what was walked, as one object.
    [[nodiscard]] Json Take() {
        return ObjectOf(std::exchange(m_properties, Json::object()),
                        std::exchange(m_required, Json::array()));
    }

    bool Flag(const Field& field, bool fValue) override {
        Add(field, OrPlaceholder({{"type", "boolean"}}));
        return fValue;
    }
    Integer Number(const Field& field, Integer nValue, Integer nMin, Integer nMax) override {
        Add(field, OrPlaceholder(WholeNumber(nMin, nMax)));
        return nValue;
    }
    std::vector<Integer> Keys(const Field& field, const std::vector<Integer>& keys, Integer nMin,
                              Integer nMax, const PositionCodeOf& /*positionCodeOf*/) override {
        Add(field, {{"type", "array"}, {"items", WholeNumber(nMin, nMax)}});
        return keys;
    }
    std::string Text(const Field& field, const std::string& sValue, std::size_t maxUnits) override {
        Add(field, {{"type", "string"},
                    {"pattern", kWithoutNul},
                    {"description", "at most " + std::to_string(maxUnits) +
                                        " UTF-16 units, when its placeholders are replaced"}});
        return sValue;
    }
    void Sequence(const Field& field, KeySequence& /*sequence*/, Integer nSlot) override {
        Add(field,
            {{"anyOf",
              {{{"type", "array"}, {"items", {{"$ref", "#/$defs/code"}}}, {"maxItems", nSlot}},
               {{"type", "string"},
                {"description",
                 "keys by their names, at most " + std::to_string(nSlot) + " codes"}}}}});
    }
    void Object(const Field& field, const std::function<void()>& members) override {
        Add(field, Within(members));
    }
    void Array(const Field& field, std::size_t count, Integer /*nFirst*/,
               const std::function<void(const Field&, std::size_t)>& element) override {
        // Elements are walked as members of an object, each under the same key.
        constexpr std::string_view kElement = "element";
        Json elements = Json::array();
        for (std::size_t i = 0; i < count; ++i)
            elements.push_back(Within([&] { element({kElement, ""}, i); })["properties"][kElement]);
        Add(field, {{"type", "array"},
                    {"prefixItems", std::move(elements)},
                    {"minItems", count},
                    {"items", false}});
    }
    void List(const FieldList& list) override {
        Json element = Within([&] {
            FieldList::Id any;
            for (const FieldList::KeyMember& member : list.keyMembers) {
                Add({member.key, member.label}, WholeNumber(member.min, member.max));
                any.push_back(member.min);
            }
            list.visit(any);
        });
        Add(list.field, {{"type", "array"}, {"items", std::move(element)}});
    }

private:
    [[nodiscard]] Json OrPlaceholder(Json schema) const {
        if (!m_takesPlaceholders)
            return schema;
        return {{"anyOf", {std::move(schema), {{"$ref", "#/$defs/placeholder"}}}}};
    }
    void Add(const Field& field, Json schema) {
        if (!field.label.empty())
            schema["title"] = field.label;
        m_properties[std::string(field.key)] = std::move(schema);
        if (field.required)
            m_required.push_back(field.key);
    }
    // The schema of the object whose members are walked.
    [[nodiscard]] Json Within(const std::function<void()>& members) {
        Json properties = std::exchange(m_properties, Json::object());
        Json required = std::exchange(m_required, Json::array());
        members();
        std::swap(properties, m_properties);
        std::swap(required, m_required);
        return ObjectOf(std::move(properties), std::move(required));
    }

    bool m_takesPlaceholders;
    Json m_properties = Json::object();
    Json m_required = Json::array();
};

} // namespace

Json DocumentSchema() {
    const Platform platform;
    const Configuration configuration(platform, nullptr, nullptr);
    SchemaWriter note(false);
    SchemaWriter writer(true);
    Json properties = {{"format", {{"const", ConfigurationDocument::kFormat}}},
                       {"version", {{"const", ConfigurationDocument::kVersion}}}};
    KeyboardInfo keyboard;
    keyboard.Visit(note);
    properties["keyboard"] = note.Take();
    for (const auto& section : configuration.Sections()) {
        section->Visit(writer);
        Json schema = writer.Take();
        schema["title"] = section->Info().title;
        properties[std::string(section->Info().key)] = std::move(schema);
    }
    Json schema = {{"title", "QXControls configuration document"}};
    schema.update(ObjectOf(std::move(properties), {"format", "version"}));
    schema["$defs"] = {
        {"code",
         {{"type", "integer"},
          {"minimum", 1},
          {"maximum", 255},
          {"description", "below 128 presses the key of that number; plus 128 releases it"}}},
        {"placeholder",
         {{"type", "string"},
          {"pattern", kPlaceholder},
          {"description", "replaced by a variable's value"}}}};
    return schema;
}

} // namespace qx::host
