// The functions of SimulatedDriver that read and write files of the keyboard's firmware and
// parameters.

#include "files/SystemTexts.h"
#include "qxcontrols/platform/AnsiText.h"
#include "simulator/SimulatedDriver.h"

#include <utility>

namespace qx::sim {

std::filesystem::path SimulatedDriver::FileOf(const char* name, files::Deed deed) const {
    if (name == nullptr || *name == '\0')
        throw Failure(Status::NoArgument, {});
    const std::string text = TextFromAnsi(name);
    auto file = files::PathOf(text);
    if (files::IsSameFile(file, m_file))
        throw Failure(Status::FileInvalid,
                      {.deed = deed, .subject = text, .obstacle = files::Obstacle::IsKeyboard});
    return file;
}

Status SimulatedDriver::SaveFile(const char* name, const SealedKind& kind,
                                 const std::vector<std::string>& parts) const {
    files::WriteFileAtomically(FileOf(name, files::Deed::Write), Seal(kind, parts));
    return Status::Ok;
}

Long SimulatedDriver::LoadProgram(const char* name, const SealedKind& kind,
                                  std::string KeyboardMemory::Content::*program) {
    return CallOpen([&] {
        KeyboardMemory::Content content = m_keyboard->Stored();
        content.*program =
            UnsealFile(kind, FileOf(name, files::Deed::Read), Status::FileInvalid).front();
        m_keyboard->Store(std::move(content));
        return Status::Ok;
    });
}

std::int32_t SimulatedDriver::QXCFG_KeyboardRomSave(char* name) {
    return CallOpen([&] { return SaveFile(name, kProgramFile, {m_keyboard->Stored().program}); });
}

std::int32_t SimulatedDriver::QXCFG_KeyboardRomLoad(char* name) {
    return LoadProgram(name, kProgramFile, &KeyboardMemory::Content::program);
}

std::int32_t SimulatedDriver::QXCFG_KeyboardChipcardRomSave(char* name) {
    return CallOpen([&] {
        return SaveFile(name, kChipcardProgramFile, {m_keyboard->Stored().chipcardProgram});
    });
}

std::int32_t SimulatedDriver::QXCFG_KeyboardChipcardRomLoad(char* name) {
    return LoadProgram(name, kChipcardProgramFile, &KeyboardMemory::Content::chipcardProgram);
}

std::int32_t SimulatedDriver::QXCFG_KeyboardParamSave(char* name) {
    return CallOpen([&] {
        return SaveFile(name, kParameterFile,
                        {m_keyboard->Model().name, m_keyboard->Stored().memory});
    });
}

std::int32_t SimulatedDriver::QXCFG_KeyboardParamLoad(char* name) {
    return CallOpen([&] {
        std::vector<std::string> parts =
            UnsealFile(kParameterFile, FileOf(name, files::Deed::Read), Status::FileInvalid);
        const std::string& model = m_keyboard->Model().name;
        KeyboardMemory::Content content = m_keyboard->Stored();
        // Other models use the same addresses for other things.
        if (parts[0] != model || parts[1].size() != content.memory.size())
            throw Failure(Status::FileInvalid, {.deed = files::Deed::Read,
                                                .subject = TextFromAnsi(name),
                                                .obstacle = files::Obstacle::OfOtherKeyboard,
                                                .names = {parts[0], model}});
        content.memory = std::move(parts[1]);
        m_keyboard->Store(std::move(content));
        return Status::Ok;
    });
}

std::int32_t SimulatedDriver::QXCFG_ConvertBinFileIntoRomFile(char* source, char* destination,
                                                              std::int32_t /*lParam1*/,
                                                              std::int32_t /*lParam2*/,
                                                              std::int32_t /*lParam3*/) {
    return Call([&] {
        const std::filesystem::path to = FileOf(destination, files::Deed::Write);
        std::string program =
            files::ReadFile(FileOf(source, files::Deed::Read), files::kMostOfProgram);
        files::WriteFileAtomically(to, Seal(kProgramFile, {std::move(program)}));
        return Status::Ok;
    });
}

} // namespace qx::sim
