#include "qxcontrols/keys/LayoutCheck.h"
#include "qxcontrols/keys/QXKeyboardLayoutData.h"
#include "qxcontrols/keys/QxlTextSource.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <utility>

#include <sys/stat.h>

namespace qx::test {
namespace {

// A folder of layout files for the duration of the test.
class QxlTextSourceTest : public testing::Test {
protected:
    void SetUp() override {
        const auto* test = testing::UnitTest::GetInstance()->current_test_info();
        m_folder = std::filesystem::temp_directory_path() /
                   (std::string("qxl-") + test->name() + std::to_string(test->line()));
        std::filesystem::create_directories(m_folder);
    }
    void TearDown() override { std::filesystem::remove_all(m_folder); }

    void Write(const std::string& name, const std::string& content) const {
        std::ofstream(m_folder / name, std::ios::binary) << content;
    }
    // The path with the other system's separators, too.
    [[nodiscard]] std::string Path(const std::string& name = "") const {
        return m_folder.string() + "\\" + name;
    }

    std::filesystem::path m_folder;
    QxlTextSource source;
};

TEST_F(QxlTextSourceTest, ReadsWhatEditorsWrite) {
    Write("a.qxl", "\xEF\xBB\xBF# A layout\r\n1=1033\r\n\r\n3= A=B \r\n1140=10  \xC3\x9C");
    ASSERT_TRUE(source.Open(Path("a.qxl"))) << source.Error();
    EXPECT_EQ(source.String(1), "1033");
    EXPECT_EQ(source.String(3), " A=B ");
    EXPECT_EQ(source.String(1140), "10  \xC3\x9C");
    EXPECT_EQ(source.String(2), "");
}

TEST_F(QxlTextSourceTest, NamesTheLineThatIsWrong) {
    const std::pair<std::string, std::string> rows[] = {
        {"1001", "not NUMBER=TEXT"},
        {"=A", "not NUMBER=TEXT"},
        {"x=A", "not NUMBER=TEXT"},
        {"-1=A", "not NUMBER=TEXT"},
        {" 5=A", "not NUMBER=TEXT"},
        {"5 =A", "not NUMBER=TEXT"},
        {"99999999999=A", "not NUMBER=TEXT"},
        {" ", "not NUMBER=TEXT"},
        {"1000=twice", "string 1000 is already in line 3"},
        {"1141=A", "no string 1141; the last is 1140"},
        {"1001=\xFF", "not UTF-8"},
        {"1001=10  A\xC2\x9B", "a control character"},
        {"1001=10  A\x1B[2J", "a control character"},
        {std::string("1001=10  A\0B", 12), "a control character"},
        {"1001=\x7F", "a control character"},
    };
    for (const auto& [line, reason] : rows) {
        SCOPED_TRACE(line);
        Write("a.qxl", "1=1033\n\n1000=00  A\n" + line + "\n1002=00  C\n1140=00\tC\n");
        EXPECT_FALSE(source.Open(Path("a.qxl")));
        EXPECT_TRUE(source.Error().ends_with("a.qxl, line 4: " + reason) ||
                    source.Error().ends_with("a.qxl, line 4: a layout has " + reason))
            << source.Error();
    }
}

#ifndef _WIN32
TEST_F(QxlTextSourceTest, RefusesAnythingButASmallFile) {
    const std::string most = "1=1033\n#" + std::string((1U << 20U) - 8, '-');
    Write("most.qxl", most);
    Write("large.qxl", most + "-");
    std::filesystem::create_symlink("/dev/zero", m_folder / "endless.qxl");
    ASSERT_EQ(mkfifo((m_folder / "pipe.qxl").c_str(), 0600), 0);
    EXPECT_TRUE(source.Open(Path("most.qxl"))) << source.Error();
    const std::pair<std::string, std::string> rows[] = {
        {"absent.qxl", "the file cannot be read"},
        {"most.qxl\\deeper.qxl", "the file cannot be read"},
        {"", "not an ordinary file"},
        {"endless.qxl", "not an ordinary file"},
        {"pipe.qxl", "not an ordinary file"},
        {"large.qxl", "larger than 1 MiB"},
    };
    for (const auto& [name, reason] : rows) {
        EXPECT_FALSE(source.Open(Path(name)));
        EXPECT_TRUE(source.Error().ends_with(reason)) << source.Error();
        EXPECT_TRUE(source.Error().starts_with(m_folder.string())) << source.Error();
    }
    EXPECT_EQ(source.String(1), "1033"); // a failed open changes nothing
    Long language = 1033;
    EXPECT_TRUE(source.OpenLanguage(language, Path())) << source.Error();
    EXPECT_EQ(source.FileName(), (m_folder / "most.qxl").string());
}
#endif

TEST_F(QxlTextSourceTest, ACheckFindsErrorsThatAnOpenIgnores) {
    const std::string rectangle = "(0,0,600,600)";
    using Kind = TextFaultKind;
    const std::pair<std::string, TextFault> rows[] = {
        {"1030=" + rectangle, {Kind::SupportMissing, {"30"}}},
        {"1030=" + rectangle + "3", {Kind::SupportInvalid, {"30", "3"}}},
        {"1030=" + rectangle + "\xC3\xA4", {Kind::SupportInvalid, {"30", "\xC3\xA4"}}},
        {"1030=" + rectangle + "2", {Kind::ColourMissing, {"30"}}},
        {"1030=" + rectangle + "2x  A", {Kind::ColourInvalid, {"30", "x"}}},
        {"1030=" + rectangle + "21", {Kind::CaptionMissing, {"30"}}},
        {"1030=" + rectangle + "21   \\\\ ", {Kind::CaptionMissing, {"30"}}},
        {"1030=10  A", {Kind::RectangleMissing, {"30"}}},
        {"1030=(0,0,600,25)10  A", {Kind::RectangleInvisible, {"30", "600", "25"}}},
        {"1030=(0,0,-600,600)10  A", {Kind::RectangleInvisible, {"30", "-600", "600"}}},
        {"1030=(0,0,600)10  A", {Kind::NoSeparator, {"30", ","}}},
        {"1030=(0,0,600,65536)10  A", {Kind::NumberOver16Bits, {"30", "65536"}}},
    };
    for (const auto& [line, fault] : rows) {
        SCOPED_TRACE(line);
        Write("a.qxl", "1=1033\n3=Name\n" + line + "\n1031=x\n");
        ASSERT_TRUE(source.Open(Path("a.qxl"))) << source.Error();
        const LayoutFault found = FaultIn(source).value();
        EXPECT_EQ(found.fault, fault) << WordsOf(found);
        EXPECT_EQ(found.line, 3U);
        EXPECT_EQ(found.file, (m_folder / "a.qxl").string());
    }
    struct File {
        std::string content;
        std::size_t line;
        TextFault fault;
    };
    const File files[] = {
        {"3=Empty\n1030= \n", 0, {Kind::NoKeys}},
        {"3=A\n1=en\n1030=x", 2, {Kind::NotALanguageID, {"en"}}},
        {"1=32768\n1030=x", 1, {Kind::NotALanguageID, {"32768"}}},
        {"1=0\n1030=x", 1, {Kind::NotALanguageID, {"0"}}},
    };
    for (const auto& [content, line, fault] : files) {
        SCOPED_TRACE(content);
        Write("b.qxl", content);
        ASSERT_TRUE(source.Open(Path("b.qxl"))) << source.Error();
        const LayoutFault found = FaultIn(source).value();
        EXPECT_EQ(found.fault, fault) << WordsOf(found);
        EXPECT_EQ(found.line, line);
        EXPECT_EQ(found.file, (m_folder / "b.qxl").string());
    }
    Write("c.qxl",
          "1030=(0,0,26,26)11  A\n1031=00\n1032=(0,0,0,0)22  B\n1033=(5,5,90,90)10  \\\\C");
    ASSERT_TRUE(source.Open(Path("c.qxl"))) << source.Error();
    EXPECT_FALSE(FaultIn(source));
}

TEST_F(QxlTextSourceTest, FindsTheLayoutForALanguage) {
    Write("a.qxl", "no layout at all");
    Write("b.qxl", "1=2057\n3=British");
    Write("c.qxl", "1=1033\n3=American");
    Write("d.qxl", "1=1033\n3=Another");
    Write("e.qxl", "1=1031\n3=Deutsch\nmalformed");
    Write("f.txt", "1=1036\n3=Fran\xC3\xA7"
                   "ais");
    const auto opens = [&](Long language, const std::string& name, Long opened) {
        SCOPED_TRACE(language);
        EXPECT_TRUE(source.OpenLanguage(language, Path())) << source.Error();
        EXPECT_EQ(source.String(3), name);
        EXPECT_EQ(language, opened);
    };
    opens(1033, "American", 1033);
    opens(3081, "British", 2057); // Australia: the first English layout
    const auto fails = [&](Long language, const std::string& path, const std::string& message) {
        SCOPED_TRACE(language);
        const Long asked = language;
        EXPECT_FALSE(source.OpenLanguage(language, path));
        EXPECT_EQ(language, asked);
        EXPECT_NE(source.Error().find(message), std::string::npos) << source.Error();
    };
    fails(1031, Path(), "e.qxl, line 3");
    fails(1036, Path(), "no layout for language 1036");
    fails(0, Path(), "no layout for language 0");
    fails(1033, Path("absent"), "absent");
}

TEST_F(QxlTextSourceTest, LayoutDataNamesTheInvalidFile) {
    Write("good.qxl", "3= Good \n1030=(1,2,3,4)10  A");
    Write("bad.qxl", "3=Bad\n1030=(1,2,3)10  A");
    QXKeyboardLayoutData layout;
    layout.SetLayoutPath(m_folder.string());
    ASSERT_TRUE(layout.OpenLayoutByName("good.qxl")) << layout.Error();
    EXPECT_FALSE(layout.OpenLayoutByName("bad.qxl"));
    EXPECT_NE(layout.Error().find("bad.qxl, line 2: position code 30"), std::string::npos)
        << layout.Error();
    EXPECT_EQ(layout.NativeName(), "Good");
}

} // namespace
} // namespace qx::test
