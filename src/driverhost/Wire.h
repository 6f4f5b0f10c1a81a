// Wire: the calls of a driver as bytes between two processes. The format is defined only here; both
// ends are generated from the table of driver functions.
//
// A frame consists of its size (4 bytes, of the bytes that follow), its kind (1 byte), and values:
// numbers in their own width, lowest byte first; texts and blocks of memory as their length
// (4 bytes) and their bytes. The near end sends one request at a time and waits for its answer; the
// far end may send Message frames before it.
//
//     request       values                          answer
//     Load          library's path                  Loaded: fingerprint | NotLoaded: obstacle (1
//                                                   byte), system's text, functions it lacks
//     Call          function, arguments             Answer: result, output arguments | Overrun
//     SetPoster     1: post messages, 0: do not     Answer
//     SetKeyboard   file, model                     Answer: 1, status | Answer: 0 (takes none)
//     StatusText    status                          Answer: text
//
// An output argument (a pointer to a number, a buffer, a text) is sent both ways, so that a value
// that the driver leaves alone is unchanged. Pointers are never null.
#pragma once

#include "qxcontrols/common/LittleEndian.h"
#include "qxcontrols/device/ConfigDriver.h"

#include <concepts>
#include <stdexcept>
#include <string>
#include <string_view>

namespace qx::driverhost {

enum class Kind : std::uint8_t {
    Load,
    Call,
    SetPoster,
    SetKeyboard,
    StatusText,
    Loaded,
    NotLoaded,
    Answer,
    Overrun, // the driver wrote beyond a buffer; its process must not be used any more
    Message, // hWindow, lMsg, wParam, lParam
};

enum class Function : std::uint8_t {
#define QX_DRIVER_FUNCTION(name, parameters, arguments, result) name,
#include "qxcontrols/device/DriverFunctions.def"
};

// Equal at both ends if and only if both were built from the same functions.
constexpr std::uint32_t kFingerprint = [] {
    constexpr std::string_view kTable =
#define QX_DRIVER_FUNCTION(name, parameters, arguments, result) #name #parameters
#include "qxcontrols/device/DriverFunctions.def"
        ;
    std::uint32_t hash = 2166136261U; // FNV-1a
    for (const char c : kTable)
        hash = (hash ^ static_cast<Byte>(c)) * 16777619U;
    return hash;
}();

constexpr std::uint32_t kLargestFrame = 1 << 20;

// Bytes that are not a valid frame.
class WireError : public std::runtime_error {
public:
    WireError() : std::runtime_error("invalid bytes") {}
};

class Frame {
public:
    explicit Frame(Kind kind) { Put(static_cast<std::uint8_t>(kind)); }

    template <std::integral Number>
    void Put(Number number) {
        m_bytes += LittleEndian(number);
    }
    void Put(std::string_view bytes) {
        Put(static_cast<std::uint32_t>(bytes.size()));
        m_bytes += bytes;
    }
    // The whole frame. Throws WireError for one that is too large.
    [[nodiscard]] std::string Bytes() const {
        if (m_bytes.size() > kLargestFrame)
            throw WireError();
        return LittleEndian(static_cast<std::uint32_t>(m_bytes.size())) + m_bytes;
    }

private:
    std::string m_bytes;
};

// Reads the values of a frame one by one. Every member throws WireError if there is none left.
class Values {
public:
    explicit Values(std::string bytes) : m_bytes(std::move(bytes)) {
        m_kind = Take<std::uint8_t>();
    }

    [[nodiscard]] Kind FrameKind() const { return static_cast<Kind>(m_kind); }
    template <std::integral Number>
    [[nodiscard]] Number Take() {
        return FromLittleEndian<Number>(Next(sizeof(Number)).data());
    }
    [[nodiscard]] std::string_view TakeBytes() { return Next(Take<std::uint32_t>()); }
    [[nodiscard]] bool IsAtEnd() const { return m_at == m_bytes.size(); }
    void End() const {
        if (m_at != m_bytes.size())
            throw WireError();
    }

private:
    std::string_view Next(std::size_t size) {
        if (size > m_bytes.size() - m_at)
            throw WireError();
        m_at += size;
        return std::string_view(m_bytes).substr(m_at - size, size);
    }

    std::string m_bytes;
    std::size_t m_at = 0;
    std::uint8_t m_kind = 0;
};

// Removes and returns the first whole frame, without its size, from the received bytes; returns an
// empty text if it is incomplete. Throws WireError for an invalid size.
[[nodiscard]] inline std::string TakeFrame(std::string& arrived) {
    constexpr std::size_t kSize = sizeof(std::uint32_t);
    if (arrived.size() < kSize)
        return {};
    const auto size = FromLittleEndian<std::uint32_t>(arrived.data());
    if (size == 0 || size > kLargestFrame)
        throw WireError();
    if (arrived.size() - kSize < size)
        return {};
    std::string frame = arrived.substr(kSize, size);
    arrived.erase(0, kSize + size);
    return frame;
}

} // namespace qx::driverhost
