#include "cli/commands/Commands.h"

#include "cli/Output.h"
#include "qxcontrols/common/Utf.h"
#include "qxcontrols/keyprog/LayeredFuncKeyBlocks.h"
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

std::string TextOf(const Reception& reception, const QXKeyboardLayoutData& layout) {
    std::vector<std::vector<std::string>> rows;
    for (const sim::Stretch& stretch : reception.stretches)
        rows.push_back({OriginText(stretch), ContentText(stretch, layout)});
    std::string text = std::string("the PC receives") + (rows.empty() ? " nothing\n" : "\n");
    text += AlignedText(rows);
    if (!rows.empty() && reception.outputDelay)
        text += "output delay between codes: " + std::to_string(*reception.outputDelay) + "\n";
    for (const sim::Remark& remark : reception.remarks)
        text += RemarkText(remark) + "\n";
    return text;
}

host::Json JsonOf(const Reception& reception, const QXKeyboardLayoutData& layout) {
    host::Json received = host::Json::array();
    for (const sim::Stretch& stretch : reception.stretches) {
        host::Json json = {{"origin", OriginText(stretch)}};
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
        json["remarks"].push_back(RemarkText(remark));
    json["outputDelay"] = reception.outputDelay ? host::Json(*reception.outputDelay) : host::Json();
    return json;
}

// Does something on the simulated keyboard, on which `layer` is selected, and writes what the PC
// receives.
void Perform(Context& context,
             const std::function<Reception(const sim::TestDrive&, Integer layer)>& action) {
    const sim::SimulatedDriver* simulated = context.Simulated();
    if (simulated == nullptr)
        throw host::Error(host::ErrorKind::Usage,
                          "a test drive needs a simulated keyboard (--keyboard): a driver library "
                          "does not show the keyboard's memory");
    static_cast<void>(context.Keyboard());
    const QXKeyboardLayoutData& layout = context.Layout();
    const sim::TestDrive drive(simulated->Memory(0, sim::kMemorySize), simulated->Model(), layout);
    const Reception reception = action(drive, simulated->Layer());
    context.CloseKeyboard();
    context.Result(JsonOf(reception, layout), TextOf(reception, layout));
}

Reception PressedAndReleased(Reception pressed, const Reception& released) {
    pressed.Append(released);
    return pressed;
}

// Data that a card or a code can have.
CLI::Validator Characters() {
    return {[](const std::string& text) {
                return IsWellFormedUtf8(text) ? std::string() : std::string("not UTF-8");
            },
            ""};
}

void AddKey(CLI::App& parent, Context& context) {
    CLI::App* command = parent.add_subcommand("key", "Press and release a key");
    const auto key = std::make_shared<Integer>(Integer{0});
    command->add_option("N", *key, "Its position code, 0 to 140")
        ->required()
        ->check(CLI::Range(0, 140));
    command->footer("Example:\n  qxconf test-drive key 112");
    command->callback([&context, key] {
        Perform(context, [&](const sim::TestDrive& drive, Integer) {
            return PressedAndReleased(drive.PressKey(*key), drive.ReleaseKey(*key));
        });
    });
}

void AddFunction(CLI::App& parent, Context& context) {
    CLI::App* command = parent.add_subcommand("function", "Press a layered function key");
    const auto key = std::make_shared<Integer>(Integer{0});
    const auto layer = std::make_shared<std::optional<Integer>>();
    command->add_option("KEY", *key, "The key, 0 to 23")
        ->required()
        ->check(CLI::Range(0, FuncKeyLayer::kKeys - 1));
    command->add_option("--layer", *layer, "The selected layer, 0 to 9; 0 unless given")
        ->type_name("L")
        ->check(CLI::Range(0, kFuncKeyLayers - 1));
    command->footer("Example:\n  qxconf test-drive function 5 --layer 3");
    command->callback([&context, key, layer] {
        Perform(context, [&](const sim::TestDrive& drive, Integer selected) {
            return drive.PressFunctionKey(layer->value_or(selected), *key);
        });
    });
}

void AddPos(CLI::App& parent, Context& context) {
    CLI::App* command = parent.add_subcommand("pos", "Press and release a POS key");
    const auto key = std::make_shared<Integer>(Integer{0});
    command->add_option("N", *key, "Its POS key index, 1 to 105")
        ->required()
        ->check(CLI::Range(Integer{1}, POSKeyboard::kSlots));
    command->footer("Example:\n  qxconf test-drive pos 12");
    command->callback([&context, key] {
        Perform(context, [&](const sim::TestDrive& drive, Integer) {
            return PressedAndReleased(drive.PressPosKey(*key), drive.ReleasePosKey(*key));
        });
    });
}

// Notes the fault on the tracks that the user lists.
void MarkTracks(sim::Card& card, const std::vector<Integer>& tracks, bool sim::CardTrack::*fault) {
    for (const Integer track : tracks) {
        sim::CardTrack& marked = card[static_cast<std::size_t>(track - 1)];
        if (marked.data.empty())
            throw host::Error(host::ErrorKind::Usage,
                              "the card has no track " + std::to_string(track) +
                                  " that could be wrong; give --track" + std::to_string(track));
        marked.*fault = true;
    }
}

void AddSwipe(CLI::App& parent, Context& context) {
    struct Options {
        sim::Card card;
        std::vector<Integer> wrongLRC;
        std::vector<Integer> wrongLastChar;
    };
    CLI::App* command = parent.add_subcommand("swipe", "Swipe a card through the reader");
    const auto options = std::make_shared<Options>();
    const auto lastTrack = static_cast<Integer>(options->card.size());
    for (Integer track = 1; track <= lastTrack; ++track) {
        const std::string number = std::to_string(track);
        command
            ->add_option("--track" + number,
                         options->card[static_cast<std::size_t>(track - 1)].data,
                         "What the card has on track " + number)
            ->check(Characters());
    }
    const auto addFault = [&](const std::string& name, std::vector<Integer>& tracks,
                              const std::string& what) {
        command->add_option(name, tracks, "This track has a wrong " + what + "; may be repeated")
            ->type_name("TRACK")
            ->allow_extra_args(false)
            ->check(CLI::Range(Integer{1}, lastTrack));
    };
    addFault("--wrong-lrc", options->wrongLRC, "check character");
    addFault("--wrong-last-char", options->wrongLastChar, "last character");
    command->footer("Examples:\n"
                    "  qxconf test-drive swipe --track2 4711=2512\n"
                    "  qxconf test-drive swipe --track1 SMITH --track2 4711 --wrong-lrc 2");
    command->callback([&context, options] {
        sim::Card card = options->card;
        if (std::all_of(card.begin(), card.end(),
                        [](const sim::CardTrack& track) { return track.data.empty(); }))
            throw host::Error(host::ErrorKind::Usage,
                              "the card is blank; give --track1 to --track4");
        MarkTracks(card, options->wrongLRC, &sim::CardTrack::hasWrongLRC);
        MarkTracks(card, options->wrongLastChar, &sim::CardTrack::hasWrongLastChar);
        Perform(context,
                [&](const sim::TestDrive& drive, Integer) { return drive.SwipeCard(card); });
    });
}

void AddScan(CLI::App& parent, Context& context) {
    struct Options {
        std::string data;
        std::string symbology;
        Integer reader = 1;
    };
    CLI::App* command = parent.add_subcommand("scan", "Scan a bar code");
    const auto options = std::make_shared<Options>();
    const std::vector<std::string> names(kBarcodePageNames.begin() + BP_EAN,
                                         kBarcodePageNames.end());
    command->add_option("DATA", options->data, "What the code says")
        ->required()
        ->check(Characters());
    command->add_option("--symbology", options->symbology, "The kind of the code, such as Code39")
        ->required()
        ->type_name("NAME")
        ->transform(CLI::IsMember(names, CLI::ignore_case));
    command->add_option("--reader", options->reader, "The reader's input, 1 or 2; 1 unless given")
        ->type_name("N")
        ->check(CLI::Range(Integer{1}, kBarcodeReaders));
    command->footer("Examples:\n"
                    "  qxconf test-drive scan 4006381333931 --symbology EAN\n"
                    "  qxconf test-drive scan ABC-123 --symbology Code39 --reader 2");
    command->callback([&context, options, names] {
        const auto name = std::find(names.begin(), names.end(), options->symbology);
        const auto symbology = static_cast<BarcodePage>(BP_EAN + (name - names.begin()));
        Perform(context, [&](const sim::TestDrive& drive, Integer) {
            return drive.ScanCode(options->reader, symbology, options->data);
        });
    });
}

} // namespace

void AddTestDrive(CLI::App& app, Context& context) {
    CLI::App* drive =
        app.add_subcommand("test-drive", "Tell what the PC would receive from the keyboard");
    drive->require_subcommand(1);
    AddKey(*drive, context);
    AddFunction(*drive, context);
    AddPos(*drive, context);
    AddSwipe(*drive, context);
    AddScan(*drive, context);
    drive->footer("Works on a simulated keyboard, from the settings in its memory, and changes "
                  "nothing.\n\nExamples:\n"
                  "  qxconf test-drive key 112\n"
                  "  qxconf test-drive function 5 --layer 3\n"
                  "  qxconf test-drive pos 12\n"
                  "  qxconf test-drive swipe --track2 4711=2512\n"
                  "  qxconf test-drive scan ABC-123 --symbology Code39");
}

} // namespace qx::cli
