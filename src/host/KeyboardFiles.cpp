#include "host/KeyboardFiles.h"

#include "files/Files.h"
#include "files/SystemTexts.h"
#include "qxcontrols/common/Text.h"
#include "qxcontrols/platform/AnsiText.h"
#include "qxcontrols/pos/QXPosCodePage.h"

namespace qx::host {

namespace {

constexpr const char* kReadingCodePage = "reading the code page from the keyboard failed";

void Run(Session& session, const KeyboardFileKind& kind, const std::string& what, std::string file,
         const SerialLine& line, Long (QXKeyboardAccess::*operation)(std::string&)) {
    session.Run(what + " failed", [&] {
        if (kind.hasSerialLine)
            session.Access().SetChipcardRomParameters(line.baudRateIndex, line.comPort);
        (void)(session.Access().*operation)(file); // its status is watched
    });
}

std::string WhyNoCodePage(const std::filesystem::path& file) {
    try {
        return files::TextOf(file) + " is not a code page: it has " +
               std::to_string(files::ReadFile(file).size()) + " bytes, and " +
               std::to_string(PosCodePage::kSize) + " are needed";
    } catch (const std::exception& error) {
        return error.what();
    }
}

} // namespace

std::string NameForDriver(const std::filesystem::path& file) {
    std::error_code ignored;
    const std::string whole = files::TextOf(std::filesystem::absolute(file, ignored));
    if (TextFromAnsi(AnsiText(whole)) != whole)
        throw Error(ErrorKind::FileFailed,
                    whole + " has letters that are not in the system's character set: the driver "
                            "would open another file");
    return files::TextOf(file);
}

void WriteBeside(const std::filesystem::path& file,
                 const std::function<void(const std::string& beside)>& write) {
    (void)NameForDriver(file); // before anything is made
    try {
        files::WriteFileAtomically(file, [&](const std::filesystem::path& beside) {
            write(NameForDriver(beside));
            if (std::filesystem::file_size(beside) == 0)
                throw Error(ErrorKind::TransferFailed,
                            "the driver reported success and wrote nothing into the file; " +
                                files::TextOf(file) + " is as it was");
        });
    } catch (const Error&) {
        throw; // the driver's
    } catch (const std::exception& error) {
        throw Error(ErrorKind::FileFailed, error.what());
    }
}

void SaveKeyboardFile(Session& session, const KeyboardFileKind& kind,
                      const std::filesystem::path& file, const SerialLine& line) {
    const std::string what =
        "saving the " + std::string(kind.content) + " into " + files::TextOf(file);
    WriteBeside(file, [&](const std::string& beside) {
        Run(session, kind, what, beside, line, kind.save);
    });
}

Writer::Outcome LoadKeyboardFile(Session& session, Writer& writer, const KeyboardFileKind& kind,
                                 const std::filesystem::path& file, const SerialLine& line) {
    const std::string name = NameForDriver(file);
    const auto load = [&] {
        Run(session, kind, "loading the " + std::string(kind.content) + " from " + name, name, line,
            kind.load);
    };
    Writer::Request request;
    request.action = std::string(kind.key) + " load";
    request.document = files::TextOf(file);
    request.isOfKeyboard = !kind.hasSerialLine; // else the reader's own memory
    return writer.RunUnproved(request, load);
}

bool HasCodePage(Session& session, const std::filesystem::path& file) {
    QXPosCodePage pages;
    if (!pages.FilePage().LoadPageFromFile(files::TextOf(file)))
        throw Error(ErrorKind::FileFailed, WhyNoCodePage(file));
    // The page is read over one filling and over its complement: a byte that shows both was left
    // out.
    constexpr Byte kFilling = 0x5A;
    PosCodePage first;
    for (PosCodePage* page : {&first, &pages.KeyboardPage()}) {
        const Byte filling = page == &first ? kFilling : static_cast<Byte>(~kFilling);
        session.Run(kReadingCodePage, [&] {
            session.Access().WriteIntoMemory(
                std::string(PosCodePage::kSize, static_cast<char>(filling)),
                PosCodePage::kAddressInKeyboard, PosCodePage::kSize);
            page->LoadPageFromKeyboard(&session.Access());
            session.Access().DataTransferFixUp();
        });
    }
    for (Integer i = 1; i <= PosCodePage::kSize; ++i)
        if (first.GetByte(i) == kFilling &&
            pages.KeyboardPage().GetByte(i) == static_cast<Byte>(~kFilling))
            throw Error(ErrorKind::TransferFailed,
                        std::string(kReadingCodePage) +
                            ": the driver reported success and moved nothing to address " +
                            Hex(PosCodePage::kAddressInKeyboard + i - 1) + " (hexadecimal)");
    return pages.PagesAreEqual();
}

} // namespace qx::host
