// SectionFace: the application's part of a section of the configuration: its title, its words,
// the texts and the view of its control, how it is edited, and where its settings are found.
//
// A new module is one entry of kSectionEntries, in its own file.
#pragma once

#include "app/Places.h"
#include "qxcontrols/common/ButtonCaption.h"
#include "qxcontrols/device/ModuleControl.h"

#include <QCoreApplication>
#include <QString>

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

class QWidget;

namespace qx {
class KeySequence;
class QXProgSettings;
} // namespace qx
namespace qx::host {
class OptionCaptions;
class Session;
} // namespace qx::host

namespace qx::app {

class EditRequests;
class KeyActions;
class KeyEdits;

// The faces of one configuration's sections; each stays alive no longer than its control.
class SectionFace {
public:
    SectionFace() = default;
    virtual ~SectionFace() = default;
    SectionFace(const SectionFace&) = delete;
    SectionFace& operator=(const SectionFace&) = delete;

    // The keyboard's options have these names from the next Translate on.
    virtual void NameOptions(const host::OptionCaptions& /*captions*/) {}
    // Gives the control its texts in the present language.
    virtual void Translate() = 0;
    [[nodiscard]] virtual QWidget* MakeView() = 0;
    // A line about the settings, for the overview.
    [[nodiscard]] virtual QString Summary() = 0;
    // How many keys or blocks have a sequence; 0 for a section without keys.
    [[nodiscard]] virtual int CountProgrammed() { return 0; }
    // Whether the view is a KeyGrid whose keys are edited beside it and on it. If so, PlaceOf gives
    // the element of a key of the grid, below its section: "keys[12]"; SenderOf the one whose
    // sequence the key sends, another where keys act together.
    [[nodiscard]] virtual bool HasKeys() const { return false; }
    [[nodiscard]] virtual std::string PlaceOf(int /*key*/) { return {}; }
    [[nodiscard]] virtual std::string SenderOf(int key) { return PlaceOf(key); }
    // The elements of the keys that act together, by key.
    using Groups = std::map<int, std::string>;
    [[nodiscard]] virtual Groups GroupedKeys() { return {}; }
    // The element of the sequence that a label of this name shows, below its section:
    // "tracks/0/header". Only for a view whose sequences are edited beside it.
    [[nodiscard]] virtual bool HasSequences() const { return false; }
    [[nodiscard]] virtual std::string PlaceOfLabel(std::string_view /*name*/) { return {}; }
    // The key of the grid at this position of the keyboard, -1 for none, and the position of a key,
    // with its POS key index if it has one. Only for keys that a layout places.
    [[nodiscard]] virtual int KeyAt(Integer /*nPositionCode*/) { return -1; }
    struct Position {
        Integer code;
        Integer posKey = 0;
    };
    [[nodiscard]] virtual std::optional<Position> PositionOf(int /*key*/) { return {}; }
    // The name of the group that the key belongs to; empty for a key by itself.
    [[nodiscard]] virtual QString GroupOf(int /*key*/) { return {}; }
    // The text that the key has beside its sequence, on a page where keys have one.
    [[nodiscard]] virtual std::optional<std::string> DescriptionOf(int /*key*/) { return {}; }
    // Gives it another, which the control does not show yet. Nothing happens on other pages.
    virtual void Describe(int /*key*/, const std::string& /*description*/) {}
    // Adds what can be done on this page alone. The view is MakeView's.
    virtual void AddActions(KeyActions& /*actions*/, KeyEdits& /*edits*/, QWidget& /*view*/) {}
    // Marks what else in the view has a change, beside the keys of its grid. `isChanged` answers
    // for an element below the section: "keys[2]".
    using IsChanged = std::function<bool(const std::string& element)>;
    virtual void MarkChanges(QWidget& /*view*/, const IsChanged& /*isChanged*/) {}
    // Answers the control whenever it asks for an edit or a removal.
    virtual void AnswerWith(EditRequests& /*edits*/) {}
    // Has the control show the part of it where the setting is: the page, track, layer or key.
    virtual void Show(const Place& /*place*/) {}
    // The control has been given this keyboard, or none (null), and shows what that has.
    virtual void Follow(host::Session* /*keyboard*/) {}
    // The preferences have changed.
    virtual void Apply(const QXProgSettings& /*preferences*/) {}
    // Whether the releases of keys are shown as well.
    virtual void ShowReleases(bool /*isWanted*/) {}
};

// The application's word for a member of the document, as the page and every list name it.
struct SettingWord {
    std::string_view key;
    const char* text; // in the translations' context SettingWords
};

// The parts of the list of pages.
enum class PageGroup { Device, Keys, Readers, Tools };

struct SectionEntry {
    std::string_view key;
    PageGroup group;
    const char* title; // in the same context
    const char* icon;  // see LineIcon
    std::span<const SettingWord> words;
    std::unique_ptr<SectionFace> (*makeFace)(ModuleControl& control);
    std::string_view help{}; // the section whose page of help is about this one too
};

// A face that knows its control as what it is.
template <typename C>
class FaceOf : public SectionFace {
public:
    explicit FaceOf(C& control) : m_control(control) {}

protected:
    [[nodiscard]] C& Control() { return m_control; }

private:
    C& m_control;
};

// The same for a control with a check box for the releases of keys.
template <typename C>
class SequenceFaceOf : public FaceOf<C> {
public:
    using FaceOf<C>::FaceOf;

    void ShowReleases(bool isWanted) override {
        this->Control().chkShowDetails.Value = isWanted ? 1 : 0;
        this->Control().chkShowDetails_Click();
    }
};

template <typename Face, typename Control>
[[nodiscard]] std::unique_ptr<SectionFace> MakeFace(ModuleControl& control) {
    return std::make_unique<Face>(dynamic_cast<Control&>(control));
}

[[nodiscard]] inline ButtonCaption ButtonText(const QString& caption, const QString& toolTip) {
    return {caption.toStdString(), toolTip.toStdString()};
}

} // namespace qx::app
