#include "cli/commands/Commands.h"

#include "cli/Output.h"

#include <algorithm>
#include <memory>

namespace qx::cli {

namespace {

// The sections that the document has and the keyboard lacks: refused, or passed over with a note.
void RefuseAbsent(Context& context, const host::ConfigurationDocument& document,
                  std::vector<host::Section*>& wanted, const std::vector<host::Section*>& present,
                  bool fSkipAbsent) {
    std::vector<host::Fault> absent;
    for (const host::Section* section : wanted)
        if (std::find(present.begin(), present.end(), section) == present.end())
            absent.push_back(
                {"/" + std::string(section->Info().key), "this keyboard has no such module"});
    if (!absent.empty() && !fSkipAbsent)
        throw host::Error(host::ErrorKind::DocumentInvalid,
                          document.Name() + ": " + absent.front().place + ": " +
                              absent.front().message +
                              "; nothing was written (--skip-absent leaves such sections out)",
                          absent);
    for (const host::Fault& fault : absent)
        context.Note("left out " + fault.place + ": " + fault.message);
    std::erase_if(wanted, [&](const host::Section* section) {
        return std::find(present.begin(), present.end(), section) == present.end();
    });
}

void Download(Context& context, const std::string& file, bool fSkipAbsent) {
    const auto document = host::ConfigurationDocument::Load(file);
    host::Session& session = context.Keyboard();
    const auto configuration = context.NewConfiguration();
    const auto present = session.SectionsIn(*configuration, fSkipAbsent);
    auto sections = configuration->Read(document);
    RefuseAbsent(context, document, sections, present, fSkipAbsent);
    session.Download(sections);
    session.VerifyLastDownload();
    context.CloseKeyboard();

    host::Json written = host::Json::array();
    for (const host::Section* section : sections)
        written.push_back(section->Info().key);
    context.Result({{"direction", "file to keyboard"},
                    {"file", file},
                    {"sections", written},
                    {"verified", true}},
                   "file to keyboard: wrote " + Counted(sections.size(), "section") + " of " +
                       file + ", read back and found equal\n");
}

} // namespace

void AddDownload(CLI::App& app, Context& context) {
    CLI::App* command = app.add_subcommand(
        "download", "Write a document's settings into the keyboard (file to keyboard)");
    const auto file = std::make_shared<std::string>();
    const auto skip = std::make_shared<bool>(false);
    command->add_option("FILE", *file, "The document")->required()->check(NotEmpty());
    command->add_flag("--skip-absent", *skip, "Leave out what this keyboard has no module for");
    command->footer(
        "Sections that the document lacks stay as they are in the keyboard. What was written "
        "is read back and compared.\n\nExamples:\n"
        "  qxconf download till.json\n"
        "  qxconf download --skip-absent full.json");
    command->callback([&context, file, skip] { Download(context, *file, *skip); });
}

} // namespace qx::cli
