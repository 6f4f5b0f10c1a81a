// The functions of the closed libraries that the system declares but never calls.
//
// They are named only here: a driver without them is complete, and a host that needs one looks it
// up itself (DriverLibrary::Find, SharedLibrary::Find).
#pragma once

#include <string_view>

namespace qx {

struct UncalledFunction {
    std::string_view library;
    std::string_view name;
};

inline constexpr UncalledFunction kUncalledFunctions[] = {
    // The driver: whether a file contains the configuration with a given identifier.
    {"TANDORQX.DLL", "QXCFG_FileContainsGivenGUID"},
    // The companion library; the system calls only its CreateSafeGuid.
    {"ToolQX", "IsSameGuid"},
    {"ToolQX", "InstallQXKeyboardHook"},
    {"ToolQX", "RemoveQXKeyboardHook"},
    // The debug library: the trace goes to the sink that the host sets (Trace.h).
    {"VBDebug.DLL", "VBTrace"},
    {"VBDebug.DLL", "VBTraceN"},
    {"VBDebug.DLL", "VBTest"},
    {"VBDebug.DLL", "VBDebugBreak"},
};

} // namespace qx
