#include "driverhost/RemoteDriver.h"

#include "driverhost/Advance.h"
#include "driverhost/Wire.h"
#include "driverhost/WordSize.h"
#include "files/Installation.h"
#include "files/SystemTexts.h"

#include <cstring>
#include <exception>
#include <stdexcept>
#include <tuple>

namespace qx::driverhost {

namespace {

using namespace std::chrono_literals;
using std::chrono::steady_clock;

constexpr auto kTimeToEnd = std::chrono::milliseconds(2s); // time for a released driver to end

#ifdef _WIN32

// Both word sizes are in use.
std::filesystem::path ProgramFor(const std::filesystem::path& library) {
    std::error_code ignored;
    const auto size = WordSizeOf(library);
    if (!size && std::filesystem::exists(library, ignored))
        throw std::runtime_error("cannot load the driver library " + files::TextOf(library) +
                                 ": it is neither a 32-bit nor a 64-bit library for Windows");
    const std::string bits = std::to_string(size.value_or(kOwnWordSize));
    auto program = files::HelperProgram("qxdriverhost" + bits);
    if (!std::filesystem::exists(program, ignored))
        throw std::runtime_error("the " + bits + "-bit driver library " + files::TextOf(library) +
                                 " needs " + files::TextOf(program) + ", which is missing");
    return program;
}

#else

std::filesystem::path ProgramFor(const std::filesystem::path& /*library*/) {
    return files::HelperProgram("qxdriverhost");
}

#endif

// Lost: why the process can no longer be used. Ended: it has ended, and its exit status is the
// reason.
class Lost : public std::runtime_error {
    using std::runtime_error::runtime_error;
};
class Ended : public std::exception {};

// A text or buffer that the driver may write to (Buffer), or only reads (Input).
struct Buffer {
    char* bytes;
    std::size_t size;
};
struct Input {
    const char* bytes;
    std::size_t size;
};

// Converts the arguments of a driver function to and from the wire format.
template <std::integral Number>
Number Item(Number number) {
    return number;
}
template <std::integral Number>
Number* Item(Number* number) {
    return number;
}
Buffer Item(char* text) {
    return {text, std::strlen(text) + 1};
}
template <typename... Arguments>
auto Items(Arguments... arguments) {
    return std::tuple(Item(arguments)...);
}
std::size_t SizeOf(std::int32_t lSize) {
    return lSize > 0 ? static_cast<std::size_t>(lSize) : 0;
}
auto Items(std::int32_t lAddress, char* buffer, std::int32_t lSize) {
    return std::tuple(lAddress, Buffer{buffer, SizeOf(lSize)}, lSize);
}
auto Items(std::int32_t lAddress, const char* buffer, std::int32_t lSize) {
    return std::tuple(lAddress, Input{buffer, SizeOf(lSize)}, lSize);
}

template <std::integral Number>
void PutItem(Frame& frame, Number number) {
    frame.Put(number);
}
template <std::integral Number>
void PutItem(Frame& frame, Number* number) {
    frame.Put(*number);
}
void PutItem(Frame& frame, const Buffer& buffer) {
    frame.Put(std::string_view(buffer.bytes, buffer.size));
}
void PutItem(Frame& frame, const Input& input) {
    frame.Put(std::string_view(input.bytes, input.size));
}

template <std::integral Number>
void TakeItem(Values& /*answer*/, Number /*number*/) {}
void TakeItem(Values& /*answer*/, const Input& /*input*/) {}
template <std::integral Number>
void TakeItem(Values& answer, Number* number) {
    *number = answer.Take<Number>();
}
void TakeItem(Values& answer, const Buffer& buffer) {
    const std::string_view bytes = answer.TakeBytes();
    if (bytes.size() != buffer.size)
        throw WireError();
    std::memcpy(buffer.bytes, bytes.data(), bytes.size());
}

} // namespace

// Handles the messages that the driver posts during a call. Progress restarts the time limit.
class RemoteDriver::Progress {
public:
    Progress(std::chrono::milliseconds limit, int stretches)
        : m_limit(limit), m_until(steady_clock::now() + limit), m_advance(stretches) {}

    [[nodiscard]] process::Deadline Until() const { return m_until; }
    void Deliver(Values& message, MessagePoster post) {
        std::int32_t arguments[4];
        for (std::int32_t& argument : arguments)
            argument = message.Take<std::int32_t>();
        message.End();
        if (m_advance.IsMadeBy(arguments[3]))
            m_until = steady_clock::now() + m_limit;
        try {
            if (post != nullptr)
                post(arguments[0], arguments[1], arguments[2], arguments[3]);
        } catch (...) { // the call must be completed first
            m_thrown = std::current_exception();
        }
    }
    void Rethrow() const {
        if (m_thrown)
            std::rethrow_exception(m_thrown);
    }

private:
    std::chrono::milliseconds m_limit;
    process::Deadline m_until;
    Advance m_advance;
    std::exception_ptr m_thrown;
};

RemoteDriver::RemoteDriver(const std::filesystem::path& library, Isolation isolation)
    : m_isolation(std::move(isolation)) {
    if (m_isolation.program.empty())
        m_isolation.program = ProgramFor(library);
    m_child.emplace(m_isolation.program, std::vector<std::string>());
    Frame request(Kind::Load);
    request.Put(files::TextOf(library));
    std::string reason;
    const bool isLoaded = Ask(request, "loading " + files::TextOf(library), [&](Values& answer) {
        if (answer.FrameKind() == Kind::NotLoaded)
            reason = answer.TakeBytes();
        else if (answer.FrameKind() != Kind::Loaded)
            throw WireError();
        else if (answer.Take<std::uint32_t>() != kFingerprint)
            reason =
                files::TextOf(m_isolation.program) + " is not of the same version as this program";
    });
    if (!isLoaded)
        reason = m_failure;
    if (!reason.empty())
        throw std::runtime_error(reason);
}

RemoteDriver::~RemoteDriver() {
    if (!m_child)
        return;
    m_child->Connection().Close();
    (void)m_child->End(steady_clock::now() + std::min(m_isolation.limit, kTimeToEnd));
}

template <typename... Items>
std::int32_t RemoteDriver::Call(std::uint8_t function, const char* name, const Items&... items) {
    if (function == static_cast<std::uint8_t>(Function::QXCFG_MemRequestClean))
        m_stretches = 0;
    else if (function == static_cast<std::uint8_t>(Function::QXCFG_MemRequestAdd))
        ++m_stretches;
    Frame request(Kind::Call);
    request.Put(function);
    (PutItem(request, items), ...);
    std::int32_t result = kGone;
    const bool isAnswered = Ask(request, name, [&](Values& answer) {
        if (answer.FrameKind() == Kind::Overrun)
            throw Lost("wrote beyond the end of a buffer");
        if (answer.FrameKind() != Kind::Answer)
            throw WireError();
        result = answer.Take<std::int32_t>();
        (TakeItem(answer, items), ...);
    });
    return isAnswered ? result : kGone;
}

#define QX_DRIVER_FUNCTION(name, parameters, arguments, result)                                    \
    std::int32_t RemoteDriver::name parameters {                                                   \
        const auto call = [this](const auto&... items) {                                           \
            return Call(static_cast<std::uint8_t>(Function::name), #name, items...);               \
        };                                                                                         \
        return std::apply(call, Items arguments);                                                  \
    }
#include "qxcontrols/device/DriverFunctions.def"

void RemoteDriver::QXSIM_SetMessagePoster(MessagePoster post) {
    m_post = post;
    Frame request(Kind::SetPoster);
    request.Put(static_cast<std::uint8_t>(post != nullptr ? 1 : 0));
    (void)Ask(request, "QXSIM_SetMessagePoster", [](Values&) {});
}

std::string RemoteDriver::StatusText(std::int32_t lStatus) {
    Frame request(Kind::StatusText);
    request.Put(lStatus);
    std::string text;
    (void)Ask(request, "QXSIM_StatusText",
              [&](Values& answer) { text = std::string(answer.TakeBytes()); });
    return text;
}

std::optional<std::int32_t> RemoteDriver::SetKeyboard(const std::string& file,
                                                      const std::string& model) {
    Frame request(Kind::SetKeyboard);
    request.Put(std::string_view(file));
    request.Put(std::string_view(model));
    std::optional<std::int32_t> status;
    const bool isAnswered = Ask(request, "QXSIM_SetKeyboard", [&](Values& answer) {
        if (answer.Take<std::uint8_t>() != 0)
            status = answer.Take<std::int32_t>();
    });
    return isAnswered ? status : kGone;
}

template <typename Taker>
bool RemoteDriver::Ask(const Frame& request, const std::string& what, const Taker& take) {
    if (!m_child)
        return false;
    try {
        if (!m_child->Connection().Send(request.Bytes(), steady_clock::now() + m_isolation.limit))
            throw Ended();
        Values answer = Await();
        take(answer);
        answer.End();
        return true;
    } catch (const Ended&) {
        GiveUp(what, "");
    } catch (const Lost& lost) {
        GiveUp(what, lost.what());
    } catch (const WireError&) {
        GiveUp(what, "gave an invalid answer");
    }
    return false;
}

Values RemoteDriver::Await() {
    Progress progress(m_isolation.limit, m_stretches);
    for (;;) {
        for (std::string frame = TakeFrame(m_arrived); !frame.empty();
             frame = TakeFrame(m_arrived)) {
            Values values(std::move(frame));
            if (values.FrameKind() != Kind::Message) {
                progress.Rethrow();
                return values;
            }
            progress.Deliver(values, m_post);
        }
        if (steady_clock::now() >= progress.Until())
            throw Lost("did not answer within " + LimitText());
        if (m_child->Connection().Receive(m_arrived, progress.Until()) ==
            process::Channel::Received::End)
            throw Ended();
    }
}

std::string RemoteDriver::LimitText() const {
    const auto milliseconds = m_isolation.limit.count();
    if (milliseconds % 1000 != 0)
        return std::to_string(milliseconds) + " ms";
    return std::to_string(milliseconds / 1000) + " s";
}

// An empty reason means that the process has ended by itself.
void RemoteDriver::GiveUp(const std::string& what, const std::string& reason) {
    const auto until = steady_clock::now() + (reason.empty() ? kTimeToEnd : 0s);
    const process::Ending ending = m_child->End(until);
    m_child.reset();
    const std::string text = !reason.empty()   ? reason
                             : ending.isKilled ? "closed its connection"
                                               : ending.Text();
    m_failure = what + ": the driver " + text;
}

} // namespace qx::driverhost
