#include "host/SheetVisitor.h"
#include "host/sections/ReaderFields.h"
#include "host/sections/Sections.h"

#include "qxcontrols/readers/BarcodeBlocks.h"
#include "qxcontrols/readers/QXBarcode.h"

namespace qx::host {

namespace {

constexpr Area kAreas[] = {
    {MODULE_BARCODE_CONFIG, kBarcodeConfigSize, 0},
    {MODULE_BARCODE_HEADERS, kBarcodeHeadersSize, kTrackSlotSize},
};
constexpr SectionInfo kInfo = {"barcode", "Barcode reader", kAreas};

struct PageLabel {
    BarcodePage page;
    std::string_view label;
};

constexpr PageLabel kPages[] = {
    {BP_CommonSettings, "Common settings"},
    {BP_EAN, "EAN"},
    {BP_UPC, "UPC"},
    {BP_Code39, "Code 39"},
    {BP_Code128, "Code 128"},
    {BP_CodaBar, "Codabar"},
    {BP_Code25_Overlapped, "Interleaved 2 of 5"},
    {BP_Code25_Industrial, "Industrial 2 of 5"},
    {BP_Code25_Matrix, "Matrix 2 of 5"},
    {BP_Code93, "Code 93"},
    {BP_Code11, "Code 11"},
    {BP_Code16K, "Code 16K"},
    {BP_MSI, "MSI"},
    {BP_Plessey, "Plessey"},
};
static_assert(std::size(kPages) == kBarcodeOptionPages);

class BarcodeSection : public SectionOf<QXBarcode> {
public:
    using SectionOf::SectionOf;

    [[nodiscard]] bool MarksEdits() const override { return false; } // only some

    void Visit(FieldVisitor& fields) override {
        fields.Object({"pages", ""}, [&] {
            for (const PageLabel& page : kPages)
                fields.Object({kBarcodePageNames[static_cast<std::size_t>(page.page)], page.label},
                              [&] { VisitPage(fields, page.page); });
        });
        fields.Array(
            {"readers", "Reader"}, kBarcodeReaders, 1, [&](const Field& field, std::size_t index) {
                fields.Object(field, [&] {
                    VisitFraming(fields, Control().Reader(static_cast<Integer>(index + 1)));
                });
            });
    }

    void VisitSheet(SheetVisitor& sheet) const override {
        for (Integer i = 1; i <= kBarcodeReaders; ++i)
            sheet.Reader(i, Control().Reader(i));
    }

private:
    void VisitPage(FieldVisitor& fields, BarcodePage ePage) {
        BarcodeOptionPage& page = Control().BitPage(ePage);
        if (page.SupportsSizing()) {
            page.SetMinSize(fields.Number({"minSize", "Shortest code"}, page.MinSize(), 0, 255));
            page.SetMaxSize(fields.Number({"maxSize", "Longest code"}, page.MaxSize(), 0, 255));
        }
        fields.Array({"flags", "Option"}, BarcodeOptionPage::kFlags, 0,
                     [&](const Field& field, std::size_t index) {
                         VisitFlag(fields, field, ePage, static_cast<Integer>(index));
                     });
    }

    // In a document, a flag that the keyboard does not store must have its default.
    void VisitFlag(FieldVisitor& fields, Field field, BarcodePage ePage, Integer nFlag) {
        OptionBool& flag = Control().BitPage(ePage).Flag(nFlag);
        field.stored = HasBarcodeConfigBit(ePage, nFlag);
        const bool isFree = field.stored || fields.IsExact();
        const bool present = isFree ? flag.Value() : DefaultOf(ePage, nFlag);
        const bool value = fields.Flag(field, present);
        if (isFree || value == present)
            flag.SetValue(value);
        else
            fields.Refuse(field, {"", json::FaultKind::FlagNotStored, present ? "true" : "false"});
    }

    static bool DefaultOf(BarcodePage ePage, Integer nFlag) {
        static const BarcodeSettings defaults = [] {
            BarcodeSettings settings;
            SetBarcodeDefaults(settings);
            return settings;
        }();
        return defaults.pages[static_cast<std::size_t>(ePage)].Flag(nFlag).Value();
    }
};

} // namespace

std::unique_ptr<Section> MakeBarcodeSection(const Platform& platform) {
    return std::make_unique<BarcodeSection>(kInfo, platform);
}

} // namespace qx::host
