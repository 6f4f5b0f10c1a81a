#include "host/WriteCodes.h"

namespace qx::host {

std::string_view CodeOf(WriteAction action) {
    switch (action) {
    case WriteAction::Download:
        return "download";
    case WriteAction::Restore:
        return "restore";
    case WriteAction::Finish:
        return "finish";
    case WriteAction::RollBack:
        return "roll back";
    case WriteAction::LoadRom:
        return "rom load";
    case WriteAction::LoadChipcardRom:
        return "chipcard load";
    case WriteAction::LoadParameter:
        return "param load";
    }
    return "";
}

std::string_view CodeOf(WriteResult result) {
    switch (result) {
    case WriteResult::Verified:
        return "verified";
    case WriteResult::NotVerified:
        return "not verified";
    case WriteResult::NothingChanged:
        return "nothing changed";
    case WriteResult::Written:
        return "written";
    case WriteResult::PartlyWritten:
        return "partly written";
    case WriteResult::Differs:
        return "differs";
    case WriteResult::Unknown:
        return "unknown";
    }
    return "";
}

} // namespace qx::host
