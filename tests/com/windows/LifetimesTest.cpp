// The lifetimes of objects, and that they leave nothing behind.

#include "com/windows/Editors.h"
#include "com/windows/Sink.h"
#include "com/windows/Site.h"

#include <psapi.h>

#include <algorithm>
#include <vector>

namespace qx::test {
namespace {

constexpr SIZE_T kFormBytes = 512 * 1024; // once, for a form's windows and fonts

SIZE_T MemoryInUse() {
    PROCESS_MEMORY_COUNTERS counters{};
    EXPECT_TRUE(GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof(counters)));
    return counters.PagefileUsage;
}

// The number of brushes, fonts and bitmaps in use. Wine's system does not count them, but reuses
// free numbers first: the highest number of many new ones is therefore a measure.
int DrawingObjectsInUse() {
    std::vector<HBRUSH> many(3000);
    int highest = 0;
    for (HBRUSH& brush : many) {
        brush = CreateSolidBrush(RGB(1, 2, 3));
        highest = std::max<int>(highest, LOWORD(reinterpret_cast<ULONG_PTR>(brush)));
    }
    std::ranges::for_each(many, DeleteObject);
    return highest - static_cast<int>(many.size());
}

BOOL CALLBACK CountWindow(HWND, LPARAM data) {
    ++*reinterpret_cast<int*>(data);
    return TRUE;
}

int WindowsOfThread() {
    int count = 0;
    EnumThreadWindows(GetCurrentThreadId(), CountWindow, reinterpret_cast<LPARAM>(&count));
    return count;
}

// Repeats the round until its leaks would exceed the memory that the system itself keeps.
template <typename Round>
void ExpectNothingLeft(int rounds, SIZE_T systemBytes, const std::string& name,
                       const Round& round) {
    for (int i = 0; i < rounds / 10 + 2; ++i)
        round();
    const int drawing = DrawingObjectsInUse();
    const SIZE_T memory = MemoryInUse();
    const int windows = WindowsOfThread();
    for (int i = 0; i < rounds; ++i)
        round();
    EXPECT_LT(MemoryInUse(), memory + systemBytes) << name;
    EXPECT_LT(DrawingObjectsInUse(), drawing + rounds) << name;
    EXPECT_EQ(WindowsOfThread(), windows) << name;
}

class ComLifetimes : public ComClient {};

TEST_F(ComLifetimes, PartsAreTheSameObjectsWhileTheyAreHeld) {
    auto barcode = NewObject(L"QXControls.QXBarcode");
    const auto one = PartOf(barcode.Get(), L"ButtonEdit");
    const auto two = PartOf(barcode.Get(), L"ButtonEdit");
    EXPECT_EQ(one.Get(), two.Get());
    EXPECT_EQ(one.As<IUnknown>(IID_IUnknown).Get(), two.As<IUnknown>(IID_IUnknown).Get());
    barcode = nullptr; // the part keeps it alive
    Put(one.Get(), L"Caption", Text(L"Change"));
    ClientCall read = Get(two.Get(), L"Caption");
    EXPECT_EQ(std::wstring(V_BSTR(&read.result)), L"Change");
    VariantClear(&read.result);
}

// In every other round the control itself must release the sink.
TEST_F(ComLifetimes, ManyRoundsOfEachClassKeepMemoryFlat) {
    const auto sink = ComPtr<Sink>::Attach(new Sink([](const Heard&) { return S_OK; }));
    for (const LibraryClass& type : RegisteredLibrary().classes) {
        const auto reads = [](const LibraryMember& member) {
            return member.kind == INVOKE_PROPERTYGET && member.parameters.empty();
        };
        std::vector<DISPID> read;
        for (const LibraryMember& member : type.members)
            if (reads(member) && read.size() < 3)
                read.push_back(member.id);
        ComPtr<IClassFactory> factory;
        ASSERT_EQ(CoGetClassObject(type.clsid, CLSCTX_INPROC_SERVER, nullptr, IID_IClassFactory,
                                   reinterpret_cast<void**>(factory.Out())),
                  S_OK);
        bool unadvises = false;
        ExpectNothingLeft(10'000, 160'000, type.name, [&] {
            ComPtr<IDispatch> object;
            factory->CreateInstance(nullptr, IID_IDispatch, reinterpret_cast<void**>(object.Out()));
            if (!IsEqualIID(type.eventsIid, IID_NULL)) {
                ComPtr<IConnectionPoint> point;
                DWORD cookie = 0;
                const auto points =
                    object.As<IConnectionPointContainer>(IID_IConnectionPointContainer);
                ASSERT_EQ(points->FindConnectionPoint(type.eventsIid, point.Out()), S_OK);
                ASSERT_EQ(point->Advise(sink.Get(), &cookie), S_OK);
                unadvises = !unadvises;
                EXPECT_EQ(unadvises ? point->Unadvise(cookie) : S_OK, S_OK);
            }
            for (const DISPID id : read) {
                ClientCall call = Call(object.Get(), id, kCall, {});
                VariantClear(&call.result);
            }
        });
    }
    sink->AddRef();
    EXPECT_EQ(sink->Release(), 1U); // no control still holds it
}

TEST_F(ComLifetimes, ManyRoundsOnAFormLeaveNothingBehind) {
    const Services services;
    Form form(600, 400);
    for (const char* const name :
         {"QXBarcode", "QXMagnetCard", "QXFreeProgKeys", "QXLayeredFuncKeys", "QXPos",
          "QXPosDisplay", "QXCommonKeyboard", "QXLayoutDisplay"}) {
        Site site(form.Window());
        ExpectNothingLeft(50, kFormBytes, name, [&] {
            const auto control = NewObject(Wide(std::string("QXControls.") + name));
            if (control.As<IUnknown>(IID_IConnectionPointContainer)) // it has events
                Listen(control.Get(), [](const Heard&) { return S_OK; });
            ASSERT_EQ(site.Place(control), S_OK);
            PumpMessages(); // lets it draw
            Site::TakeAway(control);
        });
    }
}

TEST_F(ComLifetimes, ManyOpenedEditorsLeaveNothingBehind) {
    const Services services;
    Form host;
    SetActiveWindow(host.Window());
    const auto sequencer = NewSequencer(services);
    const auto programmer = NewPosProgrammer(services);
    const auto data = NewObject(L"QXControls.POSKeyboard");
    const auto leave = [] {
        return TheEditor() != nullptr && PostMessageW(TheEditor(), WM_CLOSE, 0, 0) != FALSE;
    };
    ExpectNothingLeft(30, kFormBytes, "QXSequencer", [&] {
        const User user({leave});
        BSTR answer = nullptr;
        Get(sequencer.Get(), L"ShowSequenceEditor",
            {Int(75), Text(L" 30158"), Reference(VT_BSTR, &answer), Int(30)});
        SysFreeString(answer);
    });
    ExpectNothingLeft(30, kFormBytes, "QXPOSProgrammer", [&] {
        const User user({leave});
        Get(programmer.Get(), L"ShowPosProgrammer", {Dispatch(data.Get())});
    });
}

// Must run last in its suite: nothing of the earlier tests is left.
TEST_F(ComLifetimes, NothingIsLeftInUse) {
    EXPECT_FALSE(ServerIsInUse());
    {
        const auto object = NewObject(L"QXControls.OptionBool");
        EXPECT_TRUE(ServerIsInUse());
    }
    EXPECT_FALSE(ServerIsInUse());
}

} // namespace
} // namespace qx::test
