// MagneticCaptions: the texts of the magnetic card control.
//
// The host replaces the initial texts by translations. "&&" is a literal ampersand.
#pragma once

#include "qxcontrols/common/ButtonCaption.h"

#include <string>
#include <utility>

namespace qx {

class MagneticCaptions {
public:
    [[nodiscard]] const std::string& Tracks() const { return m_tracks; }
    void SetTracks(std::string sText) { m_tracks = std::move(sText); }
    [[nodiscard]] const std::string& CommonPrefs() const { return m_commonPrefs; }
    void SetCommonPrefs(std::string sText) { m_commonPrefs = std::move(sText); }
    [[nodiscard]] const std::string& TrackPreferences() const { return m_trackPreferences; }
    void SetTrackPreferences(std::string sText) { m_trackPreferences = std::move(sText); }
    [[nodiscard]] const std::string& HeaderAndTerminator() const { return m_headerAndTerminator; }
    void SetHeaderAndTerminator(std::string sText) { m_headerAndTerminator = std::move(sText); }
    [[nodiscard]] const std::string& UseThisTrack() const { return m_useThisTrack; }
    void SetUseThisTrack(std::string sText) { m_useThisTrack = std::move(sText); }
    [[nodiscard]] const std::string& UseThisHeader() const { return m_useThisHeader; }
    void SetUseThisHeader(std::string sText) { m_useThisHeader = std::move(sText); }
    [[nodiscard]] const std::string& UseThisTerminator() const { return m_useThisTerminator; }
    void SetUseThisTerminator(std::string sText) { m_useThisTerminator = std::move(sText); }

    [[nodiscard]] ButtonCaption& CreateHeader() { return m_createHeader; }
    [[nodiscard]] const ButtonCaption& CreateHeader() const { return m_createHeader; }
    void SetCreateHeader(const ButtonCaption& texts) { m_createHeader = texts; }
    [[nodiscard]] ButtonCaption& RemoveHeader() { return m_removeHeader; }
    [[nodiscard]] const ButtonCaption& RemoveHeader() const { return m_removeHeader; }
    void SetRemoveHeader(const ButtonCaption& texts) { m_removeHeader = texts; }
    [[nodiscard]] ButtonCaption& CreateTerminator() { return m_createTerminator; }
    [[nodiscard]] const ButtonCaption& CreateTerminator() const { return m_createTerminator; }
    void SetCreateTerminator(const ButtonCaption& texts) { m_createTerminator = texts; }
    [[nodiscard]] ButtonCaption& RemoveTerminator() { return m_removeTerminator; }
    [[nodiscard]] const ButtonCaption& RemoveTerminator() const { return m_removeTerminator; }
    void SetRemoveTerminator(const ButtonCaption& texts) { m_removeTerminator = texts; }

private:
    std::string m_tracks = "#Tracks"; // without a closing "#"
    std::string m_commonPrefs = "#Common Preferences#";
    std::string m_trackPreferences = "#Trackpreferences#";
    std::string m_headerAndTerminator = "#Header && Terminator#";
    std::string m_useThisTrack = "#Use Track#";
    std::string m_useThisHeader = "#Use Header#";
    std::string m_useThisTerminator = "#Use Terminator#";
    ButtonCaption m_createHeader{"#Edit#", "#Modify sequence for this header#"};
    ButtonCaption m_removeHeader{"#Remove#", "#Remove this sequence#"};
    ButtonCaption m_createTerminator{"#Edit#", "#Modify sequence for this terminator#"};
    ButtonCaption m_removeTerminator{"#Remove#", "#Remove this sequence#"};
};

} // namespace qx
