// QXMagnetCard: the control for the magnetic-stripe reader: its options, and for each of up to four
// tracks the switches and the sequences that frame the track's data.
//
// It owns the settings of all four tracks and transfers them, whether the keyboard has the track or
// not; its list shows the tracks that the keyboard has. The list is filled when a keyboard is
// assigned, and by RescanTracks, which must be called when the keyboard is identified again. It
// opens no editor: it asks its host to change a sequence.
//
// DataUpload does not check that the keyboard has both modules: without one it reads at address -1,
// or a few bytes above it. A host whose driver does not refuse these addresses must upload this
// control only if GetBaseAddressForModule finds both.
#pragma once

#include "qxcontrols/common/ChildControls.h"
#include "qxcontrols/device/ModuleControl.h"
#include "qxcontrols/readers/MagneticBlocks.h"
#include "qxcontrols/readers/MagneticCaptions.h"

#include <array>
#include <optional>
#include <string>
#include <vector>

namespace qx {

class QXMagnetCard : public ModuleControl {
public:
    explicit QXMagnetCard(const Platform& platform = {});

    // The settings. Call AdjustControls after changing them in place (Translate after changing
    // captions); the setters update the display.
    [[nodiscard]] MagneticOptions& ReaderOptions() { return m_settings.options; }
    [[nodiscard]] const MagneticOptions& ReaderOptions() const { return m_settings.options; }
    void SetReaderOptions(const MagneticOptions& options);
    [[nodiscard]] MagneticTrack& Track1() { return m_settings.tracks[0]; }
    [[nodiscard]] const MagneticTrack& Track1() const { return m_settings.tracks[0]; }
    void SetTrack1(const MagneticTrack& track) { SetTrack(1, track); }
    [[nodiscard]] MagneticTrack& Track2() { return m_settings.tracks[1]; }
    [[nodiscard]] const MagneticTrack& Track2() const { return m_settings.tracks[1]; }
    void SetTrack2(const MagneticTrack& track) { SetTrack(2, track); }
    [[nodiscard]] MagneticTrack& Track3() { return m_settings.tracks[2]; }
    [[nodiscard]] const MagneticTrack& Track3() const { return m_settings.tracks[2]; }
    void SetTrack3(const MagneticTrack& track) { SetTrack(3, track); }
    [[nodiscard]] MagneticTrack& Track4() { return m_settings.tracks[3]; }
    [[nodiscard]] const MagneticTrack& Track4() const { return m_settings.tracks[3]; }
    void SetTrack4(const MagneticTrack& track) { SetTrack(4, track); }
    // The same by number, 1 to 4; throws std::out_of_range for other numbers.
    [[nodiscard]] MagneticTrack& Track(Integer nTrackId);
    [[nodiscard]] const MagneticTrack& Track(Integer nTrackId) const;
    void SetTrack(Integer nTrackId, const MagneticTrack& track);

    // The texts; ShowDetails is the text of the check box.
    [[nodiscard]] MagneticCaptions& Captions() { return m_captions; }
    [[nodiscard]] const MagneticCaptions& Captions() const { return m_captions; }
    void SetCaptions(const MagneticCaptions& captions);
    [[nodiscard]] const std::string& ShowDetails() const { return chkShowDetails.Caption; }
    void SetShowDetails(std::string sCaption);

    // Reads which tracks the keyboard has, and lists them; the current track stays the same.
    void RescanTracks();
    // Displays the sequences again, with the layout's current key names.
    void ReloadKeysSettings();
    // Traces all settings and the display.
    void DumpContext() const;

    // nTrackId is 1 to 4. Without an answer, a removal is carried out, and an edit keeps the
    // sequence.
    Event<Integer, bool&> ClearCurrentHeader;     // nTrackId, fCanRemoveIt (true)
    Event<Integer, bool&> ClearCurrentTerminator; // the same
    // nTrackId, sInSequence, fCancelAction (false), sOutSequence (sInSequence)
    Event<Integer, const std::string&, bool&, std::string&> EditCurrentHeader;
    Event<Integer, const std::string&, bool&, std::string&> EditCurrentTerminator; // the same
    Event<bool&> AdvanceEdit;                                                      // fEdit (false)

    [[nodiscard]] Long TransferSize(bool LoadInKeyboard) const override;
    void DefaultValues() override;
    void PrepareDataUpload(bool LoadInKeyboard) override;
    void PrepareDataDownload(bool LoadInKeyboard) override;
    void DataUpload(bool LoadInKeyboard) override;
    void DataDownload(bool LoadInKeyboard) override;
    void Translate() override;
    void AdjustControls() override;
    void ReloadKeySettings() override { ReloadKeysSettings(); }

    Label lblCommonPrefs;
    std::array<CheckBox, 3> chkMagneticOptions; // VerifyLRC, VerifyLastChar, SendImmediate
    Label lblTracks;
    ListBox trackList;
    // The current track; disabled while the keyboard does not have it.
    Label lblTrackPreferences;
    CheckBox chkEnableCurrentTrack;
    Label lblHeaderAndTerminator;
    CheckBox chkUseThisHeader;
    CheckBox chkUseThisTerminator;
    Label lblCurrHeader;
    Label lblCurrTerminator;
    std::array<Button, 2> cmdCreate; // header, terminator
    std::array<Button, 2> cmdRemove; // header, terminator
    CheckBox chkShowDetails;         // 1: the sequences' texts include released keys

    // The user's actions; an index outside its array is ignored.
    void chkMagneticOptions_Click(Integer Index);
    void trackList_Click();
    void chkEnableCurrentTrack_Click();
    void chkUseThisHeader_Click();
    void chkUseThisTerminator_Click();
    void cmdCreate_Click(Integer Index);
    void cmdRemove_Click(Integer Index);
    void lblCurrHeader_KeyPress(); // any key; a disabled label accepts none
    void lblCurrTerminator_KeyPress();
    void chkShowDetails_Click();

protected:
    void KeyboardAssigned() override { ScanTracks(); }
    void LayoutSourceAssigned() override { SequencesChanged(); }

private:
    void AddTrackDispatch(Integer nTrack);
    [[nodiscard]] Integer DispatchToTrack(Integer nPosition) const;
    [[nodiscard]] Integer TrackToDispatcher(Integer nTrack) const; // -1 if not in the list
    void ActivateTrack(Integer nTrack);
    void AdjustControlsForCurrentTrack();
    void AdjustControlsForGivenTrack(Integer nTrack);
    [[nodiscard]] MagneticTrack& GetTrack(Integer nTrack); // 0 to 3
    [[nodiscard]] MagneticTrack& GetCurrTrack() { return GetTrack(m_currTrack); }

    void ScanTracks();
    void TextsChanged();
    void ValuesChanged();
    void SequencesChanged();
    void ShowTexts();
    void ShowOptions();
    void ShowSequences();
    void Store(bool isOn, bool wasOn, void (MagneticTrack::*set)(bool));
    void AskAndEdit(Integer Index);
    void QueueBlocks();
    void WriteBlocks(Long lHeadersAddress, Long lSwitchesAddress);
    [[nodiscard]] std::optional<std::string> ReadBlock(Long lAddress, Long lSize);

    MagneticSettings m_settings;
    MagneticCaptions m_captions;
    std::vector<Integer> m_dispatch; // list position to track, 0 to 3
    Integer m_currTrack = 0;         // 0 to 3
};

} // namespace qx
