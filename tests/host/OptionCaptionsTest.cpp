#include "files/Files.h"
#include "host/Configuration.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace qx::host {
namespace {

struct OptionCaptionsTest : testing::Test {
    OptionCaptionsTest() {
        std::filesystem::create_directories(folder / "user");
        std::filesystem::create_directories(folder / "shipped");
        keyboard.name = "QX-POS-FULL";
        keyboard.program = "P100";
    }

    // A file for these keyboards that names options.
    void Write(const char* file, const std::string& keyboards, const std::string& barcode) {
        files::WriteFileAtomically(folder / file, R"({"format": "qx-captions", "version": 1,
            "keyboards": [)" + keyboards + R"(], "barcode": )" +
                                                      barcode + "}");
    }
    OptionCaptions Read() {
        warnings.clear();
        return {keyboard, {folder / "user", folder / "shipped", folder / "missing"}, warnings};
    }
    std::string NameOf(const char* option, const char* language = "en") {
        return Read().Find(std::string("/barcode/pages/") + option).In(language);
    }

    test::TempFolder m_folder;
    std::filesystem::path folder = m_folder / "";
    KeyboardInfo keyboard;
    std::vector<Error> warnings;
};

// Only a keyboard with all of an entry's texts is meant; the user's files come first.
TEST_F(OptionCaptionsTest, AreThoseOfTheKeyboard) {
    Write("shipped/a.json", R"({"name": "QX-POS-FULL"})",
          R"({"Code39": {"1": {"en": "Shipped one", "de": "Geliefert"}, "2": {"en": "Two"}}})");
    Write("shipped/b.json", R"({"name": "OTHER"}, {"program": "P100"})",
          R"({"Code39": {"2": {"en": "Later two"}}, "EAN": {"0": {"en": "Read EAN"}}})");
    Write("shipped/c.json", R"({"name": "QX-POS-FULL", "program": "P101"})",
          R"({"Code39": {"3": {"en": "Other program"}}})");
    EXPECT_EQ(NameOf("Code39/flags/1"), "Shipped one");
    EXPECT_EQ(NameOf("Code39/flags/1", "de"), "Geliefert");
    EXPECT_EQ(NameOf("Code39/flags/2", "de"), "Two");
    EXPECT_EQ(NameOf("EAN/flags/0"), "Read EAN");
    EXPECT_EQ(NameOf("Code39/flags/3"), "");
    Write("user/z.json", "{}", R"({"Code39": {"1": {"en": "The user's\n"}}})");
    EXPECT_EQ(NameOf("Code39/flags/1"), "The user's\\u000a");
    EXPECT_TRUE(warnings.empty());
}

// A faulty file is skipped as a whole, and reported with every fault; the others count.
TEST_F(OptionCaptionsTest, FaultsAreReportedWithFileAndPlace) {
    Write("shipped/good.json", "{}", R"({"MSI": {"0": {"en": "Good"}}})");
    Write("user/bad.json", R"({"nome": "x"})",
          R"({"MSI": {"0": {"en": "Bad"}, "10": {"en": "x"}}, "Code40": {},
              "EAN": {"1": {"de": "x"}, "2": {"en": "", "fr": "x"}, "3": {"en": ")" +
              std::string(61, 'x') + R"("}}})");
    EXPECT_EQ(NameOf("MSI/flags/0"), "Good");
    ASSERT_EQ(warnings.size(), 1U);
    EXPECT_NE(warnings[0].place.file.find("bad.json"), std::string::npos);
    std::vector<std::string> places;
    for (const Fault& fault : warnings[0].faults)
        places.push_back(fault.place);
    const std::vector<std::string> wanted = {
        "/keyboards/0/nome", "/barcode/EAN/1",  "/barcode/EAN/2/en", "/barcode/EAN/2/fr",
        "/barcode/EAN/3/en", "/barcode/MSI/10", "/barcode/Code40"};
    EXPECT_EQ(places, wanted);
    Write("user/bad.json", "", "{}");
    (void)Read();
    ASSERT_EQ(warnings.size(), 1U);
    EXPECT_EQ(warnings[0].faults, std::vector<Fault>{Fault("/keyboards", FaultKind::EmptyList)});
}

TEST_F(OptionCaptionsTest, TheExamplesAreCaptions) {
    const std::string page = files::ReadFile(QX_LAYOUTS "../docs/captions.md");
    const std::string fence = "```json\n";
    const std::size_t start = page.find(fence) + fence.size();
    files::WriteFileAtomically(folder / "user" / "page.json",
                               page.substr(start, page.find("```", start) - start));
    keyboard.name = "QX-EXAMPLE";
    EXPECT_EQ(NameOf("CommonSettings/flags/1", "de"), "Name einer Option");
    std::filesystem::copy(QX_LAYOUTS "../captions/example.json", folder / "shipped");
    EXPECT_EQ(NameOf("Code39/flags/2", "de"), "Name in English only");
    EXPECT_TRUE(warnings.empty());
}

TEST_F(OptionCaptionsTest, NameTheSettingsOfAConfiguration) {
    Write("user/names.json", "{}", R"({"Code39": {"1": {"en": "Check digit"}}})");
    Configuration configuration({}, nullptr, nullptr);
    configuration.SetCaptions(Read());
    std::vector<std::string> names;
    for (const Setting& setting : configuration.List({configuration.Find("barcode")}))
        if (setting.place.starts_with("/barcode/pages/Code39/flags"))
            names.push_back(ToText(setting.name));
    ASSERT_EQ(names.size(), 7U);
    EXPECT_EQ(names[0], "Barcode reader › Code 39 › Read this kind of code");
    EXPECT_EQ(names[1], "Barcode reader › Code 39 › Check digit");
}

} // namespace
} // namespace qx::host
