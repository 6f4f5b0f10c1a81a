// The server used without registration.

#include "com/windows/Client.h"

namespace qx::test {
namespace {

class ComManifest : public ComClient {};

TEST_F(ComManifest, ObjectsAreMadeWithoutRegistration) {
    constexpr CLSID kSequence = {
        0xA73BB686, 0x1FEE, 0x4EE5, {0xA3, 0xCD, 0xE2, 0xB3, 0xD2, 0xE8, 0xB9, 0x34}};
    const auto create = [&](IDispatch** out) {
        return CoCreateInstance(kSequence, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch,
                                reinterpret_cast<void**>(out));
    };
    ComPtr<IDispatch> sequence;
    ASSERT_EQ(create(sequence.Out()), REGDB_E_CLASSNOTREG);

    ACTCTXW context{};
    context.cbSize = sizeof(context);
    context.lpSource = L"QXControls.manifest";
    const HANDLE handle = CreateActCtxW(&context);
    ASSERT_NE(handle, INVALID_HANDLE_VALUE) << GetLastError();
    ULONG_PTR cookie = 0;
    ASSERT_TRUE(ActivateActCtx(handle, &cookie));
    EXPECT_EQ(create(sequence.Out()), S_OK);
    if (sequence) {
        EXPECT_EQ(Call(sequence.Get(), IdOf(sequence.Get(), L"AddByte"), kCall, {Int(30)}).status,
                  S_OK);
        ComPtr<ITypeInfo> info;
        EXPECT_EQ(sequence->GetTypeInfo(0, 0, info.Out()), S_OK);
    }
    sequence = nullptr;
    DeactivateActCtx(0, cookie);
    ReleaseActCtx(handle);
}

} // namespace
} // namespace qx::test
