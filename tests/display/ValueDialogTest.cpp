// The dialog of grid time and rates: which fields it offers and what OK makes of them.

#include "display/DlgOSTraceValue.h"

#include <gtest/gtest.h>

#include "host/OSTraceService.h"
#include "platform/controls/Edit.h"
#include "support/ResourceFixture.h"

namespace kvx::test {
namespace {

constexpr UINT kHours = 4068, kMinutes = 4158, kSeconds = 4036, kMilliseconds = 4165,
               kMicroseconds = 4169, kNanoseconds = 4170, kExpand = 4116, kReduce = 4118;
constexpr UINT kTimeFields[] = {kHours,        kMinutes,      kSeconds,
                                kMilliseconds, kMicroseconds, kNanoseconds};
constexpr UINT kHourLabel = 9000, kCycleLabel = 9007;

using Typed = std::vector<std::pair<UINT, const char*>>;

// 1 h 2 m 3 s 4 ms 5 us 6 ns or 7000000000 cycles.
class SampleDialog final : public CDlgOSTraceValue {
  public:
    explicit SampleDialog(int timeMode) {
        mode = timeMode;
        hours = 1;
        minutes = 2;
        seconds = 3;
        milliseconds = 4;
        microseconds = 5;
        nanoseconds = 6;
        cycles = 7e9;
        expandRate = 2.0;
        reduceRate = 1.5;
    }
};

class ValueDialog : public ResourceFixture {
  protected:
    // Types into the fields and presses OK.
    int Answer(CDlgOSTraceValue& dialog, const Typed& typed) {
        boxes.ExpectDialog([&](CDialog& shown) {
            for (const auto& [field, text] : typed) shown.SetDlgItemText(field, text);
            Click(shown, IDOK);
        });
        return dialog.DoModal();
    }
    bool Accepts(int mode, const Typed& typed) {
        SampleDialog dialog(mode);
        return Answer(dialog, typed) == static_cast<int>(IDOK);
    }
    static std::vector<int> Parts(const CDlgOSTraceValue& dialog) {
        return {dialog.hours,        dialog.minutes,      dialog.seconds,
                dialog.milliseconds, dialog.microseconds, dialog.nanoseconds};
    }
    using Fields = std::vector<std::string>;
};

TEST_F(ValueDialog, OffersWhatTheTimeModeKnows) {
    const Fields parts = {"1", "2", "3", "4", "5", "6"};
    for (int mode = kTimeMilliseconds; mode <= kTimeNanoseconds; ++mode) {
        SampleDialog dialog(mode);
        boxes.ExpectDialog([&](CDialog& shown) {
            int from = -1;
            int to = -1;
            static_cast<const CEdit*>(shown.GetDlgItem(kHours))->GetSel(from, to);
            EXPECT_EQ(from, 0) << "typing replaces the first field";
            EXPECT_EQ(to, 1);
            const auto offered = static_cast<std::size_t>(mode) + 3;
            for (std::size_t i = 0; i < std::size(kTimeFields); ++i) {
                const CWnd* const field = shown.GetDlgItem(kTimeFields[i]);
                EXPECT_EQ(field->GetWindowText(), i < offered ? parts[i] : "") << mode;
                EXPECT_EQ(field->IsWindowEnabled(), i < offered) << mode;
                EXPECT_EQ(shown.GetDlgItem(kHourLabel + static_cast<UINT>(i))->IsWindowEnabled(),
                          i < offered);
            }
            EXPECT_FALSE(IsShown(shown, kCycleLabel));
            EXPECT_TRUE(IsShown(shown, kHourLabel));
            EXPECT_EQ(shown.GetDlgItemText(kExpand), "2.000000");
            EXPECT_EQ(shown.GetDlgItemText(kReduce), "1.500000");
        });
        EXPECT_EQ(dialog.DoModal(), static_cast<int>(IDCANCEL));
    }
    SampleDialog cycles(kTimeCycles);
    boxes.ExpectDialog([&](CDialog& shown) {
        EXPECT_EQ(shown.GetDlgItemText(kHours), "7000000000");
        for (const UINT field : kTimeFields) EXPECT_EQ(IsShown(shown, field), field == kHours);
        EXPECT_TRUE(IsShown(shown, kCycleLabel));
        for (UINT i = 0; i < 6; ++i) EXPECT_FALSE(IsShown(shown, kHourLabel + i)) << i;
    });
    EXPECT_EQ(cycles.DoModal(), static_cast<int>(IDCANCEL));
}

TEST_F(ValueDialog, FieldsTakeSoManyCharacters) {
    const auto limits = [&](int mode) {
        SampleDialog dialog(mode);
        std::vector<std::size_t> found;
        boxes.ExpectDialog([&](CDialog& shown) {
            for (const UINT field : {kHours, kMinutes, kSeconds, kMilliseconds, kMicroseconds,
                                     kNanoseconds, kExpand, kReduce}) {
                shown.SetDlgItemText(field, std::string(20, '1'));
                found.push_back(shown.GetDlgItemText(field).size());
            }
        });
        dialog.DoModal();
        return found;
    };
    EXPECT_EQ(limits(kTimeMicroseconds), (std::vector<std::size_t>{4, 2, 2, 3, 3, 3, 15, 15}));
    EXPECT_EQ(limits(kTimeCycles)[0], 15u);
}

TEST_F(ValueDialog, OkHandsBackWhatTheModeHas) {
    SampleDialog milliseconds(kTimeMilliseconds);
    const Typed typed = {
        {kHours, "999"}, {kMinutes, "59"}, {kSeconds, "08"}, {kMilliseconds, "999"}};
    EXPECT_EQ(Answer(milliseconds, typed), static_cast<int>(IDOK));
    EXPECT_EQ(Parts(milliseconds), (std::vector<int>{999, 59, 8, 999, 0, 0}));
    EXPECT_EQ(milliseconds.cycles, 7e9) << "as it came in";

    SampleDialog microseconds(kTimeMicroseconds);
    EXPECT_EQ(Answer(microseconds, {{kMicroseconds, "999"}}), static_cast<int>(IDOK));
    EXPECT_EQ(Parts(microseconds), (std::vector<int>{1, 2, 3, 4, 999, 0}));

    SampleDialog nanoseconds(kTimeNanoseconds);
    EXPECT_EQ(Answer(nanoseconds, {{kNanoseconds, "999"}}), static_cast<int>(IDOK));
    EXPECT_EQ(Parts(nanoseconds), (std::vector<int>{1, 2, 3, 4, 5, 999}));

    SampleDialog cycles(kTimeCycles);
    EXPECT_EQ(Answer(cycles, {{kHours, "123456789012345"}}), static_cast<int>(IDOK));
    EXPECT_EQ(cycles.cycles, 123456789012345.0);
    EXPECT_EQ(Parts(cycles), std::vector<int>(6, 0));
    EXPECT_EQ(Answer(cycles, {{kHours, "0"}}), static_cast<int>(IDOK)) << "no cycles are a count";
    EXPECT_EQ(cycles.cycles, 0.0);
}

TEST_F(ValueDialog, AFieldThatIsWrongIsSelectedAndTheDialogStays) {
    struct Case {
        int mode;
        UINT field;
        const char* text;
    };
    for (const Case& wrong : {Case{kTimeMilliseconds, kHours, "1a"},
                              {kTimeMilliseconds, kHours, ""},
                              {kTimeMilliseconds, kHours, "-1"},
                              {kTimeMilliseconds, kMinutes, "60"},
                              {kTimeMilliseconds, kSeconds, "60"},
                              {kTimeMilliseconds, kMilliseconds, "1000"},
                              {kTimeMicroseconds, kMicroseconds, "1000"},
                              {kTimeNanoseconds, kNanoseconds, "1000"},
                              {kTimeCycles, kHours, "1.5"},
                              {kTimeCycles, kHours, ""},
                              {kTimeMilliseconds, kExpand, "1.2.3"},
                              {kTimeMilliseconds, kExpand, "."},
                              {kTimeMilliseconds, kExpand, "1,5"},
                              {kTimeMilliseconds, kReduce, ""},
                              {kTimeMilliseconds, kReduce, "1e3"}}) {
        SampleDialog dialog(wrong.mode);
        boxes.ExpectDialog([&](CDialog& shown) {
            auto* const edit = static_cast<CEdit*>(shown.GetDlgItem(wrong.field));
            edit->SetLimitText(255);
            edit->SetWindowText(wrong.text);
            Click(shown, IDOK);
            EXPECT_TRUE(shown.IsWindow()) << "stays";
            int from = -1;
            int to = -1;
            edit->GetSel(from, to);
            EXPECT_EQ(from, 0) << wrong.field << " " << wrong.text;
            EXPECT_EQ(to, static_cast<int>(std::string_view(wrong.text).size())) << wrong.text;
        });
        EXPECT_EQ(dialog.DoModal(), static_cast<int>(IDCANCEL)) << wrong.text;
    }
}

TEST_F(ValueDialog, AGridTimeOutOfRangeIsSaid) {
    const Typed nothing = {{kHours, "0"}, {kMinutes, "0"}, {kSeconds, "0"}, {kMilliseconds, "0"}};
    const auto with = [&](std::pair<UINT, const char*> more) {
        Typed typed = nothing;
        typed.push_back(more);
        return typed;
    };
    const Typed tooMany = {{kHours, "1000"}};
    const Typed nanosecondsOnly = {{kHours, "0"},        {kMinutes, "0"},
                                   {kSeconds, "0"},      {kMilliseconds, "0"},
                                   {kMicroseconds, "0"}, {kNanoseconds, "500"}};
    for (const auto& [mode, typed] : {std::pair{kTimeMilliseconds, nothing},
                                      {kTimeMilliseconds, tooMany},
                                      {kTimeNanoseconds, nanosecondsOnly}}) {
        boxes.ExpectMessage("ERROR: Grid time is out of range.");
        EXPECT_FALSE(Accepts(mode, typed));
    }
    EXPECT_TRUE(Accepts(kTimeMicroseconds, with({kMicroseconds, "1"})));
    EXPECT_TRUE(Accepts(kTimeMilliseconds, {{kHours, "999"}}));
    for (const UINT field : {kMinutes, kSeconds, kMilliseconds}) {
        EXPECT_TRUE(Accepts(kTimeMilliseconds, with({field, "1"}))) << field;
    }
}

TEST_F(ValueDialog, RatesAreAtLeastOne) {
    SampleDialog dialog(kTimeCycles);
    EXPECT_EQ(Answer(dialog, {{kExpand, "0.5"}, {kReduce, "2.25"}}), static_cast<int>(IDOK));
    EXPECT_EQ(dialog.expandRate, 1.0);
    EXPECT_EQ(dialog.reduceRate, 2.25);
    EXPECT_EQ(Answer(dialog, {{kExpand, "3."}, {kReduce, ".5"}}), static_cast<int>(IDOK));
    EXPECT_EQ(dialog.expandRate, 3.0);
    EXPECT_EQ(dialog.reduceRate, 1.0);
    EXPECT_EQ(Answer(dialog, {{kExpand, "1.1"}}), static_cast<int>(IDOK));
    EXPECT_EQ(dialog.expandRate, static_cast<double>(1.1f)) << "single precision";
}

}  // namespace
}  // namespace kvx::test
