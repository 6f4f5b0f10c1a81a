// qxdriverhost: loads one driver library and calls it for the program that started this one.
//
// It ends when that program closes the channel. It is not protected against the driver: this is the
// process that the driver is allowed to break.

#include "driverhost/LibraryExtras.h"
#include "driverhost/Wire.h"
#include "files/Files.h"
#include "process/ChildProcess.h"

#include <algorithm>
#include <iostream>
#include <memory>
#include <mutex>
#include <tuple>

#ifdef _WIN32
#include "driverhost/PostingLibrary.h"
#endif

namespace qx::driverhost {

namespace {

class Overrun : public std::exception {};

// An argument during a driver call, initialised from the request.
template <typename Type>
class Held {
public:
    explicit Held(Values& request) : m_value(request.Take<Type>()) {}
    [[nodiscard]] Type Argument() const { return m_value; }
    void PutInto(Frame& /*answer*/) const {}

private:
    Type m_value;
};

template <typename Number>
class Held<Number*> {
public:
    explicit Held(Values& request) : m_value(request.Take<Number>()) {}
    [[nodiscard]] Number* Argument() { return &m_value; }
    void PutInto(Frame& answer) const { answer.Put(m_value); }

private:
    Number m_value;
};

// A buffer followed by a few guard bytes, which must stay unchanged.
template <>
class Held<char*> {
public:
    explicit Held(Values& request) : m_bytes(request.TakeBytes()), m_size(m_bytes.size()) {
        m_bytes.append(kGuardSize, kGuard);
    }
    [[nodiscard]] char* Argument() { return m_bytes.data(); }
    void PutInto(Frame& answer) const {
        const std::string_view bytes = m_bytes;
        if (bytes.substr(m_size).find_first_not_of(kGuard) != std::string_view::npos)
            throw Overrun();
        answer.Put(bytes.substr(0, m_size));
    }

private:
    static constexpr std::size_t kGuardSize = 64;
    static constexpr char kGuard = '\x5A';

    std::string m_bytes;
    std::size_t m_size;
};

template <>
class Held<const char*> {
public:
    explicit Held(Values& request) : m_bytes(request.TakeBytes()) {}
    [[nodiscard]] const char* Argument() const { return m_bytes.data(); }
    void PutInto(Frame& /*answer*/) const {}

private:
    std::string m_bytes;
};

template <typename... Parameters>
void Call(ConfigDriver& driver, std::int32_t (ConfigDriver::*function)(Parameters...),
          Values& request, Frame& answer) {
    std::tuple<Held<Parameters>...> held{Held<Parameters>(request)...}; // read in this order
    request.End();
    std::apply(
        [&](auto&... argument) {
            answer.Put((driver.*function)(argument.Argument()...));
            (argument.PutInto(answer), ...);
        },
        held);
}

using Caller = void (*)(ConfigDriver& driver, Values& request, Frame& answer);
constexpr Caller kCallers[] = {
#define QX_DRIVER_FUNCTION(name, parameters, arguments, result)                                    \
    [](ConfigDriver& driver, Values& request, Frame& answer) {                                     \
        Call(driver, &ConfigDriver::name, request, answer);                                        \
    },
#include "qxcontrols/device/DriverFunctions.def"
};

class Host {
public:
    explicit Host(process::Channel& channel) : m_channel(channel) { theHost = this; }

    // Answers requests until the other end closes the channel. Throws WireError.
    void Run() {
        for (std::string arrived;;) {
            std::string frame = TakeFrame(arrived);
            if (!frame.empty()) {
                Values request(std::move(frame));
                Send(AnswerTo(request));
            } else if (m_channel.Receive(arrived) == process::Channel::Received::End) {
                return;
            }
        }
    }

private:
    [[nodiscard]] Frame AnswerTo(Values& request) {
        Frame answer(Kind::Answer);
        if (request.FrameKind() == Kind::Load)
            return Load(request);
        if (!m_library)
            throw WireError();
        switch (request.FrameKind()) {
        case Kind::Call:
            return AnswerToCall(request);
        case Kind::SetPoster:
            m_library->QXSIM_SetMessagePoster(request.Take<std::uint8_t>() != 0 ? &Post : nullptr);
            return answer;
        case Kind::SetKeyboard: {
            const std::string file(request.TakeBytes());
            const auto status = SetKeyboard(*m_library, file, std::string(request.TakeBytes()));
            answer.Put(static_cast<std::uint8_t>(status ? 1 : 0));
            if (status)
                answer.Put(*status);
            return answer;
        }
        case Kind::StatusText:
            answer.Put(StatusText(*m_library, request.Take<std::int32_t>()));
            return answer;
        default:
            throw WireError();
        }
    }
    [[nodiscard]] Frame Load(Values& request) {
        const std::string file(request.TakeBytes());
        try {
            m_library = Opened(file);
        } catch (const LibraryError& error) {
            const files::Problem problem = ProblemOf(error, file);
            Frame answer(Kind::NotLoaded);
            answer.Put(static_cast<std::uint8_t>(problem.obstacle));
            answer.Put(std::string_view(problem.system));
            for (const std::string& function : problem.names)
                answer.Put(std::string_view(function));
            return answer;
        }
        Frame answer(Kind::Loaded);
        answer.Put(kFingerprint);
        return answer;
    }
    [[nodiscard]] Frame AnswerToCall(Values& request) {
        const auto function = request.Take<std::uint8_t>();
        if (function >= std::size(kCallers))
            throw WireError();
        try {
            Frame answer(Kind::Answer);
            kCallers[function](*m_library, request, answer);
            FlushMessages(*m_library);
            return answer;
        } catch (const Overrun&) {
            return Frame(Kind::Overrun);
        }
    }

    void Send(const Frame& frame) {
        const std::lock_guard lock(m_sending); // a driver may post from its own thread
        (void)m_channel.Send(frame.Bytes());   // if the other end is gone, nobody needs the message
    }
    static void QX_DRIVER_CALL Post(std::int32_t hWindow, std::int32_t lMsg, std::int32_t wParam,
                                    std::int32_t lParam) {
        Frame message(Kind::Message);
        for (const std::int32_t value : {hWindow, lMsg, wParam, lParam})
            message.Put(value);
        theHost->Send(message);
    }

#ifdef _WIN32
    using Library = PostingLibrary;
    static std::unique_ptr<Library> Opened(const std::string& file) {
        return std::make_unique<Library>(file, &Post);
    }
    static void FlushMessages(Library& library) {
        library.Flush();
    }
#else
    using Library = DriverLibrary;
    static std::unique_ptr<Library> Opened(const std::string& file) {
        return std::make_unique<Library>(file);
    }
    static void FlushMessages(Library& /*library*/) {} // here drivers post through a function
#endif

    static inline Host* theHost = nullptr; // a driver's callback has no context argument

    process::Channel& m_channel;
    std::mutex m_sending;
    std::unique_ptr<Library> m_library;
};

} // namespace

} // namespace qx::driverhost

int main() {
    qx::files::PrepareStandardStreams();
    try {
        auto channel = qx::process::Channel::ToParent();
        qx::driverhost::Host(channel).Run();
        return 0;
    } catch (const std::exception& error) {
        std::cerr << "qxdriverhost: " << error.what() << '\n';
        return 2;
    }
}
