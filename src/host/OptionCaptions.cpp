#include "host/OptionCaptions.h"

#include "files/Files.h"
#include "files/Limits.h"
#include "files/SystemTexts.h"
#include "host/VisibleText.h"
#include "qxcontrols/common/Utf.h"
#include "qxcontrols/readers/BarcodeOptionPage.h"
#include "qxcontrols/readers/BarcodePage.h"
#include "json/Reader.h"

#include <algorithm>
#include <system_error>

namespace qx::host {

namespace {

using json::Object;
using json::Value;

// Whether the keyboard has all texts that are given.
bool IsMeant(const Value& value, const KeyboardInfo& keyboard) {
    Object given(value);
    bool isMeant = given.IsObject();
    for (const auto& [field, ofKeyboard] : KeyboardInfo::kTexts) {
        const auto text = given.Find(field.key).Text();
        isMeant = isMeant && (!text || *text == keyboard.*ofKeyboard);
    }
    given.RefuseOthers();
    return isMeant;
}

bool IsForKeyboard(const Value& list, const KeyboardInfo& keyboard) {
    const std::vector<Value> keyboards = list.Elements();
    if (list.Exists() && list.AsJson().is_array() && keyboards.empty())
        list.Refuse(FaultKind::EmptyList);
    bool isMeant = false;
    for (const Value& each : keyboards)
        isMeant = IsMeant(each, keyboard) || isMeant; // all are checked
    return isMeant;
}

std::string ReadName(const Value& value) {
    const std::string text = value.Text().value_or("");
    if (const std::size_t units = Utf16FromUtf8(text).size(); units > OptionCaptions::kMaxUnits)
        value.Refuse(FaultKind::TextTooLong, units, OptionCaptions::kMaxUnits);
    else if (text.empty() && value.Exists() && value.AsJson().is_string())
        value.Refuse(FaultKind::EmptyText);
    return VisibleText(text);
}

OptionCaption ReadCaption(const Value& value) {
    Object names(value);
    OptionCaption caption{ReadName(names.Get("en")), ReadName(names.Find("de"))};
    names.RefuseOthers();
    return caption;
}

std::map<std::string, OptionCaption> ReadOptions(const Value& value) {
    std::map<std::string, OptionCaption> captions;
    Object codes(value);
    for (const std::string_view page : kBarcodePageNames) {
        const Value ofPage = codes.Find(page);
        if (!ofPage.Exists())
            continue;
        Object options(ofPage);
        for (int number = 0; number < BarcodeOptionPage::kFlags; ++number) {
            const std::string index = std::to_string(number);
            if (const Value option = options.Find(index); option.Exists())
                captions.emplace("/barcode/pages/" + std::string(page) + "/flags/" + index,
                                 ReadCaption(option));
        }
        options.RefuseOthers();
    }
    codes.RefuseOthers();
    return captions;
}

std::vector<std::filesystem::path> CaptionsFiles(const std::filesystem::path& folder) {
    std::vector<std::filesystem::path> files;
    std::error_code ended;
    for (auto entry = std::filesystem::directory_iterator(folder, ended);
         !ended && entry != std::filesystem::directory_iterator(); entry.increment(ended))
        if (entry->path().extension() == ".json")
            files.push_back(entry->path());
    std::sort(files.begin(), files.end());
    return files;
}

} // namespace

OptionCaptions::OptionCaptions(const KeyboardInfo& keyboard,
                               const std::vector<std::filesystem::path>& folders,
                               std::vector<Error>& warnings) {
    for (const std::filesystem::path& folder : folders)
        for (const std::filesystem::path& file : CaptionsFiles(folder)) {
            try {
                Add(keyboard, file);
            } catch (const json::FaultError& error) {
                warnings.emplace_back(
                    Cause::CaptionsUnusable,
                    ErrorFacts{.place = {.file = files::TextOf(file)}, .faults = error.Faults()});
            } catch (const std::exception& error) {
                warnings.push_back(FileError(error));
            }
        }
}

void OptionCaptions::Add(const KeyboardInfo& keyboard, const std::filesystem::path& file) {
    const std::string text = files::ReadFile(file, files::kMostOfCaptions);
    const Json json = json::ParseStrictly(text, files::kMostOfCaptions);
    json::Faults faults;
    Object whole(Value(json, "", faults));
    if (json::HasFormat(whole, kFormat, kVersion)) {
        const bool isForKeyboard = IsForKeyboard(whole.Get("keyboards"), keyboard);
        auto captions = ReadOptions(whole.Get("barcode"));
        whole.RefuseOthers();
        if (isForKeyboard && faults.Count() == 0)
            m_captions.merge(captions); // those that are there already stay
    }
    faults.ThrowAny();
}

OptionCaption OptionCaptions::Find(const std::string& place) const {
    if (const auto found = m_captions.find(place); found != m_captions.end())
        return found->second;
    const bool isSwitch = place.starts_with("/barcode/pages/") && place.ends_with("/flags/0") &&
                          place.find("/CommonSettings/") == std::string::npos;
    return isSwitch ? OptionCaption{"Read this kind of code", "Diese Codeart lesen"}
                    : OptionCaption();
}

} // namespace qx::host
