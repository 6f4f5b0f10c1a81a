#include "host/SheetVisitor.h"
#include "host/sections/ReaderFields.h"
#include "host/sections/Sections.h"

#include "qxcontrols/readers/QXMagnetCard.h"
#include "qxcontrols/readers/TrackSlots.h"

namespace qx::host {

namespace {

constexpr Area kAreas[] = {
    {MODULE_MAGNET_HEADERS, kMagneticHeadersSize, kTrackSlotSize},
    {.module = MODULE_MAGNET_CONFIG,
     .size = kMagneticSwitchesSize,
     .slotSize = 0,
     .offset = kMagneticSwitchesOffset},
};
constexpr SectionInfo kInfo = {"magnetCard", "Magnetic card reader", kAreas};

class MagnetCardSection : public SectionOf<QXMagnetCard> {
public:
    using SectionOf::SectionOf;

    void Visit(FieldVisitor& fields) override {
        const auto visitOption = [&](const Field& field, OptionBool& option) {
            option.SetValue(fields.Flag(field, option.Value()));
        };
        MagneticOptions& options = Control().ReaderOptions();
        visitOption({"sendImmediate", "Send each track as soon as it is read"},
                    options.SendImmediate());
        visitOption({"verifyLRC", "Verify checksum (LRC)"}, options.VerifyLRC());
        visitOption({"verifyLastChar", "Verify last character"}, options.VerifyLastChar());
        fields.Array({"tracks", "Track"}, kMagneticTracks, 1,
                     [&](const Field& field, std::size_t index) {
                         fields.Object(field, [&] { VisitTrack(fields, index); });
                     });
    }

    void VisitSheet(SheetVisitor& sheet) const override {
        for (Integer i = 1; i <= kMagneticTracks; ++i)
            sheet.Track(i, Control().Track(i));
    }

private:
    void VisitTrack(FieldVisitor& fields, std::size_t index) {
        MagneticTrack& track = Control().Track(static_cast<Integer>(index + 1));
        track.SetEnabled(fields.Flag({"enabled", "Read this track"}, track.Enabled()));
        VisitFraming(fields, track);
    }
};

} // namespace

std::unique_ptr<Section> MakeMagnetCardSection(const Platform& platform) {
    return std::make_unique<MagnetCardSection>(kInfo, platform);
}

} // namespace qx::host
