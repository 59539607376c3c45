#pragma once
// The back-end that is there, but for what differs from one desktop to the next: the widths and
// glyphs of texts, and the colours.

#include "platform/Backend.h"

namespace kvx::test {

class MaskedBackend final : public IBackend, public ITextEngine {
  public:
    MaskedBackend() : under_(InstalledBackend()) { SetBackend(this); }
    ~MaskedBackend() override { SetBackend(under_); }
    MaskedBackend(const MaskedBackend&) = delete;
    MaskedBackend& operator=(const MaskedBackend&) = delete;

    IWindows& Windows() override { return under_->Windows(); }
    IControls& Controls() override { return under_->Controls(); }
    ITextEngine& Text() override { return *this; }
    IDialogs& Dialogs() override { return under_->Dialogs(); }
    IDesktop& Desktop() override { return desktop_; }

    // Heights and widths are the font's own: rows and columns are laid out by them.
    TEXTMETRIC Metrics(const LOGFONT& font) override { return under_->Text().Metrics(font); }
    TextMask Render(const LOGFONT& font, std::string_view utf8, double) override {
        const TEXTMETRIC metrics = Metrics(font);
        TextMask mask;
        mask.extent = {static_cast<int>(utf8.size()) * metrics.tmAveCharWidth, metrics.tmHeight};
        return mask;
    }

  private:
    // The classic light colours.
    class PlainDesktop final : public IDesktop {
      public:
        explicit PlainDesktop(IDesktop& under) : under_(under) {}
        std::optional<COLORREF> SysColor(int) const override { return {}; }
        SIZE ScreenSize() const override { return under_.ScreenSize(); }
        RECT WorkArea(POINT screen) const override { return under_.WorkArea(screen); }
        POINT CursorPosition() const override { return under_.CursorPosition(); }
        void ShowCursor(HCURSOR cursor) override { under_.ShowCursor(cursor); }
        bool IsKeyDown(UINT key) const override { return under_.IsKeyDown(key); }
        void Beep(UINT kind) override { under_.Beep(kind); }

      private:
        IDesktop& under_;
    };

    IBackend* under_;
    PlainDesktop desktop_{under_->Desktop()};
};

}  // namespace kvx::test
