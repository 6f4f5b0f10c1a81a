// Basics for COM code: counted pointers, texts, variants, and a guard that lets no exception leave
// the server.
#pragma once

#include <windows.h>

#include <ocidl.h>
#include <ole2.h>
#include <olectl.h>

#include <new>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

namespace qx::com {

template <typename T>
class ComPtr {
public:
    ComPtr() = default;
    ComPtr(std::nullptr_t) {}
    ComPtr(T* pointer) : m_pointer(pointer) {
        if (m_pointer != nullptr)
            m_pointer->AddRef();
    }
    ComPtr(const ComPtr& other) : ComPtr(other.m_pointer) {}
    ComPtr(ComPtr&& other) noexcept : m_pointer(std::exchange(other.m_pointer, nullptr)) {}
    ComPtr& operator=(ComPtr other) noexcept {
        std::swap(m_pointer, other.m_pointer);
        return *this;
    }
    ~ComPtr() {
        if (m_pointer != nullptr)
            m_pointer->Release();
    }

    // Adopts a reference without counting it again.
    [[nodiscard]] static ComPtr Attach(T* pointer) {
        ComPtr taken;
        taken.m_pointer = pointer;
        return taken;
    }
    // Gives the reference away without releasing it.
    [[nodiscard]] T* Detach() { return std::exchange(m_pointer, nullptr); }

    [[nodiscard]] T* Get() const { return m_pointer; }
    T* operator->() const { return m_pointer; }
    explicit operator bool() const { return m_pointer != nullptr; }

    // The address for a call that returns a counted reference.
    [[nodiscard]] T** Out() {
        *this = nullptr;
        return &m_pointer;
    }

    // Another interface of the same object; null if it does not have it.
    template <typename Other>
    [[nodiscard]] ComPtr<Other> As(REFIID iid) const {
        void* other = nullptr;
        if (m_pointer == nullptr || FAILED(m_pointer->QueryInterface(iid, &other)))
            return nullptr;
        return ComPtr<Other>::Attach(static_cast<Other*>(other));
    }

private:
    T* m_pointer = nullptr;
};

// A text that the host frees, or that goes into a variant.
[[nodiscard]] inline BSTR NewBstr(std::u16string_view text) {
    const auto* const units = reinterpret_cast<const OLECHAR*>(text.data());
    const BSTR bstr = SysAllocStringLen(units, static_cast<UINT>(text.size()));
    if (bstr == nullptr)
        throw std::bad_alloc();
    return bstr;
}

// Null is an empty text.
[[nodiscard]] inline std::u16string_view TextOf(BSTR bstr) {
    return {reinterpret_cast<const char16_t*>(bstr), SysStringLen(bstr)};
}

[[nodiscard]] inline std::wstring Wide(std::u16string_view text) {
    return {text.begin(), text.end()};
}

// For names and identifiers, which are ASCII.
[[nodiscard]] inline std::wstring Wide(std::string_view ascii) {
    return {ascii.begin(), ascii.end()};
}

class OwnedVariant {
public:
    OwnedVariant() { VariantInit(&m_variant); }
    explicit OwnedVariant(VARIANT taken) : m_variant(taken) {}
    OwnedVariant(const OwnedVariant&) = delete;
    OwnedVariant& operator=(const OwnedVariant&) = delete;
    ~OwnedVariant() { VariantClear(&m_variant); }

    [[nodiscard]] VARIANT& Get() { return m_variant; }
    [[nodiscard]] VARIANT Detach() {
        const VARIANT given = m_variant;
        VariantInit(&m_variant);
        return given;
    }

private:
    VARIANT m_variant;
};

// Runs the body and turns exceptions into a status: no exception may leave the server.
template <typename Body>
[[nodiscard]] HRESULT Guarded(Body body) noexcept {
    try {
        return body();
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    } catch (...) {
        return E_FAIL;
    }
}

// Returns the interface in `*out`, with a reference added.
template <typename T>
HRESULT HandOut(T* object, void** out) {
    object->AddRef();
    *out = object;
    return S_OK;
}

} // namespace qx::com
