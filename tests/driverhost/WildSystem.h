// The system functions for a misbehaving driver.
#pragma once

#include <cstdlib>

#ifdef _WIN32

#include <cstdint>
#include <cwchar>

#include <io.h>
#include <windows.h>

namespace qx::test {

#define QX_EXPORT extern "C" __attribute__((dllexport))

[[noreturn]] inline void Crash() {
    *static_cast<volatile int*>(nullptr) = 1;
    std::abort();
}
inline void Print(const char* text, unsigned size) {
    (void)!_write(1, text, size);
}
[[noreturn]] inline void Wait() {
    for (;;)
        Sleep(INFINITE);
}
// The channel to the parent: the number at the end of the command line.
inline HANDLE Channel() {
    const wchar_t* const option = std::wcsstr(GetCommandLineW(), L"--channel=");
    return reinterpret_cast<HANDLE>(
        static_cast<std::uintptr_t>(std::wcstoull(std::wcschr(option, L'=') + 1, nullptr, 10)));
}
inline void Forge() {
    OVERLAPPED writing{};
    WriteFile(Channel(), "\xff\xff\xff\xff", 4, nullptr, &writing);
    Wait();
}
inline void Leave() {
    CloseHandle(Channel());
}

} // namespace qx::test

#else

#include <csignal>

#include <unistd.h>

namespace qx::test {

#define QX_EXPORT extern "C" __attribute__((visibility("default")))

[[noreturn]] inline void Crash() {
    std::abort();
}
inline void Print(const char* text, unsigned size) {
    (void)!write(STDOUT_FILENO, text, size);
}
[[noreturn]] inline void Wait() {
    for (;;)
        pause();
}
inline void Forge() {
    (void)!write(3, "\xff\xff\xff\xff", 4);
}
inline void Leave() {
    close(3);
}

} // namespace qx::test

#endif
