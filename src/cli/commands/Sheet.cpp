#include "cli/commands/Commands.h"

#include "cli/Output.h"

#include "files/Installation.h"
#include "files/SystemTexts.h"
#include "host/ErrorJson.h"
#include "host/ErrorText.h"
#include "qxcontrols/platform/SharedLibrary.h"
#include "sheet/SheetFormat.h"
#include "sheet/SheetModule.h"

#include <ctime>
#include <memory>

namespace qx::cli {

namespace {

#ifdef _WIN32
constexpr const char* kModule = "qxsheetmodule.dll";
#else
constexpr const char* kModule = "libqxsheetmodule.so";
#endif

constexpr const char* kSummary =
    sheet::kHasSvg ? "The sheet: a .pdf or .svg file" : "The sheet: a .pdf file";
constexpr const char* kSvgNote =
    sheet::kHasSvg ? "; in an .svg file they\nare below one another" : "";

struct SheetOptions {
    std::string file;
    std::string document; // empty: the keyboard's settings
    std::string date;
    std::vector<std::string> set;
};

std::string Today() {
    const std::time_t now = std::time(nullptr);
    char text[sizeof "2000-01-01"] = "";
    if (const std::tm* day = std::localtime(&now))
        std::strftime(text, sizeof text, "%Y-%m-%d", day);
    return text;
}

// The module's function. It stays loaded until the program ends, because the libraries it needs
// cannot be unloaded safely.
sheet::WriteFunction LoadModule() {
    const auto file = files::ModuleFile(kModule);
    std::error_code ignored;
    try {
        if (!std::filesystem::exists(file, ignored))
            throw std::runtime_error("key sheets need the module " + files::TextOf(file) +
                                     ", which is missing");
        static const SharedLibrary* const module =
            new SharedLibrary(files::TextOf(file), "key sheet module");
        return module->Required<sheet::WriteFunction>(sheet::kWriteFunction);
    } catch (const std::exception& error) {
        throw host::Error(host::Cause::SheetNotMade, {.reason = error.what()});
    }
}

// The document, checked, with its variables replaced.
host::ConfigurationDocument FilledDocument(Context& context, const SheetOptions& options) {
    constexpr std::string_view kKeyboard = host::ConfigurationDocument::kKeyboardKey;
    const auto document = LoadDocument(context, options.document);
    host::Variables variables = VariablesOf(options.set);
    const auto configuration = context.NewConfiguration();
    const auto sections = configuration->Read(document, variables);
    RefuseUnused(variables);
    auto filled = configuration->Write(sections);
    if (const host::Json* keyboard = document.Find(kKeyboard))
        filled.Place(kKeyboard) = *keyboard;
    return filled;
}

host::Error ErrorFrom(const std::string& text) {
    const host::Json json = host::ParseStrictly(text, text.size());
    json::Faults faults;
    return host::ErrorFrom(json::Value(json, "", faults)).value();
}

void Sheet(Context& context, const SheetOptions& options) {
    const bool isOfKeyboard = options.document.empty();
    if (isOfKeyboard)
        RefuseUnused(VariablesOf(options.set));
    const auto document =
        isOfKeyboard ? context.UploadedDocument() : FilledDocument(context, options);
    RefuseTarget(context, options.file);
    RefuseOwnSource(options.document, options.file);

    const std::string text = document.ToText();
    const std::string folder = files::TextOf(context.options.layouts);
    const std::string layout = context.LayoutName();
    const std::string date = options.date.empty() ? Today() : options.date;
    const sheet::SheetRequest request = {text.c_str(),   options.document.c_str(),
                                         folder.c_str(), layout.c_str(),
                                         date.c_str(),   options.file.c_str()};
    if (const char* error = LoadModule()(&request))
        throw ErrorFrom(error);
    const std::string direction = isOfKeyboard ? "keyboard to key sheet" : "document to key sheet";
    context.Result({{"direction", direction}, {"file", options.file}},
                   {direction + ": wrote " + options.file});
}

std::string FormatComplaint(const std::string& file) {
    if (sheet::FormatOf(files::PathOf(file)))
        return {};
    return host::TextOf(host::Error(host::Cause::SheetFormatUnknown,
                                    {.names = sheet::Suffixes(), .place = {.file = file}}));
}

} // namespace

Command SheetCommand() {
    const auto options = std::make_shared<SheetOptions>();
    return {
        .name = "sheet",
        .summary = "Print a key sheet: the keys with their legends, and the sequences they send",
        .options = {{.name = "-o,--output",
                     .target = &options->file,
                     .summary = kSummary,
                     .value = "FILE",
                     .isRequired = true,
                     .complaint = FormatComplaint},
                    {.name = "DOCUMENT",
                     .target = &options->document,
                     .summary = "The document to print; without it, the keyboard's settings"},
                    {.name = "--date",
                     .target = &options->date,
                     .summary = "Print this date instead of today's",
                     .value = "TEXT",
                     .offers = OfferNothing},
                    SetOption(options->set)},
        .footer =
            std::string("The sheet has the keyboard with its legends, the programmed keys, "
                        "the layers and POS blocks\nthat are in use, and the readers' prefixes "
                        "and suffixes, on A4 pages") +
            kSvgNote +
            ". Never changes the keyboard.\n\nExamples:\n"
            "  qxconf sheet -o till.pdf\n"
            "  qxconf sheet -o till.pdf till.json\n"
            "  qxconf --layout german.qxl sheet -o till.pdf --date \"May 2031\" till.json",
        .run = [options](Context& context) { Sheet(context, *options); },
    };
}

} // namespace qx::cli
