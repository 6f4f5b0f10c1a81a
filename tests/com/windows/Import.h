// Replaces a function of the system that the server calls by one of the test.
#pragma once

#include <windows.h>

#include <gtest/gtest.h>

#include <string_view>
#include <utility>

namespace qx::test {

// The address where the server's module stores a pointer to a function of the system.
inline void** ImportOf(HMODULE module, const char* name) {
    auto* const base = reinterpret_cast<BYTE*>(module);
    const auto at = [base](auto offset) { return base + offset; };
    const auto* const dos = reinterpret_cast<IMAGE_DOS_HEADER*>(base);
    const auto* const headers = reinterpret_cast<IMAGE_NT_HEADERS*>(at(dos->e_lfanew));
    const auto& table = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    const auto* library = reinterpret_cast<IMAGE_IMPORT_DESCRIPTOR*>(at(table.VirtualAddress));
    for (; library->Name != 0; ++library) {
        const auto* import = reinterpret_cast<IMAGE_THUNK_DATA*>(at(library->OriginalFirstThunk));
        auto* place = reinterpret_cast<IMAGE_THUNK_DATA*>(at(library->FirstThunk));
        for (; import->u1.AddressOfData != 0; ++import, ++place)
            if (!IMAGE_SNAP_BY_ORDINAL(import->u1.Ordinal) &&
                std::string_view(reinterpret_cast<char*>(
                    reinterpret_cast<IMAGE_IMPORT_BY_NAME*>(at(import->u1.AddressOfData))->Name)) ==
                    name)
                return reinterpret_cast<void**>(&place->u1.Function);
    }
    return nullptr;
}

// The server must be loaded and must outlive this.
class ReplacedImport {
public:
    ReplacedImport(const char* name, void* function)
        : m_place(ImportOf(GetModuleHandleW(L"QXControls.ocx"), name)) {
        EXPECT_NE(m_place, nullptr) << name;
        m_earlier = Replace(function);
    }
    ReplacedImport(const ReplacedImport&) = delete;
    ReplacedImport& operator=(const ReplacedImport&) = delete;
    ~ReplacedImport() { Replace(m_earlier); }

private:
    void* Replace(void* function) const {
        DWORD usual = 0;
        VirtualProtect(m_place, sizeof(void*), PAGE_READWRITE, &usual);
        void* const earlier = std::exchange(*m_place, function);
        VirtualProtect(m_place, sizeof(void*), usual, &usual);
        return earlier;
    }

    void** m_place;
    void* m_earlier;
};

} // namespace qx::test
