// The entry points and the component object, one clause of the contract after the other.

#include <gtest/gtest.h>

#include "component/ModuleBoxes.h"
#include "component/TestHost.h"
#include "platform/base/Text.h"

namespace kvx::test {
namespace {

class Registry : public Counted<IQLibraryRegistration> {
  public:
    std::string said;
    HRESULT KVX_CALL RegisterComponent(BSTR name, std::int32_t a, std::int32_t b, std::int32_t c,
                                       const GUID* component) override {
        said = ToUtf8(name) + FormatText(" %d %d %d ", a, b, c) +
               (*component == host::kComponent ? "own" : "other");
        return E_FAIL;
    }
};

TEST(Entry, RegistersOnceWhateverTheHostAnswers) {
    const TestModule module;
    Registry registry;
    EXPECT_EQ(module.Entry<LibraryRegister2Fn>("LibraryRegister2")(&registry), S_OK);
    EXPECT_EQ(registry.said, "Generic KVX OSTrace 2 1 0 own");
    std::int32_t major = 9;
    std::int32_t minor = 9;
    EXPECT_EQ(module.Entry<GetComponentVersionFn>("GetComponentVersion")(&major, &minor), S_OK);
    EXPECT_EQ(major, 1);
    EXPECT_EQ(minor, 0);
}

TEST(Entry, InstancesByTheirKeys) {
    const TestModule module;
    const auto create = module.Entry<CreateInstanceFn>("CreateInstance");
    const auto destroy = module.Entry<DestroyInstanceFn>("DestroyInstance");
    EXPECT_EQ(destroy(77), S_OK);
    void* out = &out;
    EXPECT_EQ(module.Entry<QueryInterface2Fn>("QueryInterface2")(77, &host::kComponent, &out),
              E_NOINTERFACE);
    EXPECT_EQ(out, nullptr);

    EXPECT_EQ(create(1), S_OK);
    EXPECT_EQ(create(2), S_OK);
    auto* const first = module.Query<IQComponent>(1, host::kComponent);
    auto* const second = module.Query<IQComponent>(2, host::kComponentInterface);
    EXPECT_NE(first, nullptr);
    EXPECT_NE(first, second);
    EXPECT_EQ(first, module.Query<IQComponent>(1, host::kComponentInterface));
    EXPECT_NE(module.Query<IQSteppingClient>(1, host::kSteppingClient), nullptr);
    EXPECT_NE(module.Query<IQErrorReporter>(1, host::kErrorReporter), nullptr);
    EXPECT_EQ(module.Query<IQRegistryClient>(1, host::kRegistryClient),
              module.Query<IQRegistryClient>(1, IID_IUnknown));
    EXPECT_EQ(module.Query<IQHost>(1, host::kRunState), nullptr);
    EXPECT_EQ(first->AddRef(), 1u);
    EXPECT_EQ(first->Release(), 0u);

    EXPECT_EQ(create(1), S_OK);  // replaces the first
    EXPECT_NE(module.Query<IQComponent>(1, host::kComponent), nullptr);
    EXPECT_EQ(destroy(1), S_OK);
    EXPECT_EQ(module.Query<IQComponent>(1, host::kComponent), nullptr);
    EXPECT_EQ(destroy(2), S_OK);
}

TEST(Entry, StartUpAndShutDownAnswers) {
    TestHost host;
    ModuleBoxes boxes;
    const TestModule module;
    module.Entry<CreateInstanceFn>("CreateInstance")(5);
    auto* const component = module.Query<IQComponent>(5, host::kComponent);
    EXPECT_EQ(component->Terminate(-1), E_FAIL);
    EXPECT_EQ(component->Initialize(nullptr, 0), E_FAIL);
    EXPECT_EQ(component->Initialize(&host, 0), S_OK);
    EXPECT_TRUE(host.advised.empty());
    auto* const reporter = module.Query<IQErrorReporter>(5, host::kErrorReporter);
    EXPECT_EQ(reporter->ReportError(1, 2), E_FAIL);

    EXPECT_EQ(component->Initialize(&host, 1), S_OK);
    for (const GUID& id : {host::kSteppingClient, host::kWorkSpaceClient, host::kWorkSpaceClient2,
                           host::kFormatViewClient}) {
        EXPECT_TRUE(host.advised.contains(id));
    }
    EXPECT_TRUE(host.offered.contains(host::kOSTraceWindow));
    EXPECT_EQ(component->Terminate(0), S_OK);
    EXPECT_FALSE(host.advised.empty());
    EXPECT_EQ(component->Terminate(1), S_OK);
    EXPECT_TRUE(host.advised.empty());
    EXPECT_FALSE(host.offered.contains(host::kOSTraceWindow));
    EXPECT_TRUE(host.docking.registrations.empty());
    EXPECT_EQ(component->Terminate(1), E_FAIL);
    // A second connection of the same object works like the first.
    EXPECT_EQ(component->Initialize(&host, 1), S_OK);
    EXPECT_FALSE(host.advised.empty());
    EXPECT_EQ(component->Terminate(1), S_OK);
    module.Entry<DestroyInstanceFn>("DestroyInstance")(5);
}

}  // namespace
}  // namespace kvx::test
