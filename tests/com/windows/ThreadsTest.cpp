// Objects passed to another thread by their host, with COM's marshalling and without.

#include "com/windows/Form.h"
#include "com/windows/Sink.h"
#include "com/windows/Site.h"

#include <atomic>
#include <functional>
#include <thread>

namespace qx::test {
namespace {

// Runs the body on a thread with its own apartment, while this thread handles messages.
void OnAnotherThread(const std::function<void()>& body) {
    std::atomic<bool> isDone = false;
    std::thread other([&] {
        EXPECT_EQ(CoInitialize(nullptr), S_OK);
        body();
        CoUninitialize();
        isDone = true;
    });
    while (!isDone) { // marshalled calls arrive as messages
        PumpMessages();
        MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
    }
    other.join();
}

// The same, but without handling messages meanwhile.
void BesideThisThread(const std::function<void()>& body) {
    std::thread([&] {
        EXPECT_EQ(CoInitialize(nullptr), S_OK);
        body();
        CoUninitialize();
    }).join();
}

class ComThreads : public ComClient {
protected:
    ComPtr<IDispatch> Place(const wchar_t* progId) {
        auto control = NewObject(progId);
        const auto object = control.As<IOleObject>(IID_IOleObject);
        EXPECT_EQ(object->SetClientSite(&site), S_OK);
        EXPECT_EQ(
            object->DoVerb(OLEIVERB_INPLACEACTIVATE, nullptr, &site, 0, form.Window(), nullptr),
            S_OK);
        PumpMessages();
        return control;
    }

    Form form{600, 400};
    Site site{form.Window()};
};

TEST_F(ComThreads, CallsAreMarshalled) {
    const auto sequence = NewObject(L"QXControls.KeySequence");
    const DISPID length = IdOf(sequence.Get(), L"Length");
    IStream* stream = nullptr;
    ASSERT_EQ(CoMarshalInterThreadInterfaceInStream(IID_IDispatch, sequence.Get(), &stream), S_OK);
    OnAnotherThread([&] {
        ComPtr<IDispatch> proxy;
        ASSERT_EQ(CoGetInterfaceAndReleaseStream(stream, IID_IDispatch,
                                                 reinterpret_cast<void**>(proxy.Out())),
                  S_OK);
        EXPECT_EQ(Call(proxy.Get(), length, kCall, {}).status, S_OK);
    });
}

TEST_F(ComThreads, CallsWithoutMarshallingAreRefusedByEveryInterface) {
    const auto control = Place(L"QXControls.QXLayoutDisplay");
    const HWND window = form.ControlWindow();
    const auto object = control.As<IOleObject>(IID_IOleObject);
    const auto ole = control.As<IOleControl>(IID_IOleControl);
    const auto stream = control.As<IPersistStreamInit>(IID_IPersistStreamInit);
    const auto bag = control.As<IPersistPropertyBag>(IID_IPersistPropertyBag);
    const auto view = control.As<IViewObjectEx>(IID_IViewObjectEx);
    const auto quick = control.As<IQuickActivate>(IID_IQuickActivate);
    const auto place = control.As<IOleInPlaceObject>(IID_IOleInPlaceObject);
    const auto active = control.As<IOleInPlaceActiveObject>(IID_IOleInPlaceActiveObject);
    const auto points = control.As<IConnectionPointContainer>(IID_IConnectionPointContainer);
    ComPtr<IEnumConnectionPoints> all;
    ASSERT_EQ(points->EnumConnectionPoints(all.Out()), S_OK);
    ComPtr<IConnectionPoint> point;
    ASSERT_EQ(all->Next(1, point.Out(), nullptr), S_OK);
    int heard = 0;
    DWORD cookie = 0;
    const auto sink = ComPtr<Sink>::Attach(new Sink([&](Heard) { return ++heard, S_OK; }));
    ASSERT_EQ(point->Advise(sink.Get(), &cookie), S_OK);
    SIZEL before{};
    ASSERT_EQ(object->GetExtent(DVASPECT_CONTENT, &before), S_OK);

    DWORD number = 0;
    void* const nothing = nullptr;
    void* out = nullptr;
    SIZEL size{1, 1};
    RECTL bounds{0, 0, 10, 10};
    const RECT rectangle{0, 0, 10, 10};
    MSG message{};
    CONTROLINFO info{};
    QACONTAINER container{};
    container.pClientSite = &site;
    QACONTROL answer{};
    HWND answeredWindow = nullptr;
    ComPtr<IStream> memory;
    ASSERT_EQ(CreateStreamOnHGlobal(nullptr, TRUE, memory.Out()), S_OK);
    // All of these enter the object's apartment before they use their bag.
    auto* const noBag = reinterpret_cast<IPropertyBag*>(&message);
    const HDC context = CreateCompatibleDC(nullptr);
    const DISPID key = IdOf(control.Get(), L"CurrProgKey");
    IID events{};
    ASSERT_EQ(point->GetConnectionInterface(&events), S_OK);
    using Calls = std::vector<std::pair<const char*, std::function<HRESULT()>>>;
    const Calls calls = {
        {"Invoke", [&] { return Call(control.Get(), key, kCall, {}).status; }},
        {"FindConnectionPoint",
         [&] {
             return points->FindConnectionPoint(events, reinterpret_cast<IConnectionPoint**>(&out));
         }},
        {"EnumConnectionPoints",
         [&] {
             return points->EnumConnectionPoints(reinterpret_cast<IEnumConnectionPoints**>(&out));
         }},
        {"IEnumConnectionPoints.Reset", [&] { return all->Reset(); }},
        {"IEnumConnectionPoints.Skip", [&] { return all->Skip(1); }},
        {"IEnumConnectionPoints.Next",
         [&] { return all->Next(1, reinterpret_cast<IConnectionPoint**>(&out), nullptr); }},
        {"IEnumConnectionPoints.Clone",
         [&] { return all->Clone(reinterpret_cast<IEnumConnectionPoints**>(&out)); }},
        {"IConnectionPoint.Advise", [&] { return point->Advise(sink.Get(), &number); }},
        {"IConnectionPoint.Unadvise", [&] { return point->Unadvise(cookie); }},
        {"EnumConnections",
         [&] { return point->EnumConnections(reinterpret_cast<IEnumConnections**>(&out)); }},
        {"SetClientSite", [&] { return object->SetClientSite(nullptr); }},
        {"GetClientSite",
         [&] { return object->GetClientSite(reinterpret_cast<IOleClientSite**>(&out)); }},
        {"Close", [&] { return object->Close(OLECLOSE_NOSAVE); }},
        {"DoVerb",
         [&] { return object->DoVerb(OLEIVERB_HIDE, nullptr, &site, 0, nullptr, nullptr); }},
        {"SetExtent", [&] { return object->SetExtent(DVASPECT_CONTENT, &size); }},
        {"GetExtent", [&] { return object->GetExtent(DVASPECT_CONTENT, &size); }},
        {"Advise", [&] { return object->Advise(nullptr, &number); }},
        {"Unadvise", [&] { return object->Unadvise(1); }},
        {"EnumAdvise", [&] { return object->EnumAdvise(reinterpret_cast<IEnumSTATDATA**>(&out)); }},
        {"GetControlInfo", [&] { return ole->GetControlInfo(&info); }},
        {"OnMnemonic", [&] { return ole->OnMnemonic(&message); }},
        {"OnAmbientPropertyChange", [&] { return ole->OnAmbientPropertyChange(DISPID_UNKNOWN); }},
        {"FreezeEvents", [&] { return ole->FreezeEvents(TRUE); }},
        {"IsDirty", [&] { return stream->IsDirty(); }},
        {"IPersistStreamInit.Load", [&] { return stream->Load(memory.Get()); }},
        {"IPersistStreamInit.Save", [&] { return stream->Save(memory.Get(), TRUE); }},
        {"IPersistPropertyBag.Load", [&] { return bag->Load(noBag, nullptr); }},
        {"IPersistPropertyBag.Save", [&] { return bag->Save(noBag, TRUE, TRUE); }},
        {"Draw",
         [&] {
             return view->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, context, &bounds,
                               nullptr, nullptr, 0);
         }},
        {"SetAdvise", [&] { return view->SetAdvise(DVASPECT_CONTENT, 0, nullptr); }},
        {"GetAdvise", [&] { return view->GetAdvise(nullptr, nullptr, nullptr); }},
        {"IViewObject2.GetExtent",
         [&] { return view->GetExtent(DVASPECT_CONTENT, -1, nullptr, &size); }},
        {"GetRect", [&] { return view->GetRect(DVASPECT_CONTENT, &bounds); }},
        {"QuickActivate", [&] { return quick->QuickActivate(&container, &answer); }},
        {"SetContentExtent", [&] { return quick->SetContentExtent(&size); }},
        {"GetContentExtent", [&] { return quick->GetContentExtent(&size); }},
        {"GetWindow", [&] { return place->GetWindow(&answeredWindow); }},
        {"InPlaceDeactivate", [&] { return place->InPlaceDeactivate(); }},
        {"UIDeactivate", [&] { return place->UIDeactivate(); }},
        {"SetObjectRects", [&] { return place->SetObjectRects(&rectangle, nullptr); }},
        {"TranslateAccelerator", [&] { return active->TranslateAccelerator(&message); }},
    };
    BesideThisThread([&] {
        for (const auto& [name, call] : calls) {
            size = {1, 1};
            EXPECT_EQ(call(), RPC_E_WRONG_THREAD) << name;
            EXPECT_EQ(out, nothing) << name;
        }
    });
    DeleteDC(context);

    SIZEL after{};
    EXPECT_EQ(object->GetExtent(DVASPECT_CONTENT, &after), S_OK);
    EXPECT_EQ(after.cx, before.cx);
    EXPECT_TRUE(IsWindowVisible(window));
    EXPECT_EQ(form.ControlWindow(), window);
    EXPECT_EQ(point->Unadvise(cookie), S_OK);
    EXPECT_EQ(object->Close(OLECLOSE_NOSAVE), S_OK);
    EXPECT_EQ(object->SetClientSite(nullptr), S_OK);
}

TEST_F(ComThreads, AccessibleKeysKnowNothingOnAnotherThread) {
    const auto control = Place(L"QXControls.QXLayeredFuncKeys");
    const auto keys = AccessibleOf(form.Child(L"QXControls.Keys"));
    ASSERT_TRUE(keys);
    long count = 0;
    EXPECT_EQ(keys->get_accChildCount(&count), S_OK);
    EXPECT_EQ(count, 24);
    BesideThisThread([&] {
        BSTR name = nullptr;
        EXPECT_EQ(keys->get_accName(LongInt(1), &name), E_INVALIDARG);
        EXPECT_EQ(keys->accDoDefaultAction(LongInt(1)), E_INVALIDARG);
        EXPECT_EQ(keys->get_accChildCount(&count), E_FAIL);
    });
    const auto object = control.As<IOleObject>(IID_IOleObject);
    EXPECT_EQ(object->Close(OLECLOSE_NOSAVE), S_OK);
    EXPECT_EQ(object->SetClientSite(nullptr), S_OK);
}

TEST_F(ComThreads, ObjectsOfOneThreadAreRefusedOnAnother) {
    const auto keyboard = NewObject(L"QXControls.QXKeyboardAccess");
    BesideThisThread([&] {
        const auto card = NewObject(L"QXControls.QXMagnetCard");
        const ClientCall call =
            Call(card.Get(), IdOf(card.Get(), L"Keyboard"), DISPATCH_PROPERTYPUTREF,
                 {Dispatch(keyboard.Get())}, {DISPID_PROPERTYPUT});
        EXPECT_EQ(call.status, DISP_E_TYPEMISMATCH);
        EXPECT_EQ(call.wrongArgument, 0U);
    });
}

// A garbage collector releases objects on its own thread.
TEST_F(ComThreads, LastReferencesAreReleasedOnTheOwnThread) {
    const DWORD own = GetCurrentThreadId();
    DWORD released = 0;
    auto control = Place(L"QXControls.QXMagnetCard");
    Listen(control.Get(), [mark = std::shared_ptr<void>(nullptr, [&](void*) {
                               released = GetCurrentThreadId();
                           })](Heard) { return S_OK; });
    auto track = PartOf(control.Get(), L"Track1");
    const HWND window = form.ControlWindow();
    ASSERT_NE(window, nullptr);
    BesideThisThread([&] {
        control = nullptr;
        track = nullptr; // kept the control alive until here
    });
    EXPECT_TRUE(IsWindow(window)); // nothing was destroyed on the other thread
    EXPECT_EQ(released, 0U);
    EXPECT_TRUE(ServerIsInUse());
    PumpMessages();
    EXPECT_FALSE(IsWindow(window));
    EXPECT_EQ(released, own);
    EXPECT_EQ(site.References(), 0);
    EXPECT_FALSE(ServerIsInUse());
}

// While a reference is being handed over, its owner still returns the same object.
TEST_F(ComThreads, AnObjectOnItsWayCanBeHadAgain) {
    const auto card = NewObject(L"QXControls.QXMagnetCard");
    auto track = PartOf(card.Get(), L"Track1");
    const IDispatch* const first = track.Get();
    BesideThisThread([&] { track = nullptr; });
    track = PartOf(card.Get(), L"Track1");
    EXPECT_EQ(track.Get(), first);
    PumpMessages();
    EXPECT_EQ(Call(track.Get(), IdOf(track.Get(), L"HeaderEnabled"), kCall, {}).status, S_OK);
}

TEST_F(ComThreads, ManyThreadsMayCountAndRelease) {
    for (int round = 0; round < 50; ++round) {
        const auto object = NewObject(L"QXControls.OptionBool");
        std::vector<std::thread> threads;
        for (int i = 0; i < 4; ++i)
            threads.emplace_back([reference = object]() mutable {
                for (int j = 0; j < 100; ++j)
                    const ComPtr<IDispatch> another = reference;
                reference = nullptr;
            });
        for (std::thread& thread : threads)
            thread.join();
    }
    PumpMessages();
    EXPECT_FALSE(ServerIsInUse());
}

// Must be run alone: objects left by the thread remain in use.
class ComEndedThreads : public ComClient {};

TEST_F(ComEndedThreads, TheirObjectsAreKept) {
    ComPtr<IDispatch> object;
    BesideThisThread([&] { object = NewObject(L"QXControls.QXBarcode"); });
    EXPECT_EQ(Call(object.Get(), IdOf(object.Get(), L"DefaultValues"), kCall, {}).status,
              RPC_E_WRONG_THREAD);
    object = nullptr;
    PumpMessages();
    BesideThisThread([&] { // its number may be that of the ended thread
        const auto another = NewObject(L"QXControls.QXBarcode");
        PumpMessages();
    });
    EXPECT_TRUE(ServerIsInUse());
}

} // namespace
} // namespace qx::test
