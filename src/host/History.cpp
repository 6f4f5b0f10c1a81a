#include "host/History.h"

#include <algorithm>
#include <utility>

namespace qx::host {

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
    const auto& all = m_configuration.Sections();
    return std::any_of(m_takePart.begin(), m_takePart.end(),
                       [&](std::size_t index) { return all[index].get() == &section; });
}

std::size_t History::Revision(const Section& section) const {
    const auto& all = m_configuration.Sections();
    const auto found = std::find_if(all.begin(), all.end(),
                                    [&](const auto& each) { return each.get() == &section; });
    return m_revisions[static_cast<std::size_t>(found - all.begin())];
}

ConfigurationDocument History::Document() const {
    return m_configuration.Write(Sections());
}

void History::Restart(const std::vector<Section*>& sections, bool isSaved) {
    m_takePart.clear();
    const auto all = AllSections();
    for (std::size_t i = 0; i < all.size(); ++i) {
        if (std::find(sections.begin(), sections.end(), all[i]) != sections.end())
            m_takePart.insert(i);
    }
    ResetDataChanged();
    m_now = m_configuration.TakeAll();
    m_revisions.resize(m_now.size());
    for (std::size_t& revision : m_revisions)
        ++revision;
    m_steps.clear();
    m_present = 0;
    m_saved = isSaved ? 0 : kNowhere;
    m_isSealed = true;
}

bool History::Note(bool goesOn) {
    Step step{TakeEdits(), {}};
    if (step.edits.empty())
        return false;
    NameStep(step);
    if (!GoesOn(step, goesOn))
        Push(std::move(step));
    m_isSealed = false;
    return true;
}

std::vector<History::Edit> History::TakeEdits() {
    std::vector<Edit> edits;
    for (std::size_t i = 0; i < m_now.size(); ++i) {
        Section& section = *m_configuration.Sections()[i];
        if (!section.Control().DataChanged())
            continue;
        Snapshot now = Snapshot::Of(section);
        Snapshot::Change change = m_now[i].To(now);
        if (change.empty())
            continue;
        m_now[i] = std::move(now);
        ++m_revisions[i];
        edits.push_back({i, std::move(change), m_takePart.insert(i).second});
    }
    return edits;
}

// A step is named after a setting that it changed, preferably one that keyboards store.
void History::NameStep(Step& step) const {
    std::vector<Setting> stored;
    std::vector<Setting> others;
    for (const Edit& edit : step.edits) {
        std::set<std::string> places;
        for (const auto& [place, values] : edit.change)
            if (values.before != values.after) // empty if an element is new
                places.insert(place);
        for (Setting& setting :
             m_configuration.List(*m_configuration.Sections()[edit.section], places, Listed::All))
            (setting.isStored ? stored : others).push_back(std::move(setting));
    }
    const auto& named = stored.empty() ? others : stored;
    if (named.empty())
        return;
    const Setting& first = named.front();
    step.changed = {first.name, first.place, named.size() - 1};
    step.isGradual = named.size() == 1 && first.isGradual;
}

bool History::GoesOn(const Step& step, bool isWanted) {
    if (m_present == m_saved || m_present == 0 || CanRedo())
        return false;
    Step& last = m_steps.back();
    const bool isRun =
        !m_isSealed && step.isGradual && last.isGradual && step.changed.place == last.changed.place;
    if (!isRun && !(isWanted && step.edits.size() == 1 && last.edits.size() == 1 &&
                    step.edits.front().section == last.edits.front().section))
        return false;
    for (const auto& [place, values] : step.edits.front().change) {
        const auto [known, isNew] = last.edits.front().change.emplace(place, values);
        if (!isNew)
            known->second.after = values.after;
    }
    return true;
}

void History::Push(Step step) {
    m_steps.resize(m_present);
    if (m_saved != kNowhere && m_saved > m_present)
        m_saved = kNowhere;
    step.number = ++m_lastNumber;
    m_steps.push_back(std::move(step));
    if (m_steps.size() > kMaxSteps) {
        m_steps.erase(m_steps.begin());
        m_saved = m_saved == 0 || m_saved == kNowhere ? kNowhere : m_saved - 1;
    }
    m_present = m_steps.size();
}

void History::Undo() {
    if (!CanUndo())
        return;
    Go(m_steps[--m_present], false);
}

void History::Redo() {
    if (!CanRedo())
        return;
    Go(m_steps[m_present++], true);
}

void History::Go(const Step& step, bool isForwards) {
    for (const Edit& edit : step.edits) {
        Section& section = *m_configuration.Sections()[edit.section];
        Snapshot::Values values;
        for (const auto& [place, two] : edit.change)
            values.emplace(place, isForwards ? two.after : two.before);
        Snapshot::Put(section, values);
        section.Control().SetDataChanged(true);
        m_now[edit.section] = Snapshot::Of(section);
        ++m_revisions[edit.section];
        if (edit.isFirst && isForwards)
            m_takePart.insert(edit.section);
        else if (edit.isFirst)
            m_takePart.erase(edit.section);
    }
    m_isSealed = true;
}

void History::MarkSaved() {
    m_saved = m_present;
    m_isSealed = true;
    ResetDataChanged();
}

void History::ResetDataChanged() {
    for (const auto& section : m_configuration.Sections())
        section->Control().SetDataChanged(false);
}

} // namespace qx::host
