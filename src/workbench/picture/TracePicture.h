#pragma once
// A picture of the OS Trace window.

#include "traceview/Tip.h"
#include "traceview/TraceColumns.h"
#include "traceview/model/ChartItems.h"
#include "traceview/model/TraceDisplay.h"
#include "workbench/picture/PicturePage.h"

namespace kvx::picture {

class TracePicture final : public PicturePage {
  public:
    using PicturePage::PicturePage;

    // Opens the recording at that size and decodes what is shown. Empty: done, else why not.
    std::string LayOut(SIZE size, const PictureRange& range);

    SIZE Size() const override { return size_; }
    void DrawBody(CDC& dc) override;

  private:
    std::vector<CString> StatusTexts() override;
    // A group a line in each layer, for dispatches are drawn over states and below runs; bars and
    // marks have their tips as titles.
    void DrawSvgBody(SvgGraphics& graphics) override;
    std::string Show(const PictureRange& range);

    TraceDisplay display_{data_, view_};
    TraceColumns columns_;
    COSTip tips_;
    SIZE size_;
};

}  // namespace kvx::picture
