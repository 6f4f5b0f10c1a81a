// The faces in high contrast mode.

#include "com/windows/Form.h"
#include "com/windows/Import.h"
#include "com/windows/Site.h"

#include <map>

namespace qx::test {
namespace {

constexpr COLORREF kFace = RGB(0, 0, 0);
constexpr COLORREF kText = RGB(255, 240, 0);
constexpr COLORREF kChosen = RGB(90, 0, 130);
constexpr COLORREF kField = RGB(0, 20, 40);

// During its lifetime the server sees high contrast mode, which wine does not support, and the
// system has its colours.
class HighContrast {
public:
    HighContrast() {
        for (const auto& [element, colour] : std::map<int, COLORREF>{{COLOR_BTNFACE, kFace},
                                                                     {COLOR_BTNTEXT, kText},
                                                                     {COLOR_HIGHLIGHT, kChosen},
                                                                     {COLOR_HIGHLIGHTTEXT, kText},
                                                                     {COLOR_WINDOW, kField},
                                                                     {COLOR_WINDOWTEXT, kText}}) {
            m_usual[element] = GetSysColor(element);
            SetSysColors(1, &element, &colour);
        }
    }
    HighContrast(const HighContrast&) = delete;
    HighContrast& operator=(const HighContrast&) = delete;
    ~HighContrast() {
        for (const auto& [element, colour] : m_usual)
            SetSysColors(1, &element, &colour);
    }

private:
    static BOOL WINAPI Answer(UINT action, UINT number, void* data, UINT flags) {
        const BOOL isDone = SystemParametersInfoW(action, number, data, flags);
        if (action == SPI_GETHIGHCONTRAST)
            static_cast<HIGHCONTRASTW*>(data)->dwFlags |= HCF_HIGHCONTRASTON;
        return isDone;
    }

    const ReplacedImport m_system{"SystemParametersInfoW", reinterpret_cast<void*>(Answer)};
    std::map<int, COLORREF> m_usual;
};

class ComContrast : public ComClient {
protected:
    ComContrast() {
        site.SetAmbient(DISPID_AMBIENT_BACKCOLOR, LongInt(static_cast<LONG>(kOfForm)));
        services.HandTo(control.Get());
        Get(control.Get(), L"ReloadKeySettings");
    }
    void PickAKey() const {
        EXPECT_EQ(AccessibleOf(form.Child(L"QXControls.Keys"))->accDoDefaultAction(LongInt(9)),
                  S_OK);
    }
    void ExpectUsualColours() const {
        const std::set<COLORREF> shown = ColoursOf(form.ControlWindow());
        for (const COLORREF colour : {kOfForm, kOfKeys, kOfCurrentKey})
            EXPECT_TRUE(shown.contains(colour)) << colour;
    }
    void ExpectContrast() const {
        const std::set<COLORREF> shown = ColoursOf(form.ControlWindow());
        for (const COLORREF colour : {kFace, kText, kChosen, kField})
            EXPECT_TRUE(shown.contains(colour)) << colour;
        for (const COLORREF colour : {kOfForm, kOfKeys, kOfCurrentKey})
            EXPECT_FALSE(shown.contains(colour)) << colour;
    }

    static constexpr COLORREF kOfForm = RGB(210, 220, 190);
    static constexpr COLORREF kOfKeys = RGB(0, 0, 255);
    static constexpr COLORREF kOfCurrentKey = RGB(255, 255, 0);
    Services services;
    Form form{600, 400};
    Site site{form.Window()};
    ComPtr<IDispatch> control = NewObject(L"QXControls.QXLayeredFuncKeys");
};

TEST_F(ComContrast, IsFollowedAsItComesAndGoes) {
    ASSERT_EQ(site.Place(control), S_OK);
    PickAKey();
    ExpectUsualColours();
    {
        const HighContrast wanted;
        SendMessageW(form.ControlWindow(), WM_SYSCOLORCHANGE, 0, 0);
        ExpectContrast();
    }
    SendMessageW(form.ControlWindow(), WM_SYSCOLORCHANGE, 0, 0);
    ExpectUsualColours();
    Site::TakeAway(control);
}

TEST_F(ComContrast, IsDrawnAtDesignTimeToo) {
    ASSERT_EQ(site.Place(control), S_OK);
    PickAKey();
    Site::TakeAway(control);
    const HighContrast wanted;
    site.SetAmbient(DISPID_AMBIENT_USERMODE, Bool(false));
    ASSERT_EQ(site.Place(control), S_OK);
    ExpectContrast();
    Site::TakeAway(control);
}

} // namespace
} // namespace qx::test
