#include "app/EditRequests.h"
#include "app/SettingWords.h"
#include "app/sections/Entries.h"
#include "qxcontrols/keyprog/FreeProgKeysBlock.h"
#include "qxcontrols/keyprog/QXFreeProgKeys.h"
#include "qxcontrols/keys/QXKeyboardLayoutData.h"
#include "qxcontrols/settings/QXProgSettings.h"
#include "views/QXFreeProgKeysView.h"

#include <algorithm>

namespace qx::app {

namespace {

constexpr SettingWord kWords[] = {
    {"positionCode", QT_TRANSLATE_NOOP("SettingWords", "Key")},
};

class FreeProgKeysFace : public SequenceFaceOf<QXFreeProgKeys> {
    Q_DECLARE_TR_FUNCTIONS(FreeProgKeysFace)
public:
    using SequenceFaceOf::SequenceFaceOf;

    void Translate() override {
        Control().SetButtonEdit(ButtonText(tr("Edit…"), tr("Edit the current key's sequence")));
        Control().SetButtonClean(
            ButtonText(tr("Clear key"), tr("Remove the current key's sequence")));
        Control().SetButtonCleanAll(
            ButtonText(tr("Clear all keys…"), tr("Remove the sequences of all keys")));
        Control().SetSequenceForCurrKey(tr("The key sends:").toStdString());
        Control().SetShowDetails(ReleasesText().toStdString());
    }

    [[nodiscard]] QWidget* MakeView() override { return new views::QXFreeProgKeysView(Control()); }

    [[nodiscard]] QString Summary() override { return ProgrammedText(CountProgrammed()); }
    [[nodiscard]] int CountProgrammed() override {
        const KeyboardSequences& keys = Control().Sequences();
        int count = 0;
        for (Integer id = KeyboardSequences::kMinKeyID; id <= KeyboardSequences::kMaxKeyID; ++id)
            count += keys.Key(id).Length() > 0 ? 1 : 0;
        return count;
    }

    [[nodiscard]] bool HasKeys() const override { return true; }
    [[nodiscard]] std::string PlaceOf(int key) override {
        return "keys[" + std::to_string(key) + "]";
    }

    [[nodiscard]] int KeyAt(Integer nPositionCode) override {
        const QXKeyboardLayoutData* layout = Control().LayoutSource();
        const bool isProgrammable =
            layout != nullptr && layout->KeySupport(nPositionCode) == KEYMODE_PROG;
        return isProgrammable && HasPlace(nPositionCode) ? nPositionCode : -1;
    }
    [[nodiscard]] std::optional<Position> PositionOf(int key) override {
        return Position{static_cast<Integer>(key)};
    }

    void AnswerWith(EditRequests& edits) override {
        edits.On(Control().EditSequence,
                 [this, &edits](Integer nPosCode, const std::string& sCurrSeq, bool& fCancel,
                                std::string& sNewSeq) {
                     if (!HasPlace(nPosCode))
                         edits.Report(tr("This module has no place for this key in the keyboard."));
                     fCancel = !HasPlace(nPosCode) ||
                               !edits.Edit(nPosCode, sCurrSeq, sNewSeq, kFreeProgKeySlotSize);
                 });
        edits.On(Control().KeyNoEditable, [&edits](Integer nPositionCode) {
            edits.Report(nPositionCode == EditRequests::kNoKey
                             ? tr("Select a key first.")
                             : tr("This key cannot be programmed."));
        });
        edits.On(Control().RemoveAllSequences, [&edits](bool& fRemoveIt) {
            fRemoveIt = edits.Ask(tr("Clear all keys of this module?"));
        });
        edits.AnswerAdvanceEdit(Control().AdvanceEdit);
    }

    void Show(const Place& place) override {
        if (place.numbers.empty())
            return;
        Control().layoutDisplay.cmdKey_Click(place.numbers[0]);
        Control().layoutDisplay.SelectKey(place.numbers[0]);
    }

    void Apply(const QXProgSettings& preferences) override {
        Control().KeyFontSizeChanged(preferences.KeyFontSize());
    }

private:
    [[nodiscard]] bool HasPlace(Integer nPosCode) {
        const auto stored = StoredFreeProgKeys(Control().Sequences(), Control().ConfigID());
        return std::find(stored.begin(), stored.end(), nPosCode) != stored.end();
    }
};

constexpr auto kMake = MakeFace<FreeProgKeysFace, QXFreeProgKeys>;
constexpr std::string_view kFreeKeys = "freeProgKeys"; // the function keys share its help

} // namespace

constinit const SectionEntry kFreeProgKeys = {
    kFreeKeys,   PageGroup::Keys, QT_TRANSLATE_NOOP("SettingWords", "Free keys"),
    "free-keys", kWords,          kMake};
constinit const SectionEntry kFuncKeys4610 = {
    "funcKeys4610",  PageGroup::Keys, QT_TRANSLATE_NOOP("SettingWords", "Function keys 4610"),
    "function-keys", kWords,          kMake,
    kFreeKeys};
constinit const SectionEntry kFuncKeys4620 = {
    "funcKeys4620",  PageGroup::Keys, QT_TRANSLATE_NOOP("SettingWords", "Function keys 4620"),
    "function-keys", kWords,          kMake,
    kFreeKeys};
constinit const SectionEntry kFuncKeys4630 = {
    "funcKeys4630",  PageGroup::Keys, QT_TRANSLATE_NOOP("SettingWords", "Function keys 4630"),
    "function-keys", kWords,          kMake,
    kFreeKeys};

} // namespace qx::app
