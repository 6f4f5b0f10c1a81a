#include "host/KeyboardFiles.h"

#include "files/Files.h"
#include "files/SystemTexts.h"
#include "qxcontrols/device/MemoryMap.h"
#include "qxcontrols/platform/AnsiText.h"
#include "qxcontrols/pos/QXPosCodePage.h"

namespace qx::host {

namespace {

// `shown` is the file as the user knows it.
Error Failed(Cause cause, const KeyboardFileKind& kind, const std::string& shown) {
    return Error(cause, {.keyboardFile = kind.file, .place = {.file = shown}});
}

void Run(Session& session, const KeyboardFileKind& kind, const Error& failure, std::string file,
         const SerialLine& line, Long (QXKeyboardAccess::*operation)(std::string&)) {
    session.Run(failure, [&] {
        if (kind.hasSerialLine)
            session.Access().SetChipcardRomParameters(line.baudRateIndex, line.comPort);
        (void)(session.Access().*operation)(file); // the status is watched by the session
    });
}

Error WhyNoCodePage(const std::filesystem::path& file) {
    try {
        return Error(Cause::NotACodePage,
                     {.count = static_cast<std::int64_t>(files::ReadFile(file).size()),
                      .expected = kCodePageSize,
                      .place = {.file = files::TextOf(file)}});
    } catch (const std::exception& error) {
        return FileError(error);
    }
}

} // namespace

std::string NameForDriver(const std::filesystem::path& file) {
    std::error_code ignored;
    const std::string whole = files::TextOf(std::filesystem::absolute(file, ignored));
    if (TextFromAnsi(AnsiText(whole)) != whole)
        throw Error(Cause::NameNotForDriver, {.place = {.file = whole}});
    return files::TextOf(file);
}

void WriteBeside(const std::filesystem::path& file,
                 const std::function<void(const std::string& beside)>& write) {
    (void)NameForDriver(file); // before anything is created
    try {
        files::WriteFileAtomically(file, [&](const std::filesystem::path& beside) {
            write(NameForDriver(beside));
            if (std::filesystem::file_size(beside) == 0)
                throw Error(Cause::NothingSaved, {.place = {.file = files::TextOf(file)}});
        });
    } catch (const Error&) {
        throw; // the driver's exception
    } catch (const std::exception& error) {
        throw FileError(error);
    }
}

void SaveKeyboardFile(Session& session, const KeyboardFileKind& kind,
                      const std::filesystem::path& file, const SerialLine& line) {
    WriteBeside(file, [&](const std::string& beside) {
        Run(session, kind, Failed(Cause::FileNotSaved, kind, files::TextOf(file)), beside, line,
            kind.save);
    });
}

Writer::Outcome LoadKeyboardFile(Session& session, Writer& writer, const KeyboardFileKind& kind,
                                 const std::filesystem::path& file, const SerialLine& line) {
    const std::string name = NameForDriver(file);
    const auto load = [&] {
        Run(session, kind, Failed(Cause::FileNotLoaded, kind, name), name, line, kind.load);
    };
    Writer::Request request;
    request.action = kind.loading;
    request.document = files::TextOf(file);
    request.isOfKeyboard = !kind.hasSerialLine; // otherwise the reader's own memory
    return writer.RunUnproved(request, load);
}

bool HasCodePage(Session& session, const std::filesystem::path& file) {
    QXPosCodePage pages;
    if (!pages.FilePage().LoadPageFromFile(files::TextOf(file)))
        throw WhyNoCodePage(file);
    // The page is read over one fill value and over its complement: a byte that shows both was not
    // read.
    constexpr Byte kFilling = 0x5A;
    PosCodePage first;
    for (PosCodePage* page : {&first, &pages.KeyboardPage()}) {
        const Byte filling = page == &first ? kFilling : static_cast<Byte>(~kFilling);
        session.Run(Error(Cause::CodePageNotRead), [&] {
            session.Access().WriteIntoMemory(std::string(kCodePageSize, static_cast<char>(filling)),
                                             kCodePageAddress, kCodePageSize);
            page->LoadPageFromKeyboard(&session.Access());
            session.Access().DataTransferFixUp();
        });
    }
    for (Integer i = 1; i <= kCodePageSize; ++i)
        if (first.GetByte(i) == kFilling &&
            pages.KeyboardPage().GetByte(i) == static_cast<Byte>(~kFilling))
            throw Error(Cause::NothingMoved, {.place = {.address = kCodePageAddress + i - 1}});
    return pages.PagesAreEqual();
}

} // namespace qx::host
