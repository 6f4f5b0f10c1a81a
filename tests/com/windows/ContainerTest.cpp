// The controls in a container that we have not written.

#include "com/windows/Form.h"
#include "com/windows/Sink.h"

#include <commctrl.h>

#include <algorithm>
#include <cstdint>
#include <set>
#include <vector>

namespace qx::test {
namespace {

// A drawing with readable pixels.
class Picture {
public:
    Picture(LONG width, LONG height) : m_count(static_cast<std::size_t>(width * height)) {
        BITMAPINFO info{};
        info.bmiHeader.biSize = sizeof(info.bmiHeader);
        info.bmiHeader.biWidth = width;
        info.bmiHeader.biHeight = height;
        info.bmiHeader.biPlanes = 1;
        info.bmiHeader.biBitCount = 32;
        m_bitmap = CreateDIBSection(m_context, &info, DIB_RGB_COLORS, &m_bits, nullptr, 0);
        SelectObject(m_context, m_bitmap);
    }
    Picture(const Picture&) = delete;
    Picture& operator=(const Picture&) = delete;
    ~Picture() {
        DeleteDC(m_context);
        DeleteObject(m_bitmap);
    }
    [[nodiscard]] HDC Context() const { return m_context; }
    [[nodiscard]] std::vector<std::uint32_t> Pixels() const {
        GdiFlush();
        const auto* const pixels = static_cast<const std::uint32_t*>(m_bits);
        return {pixels, pixels + m_count};
    }
    [[nodiscard]] std::set<std::uint32_t> Colours() const {
        const std::vector<std::uint32_t> pixels = Pixels();
        return {pixels.begin(), pixels.end()};
    }

private:
    HDC m_context = CreateCompatibleDC(nullptr);
    HBITMAP m_bitmap = nullptr;
    void* m_bits = nullptr;
    std::size_t m_count;
};

// The centre of a key, relative to the window.
POINT MiddleOf(HWND keys, LONG number) {
    const auto heard = AccessibleOf(keys);
    long left = 0, top = 0, width = 0, height = 0;
    EXPECT_EQ(heard->accLocation(&left, &top, &width, &height, LongInt(number)), S_OK);
    POINT middle{left + width / 2, top + height / 2};
    ScreenToClient(keys, &middle);
    return middle;
}

class ComContainer : public ComClient {
protected:
    static void SetUpTestSuite() {
        ComClient::SetUpTestSuite();
        ASSERT_TRUE(AtlStarts());
    }

    static std::vector<std::uint32_t> PixelsOf(HWND window) {
        RECT bounds{};
        GetClientRect(window, &bounds);
        UpdateWindow(window);
        const Picture picture(bounds.right, bounds.bottom);
        const HDC context = GetDC(window);
        BitBlt(picture.Context(), 0, 0, bounds.right, bounds.bottom, context, 0, 0, SRCCOPY);
        ReleaseDC(window, context);
        return picture.Pixels();
    }
};

TEST_F(ComContainer, VisibleControlsShowAndResizeOnAForm) {
    for (const char* const name :
         {"QXBarcode", "QXMagnetCard", "QXFreeProgKeys", "QXLayeredFuncKeys", "QXPos",
          "QXPosDisplay", "QXCommonKeyboard", "QXLayoutDisplay"}) {
        Form form;
        ASSERT_TRUE(form.Place(name)) << name;
        const HWND window = form.ControlWindow();
        ASSERT_NE(window, nullptr) << name;
        wchar_t text[64] = {};
        GetWindowTextW(window, text, 64);
        EXPECT_EQ(Narrow(text), name); // announced by screen readers
        RECT onForm{};
        RECT onControl{};
        GetClientRect(form.Window(), &onForm);
        GetClientRect(window, &onControl);
        EXPECT_TRUE(EqualRect(&onForm, &onControl)) << name;
        const std::vector<std::uint32_t> pixels = PixelsOf(window);
        EXPECT_GT(std::set(pixels.begin(), pixels.end()).size(), 1U) << name;
        SendMessageW(window, WM_LBUTTONDOWN, 0, MAKELPARAM(5, 5));
        SendMessageW(window, WM_KEYDOWN, VK_TAB, 0);
        form.Clear();
        EXPECT_FALSE(IsWindow(window)) << name;
    }
}

TEST_F(ComContainer, ServiceObjectsHaveNoWindowAtRunTime) {
    Form form;
    form.Place("QXProgSettings");
    EXPECT_EQ(form.ControlWindow(), nullptr);
}

TEST_F(ComContainer, AClickReachesTheControlAndTheControlsChangesReachTheWindow) {
    Form form(600, 500);
    const auto control = form.Place("QXMagnetCard");
    ASSERT_TRUE(control);
    const auto options = PartOf(control.Get(), L"ReaderOptions");
    const auto lrc = PartOf(options.Get(), L"VerifyLRC");
    const auto lastChar = PartOf(options.Get(), L"VerifyLastChar");
    Put(lrc.Get(), L"Caption", Text(L"Verify &LRC"));
    Put(lastChar.Get(), L"Caption", Text(L"Verify last character"));
    Get(control.Get(), L"Translate");
    const HWND box = form.Child(L"BUTTON", L"Verify &LRC");
    const HWND other = form.Child(L"BUTTON", L"Verify last character");
    ASSERT_TRUE(box != nullptr && other != nullptr);
    const bool wasOn = Get(lrc.Get(), L"Value").Flag();
    const LRESULT otherWas = SendMessageW(other, BM_GETCHECK, 0, 0);
    EXPECT_EQ(SendMessageW(box, BM_GETCHECK, 0, 0), wasOn ? BST_CHECKED : BST_UNCHECKED);
    EXPECT_FALSE(Get(control.Get(), L"DataChanged").Flag());

    SendMessageW(box, BM_CLICK, 0, 0);
    PumpMessages();
    EXPECT_EQ(Get(lrc.Get(), L"Value").Flag(), !wasOn);
    EXPECT_TRUE(Get(control.Get(), L"DataChanged").Flag());
    EXPECT_EQ(SendMessageW(box, BM_GETCHECK, 0, 0), wasOn ? BST_UNCHECKED : BST_CHECKED);
    EXPECT_EQ(SendMessageW(other, BM_GETCHECK, 0, 0), otherWas);

    // The host resets it.
    VARIANT before;
    V_VT(&before) = VT_BOOL;
    V_BOOL(&before) = wasOn ? VARIANT_TRUE : VARIANT_FALSE;
    Put(lrc.Get(), L"Value", before);
    Get(control.Get(), L"AdjustControls");
    EXPECT_EQ(SendMessageW(box, BM_GETCHECK, 0, 0), wasOn ? BST_CHECKED : BST_UNCHECKED);

    // Its mnemonic, which the container finds in the control's accelerator table.
    const auto ole = control.As<IOleControl>(IID_IOleControl);
    CONTROLINFO info{sizeof(CONTROLINFO), nullptr, 0, 0};
    ASSERT_EQ(ole->GetControlInfo(&info), S_OK);
    EXPECT_EQ(info.cAccel, 1);
    MSG letter{};
    letter.message = WM_SYSKEYDOWN;
    letter.wParam = 'L';
    EXPECT_EQ(ole->OnMnemonic(&letter), S_OK);
    EXPECT_EQ(GetFocus(), box);
    EXPECT_EQ(Get(lrc.Get(), L"Value").Flag(), !wasOn);
}

TEST_F(ComContainer, KeysMoveTheSlider) {
    Form form;
    const auto control = form.Place("QXCommonKeyboard");
    ASSERT_TRUE(control);
    const HWND slider = form.Child(L"msctls_trackbar32");
    ASSERT_NE(slider, nullptr);
    const auto shown = [&](int delay) {
        return SendMessageW(slider, TBM_GETPOS, 0, 0) == delay &&
               form.Child(L"STATIC", std::to_wstring(delay).c_str()) != nullptr;
    };
    const auto first = static_cast<int>(SendMessageW(slider, TBM_GETPOS, 0, 0));
    EXPECT_TRUE(shown(first));
    SendMessageW(slider, WM_KEYDOWN, VK_RIGHT, 0);
    SendMessageW(slider, WM_KEYUP, VK_RIGHT, 0);
    EXPECT_TRUE(shown(first + 1));
    EXPECT_TRUE(Get(control.Get(), L"DataChanged").Flag());
    SendMessageW(slider, WM_KEYDOWN, VK_END, 0);
    EXPECT_TRUE(shown(255));
    Get(control.Get(), L"DefaultValues");
    EXPECT_FALSE(shown(255));
}

TEST_F(ComContainer, TheListChoosesThePageAndHiddenPartsAreHidden) {
    Form form(600, 500);
    const auto control = form.Place("QXBarcode");
    ASSERT_TRUE(control);
    Put(control.Get(), L"Reader1Msg", Text(L"The first reader"));
    const HWND list = form.Child(L"LISTBOX");
    ASSERT_NE(list, nullptr);
    const LRESULT pages = SendMessageW(list, LB_GETCOUNT, 0, 0);
    ASSERT_EQ(pages, 16);
    EXPECT_EQ(form.Child(L"STATIC", L"The first reader"), nullptr);
    SendMessageW(list, LB_SETCURSEL, 14, 0);
    SendMessageW(GetParent(list), WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(list), LBN_SELCHANGE),
                 reinterpret_cast<LPARAM>(list));
    EXPECT_NE(form.Child(L"STATIC", L"The first reader"), nullptr);
}

// A key of the grid is picked with the mouse, left with an arrow key, given a description by
// typing, and found by a screen reader.
TEST_F(ComContainer, KeysCanBePickedDescribedAndFoundByScreenReaders) {
    Form form(900, 500);
    const auto control = form.Place("QXLayeredFuncKeys");
    ASSERT_TRUE(control);
    const Services services;
    services.HandTo(control.Get());
    Get(control.Get(), L"ReloadKeySettings");
    const HWND keys = form.Child(L"QXControls.Keys");
    const HWND field = FindWindowExW(form.ControlWindow(), form.Child(L"EDIT"), L"EDIT", nullptr);
    ASSERT_TRUE(keys != nullptr && field != nullptr);

    const auto heard = AccessibleOf(keys);
    ASSERT_TRUE(heard);
    long count = 0;
    ASSERT_EQ(heard->get_accChildCount(&count), S_OK);
    ASSERT_EQ(count, 24);
    const POINT middle = MiddleOf(keys, 3);
    POINT onScreen = middle;
    ClientToScreen(keys, &onScreen);
    VARIANT hit;
    ASSERT_EQ(heard->accHitTest(onScreen.x, onScreen.y, &hit), S_OK);
    EXPECT_EQ(V_I4(&hit), 3);
    SendMessageW(keys, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(middle.x, middle.y));
    SendMessageW(keys, WM_LBUTTONUP, 0, MAKELPARAM(middle.x, middle.y));

    Type(field, L"Cash");
    const auto nameOf = [&](LONG key) {
        BSTR name = nullptr;
        EXPECT_EQ(heard->get_accName(LongInt(key), &name), S_OK);
        const std::string narrow = Narrow(name);
        SysFreeString(name);
        return narrow;
    };
    EXPECT_EQ(nameOf(3), "F3, Cash, not programmed, current key");
    SendMessageW(keys, WM_KEYDOWN, VK_RIGHT, 0);
    Type(field, L"X");
    EXPECT_EQ(nameOf(4), "F4, X, not programmed, current key");
    EXPECT_EQ(nameOf(3), "F3, Cash, not programmed");
    EXPECT_EQ(heard->accDoDefaultAction(LongInt(24)), S_OK);
    Type(field, L"Z");
    EXPECT_EQ(nameOf(24), "F24, Z, not programmed, current key");
    EXPECT_NE(heard->accDoDefaultAction(LongInt(25)), S_OK);
    form.Clear();
    EXPECT_NE(heard->get_accChildCount(&count), S_OK); // the window is gone
}

TEST_F(ComContainer, ClicksOnTheKeysOfDisplaysReachTheHost) {
    const Services services;
    for (const char* const name : {"QXLayoutDisplay", "QXPosDisplay"}) {
        Form form(900, 500);
        const auto control = form.Place(name);
        ASSERT_TRUE(control) << name;
        if (std::string_view(name) == "QXLayoutDisplay") {
            Put(control.Get(), L"LayoutSource", Dispatch(services.layout.Get()));
            const auto none = NewObject(L"QXControls.KeyboardSequences");
            Get(control.Get(), L"ReloadKeysSettings", {Dispatch(none.Get())});
        }
        std::vector<LONG> clicked;
        Listen(control.Get(), [&](Heard event) {
            EXPECT_EQ(event.id, 1);
            const VARIANT& key = event.arguments.at(0);
            clicked.push_back(V_VT(&key) == VT_I2 ? V_I2(&key) : V_I4(&key));
            return S_OK;
        });
        const HWND keys = form.Child(L"QXControls.Keys");
        ASSERT_NE(keys, nullptr) << name;
        for (const LONG number : {5, 17}) {
            const POINT middle = MiddleOf(keys, number);
            SendMessageW(keys, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(middle.x, middle.y));
            SendMessageW(keys, WM_LBUTTONUP, 0, MAKELPARAM(middle.x, middle.y));
            ASSERT_FALSE(clicked.empty()) << name;
            BSTR heard = nullptr;
            EXPECT_EQ(AccessibleOf(keys)->get_accName(LongInt(number), &heard), S_OK);
            const std::string text = Narrow(heard);
            const std::string key = "ey " + std::to_string(clicked.back());
            EXPECT_TRUE(text.find(key + " (") != std::string::npos ||
                        text.find(key + ",") != std::string::npos)
                << text;
            SysFreeString(heard);
        }
        EXPECT_EQ(clicked.size(), 2U) << name;
        EXPECT_NE(clicked[0], clicked[1]) << name;
    }
}

TEST_F(ComContainer, TheCaptionsOfKeysHaveTheSizeThatTheUserHasChosen) {
    Form form(900, 500);
    const auto control = form.Place("QXFreeProgKeys");
    ASSERT_TRUE(control);
    const Services services;
    services.HandTo(control.Get());
    Get(control.Get(), L"ReloadKeySettings");
    const HWND keys = form.Child(L"QXControls.Keys");
    ASSERT_NE(keys, nullptr);
    const auto drawn = [&](SHORT size) {
        Get(control.Get(), L"KeyFontSizeChanged", {Int(size)});
        PumpMessages();
        return PixelsOf(keys);
    };
    const auto usual = drawn(6);
    const auto large = drawn(9);
    EXPECT_GT(std::ranges::count(large, 0U), std::ranges::count(usual, 0U)); // black
    EXPECT_EQ(drawn(6), usual);
    EXPECT_EQ(drawn(-1), drawn(1)); // the smallest legible size
}

struct TipSearch {
    HWND keys;
    POINT point;
    std::string text;
};

BOOL CALLBACK FindTip(HWND window, LPARAM data) {
    auto& wanted = *reinterpret_cast<TipSearch*>(data);
    wchar_t name[32] = {};
    GetClassNameW(window, name, 32);
    wchar_t text[128] = {};
    TTHITTESTINFOW hit{};
    hit.hwnd = wanted.keys;
    hit.pt = wanted.point;
    hit.ti.cbSize = sizeof(hit.ti);
    if (std::wstring_view(name) == TOOLTIPS_CLASSW &&
        SendMessageW(window, TTM_HITTESTW, 0, reinterpret_cast<LPARAM>(&hit)) != 0) {
        hit.ti.hwnd = wanted.keys;
        hit.ti.lpszText = text;
        SendMessageW(window, TTM_GETTEXTW, 128, reinterpret_cast<LPARAM>(&hit.ti));
        wanted.text = Narrow(text);
    }
    return TRUE;
}

// The tooltip follows the pointer.
TEST_F(ComContainer, EachKeyHasAToolTipOfItsOwn) {
    Form form(900, 500);
    const auto control = form.Place("QXPosDisplay");
    ASSERT_TRUE(control);
    Get(control.Get(), L"SetKeyCaption", {Int(2), Text(L"7"), Text(L"Block 7")});
    Get(control.Get(), L"SetKeyCaption", {Int(3), Text(L"8"), Text(L"Block 8")});
    const HWND keys = form.Child(L"QXControls.Keys");
    ASSERT_NE(keys, nullptr);
    const auto tipAt = [&](LONG number) {
        const POINT middle = MiddleOf(keys, number);
        SendMessageW(keys, WM_MOUSEMOVE, 0, MAKELPARAM(middle.x, middle.y));
        TipSearch search{keys, middle, "none"};
        EnumThreadWindows(GetCurrentThreadId(), FindTip, reinterpret_cast<LPARAM>(&search));
        return search.text;
    };
    EXPECT_EQ(tipAt(2), "Block 7");
    EXPECT_EQ(tipAt(3), "Block 8");
    EXPECT_EQ(tipAt(4), "none");
    EXPECT_EQ(tipAt(3), "Block 8");
    Get(control.Get(), L"SetKeyCaption", {Int(3), Text(L"9"), Text(L"Block 9")});
    EXPECT_EQ(tipAt(3), "Block 9");
}

// For a container that only draws the controls, while a form is designed or printed.
TEST_F(ComContainer, ControlsKeepTheirSizeAndDrawWithoutAWindow) {
    const auto control = NewObject(L"QXControls.QXBarcode");
    const auto object = control.As<IOleObject>(IID_IOleObject);
    const auto view = control.As<IViewObject2>(IID_IViewObject2);
    const auto storing = control.As<IPersistStreamInit>(IID_IPersistStreamInit);
    ASSERT_TRUE(object && view && storing);
    ASSERT_EQ(storing->InitNew(), S_OK);
    EXPECT_EQ(storing->IsDirty(), S_FALSE);
    SIZEL size{5000, 3000};
    EXPECT_EQ(object->SetExtent(DVASPECT_CONTENT, &size), S_OK);
    EXPECT_EQ(object->SetExtent(DVASPECT_ICON, &size), DV_E_DVASPECT);
    EXPECT_EQ(storing->IsDirty(), S_OK);

    ComPtr<IStream> stream;
    ASSERT_EQ(CreateStreamOnHGlobal(nullptr, TRUE, stream.Out()), S_OK);
    EXPECT_EQ(storing->Save(stream.Get(), TRUE), S_OK);
    EXPECT_EQ(storing->IsDirty(), S_FALSE);
    const auto other = NewObject(L"QXControls.QXBarcode");
    const auto loading = other.As<IPersistStreamInit>(IID_IPersistStreamInit);
    EXPECT_NE(loading->Load(stream.Get()), S_OK); // the stream is at its end
    ASSERT_EQ(stream->Seek({}, STREAM_SEEK_SET, nullptr), S_OK);
    EXPECT_EQ(loading->Load(stream.Get()), S_OK);
    SIZEL loaded{};
    EXPECT_EQ(other.As<IOleObject>(IID_IOleObject)->GetExtent(DVASPECT_CONTENT, &loaded), S_OK);
    EXPECT_EQ(loaded.cx, 5000);
    EXPECT_EQ(loaded.cy, 3000);

    const Picture picture(200, 120);
    RECTL bounds{0, 0, 200, 120};
    EXPECT_EQ(view->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, picture.Context(),
                         &bounds, nullptr, nullptr, 0),
              S_OK);
    EXPECT_GT(picture.Colours().size(), 2U);
}

} // namespace
} // namespace qx::test
