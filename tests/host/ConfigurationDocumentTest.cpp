#include "host/Configuration.h"
#include "host/ErrorText.h"

#include "qxcontrols/keyprog/QXLayeredFuncKeys.h"
#include "qxcontrols/keys/QXKeyboardLayoutData.h"
#include "qxcontrols/pos/QXPos.h"
#include "qxcontrols/readers/QXBarcode.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

namespace qx::host {

namespace {

class DocumentTest : public testing::Test {
protected:
    DocumentTest() {
        layout.SetLayoutPath(QX_LAYOUTS);
        EXPECT_TRUE(layout.OpenLayoutByName("us.qxl"));
    }

    static std::vector<Section*> SectionsOf(const Configuration& configuration) {
        std::vector<Section*> sections;
        for (const auto& section : configuration.Sections())
            sections.push_back(section.get());
        return sections;
    }

    // The faults of the default document with the value at the place replaced.
    [[nodiscard]] std::vector<Fault> FaultsWith(const std::string& place, const Json& value) {
        Json json = configuration.Write(SectionsOf(configuration), KeyboardInfo()).AsJson();
        json[Json::json_pointer(place)] = value;
        return FaultsOf(json.dump());
    }

    [[nodiscard]] std::vector<Fault> FaultsOf(const std::string& text) {
        try {
            configuration.Read(ConfigurationDocument::Parse(text, "test.json"));
        } catch (const Error& error) {
            EXPECT_EQ(error.Kind(), ErrorKind::DocumentInvalid);
            EXPECT_LT(TextOf(error).size(), 700U);
            return error.faults;
        }
        return {};
    }

    static Json Block(int slot, const Json& keys) {
        return {{"slot", slot}, {"keys", keys}, {"sequence", {30}}};
    }
    static Json Keys(const Json& one) { return Json::array({one}); }
    static Json Keys(const Json& one, const Json& other) { return Json::array({one, other}); }

    QXKeyboardLayoutData layout;
    Configuration configuration{Platform(), &layout, nullptr};
};

} // namespace

TEST_F(DocumentTest, EveryPrefixIsRefused) {
    const std::vector<Section*> sections = {
        configuration.Find("commonKeyboard"), configuration.Find("magnetCard"),
        configuration.Find("layeredFuncKeys"), configuration.Find("pos")};
    const std::string text = configuration.Write(sections, KeyboardInfo()).AsJson().dump();
    ASSERT_TRUE(FaultsOf(text).empty());
    for (std::size_t length = 0; length < text.size(); ++length)
        ASSERT_FALSE(FaultsOf(text.substr(0, length)).empty())
            << "the first " << length << " bytes";
}

TEST_F(DocumentTest, FaultsNameTheirPlace) {
    struct Case {
        const char* place;
        Json value;
        Fault fault;
    };
    const Case cases[] = {
        {"/magnetCard/tracks/0/header",
         {30, 31, 32, 300},
         Fault("/magnetCard/tracks/0/header/3", FaultKind::NotACode, 300, 1, 255)},
        {"/magnetCard/tracks/1/header",
         {-1},
         Fault("/magnetCard/tracks/1/header/0", FaultKind::NotACode, -1, 1, 255)},
        {"/magnetCard/tracks/1/header",
         {18446744073709551615ULL},
         Fault("/magnetCard/tracks/1/header/0", FaultKind::NotACode, "18446744073709551615", 1,
               255)},
        {"/magnetCard/tracks/1/header",
         {1.5},
         Fault("/magnetCard/tracks/1/header/0", FaultKind::NotACode, "1.5", 1, 255)},
        {"/magnetCard/tracks/2/terminator",
         {30, 0, 31},
         Fault("/magnetCard/tracks/2/terminator/1", FaultKind::NotACode, 0, 1, 255)},
        {"/magnetCard/tracks/2/terminator", "{30} {0}",
         Fault("/magnetCard/tracks/2/terminator", FaultKind::SequenceWithZero)},
        {"/magnetCard/tracks/3/header", Json(std::vector<int>(33, 7)),
         Fault("/magnetCard/tracks/3/header", FaultKind::SequenceTooLong, 33, 32)},
        {"/magnetCard/tracks/3/terminator", Json(std::vector<int>(33, 7)),
         Fault("/magnetCard/tracks/3/terminator", FaultKind::SequenceTooLong, 33, 32)},
        {"/barcode/readers/1/terminator", Json(std::vector<int>(40, 7)),
         Fault("/barcode/readers/1/terminator", FaultKind::SequenceTooLong, 40, 32)},
        {"/barcode/pages/CommonSettings/flags/3", false,
         Fault("/barcode/pages/CommonSettings/flags/3", FaultKind::FlagNotStored, "true")},
        {"/barcode/pages/EAN/flags/9", true,
         Fault("/barcode/pages/EAN/flags/9", FaultKind::FlagNotStored, "false")},
        {"/barcode/pages/EAN/minSize", 3,
         Fault("/barcode/pages/EAN/minSize", FaultKind::UnknownMember, "\"minSize\"")},
        {"/barcode/pages/Code39/maxSize", -1,
         Fault("/barcode/pages/Code39/maxSize", FaultKind::NotANumber, -1, 0, 255)},
        {"/freeProgKeys/keys", Keys({{"positionCode", 110}, {"sequence", std::vector<int>(33, 7)}}),
         Fault("/freeProgKeys/keys/0/sequence", FaultKind::SequenceTooLong, 33, 32)},
        {"/freeProgKeys/keys", Keys({{"positionCode", 141}, {"sequence", {7}}}),
         Fault("/freeProgKeys/keys/0/positionCode", FaultKind::NotANumber, 141, 0, 140)},
        {"/layeredFuncKeys/guid", "{01234567}",
         Fault("/layeredFuncKeys/guid", FaultKind::NotAnIdentifier, "\"{01234567}\"")},
        {"/layeredFuncKeys/keys",
         Keys({{"layer", 1}, {"key", 2}, {"sequence", std::vector<int>(129, 7)}}),
         Fault("/layeredFuncKeys/keys/0/sequence", FaultKind::SequenceTooLong, 129, 128)},
        {"/layeredFuncKeys/keys",
         Keys({{"layer", 1}, {"key", 2}, {"description", std::string(65, 'x')}}),
         Fault("/layeredFuncKeys/keys/0/description", FaultKind::TextTooLong, 65, 64)},
        {"/layeredFuncKeys/keys", Keys({{"layer", 10}, {"key", 2}, {"sequence", {7}}}),
         Fault("/layeredFuncKeys/keys/0/layer", FaultKind::NotANumber, 10, 0, 9)},
        {"/layeredFuncKeys/keys",
         Keys({{"layer", 1}, {"key", 2}, {"sequence", {7}}},
              {{"layer", 1}, {"key", 2}, {"sequence", {8}}}),
         Fault("/layeredFuncKeys/keys/1", FaultKind::ElementTwice, "\"layer\": 1, \"key\": 2")},
        {"/pos/blocks", Keys(Block(3, {3, 10}), Block(10, {10, 11})),
         Fault("/pos/blocks/1/keys", FaultKind::KeyTwice, "10 (F9)")},
        {"/pos/blocks", Keys(Block(3, {3, 10, 10})),
         Fault("/pos/blocks/0/keys", FaultKind::KeyTwice, "10 (F9)")},
        {"/pos/blocks", Keys(Block(3, {10, 3})),
         Fault("/pos/blocks/0/keys", FaultKind::FirstKeyNotSlot, "3 (F2)")},
        {"/pos/blocks", Keys(Block(3, Json::array())),
         Fault("/pos/blocks/0/keys", FaultKind::FirstKeyNotSlot, "3 (F2)")},
        {"/pos/blocks", Keys(Block(105, {105, 106})),
         Fault("/pos/blocks/0/keys/1", FaultKind::NotANumber, 106, 1, 105)},
        {"/pos/blocks", Keys({{"slot", 3}, {"keys", {3}}, {"sequence", std::vector<int>(32, 7)}}),
         Fault("/pos/blocks/0/sequence", FaultKind::SequenceTooLong, 32, 31)},
        {"/magnetCard/tracks/3/enabled", 1,
         Fault("/magnetCard/tracks/3/enabled", FaultKind::NotAFlag, 1)},
        {"/magnetCard/tracks", Json::array(),
         Fault("/magnetCard/tracks", FaultKind::NotAListOf, "[]", 4)},
        {"/magnetCard/track", true,
         Fault("/magnetCard/track", FaultKind::UnknownMember, "\"track\"")},
        {"/magnetcard", Json::object(),
         Fault("/magnetcard", FaultKind::UnknownMember, "\"magnetcard\"")},
        {"/commonKeyboard", Json::array(), Fault("/commonKeyboard", FaultKind::NotAnObject, "[]")},
        {"/commonKeyboard", Json::object(),
         Fault("/commonKeyboard", FaultKind::MissingMember, "outputDelay")},
        {"/commonKeyboard/outputDelay", 256,
         Fault("/commonKeyboard/outputDelay", FaultKind::NotANumber, 256, 0, 255)},
        {"/keyboard/name", 7, Fault("/keyboard/name", FaultKind::NotAText, 7)},
        {"/version", 2, Fault("/version", FaultKind::UnknownVersion, 2, 1)},
        {"/format", "other", Fault("/format", FaultKind::OtherFormat, "qx-configuration")},
    };
    for (const Case& each : cases) {
        const auto faults = FaultsWith(each.place, each.value);
        ASSERT_FALSE(faults.empty()) << each.place << " = " << each.value;
        EXPECT_EQ(faults, std::vector{each.fault})
            << each.place << " = " << each.value << ": " << ToText(faults);
    }
    EXPECT_EQ(FaultsWith("/magnetCard/tracks/0/header", {300, 0, -1, 1.5}).size(), 4U);
}

TEST_F(DocumentTest, AllFaultsAreReportedAndNothingIsChanged) {
    const std::string before = configuration.Write(SectionsOf(configuration)).ToText();
    Json json = configuration.Write(SectionsOf(configuration)).AsJson();
    json["magnetCard"]["verifyLRC"] = false;
    json["magnetCard"]["tracks"][0]["header"] = {1000};
    json["commonKeyboard"]["outputDelay"] = "six";
    json["commonKeyboard"]["delay"] = 6;
    EXPECT_EQ(FaultsOf(json.dump()).size(), 3U);
    EXPECT_EQ(configuration.Write(SectionsOf(configuration)).ToText(), before);
}

// A document with faults does not change the controls or their display.
TEST_F(DocumentTest, ARefusedDocumentDoesNotChangeTheDisplay) {
    auto& pos = dynamic_cast<QXPos&>(configuration.Find("pos")->Control());
    Json json = configuration.Write(SectionsOf(configuration)).AsJson();
    json["pos"]["blocks"] = Keys(Block(3, {3, 10}));
    ASSERT_TRUE(FaultsOf(json.dump()).empty());
    ASSERT_EQ(pos.lblBlockNum.Caption, "1");
    json["pos"]["blocks"] = Keys(Block(5, {5}), Block(7, {7}));
    json["commonKeyboard"]["outputDelay"] = 256;
    ASSERT_EQ(FaultsOf(json.dump()).size(), 1U);
    EXPECT_EQ(pos.PosData().FindBlockForKey(10), 3);
    EXPECT_EQ(pos.PosData().FindBlockForKey(7), 0);
    EXPECT_EQ(pos.lblBlockNum.Caption, "1");
}

// Whatever a host sets in the controls, the document is valid and reports any loss.
TEST_F(DocumentTest, ADocumentHoldsNothingThatIsRefused) {
    auto& layered =
        dynamic_cast<QXLayeredFuncKeys&>(configuration.Find("layeredFuncKeys")->Control());
    auto& pos = dynamic_cast<QXPos&>(configuration.Find("pos")->Control());
    auto& barcode = dynamic_cast<QXBarcode&>(configuration.Find("barcode")->Control());
    const std::string euro = "\u20AC";
    const std::string beyond = "\U0001F600"; // two UTF-16 units
    layered.Layer(0).SetKeyDesc(0, std::string(64, 'x'));
    layered.Layer(0).SetKeyDesc(1, std::string(63, 'x') + euro + "more");
    layered.Layer(0).SetKeyDesc(2, std::string(63, 'x') + beyond);
    layered.Layer(0).SetKeyDesc(3, std::string("ab\0cd", 5));
    layered.Layer(0).SetKeyDesc(4, "${till}\xFF");
    layered.Layer(0).GetKey(5).SetKeyString(" 30 -1  0300255");
    for (int i = 0; i < 200; ++i)
        layered.Layer(0).GetKey(6).AddByte(static_cast<Integer>(1 + i));
    POSBlock& block = pos.PosData().Block(5);
    block.AddKey(5);
    block.AddKey(2);
    block.SetBlockID(-7);
    block.SetColorID(12);
    barcode.BitPage(BP_CommonSettings).Flag(3).SetValue(false);
    barcode.BitPage(BP_MSI).SetMaxSize(300);

    const ConfigurationDocument written = configuration.Write(SectionsOf(configuration));
    using Lost = std::pair<std::string, Loss::Kind>;
    std::vector<Lost> losses;
    for (const Loss& loss : written.Losses())
        losses.emplace_back(loss.place, loss.kind);
    const std::string keys = "/layeredFuncKeys/keys/";
    EXPECT_EQ(losses, (std::vector<Lost>{{"/barcode/pages/MSI/maxSize", Loss::Kind::NumberLimited},
                                         {keys + "1/description", Loss::Kind::TextCut},
                                         {keys + "2/description", Loss::Kind::TextCut},
                                         {keys + "3/description", Loss::Kind::TextCut},
                                         {keys + "4/description", Loss::Kind::TextCut},
                                         {keys + "5/sequence", Loss::Kind::CodesLeftOut},
                                         {keys + "6/sequence", Loss::Kind::SequenceCut},
                                         {"/pos/blocks/0/blockId", Loss::Kind::NumberLimited},
                                         {"/pos/blocks/0/colorId", Loss::Kind::NumberLimited}}));
    Configuration other(Platform(), &layout, nullptr);
    ASSERT_NO_THROW(other.Read(ConfigurationDocument::Parse(written.ToText(), "written")));
    auto& read = dynamic_cast<QXLayeredFuncKeys&>(other.Find("layeredFuncKeys")->Control());
    EXPECT_EQ(read.Layer(0).GetKeyDesc(0), std::string(64, 'x'));
    EXPECT_EQ(read.Layer(0).GetKeyDesc(1), std::string(63, 'x') + euro);
    EXPECT_EQ(read.Layer(0).GetKeyDesc(2), std::string(63, 'x'));
    EXPECT_EQ(read.Layer(0).GetKeyDesc(3), "ab");
    EXPECT_EQ(read.Layer(0).GetKeyDesc(4), "${till}\uFFFD");
    EXPECT_EQ(read.Layer(0).GetKey(5).Codes(), (std::vector<Integer>{30, 255}));
    EXPECT_EQ(read.Layer(0).GetKey(6).Length(), 128);
    const auto& posRead = dynamic_cast<QXPos&>(other.Find("pos")->Control()).PosData();
    EXPECT_EQ(posRead.FindBlockForKey(5), 2);
}

// The example in the page about documents.
TEST_F(DocumentTest, TheExampleIsADocument) {
    std::ifstream file(QX_LAYOUTS "../docs/documents.md");
    const std::string page((std::istreambuf_iterator<char>(file)), {});
    const std::string fence = "```json\n";
    const std::size_t start = page.find(fence) + fence.size();
    ASSERT_GT(page.size(), start);
    const std::string example = page.substr(start, page.find("```", start) - start);
    for (const Fault& fault : FaultsOf(example))
        ADD_FAILURE() << ToText(fault);
}

TEST_F(DocumentTest, DuplicatesAreRefused) {
    const std::pair<const char*, const char*> cases[] = {
        {R"({"commonKeyboard": {"outputDelay": 6, "outputDelay": 7}})",
         "/commonKeyboard/outputDelay"},
        {R"({"format": "x", "a/b~": [], "format": "x"})", "/format"},
        {R"({"magnetCard": {"tracks": [{"a": [1, 2]}, {}, {"a/b": 1, "a": {}, "a/b": 2}]}})",
         "/magnetCard/tracks/2/a~1b"},
    };
    for (const auto& [text, place] : cases) {
        const auto faults = FaultsOf(text);
        ASSERT_EQ(faults.size(), 1U);
        EXPECT_EQ(faults[0].place, place);
        EXPECT_EQ(faults[0].kind, FaultKind::GivenTwice);
    }
}

TEST_F(DocumentTest, ANumberBeyondAnyTypeIsAnError) {
    const auto faults = FaultsOf(R"({"format": "qx-configuration", "version": 1,
                                     "commonKeyboard": {"outputDelay": 6e999}})");
    ASSERT_EQ(faults.size(), 1U);
    EXPECT_EQ(faults[0].arguments, std::vector<std::string>{"6e999"});
}

TEST_F(DocumentTest, NestingIsLimited) {
    const auto faultAt = [&](std::size_t depth) {
        return FaultsOf(std::string(depth, '[') + std::string(depth, ']')).at(0);
    };
    EXPECT_EQ(faultAt(64).kind, FaultKind::NotAnObject);
    for (const std::size_t depth : {std::size_t{65}, std::size_t{300000}})
        EXPECT_EQ(faultAt(depth), Fault("", FaultKind::TooDeep, 64));
}

// However many faults there are, the report stays short.
TEST_F(DocumentTest, FaultsWithoutEndAreBounded) {
    Json json = configuration.Write(SectionsOf(configuration)).AsJson();
    json["magnetCard"]["tracks"][1]["header"] = std::vector<int>(200000, 999);
    auto faults = FaultsOf(json.dump());
    ASSERT_EQ(faults.size(), 1001U);
    EXPECT_EQ(faults[999].place, "/magnetCard/tracks/1/header/999");
    EXPECT_EQ(faults[1000].kind, FaultKind::MoreFaults);
    faults = FaultsWith("/magnetCard/" + std::string(1000000, 'k'), 1);
    ASSERT_EQ(faults.size(), 1U);
    EXPECT_LT(faults[0].place.size() + WordsOf(faults[0]).size(), 400U);

    const std::string much(1000000, '9');
    const std::string document = R"({"format": "qx-configuration", "version": 1, )";
    for (const std::string& text :
         {document + R"("commonKeyboard": {"outputDelay": )" + much + "}}",
          document + '"' + much + "\x01", document + '"' + much + R"(": 1})",
          '{' + ('"' + much + R"(": 1, ")") + much + R"(": 2})"}) {
        faults = FaultsOf(text);
        ASSERT_EQ(faults.size(), 1U);
        EXPECT_LT(faults[0].place.size() + WordsOf(faults[0]).size(), 700U);
    }

    std::string members = "{";
    for (int i = 0; i < 10001; ++i)
        members += "\"" + std::to_string(i) + "\": 1, ";
    EXPECT_EQ(FaultsOf(members).at(0), Fault("/10000", FaultKind::TooManyMembers, 10000));
    EXPECT_EQ(FaultsOf(std::string((4U << 20U) + 1, ' ')).at(0),
              Fault("", FaultKind::TooManyBytes, 4194304));

    Variables variables({{"long", std::string(60000, 'x')}});
    std::string bomb;
    for (int i = 0; i < 50000; ++i)
        bomb += "${long}";
    EXPECT_THROW((void)variables.Fill(bomb), json::FaultError);
    EXPECT_EQ(variables.Fill("${long}").size(), 60000U);
}

// An invalid document may contain any bytes; the messages about it are still valid UTF-8.
TEST_F(DocumentTest, MessagesAreText) {
    std::string wide; // a cut at any byte count splits "€" in one of these texts
    for (int i = 0; i < 3; ++i, wide += 'x') {
        std::string euros = wide;
        for (int k = 0; k < 30; ++k)
            euros += "\u20AC";
        const auto faults = FaultsWith("/commonKeyboard/outputDelay", euros);
        ASSERT_EQ(faults.size(), 1U);
        EXPECT_NO_THROW((void)Json(WordsOf(faults[0])).dump()) << WordsOf(faults[0]);
    }
    const auto faults = FaultsWith("/commonKeyboard/a\tb", 1);
    ASSERT_EQ(faults.size(), 1U);
    EXPECT_EQ(WordsOf(faults[0]), R"(unknown member "a\tb")");
    for (const std::string_view wide16 :
         {std::string_view("\xFF\xFE{\0}\0", 6), std::string_view("\xFE\xFF\0{\0}", 6),
          std::string_view("{\0}\0", 4), std::string_view("\0{\0}", 4)})
        EXPECT_EQ(WordsOf(FaultsOf(std::string(wide16)).at(0)), "the text is UTF-16, not UTF-8");
    for (const Fault& fault : FaultsOf("{\"format\": \"\xFF\"}"))
        EXPECT_EQ(PrettyText(WordsOf(fault)).find('\xFF'), std::string::npos);
}

// The keyboard that a document is for may have another layout than the current one.
TEST_F(DocumentTest, WithoutTheKeyboardAnyKeyIsProgrammable) {
    const auto withKeys = [](const char* section, std::initializer_list<int> keys) {
        Json list = Json::array();
        for (const int key : keys)
            list.push_back({{"positionCode", key}, {"sequence", {30}}});
        return ConfigurationDocument::Parse(
            Json({{"format", "qx-configuration"}, {"version", 1}, {section, {{"keys", list}}}})
                .dump(),
            "test.json");
    };
    Configuration any{Platform(), &layout, nullptr, LayoutUse::Captions};
    const auto keysOf3 = withKeys("freeProgKeys", {1, 61, 140});
    EXPECT_THROW(configuration.Read(keysOf3), Error);
    const auto settings = any.List(any.Read(keysOf3));
    ASSERT_EQ(settings.size(), 3U);
    EXPECT_EQ(ToText(settings[1].name), "Free keys › Key 61 (" + layout.KeyCaption(61) + ")");
    EXPECT_NO_THROW(any.Read(withKeys("funcKeys4620", {66, 126})));
    EXPECT_THROW(any.Read(withKeys("funcKeys4620", {65})), Error);
    EXPECT_THROW(any.Read(withKeys("freeProgKeys", {0})), Error);
    EXPECT_THROW(any.Read(withKeys("freeProgKeys", {7, 7})), Error);
}

TEST_F(DocumentTest, WritingAndReadingGivesTheSameSettings) {
    Json json = configuration.Write(SectionsOf(configuration)).AsJson();
    json["magnetCard"]["tracks"][2]["header"] = {30, 158};
    json["magnetCard"]["sendImmediate"] = false;
    json["commonKeyboard"]["outputDelay"] = 255;
    ASSERT_TRUE(FaultsOf(json.dump()).empty());
    EXPECT_EQ(configuration.Write(SectionsOf(configuration)).AsJson(), json);

    Configuration other{Platform(), &layout, nullptr};
    const auto differences =
        Compare(other.List(SectionsOf(other)), configuration.List(SectionsOf(configuration)));
    ASSERT_EQ(differences.size(), 4U); // the last one is the identifier, new in each control
    EXPECT_EQ(ToText(differences[0]), "Keyboard › Output delay: 6 → 255");
    EXPECT_EQ(ToText(differences[2].name), "Magnetic card reader › Track 3 › Prefix");
    EXPECT_EQ(differences[2].from.kind, SettingValue::Kind::Empty);
}

} // namespace qx::host
