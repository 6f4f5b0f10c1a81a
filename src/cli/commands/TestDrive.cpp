#include "cli/commands/Commands.h"

#include "cli/Output.h"
#include "host/KeySenders.h"
#include "qxcontrols/common/Utf.h"
#include "qxcontrols/keyprog/LayeredFuncKeyBlocks.h"
#include "qxcontrols/keys/KeyName.h"
#include "qxcontrols/keys/QXKeyboardLayoutData.h"
#include "qxcontrols/pos/POSKeyboard.h"
#include "simulator/SimulatedDriver.h"
#include "simulator/TestDrive.h"

#include <algorithm>
#include <memory>

namespace qx::cli {

namespace {

using sim::KeyStroke;
using sim::Reception;

// Where the codes come from: "Key 31 (A)", "POS keys › Key 3 (F2)", "prefix of track 2".
std::string OriginText(const sim::Stretch& stretch, const host::Configuration& configuration,
                       const QXKeyboardLayoutData& layout) {
    if (stretch.origin == sim::Origin::OrdinaryKey)
        return "Key " + KeyName(stretch.number, &layout);
    if (stretch.origin == sim::Origin::ProgrammedKey)
        return ToText(host::NameOf(configuration, stretch.module, stretch.number, stretch.layer));
    return ReadText(stretch);
}

// Symbologies have the names of the settings.
std::string RemarkText(sim::Remark remark, const host::Configuration& configuration) {
    using Kind = sim::Remark::Kind;
    if (remark.kind == Kind::SymbologyOff || remark.kind == Kind::CodeLengthRefused)
        for (const host::Setting& option : configuration.List(
                 *configuration.Find("barcode"),
                 {"/barcode/pages/" + remark.values[0] + "/flags/0"}, host::Listed::All))
            remark.values[0] = StepsOf(option.name).at(1);
    return RemarkText(remark);
}

Lines LinesOf(const Reception& reception, const host::Configuration& configuration,
              const QXKeyboardLayoutData& layout) {
    std::vector<std::vector<std::string>> rows;
    for (const sim::Stretch& stretch : reception.stretches)
        rows.push_back({OriginText(stretch, configuration, layout), ContentText(stretch, layout)});
    Lines lines = {rows.empty() ? "the PC receives nothing" : "the PC receives"};
    Append(lines, AlignedLines(rows));
    if (!rows.empty() && reception.outputDelay)
        lines.push_back("output delay: " + std::to_string(*reception.outputDelay));
    for (const sim::Remark& remark : reception.remarks)
        lines.push_back(RemarkText(remark, configuration));
    return lines;
}

host::Json JsonOf(const Reception& reception, const host::Configuration& configuration,
                  const QXKeyboardLayoutData& layout) {
    host::Json received = host::Json::array();
    for (const sim::Stretch& stretch : reception.stretches) {
        host::Json json = {{"origin", OriginText(stretch, configuration, layout)}};
        if (stretch.keys.empty())
            json["data"] = stretch.data;
        for (const KeyStroke& stroke : stretch.keys)
            json["keys"].push_back({{"key", stroke.key},
                                    {"caption", layout.KeyLongCaption(stroke.key)},
                                    {"released", stroke.isReleased}});
        received.push_back(std::move(json));
    }
    host::Json json = {{"received", received}, {"remarks", host::Json::array()}};
    for (const sim::Remark& remark : reception.remarks)
        json["remarks"].push_back(RemarkText(remark, configuration));
    json["outputDelay"] = reception.outputDelay ? host::Json(*reception.outputDelay) : host::Json();
    return json;
}

// Performs an action on the simulated keyboard with `layer` selected, and writes the PC's input.
void Perform(Context& context,
             const std::function<Reception(const sim::TestDrive&, Integer layer)>& action) {
    const sim::SimulatedDriver* simulated = context.Simulated();
    if (simulated == nullptr)
        throw UsageError("a test drive needs a simulated keyboard (--keyboard): a driver library "
                         "does not show the keyboard's memory");
    static_cast<void>(context.Keyboard());
    const QXKeyboardLayoutData& layout = context.Layout();
    const sim::TestDrive drive(simulated->Memory(0, sim::kMemorySize), simulated->Model(), layout);
    const Reception reception = action(drive, simulated->Layer());
    const auto configuration = context.NewConfiguration();
    context.CloseKeyboard();
    context.Result(JsonOf(reception, *configuration, layout),
                   LinesOf(reception, *configuration, layout));
}

Reception PressedAndReleased(Reception pressed, const Reception& released) {
    pressed.Append(released);
    return pressed;
}

// Checks the data of a card or a code.
std::string CharactersComplaint(const std::string& text) {
    return IsWellFormedUtf8(text) ? "" : "not UTF-8";
}

Command KeyCommand() {
    const auto key = std::make_shared<Integer>(Integer{0});
    return {
        .name = "key",
        .summary = "Press and release a key",
        .options = {{.name = "N",
                     .target = key.get(),
                     .summary = "Its position code, 0 to 140",
                     .isRequired = true,
                     .range = {{0, 140}}}},
        .footer = "Example:\n  qxconf test-drive key 112",
        .run =
            [key](Context& context) {
                Perform(context, [&](const sim::TestDrive& drive, Integer) {
                    return PressedAndReleased(drive.PressKey(*key), drive.ReleaseKey(*key));
                });
            },
    };
}

Command FunctionCommand() {
    struct Options {
        Integer key = 1;
        std::optional<Integer> layer;
    };
    const auto options = std::make_shared<Options>();
    return {
        .name = "function",
        .summary = "Press a layered function key",
        .options = {{.name = "KEY",
                     .target = &options->key,
                     .summary = "The key, 1 to 24 for F1 to F24",
                     .isRequired = true,
                     .range = {{1, FuncKeyLayer::kKeys}}},
                    {.name = "--layer",
                     .target = &options->layer,
                     .summary = "The selected layer, 0 to 9; 0 unless given",
                     .value = "L",
                     .range = {{0, kFuncKeyLayers - 1}}}},
        .footer = "Example:\n  qxconf test-drive function 6 --layer 3",
        .run =
            [options](Context& context) {
                Perform(context, [&](const sim::TestDrive& drive, Integer selected) {
                    return drive.PressFunctionKey(options->layer.value_or(selected),
                                                  static_cast<Integer>(options->key - 1));
                });
            },
    };
}

Command PosCommand() {
    const auto key = std::make_shared<Integer>(Integer{0});
    return {
        .name = "pos",
        .summary = "Press and release a POS key",
        .options = {{.name = "N",
                     .target = key.get(),
                     .summary = "Its POS key index, 1 to 105",
                     .isRequired = true,
                     .range = {{1, POSKeyboard::kSlots}}}},
        .footer = "Example:\n  qxconf test-drive pos 12",
        .run =
            [key](Context& context) {
                Perform(context, [&](const sim::TestDrive& drive, Integer) {
                    return PressedAndReleased(drive.PressPosKey(*key), drive.ReleasePosKey(*key));
                });
            },
    };
}

struct SwipeOptions {
    sim::Card card;
    std::vector<Integer> wrongLRC;
    std::vector<Integer> wrongLastChar;
};

// Marks the fault on the listed tracks.
void MarkTracks(sim::Card& card, const std::vector<Integer>& tracks, bool sim::CardTrack::*fault) {
    for (const Integer track : tracks) {
        sim::CardTrack& marked = card[static_cast<std::size_t>(track - 1)];
        if (marked.data.empty())
            throw UsageError("the card has no track " + std::to_string(track) +
                             " that could be wrong; give --track" + std::to_string(track));
        marked.*fault = true;
    }
}

void Swipe(Context& context, const SwipeOptions& options) {
    sim::Card card = options.card;
    if (std::all_of(card.begin(), card.end(),
                    [](const sim::CardTrack& track) { return track.data.empty(); }))
        throw UsageError("the card is blank; give --track1 to --track4");
    MarkTracks(card, options.wrongLRC, &sim::CardTrack::hasWrongLRC);
    MarkTracks(card, options.wrongLastChar, &sim::CardTrack::hasWrongLastChar);
    Perform(context, [&](const sim::TestDrive& drive, Integer) { return drive.SwipeCard(card); });
}

Command SwipeCommand() {
    const auto options = std::make_shared<SwipeOptions>();
    const auto lastTrack = static_cast<Integer>(options->card.size());
    Command command = {
        .name = "swipe",
        .summary = "Swipe a card through the reader",
        .footer = "Examples:\n"
                  "  qxconf test-drive swipe --track2 4711=2512\n"
                  "  qxconf test-drive swipe --track1 SMITH --track2 4711 --wrong-lrc 2",
        .run = [options](Context& context) { Swipe(context, *options); },
    };
    for (Integer track = 1; track <= lastTrack; ++track)
        command.options.push_back(
            {.name = "--track" + std::to_string(track),
             .target = &options->card[static_cast<std::size_t>(track - 1)].data,
             .summary = "The data on track " + std::to_string(track),
             .value = "TEXT",
             .mayBeEmpty = true,
             .complaint = CharactersComplaint,
             .offers = OfferNothing});
    const auto addFault = [&](const char* name, std::vector<Integer>& tracks, const char* part) {
        command.options.push_back(
            {.name = name,
             .target = &tracks,
             .summary = std::string("This track has a wrong ") + part + "; may be repeated",
             .value = "TRACK",
             .range = {{1, lastTrack}}});
    };
    addFault("--wrong-lrc", options->wrongLRC, "checksum (LRC)");
    addFault("--wrong-last-char", options->wrongLastChar, "last character");
    return command;
}

struct ScanOptions {
    std::string data;
    std::string symbology;
    Integer reader = 1;
};

Command ScanCommand() {
    const auto options = std::make_shared<ScanOptions>();
    const std::vector<std::string> names(kBarcodePageNames.begin() + BP_EAN,
                                         kBarcodePageNames.end());
    return {
        .name = "scan",
        .summary = "Scan a barcode",
        .options = {{.name = "DATA",
                     .target = &options->data,
                     .summary = "The data in the code",
                     .isRequired = true,
                     .mayBeEmpty = true,
                     .complaint = CharactersComplaint,
                     .offers = OfferNothing},
                    {.name = "--symbology",
                     .target = &options->symbology,
                     .summary = "The kind of the code, such as Code39",
                     .value = "NAME",
                     .isRequired = true,
                     .choices = names},
                    {.name = "--reader",
                     .target = &options->reader,
                     .summary = "The reader's input, 1 or 2; 1 unless given",
                     .value = "N",
                     .range = {{1, kBarcodeReaders}}}},
        .footer = "Examples:\n"
                  "  qxconf test-drive scan 2000000000015 --symbology EAN\n"
                  "  qxconf test-drive scan ABC-123 --symbology Code39 --reader 2",
        .run =
            [options, names](Context& context) {
                const auto name = std::find(names.begin(), names.end(), options->symbology);
                const auto symbology = static_cast<BarcodePage>(BP_EAN + (name - names.begin()));
                Perform(context, [&](const sim::TestDrive& drive, Integer) {
                    return drive.ScanCode(options->reader, symbology, options->data);
                });
            },
    };
}

} // namespace

Command TestDriveCommand() {
    return {
        .name = "test-drive",
        .summary = "Show what the PC would receive from the keyboard",
        .footer = "Needs a simulated keyboard. Uses the settings in its memory and changes "
                  "nothing.\n\nExamples:\n"
                  "  qxconf test-drive key 112\n"
                  "  qxconf test-drive function 6 --layer 3\n"
                  "  qxconf test-drive pos 12\n"
                  "  qxconf test-drive swipe --track2 4711=2512\n"
                  "  qxconf test-drive scan ABC-123 --symbology Code39",
        .commands = {KeyCommand(), FunctionCommand(), PosCommand(), SwipeCommand(), ScanCommand()},
    };
}

} // namespace qx::cli
