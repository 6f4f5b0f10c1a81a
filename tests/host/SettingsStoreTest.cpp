#include "host/SettingsStore.h"

#include "files/Files.h"
#include "host/ErrorText.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

namespace qx::host {

namespace {

class SettingsStoreTest : public testing::Test {
protected:
    void Write(const std::string& text) const { files::WriteFileAtomically(file, text); }

    test::TempFolder folder;
    std::filesystem::path file = folder / "preferences.ini";
};

} // namespace

// Each of two programs has read all values, and then stores all of its own.
TEST_F(SettingsStoreTest, ProgramsThatWriteAtTheSameTimeKeepEachOthersValues) {
    Write("[Colours]\nProgrammed=1\nEmpty=2\nCurrent=3\n");
    const char* const names[] = {"Programmed", "Empty", "Current"};
    SettingsStore first(file);
    SettingsStore second(file);
    for (SettingsStore* store : {&first, &second}) {
        store->SetPath("Colours");
        for (const char* name : names)
            (void)store->ReadNumber(name, 0);
    }
    const auto store = [&](SettingsStore& settings, Long programmed, Long current) {
        settings.WriteNumber("Programmed", programmed);
        settings.WriteNumber("Empty", 2);
        settings.WriteNumber("Current", current);
        settings.Flush();
    };
    store(first, 11, 3);
    store(second, 1, 33);
    SettingsStore third(file);
    third.SetPath("Colours");
    EXPECT_EQ(third.ReadNumber("Programmed", 0), 11);
    EXPECT_EQ(third.ReadNumber("Empty", 0), 2);
    EXPECT_EQ(third.ReadNumber("Current", 0), 33);
}

// A program that runs for hours holds nothing up.
TEST_F(SettingsStoreTest, IsLockedWhileItStoresAndNoLonger) {
    SettingsStore store(file);
    store.SetPath("Colours");
    const auto isFree = [&] { return files::FileLock(file.string() + ".writing").TryLock(); };
    store.WriteNumber("Programmed", 5);
    EXPECT_EQ(store.ReadNumber("Programmed", 0), 5) << "it is this program's value already";
    EXPECT_TRUE(isFree());
    EXPECT_FALSE(std::filesystem::exists(file));
    store.Flush();
    EXPECT_TRUE(isFree());
    EXPECT_EQ(SettingsStore(file).Location(), file.string());
    EXPECT_NE(files::ReadFile(file).find("Programmed=5"), std::string::npos);

    // Values that could not be stored are stored the next time.
    const auto folderOf = folder / "share";
    SettingsStore away(folderOf / "preferences.ini");
    away.SetPath("Colours");
    away.WriteNumber("Empty", 7);
    files::WriteFileAtomically(folderOf, "a file in place of the folder");
    EXPECT_THROW(away.Flush(), Error);
    std::filesystem::remove(folderOf);
    away.Flush();
    EXPECT_NE(files::ReadFile(folderOf / "preferences.ini").find("Empty=7"), std::string::npos);
}

TEST_F(SettingsStoreTest, ADamagedFileIsKeptWhenValuesAreStored) {
    const std::string valid = "[Colours]\nProgrammed=1\n";
    const std::string damages[] = {
        valid + "no setting at all\n",
        "[colours]\nProgrammed\n",
        valid + std::string("\x01\x7F=\xFE\xA5\0\n=\x02", 9),
    };
    int number = 0;
    for (const std::string& text : damages) {
        Write(text);
        SettingsStore store(file);
        SettingsStore other(file);
        EXPECT_TRUE(store.IsDamaged()) << text;
        for (SettingsStore* each : {&store, &other}) {
            each->SetPath("Colours");
            EXPECT_EQ(each->ReadNumber("Programmed", 7), 7);
        }
        EXPECT_EQ(files::ReadFile(file), text) << "nothing is stored yet";
        store.WriteNumber("Programmed", 8);
        store.Flush();
        const std::string expected =
            "preferences.ini.damaged" + (++number == 1 ? "" : std::to_string(number));
        EXPECT_EQ(store.DamagedFile().filename(), expected);
        EXPECT_EQ(files::ReadFile(folder / expected), text);
        EXPECT_EQ(store.ReadNumber("Programmed", 7), 8);
        other.WriteNumber("Empty", 9);
        other.Flush();
        EXPECT_EQ(other.DamagedFile(), "") << "the file is whole again";
        EXPECT_EQ(other.ReadNumber("Programmed", 7), 8);
    }
}

TEST_F(SettingsStoreTest, WhatIsNoFileOfPreferencesStaysAsItIs) {
    std::filesystem::create_directory(file);
    const auto kindOf = [&] {
        try {
            SettingsStore{file};
        } catch (const Error& error) {
            EXPECT_EQ(error.place.file, file.string());
            return error.Kind();
        }
        return ErrorKind::Usage;
    };
    EXPECT_EQ(kindOf(), ErrorKind::FileFailed);
    EXPECT_TRUE(std::filesystem::is_directory(file));
    std::filesystem::remove(file);

    Write("[Colours]\nProgrammed=1\n");
    std::filesystem::permissions(file, std::filesystem::perms::none);
    bool isReadable = true; // as it always is for the system's administrator
    try {
        (void)files::ReadFile(file);
    } catch (const std::exception&) {
        isReadable = false;
    }
    if (!isReadable) {
        EXPECT_EQ(kindOf(), ErrorKind::FileFailed);
    }
    EXPECT_TRUE(std::filesystem::exists(file));
    std::filesystem::permissions(file, std::filesystem::perms::owner_all);

    // Somebody else's file can be read, and shows the defaults.
    const std::string foreign[] = {std::string("QXKEYB01\0\x01[Colours]", 19), "{\"Colours\": 1}\n",
                                   "# of a shell\nProgrammed=1\n", "[Other]\n[Coloursx]\n"};
    for (const std::string& text : foreign) {
        Write(text);
        SettingsStore store(file);
        store.SetPath("Colours");
        EXPECT_EQ(store.ReadNumber("Programmed", 7), 7);
        store.WriteNumber("Programmed", 8);
        EXPECT_THROW(store.Flush(), Error) << text;
        EXPECT_EQ(files::ReadFile(file), text);
    }
    const auto count = std::distance(std::filesystem::directory_iterator(folder / "."), {});
    EXPECT_EQ(count, 1) << "there is nothing but the file";
}

// Remarks, blank lines and other programs' groups stay, as do the ends of lines.
TEST_F(SettingsStoreTest, OnlyTheLinesOfChangedValuesChange) {
    Write("; of the till\r\n[Colours]\r\nProgrammed = 1\r\n\r\n[Other]\r\nText=\"a;b\"\r\n");
    SettingsStore store(file);
    store.SetPath("Colours");
    store.WriteNumber("Programmed", 5);
    store.WriteNumber("Deep\\Blue", 6);
    store.Flush();
    EXPECT_EQ(files::ReadFile(file), "; of the till\r\n[Colours]\r\nProgrammed =5\r\n"
                                     "Deep%5CBlue=6\r\n\r\n[Other]\r\nText=\"a;b\"\r\n");
}

// Every byte comes back, whatever it means in an INI file.
TEST_F(SettingsStoreTest, TextsComeBackAsTheyWereWritten) {
    const std::string texts[] = {"",
                                 " blanks ",
                                 "a, b;c=d",
                                 "@Invalid()",
                                 "C:\\tills\\7\\",
                                 "\"\"",
                                 std::string("\0\x01\x02"
                                             "1\n\r\t",
                                             7),
                                 "Gr\xC3\xB6\xC3\x9F"
                                 "e"};
    for (const std::string& text : texts) {
        std::filesystem::remove(file);
        SettingsStore store(file);
        store.SetPath("Texts\\Deep");
        store.WriteString("One", text);
        store.Flush();
        SettingsStore again(file);
        again.SetPath("Texts\\Deep");
        EXPECT_EQ(again.ReadString("One", "-"), text) << files::ReadFile(file);
        EXPECT_FALSE(again.IsDamaged()) << files::ReadFile(file);
    }
    Write("[Texts]\nDeep\\One=\"a;b, \\\"c\\\" \\x41\\n\"\nDeep\\Name%20of%20it=@home\n"
          "Deep\\Long=one\\\n two\n");
    SettingsStore store(file);
    store.SetPath("Texts\\Deep");
    EXPECT_EQ(store.ReadString("One", ""), "a;b, \"c\" A\n");
    EXPECT_EQ(store.ReadString("Name of it", ""), "@home");
    EXPECT_EQ(store.ReadString("Long", ""), "one two");
}

TEST_F(SettingsStoreTest, WhatPeopleWriteIsUnderstood) {
    Write("[Options]\nYes=True\nNo=off\nHexadecimal=0x8000000F\nSigned=-5\nUnsigned=4294967295\n"
          "Blanks=  12 \nWord=many\nTooLarge=4294967296\nList=a, b.json\nEmpty=\n"
          "Umlaut=Gr\xC3\xB6\xC3\x9F"
          "e\n");
    SettingsStore store(file);
    ASSERT_FALSE(store.IsDamaged());
    store.SetPath("Options");
    const std::pair<const char*, Long> numbers[] = {
        {"Yes", -1},    {"No", 0},        {"Hexadecimal", static_cast<Long>(0x8000000FU)},
        {"Signed", -5}, {"Unsigned", -1}, {"Blanks", 12},
        {"Word", 77},   {"TooLarge", 77}, {"Missing", 77}};
    for (const auto& [name, number] : numbers)
        EXPECT_EQ(store.ReadNumber(name, 77), number) << name;
    EXPECT_EQ(store.ReadString("List", ""), "a, b.json");
    EXPECT_EQ(store.ReadString("Signed", ""), "-5");
    store.WriteNumber("New", 5);
    EXPECT_EQ(store.ReadString("New", ""), "5") << "before it is stored as after it";
    EXPECT_EQ(store.ReadString("Empty", "default"), "");
    EXPECT_EQ(store.ReadString("Umlaut", ""), "Größe");
}

// A program that stores all of its values repairs those that it could not read.
TEST_F(SettingsStoreTest, DefaultsReplaceWhatCannotBeRead) {
    Write("[Options]\nWord=many\nHexadecimal=0x6\n");
    SettingsStore store(file);
    store.SetPath("Options");
    for (const char* name : {"Word", "Hexadecimal"}) {
        EXPECT_EQ(store.ReadNumber(name, 6), 6);
        store.WriteNumber(name, 6);
    }
    store.Flush();
    const std::string text = files::ReadFile(file);
    EXPECT_NE(text.find("Word=6"), std::string::npos) << text;
    EXPECT_NE(text.find("Hexadecimal=0x6"), std::string::npos) << text;
}

TEST_F(SettingsStoreTest, NamesAreFoundWhateverTheirCase) {
    Write("[options]\nPROGRAMMED=1\nEmpty=2\n");
    SettingsStore store(file);
    store.SetPath("OPTIONS");
    EXPECT_EQ(store.ReadNumber("Programmed", 0), 1);
    EXPECT_EQ(store.ReadNumber("empty", 0), 2);
    store.WriteNumber("Programmed", 5);
    store.WriteNumber("EMPTY", 2);
    store.WriteNumber("New", 7);
    EXPECT_EQ(store.ReadNumber("programmed", 0), 5);
    // Another program has stored the new value meanwhile, in its own spelling.
    Write("[options]\nPROGRAMMED=1\nEmpty=3\nNEW=6\n");
    store.Flush();
    SettingsStore again(file);
    again.SetPath("options");
    EXPECT_EQ(again.ReadNumber("new", 0), 7);
    EXPECT_EQ(again.ReadNumber("Empty", 0), 3) << "it was written as it had been read";
    const std::string text = files::ReadFile(file);
    EXPECT_NE(text.find("PROGRAMMED=5"), std::string::npos) << text;
    EXPECT_EQ(text.find("Programmed"), std::string::npos) << text;
    EXPECT_EQ(text.find("New"), std::string::npos) << text;
}

TEST_F(SettingsStoreTest, ANewUserHasNoFolderYet) {
    file = folder / "new" / "user" / "preferences.ini";
    SettingsStore store(file);
    EXPECT_FALSE(std::filesystem::exists(file.parent_path())); // reading makes nothing
    store.SetPath("Files");
    store.WriteString("Last", "a, b \"c\".json");
    store.Flush();
    SettingsStore again(file);
    again.SetPath("Files");
    EXPECT_EQ(again.ReadString("Last", ""), "a, b \"c\".json");
}

} // namespace qx::host
