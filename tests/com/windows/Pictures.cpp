// Makes a picture of each visible control on the form of a foreign container, in two sizes, in the
// folder QX_PICTURES. packaging/com-pictures runs it at different resolutions of the screen.

#include "com/windows/Form.h"

#include <cstdint>
#include <cstdlib>

namespace qx::test {
namespace {

void AppendBigEndian(std::string& bytes, std::uint32_t number) {
    for (int shift = 24; shift >= 0; shift -= 8)
        bytes += static_cast<char>(number >> shift);
}

void AppendChunk(std::string& png, const std::string& kindAndData) {
    AppendBigEndian(png, static_cast<std::uint32_t>(kindAndData.size() - 4));
    std::uint32_t crc = 0xFFFFFFFF;
    for (const char byte : kindAndData) {
        crc ^= static_cast<std::uint8_t>(byte);
        for (int bit = 0; bit < 8; ++bit)
            crc = crc >> 1 ^ ((crc & 1) != 0 ? 0xEDB88320 : 0);
    }
    png += kindAndData;
    AppendBigEndian(png, ~crc);
}

// The bytes in blocks that are not compressed.
std::string Stored(const std::string& bytes) {
    constexpr std::size_t kMost = 65535;
    std::string stored = "\x78\x01";
    std::uint32_t a = 1;
    std::uint32_t b = 0;
    for (std::size_t at = 0; at < bytes.size(); at += kMost) {
        const std::string block = bytes.substr(at, kMost);
        const auto size = static_cast<std::uint16_t>(block.size());
        stored += at + kMost < bytes.size() ? '\0' : '\1';
        for (const std::uint16_t word : {size, static_cast<std::uint16_t>(~size)}) {
            stored += static_cast<char>(word);
            stored += static_cast<char>(word >> 8);
        }
        stored += block;
        for (const char byte : block) {
            a = (a + static_cast<std::uint8_t>(byte)) % 65521;
            b = (b + a) % 65521;
        }
    }
    AppendBigEndian(stored, b << 16 | a);
    return stored;
}

// Three bytes for each pixel, the rows from above.
std::string Png(int width, int height, const std::string& pixels) {
    std::string header = "IHDR";
    AppendBigEndian(header, static_cast<std::uint32_t>(width));
    AppendBigEndian(header, static_cast<std::uint32_t>(height));
    header += std::string("\x08\x02\0\0\0", 5);
    std::string rows;
    const std::size_t rowSize = static_cast<std::size_t>(width) * 3;
    for (std::size_t at = 0; at < pixels.size(); at += rowSize)
        rows += '\0' + pixels.substr(at, rowSize);
    std::string png = "\x89PNG\r\n\x1A\n";
    AppendChunk(png, header);
    AppendChunk(png, "IDAT" + Stored(rows));
    AppendChunk(png, "IEND");
    return png;
}

void SavePicture(HWND window, const std::wstring& file) {
    RECT bounds{};
    GetClientRect(window, &bounds);
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof(info.bmiHeader);
    info.bmiHeader.biWidth = bounds.right;
    info.bmiHeader.biHeight = -bounds.bottom; // the rows from above
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    void* bits = nullptr;
    const HDC source = GetDC(window);
    const HDC target = CreateCompatibleDC(source);
    const HBITMAP bitmap = CreateDIBSection(target, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    const HGDIOBJ earlier = SelectObject(target, bitmap);
    BitBlt(target, 0, 0, bounds.right, bounds.bottom, source, 0, 0, SRCCOPY);
    GdiFlush();
    std::string pixels;
    const auto* const colours = static_cast<const std::uint32_t*>(bits);
    for (LONG i = 0; i < bounds.right * bounds.bottom; ++i)
        for (const int shift : {16, 8, 0})
            pixels += static_cast<char>(colours[i] >> shift);
    SelectObject(target, earlier);
    DeleteObject(bitmap);
    DeleteDC(target);
    ReleaseDC(window, source);

    const std::string png = Png(bounds.right, bounds.bottom, pixels);
    const HANDLE out =
        CreateFileW(file.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    DWORD written = 0;
    WriteFile(out, png.data(), static_cast<DWORD>(png.size()), &written, nullptr);
    CloseHandle(out);
    EXPECT_EQ(written, png.size()) << Narrow(file.c_str());
}

void Caption(IDispatch* object, const wchar_t* part, const wchar_t* caption) {
    Put(PartOf(object, part).Get(), L"Caption", Text(caption));
}

// Texts as a host gives them, and a little to see.
void Fill(const std::string& name, IDispatch* control) {
    if (name == "QXCommonKeyboard") {
        Put(control, L"CaptionOutputDelay", Text(L"&Output delay"));
    } else if (name == "QXMagnetCard") {
        const auto options = PartOf(control, L"ReaderOptions");
        Caption(options.Get(), L"VerifyLRC", L"Verify &LRC");
        Caption(options.Get(), L"VerifyLastChar", L"Verify the last character");
        Caption(options.Get(), L"SendImmediate", L"Send immediately");
        const auto captions = PartOf(control, L"Captions");
        Put(captions.Get(), L"Tracks", Text(L"&Tracks"));
        Put(captions.Get(), L"CommonPrefs", Text(L"Reader"));
        Put(captions.Get(), L"TrackPreferences", Text(L"Track"));
        Put(captions.Get(), L"HeaderAndTerminator", Text(L"Header and terminator"));
        Put(captions.Get(), L"UseThisTrack", Text(L"&Use this track"));
        Put(captions.Get(), L"UseThisHeader", Text(L"Send a &header"));
        Put(captions.Get(), L"UseThisTerminator", Text(L"Send a t&erminator"));
        for (const wchar_t* const part : {L"CreateHeader", L"CreateTerminator"})
            Caption(captions.Get(), part, L"Edit...");
        for (const wchar_t* const part : {L"RemoveHeader", L"RemoveTerminator"})
            Caption(captions.Get(), part, L"Remove");
        Put(control, L"ShowDetails", Text(L"Show released keys"));
        const auto header = PartOf(PartOf(control, L"Track1").Get(), L"Header");
        for (const SHORT code : {SHORT{30}, SHORT{158}})
            Get(header.Get(), L"AddByte", {Int(code)});
    } else if (name == "QXBarcode") {
        Put(control, L"ListCaption", Text(L"&Page"));
        Put(control, L"MinSizeCaption", Text(L"Least length"));
        Put(control, L"MaxSizeCaption", Text(L"Greatest length"));
        Put(control, L"ShowDetails", Text(L"Show released keys"));
        Put(control, L"Reader1Msg", Text(L"What the first reader sends before and after a code."));
        Caption(control, L"OptionHeader", L"Send a header");
        Caption(control, L"OptionTerminator", L"Send a terminator");
        Caption(control, L"ButtonEdit", L"Edit...");
        Caption(control, L"ButtonRemove", L"Remove");
    } else if (name == "QXFreeProgKeys") {
        Caption(control, L"ButtonEdit", L"&Edit...");
        Caption(control, L"ButtonClean", L"&Clear");
        Caption(control, L"ButtonCleanAll", L"Clear all");
        Put(control, L"SequenceForCurrKey", Text(L"Sequence"));
        Put(control, L"ShowDetails", Text(L"Show released keys"));
    } else if (name == "QXLayeredFuncKeys") {
        Caption(control, L"ButtonEdit", L"&Edit...");
        Caption(control, L"ButtonCleanKey", L"Clear key");
        Caption(control, L"ButtonCleanLayer", L"Clear layer");
        Caption(control, L"ButtonCleanAllLayer", L"Clear all");
        Caption(control, L"ButtonLayerInc", L"Up");
        Caption(control, L"ButtonLayerDec", L"Down");
        Put(control, L"LayerDesc", Text(L"Layer"));
        Put(control, L"CaptionSequence", Text(L"Sequence"));
        Put(control, L"FunctionKeyDescription", Text(L"Description"));
        Put(control, L"ShowDetails", Text(L"Show released keys"));
    } else if (name == "QXPos") {
        Caption(control, L"ButtonEdit", L"&Edit...");
        Caption(control, L"ButtonCleanAll", L"Clear all");
        Put(control, L"NumBlocksCaption", Text(L"Blocks:"));
    } else if (name == "QXPosDisplay") {
        Get(control, L"SetKeyCaption", {Int(2), Text(L"7"), Text(L"Block 7")});
        Get(control, L"SetAsCurrentCaption", {Int(20), Text(L"9"), Text(L"Block 9")});
    }
}

void Take(const std::string& name, int width, int height, const wchar_t* size) {
    const HDC screen = GetDC(nullptr);
    const int dots = GetDeviceCaps(screen, LOGPIXELSX);
    ReleaseDC(nullptr, screen);
    Form form(MulDiv(width, dots, 96), MulDiv(height, dots, 96));
    const auto control = form.Place(name);
    ASSERT_TRUE(control) << name;
    const Services services;
    if (name == "QXLayoutDisplay") {
        Put(control.Get(), L"LayoutSource", Dispatch(services.layout.Get()));
        const auto keys = NewObject(L"QXControls.KeyboardSequences");
        Get(control.Get(), L"ReloadKeysSettings", {Dispatch(keys.Get())});
    } else if (name != "QXPosDisplay") {
        services.HandTo(control.Get());
    }
    Fill(name, control.Get());
    if (name != "QXLayoutDisplay" && name != "QXPosDisplay")
        for (const wchar_t* const member : {L"Translate", L"ReloadKeySettings", L"AdjustControls"})
            Get(control.Get(), member);
    PumpMessages();
    const HWND list = name == "QXBarcode" ? form.Child(L"LISTBOX") : nullptr;
    const std::wstring folder = _wgetenv(L"QX_PICTURES");
    const auto file = [&](const wchar_t* what) {
        return folder + L"\\" + Wide(name) + what + L"-" + size + L"-" + std::to_wstring(dots) +
               L".png";
    };
    SavePicture(form.Window(), file(L""));
    if (list == nullptr)
        return;
    SendMessageW(list, LB_SETCURSEL, 14, 0);
    SendMessageW(GetParent(list), WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(list), LBN_SELCHANGE),
                 reinterpret_cast<LPARAM>(list));
    PumpMessages();
    SavePicture(form.Window(), file(L"-reader"));
}

TEST_F(ComClient, Pictures) {
    SetProcessDPIAware();
    ASSERT_TRUE(AtlStarts());
    for (const char* const name :
         {"QXBarcode", "QXMagnetCard", "QXFreeProgKeys", "QXLayeredFuncKeys", "QXPos",
          "QXPosDisplay", "QXCommonKeyboard", "QXLayoutDisplay"}) {
        Take(name, 420, 340, L"small");
        Take(name, 780, 480, L"large");
    }
}

} // namespace
} // namespace qx::test
