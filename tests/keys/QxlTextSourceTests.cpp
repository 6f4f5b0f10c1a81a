#include "qxcontrols/keys/QXKeyboardLayoutData.h"
#include "qxcontrols/keys/QxlTextSource.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

namespace qx::test {
namespace {

// A folder of layout files that lasts as long as the test.
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
    // With the separators of the other kind of machine, too.
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
    for (const std::string line : {"1001", "=A", "x=A", "-1=A", " 5=A", "5 =A", "99999999999=A",
                                   "1000=twice", "1001=\xFF", " "}) {
        SCOPED_TRACE(line);
        Write("a.qxl", "1=1033\n\n1000=00  A\n" + line + "\n1002=00  C\n");
        EXPECT_FALSE(source.Open(Path("a.qxl")));
        EXPECT_NE(source.Error().find("a.qxl, line 4"), std::string::npos) << source.Error();
    }
    for (const std::string name : {"absent.qxl", "", "a.qxl\\deeper.qxl"}) {
        EXPECT_FALSE(source.Open(Path(name)));
        EXPECT_NE(source.Error().find("cannot be read"), std::string::npos) << source.Error();
    }
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
    opens(3081, "British", 2057); // Australia: the first that is English
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

TEST_F(QxlTextSourceTest, LayoutDataSaysWhichFileIsWrong) {
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
