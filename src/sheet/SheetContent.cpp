#include "sheet/SheetContent.h"

#include "host/Section.h"
#include "host/SettingName.h"
#include "host/SheetVisitor.h"
#include "host/VisibleText.h"
#include "qxcontrols/keyprog/FuncKeyLayer.h"
#include "qxcontrols/keys/KeyName.h"
#include "qxcontrols/keys/QXKeyboardLayoutData.h"
#include "qxcontrols/keys/QXLayoutDisplay.h"
#include "qxcontrols/keys/SequenceCaption.h"
#include "qxcontrols/keys/SequenceText.h"
#include "qxcontrols/pos/POSBlockPlaces.h"
#include "qxcontrols/pos/POSCodeMapping.h"
#include "qxcontrols/readers/MagneticTrack.h"
#include "views/RowPlace.h"

#include <QCoreApplication>

#include <algorithm>
#include <iterator>

namespace qx::sheet {

namespace {

using views::KeyCap;
using views::KeyState;

// Light colours, which save ink and can be written on.
constexpr QColor kProgrammed(0xFF, 0xE4, 0xA0);
constexpr QColor kEmpty(0xFF, 0xFF, 0xFF);
constexpr QColor kUnused(0xEC, 0xEC, 0xEC);

bool IsPrintable(char32_t c) {
    const bool isHalf = c >= 0xD800 && c < 0xE000;
    return !host::IsHidden(c) && !isHalf && c != 0xFFFE && c != 0xFFFF;
}

// The text in one line, with a mark in place of unprintable characters.
QString Printable(const std::string& text) {
    QList<uint> characters = QString::fromStdString(text).toUcs4();
    for (uint& c : characters)
        if (c == '\n' || c == '\r' || c == '\t')
            c = ' ';
        else if (!IsPrintable(c))
            c = QChar::ReplacementCharacter;
    return QString::fromUcs4(reinterpret_cast<const char32_t*>(characters.constData()),
                             characters.size());
}

class Builder : public host::SheetVisitor {
    Q_DECLARE_TR_FUNCTIONS(KeySheet)

public:
    explicit Builder(const KeySheet& sheet) : m_sheet(sheet), m_layout(sheet.layout) {}

    SheetContent Build() {
        m_content.title = m_sheet.keyboard.empty() ? tr("Keyboard") : Printable(m_sheet.keyboard);
        m_content.subtitle = tr("Layout: %1").arg(Printable(m_layout.NativeName()));
        if (!m_sheet.document.empty())
            m_content.subtitle =
                Printable(m_sheet.document) + QStringLiteral("   ") + m_content.subtitle;
        m_content.date = Printable(m_sheet.date);
        for (const host::Section* section : m_sheet.sections) {
            m_title = m_sheet.titleOf(section->Info());
            section->VisitSheet(*this);
        }
        if (m_keyboards.empty())
            AddKeyboardAlone();
        for (std::vector<Part>* parts : {&m_keyboards, &m_layers, &m_blocks})
            std::ranges::move(*parts, std::back_inserter(m_content.parts));
        AddReaders();
        return std::move(m_content);
    }

    void Keyboard(const KeyboardSequences& sequences) override {
        Part part;
        part.heading = m_title;
        part.table.columns = {{tr("Key"), 0.06}, {tr("Caption"), 0.19}, {tr("Sequence"), 0.75}};
        for (Integer id = KeyboardSequences::kMinKeyID; id <= KeyboardSequences::kMaxKeyID; ++id)
            if (sequences.Key(id).Length() > 0)
                part.table.rows.push_back(
                    {QString::number(id), LabelOf(id), Sequence(sequences.Key(id))});
        if (part.table.rows.empty())
            return;
        part.caps = KeyboardCaps(sequences);
        m_keyboards.push_back(std::move(part));
    }

    void Layer(Integer nLayer, const FuncKeyLayer& layer) override {
        Part part;
        part.heading = tr("Layer %1").arg(nLayer);
        part.table.columns = {{tr("Key"), 0.06}, {tr("Description"), 0.34}, {tr("Sequence"), 0.60}};
        for (Integer key = 0; key < FuncKeyLayer::kKeys; ++key) {
            const QString description = Printable(layer.GetKeyDesc(key));
            const KeySequence& sequence = layer.GetKey(key);
            KeyCap cap;
            cap.index = key;
            cap.place = views::RowPlace(kFuncKeyRows, key);
            cap.legend = QString::fromStdString(FuncKeyLegend(key));
            cap.caption = description.isEmpty() ? Pressed(sequence) : description;
            cap.state = sequence.Length() > 0 ? KeyState::Programmed : KeyState::Empty;
            cap.color = ColorOf(cap.state);
            part.caps.push_back(cap);
            if (sequence.Length() > 0 || !description.isEmpty())
                part.table.rows.push_back({cap.legend, description, Sequence(sequence)});
        }
        if (!part.table.rows.empty())
            m_layers.push_back(std::move(part));
    }

    void Blocks(const POSKeyboard& blocks, const POSCodeMapping& codes) override {
        Part part;
        part.heading = m_title;
        part.table.columns = {
            {tr("Key"), 0.06}, {tr("Number"), 0.07}, {tr("Keys"), 0.37}, {tr("Sequence"), 0.50}};
        for (Integer slot = 1; slot <= POSKeyboard::kSlots; ++slot) {
            const POSBlock& block = blocks.Block(slot);
            if (block.BlockSize() == 0)
                continue;
            QStringList keys;
            for (const Integer key : KeysOf(block)) {
                const Long code = codes.GetPositionCodeForKey(key);
                keys += Printable(KeyName(key, KeyLabel(code, &m_layout)));
            }
            part.table.rows.push_back({QString::number(slot), QString::number(block.BlockID()),
                                       keys.join(QStringLiteral(", ")),
                                       Sequence(block.Sequence())});
        }
        if (!part.table.rows.empty())
            m_blocks.push_back(std::move(part));
    }

    void Track(Integer nTrack, const MagneticTrack& track) override {
        const QString input = Joined(m_title, tr("Track %1").arg(nTrack));
        AddInput(m_tracks, track.Enabled() ? input : tr("%1 (not read)").arg(input), track);
    }

    void Reader(Integer nReader, const MagneticTrack& reader) override {
        AddInput(m_readers, Joined(m_title, tr("Reader %1").arg(nReader)), reader);
    }

private:
    // In the syntax in which it can be typed, including the releases of keys.
    [[nodiscard]] QString Sequence(const KeySequence& sequence) const {
        const auto bytes = sequence.Bytes();
        return Printable(bytes ? SequenceToText(*bytes, m_layout)
                               : SequenceCaption(sequence, nullptr, true));
    }

    // Only the presses, for the limited space of a key cap.
    [[nodiscard]] QString Pressed(const KeySequence& sequence) const {
        return Printable(SequenceCaption(sequence, &m_layout, false)).trimmed();
    }

    [[nodiscard]] QString LabelOf(Long lPositionCode) const {
        return Printable(KeyLabel(lPositionCode, &m_layout));
    }

    // The keyboard with its layout's legends; a key with a sequence shows that sequence.
    [[nodiscard]] std::vector<KeyCap> KeyboardCaps(const KeyboardSequences& sequences) const {
        QXLayoutDisplay display;
        display.SetLayoutSource(&m_layout);
        display.SetCurrProgKey(-1);
        display.ReloadKeysSettings(sequences);
        std::vector<KeyCap> caps;
        for (Integer id = KeyboardSequences::kMinKeyID; id <= KeyboardSequences::kMaxKeyID; ++id) {
            const KeyButton& key = display.cmdKey[static_cast<std::size_t>(id)];
            if (!key.Visible)
                continue;
            KeyCap cap;
            cap.index = id;
            cap.place = {key.Left, key.Top, key.Width, key.Height};
            cap.caption = LabelOf(id);
            cap.state =
                m_layout.KeySupport(id) == KEYMODE_PROG ? KeyState::Empty : KeyState::Unused;
            if (key.Programmed) {
                cap.state = KeyState::Programmed;
                cap.legend = cap.caption;
                cap.caption = Pressed(sequences.Key(id));
            }
            cap.color = ColorOf(cap.state);
            caps.push_back(cap);
        }
        return caps;
    }

    [[nodiscard]] static QColor ColorOf(KeyState state) {
        return state == KeyState::Programmed ? kProgrammed
               : state == KeyState::Empty    ? kEmpty
                                             : kUnused;
    }

    void AddKeyboardAlone() {
        Part part;
        part.heading = tr("Keyboard");
        part.caps = KeyboardCaps(KeyboardSequences());
        part.note = tr("No key is programmed.");
        m_keyboards.push_back(std::move(part));
    }

    void AddInput(std::vector<QStringList>& rows, const QString& input,
                  const MagneticTrack& framing) const {
        rows.push_back({input, Framing(framing.HeaderEnabled(), framing.Header()),
                        Framing(framing.TerminatorEnabled(), framing.Terminator())});
    }

    void AddReaders() {
        Part part;
        part.heading = tr("Readers");
        part.table.columns = {{tr("Input"), 0.30}, {tr("Prefix"), 0.35}, {tr("Suffix"), 0.35}};
        for (std::vector<QStringList>* rows : {&m_tracks, &m_readers})
            std::ranges::move(*rows, std::back_inserter(part.table.rows));
        if (!part.table.rows.empty())
            m_content.parts.push_back(std::move(part));
    }

    [[nodiscard]] static QString Joined(const QString& title, const QString& step) {
        return QString::fromStdString(host::JoinedSteps({title.toStdString(), step.toStdString()}));
    }

    // The prefix or the suffix of a reader's data.
    [[nodiscard]] QString Framing(bool fEnabled, const KeySequence& sequence) const {
        const QString text = Sequence(sequence);
        if (fEnabled)
            return text.isEmpty() ? tr("(empty)") : text;
        return text.isEmpty() ? tr("(off)") : tr("(off) %1").arg(text);
    }

    const KeySheet& m_sheet;
    QXKeyboardLayoutData& m_layout;
    QString m_title; // of the section being visited
    // By kind: the order of the sections is that of a document.
    std::vector<Part> m_keyboards;
    std::vector<Part> m_layers;
    std::vector<Part> m_blocks;
    std::vector<QStringList> m_tracks;
    std::vector<QStringList> m_readers;
    SheetContent m_content;
};

} // namespace

SheetContent ContentOf(const KeySheet& sheet) {
    return Builder(sheet).Build();
}

} // namespace qx::sheet
