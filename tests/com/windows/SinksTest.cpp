// Events as hosts' sinks receive them; the test presses the controls' buttons like a user.

#include "com/windows/Client.h"
#include "com/windows/Sink.h"

#include "com/windows/ClassFactory.h"
#include "com/windows/ComObject.h"
#include "qxcontrols/readers/QXBarcode.h"

namespace qx::test {
namespace {

constexpr DISPID kEditHeader = 1; // sCurrSeq, ByRef fCancelEdit, ByRef sNewSeq

class ComSinks : public ComClient {
protected:
    void SetUp() override {
        const ServedClass& served = ServedOf(TableOf<QXBarcode>());
        ComPtr<IClassFactory> factory;
        ASSERT_EQ(
            GetClassFactory(served, IID_IClassFactory, reinterpret_cast<void**>(factory.Out())),
            S_OK);
        ASSERT_EQ(factory->CreateInstance(nullptr, IID_IDispatch,
                                          reinterpret_cast<void**>(barcode.Out())),
                  S_OK);
        const auto container = barcode.As<IConnectionPointContainer>(IID_IConnectionPointContainer);
        ASSERT_EQ(container->FindConnectionPoint(served.eventsIid, point.Out()), S_OK);
    }
    void TearDown() override {
        point = nullptr;
        barcode = nullptr;
        EXPECT_TRUE(CanUnload()); // every reference was released
    }

    DWORD Connect(Handler handler) {
        DWORD cookie = 0;
        const auto sink = ComPtr<Sink>::Attach(new Sink(std::move(handler)));
        EXPECT_EQ(point->Advise(sink.Get(), &cookie), S_OK);
        EXPECT_NE(cookie, 0U);
        return cookie;
    }
    // Presses a button of the control, keeping the control alive for the click, as a real window
    // does.
    void Press(void (QXBarcode::*button)(Integer)) {
        const ObjectRef held = ObjectBehind(barcode.Get());
        (static_cast<QXBarcode*>(held->Native())->*button)(0);
    }
    // The header that is shown initially.
    std::string Header() {
        const ObjectRef held = ObjectBehind(barcode.Get());
        return static_cast<QXBarcode*>(held->Native())->Reader(2).Header().KeyString();
    }

    ComPtr<IDispatch> barcode;
    ComPtr<IConnectionPoint> point;
};

HRESULT AnswerEdit(const Heard& heard, const wchar_t* sequence) {
    *V_BOOLREF(&heard.arguments[1]) = VARIANT_FALSE;
    BSTR& text = *V_BSTRREF(&heard.arguments[2]);
    SysFreeString(text);
    text = SysAllocString(sequence);
    return S_OK;
}

TEST_F(ComSinks, AnswersReachTheControl) {
    std::vector<DISPID> heard;
    Connect([&](Heard event) {
        heard.push_back(event.id);
        EXPECT_EQ(event.arguments.size(), 3U);
        EXPECT_EQ(V_VT(&event.arguments[0]), VT_BSTR);
        EXPECT_EQ(V_VT(&event.arguments[1]), VT_BYREF | VT_BOOL);
        EXPECT_EQ(V_VT(&event.arguments[2]), VT_BYREF | VT_BSTR);
        EXPECT_EQ(*V_BOOLREF(&event.arguments[1]), VARIANT_TRUE); // the default
        return AnswerEdit(event, L" 30158");
    });
    Press(&QXBarcode::cmdEdit_Click);
    EXPECT_EQ(heard, std::vector<DISPID>{kEditHeader});
    EXPECT_EQ(Header(), " 30158");
}

TEST_F(ComSinks, SinksAreCalledInOrderAndSeeEarlierAnswers) {
    std::vector<int> order;
    Connect([&](Heard event) {
        order.push_back(1);
        return AnswerEdit(event, L" 30158");
    });
    Connect([&](Heard event) { // changes its answers and then fails
        order.push_back(2);
        EXPECT_EQ(std::wstring(*V_BSTRREF(&event.arguments[2])), L" 30158");
        AnswerEdit(event, L"  1  2  3");
        *V_BOOLREF(&event.arguments[1]) = VARIANT_TRUE;
        return DISP_E_EXCEPTION;
    });
    Connect([&](Heard event) {
        order.push_back(3);
        EXPECT_EQ(*V_BOOLREF(&event.arguments[1]), VARIANT_FALSE);
        return E_FAIL;
    });
    Press(&QXBarcode::cmdEdit_Click);
    EXPECT_EQ(order, (std::vector<int>{1, 2, 3}));
    EXPECT_EQ(Header(), " 30158");
}

TEST_F(ComSinks, ASinkMayLeaveAndOthersJoinDuringTheEvent) {
    std::vector<int> order;
    DWORD first = 0;
    DWORD second = 0;
    first = Connect([&](Heard) {
        order.push_back(1);
        EXPECT_EQ(point->Unadvise(first), S_OK);
        EXPECT_EQ(point->Unadvise(second), S_OK);
        EXPECT_EQ(point->Unadvise(second), CONNECT_E_NOCONNECTION);
        Connect([&](Heard) {
            order.push_back(3);
            return S_OK;
        });
        return S_OK;
    });
    second = Connect([&](Heard) {
        order.push_back(2);
        return S_OK;
    });
    Press(&QXBarcode::cmdEdit_Click);
    EXPECT_EQ(order, std::vector<int>{1}); // the new sink gets the next event
    Press(&QXBarcode::cmdEdit_Click);
    EXPECT_EQ(order, (std::vector<int>{1, 3}));
}

TEST_F(ComSinks, ASinkMayReleaseTheControl) {
    bool isAlive = true;
    Connect([&](Heard event) {
        point = nullptr;
        barcode = nullptr;
        return AnswerEdit(event, L" 30158");
    });
    Connect([&, watch = std::shared_ptr<void>(nullptr, [&](void*) { isAlive = false; })](Heard) {
        EXPECT_TRUE(isAlive);
        return S_OK;
    });
    Press(&QXBarcode::cmdEdit_Click);
    EXPECT_FALSE(isAlive); // the sinks were released with the control
}

TEST_F(ComSinks, ASinkMayCallTheControl) {
    int depth = 0;
    Connect([&](Heard) {
        if (++depth < 3)
            Press(&QXBarcode::cmdEdit_Click);
        EXPECT_EQ(Call(barcode.Get(), IdOf(barcode.Get(), L"DefaultValues"), kCall, {}).status,
                  S_OK);
        return S_OK;
    });
    Press(&QXBarcode::cmdEdit_Click);
    EXPECT_EQ(depth, 3);
}

TEST_F(ComSinks, ConnectionsCanBeListed) {
    const DWORD one = Connect([](Heard) { return S_OK; });
    const DWORD two = Connect([](Heard) { return S_OK; });
    ComPtr<IEnumConnections> connections;
    ASSERT_EQ(point->EnumConnections(connections.Out()), S_OK);
    CONNECTDATA data[3] = {};
    ULONG fetched = 0;
    EXPECT_EQ(connections->Next(3, data, &fetched), S_FALSE);
    ASSERT_EQ(fetched, 2U);
    EXPECT_EQ(data[0].dwCookie, one);
    EXPECT_EQ(data[1].dwCookie, two);
    for (ULONG i = 0; i < fetched; ++i)
        data[i].pUnk->Release();
    EXPECT_EQ(connections->Next(1, data, nullptr), S_FALSE);
    EXPECT_EQ(connections->Skip(1), S_FALSE);

    DWORD cookie = 5;
    EXPECT_EQ(point->Advise(nullptr, &cookie), E_POINTER);
    EXPECT_EQ(point->Unadvise(0), CONNECT_E_NOCONNECTION);
    const auto container = barcode.As<IConnectionPointContainer>(IID_IConnectionPointContainer);
    ComPtr<IConnectionPoint> other;
    EXPECT_EQ(container->FindConnectionPoint(IID_IDispatch, other.Out()), CONNECT_E_NOCONNECTION);
}

} // namespace
} // namespace qx::test
