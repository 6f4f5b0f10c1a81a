// Saves a picture of each visible control on the form of a foreign container, in two sizes, to the
// folder QX_PICTURES. packaging/com-pictures runs it at different screen resolutions.

#include "com/windows/Editors.h"
#include "com/windows/Sink.h"

#include <algorithm>
#include <cstdlib>

namespace Gdiplus { // its headers expect them here
using std::max;
using std::min;
} // namespace Gdiplus
#include <gdiplus.h>

namespace qx::test {
namespace {

constexpr LONG kCode39Page = 3;
constexpr LONG kReaderPage = 14;
constexpr CLSID kPngEncoder = {
    0x557CF406, 0x1A04, 0x11D3, {0x9A, 0x73, 0x00, 0x00, 0xF8, 0x1E, 0xF3, 0x2E}};

void SavePicture(HWND window, const std::wstring& file) {
    PumpMessages(); // lets it draw
    RECT bounds{};
    GetClientRect(window, &bounds);
    const HDC source = GetDC(window);
    const HDC target = CreateCompatibleDC(source);
    const HBITMAP bitmap = CreateCompatibleBitmap(source, bounds.right, bounds.bottom);
    const HGDIOBJ earlier = SelectObject(target, bitmap);
    BitBlt(target, 0, 0, bounds.right, bounds.bottom, source, 0, 0, SRCCOPY);
    SelectObject(target, earlier);
    EXPECT_EQ(Gdiplus::Bitmap(bitmap, nullptr).Save(file.c_str(), &kPngEncoder, nullptr),
              Gdiplus::Ok)
        << Narrow(file.c_str());
    DeleteObject(bitmap);
    DeleteDC(target);
    ReleaseDC(window, source);
}

// Services in which each POS block has its own colour.
struct ColouredServices : Services {
    ColouredServices() {
        SHORT number = 0;
        for (const LONG colour : {0x9FD08A, 0xE0B98A, 0x8AC4F2, 0xC79AD6, 0x9ADCDC, 0xB0B0F0,
                                  0xD9D9A0, 0xA0C8A0, 0xE6C8E6, 0xC0C0C0})
            Get(settings.Get(), L"DefPOSColorBlock", {Int(number++), LongInt(colour)});
    }
};

// Captions as a host sets them, and some data to show.
void Fill(const std::string& name, IDispatch* control) {
    if (name == "QXCommonKeyboard") {
        Put(control, L"CaptionOutputDelay", Text(L"&Output delay"));
    } else if (name == "QXMagnetCard") {
        const auto options = PartOf(control, L"ReaderOptions");
        PutCaption(options.Get(), L"VerifyLRC", L"Verify &LRC");
        PutCaption(options.Get(), L"VerifyLastChar", L"Verify the last character");
        PutCaption(options.Get(), L"SendImmediate", L"Send immediately");
        const auto captions = PartOf(control, L"Captions");
        Put(captions.Get(), L"Tracks", Text(L"&Tracks"));
        Put(captions.Get(), L"CommonPrefs", Text(L"Reader"));
        Put(captions.Get(), L"TrackPreferences", Text(L"Track"));
        Put(captions.Get(), L"HeaderAndTerminator", Text(L"Header and terminator"));
        Put(captions.Get(), L"UseThisTrack", Text(L"&Use this track"));
        Put(captions.Get(), L"UseThisHeader", Text(L"Send a &header"));
        Put(captions.Get(), L"UseThisTerminator", Text(L"Send a t&erminator"));
        for (const wchar_t* const part : {L"CreateHeader", L"CreateTerminator"})
            PutCaption(captions.Get(), part, L"Edit...");
        for (const wchar_t* const part : {L"RemoveHeader", L"RemoveTerminator"})
            PutCaption(captions.Get(), part, L"Remove");
        Put(control, L"ShowDetails", Text(L"Show released keys"));
        for (const int number : {1, 2, 3, 4}) {
            const std::wstring name = L"Track " + std::to_wstring(number);
            const std::wstring member = L"Track" + std::to_wstring(number);
            Put(PartOf(control, member.c_str()).Get(), L"Caption", Text(name.c_str()));
        }
        const auto track = PartOf(control, L"Track1");
        Put(track.Get(), L"HeaderEnabled", Bool(true));
        Put(PartOf(track.Get(), L"Header").Get(), L"KeyString", Text(L" 44172"));
    } else if (name == "QXBarcode") {
        LONG page = 0;
        for (const wchar_t* const entry :
             {L"Common settings", L"EAN", L"UPC", L"Code 39", L"Code 128", L"Codabar",
              L"Interleaved 2 of 5", L"Industrial 2 of 5", L"Matrix 2 of 5", L"Code 93", L"Code 11",
              L"Code 16K", L"MSI", L"Plessey", L"Reader 1", L"Reader 2"})
            Get(control, L"SetListEntry", {LongInt(page++), Text(entry)});
        const auto code39 = PartOf(control, L"BitPage", {LongInt(kCode39Page)});
        Put(code39.Get(), L"OptionNum", Int(6));
        SHORT flag = 0;
        for (const wchar_t* const option :
             {L"&Read this code", L"Full ASCII", L"Send the start and stop characters",
              L"Verify the check character", L"Send the check character", L"Join short codes"})
            Put(PartOf(code39.Get(), L"Flag", {Int(flag++)}).Get(), L"Caption", Text(option));
        Put(control, L"ListCaption", Text(L"&Page"));
        Put(control, L"MinSizeCaption", Text(L"Minimum length"));
        Put(control, L"MaxSizeCaption", Text(L"Maximum length"));
        Put(control, L"ShowDetails", Text(L"Show released keys"));
        Put(control, L"Reader1Msg", Text(L"What the first reader sends before and after a code."));
        PutCaption(control, L"OptionHeader", L"Send a header");
        PutCaption(control, L"OptionTerminator", L"Send a terminator");
        PutCaption(control, L"ButtonEdit", L"Edit...");
        PutCaption(control, L"ButtonRemove", L"Remove");
    } else if (name == "QXFreeProgKeys") {
        PutCaption(control, L"ButtonEdit", L"&Edit...");
        PutCaption(control, L"ButtonClean", L"&Clear");
        PutCaption(control, L"ButtonCleanAll", L"Clear all");
        Put(control, L"SequenceForCurrKey", Text(L"Sequence"));
        Put(control, L"ShowDetails", Text(L"Show released keys"));
    } else if (name == "QXLayeredFuncKeys") {
        PutCaption(control, L"ButtonEdit", L"&Edit...");
        PutCaption(control, L"ButtonCleanKey", L"Clear key");
        PutCaption(control, L"ButtonCleanLayer", L"Clear layer");
        PutCaption(control, L"ButtonCleanAllLayer", L"Clear all");
        PutCaption(control, L"ButtonLayerInc", L"Up");
        PutCaption(control, L"ButtonLayerDec", L"Down");
        Put(control, L"LayerDesc", Text(L"Layer"));
        Put(control, L"CaptionSequence", Text(L"Sequence"));
        Put(control, L"FunctionKeyDescription", Text(L"Description"));
        Put(control, L"ShowDetails", Text(L"Show released keys"));
    } else if (name == "QXPos") {
        PutCaption(control, L"ButtonEdit", L"&Edit...");
        PutCaption(control, L"ButtonCleanAll", L"Clear all");
        Put(control, L"NumBlocksCaption", Text(L"Blocks:"));
    } else if (name == "QXPosDisplay") {
        Get(control, L"SetKeyCaption", {Int(2), Text(L"7"), Text(L"Block 7")});
        Get(control, L"SetAsCurrentCaption", {Int(20), Text(L"9"), Text(L"Block 9")});
    }
}

void PutBlocks(IDispatch* data) {
    SHORT number = 1;
    for (const SHORT first : {SHORT{1}, SHORT{20}, SHORT{38}}) {
        const auto block = PartOf(data, L"Block", {Int(first)});
        Put(block.Get(), L"BlockID", Int(number));
        Put(block.Get(), L"ColorID", Int(number++));
        for (const int key : {0, 1, 15, 16})
            Get(block.Get(), L"AddKey", {Int(static_cast<SHORT>(first + key))});
        Put(PartOf(block.Get(), L"Sequence").Get(), L"KeyString", Text(L" 30158"));
    }
}

// From here on, the host answers the control's requests to edit a sequence.
void AnswerEdits(IDispatch* control, DISPID edit, std::size_t cancel, std::size_t sequence) {
    Listen(control, [=](Heard event) {
        if (event.id == edit) {
            *V_BOOLREF(&event.arguments.at(cancel)) = VARIANT_FALSE;
            SysReAllocString(V_BSTRREF(&event.arguments.at(sequence)), L" 32160 18146");
        }
        return S_OK;
    });
}

// Keys with sequences and descriptions, entered like a user would.
void Use(const std::string& name, IDispatch* control, const Form& form) {
    const auto program = [&](LONG key) {
        const auto heard = AccessibleOf(form.Child(L"QXControls.Keys"));
        EXPECT_EQ(heard->accDoDefaultAction(LongInt(key)), S_OK);
        SendMessageW(form.Child(L"BUTTON", L"&Edit..."), BM_CLICK, 0, 0);
    };
    if (name == "QXBarcode") {
        AnswerEdits(control, 1, 1, 2);
    } else if (name == "QXFreeProgKeys") {
        AnswerEdits(control, 3, 2, 3);
        for (const LONG key : {3, 4, 9})
            program(key);
    } else if (name == "QXLayeredFuncKeys") {
        AnswerEdits(control, 5, 1, 2);
        const HWND field =
            FindWindowExW(form.ControlWindow(), form.Child(L"EDIT"), L"EDIT", nullptr);
        LONG key = 1;
        for (const wchar_t* const text : {L"Cash", L"Card", L"Voucher", L"Print again"}) {
            program(key++);
            Type(field, text);
        }
    } else if (name == "QXPos") {
        const auto data = NewObject(L"QXControls.POSKeyboard");
        PutBlocks(data.Get());
        Get(data.Get(), L"CalcDefinedBlockNum");
        Put(control, L"PosData", Dispatch(data.Get()));
        Get(control, L"AdjustControls");
    }
}

void ShowPage(HWND list, LONG page) {
    SendMessageW(list, LB_SETCURSEL, static_cast<WPARAM>(page), 0);
    SendMessageW(GetParent(list), WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(list), LBN_SELCHANGE),
                 reinterpret_cast<LPARAM>(list));
    PumpMessages();
}

std::wstring FileOf(const std::string& name, const wchar_t* what, const wchar_t* size) {
    const HDC screen = GetDC(nullptr);
    const int dots = GetDeviceCaps(screen, LOGPIXELSX);
    ReleaseDC(nullptr, screen);
    return std::wstring(_wgetenv(L"QX_PICTURES")) + L"\\" + Wide(name) + what + L"-" + size + L"-" +
           std::to_wstring(dots) + L".png";
}

int Scaled(int length) {
    const HDC screen = GetDC(nullptr);
    const int scaled = MulDiv(length, GetDeviceCaps(screen, LOGPIXELSX), 96);
    ReleaseDC(nullptr, screen);
    return scaled;
}

void Take(const std::string& name, int width, int height, const wchar_t* size) {
    Form form(Scaled(width), Scaled(height));
    const auto control = form.Place(name);
    ASSERT_TRUE(control) << name;
    const ColouredServices services;
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
    Use(name, control.Get(), form);
    const HWND list = name == "QXBarcode" ? form.Child(L"LISTBOX") : nullptr;
    if (list != nullptr)
        ShowPage(list, kCode39Page);
    SavePicture(form.Window(), FileOf(name, L"", size));
    if (list != nullptr) {
        ShowPage(list, kReaderPage);
        SendMessageW(form.Child(L"BUTTON", L"Edit..."), BM_CLICK, 0, 0);
        SavePicture(form.Window(), FileOf(name, L"-reader", size));
    }
}

// The editors' windows, in the size for the screen's resolution.
void TakeEditors() {
    const ColouredServices services;
    const auto save = [](const char* name) {
        return [name] {
            SavePicture(TheEditor(), FileOf(name, L"", L"window"));
            PostMessageW(TheEditor(), WM_CLOSE, 0, 0);
            return true;
        };
    };
    const auto sequencer = NewSequencer(services);
    {
        const User user({[] { return TheEditor() != nullptr; }, save("QXSequencer")});
        BSTR answer = nullptr;
        Get(sequencer.Get(), L"ShowSequenceEditor",
            {Int(75), Text(L" 30158 31159"), Reference(VT_BSTR, &answer), Int(30)});
    }
    const auto programmer = NewPosProgrammer(services);
    const auto data = NewObject(L"QXControls.POSKeyboard");
    PutBlocks(data.Get());
    const User user(
        {[] { return TheEditor() != nullptr; },
         [] {
             return AccessibleOf(FindWindowExW(TheEditor(), nullptr, L"QXControls.Keys", nullptr))
                        ->accDoDefaultAction(LongInt(20)) == S_OK;
         },
         save("QXPOSProgrammer")});
    Get(programmer.Get(), L"ShowPosProgrammer", {Dispatch(data.Get())});
}

TEST_F(ComClient, Pictures) {
    SetProcessDPIAware();
    ASSERT_TRUE(AtlStarts());
    const Gdiplus::GdiplusStartupInput input;
    ULONG_PTR drawing = 0;
    ASSERT_EQ(Gdiplus::GdiplusStartup(&drawing, &input, nullptr), Gdiplus::Ok);
    for (const char* const name : {"QXBarcode", "QXMagnetCard", "QXLayeredFuncKeys"}) {
        Take(name, 420, 300, L"small");
        Take(name, 780, 480, L"large");
    }
    for (const char* const name : {"QXFreeProgKeys", "QXPos", "QXPosDisplay", "QXLayoutDisplay"}) {
        Take(name, 560, 300, L"small");
        Take(name, 900, 400, L"large");
    }
    Take("QXCommonKeyboard", 240, 60, L"small");
    Take("QXCommonKeyboard", 560, 90, L"large");
    TakeEditors();
    Gdiplus::GdiplusShutdown(drawing);
}

} // namespace
} // namespace qx::test
