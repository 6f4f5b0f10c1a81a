// History: undo and redo of the edits of a configuration.
//
// Whoever edits calls Note afterwards; it asks the controls whether their data changed, and makes a
// step with a name of what did. Notes of the same number or text are one step, so that dragging a
// slider or typing is undone at once; Seal ends such a run. A step holds what it changed and no
// more, just as the controls held it: going back and forth checks nothing and cannot fail.
// The sections that take part in the document are those that were given to Restart and those that
// have been edited since.
#pragma once

#include "host/Configuration.h"
#include "host/Snapshot.h"

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

    // Makes a step of what has changed since the last one, in the sections whose controls have
    // DataChanged set. False when nothing has.
    bool Note();
    void Seal() { m_isSealed = true; }

    [[nodiscard]] bool CanUndo() const { return m_present > 0; }
    [[nodiscard]] bool CanRedo() const { return m_present < m_steps.size(); }
    // A setting that a step changed, and how many others.
    struct Changed {
        SettingName name;
        std::string place;
        std::size_t others = 0;
    };
    [[nodiscard]] const Changed& ToUndo() const { return m_steps[m_present - 1].changed; }
    [[nodiscard]] const Changed& ToRedo() const { return m_steps[m_present].changed; }
    void Undo();
    void Redo();

    [[nodiscard]] std::vector<Section*> AllSections() const; // of the configuration
    // The sections that take part, in the configuration's order, and their document.
    [[nodiscard]] std::vector<Section*> Sections() const;
    [[nodiscard]] bool TakesPart(const Section& section) const;
    [[nodiscard]] ConfigurationDocument Document() const;

    [[nodiscard]] bool IsSaved() const { return m_present == m_saved; }
    void MarkSaved();
    // For all controls, after the settings have been saved or transferred: those that change from
    // now on set it, and so do undo and redo.
    void ResetDataChanged();

private:
    static constexpr std::size_t kMaxSteps = 500;
    static constexpr std::size_t kNowhere = static_cast<std::size_t>(-1);

    struct Edit {
        std::size_t section; // its place in the configuration
        Snapshot::Change change;
        bool isFirst = false; // of the section, which then takes part
    };
    struct Step {
        std::vector<Edit> edits;
        Changed changed;
        bool isGradual = false; // it is the only one, and a number or a text
    };

    [[nodiscard]] std::vector<Edit> TakeEdits();
    void NameStep(Step& step) const;
    // Makes the step a part of the last one, when both are of one run.
    [[nodiscard]] bool GoesOn(const Step& step);
    void Push(Step step);
    void Go(const Step& step, bool isForwards);

    Configuration& m_configuration;
    std::vector<Snapshot> m_now; // of all sections
    std::set<std::size_t> m_takePart;
    std::vector<Step> m_steps;
    std::size_t m_present = 0; // how many of them are done
    std::size_t m_saved = 0;
    bool m_isSealed = true;
};

} // namespace qx::host
