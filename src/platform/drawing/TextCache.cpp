#include "platform/drawing/TextCache.h"

#include <string>
#include <unordered_map>
#include <vector>

namespace kvx {

namespace {

constexpr std::size_t kMaxTexts = 8192;
constexpr std::size_t kMaxLength = 256;  // longer texts are rendered anew each time
constexpr SIZE kPlainCell = {8, 16};

int CountCharacters(std::string_view utf8) {
    int count = 0;
    for (const char c : utf8) count += (static_cast<unsigned char>(c) & 0xC0) != 0x80;
    return count;
}

TextMask Render(const LOGFONT& font, std::string_view utf8, double ratio) {
    if (IBackend* backend = InstalledBackend()) return backend->Text().Render(font, utf8, ratio);
    TextMask mask;
    mask.extent = {CountCharacters(utf8) * kPlainCell.cx, kPlainCell.cy};
    return mask;
}

struct FontTexts {
    LOGFONT font;
    double ratio;
    TEXTMETRIC metrics;
    std::unordered_map<std::string, TextMask> masks;
};

class TextCache {
  public:
    FontTexts& Of(const LOGFONT& font, double ratio) {
        const auto fits = [&](const FontTexts& texts) {
            return texts.ratio == ratio && texts.font == font;
        };
        if (last_ < fonts_.size() && fits(fonts_[last_])) return fonts_[last_];
        for (last_ = 0; last_ < fonts_.size(); ++last_)
            if (fits(fonts_[last_])) return fonts_[last_];
        fonts_.push_back({font, ratio, MeasureFont(font), {}});
        return fonts_.back();
    }
    const TextMask& Mask(const LOGFONT& font, std::string_view utf8, double ratio) {
        if (utf8.size() > kMaxLength) return long_ = Render(font, utf8, ratio);
        FontTexts& texts = Of(font, ratio);
        key_.assign(utf8);
        const auto found = texts.masks.find(key_);
        if (found != texts.masks.end()) return found->second;
        if (texts.masks.size() >= kMaxTexts) texts.masks.clear();
        return texts.masks.emplace(key_, Render(font, utf8, ratio)).first->second;
    }
    void Clear() {
        fonts_.clear();
        long_ = {};
    }

  private:
    static TEXTMETRIC MeasureFont(const LOGFONT& font) {
        if (IBackend* backend = InstalledBackend()) return backend->Text().Metrics(font);
        TEXTMETRIC metrics;
        metrics.tmHeight = kPlainCell.cy;
        metrics.tmAscent = 12;
        metrics.tmDescent = 4;
        metrics.tmAveCharWidth = metrics.tmMaxCharWidth = kPlainCell.cx;
        return metrics;
    }

    std::vector<FontTexts> fonts_;
    std::size_t last_ = 0;
    std::string key_;
    TextMask long_;
};

TextCache& Cache() {
    static TextCache cache;
    return cache;
}

}  // namespace

const TextMask& RenderedText(const LOGFONT& font, std::string_view utf8, double ratio) {
    return Cache().Mask(font, utf8, ratio);
}

SIZE TextExtentOf(const LOGFONT& font, std::string_view utf8, double ratio) {
    if (utf8.empty()) return {0, MetricsOf(font).tmHeight};
    return RenderedText(font, utf8, ratio).extent;
}

TEXTMETRIC MetricsOf(const LOGFONT& font) {
    return Cache().Of(font, 1).metrics;
}

void ClearTextCache() {
    Cache().Clear();
}

}  // namespace kvx
