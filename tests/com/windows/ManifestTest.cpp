// Using the server without registration.

#include "com/windows/Form.h"
#include "com/windows/Sink.h"

namespace qx::test {
namespace {

// During its lifetime, this program counts as one that names the assembly in its manifest.
class NamedInManifest {
public:
    NamedInManifest() {
        ACTCTXW context{};
        context.cbSize = sizeof(context);
        context.lpSource = L"QXControls.manifest";
        m_handle = CreateActCtxW(&context);
        EXPECT_NE(m_handle, INVALID_HANDLE_VALUE) << GetLastError();
        EXPECT_TRUE(ActivateActCtx(m_handle, &m_cookie));
    }
    NamedInManifest(const NamedInManifest&) = delete;
    NamedInManifest& operator=(const NamedInManifest&) = delete;
    ~NamedInManifest() {
        DeactivateActCtx(0, m_cookie);
        ReleaseActCtx(m_handle);
    }

private:
    HANDLE m_handle;
    ULONG_PTR m_cookie = 0;
};

class ComManifest : public ComClient {
protected:
    void SetUp() override {
        CLSID clsid{};
        ASSERT_NE(CLSIDFromProgID(L"QXControls.QXMagnetCard", &clsid), S_OK) << "registered";
    }
};

TEST_F(ComManifest, ObjectsAreMadeWithoutRegistration) {
    const NamedInManifest named;
    const auto sequence = NewObject(L"QXControls.KeySequence");
    ASSERT_TRUE(sequence);
    Get(sequence.Get(), L"AddByte", {Int(30)});
    ComPtr<ITypeInfo> info;
    EXPECT_EQ(sequence->GetTypeInfo(0, 0, info.Out()), S_OK);
}

TEST_F(ComManifest, AVisibleControlIsPlacedClickedAndAccessible) {
    const NamedInManifest named;
    ASSERT_TRUE(AtlStarts());
    Form form(600, 500);
    const auto control = form.Place("QXMagnetCard");
    ASSERT_TRUE(control);
    PutCaption(PartOf(control.Get(), L"Captions").Get(), L"CreateHeader", L"Edit...");
    Get(control.Get(), L"Translate");
    int edits = 0;
    Listen(control.Get(), [&](Heard event) {
        constexpr DISPID kEditCurrentHeader =
            3; // nTrackId, sInSequence, fCancelAction, sOutSequence
        if (event.id != kEditCurrentHeader)
            return E_FAIL;
        ++edits;
        SysReAllocString(V_BSTRREF(&event.arguments.at(3)), L" 30158");
        return S_OK;
    });
    const HWND edit = form.Child(L"BUTTON", L"Edit...");
    ASSERT_NE(edit, nullptr);
    SendMessageW(edit, BM_CLICK, 0, 0);
    EXPECT_EQ(edits, 1);
    const auto header = PartOf(PartOf(control.Get(), L"Track1").Get(), L"Header");
    ClientCall text = Get(header.Get(), L"KeyString");
    EXPECT_EQ(std::wstring(V_BSTR(&text.result)), L" 30158");
    VariantClear(&text.result);
}

} // namespace
} // namespace qx::test
