#include "com/windows/ClassFactory.h"

#include "com/windows/ComObject.h"
#include "com/windows/Control.h"

namespace qx::com {
namespace {

class ClassFactory : public IClassFactory {
public:
    explicit ClassFactory(const ServedClass& served) : m_served(served) {}
    virtual ~ClassFactory() = default;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override {
        if (out == nullptr)
            return E_POINTER;
        *out = nullptr;
        if (IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IClassFactory))
            return HandOut(this, out);
        return E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++m_references; }
    ULONG STDMETHODCALLTYPE Release() override {
        const ULONG left = --m_references;
        if (left == 0)
            delete this;
        return left;
    }

    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID iid, void** out) override {
        if (out == nullptr)
            return E_POINTER;
        *out = nullptr;
        if (outer != nullptr)
            return CLASS_E_NOAGGREGATION;
        return Guarded([&] {
            const auto object = New();
            return object->QueryInterface(iid, out);
        });
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL fLock) override {
        com::LockServer(fLock != FALSE);
        return S_OK;
    }

private:
    [[nodiscard]] ComPtr<ComObject> New() const {
        ObjectRef object = Object::Create(m_served.type, ServerEnvironment());
        const bool isPlain = m_served.type.look == Look::None;
        return ComPtr<ComObject>::Attach(isPlain ? new ComObject(std::move(object))
                                                 : new Control(std::move(object)));
    }

    InUse m_inUse;
    const ServedClass& m_served;
    std::atomic<ULONG> m_references = 1;
};

} // namespace

HRESULT GetClassFactory(const ServedClass& served, REFIID iid, void** out) {
    return Guarded([&] {
        const auto factory = ComPtr<ClassFactory>::Attach(new ClassFactory(served));
        return factory->QueryInterface(iid, out);
    });
}

} // namespace qx::com
