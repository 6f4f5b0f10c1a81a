#include "cli/commands/Commands.h"
#include "files/SystemTexts.h"

#include "host/KeyboardFiles.h"

#include <memory>

namespace qx::cli {

namespace {

void Compare(Context& context, const std::string& file) {
    static_cast<void>(TextOf(context, file)); // checked before the keyboard is opened
    const bool equal = host::HasCodePage(context.Keyboard(), files::PathOf(file));
    context.CloseKeyboard();
    context.exitStatus = equal ? 0 : 1;
    context.Result(
        {{"file", file}, {"equal", equal}},
        {std::string("the keyboard's code page ") + (equal ? "equals " : "differs from ") + file});
}

} // namespace

Command CodePageCommand() {
    const auto file = std::make_shared<std::string>();
    const char* const example = "Example:\n  qxconf codepage compare cp850.bin";
    return {
        .name = "codepage",
        .summary = "Work with the keyboard's code page",
        .footer = example,
        .commands = {{
            .name = "compare",
            .summary = "Compare the keyboard's code page with a file",
            .options = {{.name = "FILE",
                         .target = file.get(),
                         .summary = "The code page: its first 256 bytes count",
                         .isRequired = true}},
            .footer = std::string("Exits with 1 if they differ.\n\n") + example,
            .run = [file](Context& context) { Compare(context, *file); },
        }},
    };
}

} // namespace qx::cli
