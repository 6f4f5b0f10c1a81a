// Stores the control's size with a form. Its settings are stored in the keyboard.
#include "com/windows/Control.h"

#include "qxcontrols/common/LittleEndian.h"

#include <array>

namespace qx::com {
namespace {

// A stored size: a mark, width and height.
constexpr std::string_view kMark = "QXC1";
constexpr std::size_t kStoredSize = kMark.size() + 2 * sizeof(std::int32_t);
constexpr wchar_t kWidth[] = L"_ExtentX"; // the names that classic hosts use
constexpr wchar_t kHeight[] = L"_ExtentY";

void ReadLength(IPropertyBag& bag, IErrorLog* log, const wchar_t* name, LONG& length) {
    OwnedVariant value;
    V_VT(&value.Get()) = VT_I4;
    if (SUCCEEDED(bag.Read(name, &value.Get(), log)) &&
        SUCCEEDED(VariantChangeType(&value.Get(), &value.Get(), 0, VT_I4)) &&
        V_I4(&value.Get()) >= 0)
        length = V_I4(&value.Get());
}

HRESULT WriteLength(IPropertyBag& bag, const wchar_t* name, LONG length) {
    OwnedVariant value;
    V_VT(&value.Get()) = VT_I4;
    V_I4(&value.Get()) = length;
    return bag.Write(name, &value.Get());
}

} // namespace

HRESULT Control::GetClassID(CLSID* clsid) {
    if (clsid == nullptr)
        return E_POINTER;
    *clsid = Served().clsid;
    return S_OK;
}

HRESULT Control::IsDirty() {
    return Home().Enter([&] { return m_isDirty ? S_OK : S_FALSE; });
}

HRESULT Control::Load(IStream* stream) {
    if (stream == nullptr)
        return E_POINTER;
    return Home().Enter([&] {
        std::array<char, kStoredSize> stored{};
        ULONG read = 0;
        const HRESULT result = stream->Read(stored.data(), kStoredSize, &read);
        if (FAILED(result))
            return result;
        const SIZEL extent{FromLittleEndian<std::int32_t>(&stored[kMark.size()]),
                           FromLittleEndian<std::int32_t>(&stored[kMark.size() + 4])};
        if (read != kStoredSize ||
            !std::string_view(stored.data(), kStoredSize).starts_with(kMark) || extent.cx < 0 ||
            extent.cy < 0)
            return E_FAIL;
        m_extent = extent;
        m_isDirty = false;
        return S_OK;
    });
}

HRESULT Control::Save(IStream* stream, BOOL fClearDirty) {
    if (stream == nullptr)
        return E_POINTER;
    return Home().Enter([&] {
        const std::string stored = std::string(kMark) + LittleEndian<std::int32_t>(m_extent.cx) +
                                   LittleEndian<std::int32_t>(m_extent.cy);
        const HRESULT result = stream->Write(stored.data(), kStoredSize, nullptr);
        if (SUCCEEDED(result) && fClearDirty != FALSE)
            m_isDirty = false;
        return result;
    });
}

HRESULT Control::GetSizeMax(ULARGE_INTEGER* size) {
    if (size == nullptr)
        return E_POINTER;
    size->QuadPart = kStoredSize;
    return S_OK;
}

HRESULT Control::Load(IPropertyBag* bag, IErrorLog* log) {
    if (bag == nullptr)
        return E_POINTER;
    return Home().Enter([&] {
        ReadLength(*bag, log, kWidth, m_extent.cx);
        ReadLength(*bag, log, kHeight, m_extent.cy);
        m_isDirty = false;
        return S_OK;
    });
}

HRESULT Control::Save(IPropertyBag* bag, BOOL fClearDirty, BOOL) {
    if (bag == nullptr)
        return E_POINTER;
    return Home().Enter([&] {
        HRESULT result = WriteLength(*bag, kWidth, m_extent.cx);
        if (SUCCEEDED(result))
            result = WriteLength(*bag, kHeight, m_extent.cy);
        if (SUCCEEDED(result) && fClearDirty != FALSE)
            m_isDirty = false;
        return result;
    });
}

} // namespace qx::com
