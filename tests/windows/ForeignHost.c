/* A host that knows of the module what its documents say and has none of its headers: entry points by
   ordinal and by name, interfaces by their slots. Started in the folder of the modules. */

#include <stdint.h>
#include <stdio.h>
#include <string.h>
#include <wchar.h>
#include <windows.h>

static int failures = 0;

static void Expect(int holds, const char* what) {
    if (holds) return;
    printf("failed: %s\n", what);
    ++failures;
}

typedef struct Slots {
    HRESULT(__stdcall* queryInterface)(void* self, const GUID* id, void** out);
    uint32_t(__stdcall* addRef)(void* self);
    uint32_t(__stdcall* release)(void* self);
    void* rest[5];
} Slots;
typedef struct Object {
    const Slots* slots;
} Object;

/* The first three of each interface are those above. */
typedef HRESULT(__stdcall* RegisterFn)(void* self, wchar_t* name, int32_t a, int32_t b, int32_t c,
                                       const GUID* component);
typedef HRESULT(__stdcall* NotifyFn)(void* self, const void* record);
typedef HRESULT(__stdcall* InitializeFn)(void* self, void* host, int16_t flag);
typedef HRESULT(__stdcall* TerminateFn)(void* self, int16_t flag);

enum { kNotify = 0, kInitialize = 1, kTerminate = 4 };

static const GUID kUnknown = {0, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
static const GUID kComponent = {
    0x229F9BBD, 0xE203, 0x4542, {0x94, 0x5D, 0xB2, 0x2C, 0x9A, 0x16, 0xB5, 0xF4}};
static const GUID kErrorReporter = {
    0x4BCBB0D1, 0x1757, 0x4741, {0x9D, 0x84, 0xD1, 0x29, 0x24, 0xDC, 0x40, 0x8B}};

static GUID registered;
static wchar_t registeredName[64];
static int32_t registeredNumbers[3];

static HRESULT __stdcall NoInterface(void* self, const GUID* id, void** out) {
    (void)self, (void)id, (void)out;
    return E_NOINTERFACE;
}
static uint32_t __stdcall One(void* self) {
    (void)self;
    return 1;
}
static HRESULT __stdcall Register(void* self, wchar_t* name, int32_t a, int32_t b, int32_t c,
                                  const GUID* component) {
    (void)self;
    wcsncpy(registeredName, name, 63);
    registeredNumbers[0] = a;
    registeredNumbers[1] = b;
    registeredNumbers[2] = c;
    registered = *component;
    return S_OK;
}

typedef HRESULT(__stdcall* LibraryRegister2Fn)(void* registry);
typedef HRESULT(__stdcall* QueryInterface2Fn)(uintptr_t key, const GUID* id, void** out);
typedef HRESULT(__stdcall* InstanceFn)(uintptr_t key);
typedef HRESULT(__stdcall* VersionFn)(int32_t* major, int32_t* minor);

static FARPROC Entry(HMODULE module, int ordinal, const char* name) {
    const FARPROC byOrdinal = GetProcAddress(module, MAKEINTRESOURCEA(ordinal));
    Expect(byOrdinal != NULL, name);
    Expect(byOrdinal == GetProcAddress(module, name), "ordinal and undecorated name are the same");
    return byOrdinal;
}

static void UseInstance(QueryInterface2Fn query, uintptr_t key) {
    Object* component = NULL;
    Object* other = NULL;
    const GUID nobody = {1, 2, 3, {0}};
    Expect(query(key, &kComponent, (void**)&component) == S_OK && component, "the component");
    if (!component) return;
    const Slots* const slots = component->slots;
    Expect(slots->addRef(component) == 1, "add-reference answers 1");
    Expect(slots->release(component) == 0, "release answers 0");
    Expect(slots->queryInterface(component, &kUnknown, (void**)&other) == S_OK && other,
           "the unknown interface");
    Expect(query(key, &kErrorReporter, (void**)&other) == S_OK && other, "the error reporter");
    Expect(query(key, &nobody, (void**)&other) == E_NOINTERFACE, "an unknown interface");
    Expect(query(key + 1, &kComponent, (void**)&other) == E_NOINTERFACE, "an unknown key");
    Expect(((NotifyFn)slots->rest[kNotify])(component, NULL) == S_OK, "events before Initialize");
    Expect(((InitializeFn)slots->rest[kInitialize])(component, NULL, -1) == E_FAIL,
           "Initialize without a host");
    Expect(((TerminateFn)slots->rest[kTerminate])(component, -1) == E_FAIL,
           "nothing was connected");
}

static void UseModule(void) {
    const HMODULE module = LoadLibraryA("KvxOSTrace.dll");
    Expect(module != NULL, "KvxOSTrace.dll loads");
    if (!module) return;
    const LibraryRegister2Fn reg = (LibraryRegister2Fn)Entry(module, 1, "LibraryRegister2");
    const QueryInterface2Fn query = (QueryInterface2Fn)Entry(module, 2, "QueryInterface2");
    const InstanceFn create = (InstanceFn)Entry(module, 3, "CreateInstance");
    const InstanceFn destroy = (InstanceFn)Entry(module, 4, "DestroyInstance");
    const VersionFn version = (VersionFn)Entry(module, 5, "GetComponentVersion");
    if (!reg || !query || !create || !destroy || !version) return;

    int32_t major = -1;
    int32_t minor = -1;
    Expect(version(&major, &minor) == S_OK && major == 1 && minor == 0, "version 1, 0");
    const Slots slots = {NoInterface, One, One, {(void*)Register}};
    Object registry = {&slots};
    Expect(reg(&registry) == S_OK, "registration");
    Expect(wcscmp(registeredName, L"Generic KVX OSTrace") == 0, "the registered name");
    Expect(registeredNumbers[0] == 2 && registeredNumbers[1] == 1 && registeredNumbers[2] == 0,
           "the registered numbers");
    Expect(memcmp(&registered, &kComponent, sizeof registered) == 0, "the registered component");

    Expect(create(7) == S_OK, "CreateInstance");
    UseInstance(query, 7);
    Expect(destroy(7) == S_OK && destroy(8) == S_OK, "DestroyInstance");
    Expect(FreeLibrary(module), "the module is unloaded");
}

typedef int32_t (*ProbeFn)(int32_t* major, int32_t* minor);
typedef int32_t (*OrdinalProbeFn)(int32_t* version);
typedef int32_t (*TextProbeFn)(char* buffer, int32_t size);

static void ProbeResources(void) {
    const HMODULE module = LoadLibraryA("KvxOSTraceExtRes.dll");
    Expect(module != NULL, "KvxOSTraceExtRes.dll loads");
    if (!module) return;
    const ProbeFn interfaceVersion = (ProbeFn)GetProcAddress(module, "GetDLLInterfaceVersion");
    const OrdinalProbeFn ordinal = (OrdinalProbeFn)GetProcAddress(module, "GetDLLOrdinalVersion");
    const TextProbeFn type = (TextProbeFn)GetProcAddress(module, "GetDLLType");
    const TextProbeFn product = (TextProbeFn)GetProcAddress(module, "GetDLLProductVersion");
    Expect(interfaceVersion && ordinal && type && product, "four probes");
    if (!interfaceVersion || !ordinal || !type || !product) return;
    int32_t numbers[3] = {-1, -1, -1};
    char text[32] = "";
    Expect(interfaceVersion(&numbers[0], &numbers[1]) == 0 && numbers[0] == 1 && numbers[1] == 0,
           "interface version");
    Expect(ordinal(&numbers[2]) == 0 && numbers[2] == 1, "ordinal version");
    Expect(type(text, sizeof text) == 0 && strcmp(text, "Resource") == 0, "type");
    Expect(type(text, 1) == (int32_t)sizeof "Resource", "the size that a text needs");
    Expect(product(text, sizeof text) == 0 && strcmp(text, "1.0") == 0, "product version");
    FreeLibrary(module);
}

static void ExpectVersionResource(const wchar_t* file) {
    DWORD ignored = 0;
    BYTE data[4096];
    VS_FIXEDFILEINFO* info = NULL;
    UINT size = 0;
    Expect(GetFileVersionInfoSizeW(file, &ignored) > 0, "a version resource");
    if (!GetFileVersionInfoW(file, 0, sizeof data, data)) return;
    Expect(VerQueryValueW(data, L"\\", (void**)&info, &size) && HIWORD(info->dwFileVersionMS) == 1,
           "file version 1");
}

int main(void) {
    UseModule();
    ProbeResources();
    ExpectVersionResource(L"KvxOSTrace.dll");
    ExpectVersionResource(L"KvxOSTraceExtRes.dll");
    ExpectVersionResource(L"KvxPlatform.dll");
    printf("foreign host: %d failures\n", failures);
    return failures != 0;
}
