#include "app/EditRequests.h"
#include "app/SettingWords.h"
#include "app/sections/Entries.h"
#include "qxcontrols/readers/QXMagnetCard.h"
#include "qxcontrols/readers/TrackSlots.h"
#include "views/QXMagnetCardView.h"
#include "views/SequenceLabel.h"

#include <QPointer>

#include <algorithm>

namespace qx::app {

namespace {

constexpr SettingWord kWords[] = {
    {"sendImmediate", QT_TRANSLATE_NOOP("SettingWords", "Send each track as soon as it is read")},
    {"verifyLRC", QT_TRANSLATE_NOOP("SettingWords", "Verify checksum (LRC)")},
    {"verifyLastChar", QT_TRANSLATE_NOOP("SettingWords", "Verify last character")},
    {"tracks", QT_TRANSLATE_NOOP("SettingWords", "Track")},
    {"enabled", QT_TRANSLATE_NOOP("SettingWords", "Read this track")},
    {"headerEnabled", QT_TRANSLATE_NOOP("SettingWords", "Send prefix")},
    {"header", QT_TRANSLATE_NOOP("SettingWords", "Prefix")},
    {"terminatorEnabled", QT_TRANSLATE_NOOP("SettingWords", "Send suffix")},
    {"terminator", QT_TRANSLATE_NOOP("SettingWords", "Suffix")},
};

constexpr auto kSequence = static_cast<Integer>(kTrackSlotSize);

class MagnetCardFace : public SequenceFaceOf<QXMagnetCard> {
    Q_DECLARE_TR_FUNCTIONS(MagnetCardFace)
public:
    using SequenceFaceOf::SequenceFaceOf;

    void Translate() override {
        const auto word = [](std::string_view key) {
            return WordOf(kMagnetCard, key).toStdString();
        };
        MagneticCaptions& captions = Control().Captions();
        captions.SetTracks(tr("Tracks").toStdString());
        captions.SetCommonPrefs(tr("All tracks").toStdString());
        captions.SetTrackPreferences(tr("This track").toStdString());
        captions.SetHeaderAndTerminator(
            tr("Keys sent before and after the track's data").toStdString());
        captions.SetUseThisTrack(word("enabled"));
        captions.SetUseThisHeader(word("headerEnabled"));
        captions.SetUseThisTerminator(word("terminatorEnabled"));
        captions.SetCreateHeader(ButtonText(tr("Edit…"), tr("Edit the prefix")));
        captions.SetRemoveHeader(ButtonText(tr("Remove"), tr("Remove the prefix")));
        captions.SetCreateTerminator(ButtonText(tr("Edit…"), tr("Edit the suffix")));
        captions.SetRemoveTerminator(ButtonText(tr("Remove"), tr("Remove the suffix")));
        MagneticOptions& options = Control().ReaderOptions();
        options.VerifyLRC().SetCaption(word("verifyLRC"));
        options.VerifyLastChar().SetCaption(word("verifyLastChar"));
        options.SendImmediate().SetCaption(word("sendImmediate"));
        for (Integer track = 1; track <= kMagneticTracks; ++track)
            Control().Track(track).SetCaption(word("tracks") + " " + std::to_string(track));
        Control().SetShowDetails(ReleasesText().toStdString());
        Control().RescanTracks();
    }

    [[nodiscard]] QWidget* MakeView() override {
        return m_view = new views::QXMagnetCardView(Control());
    }

    [[nodiscard]] QString Summary() override {
        QStringList read;
        for (Integer track = 1; track <= kMagneticTracks; ++track)
            if (Control().Track(track).Available() && Control().Track(track).Enabled())
                read.append(QString::number(track));
        return read.isEmpty() ? tr("Tracks: none")
                              : tr("Tracks: %1").arg(read.join(QStringLiteral(", ")));
    }

    [[nodiscard]] bool HasSequences() const override { return true; }
    [[nodiscard]] std::string PlaceOfLabel(std::string_view name) override {
        return "tracks/" + std::to_string(ShownTrack() - 1) +
               (name == kHeader ? "/header" : "/terminator");
    }

    void AnswerWith(EditRequests& edits) override {
        const auto edit = [this, &edits](Integer nTrackId, const std::string& sCurrSeq,
                                         bool& fCancel, std::string& sNewSeq) {
            fCancel = !HasTrack(nTrackId, edits) ||
                      !edits.Edit(EditRequests::kNoKey, sCurrSeq, sNewSeq, kSequence);
        };
        const auto clear = [this, &edits](Integer nTrackId, bool& fCanRemoveIt) {
            fCanRemoveIt = HasTrack(nTrackId, edits);
        };
        edits.On(Control().EditCurrentHeader, edit);
        edits.On(Control().EditCurrentTerminator, edit);
        edits.On(Control().ClearCurrentHeader, clear);
        edits.On(Control().ClearCurrentTerminator, clear);
        edits.AnswerAdvanceEdit(Control().AdvanceEdit);
    }

    void Show(const Place& place) override {
        if (place.numbers.empty())
            return;
        const std::string& caption =
            Control().Track(static_cast<Integer>(place.numbers[0] + 1)).Caption();
        const auto& items = Control().trackList.Items;
        if (const auto found = std::find(items.begin(), items.end(), caption); found != items.end())
            Pick(static_cast<Integer>(found - items.begin()));
        if (m_view != nullptr && place.words.back() == "header")
            views::SequenceLabel::Choose(*m_view, kHeader);
        else if (m_view != nullptr && place.words.back() == "terminator")
            views::SequenceLabel::Choose(*m_view, kTerminator);
    }

    // Only a keyboard shows which tracks there are; without one, there are all.
    void Follow(host::Session* keyboard) override {
        for (Integer track = 1; keyboard == nullptr && track <= kMagneticTracks; ++track)
            Control().Track(track).SetAvailable(true);
        ListTracks();
    }

private:
    static constexpr const char* kHeader = "lblCurrHeader";
    static constexpr const char* kTerminator = "lblCurrTerminator";

    // The track that is shown is one of the list.
    void ListTracks() {
        Control().RescanTracks();
        if (Control().trackList.ListIndex == -1 && !Control().trackList.Items.empty())
            Pick(0);
    }

    [[nodiscard]] Integer ShownTrack() {
        const auto& list = Control().trackList;
        for (Integer track = 1; track <= kMagneticTracks; ++track)
            if (list.ListIndex >= 0 && Control().Track(track).Caption() ==
                                           list.Items[static_cast<std::size_t>(list.ListIndex)])
                return track;
        return 1;
    }

    void Pick(Integer index) {
        Control().trackList.ListIndex = index;
        Control().trackList_Click();
    }

    // Whether the keyboard has the track; otherwise the user gets a notice.
    [[nodiscard]] bool HasTrack(Integer nTrackId, EditRequests& edits) {
        const bool isThere = Control().Track(nTrackId).Available();
        if (!isThere)
            edits.Report(tr("This keyboard cannot read track %1.").arg(nTrackId));
        return isThere;
    }

    QPointer<QWidget> m_view;
};

} // namespace

constinit const SectionEntry kMagnetCard = {
    "magnetCard",
    PageGroup::Readers,
    QT_TRANSLATE_NOOP("SettingWords", "Magnetic card reader"),
    "magnet-card",
    kWords,
    MakeFace<MagnetCardFace, QXMagnetCard>};

} // namespace qx::app
