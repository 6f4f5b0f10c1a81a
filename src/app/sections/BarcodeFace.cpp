#include "app/EditRequests.h"
#include "app/Language.h"
#include "app/SettingWords.h"
#include "app/sections/Entries.h"
#include "host/OptionCaptions.h"
#include "qxcontrols/readers/BarcodeBlocks.h"
#include "qxcontrols/readers/QXBarcode.h"
#include "qxcontrols/readers/TrackSlots.h"
#include "views/BarcodeEditor.h"
#include "views/SequenceLabel.h"

#include <QPointer>

#include <algorithm>

namespace qx::app {

namespace {

constexpr SettingWord kWords[] = {
    {"CommonSettings", QT_TRANSLATE_NOOP("SettingWords", "Common settings")},
    {"EAN", "EAN"},
    {"UPC", "UPC"},
    {"Code39", "Code 39"},
    {"Code128", "Code 128"},
    {"CodaBar", "Codabar"},
    {"Code25_Overlapped", QT_TRANSLATE_NOOP("SettingWords", "Interleaved 2 of 5")},
    {"Code25_Industrial", QT_TRANSLATE_NOOP("SettingWords", "Industrial 2 of 5")},
    {"Code25_Matrix", QT_TRANSLATE_NOOP("SettingWords", "Matrix 2 of 5")},
    {"Code93", "Code 93"},
    {"Code11", "Code 11"},
    {"Code16K", "Code 16K"},
    {"MSI", "MSI"},
    {"Plessey", "Plessey"},
    {"minSize", QT_TRANSLATE_NOOP("SettingWords", "Shortest code")},
    {"maxSize", QT_TRANSLATE_NOOP("SettingWords", "Longest code")},
    {"flags", QT_TRANSLATE_NOOP("SettingWords", "Option")},
    {"readers", QT_TRANSLATE_NOOP("SettingWords", "Reader")},
    {"headerEnabled", QT_TRANSLATE_NOOP("SettingWords", "Send prefix")},
    {"header", QT_TRANSLATE_NOOP("SettingWords", "Prefix")},
    {"terminatorEnabled", QT_TRANSLATE_NOOP("SettingWords", "Send suffix")},
    {"terminator", QT_TRANSLATE_NOOP("SettingWords", "Suffix")},
};

// How many options of each page are in use, by its number.
constexpr std::array<Integer, kBarcodeOptionPages> kOptionsInUse = {5, 6, 10, 7, 5, 4, 4,
                                                                    3, 1, 1,  2, 3, 1, 1};

constexpr auto kSequence = static_cast<Integer>(kTrackSlotSize);

class BarcodeFace : public SequenceFaceOf<QXBarcode> {
    Q_DECLARE_TR_FUNCTIONS(BarcodeFace)
public:
    using SequenceFaceOf::SequenceFaceOf;

    void NameOptions(const host::OptionCaptions& captions) override { m_captions = captions; }

    void Translate() override {
        for (std::size_t i = 0; i < kOptionsInUse.size(); ++i)
            TranslatePage(static_cast<BarcodePage>(i));
        const auto word = [](std::string_view key) { return WordOf(kBarcode, key).toStdString(); };
        const QString readers[] = {ReaderName(1), ReaderName(2)};
        Control().SetListEntry(BP_Reader_1, readers[0].toStdString());
        Control().SetListEntry(BP_Reader_2, readers[1].toStdString());
        Control().SetListCaption(tr("Codes and readers").toStdString());
        const QString hint = tr("Keys sent before and after each code of %1");
        Control().SetReader1Msg(hint.arg(readers[0]).toStdString());
        Control().SetReader2Msg(hint.arg(readers[1]).toStdString());
        Control().SetMinSizeCaption(word("minSize"));
        Control().SetMaxSizeCaption(word("maxSize"));
        Control().OptionHeader().SetCaption(word("headerEnabled"));
        Control().OptionTerminator().SetCaption(word("terminatorEnabled"));
        Control().SetButtonEdit(ButtonText(tr("Edit…"), tr("Edit this sequence of keys")));
        Control().SetButtonRemove(ButtonText(tr("Remove"), tr("Remove this sequence of keys")));
        Control().SetShowDetails(ReleasesText().toStdString());
    }

    [[nodiscard]] QWidget* MakeView() override {
        return m_view = new views::BarcodeEditor(Control());
    }

    [[nodiscard]] QString Summary() override {
        int kinds = 0;
        for (Integer page = BP_EAN; page < kBarcodeOptionPages; ++page)
            kinds += Control().BitPage(static_cast<BarcodePage>(page)).Flag(0).Value() ? 1 : 0;
        return tr("Reads %n kind(s) of code", "", kinds);
    }

    [[nodiscard]] bool HasSequences() const override { return true; }
    [[nodiscard]] std::string PlaceOfLabel(std::string_view name) override {
        return "readers/" + std::to_string(Control().lstPrefGroup.ListIndex - BP_Reader_1) +
               (name == kHeader ? "/header" : "/terminator");
    }

    void AnswerWith(EditRequests& edits) override {
        edits.On(Control().EditHeader,
                 [&edits](const std::string& sCurrSeq, bool& fCancel, std::string& sNewSeq) {
                     fCancel = !edits.Edit(EditRequests::kNoKey, sCurrSeq, sNewSeq, kSequence);
                 });
        edits.On(Control().RemoveHeader, [](bool& fRemoveIt) { fRemoveIt = true; });
        edits.On(Control().RemoveTerminator, [](bool& fRemoveIt) { fRemoveIt = true; });
        edits.AnswerAdvanceEdit(Control().AdvanceEdit);
    }

    void Show(const Place& place) override {
        const bool isOption = place.words.size() > 3 && place.words[1] == "pages";
        Integer page = BP_CommonSettings;
        if (isOption)
            page = static_cast<Integer>(
                std::find(kBarcodePageNames.begin(), kBarcodePageNames.end(), place.words[2]) -
                kBarcodePageNames.begin());
        else if (!place.numbers.empty())
            page = static_cast<Integer>(BP_Reader_1 + place.numbers[0]);
        Control().lstPrefGroup.ListIndex = page;
        Control().lstPrefGroup_Click();
        if (m_view == nullptr)
            return;
        if (!isOption && place.words.back() == "header")
            views::SequenceLabel::Choose(*m_view, kHeader);
        else if (!isOption && place.words.back() == "terminator")
            views::SequenceLabel::Choose(*m_view, kTerminator);
        if (!isOption)
            return;
        std::string widget = std::string(place.words[2]) + '.' + std::string(place.words[3]);
        if (!place.numbers.empty())
            widget += '.' + std::to_string(place.numbers[0]);
        m_view->Reveal(QString::fromStdString(widget));
    }

private:
    static constexpr const char* kHeader = "lblReader_0";
    static constexpr const char* kTerminator = "lblReader_1";

    [[nodiscard]] static QString ReaderName(int number) {
        return WordOf(kBarcode, "readers") + QLatin1Char(' ') + QString::number(number);
    }

    void TranslatePage(BarcodePage ePage) {
        const auto index = static_cast<std::size_t>(ePage);
        BarcodeOptionPage& page = Control().BitPage(ePage);
        page.SetOptionNum(kOptionsInUse[index]);
        for (Integer option = 0; option < kOptionsInUse[index]; ++option) {
            const QString own = OwnName(index, option);
            const QString name = !own.isEmpty() ? own
                                                : WordOf(kBarcode, "flags") + QLatin1Char(' ') +
                                                      QString::number(option);
            const QString caption = HasBarcodeConfigBit(ePage, option)
                                        ? name
                                        : tr("%1 (not kept by the keyboard)").arg(name);
            page.Flag(option).SetCaption(caption.toStdString());
        }
        Control().SetListEntry(ePage, WordOf(kBarcode, kBarcodePageNames[index]).toStdString());
    }

    // The vendor's name for an option; empty if it has none.
    [[nodiscard]] QString OwnName(std::size_t page, Integer option) const {
        const std::string place = "/barcode/pages/" + std::string(kBarcodePageNames[page]) +
                                  "/flags/" + std::to_string(option);
        return QString::fromStdString(m_captions.Find(place).In(LanguageCode()));
    }

    host::OptionCaptions m_captions;
    QPointer<views::BarcodeEditor> m_view;
};

} // namespace

constinit const SectionEntry kBarcode = {"barcode",
                                         PageGroup::Readers,
                                         QT_TRANSLATE_NOOP("SettingWords", "Barcode reader"),
                                         "barcode",
                                         kWords,
                                         MakeFace<BarcodeFace, QXBarcode>};

} // namespace qx::app
