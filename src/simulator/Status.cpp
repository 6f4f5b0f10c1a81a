#include "simulator/Status.h"

namespace qx::sim {

namespace {

struct Text {
    Status status;
    std::string_view text;
};

constexpr Text kTexts[] = {
    {Status::Ok, "success"},
    {Status::NotOpen, "the keyboard is not open"},
    {Status::KeyboardInUse, "the keyboard is being used by another program"},
    {Status::KeyboardInvalid, "not a keyboard file, or damaged"},
    {Status::FileFailed, "a file could not be read or written"},
    {Status::FileInvalid, "the file is not of the expected kind, or damaged"},
    {Status::OutsideMemory, "the address or the size exceeds the keyboard's memory"},
    {Status::NoSuchEntry, "the directory has no such entry"},
    {Status::TransferStopped, "the transfer was interrupted"},
    {Status::NoArgument, "a buffer or a file name is missing"},
    {Status::NotPositionMode, "the keyboard is not in position-programming mode"},
    {Status::NoSuchLayer, "the keyboard has no such layer"},
    {Status::ModelInvalid, "there is no such model, or it is invalid"},
    {Status::Busy, "the driver is busy with another call"},
};

} // namespace

std::string_view StatusText(Long lStatus) {
    for (const Text& text : kTexts)
        if (static_cast<Long>(text.status) == lStatus)
            return text.text;
    return {};
}

} // namespace qx::sim
