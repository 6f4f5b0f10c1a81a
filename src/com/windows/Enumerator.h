// Enumerators over a list copied at creation, whose items are counted interfaces.
#pragma once

#include "com/windows/Apartment.h"
#include "com/windows/Server.h"

#include <algorithm>
#include <vector>

namespace qx::com {

[[nodiscard]] inline IUnknown* UnknownIn(const CONNECTDATA& item) {
    return item.pUnk;
}
[[nodiscard]] inline IUnknown* UnknownIn(IConnectionPoint* item) {
    return item;
}

template <typename Interface, typename Item>
class Enumerator : public Interface {
public:
    explicit Enumerator(std::vector<Item> items, std::size_t next = 0)
        : m_items(std::move(items)), m_next(next) {
        for (const Item& item : m_items)
            UnknownIn(item)->AddRef();
    }
    virtual ~Enumerator() {
        for (const Item& item : m_items)
            UnknownIn(item)->Release();
    }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override {
        if (out == nullptr)
            return E_POINTER;
        *out = nullptr;
        if (IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, __uuidof(Interface)))
            return HandOut(this, out);
        return E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return m_apartment.AddRef(); }
    ULONG STDMETHODCALLTYPE Release() override {
        return m_apartment.Release([this] { delete this; });
    }

    HRESULT STDMETHODCALLTYPE Next(ULONG count, Item* items, ULONG* fetched) override {
        if (fetched != nullptr)
            *fetched = 0;
        if (items == nullptr || (fetched == nullptr && count != 1))
            return E_POINTER;
        return m_apartment.Enter([&] {
            ULONG given = 0;
            for (; given < count && m_next < m_items.size(); ++given) {
                items[given] = m_items[m_next++];
                UnknownIn(items[given])->AddRef();
            }
            if (fetched != nullptr)
                *fetched = given;
            return given == count ? S_OK : S_FALSE;
        });
    }
    HRESULT STDMETHODCALLTYPE Skip(ULONG count) override {
        return m_apartment.Enter([&] {
            const std::size_t left = m_items.size() - m_next;
            m_next += std::min<std::size_t>(count, left);
            return count <= left ? S_OK : S_FALSE;
        });
    }
    HRESULT STDMETHODCALLTYPE Reset() override {
        return m_apartment.Enter([&] {
            m_next = 0;
            return S_OK;
        });
    }
    HRESULT STDMETHODCALLTYPE Clone(Interface** out) override {
        return m_apartment.Enter(out, [&] {
            *out = new Enumerator(m_items, m_next);
            return S_OK;
        });
    }

private:
    InUse m_inUse;
    std::vector<Item> m_items;
    std::size_t m_next;
    Apartment m_apartment{*this};
};

template <typename Interface, typename Item>
HRESULT HandOutEnumerator(std::vector<Item> items, Interface** out) {
    *out = new Enumerator<Interface, Item>(std::move(items));
    return S_OK;
}

} // namespace qx::com
