// The controls in a container that is not ours.

#include "com/windows/Client.h"
#include "com/windows/Members.h"

#include <cstdint>
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

// A drawing of which the bits can be read.
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
    [[nodiscard]] std::set<std::uint32_t> Colours() const {
        GdiFlush();
        const auto* const pixels = static_cast<const std::uint32_t*>(m_bits);
        return {pixels, pixels + m_count};
    }

private:
    HDC m_context = CreateCompatibleDC(nullptr);
    HBITMAP m_bitmap = nullptr;
    void* m_bits = nullptr;
    std::size_t m_count;
};

class ComContainer : public ComClient {
protected:
    static void SetUpTestSuite() {
        ComClient::SetUpTestSuite();
        const auto init = FunctionOf<WinInit>("AtlAxWinInit");
        ASSERT_NE(init, nullptr);
        ASSERT_TRUE(init());
    }
    void SetUp() override {
        form = NewForm();
        ASSERT_NE(form, nullptr);
    }
    void TearDown() override {
        container = nullptr;
        DestroyWindow(form);
        PumpMessages();
    }

    // Without a frame, for which wine would wait for a window manager.
    static HWND NewForm() {
        return CreateWindowExW(0, L"STATIC", L"form", WS_POPUP | WS_VISIBLE, 10, 10, 300, 200,
                               nullptr, nullptr, nullptr, nullptr);
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

    static std::set<std::uint32_t> ColoursOf(HWND window) {
        RECT bounds{};
        GetClientRect(window, &bounds);
        UpdateWindow(window);
        const Picture picture(bounds.right, bounds.bottom);
        const HDC context = GetDC(window);
        BitBlt(picture.Context(), 0, 0, bounds.right, bounds.bottom, context, 0, 0, SRCCOPY);
        ReleaseDC(window, context);
        return picture.Colours();
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
        form = NewForm();
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

    const Picture picture(200, 120);
    RECTL bounds{0, 0, 200, 120};
    EXPECT_EQ(view->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, picture.Context(),
                         &bounds, nullptr, nullptr, 0),
              S_OK);
    EXPECT_GT(picture.Colours().size(), 2U);
}

} // namespace
} // namespace qx::test
