// Context table, colours and the workspace store.
#include <gtest/gtest.h>

#include "core/CoreFixture.h"
#include "platform/base/Text.h"

namespace kvx::test {

namespace {

TEST(Contexts, ShowTheirTexts) {
    ScriptedTrace trace;
    trace.AddHandler(7, "INT7", 0x1abc);
    trace.AddTask(12, "Straße");
    trace.AddIdle();
    trace.AddUnknown();
    Core core(trace);
    const CContextMng& contexts = core.data.contexts;
    const auto cells = [&](int line) {
        const ContextTexts t = contexts.GetTexts(line);
        return t.vector + "|" + t.table + "|" + t.id + "|" + t.name;
    };
    EXPECT_EQ(cells(0), "  7|001ABC||INT7");
    EXPECT_EQ(cells(1), "||  12|Straße");
    EXPECT_EQ(cells(2), "|||Idle");
    EXPECT_EQ(cells(3), "|||Unknown");
    EXPECT_EQ(contexts.GetKey(0), (ContextKey{1, 7}));
    EXPECT_EQ(contexts.GetKey(3), (ContextKey{3, 0}));
    EXPECT_EQ(contexts.IsHatched(2), 1);
}

TEST(Contexts, KeepWhatWasReadBeforeAFailure) {
    ScriptedTrace trace;
    for (int i = 1; i <= 4; ++i) trace.AddTask(i, "T");
    Core core(trace);
    EXPECT_EQ(core.data.contexts.GetCount(), 4);
    core.service.failingLine = 2;
    EXPECT_EQ(core.data.contexts.Load(), 0);
    EXPECT_EQ(core.data.contexts.GetCount(), 2);
    core.service.failingLine = -1;
    core.service.MoveContext(0, 3);
    EXPECT_EQ(core.data.contexts.Load(), 1);
    EXPECT_EQ(core.data.contexts.GetNumber(3), 1);
    core.host.services.clear();
    EXPECT_EQ(core.data.contexts.Load(), 0);
    EXPECT_EQ(core.data.contexts.GetCount(), 4);
}

class MapStore final : public IWorkspaceStore {
  public:
    std::map<CString, CString> texts;
    void WriteText(const CString& key, const CString& text) override { texts[key] = text; }
    CString ReadText(const CString& key, const CString& fallback) override {
        const auto at = texts.find(key);
        return at == texts.end() ? fallback : at->second;
    }
};

TEST(Colors, AreLookedUpByCode) {
    const COSColor colors;
    EXPECT_EQ(colors[EColor::TaskManagement], colors.GetSysCallColor(1));
    EXPECT_EQ(colors.GetSysCallColor(4), RGB(239, 112, 239));
    EXPECT_EQ(colors.GetSysCallColor(12), colors[EColor::SystemManagement]);
    for (std::size_t i = 0; i < kColorCount; ++i) {
        EXPECT_EQ(colors.colors[i], kColorRows[i].standard) << kColorRows[i].key;
    }
    EXPECT_EQ(colors.GetTaskStateColor(1), colors[EColor::Rdy]);
    for (const int unknown : {0, 14, -1}) EXPECT_EQ(colors.GetTaskStateColor(unknown), 0u);
    for (const int unknown : {0, 4}) EXPECT_EQ(colors.GetTipColor(unknown), 0xFFFFFFu);
    for (const int unknown : {0, 13, 14, -1})
        EXPECT_EQ(colors.GetSysCallColor(unknown), RGB(192, 192, 192));
    EXPECT_EQ(colors.GetTaskStateColor(8), colors[EColor::WaiSdtq]);
    EXPECT_EQ(colors.GetTaskStateColor(11), colors[EColor::WaiSmbf]);
    EXPECT_EQ(colors.GetTaskStateColor(13), RGB(176, 207, 0));
    EXPECT_EQ(colors.GetTipColor(2), RGB(128, 255, 192));
    EXPECT_EQ(colors[EColor::MarkerS], RGB(255, 0, 0));
    EXPECT_EQ(colors[EColor::Indicator], RGB(0, 0, 255));
    EXPECT_EQ(colors[EColor::TipSysCall], RGB(255, 255, 128));
}

TEST(Colors, AreKeptAsHexadecimalTexts) {
    MapStore store;
    COSColor colors;
    colors.Save(store, "OSTraceWnd");
    EXPECT_EQ(store.texts.size(), kColorCount);
    EXPECT_EQ(store.texts["OSTraceWndCOLOR_RUN"], "0");
    EXPECT_EQ(store.texts["OSTraceWndCOLOR_WAI_MPL"], "cfb0");
    EXPECT_EQ(store.texts["OSTraceWndCOLOR_SYSCALL_BACK"], "80ff80");

    store.texts = {{"PCOLOR_RUN", "ff"}, {"PCOLOR_RDY", " 0x404040"}, {"PCOLOR_DMT", "green"},
                   {"PCOLOR_SUS", ""},   {"PCOLOR_PAUSE", "FF00zz"},  {"PCOLOR_MARKER_S", "0"}};
    colors.Load(store, "P");
    EXPECT_EQ(colors[EColor::Run], RGB(255, 0, 0));
    EXPECT_EQ(colors[EColor::Rdy], 0x404040u);
    EXPECT_EQ(colors[EColor::Dmt], 0xB0B0B0u);
    EXPECT_EQ(colors[EColor::Sus], 0x404040u);
    EXPECT_EQ(colors[EColor::Pause], 0xFF00u);
    EXPECT_EQ(colors[EColor::MarkerS], 0u);

    store.texts.clear();
    colors.Save(store, "P");
    unsigned next = 0x10;
    for (auto& [key, text] : store.texts) text = kvx::FormatText("%x", next++);
    const auto wanted = store.texts;
    colors.Load(store, "P");
    colors.Save(store, "P");
    EXPECT_EQ(store.texts, wanted) << "each of them comes back";
}

TEST(WorkspaceStore, ReadsNumbersOrTheFallback) {
    MapStore store;
    store.WriteNumber("a", -12);
    EXPECT_EQ(store.texts["a"], "-12");
    EXPECT_EQ(store.ReadNumber("a", 5), -12);
    for (const char* text : {"", "x1", "-", "99999999999"}) {
        store.texts["b"] = text;
        EXPECT_EQ(store.ReadNumber("b", 5), 5) << text;
    }
    store.texts["b"] = " +7";
    EXPECT_EQ(store.ReadNumber("b", 5), 7);
    EXPECT_EQ(store.ReadNumber("none", 5), 5);
}

}  // namespace

}  // namespace kvx::test
