// Keyboard layouts made of the lines that a test gives.
#pragma once

#include "qxcontrols/keys/LayoutTextSource.h"
#include "qxcontrols/keys/QXKeyboardLayoutData.h"

#include <map>
#include <memory>
#include <stdexcept>

namespace qx::test {

// A text source over a table that the test changes between two opens.
class TextTable final : public LayoutTextSource {
public:
    using Texts = std::map<Long, std::string>;
    explicit TextTable(const Texts& texts, const bool& fails) : m_texts(texts), m_fails(fails) {}

    void Reset() override {}
    bool Open(const std::string& /*sFilename*/) override {
        if (m_fails)
            throw std::runtime_error("the table is gone");
        return true;
    }
    bool OpenLanguage(Long& /*lLangID*/, const std::string& sFolder) override {
        return Open(sFolder);
    }
    [[nodiscard]] std::string String(Long lNumber) const override {
        const auto text = m_texts.find(lNumber);
        return text == m_texts.end() ? std::string() : text->second;
    }

private:
    const Texts& m_texts;
    const bool& m_fails;
};

struct TableLayout {
    TextTable::Texts texts;
    bool fails = false;
    QXKeyboardLayoutData layout{std::make_unique<TextTable>(texts, fails)};

    // The lines by position code.
    explicit TableLayout(const std::map<Long, std::string>& lines = {}) {
        for (const auto& [key, line] : lines)
            texts[LayoutTextSource::kFirstKey + key] = line;
        layout.OpenLayoutByName("table");
    }
};

} // namespace qx::test
