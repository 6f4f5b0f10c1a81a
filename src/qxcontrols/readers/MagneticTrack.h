// MagneticTrack: one input of a reader, with the key sequences that frame its data.
//
// It is used for the tracks of the magnetic-stripe reader and the inputs of the barcode reader. It
// does not know its own number; its owner does.
#pragma once

#include "qxcontrols/keys/KeySequence.h"

#include <string>
#include <utility>

namespace qx {

class MagneticTrack {
public:
    // The key codes that the keyboard sends before and after the data; initially empty.
    [[nodiscard]] KeySequence& Header() { return m_header; }
    [[nodiscard]] const KeySequence& Header() const { return m_header; }
    void SetHeader(const KeySequence& header) { m_header = header; }
    [[nodiscard]] KeySequence& Terminator() { return m_terminator; }
    [[nodiscard]] const KeySequence& Terminator() const { return m_terminator; }
    void SetTerminator(const KeySequence& terminator) { m_terminator = terminator; }

    // The connected keyboard has a reader head for this track.
    [[nodiscard]] bool Available() const { return m_available; }
    void SetAvailable(bool fAvailable) { m_available = fAvailable; }

    // The track's name in a list.
    [[nodiscard]] const std::string& Caption() const { return m_caption; }
    void SetCaption(std::string sCaption) { m_caption = std::move(sCaption); }

    // Whether the track is read at all; whether its header and its terminator are sent.
    [[nodiscard]] bool Enabled() const { return m_enabled; }
    void SetEnabled(bool fEnabled) { m_enabled = fEnabled; }
    [[nodiscard]] bool HeaderEnabled() const { return m_headerEnabled; }
    void SetHeaderEnabled(bool fEnabled) { m_headerEnabled = fEnabled; }
    [[nodiscard]] bool TerminatorEnabled() const { return m_terminatorEnabled; }
    void SetTerminatorEnabled(bool fEnabled) { m_terminatorEnabled = fEnabled; }

private:
    KeySequence m_header;
    KeySequence m_terminator;
    bool m_available = false;
    std::string m_caption;
    bool m_enabled = false;
    bool m_headerEnabled = false;
    bool m_terminatorEnabled = false;
};

// Removes both sequences and enables everything; availability and caption are unchanged.
inline void SetTrackDefaults(MagneticTrack& track) {
    track.Header().Clear();
    track.Terminator().Clear();
    track.SetHeaderEnabled(true);
    track.SetTerminatorEnabled(true);
    track.SetEnabled(true);
}

// The sequence for an index in the reader controls' arrays: 0 is the header.
[[nodiscard]] inline KeySequence& SequenceOf(MagneticTrack& track, Integer Index) {
    return Index == 0 ? track.Header() : track.Terminator();
}

} // namespace qx
