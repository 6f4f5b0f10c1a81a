// The registry of the current user. Numbers are REG_DWORD values, texts REG_SZ.
#pragma once

#include "qxcontrols/platform/RegistryAccess.h"

namespace qx {

// Shared by the objects of all apartments: each thread has its own path. A value that cannot be
// written is traced.
class WindowsRegistry : public RegistryAccess {
public:
    void SetPath(std::string_view sPath) override;
    Long ReadNumber(std::string_view sName, Long lDefault) override;
    std::string ReadString(std::string_view sName, std::string_view sDefault) override;
    void WriteNumber(std::string_view sName, Long lValue) override;
    void WriteString(std::string_view sName, std::string_view sValue) override;
};

} // namespace qx
