// A window's text colours on their way to its frame.

#include "host/NamedColors.h"
#include "platform/base/SystemInfo.h"
#include "sink/FrameInstanceCtrl.h"
#include "support/ResourceFixture.h"

namespace kvx::test {
namespace {

class RecordingFrame final : public CStatusFrameWnd {
  public:
    CString item;
    COLORREF text = 0;
    COLORREF background = 0;
    void GetWindowTitle(CString&) const override {}
    int RefreshView() override { return 0; }
    void SetViewColors(const CString& to, COLORREF ink, COLORREF paper) override {
        item = to;
        text = ink;
        background = paper;
    }

  protected:
    const CRuntimeClass* ViewClass() const override { return nullptr; }
    void OnFrameCreated() override {}
};

constexpr WindowTraits kTraits = {1, 2, 3, {}, "View", "book.chm>Window"};

class Instance final : public CFrameInstanceCtrl {
  public:
    explicit Instance(IQHost* host) : CFrameInstanceCtrl(host, nullptr, frame, kTraits) {}
    RecordingFrame frame;

  protected:
    const IViewSender* Sender() const override { return nullptr; }
    void ConnectView() override {}
};

TEST_F(ResourceFixture, SystemColoursAreThoseOfTextsAndOfTheirGround) {
    Instance instance(&host);
    instance.SetColours("Text", kColorSystem, kColorHighlight);
    EXPECT_EQ(instance.frame.item, "Text");
    EXPECT_EQ(instance.frame.text, GetSysColor(COLOR_WINDOWTEXT));
    EXPECT_EQ(instance.frame.background, GetSysColor(COLOR_HIGHLIGHT));
    instance.SetColours("Selected Text", kColorHighlight, kColorSystem);
    EXPECT_EQ(instance.frame.item, "Selected Text");
    EXPECT_EQ(instance.frame.text, GetSysColor(COLOR_HIGHLIGHTTEXT));
    EXPECT_EQ(instance.frame.background, GetSysColor(COLOR_WINDOW));
    instance.SetColours("Text", 4, 6);
    EXPECT_EQ(instance.frame.text, 0x0000FFu) << "RED";
    EXPECT_EQ(instance.frame.background, 0x00FFFFu) << "YELLOW";
}

}  // namespace
}  // namespace kvx::test
