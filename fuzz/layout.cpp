// A layout file is refused with a reason and without a change, or else every accessor keeps its
// contract, and sequences written with its names read back the same.

#include "Fuzz.h"
#include "qxcontrols/keys/SequenceText.h"

#include <filesystem>
#include <fstream>
#include <numeric>

#include <unistd.h>

namespace {

using namespace qx;

// This process's folder for the layout file; deleted at the end.
struct Folder {
    std::filesystem::path path =
        std::filesystem::temp_directory_path() / ("qx-fuzz-layout-" + std::to_string(getpid()));
    Folder() { std::filesystem::create_directory(path); }
    ~Folder() {
        std::error_code ignored;
        std::filesystem::remove_all(path, ignored);
    }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;
};

std::string KeysOf(const QXKeyboardLayoutData& layout) {
    std::string text = layout.NativeName() + "\n";
    for (Long key = -1; key <= layout.GetMaxKeyID() + 1; ++key)
        text += layout.KeyCaption(key) + "\t" + layout.KeyLongCaption(key) + "\t" +
                std::to_string(layout.KeySupport(key)) + std::to_string(layout.KeyColor(key)) +
                " " + std::to_string(layout.KeyX(key)) + " " + std::to_string(layout.KeyY(key)) +
                " " + std::to_string(layout.KeyWidth(key)) + " " +
                std::to_string(layout.KeyHeight(key)) + "\n";
    return text;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const Folder folder;
    std::ofstream(folder.path / "fuzz.qxl", std::ios::binary) << fuzz::AsText(data, size);

    QXKeyboardLayoutData layout;
    layout.SetLayoutPath(QX_LAYOUTS);
    fuzz::Require(layout.OpenLayoutByName("us.qxl"), "the shipped layout opens");
    const std::string before = KeysOf(layout);
    layout.SetLayoutPath(folder.path.string() + "/");
    if (!layout.OpenLayoutByName("fuzz.qxl")) {
        fuzz::Require(!layout.Error().empty(), "a refusal has a reason");
        fuzz::RequireEqual(KeysOf(layout), before, "an open that fails changes nothing");
        return 0;
    }
    for (Long key = layout.GetMinKeyID(); key <= layout.GetMaxKeyID(); ++key) {
        const int support = layout.KeySupport(key);
        const int color = layout.KeyColor(key);
        fuzz::Require(support >= KEYMODE_NONE && support <= KEYMODE_PROG, "the support is known");
        fuzz::Require(color >= COLOR_SET_1 && color <= COLOR_SET_3, "the colour is known");
    }
    std::vector<Byte> codes(256);
    std::iota(codes.begin(), codes.end(), Byte{0});
    const std::string text = SequenceToText(codes, layout);
    fuzz::Require(ParseSequenceText(text, layout) == codes, "all codes read back as written");
    const std::string opened = KeysOf(layout);
    (void)layout.OpenLayoutByID(1033);
    fuzz::RequireEqual(KeysOf(layout), opened, "the same file by its language is the same layout");
    return 0;
}
