// SequenceInspector: the sequence of the selected key, edited in place: no window, no OK.
//
// Every accepted change is reported at once; the owner stores it and shows the key again.
#pragma once

#include "qxcontrols/keys/SequenceDraft.h"

#include <QPointer>
#include <QStringList>
#include <QWidget>

#include <functional>
#include <optional>
#include <set>
#include <string>
#include <vector>

class QBoxLayout;
class QKeyEvent;
class QLabel;
class QLineEdit;
class QToolButton;

namespace qx::views {

class ChipRow;
class FaultLabel;
class KeyPalette;
class TextEntry;

class SequenceInspector : public QWidget {
    Q_OBJECT
public:
    explicit SequenceInspector(QWidget* parent = nullptr);

    struct Edited {
        std::string place;       // of the key or the sequence; its title may change
        QString title;           // "F2"
        std::vector<Byte> codes; // 1 to 255 each
        std::size_t capacity = 0;
        QString refusal; // why the key cannot be programmed; then nothing can be changed
    };
    // As wide as with a key.
    [[nodiscard]] QSize minimumSizeHint() const override;
    // Shows this key's sequence, or with nothing that no key is selected. The caret stays where it
    // is while place and codes are those that are shown already.
    void Show(const std::optional<Edited>& edited);
    // The layout may be null; it stays alive, and is shown again after each change.
    void ShowLayout(const QXKeyboardLayoutData* layout);

    // Beside each other or below: what the key sends and the keys to choose from.
    void SetWide(bool isWide);
    // Puts the cursor where text is typed.
    void TakeFocus();
    // From now on, the keys that are pressed are recorded, if the key that is shown can be
    // programmed.
    void StartRecording();
    // Puts a character into the field for text, and the cursor behind it, if this is one that types
    // there and the key that is shown can be programmed.
    bool StartTyping(const QKeyEvent& event);
    // Finds the warnings about a sequence.
    using Warn = std::function<QStringList(const std::vector<Byte>& codes)>;
    // Finds what the PC receives from the key; if nothing, it is the sequence.
    using Receive = std::function<std::optional<QString>()>;
    void SetFinders(Warn warn, Receive receive = {});

    // Whether keys can be recorded from the connected keyboard; its owner then asks it for them
    // while that is wanted.
    void OfferDevice(bool isOffered);
    void TakeFromDevice(Long lCode); // as the keyboard reports it
    void StopRecording();

signals:
    // All changes of one recording belong together: each of them but the first goes on.
    void Changed(const std::vector<qx::Byte>& codes, bool goesOn);
    void DeviceWanted(bool isWanted);

protected:
    void changeEvent(QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override; // keys while recording

private:
    void MakeParts();
    void PlaceParts();
    static void ShowRecorder(QToolButton& recorder, const QString& idle, const char* icon);
    void ShowTexts();
    void ShowDraft();
    // Takes the place of the warnings; empty for none.
    void ShowFault(const QString& text);
    void Report(bool hasFitted);
    void Type(const QString& text, bool withEnter);
    void Record(QToolButton& recorder, bool isOn);
    void TakeRecorded(Byte code);
    void Choose(int key);

    const QXKeyboardLayoutData* m_layout = nullptr;
    std::optional<SequenceDraft> m_draft; // while a key is shown that can be programmed
    std::optional<Edited> m_edited;
    Warn m_warn;
    Receive m_receive;
    bool m_hasRecorded = false;       // something, and may go on
    QPointer<QWidget> m_recordedFrom; // what started the recording from elsewhere

    QBoxLayout* m_columns;
    QBoxLayout* m_sent; // the first one
    QLabel* m_title;
    QLabel* m_left;
    QLabel* m_hint; // instead of the editor
    QWidget* m_editor;
    ChipRow* m_chips;
    QToolButton* m_back;
    QToolButton* m_clear;
    QToolButton* m_record;
    QToolButton* m_device; // records from the connected keyboard
    TextEntry* m_text;
    QLabel* m_recording;      // while it is recorded
    std::set<Byte> m_pressed; // since the recording began, by position code
    FaultLabel* m_fault;
    KeyPalette* m_palette;
    QLabel* m_receivedCaption;
    QLineEdit* m_received; // each press and release, in their order
    QLabel* m_warningIcon;
    QLabel* m_warnings;
    QWidget* m_warningRow; // the two
};

} // namespace qx::views
