// History: undo and redo of the edits of a configuration.
//
// Whoever edits calls Note afterwards; each note that finds a change becomes a step with a name.
// Notes of the same number or text are one step, so that dragging a slider or typing is undone at
// once; Seal ends such a run. The sections that take part in the document are those that were given
// to Restart and those that have been edited since.
#pragma once

#include "host/Configuration.h"

#include <cstddef>
#include <set>
#include <string>
#include <vector>

namespace qx::host {

class History {
public:
    // The configuration outlives the history.
    explicit History(Configuration& configuration);

    // Forgets all steps: the present settings of these sections are the start, saved or not.
    void Restart(const std::vector<Section*>& sections, bool isSaved);

    // Makes a step of what has changed since the last one. False when nothing has.
    bool Note();
    void Seal() { m_isSealed = true; }

    [[nodiscard]] bool CanUndo() const { return m_present > 0; }
    [[nodiscard]] bool CanRedo() const { return m_present + 1 < m_states.size(); }
    // What the step changed: a setting's name, or how many settings of which section.
    [[nodiscard]] const std::string& UndoName() const { return m_states[m_present].name; }
    [[nodiscard]] const std::string& RedoName() const { return m_states[m_present + 1].name; }
    void Undo();
    void Redo();

    [[nodiscard]] std::vector<Section*> AllSections() const; // of the configuration
    // The sections that take part, in the configuration's order, and their document.
    [[nodiscard]] std::vector<Section*> Sections() const;
    [[nodiscard]] bool TakesPart(const Section& section) const;
    [[nodiscard]] ConfigurationDocument Document() const;

    [[nodiscard]] bool IsSaved() const { return m_present == m_saved; }
    void MarkSaved();

private:
    static constexpr std::size_t kMaxSteps = 500;
    static constexpr std::size_t kNowhere = static_cast<std::size_t>(-1);

    struct State {
        ConfigurationDocument all;               // the settings of all sections
        std::set<std::string, std::less<>> keys; // of the sections that take part
        std::string name;                        // of the step that led here
        std::string place; // of the one number or text that it changed; else empty
    };

    void Push(State state);
    void Go(std::size_t to);

    Configuration& m_configuration;
    std::vector<State> m_states;
    std::vector<Setting> m_settings; // of the present state, all sections
    std::size_t m_present = 0;
    std::size_t m_saved = 0;
    bool m_isSealed = true;
};

} // namespace qx::host
