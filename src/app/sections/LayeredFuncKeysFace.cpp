#include "app/EditRequests.h"
#include "app/LayerActions.h"
#include "app/SettingWords.h"
#include "app/sections/Entries.h"
#include "qxcontrols/keyprog/LayeredFuncKeyBlocks.h"
#include "qxcontrols/keyprog/QXLayeredFuncKeys.h"
#include "views/QXLayeredFuncKeysView.h"

#include <set>
#include <utility>

namespace qx::app {

namespace {

constexpr SettingWord kWords[] = {
    {"guid", QT_TRANSLATE_NOOP("SettingWords", "Identifier")},
    {"layer", QT_TRANSLATE_NOOP("SettingWords", "Layer")},
    {"name", QT_TRANSLATE_NOOP("SettingWords", "Name")},
    {"description", QT_TRANSLATE_NOOP("SettingWords", "Description")},
};

class LayeredFuncKeysFace : public SequenceFaceOf<QXLayeredFuncKeys> {
    Q_DECLARE_TR_FUNCTIONS(LayeredFuncKeysFace)
public:
    explicit LayeredFuncKeysFace(QXLayeredFuncKeys& control)
        : SequenceFaceOf(control),
          m_refreshed(control.Refreshed.Subscribe([this] { ShowLayerOnKeyboard(); })) {}

    void Translate() override {
        const auto caption = [](std::string_view key) {
            return WordOf(kLayeredFuncKeys, key).toStdString() + ':';
        };
        Control().SetButtonEdit(ButtonText(tr("Edit…"), tr("Edit the current key's sequence")));
        Control().SetButtonCleanKey(
            ButtonText(tr("Clear key"), tr("Remove the current key's sequence")));
        Control().SetButtonCleanLayer(
            ButtonText(tr("Clear layer…"), tr("Remove the sequences of this layer")));
        Control().SetButtonCleanAllLayer(
            ButtonText(tr("Clear all layers…"), tr("Remove the sequences of all layers")));
        Control().SetCaptionSequence(tr("The key sends:").toStdString());
        Control().SetFunctionKeyDescription(caption("description"));
        Control().SetLayerDesc(caption("layer"));
        Control().SetShowDetails(ReleasesText().toStdString());
    }

    [[nodiscard]] QWidget* MakeView() override {
        return new views::QXLayeredFuncKeysView(Control());
    }

    [[nodiscard]] QString Summary() override { return ProgrammedText(CountProgrammed()); }
    [[nodiscard]] int CountProgrammed() override {
        int count = 0;
        for (Integer layer = 0; layer < kFuncKeyLayers; ++layer)
            count += Control().Layer(layer).CountProgrammed();
        return count;
    }

    [[nodiscard]] bool HasKeys() const override { return true; }
    [[nodiscard]] std::string PlaceOf(int key) override {
        return "keys[" + std::to_string(Control().CurrentLayer()) + "][" + std::to_string(key) +
               "]";
    }

    [[nodiscard]] std::optional<std::string> DescriptionOf(int key) override {
        return Shown().GetKeyDesc(static_cast<Integer>(key));
    }
    void Describe(int key, const std::string& description) override {
        Shown().SetKeyDesc(static_cast<Integer>(key), description);
    }

    void AddActions(KeyActions& /*actions*/, KeyEdits& edits, QWidget& view) override {
        new LayerActions(edits, *qobject_cast<views::QXLayeredFuncKeysView*>(&view), Control());
    }

    void MarkChanges(QWidget& view, const IsChanged& isChanged) override {
        std::set<int> layers;
        for (Integer layer = 0; layer < kFuncKeyLayers; ++layer)
            if (isChanged("keys[" + std::to_string(layer) + "]"))
                layers.insert(layer);
        qobject_cast<views::QXLayeredFuncKeysView*>(&view)->SetMarkedLayers(
            layers, tr("Has changes that are not yet written to the keyboard"));
    }

    void AnswerWith(EditRequests& edits) override {
        edits.On(Control().EditLayeredFuncKey, [&edits](const std::string& sCurrSeq, bool& fCancel,
                                                        std::string& sNewSeq) {
            fCancel = !edits.Edit(EditRequests::kNoKey, sCurrSeq, sNewSeq, kFuncKeySlotSize);
        });
        const auto pickFirst = [&edits] { edits.Report(tr("Select a key first.")); };
        edits.On(Control().NoKeySelectedToEdit, pickFirst);
        edits.On(Control().NoKeySelectedToClean, pickFirst);
        edits.On(Control().CleanThisLayer, [this, &edits](bool& fCancel) {
            fCancel = !edits.Ask(tr("Clear all keys of layer %1?").arg(Control().CurrentLayer()));
        });
        edits.On(Control().CleanAllLayers, [&edits](bool& fCancel) {
            fCancel = !edits.Ask(tr("Clear all keys of all layers?"));
        });
        edits.AnswerAdvanceEdit(Control().AdvanceEdit);
    }

    void Show(const Place& place) override {
        if (place.numbers.empty())
            return;
        Control().spinLayer.Value = place.numbers[0];
        Control().spinLayer_Change();
        if (place.numbers.size() > 1)
            Control().cmdFuncKey_Click(place.numbers[1]);
    }

private:
    [[nodiscard]] FuncKeyLayer& Shown() { return Control().Layer(Control().CurrentLayer()); }

    // The keyboard's own layer follows the layer that is shown.
    void ShowLayerOnKeyboard() {
        if (std::exchange(m_shownLayer, Control().CurrentLayer()) != Control().CurrentLayer())
            Control().ShowCurrentSelectedLayerOnKeyboard();
    }

    Subscription m_refreshed;
    Integer m_shownLayer = 0;
};

} // namespace

constinit const SectionEntry kLayeredFuncKeys = {
    "layeredFuncKeys", PageGroup::Keys, QT_TRANSLATE_NOOP("SettingWords", "Layered function keys"),
    "layers",          kWords,          MakeFace<LayeredFuncKeysFace, QXLayeredFuncKeys>};

} // namespace qx::app
