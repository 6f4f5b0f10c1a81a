#include "app/TestDriveTexts.h"

#include "app/SettingWords.h"
#include "app/sections/Entries.h"
#include "host/KeySenders.h"
#include "qxcontrols/keys/KeyName.h"

#include <QCoreApplication>

namespace qx::app {

namespace {

struct TestDriveTexts {
    Q_DECLARE_TR_FUNCTIONS(TestDriveTexts)
};

QString SymbologyName(const std::string& page) {
    return WordOf(kBarcode, page);
}

} // namespace

QString OriginTextOf(const sim::Stretch& stretch, const host::Configuration& configuration,
                     const QXKeyboardLayoutData& layout) {
    using sim::Origin;
    const auto numbered = [&](const QString& text) { return text.arg(stretch.number); };
    switch (stretch.origin) {
    case Origin::OrdinaryKey:
        return TestDriveTexts::tr("Key %1").arg(
            QString::fromStdString(KeyName(stretch.number, &layout)));
    case Origin::ProgrammedKey:
        return NameText(host::NameOf(configuration, stretch.module, stretch.number, stretch.layer));
    case Origin::TrackHeader:
        return numbered(TestDriveTexts::tr("prefix of track %1"));
    case Origin::TrackData:
        return numbered(TestDriveTexts::tr("data of track %1"));
    case Origin::TrackTerminator:
        return numbered(TestDriveTexts::tr("suffix of track %1"));
    case Origin::ReaderHeader:
        return numbered(TestDriveTexts::tr("prefix of reader %1"));
    case Origin::ReaderData:
        return numbered(TestDriveTexts::tr("data of reader %1"));
    case Origin::ReaderTerminator:
        return numbered(TestDriveTexts::tr("suffix of reader %1"));
    }
    return {};
}

QString RemarkTextOf(const sim::Remark& remark) {
    using Kind = sim::Remark::Kind;
    const auto value = [&](std::size_t index) {
        return QString::fromStdString(remark.values.at(index));
    };
    switch (remark.kind) {
    case Kind::NoKey:
        return TestDriveTexts::tr("This keyboard has no key %1.").arg(value(0));
    case Kind::PosDamaged:
        return TestDriveTexts::tr("The POS keys' memory is damaged.");
    case Kind::NoFunctionKeys:
        return TestDriveTexts::tr("This keyboard has no layered function keys.");
    case Kind::FunctionKeyEmpty:
        return TestDriveTexts::tr("Layer %1, %2 has no sequence.").arg(value(0), value(1));
    case Kind::NoCardReader:
        return TestDriveTexts::tr("This keyboard has no magnetic card reader.");
    case Kind::NoTrack:
        return TestDriveTexts::tr("This keyboard cannot read track %1.").arg(value(0));
    case Kind::TrackOff:
        return TestDriveTexts::tr("Track %1 is switched off.").arg(value(0));
    case Kind::WrongLrcRefused:
        return TestDriveTexts::tr("The checksum (LRC) of track %1 is wrong; the reader rejects "
                                  "the track.")
            .arg(value(0));
    case Kind::WrongLrcIgnored:
        return TestDriveTexts::tr("The checksum (LRC) of track %1 is wrong; the reader does not "
                                  "verify it.")
            .arg(value(0));
    case Kind::WrongLastCharRefused:
        return TestDriveTexts::tr("The last character of track %1 is wrong; the reader rejects "
                                  "the track.")
            .arg(value(0));
    case Kind::WrongLastCharIgnored:
        return TestDriveTexts::tr("The last character of track %1 is wrong; the reader does not "
                                  "verify it.")
            .arg(value(0));
    case Kind::TracksSentAtOnce:
        return TestDriveTexts::tr("Each track is sent as soon as it has been read.");
    case Kind::TracksSentTogether:
        return TestDriveTexts::tr("The tracks are sent once all have been read.");
    case Kind::NoCodeReader:
        return TestDriveTexts::tr("This keyboard has no barcode reader.");
    case Kind::CodeEmpty:
        return TestDriveTexts::tr("A barcode needs at least one character.");
    case Kind::SymbologyOff:
        return TestDriveTexts::tr("%1 is switched off.").arg(SymbologyName(remark.values.at(0)));
    case Kind::CodeLengthRefused:
        return TestDriveTexts::tr("%1 accepts %2 to %3 characters; the code has %4.")
            .arg(SymbologyName(remark.values.at(0)), value(1), value(2), value(3));
    }
    return {};
}

} // namespace qx::app
