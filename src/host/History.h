// History: undo and redo for the edits of a configuration.
//
// Call Note after each edit; it asks the controls whether their data changed, and creates a step
// named after the change. Consecutive changes of the same number or text form one step, so that
// dragging a slider or typing is undone at once; Seal ends such a run. A step holds only the
// changed settings, exactly as the controls held them: undo and redo check nothing and cannot fail.
// The document consists of the sections given to Restart and those edited since.
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

    // Deletes all steps: the current settings of these sections become the start, saved or not.
    void Restart(const std::vector<Section*>& sections, bool isSaved);

    // Creates a step from the changes since the last one, in the sections whose controls have
    // DataChanged set. False if nothing has changed. If the edit goes on with the last one, they
    // join that step, unless it has been undone or saved, or is of another section.
    bool Note(bool goesOn = false);
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
    // The number of the step that Undo would undo, which no other step has; 0 if there is none.
    [[nodiscard]] std::size_t LastStep() const {
        return CanUndo() ? m_steps[m_present - 1].number : 0;
    }

    [[nodiscard]] std::vector<Section*> AllSections() const; // of the configuration
    // The sections of the document, in the configuration's order, and the document.
    [[nodiscard]] std::vector<Section*> Sections() const;
    [[nodiscard]] bool TakesPart(const Section& section) const;
    [[nodiscard]] ConfigurationDocument Document() const;

    // Another number after each change of the section's settings.
    [[nodiscard]] std::size_t Revision(const Section& section) const;

    [[nodiscard]] bool IsSaved() const { return m_present == m_saved; }
    void MarkSaved();
    // Resets DataChanged in all controls, after the settings have been saved or transferred: later
    // edits set it again, and so do undo and redo.
    void ResetDataChanged();

private:
    static constexpr std::size_t kMaxSteps = 500;
    static constexpr std::size_t kNowhere = static_cast<std::size_t>(-1);

    struct Edit {
        std::size_t section; // index in the configuration
        Snapshot::Change change;
        bool isFirst = false; // of the section, which becomes part of the document
    };
    struct Step {
        std::vector<Edit> edits;
        Changed changed;
        bool isGradual = false; // the only change, to a number or a text
        std::size_t number = 0;
    };

    [[nodiscard]] std::vector<Edit> TakeEdits();
    void NameStep(Step& step) const;
    // Merges the step into the last one if both belong to the same run, or if that is wanted.
    [[nodiscard]] bool GoesOn(const Step& step, bool isWanted);
    void Push(Step step);
    void Go(const Step& step, bool isForwards);

    Configuration& m_configuration;
    std::vector<Snapshot> m_now;          // of all sections
    std::vector<std::size_t> m_revisions; // likewise
    std::set<std::size_t> m_takePart;
    std::vector<Step> m_steps;
    std::size_t m_present = 0; // how many steps are done
    std::size_t m_lastNumber = 0;
    std::size_t m_saved = 0;
    bool m_isSealed = true;
};

} // namespace qx::host
