#include "app/Places.h"

#include "app/ControlTexts.h"
#include "app/KeyNames.h"
#include "app/Workbench.h"
#include "qxcontrols/keyprog/FreeProgKeysBlock.h"
#include "qxcontrols/keyprog/QXFreeProgKeys.h"
#include "qxcontrols/keyprog/QXLayeredFuncKeys.h"
#include "qxcontrols/keys/QXKeyboardLayoutData.h"
#include "qxcontrols/pos/QXPos.h"
#include "qxcontrols/readers/QXBarcode.h"
#include "qxcontrols/readers/QXMagnetCard.h"

#include <QCoreApplication>

#include <algorithm>
#include <charconv>
#include <vector>

namespace qx::app {

namespace {

// The words and numbers of a place after its section's key.
struct Parts {
    std::vector<std::string_view> words;
    std::vector<Integer> numbers;
};

Parts PartsOf(std::string_view place) {
    Parts parts;
    for (std::size_t start = 0; start < place.size();) {
        const std::size_t end = std::min(place.find_first_of("/[]", start), place.size());
        const std::string_view word = place.substr(start, end - start);
        Integer number = 0;
        const auto [last, error] = std::from_chars(word.data(), word.data() + word.size(), number);
        if (error == std::errc() && last == word.data() + word.size())
            parts.numbers.push_back(number);
        else if (!word.empty())
            parts.words.push_back(word);
        start = end + 1;
    }
    return parts;
}

void Show(QXMagnetCard& control, const Parts& parts) {
    if (parts.numbers.empty())
        return;
    const std::string& caption =
        control.Track(static_cast<Integer>(parts.numbers[0] + 1)).Caption();
    const auto& items = control.trackList.Items;
    const auto found = std::find(items.begin(), items.end(), caption);
    if (found == items.end())
        return;
    control.trackList.ListIndex = static_cast<Integer>(found - items.begin());
    control.trackList_Click();
}

void Show(QXBarcode& control, const Parts& parts) {
    Integer page = BP_CommonSettings;
    if (parts.words.size() > 2 && parts.words[1] == "pages")
        page = static_cast<Integer>(
            std::find(kBarcodePageNames.begin(), kBarcodePageNames.end(), parts.words[2]) -
            kBarcodePageNames.begin());
    else if (!parts.numbers.empty())
        page = static_cast<Integer>(BP_Reader_1 + parts.numbers[0]);
    control.lstPrefGroup.ListIndex = page;
    control.lstPrefGroup_Click();
}

void Show(QXFreeProgKeys& control, const Parts& parts) {
    if (parts.numbers.empty())
        return;
    control.layoutDisplay.cmdKey_Click(parts.numbers[0]);
    control.layoutDisplay.SelectKey(parts.numbers[0]);
}

void Show(QXLayeredFuncKeys& control, const Parts& parts) {
    if (parts.numbers.size() < 2)
        return;
    control.spinLayer.Value = parts.numbers[0];
    control.spinLayer_Change();
    control.cmdFuncKey_Click(parts.numbers[1]);
}

void Show(QXPos& control, const Parts& parts) {
    if (!parts.numbers.empty())
        control.posDisplay.SetCursor(parts.numbers[0]);
}

template <typename... Controls>
void ShowIn(ModuleControl& control, const Parts& parts) {
    const auto attempt = [&](auto* found) {
        if (found != nullptr)
            Show(*found, parts);
    };
    (attempt(dynamic_cast<Controls*>(&control)), ...);
}

} // namespace

std::string SectionOfPlace(std::string_view place) {
    const std::size_t start = place.find_first_not_of('/');
    return start == std::string_view::npos
               ? std::string()
               : std::string(place.substr(start, place.find('/', start) - start));
}

void ShowPlace(Workbench& workbench, std::string_view place) {
    if (host::Section* section = workbench.Configuration().Find(SectionOfPlace(place)))
        ShowIn<QXMagnetCard, QXBarcode, QXFreeProgKeys, QXLayeredFuncKeys, QXPos>(
            section->Control(), PartsOf(place));
}

std::vector<FindableKey> AllKeys(Workbench& workbench) {
    std::vector<FindableKey> all;
    const QXKeyboardLayoutData& layout = workbench.Layout();
    for (const char* key : {"freeProgKeys", "funcKeys4610", "funcKeys4620", "funcKeys4630"}) {
        if (!workbench.Has(*workbench.Configuration().Find(key)))
            continue;
        auto& control = workbench.ControlOf<QXFreeProgKeys>(key);
        for (const Integer id : StoredFreeProgKeys(control.Sequences(), control.ConfigID()))
            all.push_back({QCoreApplication::translate("Places", "%1: key %2, %3")
                               .arg(SectionTitle(key), QString::number(id),
                                    QString::fromStdString(layout.KeyCaption(id))),
                           std::string("/") + key + "/keys[" + std::to_string(id) + "]"});
    }
    for (Integer layer = 0; layer < kFuncKeyLayers; ++layer)
        for (Integer key = 0; key < FuncKeyLayer::kKeys; ++key)
            all.push_back({QCoreApplication::translate("Places", "%1: layer %2, %3")
                               .arg(SectionTitle("layeredFuncKeys"), QString::number(layer),
                                    FunctionKeyName(key)),
                           "/layeredFuncKeys/keys[" + std::to_string(layer) + "][" +
                               std::to_string(key) + "]"});
    auto& pos = workbench.ControlOf<QXPos>("pos");
    for (Integer key = 1; key <= POSKeyboard::kSlots; ++key)
        all.push_back({QCoreApplication::translate("Places", "%1: key %2, %3")
                           .arg(SectionTitle("pos"), QString::number(key),
                                QString::fromStdString(
                                    layout.KeyCaption(pos.CodeMap().GetPositionCodeForKey(key)))),
                       "/pos/blocks[" + std::to_string(key) + "]"});
    return all;
}

} // namespace qx::app
