// The bytes for each setting of a document, written out by hand from the keyboard's memory map:
// reading and writing documents share one description, which could be wrong in both directions.
#include "host/Session.h"
#include "host/WritePlan.h"
#include "qxcontrols/keys/QXKeyboardLayoutData.h"
#include "support/FakeDriver.h"

#include <gtest/gtest.h>

namespace qx::host {

namespace {

constexpr Long kBarcode = 0x0100, kBarcodeHeaders = 0x0200, kMagnet = 0x0300;
constexpr Long kMagnetHeaders = 0x0400, kFreeKeys = 0x1000, kPos = 0x3000, kLayers = 0x8000;
constexpr Long kGuid = 0x0600, kDescriptions = 70000;

class DocumentBytes : public testing::Test {
protected:
    DocumentBytes() {
        layout.SetLayoutPath(QX_LAYOUTS);
        EXPECT_TRUE(layout.OpenLayoutByName("us.qxl"));
        driver.directory = {
            {MODULE_BARCODE_CONFIG, kBarcode},         {MODULE_BARCODE_HEADERS, kBarcodeHeaders},
            {MODULE_MAGNET_CONFIG, kMagnet},           {MODULE_MAGNET_HEADERS, kMagnetHeaders},
            {MODULE_FREEPROGRAMMABLE_KEYS, kFreeKeys}, {MODULE_POS, kPos},
            {MODULE_LAYERED_FUNCKEYS, kLayers},        {MODULE_GUID, kGuid}};
        session.Open();
        document = Default().AsJson();
        document["layeredFuncKeys"]["guid"] = "{00000000-0000-0000-0000-000000000000}";
        usual = BytesOf(document);
    }

    ConfigurationDocument Default() {
        Configuration configuration(Platform(), &layout, nullptr);
        return configuration.Write(session.SectionsIn(configuration));
    }

    // The keyboard's bytes after downloading the complete document.
    KeyboardContent BytesOf(const Json& json) {
        Configuration configuration(Platform(), &layout, nullptr);
        Configuration scratch(Platform(), &layout, nullptr);
        (void)session.SectionsIn(configuration);
        const auto read =
            configuration.Read(ConfigurationDocument::Parse(json.dump(), "test.json"));
        return Planner(session.ReadContent(scratch), scratch)
            .ForSettings(read, {.full = true})
            .after;
    }

    // The setting changes exactly these bytes of the defaults.
    void Expect(const std::string& place, const Json& value, Long address,
                const std::string& bytes) {
        Json changed = document;
        changed[Json::json_pointer(place)] = value;
        KeyboardContent expected = usual;
        expected.Overwrite(address, bytes);
        const KeyboardContent found = BytesOf(changed);
        ASSERT_FALSE(found.HoldsSame(usual)) << place << " changes nothing";
        for (const ByteRange& range : Differences(expected, found, 1))
            ADD_FAILURE() << place << ": unexpected bytes from " << range.address << " on";
    }
    void ExpectByte(const std::string& place, const Json& value, Long address, int byte) {
        Expect(place, value, address, std::string(1, static_cast<char>(byte)));
    }

    test::FakeDriver driver;
    QXKeyboardLayoutData layout;
    Session session{driver};
    Json document;
    KeyboardContent usual;
};

} // namespace

TEST_F(DocumentBytes, OfTheKeyboardAndTheMagneticReader) {
    EXPECT_EQ(usual.Bytes(kMagnet + 5, 3), "\xFF\x0F\x7E");
    ExpectByte("/commonKeyboard/outputDelay", 201, kMagnet, 201);
    ExpectByte("/magnetCard/sendImmediate", false, kMagnet + 7, 0x6E);
    ExpectByte("/magnetCard/verifyLRC", false, kMagnet + 7, 0x5E);
    ExpectByte("/magnetCard/verifyLastChar", false, kMagnet + 7, 0x3E);
    for (int track = 0; track < 4; ++track) {
        const std::string place = "/magnetCard/tracks/" + std::to_string(track);
        ExpectByte(place + "/headerEnabled", false, kMagnet + 5, 0xFF ^ (0x01 << 2 * track));
        ExpectByte(place + "/terminatorEnabled", false, kMagnet + 5, 0xFF ^ (0x02 << 2 * track));
        ExpectByte(place + "/enabled", false, kMagnet + 6, 0x0F ^ (0x01 << track));
        Expect(place + "/header", {30, 158}, kMagnetHeaders + 64 * track, "\x1E\x9E");
        Expect(place + "/terminator", {31}, kMagnetHeaders + 64 * track + 32, "\x1F");
    }
}

TEST_F(DocumentBytes, OfTheBarcodeReader) {
    const std::string options("\xCA\x81\x8D\xEF\xEF\xE4\xE0\x6F\x01");
    EXPECT_EQ(usual.Bytes(kBarcode + 41, 9), options);
    EXPECT_EQ(usual.Bytes(kBarcode + 36, 5), std::string("\x82\0\0\0\x30", 5));
    const std::pair<const char*, Long> sizes[] = {
        {"CodaBar", 0},        {"Code39", 2},   {"Code25_Overlapped", 8}, {"Code25_Industrial", 10},
        {"MSI", 12},           {"Code11", 14},  {"Code93", 16},           {"Code128", 18},
        {"Code25_Matrix", 24}, {"Plessey", 26}, {"Code16K", 28},
    };
    for (const auto& [page, offset] : sizes) {
        const std::string place = std::string("/barcode/pages/") + page;
        ExpectByte(place + "/minSize", 221, kBarcode + offset, 221);
        ExpectByte(place + "/maxSize", 222, kBarcode + offset + 1, 222);
    }
    struct Bits {
        Long offset;
        const char* page;
        std::vector<int> flags; // starting with the highest of these bits
        int highest;            // bit
    };
    const Bits all[] = {
        {41, "CodaBar", {0, 1, 2, 3}, 3},
        {42, "Code39", {0, 1, 2, 3, 4, 5, 6}, 7},
        {42, "Code93", {0}, 0},
        {43, "Code25_Overlapped", {0, 1, 2, 3}, 7},
        {43, "Code25_Industrial", {0, 1, 2}, 3},
        {43, "Code25_Matrix", {0}, 0},
        {44, "UPC", {0, 1, 2, 3, 4, 5, 6, 7}, 7},
        {45, "EAN", {0, 1, 2, 3}, 7},
        {45, "UPC", {8, 9}, 3},
        {45, "EAN", {4, 5}, 1},
        {46, "Code128", {0, 1, 2, 3, 4}, 7},
        {46, "Code16K", {0, 1, 2}, 2},
        {47, "MSI", {0}, 7},
        {47, "Plessey", {0}, 6},
        {47, "Code11", {0, 1}, 5},
        {48, "CommonSettings", {0, 2, 1}, 6},
        {49, "CommonSettings", {4}, 0},
    };
    for (const Bits& bits : all)
        for (std::size_t i = 0; i < bits.flags.size(); ++i) {
            const std::string place = std::string("/barcode/pages/") + bits.page + "/flags/" +
                                      std::to_string(bits.flags[i]);
            const auto byte =
                static_cast<Byte>(options[static_cast<std::size_t>(bits.offset) - 41]);
            ExpectByte(place, !document[Json::json_pointer(place)].get<bool>(),
                       kBarcode + bits.offset, byte ^ (1 << (bits.highest - static_cast<int>(i))));
        }
    for (int reader = 0; reader < 2; ++reader) {
        const std::string place = "/barcode/readers/" + std::to_string(reader);
        ExpectByte(place + "/headerEnabled", false, kBarcode + 48, 0x6F ^ (0x01 << 2 * reader));
        ExpectByte(place + "/terminatorEnabled", false, kBarcode + 48, 0x6F ^ (0x02 << 2 * reader));
        Expect(place + "/header", {40, 41}, kBarcodeHeaders + 64 * reader, "\x28\x29");
        Expect(place + "/terminator", {42}, kBarcodeHeaders + 64 * reader + 32, "\x2A");
    }
}

TEST_F(DocumentBytes, OfTheKeys) {
    Long slot = 0; // Esc: one slot for each programmable key before it
    for (Long key = 1; key < 110; ++key)
        slot += layout.KeySupport(key) == KEYMODE_PROG ? 32 : 0;
    Expect("/freeProgKeys/keys", {{{"positionCode", 110}, {"sequence", {255, 1}}}},
           kFreeKeys + slot, "\xFF\x01");
    Expect("/layeredFuncKeys/keys", {{{"layer", 3}, {"key", 5}, {"sequence", {30, 158, 31}}}},
           kLayers + (3 * 24 + 5) * 128, "\x1E\x9E\x1F");
    Expect("/layeredFuncKeys/keys", {{{"layer", 9}, {"key", 23}, {"description", "A\u00F1\u20AC"}}},
           kDescriptions + 239 * 128, std::string("A\0\xF1\0\xAC\x20", 6));
    Expect("/layeredFuncKeys/guid", "{01234567-89AB-CDEF-1032-547698BADCFE}", kGuid,
           "\x67\x45\x23\x01\xAB\x89\xEF\xCD\x10\x32\x54\x76\x98\xBA\xDC\xFE");
    EXPECT_EQ(usual.Bytes(kPos, 64),
              "\xFF" + std::string(31, '\0') + "\xFF" + std::string(31, '\0'));
    std::string records = usual.Bytes(kPos, 3360);
    records.replace(2 * 32, 2, "\x01\x1E");                       // key 3, the major one of group 1
    records.replace(9 * 32, 1, "\x01");                           // key 10, a member
    records.replace(4 * 32, 4, std::string("\0\x20\x21\x22", 4)); // key 5, a single one
    records.replace(104 * 32, 1, "\x03");
    records.replace(103 * 32, 2, "\x03\x1F"); // keys 104 and 105, group 3
    Expect("/pos/blocks",
           {{{"slot", 104}, {"keys", {104, 105}}, {"sequence", {31}}},
            {{"slot", 3}, {"keys", {3, 10}}, {"sequence", {30}}, {"blockId", 9}, {"colorId", 2}},
            {{"slot", 5}, {"keys", {5}}, {"sequence", {32, 33, 34}}}},
           kPos, records);
}

} // namespace qx::host
