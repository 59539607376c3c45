#include "workbench/picture/TracePicture.h"

#include <fmt/format.h>

#include <algorithm>

#include "platform/base/Automation.h"
#include "traceview/StatusTexts.h"
#include "traceview/TracePainter.h"
#include "workbench/picture/SvgGraphics.h"

namespace kvx::picture {
namespace {

// Where an item stands in an SVG picture: items of one place are one group.
struct Place {
    int layer = 0;
    int line = -1;  // -1: of the chart as a whole
    friend auto operator<=>(const Place&, const Place&) = default;
};

constexpr const char* kLayers[] = {"rows", "grid",   "states", "dispatches",
                                   "runs", "hidden", "markers"};

struct PlaceOf {
    Place operator()(const RowLine&) const { return {0}; }
    Place operator()(const GridLine&) const { return {1}; }
    Place operator()(const StateBar& bar) const { return {2, bar.line}; }
    Place operator()(const SwitchLine&) const { return {3}; }
    Place operator()(const RunBar& bar) const { return {4, bar.line}; }
    Place operator()(const Mark& mark) const { return {4, mark.line}; }
    Place operator()(const HiddenRow&) const { return {5}; }
    Place operator()(const MarkerLine&) const { return {6}; }
};

// What has a tip: bars and marks.
struct EventOf {
    std::optional<std::uint32_t> operator()(const Bar& bar) const { return bar.event; }
    std::optional<std::uint32_t> operator()(const Mark& mark) const { return mark.event; }
    template <class Other>
    std::optional<std::uint32_t> operator()(const Other&) const {
        return std::nullopt;
    }
};

// Opens and closes the groups around the items of the chart.
class ItemGroups {
  public:
    ItemGroups(SvgGraphics& graphics, IQOSTraceService& service, const CContextMng& contexts)
        : graphics_(graphics), service_(service), contexts_(contexts) {}
    ~ItemGroups() { CloseAll(); }
    ItemGroups(const ItemGroups&) = delete;
    ItemGroups& operator=(const ItemGroups&) = delete;

    void Begin(const ChartItem& item) {
        if (std::exchange(inTip_, false)) graphics_.EndGroup();
        const Place place = std::visit(PlaceOf{}, item);
        if (place != place_) {
            CloseAll();
            graphics_.BeginGroup(Attributes(place));
            place_ = place;
        }
        const auto event = std::visit(EventOf{}, item);
        if (!event) return;
        Bstr tip;
        service_.GetEventTipText(*event, tip.Receive());
        graphics_.BeginGroup("", tip.Utf8());
        inTip_ = true;
    }

  private:
    std::string Attributes(const Place& place) const {
        const char* const layer = kLayers[place.layer];
        if (place.line < 0) return fmt::format("class=\"{}\"", layer);
        return fmt::format("class=\"{}\" data-line=\"{}\" data-name=\"{}\"", layer, place.line,
                           XmlText(contexts_.GetShownName(place.line)));
    }
    void CloseAll() {
        if (std::exchange(inTip_, false)) graphics_.EndGroup();
        if (std::exchange(place_, std::nullopt)) graphics_.EndGroup();
    }

    SvgGraphics& graphics_;
    IQOSTraceService& service_;
    const CContextMng& contexts_;
    std::optional<Place> place_;
    bool inTip_ = false;
};

}  // namespace

std::string TracePicture::LayOut(SIZE size, const PictureRange& range) {
    size_ = size;
    chart::LayOut(columns_, display_.viewport, cell_, BodySize());
    return display_.Open() ? Show(range) : "";
}

std::string TracePicture::Show(const PictureRange& range) {
    std::int64_t start = 0;
    if (Failed(service_.GetEventTime(0, &start))) return {};  // nothing to choose a range from
    // The recording may begin before its first event.
    start = std::max(start, range.start.value_or(start));
    const std::int64_t last = service_.GetRecording()->LastTime();
    const std::int64_t end = std::min(last, range.end.value_or(last));
    if (start >= end) return {};
    const bool shown =
        Succeeded(display_.SetDisplayRange(static_cast<double>(start), static_cast<double>(end)));
    return shown ? "" : "the range could not be shown";
}

std::vector<CString> TracePicture::StatusTexts() {
    return ComposeStatusTexts(data_.engine, data_.markers, display_.viewport);
}

void TracePicture::DrawBody(CDC& dc) {
    dc.SelectObject(&font_);
    chart::DrawTrace(dc, painter_, columns_, cell_, display_, chart::ItemsOf(display_, &service_),
                     tips_);
}

void TracePicture::DrawSvgBody(SvgGraphics& graphics) {
    // Items of different lines do not touch each other within a layer.
    ChartItems items = chart::ItemsOf(display_, &service_);
    std::ranges::stable_sort(items, {},
                             [](const ChartItem& item) { return std::visit(PlaceOf{}, item); });
    CDC dc(&graphics);
    dc.SelectObject(&font_);
    ItemGroups groups(graphics, service_, data_.contexts);
    chart::DrawTrace(dc, painter_, columns_, cell_, display_, items, tips_,
                     [&groups](const ChartItem& item) { groups.Begin(item); });
}

}  // namespace kvx::picture
