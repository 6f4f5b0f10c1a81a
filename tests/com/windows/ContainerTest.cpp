// The controls in a container that is not ours.

#include "com/windows/Client.h"
#include "com/windows/Members.h"

#include <set>

namespace qx::test {
namespace {

using WinInit = BOOL(WINAPI*)();
using CreateControl = HRESULT(WINAPI*)(LPCOLESTR, HWND, IStream*, IUnknown**);

template <typename Function>
Function FunctionOf(const char* name) {
    return reinterpret_cast<Function>(
        reinterpret_cast<void*>(GetProcAddress(LoadLibraryW(L"atl100.dll"), name)));
}

class ComContainer : public ComClient {
protected:
    void SetUp() override {
        const auto init = FunctionOf<WinInit>("AtlAxWinInit");
        ASSERT_NE(init, nullptr);
        ASSERT_TRUE(init());
        form = CreateWindowExW(0, L"STATIC", L"form", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 10, 10, 300,
                               200, nullptr, nullptr, nullptr, nullptr);
        ASSERT_NE(form, nullptr);
    }
    void TearDown() override {
        container = nullptr;
        DestroyWindow(form);
        PumpMessages();
    }

    void Place(const std::string& name) {
        const auto create = FunctionOf<CreateControl>("AtlAxCreateControl");
        ASSERT_EQ(create(Wide("QXControls." + name).c_str(), form, nullptr, container.Out()), S_OK)
            << name;
        PumpMessages();
    }
    static void PumpMessages() {
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
    }
    // The control's own window on the form.
    [[nodiscard]] HWND Window() const {
        return FindWindowExW(form, nullptr, L"QXControls.Control", nullptr);
    }

    static std::set<COLORREF> ColoursOf(HWND window) {
        RECT bounds{};
        GetClientRect(window, &bounds);
        UpdateWindow(window);
        const HDC context = GetDC(window);
        std::set<COLORREF> colours;
        for (LONG x = 0; x < bounds.right; x += 2)
            for (LONG y = 0; y < bounds.bottom; y += 2)
                colours.insert(GetPixel(context, x, y));
        ReleaseDC(window, context);
        return colours;
    }

    HWND form = nullptr;
    ComPtr<IUnknown> container;
};

TEST_F(ComContainer, VisibleControlsShowAndResizeOnAForm) {
    for (const char* const name :
         {"QXBarcode", "QXMagnetCard", "QXFreeProgKeys", "QXLayeredFuncKeys", "QXPos",
          "QXPosDisplay", "QXCommonKeyboard", "QXLayoutDisplay"}) {
        Place(name);
        const HWND window = Window();
        ASSERT_NE(window, nullptr) << name;
        wchar_t text[64] = {};
        GetWindowTextW(window, text, 64);
        EXPECT_EQ(Narrow(text), name); // which screen readers say
        RECT onForm{};
        RECT onControl{};
        GetClientRect(form, &onForm);
        GetClientRect(window, &onControl);
        EXPECT_TRUE(EqualRect(&onForm, &onControl)) << name;
        EXPECT_GT(ColoursOf(window).size(), 2U) << name;
        SendMessageW(window, WM_LBUTTONDOWN, 0, MAKELPARAM(5, 5));
        SendMessageW(window, WM_KEYDOWN, VK_TAB, 0);

        container = nullptr;
        DestroyWindow(form);
        PumpMessages();
        EXPECT_FALSE(IsWindow(window)) << name;
        form = CreateWindowExW(0, L"STATIC", L"form", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 10, 10, 300,
                               200, nullptr, nullptr, nullptr, nullptr);
    }
}

TEST_F(ComContainer, ServiceObjectsHaveNoWindowAtRunTime) {
    Place("QXProgSettings");
    EXPECT_EQ(Window(), nullptr);
}

// As a container that only draws them, while a form is designed or printed.
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
    EXPECT_NE(loading->Load(stream.Get()), S_OK); // nothing follows
    ASSERT_EQ(stream->Seek({}, STREAM_SEEK_SET, nullptr), S_OK);
    EXPECT_EQ(loading->Load(stream.Get()), S_OK);
    SIZEL loaded{};
    EXPECT_EQ(other.As<IOleObject>(IID_IOleObject)->GetExtent(DVASPECT_CONTENT, &loaded), S_OK);
    EXPECT_EQ(loaded.cx, 5000);
    EXPECT_EQ(loaded.cy, 3000);

    const HDC screen = GetDC(nullptr);
    const HDC memory = CreateCompatibleDC(screen);
    const HBITMAP bitmap = CreateCompatibleBitmap(screen, 200, 120);
    SelectObject(memory, bitmap);
    RECTL bounds{0, 0, 200, 120};
    EXPECT_EQ(view->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, memory, &bounds, nullptr,
                         nullptr, 0),
              S_OK);
    std::set<COLORREF> colours;
    for (int x = 0; x < 200; ++x)
        for (int y = 0; y < 120; ++y)
            colours.insert(GetPixel(memory, x, y));
    EXPECT_GT(colours.size(), 2U);
    DeleteDC(memory);
    DeleteObject(bitmap);
    ReleaseDC(nullptr, screen);
}

} // namespace
} // namespace qx::test
