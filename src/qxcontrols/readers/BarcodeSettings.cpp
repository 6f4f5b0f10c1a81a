#include "qxcontrols/readers/BarcodeSettings.h"

#include <string_view>

namespace qx {

namespace {

struct PageConstants {
    BarcodePage page;
    std::string_view flags; // the flags' defaults, starting with flag 0: T on, F off
    bool supportsSizing = false;
    Integer limitMinSize = 0;
    Integer limitMaxSize = 0;
};

constexpr PageConstants kPages[] = {
    {BP_CommonSettings, "TFTTT"},
    {BP_EAN, "TTTFTT"},
    {BP_UPC, "TTTFTTTTTT"},
    {BP_Code39, "TFFFFFF", true, 1, 48},
    {BP_Code128, "TTTFF", true, 0, 128},
    {BP_CodaBar, "TFTF", true, 1, 60},
    {BP_Code25_Overlapped, "TFFF", true, 4, 80},
    {BP_Code25_Industrial, "TTF", true, 3, 48},
    {BP_Code25_Matrix, "T", true, 3, 48},
    {BP_Code93, "T", true, 1, 64},
    {BP_Code11, "TF", true, 3, 64},
    {BP_Code16K, "TFF", true, 0, 154},
    {BP_MSI, "T", true, 3, 60},
    {BP_Plessey, "T", true, 3, 60},
};

BarcodeOptionPage& PageOf(BarcodeSettings& settings, const PageConstants& constants) {
    return settings.pages[static_cast<std::size_t>(constants.page)];
}

} // namespace

void SetBarcodeLimits(BarcodeSettings& settings) {
    for (const PageConstants& constants : kPages) {
        BarcodeOptionPage& page = PageOf(settings, constants);
        page.SetSupportsSizing(constants.supportsSizing);
        page.SetLimitMinSize(constants.limitMinSize);
        page.SetLimitMaxSize(constants.limitMaxSize);
    }
}

void SetBarcodeDefaults(BarcodeSettings& settings) {
    for (const PageConstants& constants : kPages) {
        BarcodeOptionPage& page = PageOf(settings, constants);
        if (page.SupportsSizing()) {
            page.SetMinSize(page.LimitMinSize());
            page.SetMaxSize(page.LimitMaxSize());
        }
        Integer nID = 0;
        for (const char flag : constants.flags)
            page.Flag(nID++).SetValue(flag == 'T');
    }
    for (MagneticTrack& reader : settings.readers)
        SetTrackDefaults(reader);
}

} // namespace qx
