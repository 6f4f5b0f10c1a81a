// KeyEdits: what the keys on a section's page contain, as the user sees and changes it.
// A change is one step, and none of it is made if a sequence does not fit into one of the keys.
#pragma once

#include "host/SequenceSlots.h"

#include <QCoreApplication>
#include <QString>

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace qx::app {

class EditRequests;
class SectionFace;
class Workbench;

class KeyEdits {
    Q_DECLARE_TR_FUNCTIONS(KeyEdits)
public:
    using Codes = std::vector<Byte>; // 1 to 255 each

    // Both outlive this object, which belongs to the section with this key.
    KeyEdits(Workbench& workbench, EditRequests& edits, std::string_view sectionKey);

    // Of a key of the page's grid.
    [[nodiscard]] std::string PlaceOf(int key) const;
    [[nodiscard]] QString NameOf(int key) const; // "Key 75 (Ins)"
    // Of the one whose sequence it sends: "Key 3 (F2) › Block 1 (4 keys)".
    [[nodiscard]] QString SenderName(int key) const;
    // The sequence, and the description where keys have one. In a change, a key without a new
    // description keeps its own.
    struct Content {
        Codes codes;
        std::optional<std::string> description = {};

        [[nodiscard]] bool IsEmpty() const {
            return codes.empty() && description.value_or("").empty();
        }
    };
    struct Sent : Content {
        Integer capacity = 0; // 0: the key cannot be programmed
    };
    [[nodiscard]] std::vector<Sent> SentBy(const std::vector<int>& keys) const;
    [[nodiscard]] Sent SentBy(int key) const { return SentBy(std::vector{key}).front(); }

    // One key for each of the sequences that these keys send, in their order.
    [[nodiscard]] std::vector<int> Senders(const std::vector<int>& keys) const;
    // Gives keys new contents; keys that act together get the same. If a sequence does not fit, a
    // notice names the key. A change that goes on belongs to the step of the last one. Whether
    // there is a new step.
    bool Put(const std::map<int, Content>& wanted, bool goesOn = false);
    // Runs a change of the section as one step. Whether there is a new one.
    bool Edit(const std::function<void()>& change, bool goesOn = false);
    void Report(const QString& text) const;
    // With an offer to undo the last edit, which must be the one that is reported.
    void ReportDone(const QString& text) const;

    [[nodiscard]] host::Section& Section() const;
    [[nodiscard]] Workbench& Bench() const { return m_workbench; }

private:
    [[nodiscard]] std::string SenderOf(int key) const; // the place of its sequence
    [[nodiscard]] QString NameAt(const std::string& element) const;

    Workbench& m_workbench;
    EditRequests& m_edits;
    std::string m_section; // its key
};

} // namespace qx::app
