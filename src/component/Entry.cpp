// Everything that the module exports to its host, each through Guarded().

#include "component/OSTraceApp.h"
#include "platform/base/Guarded.h"

using kvx::Guarded;

namespace {

constexpr char kComponentName[] = "Generic KVX OSTrace";
constexpr std::int32_t kMajorVersion = 1;
constexpr std::int32_t kMinorVersion = 0;

}  // namespace

extern "C" {

KVX_EXPORT HRESULT KVX_CALL LibraryRegister2(IQLibraryRegistration* registry) {
    Guarded([&] {
        if (!registry) return E_POINTER;
        const kvx::Bstr name(kComponentName);
        return registry->RegisterComponent(name.Get(), 2, 1, 0, &kvx::host::kComponent);
    });
    return S_OK;
}

KVX_EXPORT HRESULT KVX_CALL QueryInterface2(std::uintptr_t key, const GUID* riid, void** ppv) {
    return Guarded([&] {
        if (!riid || !ppv) return E_POINTER;
        *ppv = nullptr;
        CKvxOSTraceDataCtrl* const object = GetOSTraceApp().FindInstance(key);
        if (!object || Failed(object->QueryInterface(*riid, ppv))) return E_NOINTERFACE;
        return S_OK;
    });
}

KVX_EXPORT HRESULT KVX_CALL CreateInstance(std::uintptr_t key) {
    Guarded([&] { GetOSTraceApp().AddInstance(key); });
    return S_OK;
}

KVX_EXPORT HRESULT KVX_CALL DestroyInstance(std::uintptr_t key) {
    Guarded([&] { GetOSTraceApp().RemoveInstance(key); });
    return S_OK;
}

KVX_EXPORT HRESULT KVX_CALL GetComponentVersion(std::int32_t* major, std::int32_t* minor) {
    if (!major || !minor) return E_POINTER;
    *major = kMajorVersion;
    *minor = kMinorVersion;
    return S_OK;
}
}
