#include "com/windows/ConnectionPoint.h"

#include "com/windows/ComObject.h"
#include "com/windows/Enumerator.h"
#include "com/windows/Variants.h"

#include <algorithm>
#include <array>

namespace qx::com {
namespace {

// An event's arguments in a sink's order (last first), and the variables that references point to.
class SinkArguments {
public:
    SinkArguments(const std::vector<Parameter>& parameters, std::span<const Value> values)
        : m_parameters(parameters) {
        for (std::size_t i = 0; i < values.size(); ++i) {
            VARIANT& place = m_places[i].Get();
            place = VariantFrom(values[i]);
            m_arguments[values.size() - 1 - i] =
                m_parameters[i].byReference ? ReferenceTo(place, i) : place;
        }
    }

    [[nodiscard]] DISPPARAMS Get() {
        return {m_arguments.data(), nullptr, static_cast<UINT>(m_parameters.size()), 0};
    }

    void TakeAnswers(std::span<Value> values, LCID locale) {
        for (std::size_t i = 0; i < values.size(); ++i)
            if (m_parameters[i].byReference)
                values[i] = ValueFrom(m_places[i].Get(), m_parameters[i].type, locale);
    }

private:
    VARIANT ReferenceTo(VARIANT& place, std::size_t parameter) const {
        VARIANT reference;
        VariantInit(&reference);
        if (m_parameters[parameter].type.kind == Kind::Variant) {
            V_VARIANTREF(&reference) = &place;
            V_VT(&reference) = VT_BYREF | VT_VARIANT;
        } else {
            V_BYREF(&reference) = &V_I8(&place);
            V_VT(&reference) = static_cast<VARTYPE>(VT_BYREF | V_VT(&place));
        }
        return reference;
    }

    const std::vector<Parameter>& m_parameters;
    std::array<OwnedVariant, kMostParameters> m_places; // in order
    std::array<VARIANT, kMostParameters> m_arguments{}; // last first
};

bool CallSink(IDispatch& sink, DISPID id, LCID locale, DISPPARAMS arguments) {
    OwnedVariant result;
    EXCEPINFO exception{};
    const HRESULT status = sink.Invoke(id, IID_NULL, locale, DISPATCH_METHOD, &arguments,
                                       &result.Get(), &exception, nullptr);
    SysFreeString(exception.bstrSource);
    SysFreeString(exception.bstrDescription);
    SysFreeString(exception.bstrHelpFile);
    return SUCCEEDED(status);
}

} // namespace

void ConnectionPoint::Close() {
    m_subscriptions.clear();
    const auto ended = std::exchange(m_connections, {});
}

HRESULT ConnectionPoint::QueryInterface(REFIID iid, void** out) {
    if (out == nullptr)
        return E_POINTER;
    *out = nullptr;
    if (IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IConnectionPoint))
        return HandOut(this, out);
    return E_NOINTERFACE;
}

ULONG ConnectionPoint::AddRef() {
    return m_owner.AddRef();
}

ULONG ConnectionPoint::Release() {
    return m_owner.Release();
}

HRESULT ConnectionPoint::GetConnectionInterface(IID* iid) {
    if (iid == nullptr)
        return E_POINTER;
    *iid = m_served.eventsIid;
    return S_OK;
}

HRESULT ConnectionPoint::GetConnectionPointContainer(IConnectionPointContainer** container) {
    if (container == nullptr)
        return E_POINTER;
    m_owner.AddRef();
    *container = &m_owner;
    return S_OK;
}

HRESULT ConnectionPoint::Advise(IUnknown* sink, DWORD* cookie) {
    return m_owner.Home().Enter(cookie, [&] {
        const ComPtr<IUnknown> given(sink);
        if (!given)
            return E_POINTER;
        auto dispatch = given.As<IDispatch>(m_served.eventsIid);
        if (!dispatch)
            dispatch = given.As<IDispatch>(IID_IDispatch);
        if (!dispatch)
            return CONNECT_E_CANNOTCONNECT;
        if (m_subscriptions.empty())
            Subscribe();
        m_connections.push_back({++m_lastCookie, std::move(dispatch)});
        *cookie = m_lastCookie;
        return S_OK;
    });
}

HRESULT ConnectionPoint::Unadvise(DWORD cookie) {
    return m_owner.Home().Enter([&] {
        const auto found = std::ranges::find(m_connections, cookie, &Connection::cookie);
        if (found == m_connections.end())
            return CONNECT_E_NOCONNECTION;
        const auto ended = std::move(*found); // its release may call back
        m_connections.erase(found);
        if (m_connections.empty())
            m_subscriptions.clear();
        return S_OK;
    });
}

HRESULT ConnectionPoint::EnumConnections(IEnumConnections** connections) {
    return m_owner.Home().Enter(connections, [&] {
        std::vector<CONNECTDATA> items;
        for (const Connection& connection : m_connections)
            items.push_back({connection.sink.Get(), connection.cookie});
        return HandOutEnumerator<IEnumConnections>(std::move(items), connections);
    });
}

void ConnectionPoint::Subscribe() {
    std::vector<Subscription> subscriptions;
    for (const EventMember& event : m_served.type.events)
        subscriptions.push_back(
            event.Subscribe(m_owner.Library(), [this, &event](std::span<Value> arguments) {
                Raise(event, arguments);
            }));
    m_subscriptions = std::move(subscriptions);
}

void ConnectionPoint::Raise(const EventMember& event, std::span<Value> arguments) {
    if (m_frozen > 0)
        return;
    const ComPtr<ComObject> alive(&m_owner);
    const auto connected = m_connections;
    for (const Connection& connection : connected) {
        if (!IsConnected(connection.cookie))
            continue;
        SinkArguments given(event.parameters, arguments);
        if (CallSink(*connection.sink.Get(), event.id, m_locale, given.Get()))
            given.TakeAnswers(arguments, m_locale);
    }
}

bool ConnectionPoint::IsConnected(DWORD cookie) const {
    return std::ranges::find(m_connections, cookie, &Connection::cookie) != m_connections.end();
}

} // namespace qx::com
