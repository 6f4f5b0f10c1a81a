// The controls' faces on a form: in design mode, unresponsive, by keyboard, for screen readers, and
// when the host releases a control in the middle of a click.

#include "com/windows/Form.h"
#include "com/windows/Sink.h"
#include "com/windows/Site.h"

#include <algorithm>
#include <set>
#include <vector>

namespace qx::test {
namespace {

class ComFaces : public ComClient {
protected:
    // On a form of the test's own container.
    ComPtr<IDispatch> Place(const wchar_t* progId) {
        auto control = NewObject(progId);
        EXPECT_EQ(site.Place(control), S_OK);
        PumpMessages();
        return control;
    }

    Form form{600, 400};
    Site site{form.Window()};
};

TEST_F(ComFaces, AtDesignTimeAControlIsDrawnAndReactsToNothing) {
    site.SetAmbient(DISPID_AMBIENT_USERMODE, Bool(false));
    for (const wchar_t* const progId : {L"QXControls.QXMagnetCard", L"QXControls.QXProgSettings"}) {
        const auto control = Place(progId);
        const HWND window = form.ControlWindow();
        ASSERT_NE(window, nullptr);
        EXPECT_EQ(FindWindowExW(window, nullptr, nullptr, nullptr), nullptr); // everything is drawn
        EXPECT_GT(ColoursOf(window).size(), 3U);
        for (LONG y = 5; y < 400; y += 12)
            for (LONG x = 5; x < 600; x += 100) {
                SendMessageW(window, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(x, y));
                SendMessageW(window, WM_LBUTTONUP, 0, MAKELPARAM(x, y));
            }
        SendMessageW(window, WM_KEYDOWN, VK_SPACE, 0);
        if (std::wstring_view(progId) == L"QXControls.QXMagnetCard") {
            EXPECT_FALSE(Get(control.Get(), L"DataChanged").Flag());
        }
        Site::TakeAway(control);
        EXPECT_EQ(form.ControlWindow(), nullptr);
    }
}

// As in the server's file: black lines on a light grey ground.
std::set<std::pair<LONG, LONG>> LinesOfToolboxPicture() {
    constexpr WORD kToolboxBitmap = 101;
    const HBITMAP bitmap =
        LoadBitmapW(GetModuleHandleW(L"QXControls.ocx"), MAKEINTRESOURCEW(kToolboxBitmap));
    const HDC context = CreateCompatibleDC(nullptr);
    const HGDIOBJ earlier = SelectObject(context, bitmap);
    std::set<std::pair<LONG, LONG>> lines;
    for (LONG y = 0; y < 16; ++y)
        for (LONG x = 0; x < 16; ++x)
            if (GetPixel(context, x, y) == RGB(0, 0, 0))
                lines.emplace(x, y);
    SelectObject(context, earlier);
    DeleteDC(context);
    DeleteObject(bitmap);
    return lines;
}

TEST_F(ComFaces, ServicesShowTheirIconAndNameAtDesignTimeAlone) {
    constexpr COLORREF kText = RGB(150, 20, 30);
    constexpr COLORREF kGround = RGB(210, 220, 190);
    constexpr LONG kWidth = 220;
    constexpr LONG kHeight = 40;
    const auto lines = LinesOfToolboxPicture();
    ASSERT_EQ(lines.size(), 63U);
    site.SetAmbient(DISPID_AMBIENT_FORECOLOR, LongInt(static_cast<LONG>(kText)));
    site.SetAmbient(DISPID_AMBIENT_BACKCOLOR, LongInt(static_cast<LONG>(kGround)));
    const auto picture = [&](const wchar_t* progId) {
        const auto service = NewObject(progId);
        const auto object = service.As<IOleObject>(IID_IOleObject);
        EXPECT_EQ(object->SetClientSite(&site), S_OK);
        const HDC screen = GetDC(nullptr);
        const HDC context = CreateCompatibleDC(screen);
        const HBITMAP bitmap = CreateCompatibleBitmap(screen, kWidth, kHeight);
        const HGDIOBJ earlier = SelectObject(context, bitmap);
        const RECTL bounds{0, 0, kWidth, kHeight};
        EXPECT_EQ(service.As<IViewObject>(IID_IViewObject)
                      ->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, context, &bounds,
                             nullptr, nullptr, 0),
                  S_OK);
        std::vector<std::vector<COLORREF>> pixels(kHeight, std::vector<COLORREF>(kWidth));
        for (LONG y = 0; y < kHeight; ++y)
            for (LONG x = 0; x < kWidth; ++x)
                pixels[y][x] = GetPixel(context, x, y);
        SelectObject(context, earlier);
        DeleteObject(bitmap);
        DeleteDC(context);
        ReleaseDC(nullptr, screen);
        EXPECT_EQ(object->SetClientSite(nullptr), S_OK);
        return pixels;
    };
    // the icon's left edge; 0 if it is not found
    const auto leftOfIcon = [&](const std::vector<std::vector<COLORREF>>& pixels) {
        const auto standsAt = [&](LONG left, LONG top) {
            for (LONG y = 0; y < 16; ++y)
                for (LONG x = 0; x < 16; ++x)
                    if (pixels[top + y][left + x] != (lines.contains({x, y}) ? kText : kGround))
                        return false;
            return true;
        };
        for (LONG top = 0; top + 16 <= kHeight; ++top)
            for (LONG left = 0; left + 16 <= kWidth; ++left)
                if (standsAt(left, top))
                    return left;
        return LONG{0};
    };
    for (const wchar_t* const progId :
         {L"QXControls.QXKeyboardAccess", L"QXControls.QXKeyboardLayoutData",
          L"QXControls.QXProgSettings", L"QXControls.QXSequencer"}) {
        site.SetAmbient(DISPID_AMBIENT_USERMODE, Bool(false));
        const auto designed = picture(progId);
        const LONG left = leftOfIcon(designed);
        EXPECT_GT(left, 0) << Narrow(progId);
        bool isNamed = false;
        for (LONG x = left + 18; x < kWidth - 3; ++x)
            isNamed = isNamed || designed[kHeight / 2][x] != kGround;
        EXPECT_TRUE(isNamed) << Narrow(progId);
        site.SetAmbient(DISPID_AMBIENT_USERMODE, Bool(true));
        for (const auto& row : picture(progId))
            for (const COLORREF colour : row)
                ASSERT_EQ(colour, RGB(0, 0, 0)) << Narrow(progId); // the bitmap's own colour
    }
}

TEST_F(ComFaces, TheContainersColourAndFontAreUsed) {
    const auto heightOfAButton = [&](COLORREF background) {
        site.SetAmbient(DISPID_AMBIENT_BACKCOLOR, LongInt(static_cast<LONG>(background)));
        const auto control = Place(L"QXControls.QXPos");
        EXPECT_TRUE(ColoursOf(form.ControlWindow()).contains(background));
        RECT place{};
        GetClientRect(form.Child(L"BUTTON"), &place);
        Site::TakeAway(control);
        return place.bottom;
    };
    const LONG usual = heightOfAButton(RGB(210, 220, 190));
    site.SetFont(L"Tahoma", 24);
    EXPECT_GT(heightOfAButton(RGB(70, 10, 20)), usual * 3 / 2);
}

TEST_F(ComFaces, ADeadControlReactsToNothingUntilItLivesAgain) {
    const auto control = Place(L"QXControls.QXMagnetCard");
    const auto ole = control.As<IOleControl>(IID_IOleControl);
    PutCaption(PartOf(control.Get(), L"ReaderOptions").Get(), L"VerifyLRC", L"Verify &LRC");
    Get(control.Get(), L"Translate");
    const HWND box = form.Child(L"BUTTON", L"Verify &LRC");
    ASSERT_NE(box, nullptr);
    site.SetAmbient(DISPID_AMBIENT_UIDEAD, Bool(true));
    EXPECT_EQ(ole->OnAmbientPropertyChange(DISPID_AMBIENT_UIDEAD), S_OK);
    EXPECT_FALSE(IsWindowEnabled(box));
    SendMessageW(box, BM_CLICK, 0, 0);
    SendMessageW(GetParent(box), WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(box), BN_CLICKED),
                 reinterpret_cast<LPARAM>(box));
    MSG letter{};
    letter.message = WM_SYSKEYDOWN;
    letter.wParam = 'L';
    EXPECT_EQ(ole->OnMnemonic(&letter), S_OK);
    EXPECT_FALSE(Get(control.Get(), L"DataChanged").Flag());
    site.SetAmbient(DISPID_AMBIENT_UIDEAD, Bool(false));
    EXPECT_EQ(ole->OnAmbientPropertyChange(DISPID_AMBIENT_UIDEAD), S_OK);
    SendMessageW(box, BM_CLICK, 0, 0);
    EXPECT_TRUE(Get(control.Get(), L"DataChanged").Flag());
    Site::TakeAway(control);
}

TEST_F(ComFaces, TabPassesTheChildrenInTheirOrderAndLeavesAtTheEnds) {
    const auto control = Place(L"QXControls.QXMagnetCard");
    const auto active = control.As<IOleInPlaceActiveObject>(IID_IOleInPlaceActiveObject);
    const auto object = control.As<IOleObject>(IID_IOleObject);
    ASSERT_EQ(object->DoVerb(OLEIVERB_UIACTIVATE, nullptr, &site, 0, form.Window(), nullptr), S_OK);
    const auto pass = [&] {
        std::vector<HWND> passed{GetFocus()};
        for (;;) {
            MSG tab{};
            tab.hwnd = GetFocus();
            tab.message = WM_KEYDOWN;
            tab.wParam = VK_TAB;
            if (active->TranslateAccelerator(&tab) != S_OK || passed.size() > 99)
                return passed;
            passed.push_back(GetFocus());
        }
    };
    std::vector<HWND> onward = pass();
    ASSERT_GE(onward.size(), 5U);
    EXPECT_EQ(std::set(onward.begin(), onward.end()).size(), onward.size());
    for (std::size_t i = 0; i + 1 < onward.size(); ++i) {
        RECT one{};
        RECT next{};
        GetWindowRect(onward[i], &one);
        GetWindowRect(onward[i + 1], &next);
        EXPECT_TRUE(next.top >= one.bottom || next.left >= one.right) << "in reading order: " << i;
    }
    BYTE keys[256] = {};
    keys[VK_SHIFT] = 0x80;
    SetKeyboardState(keys);
    std::ranges::reverse(onward);
    EXPECT_EQ(pass(), onward);
    keys[VK_SHIFT] = 0;
    SetKeyboardState(keys);
    Site::TakeAway(control);
}

TEST_F(ComFaces, ButtonsWithTheSameTextHaveDifferentNames) {
    const auto control = Place(L"QXControls.QXMagnetCard");
    const auto captions = PartOf(control.Get(), L"Captions");
    Put(captions.Get(), L"UseThisHeader", Text(L"Send a &header"));
    Put(captions.Get(), L"UseThisTerminator", Text(L"Send a terminator"));
    for (const wchar_t* const part : {L"CreateHeader", L"CreateTerminator"})
        PutCaption(captions.Get(), part, L"Edit...");
    Get(control.Get(), L"Translate");
    const HWND first = form.Child(L"BUTTON", L"Edit...");
    const HWND second = FindWindowExW(form.ControlWindow(), first, L"BUTTON", L"Edit...");
    ASSERT_TRUE(first != nullptr && second != nullptr);
    const auto nameOf = [](HWND button) {
        const auto heard = AccessibleOf(button);
        BSTR name = nullptr;
        EXPECT_EQ(heard->get_accName(LongInt(CHILDID_SELF), &name), S_OK);
        VARIANT role;
        EXPECT_EQ(heard->get_accRole(LongInt(CHILDID_SELF), &role), S_OK); // the system's default
        const std::string narrow = Narrow(name);
        SysFreeString(name);
        return narrow;
    };
    EXPECT_EQ(nameOf(first), "Edit..., Send a header");
    EXPECT_EQ(nameOf(second), "Edit..., Send a terminator");
    Site::TakeAway(control);
}

// A container may remove the control from the form at any notification, and put it back.
TEST_F(ComFaces, AContainerThatClosesTheControlWhileItIsActivatedDoesNoHarm) {
    for (std::function<void()> Site::*const callback :
         {&Site::onInPlaceActivate, &Site::onShowObject, &Site::onUIActivate}) {
        const auto control = NewObject(L"QXControls.QXMagnetCard");
        const auto activate = [&] { return site.Place(control, OLEIVERB_UIACTIVATE); };
        int called = 0;
        site.*callback = [&] {
            ++called;
            Site::TakeAway(control);
        };
        EXPECT_EQ(activate(), E_FAIL);
        EXPECT_EQ(called, 1);
        EXPECT_EQ(form.ControlWindow(), nullptr);
        site.*callback = nullptr;
        EXPECT_EQ(activate(), S_OK);
        EXPECT_NE(form.ControlWindow(), nullptr);
        Site::TakeAway(control);
    }
}

TEST_F(ComFaces, ChangedSystemColoursAreUsedAtOnce) {
    const int element = COLOR_BTNFACE;
    const COLORREF usual = GetSysColor(element);
    const auto choose = [&](COLORREF colour) { SetSysColors(1, &element, &colour); };
    constexpr COLORREF kBefore = RGB(40, 90, 10);
    constexpr COLORREF kAfter = RGB(10, 50, 110);
    choose(kBefore);
    site.SetAmbient(DISPID_AMBIENT_BACKCOLOR,
                    LongInt(static_cast<LONG>(0x80000000U | COLOR_BTNFACE)));
    const auto control = Place(L"QXControls.QXMagnetCard");
    const HWND window = form.ControlWindow();
    EXPECT_TRUE(ColoursOf(window).contains(kBefore));
    choose(kAfter);
    SendMessageW(window, WM_SYSCOLORCHANGE, 0, 0);
    const std::set<COLORREF> shown = ColoursOf(window);
    EXPECT_TRUE(shown.contains(kAfter));
    EXPECT_FALSE(shown.contains(kBefore));
    choose(usual);
    Site::TakeAway(control);
}

// A host may answer a click by releasing the control.
TEST_F(ComFaces, TypingIntoASequenceAsksTheHostAndClicksSurviveItsRelease) {
    auto control = Place(L"QXControls.QXMagnetCard");
    const Services services;
    services.HandTo(control.Get());
    const auto captions = PartOf(control.Get(), L"Captions");
    PutCaption(captions.Get(), L"CreateHeader", L"Edit...");
    Get(control.Get(), L"Translate");
    constexpr DISPID kEditCurrentHeader = 3;
    constexpr DISPID kAdvanceEdit = 5;
    std::vector<DISPID> heard;
    Listen(control.Get(), [&](Heard event) {
        heard.push_back(event.id);
        if (event.id == kAdvanceEdit)
            *V_BOOLREF(&event.arguments[0]) = heard.size() == 2 ? VARIANT_TRUE : VARIANT_FALSE;
        if (event.id == kEditCurrentHeader && heard.size() > 3) {
            Site::TakeAway(control); // and its windows
            control = nullptr;
        }
        return S_OK;
    });
    const HWND header = form.Child(L"EDIT");
    const HWND edit = form.Child(L"BUTTON", L"Edit...");
    ASSERT_TRUE(header != nullptr && edit != nullptr);
    Type(header, L"a");
    EXPECT_EQ(heard, (std::vector<DISPID>{kAdvanceEdit}));
    Type(header, L"b");
    EXPECT_EQ(heard, (std::vector<DISPID>{kAdvanceEdit, kAdvanceEdit, kEditCurrentHeader}));
    SendMessageW(edit, BM_CLICK, 0, 0);
    EXPECT_EQ(heard.back(), kEditCurrentHeader);
    EXPECT_EQ(heard.size(), 4U);
    EXPECT_FALSE(control);
    EXPECT_FALSE(IsWindow(edit));
}

} // namespace
} // namespace qx::test
