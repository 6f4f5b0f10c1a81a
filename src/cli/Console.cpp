#include "cli/Console.h"

#include "host/Error.h"
#include "host/VisibleText.h"

#include <algorithm>
#include <ostream>

namespace qx::cli {

namespace {

// The approximate width of the text on a screen: the number of its UTF-8 characters.
std::size_t WidthOf(std::string_view text) {
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char c) {
        return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U;
    }));
}

// Makes all texts and member names valid UTF-8.
host::Json WithUtf8Texts(const host::Json& value) {
    if (value.is_string())
        return host::Utf8Text(value.get_ref<const std::string&>());
    if (!value.is_structured())
        return value;
    host::Json texts = value.is_object() ? host::Json::object() : host::Json::array();
    for (const auto& [key, member] : value.items()) {
        if (value.is_object())
            texts[host::Utf8Text(key)] = WithUtf8Texts(member);
        else
            texts.push_back(WithUtf8Texts(member));
    }
    return texts;
}

} // namespace

void Console::Result(const Lines& lines) {
    EndProgress();
    for (const std::string& line : lines)
        m_streams.out << host::VisibleText(line) << '\n';
}

void Console::Result(const host::Json& json) {
    Text(host::PrettyText(WithUtf8Texts(json)));
}

void Console::Text(const std::string& text) {
    EndProgress();
    m_streams.out << host::VisibleLines(text);
}

void Console::Note(std::string_view text) {
    if (!isQuiet)
        Error(text);
}

void Console::Error(std::string_view text) {
    EndProgress();
    m_streams.err << host::VisibleText(text) << '\n';
}

void Console::ShowProgress(std::string_view step, int percent) {
    constexpr int kWidestBar = 40;
    if (m_streams.columns == 0 || isQuiet)
        return;
    const std::string before = std::string(step) + " [";
    const std::string after = "] " + std::to_string(percent) + " %";
    // the last column stays empty: some terminals wrap when it is used
    const int room = m_streams.columns - 1 - static_cast<int>(WidthOf(before + after));
    const int width = std::clamp(room, 0, kWidestBar);
    const auto done = static_cast<std::size_t>(percent * width / 100);
    const std::string bar =
        std::string(done, '#') + std::string(static_cast<std::size_t>(width) - done, '.');
    const std::string drawn = room < 0 ? std::to_string(percent) + " %" : before + bar + after;
    if (drawn == m_progress)
        return;
    EndProgress();
    m_progress = drawn;
    const char* const on = m_streams.hasColor ? "\033[32m" : "";
    const char* const off = m_streams.hasColor ? "\033[0m" : "";
    m_streams.err << on << drawn << off << std::flush;
}

// Erases the bar, so that the next output starts on an empty line.
void Console::EndProgress() {
    if (m_progress.empty())
        return;
    m_streams.err << '\r' << std::string(WidthOf(m_progress), ' ') << '\r';
    m_progress.clear();
}

void Console::Flush() {
    EndProgress();
    m_streams.err.flush();
    m_streams.out.flush();
    if (!m_streams.out)
        throw host::Error(host::Cause::OutputLost);
}

} // namespace qx::cli
