#include "host/History.h"

#include <algorithm>
#include <utility>

namespace qx::host {

namespace {

// What a step is called. Settings that only documents hold are no differences of keyboards.
std::string NameOf(const std::vector<Difference>& differences, const std::string& fallback) {
    if (differences.empty())
        return fallback;
    if (differences.size() == 1)
        return differences.front().name;
    return differences.front().name + " (+" + std::to_string(differences.size() - 1) + ")";
}

bool IsRun(const std::vector<Difference>& differences) {
    return differences.size() == 1 && differences.front().isGradual;
}

} // namespace

History::History(Configuration& configuration) : m_configuration(configuration) {
    Restart(AllSections(), true);
}

std::vector<Section*> History::AllSections() const {
    std::vector<Section*> all;
    for (const auto& section : m_configuration.Sections())
        all.push_back(section.get());
    return all;
}

std::vector<Section*> History::Sections() const {
    std::vector<Section*> sections = AllSections();
    std::erase_if(sections, [&](const Section* section) { return !TakesPart(*section); });
    return sections;
}

bool History::TakesPart(const Section& section) const {
    return m_states[m_present].keys.contains(section.Info().key);
}

ConfigurationDocument History::Document() const {
    return m_configuration.Write(Sections());
}

void History::Restart(const std::vector<Section*>& sections, bool isSaved) {
    State start{m_configuration.Write(AllSections()), {}, {}, {}};
    for (const Section* section : sections)
        start.keys.emplace(section->Info().key);
    m_settings = m_configuration.List(AllSections());
    m_states = {std::move(start)};
    m_present = 0;
    m_saved = isSaved ? 0 : kNowhere;
    m_isSealed = true;
}

bool History::Note() {
    const State& before = m_states[m_present];
    State after{m_configuration.Write(AllSections()), before.keys, {}, {}};
    if (after.all.AsJson() == before.all.AsJson())
        return false;
    for (const Section* section : AllSections()) {
        const auto key = section->Info().key;
        if (*after.all.Find(key) != *before.all.Find(key))
            after.keys.emplace(key);
    }
    std::vector<Setting> settings = m_configuration.List(AllSections());
    const auto differences = Compare(m_settings, settings);
    m_settings = std::move(settings);
    after.name = NameOf(differences, "POS");
    if (IsRun(differences))
        after.place = differences.front().place;
    const bool goesOn = !std::exchange(m_isSealed, false) && m_present != m_saved && !CanRedo() &&
                        !after.place.empty() && after.place == before.place;
    if (goesOn)
        m_states[m_present].all = std::move(after.all);
    else
        Push(std::move(after));
    return true;
}

void History::Push(State state) {
    m_states.resize(m_present + 1);
    if (m_saved != kNowhere && m_saved > m_present)
        m_saved = kNowhere;
    m_states.push_back(std::move(state));
    if (m_states.size() > kMaxSteps + 1) {
        m_states.erase(m_states.begin());
        m_saved = m_saved == 0 || m_saved == kNowhere ? kNowhere : m_saved - 1;
    }
    m_present = m_states.size() - 1;
}

void History::Undo() {
    if (CanUndo())
        Go(m_present - 1);
}

void History::Redo() {
    if (CanRedo())
        Go(m_present + 1);
}

void History::Go(std::size_t to) {
    m_present = to;
    m_configuration.Read(m_states[to].all);
    m_settings = m_configuration.List(AllSections());
    m_isSealed = true;
}

void History::MarkSaved() {
    m_saved = m_present;
    m_isSealed = true;
}

} // namespace qx::host
