// Keyboard layouts made of lines that a test supplies.
#pragma once

#include "qxcontrols/keys/LayoutTextSource.h"
#include "qxcontrols/keys/QXKeyboardLayoutData.h"

#include <functional>
#include <map>
#include <memory>
#include <vector>

namespace qx::test {

// A text source over a table; the test can change the table between opens and make opens fail.
class TextTable final : public LayoutTextSource {
public:
    using Texts = std::map<Long, std::string>;
    TextTable(const Texts& texts, const std::function<void()>& onOpen, std::vector<Long>& fetched)
        : m_texts(texts), m_onOpen(onOpen), m_fetched(fetched) {}

    void Reset() override {}
    bool Open(const std::string& /*sFilename*/) override {
        if (m_onOpen)
            m_onOpen();
        m_fetched.clear();
        return true;
    }
    bool OpenLanguage(Long& /*lLangID*/, const std::string& sFolder) override {
        return Open(sFolder);
    }
    [[nodiscard]] std::string String(Long lNumber) const override {
        m_fetched.push_back(lNumber);
        const auto text = m_texts.find(lNumber);
        return text == m_texts.end() ? std::string() : text->second;
    }

private:
    const Texts& m_texts;
    const std::function<void()>& m_onOpen;
    std::vector<Long>& m_fetched;
};

struct TableLayout {
    TextTable::Texts texts;
    std::function<void()> onOpen;
    std::vector<Long> fetched; // numbers of the texts read since the last open
    QXKeyboardLayoutData layout{std::make_unique<TextTable>(texts, onOpen, fetched)};

    // The lines, by position code.
    explicit TableLayout(const std::map<Long, std::string>& lines = {}) {
        for (const auto& [key, line] : lines)
            texts[LayoutTextSource::kFirstKey + key] = line;
        layout.OpenLayoutByName("table");
    }
};

} // namespace qx::test
