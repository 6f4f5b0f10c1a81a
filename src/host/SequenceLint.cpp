#include "host/SequenceLint.h"

#include "host/KeySenders.h"
#include "host/PlacedVisitor.h"
#include "qxcontrols/keys/KeyNames.h"
#include "qxcontrols/keys/KeySequence.h"
#include "qxcontrols/keys/QXKeyboardLayoutData.h"

#include <algorithm>
#include <array>
#include <map>
#include <memory>
#include <optional>

namespace qx::host {

namespace {

// Finds the warnings of many sequences, looking up the names of the layout's keys only once.
class Linter {
public:
    explicit Linter(const QXKeyboardLayoutData* layout) {
        if (layout != nullptr)
            m_names.emplace(*layout);
    }

    [[nodiscard]] std::vector<SequenceWarning> Lint(std::span<const Integer> codes) const {
        using enum SequenceWarningKind;
        std::vector<SequenceWarning> warnings;
        std::array<std::optional<std::size_t>, kRelease> pressedAt;
        for (std::size_t at = 0; at < codes.size(); ++at) {
            const Integer code = codes[at];
            if (code < 1 || code >= 2 * kRelease)
                continue; // no keyboard stores it
            const bool isRelease = code >= kRelease;
            const auto key = static_cast<Integer>(isRelease ? code - kRelease : code);
            auto& pressed = pressedAt[static_cast<std::size_t>(key)];
            if (isRelease && !pressed)
                warnings.push_back({HasKey(code) ? KeyAbove127 : NeverPressed, key, at});
            else if (!isRelease && m_names && !HasKey(key))
                warnings.push_back({NotInLayout, key, at});
            if (isRelease)
                pressed.reset();
            else if (!pressed)
                pressed = at;
        }
        for (std::size_t key = 0; key < pressedAt.size(); ++key)
            if (pressedAt[key])
                warnings.push_back({NeverReleased, static_cast<Integer>(key), *pressedAt[key]});
        std::ranges::stable_sort(warnings, {}, &SequenceWarning::at);
        return warnings;
    }

private:
    [[nodiscard]] bool HasKey(Integer nKey) const {
        return m_names && !m_names->Name(nKey).empty();
    }

    std::optional<KeyNames> m_names;
};

// Visits every sequence with its place and, for a key that a layout places, its position code.
class SequenceWalk : public PlacedVisitor {
public:
    using Found = std::function<void(const std::string& place, const KeySequence&,
                                     std::optional<Integer> positionCode)>;
    SequenceWalk(std::string_view section, Found found)
        : PlacedVisitor(section), m_found(std::move(found)) {}

    void Sequence(const Field& field, KeySequence& sequence, Integer /*nSlot*/) override {
        m_found(PlaceOf(field), sequence, m_positionCode);
    }
    void List(const FieldList& list) override {
        const std::string place = PlaceOf(list.field);
        for (const FieldList::Id& id : list.present) {
            if (list.positionCodeOf)
                m_positionCode = static_cast<Integer>(list.positionCodeOf(id));
            Within(ElementPlace(place, id), [&] { list.visit(id); });
        }
        m_positionCode.reset();
    }

private:
    Found m_found;
    std::optional<Integer> m_positionCode;
};

} // namespace

std::string_view CodeOf(SequenceWarningKind kind) {
    switch (kind) {
    case SequenceWarningKind::NeverReleased:
        return "never-released";
    case SequenceWarningKind::NeverPressed:
        return "never-pressed";
    case SequenceWarningKind::KeyAbove127:
        return "key-above-127";
    case SequenceWarningKind::NotInLayout:
        return "not-in-layout";
    case SequenceWarningKind::NeverSent:
        return "never-sent";
    }
    return {};
}

std::vector<SequenceWarning> LintSequence(std::span<const Integer> codes,
                                          const QXKeyboardLayoutData* layout) {
    return Linter(layout).Lint(codes);
}

std::optional<SequenceWarning> LintSender(const Configuration& configuration,
                                          const std::vector<Section*>& sections,
                                          const Section& section, Integer nPositionCode,
                                          Integer nPosKey) {
    const auto sent = SentBy(sections, nPositionCode, nPosKey);
    if (!sent || sent->section == &section)
        return std::nullopt;
    return SequenceWarning{SequenceWarningKind::NeverSent, nPositionCode, 0, sent->element,
                           configuration.NameOf(*sent->section, sent->element)};
}

std::vector<SettingWarning> Lint(const Configuration& configuration,
                                 const std::vector<Section*>& sections,
                                 const QXKeyboardLayoutData* layout) {
    const Linter linter(layout);
    std::vector<SettingWarning> warnings;
    for (Section* section : sections) {
        const std::size_t first = warnings.size();
        std::set<std::string> places;
        SequenceWalk walk(section->Info().key, [&](const std::string& place,
                                                   const KeySequence& sequence,
                                                   std::optional<Integer> positionCode) {
            std::optional<SequenceWarning> neverSent;
            if (positionCode && sequence.Length() > 0)
                neverSent = LintSender(configuration, sections, *section, *positionCode);
            if (neverSent)
                warnings.push_back({place, {}, std::move(*neverSent)});
            else
                for (const SequenceWarning& warning : linter.Lint(sequence.Codes()))
                    warnings.push_back({place, {}, warning});
            if (warnings.size() > first && warnings.back().place == place)
                places.insert(place);
        });
        section->Visit(walk);
        if (places.empty())
            continue;
        std::map<std::string, SettingName> names;
        for (const Setting& setting : configuration.List(*section, places, Listed::Usual))
            names[setting.place] = setting.name;
        for (std::size_t i = first; i < warnings.size(); ++i)
            warnings[i].name = names[warnings[i].place];
    }
    return warnings;
}

} // namespace qx::host
