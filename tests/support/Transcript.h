// Transcript: everything that a part of the library does, as one ordered list of lines.
//
//     trace QXPos.DataUpload              a line of the trace
//     driver QXCFG_ImageRead(4096, 3360)  a call of the driver, with its arguments
//     event Refreshed                     an event
//     # upload                            a heading by the test
//
// Equal consecutive bytes and words are written once with their number ("00*30"), and so are equal
// lines ("(105 times)"), two lines that alternate ten times or more ("one, other (105 times)"), and
// lines that differ only by a rising number ("4 to 10 by 2").
#pragma once

#include "support/TestKeyboard.h"

#include <algorithm>
#include <fstream>
#include <regex>

namespace qx::test {

class Transcript {
public:
    explicit Transcript(FakeDriver& driver) : m_driver(driver) {
        SetTraceSink([this](std::string_view text) {
            if (!IsOfAnotherFolder(text))
                m_lines.push_back("trace " + WithoutRepeats(text));
        });
        m_driver.onCall = [this](const std::string& call) { m_lines.push_back("driver " + call); };
    }
    ~Transcript() {
        SetTraceSink({});
        m_driver.onCall = nullptr;
    }
    Transcript(const Transcript&) = delete;
    Transcript& operator=(const Transcript&) = delete;

    void Heading(const std::string& text) {
        if (!m_lines.empty())
            m_lines.emplace_back();
        m_lines.push_back("# " + text);
    }

    // Records the event from now on.
    template <typename... Numbers>
    void Listen(Event<Numbers...>& event, const std::string& name) {
        m_subscriptions.push_back(event.Subscribe([this, name](Numbers... numbers) {
            std::string arguments;
            ((arguments += (arguments.empty() ? "" : ", ") + std::to_string(numbers)), ...);
            m_lines.push_back("event " + name + (arguments.empty() ? "" : "(" + arguments + ")"));
        }));
    }
    void StopListening() { m_subscriptions.clear(); }

    // Whether it equals the file, which was written by hand.
    [[nodiscard]] testing::AssertionResult Is(const std::string& file) const {
        std::ifstream stream(QX_TRANSCRIPTS + file);
        std::vector<std::string> expected;
        for (std::string line; std::getline(stream, line);)
            expected.push_back(line);
        const std::vector<std::string> lines = Shortened();
        const auto [line, wanted] =
            std::mismatch(lines.begin(), lines.end(), expected.begin(), expected.end());
        if (line == lines.end() && wanted == expected.end())
            return testing::AssertionSuccess();
        const auto text = [](auto at, auto end) { return at == end ? "(the end)" : *at; };
        return testing::AssertionFailure() << file << ", line " << wanted - expected.begin() + 1
                                           << "\nexpected: " << text(wanted, expected.end())
                                           << "\n     was: " << text(line, lines.end());
    }

private:
    // The traces of the layout and the sequences have their own tests.
    static bool IsOfAnotherFolder(std::string_view text) {
        constexpr std::string_view kClasses[] = {"QXLayoutDisplay.", "QXKeyboardLayoutData.",
                                                 "KeySequence.", "KeyboardSequences."};
        return std::any_of(std::begin(kClasses), std::end(kClasses),
                           [&](std::string_view name) { return text.starts_with(name); });
    }

    static std::string WithoutRepeats(std::string_view text) {
        std::istringstream stream{std::string(text)};
        std::vector<std::string> words;
        for (std::string word; std::getline(stream, word, ' ');)
            words.push_back(word);
        std::string line;
        for (std::size_t i = 0; i < words.size();) {
            std::size_t next = i;
            while (next < words.size() && words[next] == words[i])
                ++next;
            const bool isRun = next - i > 3 && !words[i].empty();
            line += (i == 0 ? "" : " ") + words[i];
            if (isRun)
                line += "*" + std::to_string(next - i);
            i = isRun ? next : i + 1;
        }
        return line + (text.ends_with(' ') ? " " : "");
    }

    struct Numbered {
        std::string before, after;
        long number = 0;
        bool isNumbered = false;
    };
    static Numbered Parse(const std::string& line) {
        static const std::regex kNumber(R"(^(trace \w+ |driver \w+\()(\d+)([ ,)].*)$)");
        std::smatch parts;
        if (!std::regex_match(line, parts, kNumber))
            return {};
        return {parts[1], parts[3], std::stol(parts[2]), true};
    }

    [[nodiscard]] std::vector<std::string> Shortened() const {
        std::vector<std::string> shortened;
        for (std::size_t i = 0; i < m_lines.size();) {
            std::size_t next = i + 1;
            while (next < m_lines.size() && m_lines[next] == m_lines[i] && !m_lines[i].empty())
                ++next;
            if (next - i > 1) {
                shortened.push_back(m_lines[i] + " (" + std::to_string(next - i) + " times)");
            } else if (next = EndOfPairs(i); next - i >= 20) {
                shortened.push_back(m_lines[i] + ", " + m_lines[i + 1] + " (" +
                                    std::to_string((next - i) / 2) + " times)");
            } else if (next = EndOfRise(i); next - i > 2) {
                const Numbered first = Parse(m_lines[i]);
                const long step = Parse(m_lines[i + 1]).number - first.number;
                shortened.push_back(first.before + std::to_string(first.number) + " to " +
                                    std::to_string(Parse(m_lines[next - 1]).number) + " by " +
                                    std::to_string(step) + first.after);
            } else {
                next = i + 1;
                shortened.push_back(m_lines[i]);
            }
            i = next;
        }
        return shortened;
    }

    // The line after line i, the next one, and all repetitions of these two.
    [[nodiscard]] std::size_t EndOfPairs(std::size_t i) const {
        std::size_t next = i;
        while (next + 1 < m_lines.size() && m_lines[next] == m_lines[i] &&
               m_lines[next + 1] == m_lines[i + 1])
            next += 2;
        return next;
    }

    // The line after those from line i on that differ by a number rising in equal steps.
    [[nodiscard]] std::size_t EndOfRise(std::size_t i) const {
        Numbered last = Parse(m_lines[i]);
        long step = 0;
        std::size_t next = i + 1;
        for (; last.isNumbered && next < m_lines.size(); ++next) {
            Numbered line = Parse(m_lines[next]);
            const bool isFirstStep = next == i + 1;
            if (!line.isNumbered || line.before != last.before || line.after != last.after ||
                (!isFirstStep && line.number - last.number != step))
                break;
            step = line.number - last.number;
            last = std::move(line);
        }
        return next;
    }

    FakeDriver& m_driver;
    std::vector<std::string> m_lines;
    std::vector<Subscription> m_subscriptions;
};

} // namespace qx::test
