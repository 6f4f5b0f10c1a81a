#include "host/Configuration.h"

#include "host/JsonFieldReader.h"
#include "host/JsonFieldWriter.h"
#include "host/sections/Sections.h"
#include "json/Reader.h"

#include <algorithm>
#include <tuple>

namespace qx::host {

Configuration::Configuration(const Platform& platform, QXKeyboardLayoutData* layout,
                             QXProgSettings* preferences, LayoutUse use)
    : m_layout(layout), m_sections(MakeSections(platform)) {
    for (const auto& section : m_sections) {
        section->Control().SetLayoutSource(use == LayoutUse::Keyboard ? layout : nullptr);
        section->Control().SetPrefSource(preferences);
        section->Control().ReloadKeySettings();
        section->Control().DefaultValues();
    }
}

Section* Configuration::Find(std::string_view key) const {
    const auto found = std::find_if(m_sections.begin(), m_sections.end(), [&](const auto& section) {
        return section->Info().key == key;
    });
    return found == m_sections.end() ? nullptr : found->get();
}

std::vector<Section*> Configuration::Read(const ConfigurationDocument& document) {
    Variables none;
    return Read(document, none);
}

std::vector<Section*> Configuration::Read(const ConfigurationDocument& document,
                                          Variables& variables) {
    const std::vector<Snapshot> before = TakeAll();
    std::vector<Section*> read;
    try {
        json::Faults faults;
        read = ReadSections(document, variables, faults);
        faults.ThrowAny();
    } catch (const json::FaultError& error) {
        RestoreAll(before);
        Error refusal = FaultsOf(document.Name(), error);
        if (!variables.Missing().empty()) {
            refusal.name = *variables.Missing().begin();
            refusal.suggestion = Suggestion::GiveVariables;
        }
        throw refusal;
    } catch (...) {
        RestoreAll(before);
        throw;
    }
    for (Section* section : read)
        section->Show();
    return read;
}

std::vector<Snapshot> Configuration::TakeAll() const {
    std::vector<Snapshot> all;
    for (const auto& section : m_sections)
        all.push_back(Snapshot::Of(*section));
    return all;
}

void Configuration::RestoreAll(const std::vector<Snapshot>& all) {
    for (std::size_t i = 0; i < all.size(); ++i) {
        all[i].Restore(*m_sections[i]);
        m_sections[i]->Show(); // also restores which keys are programmable
    }
}

std::vector<Section*> Configuration::ReadSections(const ConfigurationDocument& document,
                                                  Variables& variables, json::Faults& faults) {
    std::vector<Section*> read;
    JsonFieldReader reader(m_layout, variables);
    KeyboardInfo informative;
    json::Object whole(json::Value(document.AsJson(), "", faults));
    (void)json::HasFormat(whole, document.kFormat, document.kVersion);
    for (const auto& [key, value] : document.AsJson().items()) {
        Section* const section = Find(key);
        if (section != nullptr)
            read.push_back(section);
        if (section != nullptr || key == ConfigurationDocument::kKeyboardKey)
            reader.Read(whole.Find(key), [&](FieldVisitor& fields) {
                section != nullptr ? section->Visit(fields) : informative.Visit(fields);
            });
    }
    whole.RefuseOthers();
    return read;
}

ConfigurationDocument Configuration::Write(const std::vector<Section*>& sections) const {
    ConfigurationDocument document;
    for (Section* section : sections) {
        const std::string key(section->Info().key);
        JsonFieldWriter writer(document.Place(key), "/" + key, document.Losses());
        section->Visit(writer);
    }
    return document;
}

ConfigurationDocument Configuration::Write(const std::vector<Section*>& sections,
                                           KeyboardInfo keyboard) const {
    const std::string key(ConfigurationDocument::kKeyboardKey);
    ConfigurationDocument document;
    Json& note = document.Place(key); // before the sections
    JsonFieldWriter writer(note, "/" + key, document.Losses());
    keyboard.Visit(writer);
    ConfigurationDocument settings = Write(sections);
    for (const Section* section : sections)
        document.Place(section->Info().key) = std::move(settings.Place(section->Info().key));
    document.Losses().insert(document.Losses().end(), settings.Losses().begin(),
                             settings.Losses().end());
    return document;
}

std::vector<Setting> Configuration::List(const std::vector<Section*>& sections,
                                         Listed listed) const {
    std::vector<Setting> settings;
    for (Section* section : sections) {
        FieldLister lister(host::NameOf(section->Info()), m_layout, settings, listed, nullptr,
                           &m_captions);
        section->Visit(lister);
    }
    return settings;
}

std::vector<Setting> Configuration::List(const Section& section,
                                         const std::set<std::string>& places, Listed listed) const {
    std::vector<Setting> settings;
    Section* own = Find(section.Info().key);
    FieldLister lister(host::NameOf(own->Info()), m_layout, settings, listed, &places, &m_captions);
    own->Visit(lister);
    return settings;
}

SettingName Configuration::NameOf(const Section& section, const std::string& element) const {
    const auto settings = List(section, {element + "/sequence"}, Listed::All);
    return settings.empty() ? host::NameOf(section.Info()) : settings.front().name;
}

std::string ToText(const Difference& difference) {
    return ToText(difference.name) + ": " + ToText(difference.from) + " → " + ToText(difference.to);
}

namespace {

// Orders the elements of each list by their ids, wherever they come from; all else stays.
void SortElements(std::vector<Difference>& differences) {
    struct Ranked {
        std::size_t list;
        FieldList::Id element;
        Difference difference;
    };
    std::map<std::string, std::size_t> lists; // numbered as they come
    std::vector<Ranked> ranked;
    for (Difference& difference : differences) {
        const std::string list = difference.place.substr(0, difference.place.find('['));
        const std::size_t number = lists.try_emplace(list, lists.size()).first->second;
        ranked.push_back({number, IdIn(difference.place), std::move(difference)});
    }
    std::ranges::stable_sort(ranked, {},
                             [](const Ranked& each) { return std::tie(each.list, each.element); });
    std::ranges::transform(ranked, differences.begin(),
                           [](Ranked& each) { return std::move(each.difference); });
}

} // namespace

std::vector<Difference> Compare(const std::vector<Setting>& from, const std::vector<Setting>& to,
                                Sides sides) {
    const SettingValue none{SettingValue::Kind::None};
    std::map<std::string, const Setting*> unmatched;
    for (const Setting& setting : to)
        unmatched.emplace(setting.place, &setting);
    std::vector<Difference> differences;
    const auto add = [&](const Setting& setting, const SettingValue& before,
                         const SettingValue& after) {
        const bool isLackedAndKept =
            sides == Sides::Documents && setting.isKept && (before == none || after == none);
        if (setting.isStored && !isLackedAndKept && before != after)
            differences.push_back({setting.place, setting.name, before, after});
    };
    for (const Setting& setting : from) {
        const auto match = unmatched.extract(setting.place);
        add(setting, setting.value, match.empty() ? none : match.mapped()->value);
    }
    for (const Setting& setting : to)
        if (unmatched.contains(setting.place))
            add(setting, none, setting.value);
    SortElements(differences);
    return differences;
}

} // namespace qx::host
