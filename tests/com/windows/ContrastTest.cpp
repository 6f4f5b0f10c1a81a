// The faces in the colours of a user who wants high contrast.

#include "com/windows/Form.h"
#include "com/windows/Site.h"

#include <map>

namespace qx::test {
namespace {

constexpr COLORREF kFace = RGB(0, 0, 0);
constexpr COLORREF kText = RGB(255, 240, 0);
constexpr COLORREF kChosen = RGB(90, 0, 130);
constexpr COLORREF kField = RGB(0, 20, 40);

// Where the server's module keeps the address of a function of the system.
void** ImportOf(HMODULE module, const char* name) {
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

// While it lives, the server hears from the system that the user wants high contrast, of which wine
// knows nothing, and the system has the colours for it.
class HighContrast {
public:
    HighContrast()
        : m_place(ImportOf(GetModuleHandleW(L"QXControls.ocx"), "SystemParametersInfoW")) {
        EXPECT_NE(m_place, nullptr);
        m_earlier = Replace(reinterpret_cast<void*>(Answer));
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
        Replace(m_earlier);
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
    void* Replace(void* function) const {
        DWORD usual = 0;
        VirtualProtect(m_place, sizeof(void*), PAGE_READWRITE, &usual);
        void* const earlier = std::exchange(*m_place, function);
        VirtualProtect(m_place, sizeof(void*), usual, &usual);
        return earlier;
    }

    void** m_place;
    void* m_earlier = nullptr;
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
