// Lines: selection by key, hide and show, dragging, default order; columns and settings; search.

#include "traceview/TraceWindow.h"

namespace kvx::test {
namespace {

using Lines = TraceWindow;

TEST_F(Lines, AClickSelectsAndASecondClickDeselects) {
    Open(PeriodicTrace(20));
    EXPECT_FALSE(Enabled(ids::kHideLine));
    Drag(Cell(1), Cell(1));
    EXPECT_TRUE(Enabled(ids::kHideLine));
    Drag(Cell(1), Cell(1));
    EXPECT_FALSE(Enabled(ids::kHideLine));
    Drag({40, Geometry().LinesBottom() + 5}, {40, Geometry().LinesBottom() + 5});
    EXPECT_FALSE(Enabled(ids::kHideLine));
}

TEST_F(Lines, HiddenLinesStayInTheTableAndComeBack) {
    Open(PeriodicTrace(20));
    Drag(Cell(2), Cell(2));
    Drag(Cell(0), Cell(0));
    Command(ids::kHideLine);
    EXPECT_FALSE(Enabled(ids::kShowLine));  // the selection is gone
    EXPECT_EQ(data.contexts.IsShown(0), 0);
    EXPECT_EQ(data.contexts.IsShown(1), 1);
    EXPECT_EQ(data.contexts.IsShown(2), 0);
    Drag(Cell(2), Cell(2));
    Command(ids::kShowLine);
    EXPECT_EQ(data.contexts.IsShown(2), 1);
    EXPECT_EQ(data.contexts.IsShown(0), 0);
}

TEST_F(Lines, DraggedLinesMoveAndTheDefaultOrderComesBack) {
    Open(PeriodicTrace(20));
    const std::vector<CString> order = {NameOf(0), NameOf(1), NameOf(2), NameOf(3)};
    // Over line 3: it lands before it. The selection follows the context, not the line.
    Drag(Cell(0), Cell(0));
    Drag(Cell(0), Cell(3));
    EXPECT_EQ(NameOf(0), order[1]);
    EXPECT_EQ(NameOf(2), order[0]);
    Command(ids::kHideLine);
    EXPECT_EQ(data.contexts.IsShown(2), 0);
    // Below the last line: to the end.
    Drag(Cell(1), {40, Geometry().LinesBottom() + 40});
    EXPECT_EQ(NameOf(3), order[2]);
    // Order and hidden lines are the service's: they outlive a reload.
    view->OnUpdate(view, kHintTraceReady, nullptr);
    EXPECT_EQ(NameOf(1), order[0]);
    EXPECT_EQ(data.contexts.IsShown(1), 0);
    // The analyses follow the lines.
    EXPECT_EQ(data.runTime.Find(3)->Num > 0, true);
    Command(ids::kDefaultOrder);
    for (int line = 0; line < 4; ++line) {
        EXPECT_EQ(NameOf(line), order[static_cast<std::size_t>(line)]);
    }
}

TEST_F(Lines, AColumnIsResizedStoredAndLoaded) {
    Open(PeriodicTrace(20));
    const ChartGeometry before = Geometry();
    EXPECT_FALSE(instance->AreSettingsModified());
    // The right edge of the name column is the chart's left edge.
    Drag({before.left, 3}, {before.left + 5 * before.charWidth + 2, 3});
    EXPECT_TRUE(instance->AreSettingsModified());
    EXPECT_EQ(Geometry().left, before.left + 5 * before.charWidth);
    struct Store : IWorkspaceStore {
        std::map<CString, CString> texts;
        void WriteText(const CString& key, const CString& text) override { texts[key] = text; }
        CString ReadText(const CString& key, const CString& fallback) override {
            return texts.contains(key) ? texts[key] : fallback;
        }
    } store;
    instance->SaveSettings(store, "ignored");
    EXPECT_FALSE(instance->AreSettingsModified());
    EXPECT_EQ(store.texts["OSTraceViewView"], "5,8,5,17,0");
    for (const char* damaged : {"", "1,2", "1,2,3,4,5,6", "a,b,c,d,e", "7,8,5,20,0x"}) {
        store.texts["OSTraceViewView"] = damaged;
        instance->LoadSettings(store, "ignored");
        EXPECT_EQ(Geometry().left, before.left + 5 * before.charWidth) << damaged;
    }
    store.texts["OSTraceViewView"] = "7,8,5,20,0";
    instance->LoadSettings(store, "ignored");
    EXPECT_EQ(Geometry().left, 40 * before.charWidth);
}

TEST_F(Lines, SearchGoesIntoRecordsThatAreNotDecodedYet) {
    Open(PeriodicTrace(2000));
    EXPECT_FALSE(Enabled(ids::kSearchNext));
    view->SendMessage(WM_KEYDOWN, VK_F3);  // disabled: nothing happens
    Command(ids::kSearch);                 // abandoned in the dialog
    EXPECT_FALSE(Enabled(ids::kSearchNext));
    service.searchText = "last_call";
    Command(ids::kSearch);
    EXPECT_EQ(service.Decoded(), service.Trace().Count());
    const std::uint32_t hit = data.markers.GetMarkerEvent(kMarkerIndicator);
    EXPECT_EQ(service.Trace().texts[service.Trace().text[hit]].name, "last_call");
    // The hit is brought into the middle of the display.
    EXPECT_TRUE(Geometry().InDisplay(MarkerTime(kMarkerIndicator)));
    EXPECT_TRUE(Enabled(ids::kSearchNext));
    boxes.ExpectMessage("cannot be found");
    Command(ids::kSearchNext);
    boxes.ExpectMessage("cannot be found");
    Command(ids::kSearchPrevious);
    EXPECT_EQ(data.markers.GetMarkerEvent(kMarkerIndicator), hit);
}

TEST_F(Lines, TipsFollowThePointerAndGo) {
    Open(PeriodicTrace(20));
    const CPoint onBar = {Geometry().X(330.0), Geometry().LineCentre(2)};
    std::uint32_t event = 0;
    ASSERT_EQ(view->HitTest(onBar.x, onBar.y, &event), 1);
    EXPECT_EQ(service.Trace().next[event], 2u);
    Move(onBar);
    EXPECT_TRUE(view->IsTipShown());
    Move({onBar.x, Geometry().LinesBottom() + 3});
    EXPECT_FALSE(view->IsTipShown());
    Move(onBar);
    view->OnUpdate(view, kHintTraceCleared, nullptr);
    EXPECT_FALSE(view->IsTipShown());
    EXPECT_EQ(view->HitTest(onBar.x, onBar.y, &event), 0);
}

TEST_F(Lines, AClosedWindowGivesTheTraceBack) {
    Open(PeriodicTrace(20));
    const int before = service.calls["DiscardData"];
    data.markers.SetSearchFlag(1);
    Close();
    EXPECT_EQ(data.markers.GetSearchFlag(), 0) << "another window's F3 finds nothing of it";
    EXPECT_EQ(service.calls["ViewClosed"], 1);
    EXPECT_EQ(service.calls["Detach"], 1);
    EXPECT_EQ(service.calls["DiscardData"], before + 1);
}

}  // namespace
}  // namespace kvx::test
