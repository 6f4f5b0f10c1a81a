#include "driverhost/RemoteDriver.h"

#include "driverhost/Advance.h"
#include "driverhost/Wire.h"
#include "driverhost/WordSize.h"
#include "files/Installation.h"
#include "files/SystemTexts.h"

#include <algorithm>
#include <cstring>
#include <exception>
#include <iterator>
#include <tuple>

namespace qx::driverhost {

namespace {

using namespace std::chrono_literals;
using std::chrono::steady_clock;

using files::Deed;
using files::Obstacle;

constexpr auto kTimeToEnd = std::chrono::milliseconds(2s); // time for a released driver to end
constexpr auto kTimeToAnswer = 3s;    // time for a call once the user has cancelled
constexpr auto kTimeToNotice = 200ms; // in which that is noticed
constexpr auto kTimeToPaint = 50ms;   // between two calls of onWait

// Calls after which only the keyboard itself shows what it holds.
bool WritesToKeyboard(std::string_view function) {
    constexpr std::string_view kThese[] = {"QXCFG_ImageSave", "QXCFG_KeyboardRomLoad",
                                           "QXCFG_KeyboardChipcardRomLoad",
                                           "QXCFG_KeyboardParamLoad"};
    return std::find(std::begin(kThese), std::end(kThese), function) != std::end(kThese);
}

#ifdef _WIN32

// Both word sizes are in use.
std::filesystem::path ProgramFor(const std::filesystem::path& library) {
    std::error_code ignored;
    const auto size = WordSizeOf(library);
    if (!size && std::filesystem::exists(library, ignored))
        throw files::ProblemError({.deed = Deed::Load,
                                   .subject = files::TextOf(library),
                                   .obstacle = Obstacle::NoDriverLibrary});
    const int bits = size.value_or(kOwnWordSize);
    auto program = files::HelperProgram("qxdriverhost" + std::to_string(bits));
    if (!std::filesystem::exists(program, ignored))
        throw files::ProblemError({.deed = Deed::Load,
                                   .subject = files::TextOf(library),
                                   .obstacle = Obstacle::HelperMissing,
                                   .names = {files::TextOf(program)},
                                   .number = bits});
    return program;
}

#else

std::filesystem::path ProgramFor(const std::filesystem::path& /*library*/) {
    return files::HelperProgram("qxdriverhost");
}

#endif

// The process can no longer be used. Without an obstacle: it has ended, and how is the reason.
struct Lost {
    Obstacle why;
};

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

// True during its lifetime.
class Asking {
public:
    explicit Asking(bool& flag) : m_flag(flag) { m_flag = true; }
    ~Asking() { m_flag = false; }
    Asking(const Asking&) = delete;
    Asking& operator=(const Asking&) = delete;

private:
    bool& m_flag;
};

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
    files::Problem problem = {.deed = Deed::Load, .subject = files::TextOf(library)};
    bool isUsable = false;
    const bool isAnswered = Ask(request, problem.subject, [&](Values& answer) {
        if (answer.FrameKind() == Kind::NotLoaded) {
            problem.obstacle = static_cast<Obstacle>(answer.Take<std::uint8_t>());
            problem.system = answer.TakeBytes();
            while (!answer.IsAtEnd())
                problem.names.emplace_back(answer.TakeBytes());
        } else if (answer.FrameKind() != Kind::Loaded) {
            throw WireError();
        } else if (answer.Take<std::uint32_t>() != kFingerprint) {
            problem.obstacle = Obstacle::HelperOfOther;
            problem.names = {files::TextOf(m_isolation.program)};
        } else {
            isUsable = true;
        }
    });
    if (!isAnswered) {
        problem = *m_failure;
        problem.deed = Deed::Load;
    }
    if (!isUsable)
        throw files::ProblemError(std::move(problem));
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
            throw Lost{Obstacle::Overrun};
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
bool RemoteDriver::Ask(const Frame& request, const std::string& subject, const Taker& take) {
    if (!m_child || m_isAsking)
        return false;
    const Asking asking(m_isAsking);
    try {
        if (!m_child->Connection().Send(request.Bytes(), steady_clock::now() + m_isolation.limit))
            throw Lost{Obstacle::None};
        Values answer = Await(m_isolation.isToEnd && !WritesToKeyboard(subject));
        take(answer);
        answer.End();
        return true;
    } catch (const Lost& lost) {
        GiveUp(subject, lost.why);
    } catch (const WireError&) {
        GiveUp(subject, Obstacle::InvalidAnswer);
    }
    return false;
}

Values RemoteDriver::Await(bool mayBeGivenUp) {
    Progress progress(m_isolation.limit, m_stretches);
    std::optional<process::Deadline> end; // once the user has cancelled
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
            throw Lost{Obstacle::NoAnswer};
        if (mayBeGivenUp && !end && m_isolation.isToEnd())
            end = steady_clock::now() + kTimeToAnswer;
        if (end && steady_clock::now() >= *end)
            throw Lost{Obstacle::EndedByUser};
        auto until = progress.Until();
        if (mayBeGivenUp)
            until = std::min(until, steady_clock::now() + kTimeToNotice);
        if (m_isolation.onWait)
            until = std::min(until, m_toPaint);
        using Received = process::Channel::Received;
        const Received received = m_child->Connection().Receive(m_arrived, until);
        if (received == Received::End)
            throw Lost{Obstacle::None};
        if (m_isolation.onWait && steady_clock::now() >= m_toPaint) {
            m_isolation.onWait();
            m_toPaint = steady_clock::now() + kTimeToPaint;
        }
    }
}

// Without an obstacle, the process has ended by itself.
void RemoteDriver::GiveUp(const std::string& subject, Obstacle obstacle) {
    const bool hasEnded = obstacle == Obstacle::None;
    const process::Ending ending = m_child->End(steady_clock::now() + (hasEnded ? kTimeToEnd : 0s));
    m_child.reset();
    if (!hasEnded)
        m_failure = files::Problem{.obstacle = obstacle};
    else if (ending.isKilled)
        m_failure = files::Problem{.obstacle = Obstacle::ConnectionClosed};
    else
        m_failure = ending.AsProblem();
    if (obstacle == Obstacle::NoAnswer)
        m_failure->number = m_isolation.limit.count();
    m_failure->subject = subject;
}

} // namespace qx::driverhost
