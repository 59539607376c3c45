// The connection to the simulated target, as components see it.

#include "workbench/desktop/sessions/TargetSession.h"

#include <gtest/gtest.h>

#include <map>

namespace kvx::desktop {
namespace {

constexpr std::int64_t kTenth = 100'000;  // microseconds

// A component that writes down the events, and what it finds when they come.
class Witness final : public IQComponent {
  public:
    explicit Witness(hosting::HostObject& host) : host_(host) { host_.AddComponent(this); }
    ~Witness() { host_.RemoveComponent(this); }

    std::string Take() { return std::exchange(log_, {}); }
    template <class Interface>
    Interface* Get(const GUID& id) const {
        return host::Service<Interface>(&host_, id);
    }

    HRESULT KVX_CALL QueryInterface(const GUID&, void**) override { return E_NOINTERFACE; }
    std::uint32_t KVX_CALL AddRef() override { return 1; }
    std::uint32_t KVX_CALL Release() override { return 0; }
    HRESULT KVX_CALL Notify(const EventRecord* record) override {
        static const std::map<GUID, std::string> kNames = {
            {host::kEventDebuggerConnected, "debugger connected"},
            {host::kEventDebuggerDisconnected, "debugger disconnected"},
            {host::kEventTargetConnected, "target connected"},
            {host::kEventTargetDisconnected, "target disconnected"},
            {host::kEventTraceCleared, "trace cleared"},
            {host::kEventTraceReady, "trace ready"}};
        log_ += kNames.at(record->id);
        if (Get<IQRunState>(host::kRunState)->IsRunning() >= 0) log_ += ", running";
        log_ += "\n";
        return S_OK;
    }
    HRESULT KVX_CALL Initialize(IQHost*, std::int16_t) override { return S_OK; }
    HRESULT KVX_CALL Reserved3() override { return S_OK; }
    HRESULT KVX_CALL Reserved4() override { return S_OK; }
    HRESULT KVX_CALL Terminate(std::int16_t) override { return S_OK; }

  private:
    hosting::HostObject& host_;
    std::string log_;
};

class TargetSessionTest : public testing::Test {
  protected:
    TargetSessionTest() {
        session_.onFailure = [](const QString& why) { ADD_FAILURE() << why.toStdString(); };
    }
    bool IsMeasurementAvailable() {
        void* module = nullptr;
        services_.Debugger().GetModule(&module);
        using Info = std::intptr_t (*)(std::uintptr_t, std::uintptr_t);
        const auto info = reinterpret_cast<Info>(
            GetProcAddress(static_cast<HMODULE>(module), "IN1_Get_service_info"));
        return info && info(1050, 0) != 1;
    }
    bool IsTraceThere() {
        VARIANT_BOOL there = 0;
        trace_.IsTraceAvailable(&there);
        return there == VARIANT_TRUE;
    }
    std::int64_t FirstTime() { return trace_.GetRecording()->FirstTime(); }

    Settings settings_;
    hosting::HostObject host_;
    WorkbenchServices services_{host_, settings_, qgetenv("KVX_BIN_DIR").toStdString()};
    service::TraceService trace_;
    Witness witness_{host_};
    TargetSession session_{host_, services_, trace_, 3000};
};

TEST_F(TargetSessionTest, TellsComponentsWhatHappens) {
    EXPECT_EQ(witness_.Take(), "debugger disconnected\ndebugger connected\ntarget connected\n");
    EXPECT_TRUE(IsMeasurementAvailable());
    EXPECT_FALSE(IsTraceThere());
    session_.Go();
    EXPECT_EQ(witness_.Take(), "trace cleared\n");
    EXPECT_GE(services_.Running().IsRunning(), 0);
    session_.Advance(kTenth);
    EXPECT_EQ(witness_.Take(), "");
    session_.Stop();
    EXPECT_EQ(witness_.Take(), "trace ready\n") << "and nothing runs any more";
    EXPECT_TRUE(IsTraceThere());
    session_.Stop();
    EXPECT_EQ(witness_.Take(), "");
    session_.Go();
    EXPECT_FALSE(IsTraceThere());
    session_.Reset();
    EXPECT_EQ(witness_.Take(), "trace cleared\ntrace cleared\n");
    EXPECT_LT(services_.Running().IsRunning(), 0);
}

TEST_F(TargetSessionTest, DisconnectingEndsAll) {
    {
        service::TraceService trace;
        TargetSession other(host_, services_, trace, 3000);
        other.Go();
        witness_.Take();
    }
    EXPECT_EQ(witness_.Take(),
              "trace cleared\ntarget disconnected\ndebugger disconnected\ndebugger connected\n");
    EXPECT_LT(services_.Running().IsRunning(), 0);
    EXPECT_FALSE(IsMeasurementAvailable());
}

TEST_F(TargetSessionTest, FullBufferIsShownWhileTheTargetRunsOn) {
    session_.Go();
    witness_.Take();
    for (int i = 0; i < 10; ++i) session_.Advance(kTenth);
    EXPECT_EQ(witness_.Take(), "trace ready, running\n") << "once";
    EXPECT_EQ(trace_.GetRecording()->RecordCount(), 3000U);
    session_.Stop();
    EXPECT_EQ(witness_.Take(), "") << "what is shown stays";
}

TEST_F(TargetSessionTest, FreeKeepsTheNewest) {
    ASSERT_EQ(trace_.SetRangeCondition(kRangeFree), S_OK);
    EXPECT_EQ(session_.RangeCondition(), kRangeFree);
    session_.Go();
    for (int i = 0; i < 10; ++i) session_.Advance(kTenth);
    session_.Stop();
    EXPECT_EQ(trace_.GetRecording()->RecordCount(), 3000U);
    EXPECT_GT(FirstTime(), 5 * kTenth);
}

// What Trace Stop and Trace Restart do.
TEST_F(TargetSessionTest, RecordingStopsAndRestartsWhileTheTargetRuns) {
    session_.Go();
    session_.Advance(kTenth / 2);
    witness_.Take();
    ASSERT_EQ(trace_.StopMeasurement(), S_OK);
    session_.FollowRecording();
    EXPECT_EQ(witness_.Take(), "trace ready, running\n");
    EXPECT_LT(FirstTime(), 100);
    session_.Advance(kTenth);
    trace_.StopMeasurement();
    trace_.ResetMeasurement();
    ASSERT_EQ(trace_.StartMeasurement(), S_OK);
    session_.FollowRecording();
    EXPECT_FALSE(IsTraceThere()) << "given up for the new one";
    session_.Advance(kTenth / 2);
    session_.Stop();
    EXPECT_EQ(witness_.Take(), "trace ready\n");
    EXPECT_GT(FirstTime(), kTenth);
    EXPECT_EQ(trace_.StartMeasurement(), S_FALSE) << "nothing runs";
}

TEST_F(TargetSessionTest, AnotherBufferSizeHoldsForTheNextRecording) {
    session_.Go();
    session_.Advance(kTenth / 2);
    session_.Stop();
    const std::uint32_t shown = trace_.GetRecording()->RecordCount();
    session_.SetBufferSize(200);
    EXPECT_EQ(trace_.GetRecording()->RecordCount(), shown);
    session_.Go();
    session_.Advance(kTenth);
    EXPECT_EQ(trace_.GetRecording()->RecordCount(), 200U);
}

}  // namespace
}  // namespace kvx::desktop
