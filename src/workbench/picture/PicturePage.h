#pragma once
// What pictures of a recording have in common: the recording as the component shows it, fonts, and
// the status line above. Drawn without any window.
//
// The toolkit's back-end must be installed, for its fonts. The user's settings play no part.

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "framework/FontCell.h"
#include "framework/HeaderCellPainter.h"
#include "trace/TraceData.h"
#include "workbench/cli/RecordingSource.h"
#include "workbench/cli/TerminalView.h"

namespace kvx::picture {

class SvgGraphics;

// Counts within the recording, start before end. Without one: where the trace starts (ends).
struct PictureRange {
    std::optional<std::int64_t> start;
    std::optional<std::int64_t> end;
};

class PicturePage {
  public:
    // Borrows the service, whose recording is shown.
    PicturePage(service::TraceService& service, const cli::Streams& streams);
    PicturePage(const PicturePage&) = delete;
    PicturePage& operator=(const PicturePage&) = delete;
    virtual ~PicturePage() = default;

    // Pixels: the status line, and below it the body. Each is drawn from its own corner, as the
    // windows are, over a ground that is there already.
    virtual SIZE Size() const = 0;
    int StatusHeight() const;
    SIZE StatusSize() const { return {Size().cx, StatusHeight()}; }
    SIZE BodySize() const { return {Size().cx, std::max(Size().cy - StatusHeight(), 0)}; }
    static COLORREF Ground();
    void DrawStatus(CDC& dc);
    virtual void DrawBody(CDC& dc) = 0;
    // Both as one SVG picture.
    std::string Svg();

  protected:
    virtual std::vector<CString> StatusTexts() = 0;
    virtual void DrawSvgBody(SvgGraphics& graphics);

    service::TraceService& service_;
    cli::TerminalView view_;
    cli::RecordingSource source_{service_};
    COSTraceData data_{source_};
    CFont font_;  // of the windows
    FontCell cell_;
    CHeaderCellPainter painter_;

  private:
    FontCell statusCell_;
};

}  // namespace kvx::picture
