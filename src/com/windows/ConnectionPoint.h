// ConnectionPoint: connects a host's sinks to the events of one object.
//
// Sinks are called in the order in which they connected. By-reference arguments are passed as
// references of the event's own types; each sink sees the previous one's answers. The answers of a
// sink that fails are ignored.
#pragma once

#include "com/Class.h"
#include "com/windows/Com.h"

#include <algorithm>
#include <vector>

namespace qx::com {

class ComObject;
struct ServedClass;

class ConnectionPoint : public IConnectionPoint {
public:
    ConnectionPoint(ComObject& owner, const ServedClass& served)
        : m_owner(owner), m_served(served) {}
    ConnectionPoint(const ConnectionPoint&) = delete;
    ConnectionPoint& operator=(const ConnectionPoint&) = delete;
    virtual ~ConnectionPoint() = default;

    // Ends all connections.
    void Close();

    // The locale used to convert the sinks' answers to numbers and dates.
    void SetLocale(LCID locale) { m_locale = locale; }

    // Containers freeze the events of controls while they load or lay out a form.
    void Freeze(bool fFreeze) { m_frozen = std::max(m_frozen + (fFreeze ? 1 : -1), 0); }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override;
    ULONG STDMETHODCALLTYPE AddRef() override; // counts on the object that this belongs to
    ULONG STDMETHODCALLTYPE Release() override;

    HRESULT STDMETHODCALLTYPE GetConnectionInterface(IID* iid) override;
    HRESULT STDMETHODCALLTYPE
    GetConnectionPointContainer(IConnectionPointContainer** container) override;
    HRESULT STDMETHODCALLTYPE Advise(IUnknown* sink, DWORD* cookie) override;
    HRESULT STDMETHODCALLTYPE Unadvise(DWORD cookie) override;
    HRESULT STDMETHODCALLTYPE EnumConnections(IEnumConnections** connections) override;

private:
    struct Connection {
        DWORD cookie;
        ComPtr<IDispatch> sink;
    };

    void Subscribe();
    void Raise(const EventMember& event, std::span<Value> arguments);
    [[nodiscard]] bool IsConnected(DWORD cookie) const;

    ComObject& m_owner;
    const ServedClass& m_served;
    std::vector<Connection> m_connections;
    std::vector<Subscription> m_subscriptions; // only while there are connections
    DWORD m_lastCookie = 0;
    int m_frozen = 0;
    LCID m_locale = LOCALE_USER_DEFAULT;
};

} // namespace qx::com
