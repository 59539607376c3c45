#pragma once
// A picture of a table of the OS Analyze window.

#include "analyze/AnalyzeColumns.h"
#include "workbench/picture/PicturePage.h"

namespace kvx::picture {

class TablePicture final : public PicturePage {
  public:
    // table: one of COSTraceData::kForms.
    TablePicture(service::TraceService& service, const cli::Streams& streams, EAnalysis table);

    // Opens the recording and builds the table for the range. Without a size the picture is as
    // large as the whole table, most at most. Empty: done, else why not.
    std::string LayOut(std::optional<SIZE> size, SIZE most, const PictureRange& range);

    SIZE Size() const override { return size_; }
    void DrawBody(CDC& dc) override;

  private:
    std::vector<CString> StatusTexts() override;

    const EAnalysis table_;
    AnalyzeColumns columns_;
    SIZE size_;
};

}  // namespace kvx::picture
