// Windows on a screen whose ratio is set from outside (QT_SCALE_FACTOR): a pixel of the surface is
// a pixel of the screen, wherever the window begins.

#include <QImage>
#include <QPainter>
#include <cmath>
#include <cstdlib>

#include "platform/base/Rects.h"
#include "platform/qt/TextEngine.h"
#include "platform/windows/View.h"
#include "platform_qt/QtFixture.h"
#include "support/WindowPicture.h"

namespace {

constexpr QRgb kRed = qRgb(255, 0, 0);
constexpr QRgb kBlue = qRgb(0, 0, 255);
constexpr QRgb kWhite = qRgb(255, 255, 255);

class Painter : public CView {
  public:
    std::function<void(CDC&)> draw;
    void OnDraw(CDC* dc) override {
        dc->FillSolidRect(GetClientRect(), RGB(255, 255, 255));
        if (draw) draw(*dc);
    }
};

RECT BoundsOf(const QImage& picture, QRgb colour) {
    RECT bounds;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            if (picture.pixel(x, y) == colour) bounds = kvx::Union(bounds, {x, y, x + 1, y + 1});
    return bounds;
}

class ScaledScreenTest : public kvx::test::QtFixture {
  protected:
    void SetUp() override {
        MakeTop(top, 300, 200);
        ratio = Widget(top)->devicePixelRatioF();
        const char* const wanted = std::getenv("QT_SCALE_FACTOR");
        ASSERT_NE(wanted, nullptr) << "the test needs a scaled screen";
        ASSERT_EQ(ratio, std::atof(wanted));
    }
    Painter* MakeView(const RECT& place, DWORD style = 0) {
        auto* const view = new Painter;
        EXPECT_TRUE(view->Create(WS_CHILD | WS_VISIBLE | style, place, &top, ++views));
        return view;
    }
    QImage Shown() { return Widget(top)->grab().toImage(); }
    int Edge(int logical) const { return static_cast<int>(std::floor(logical * ratio + 0.5)); }
    RECT Device(const RECT& r) const {
        return {Edge(r.left), Edge(r.top), Edge(r.right), Edge(r.bottom)};
    }
    CWnd top;
    double ratio = 1;
    UINT views = 0;
};

TEST_F(ScaledScreenTest, FillsKeepTheirEdgesWhereverTheWindowBegins) {
    for (int at = 20; at < 25; ++at) {
        Painter* const view = MakeView({at, at + 1, at + 90, at + 80}, WS_BORDER);
        view->draw = [](CDC& dc) { dc.FillSolidRect(10, 7, 21, 13, RGB(255, 0, 0)); };
        Settle();
        const QImage picture = Shown();
        const RECT bar = BoundsOf(picture, kRed);
        EXPECT_EQ(bar, Device({at + 11, at + 9, at + 32, at + 22})) << at;
        // One of the two colours everywhere around the edges: nothing is mixed.
        for (int x = bar.left - 4; x < bar.right + 4; ++x) {
            const bool inside = x >= bar.left && x < bar.right;
            ASSERT_EQ(picture.pixel(x, bar.top), inside ? kRed : kWhite) << at << ' ' << x;
            ASSERT_EQ(picture.pixel(x, bar.top - 1), kWhite) << at << ' ' << x;
            ASSERT_EQ(picture.pixel(x, bar.bottom), kWhite) << at << ' ' << x;
        }
        view->DestroyWindow();
    }
}

TEST_F(ScaledScreenTest, SiblingsMeetWithoutASeam) {
    for (int middle = 40; middle < 44; ++middle) {
        Painter* const left = MakeView({11, 9, middle, 60});
        Painter* const right = MakeView({middle, 9, 80, 60});
        left->draw = [](CDC& dc) { dc.FillSolidRect(0, 0, 100, 100, RGB(255, 0, 0)); };
        right->draw = [](CDC& dc) { dc.FillSolidRect(0, 0, 100, 100, RGB(0, 0, 255)); };
        Settle();
        const QImage picture = Shown();
        EXPECT_EQ(BoundsOf(picture, kRed), Device({11, 9, middle, 60}));
        EXPECT_EQ(BoundsOf(picture, kBlue), Device({middle, 9, 80, 60}));
        left->DestroyWindow();
        right->DestroyWindow();
    }
}

TEST_F(ScaledScreenTest, ShownPartsAreComplete) {
    Painter* const view = MakeView({7, 5, 207, 105});
    Settle();
    // What the window itself has on the screen, not a picture made anew.
    const auto screen = [this] {
        Settle();
        return Native(top)->screen()->grabWindow(Native(top)->winId()).toImage();
    };
    const QImage before = screen();
    for (int x = 0; x < 12; ++x) {
        for (int pass = 0; pass < 2; ++pass) {
            { CClientDC(view).PatBlt(20 + x, 11, 2 + x, 33, DSTINVERT); }
            if (pass == 0) {
                EXPECT_EQ(BoundsOf(screen(), qRgb(0, 0, 0)), Device({27 + x, 16, 29 + 2 * x, 49}));
            }
        }
        ASSERT_EQ(screen(), before) << "inverted twice, " << x;
    }
}

TEST_F(ScaledScreenTest, PicturesHaveThePixelsOfTheScreen) {
    Painter* const view = MakeView({7, 5, 107, 85});
    view->draw = [](CDC& dc) { dc.FillSolidRect(10, 10, 20, 20, RGB(255, 0, 0)); };
    Settle();
    EXPECT_EQ(BoundsOf(kvx::test::PictureOf(top.m_hWnd), kRed), Device({17, 15, 37, 35}));
}

// The engine itself, at the ratio of the screen.
class ScaledTextTest : public ScaledScreenTest {
  protected:
    static LOGFONT Font(const char* face, int height) {
        LOGFONT font;
        font.lfFaceName = face;
        font.lfHeight = height;
        return font;
    }
    static int Coverage(const kvx::TextMask& mask, int x, int y) {
        return mask.coverage[static_cast<std::size_t>(y * mask.size.cx + x)];
    }
    // Bounds of what is darker than a trace, from the corner of the cell.
    static RECT InkOf(const kvx::TextMask& mask) {
        RECT ink;
        for (int y = 0; y < mask.size.cy; ++y)
            for (int x = 0; x < mask.size.cx; ++x)
                if (Coverage(mask, x, y) > 64) ink = kvx::Union(ink, {x, y, x + 1, y + 1});
        ink.OffsetRect(mask.offset);
        return ink;
    }
    kvx::qt::QtTextEngine engine;
};

TEST_F(ScaledTextTest, ExtentsAreThoseOfTheLogicalFont) {
    for (const char* face : {"Courier New", "MS Sans Serif"}) {
        for (int height = -9; height > -28; --height) {
            const LOGFONT font = Font(face, height);
            for (const char* text : {"Ready", "i", "WAI (VSDTQ,VRDTQ)", "\u00C5ngstr\u00F6m"}) {
                const kvx::TextMask plain = engine.Render(font, text, 1);
                const kvx::TextMask scaled = engine.Render(font, text, ratio);
                ASSERT_EQ(scaled.extent, plain.extent) << face << height;
                EXPECT_EQ(scaled.extent.cy, engine.Metrics(font).tmHeight);
                EXPECT_LE(InkOf(scaled).right, std::ceil(scaled.extent.cx * ratio) + 1)
                    << face << height << text;
                EXPECT_GE(InkOf(scaled).left, -1) << face << height << text;
            }
        }
    }
}

TEST_F(ScaledTextTest, NoGlyphIsCutOff) {
    for (const char* face : {"Courier New", "MS Sans Serif"}) {
        for (int height = -9; height > -28; --height) {
            const LOGFONT font = Font(face, height);
            // Far below and far above the letters.
            const kvx::TextMask logical = engine.Render(font, "|", 1);
            const RECT cell{0, 0, logical.extent.cx, logical.extent.cy};
            const int plain = kvx::Intersection(InkOf(logical), cell).Height();
            const RECT bar = InkOf(engine.Render(font, "|", ratio));
            EXPECT_NEAR(bar.Height(), plain * ratio, ratio + 1) << face << height;
            const kvx::TextMask low = engine.Render(font, "gjpqy", ratio);
            const kvx::TextMask flat = engine.Render(font, "nnnnn", ratio);
            EXPECT_GE(InkOf(low).bottom - InkOf(flat).bottom, -height * ratio * 0.12)
                << face << height;
            // Accents may reach out of the cell, but are whole: the mask ends where there is none.
            const char* const accented = "\u00C5\u00C9\u00D1\u015E";
            const kvx::TextMask marks = engine.Render(font, accented, ratio);
            const kvx::TextMask letters = engine.Render(font, "AENS", ratio);
            const RECT ink = InkOf(marks);
            EXPECT_GE(InkOf(letters).top - ink.top, std::floor(ratio)) << face << height;
            EXPECT_GT(ink.top, marks.offset.y) << face << height;
            EXPECT_LT(ink.bottom, marks.offset.y + marks.size.cy) << face << height;
            if (!InkOf(engine.Render(font, "_", 1)).IsRectEmpty()) {
                EXPECT_FALSE(InkOf(engine.Render(font, "_", ratio)).IsRectEmpty())
                    << face << height;
            }
        }
    }
}

TEST_F(ScaledTextTest, InkStaysInsideTheCell) {
    constexpr int kMargin = 20;
    for (const char* face : {"Courier New", "MS Sans Serif"}) {
        for (int height = -9; height > -28; --height) {
            const TEXTMETRIC metrics = engine.Metrics(Font(face, height));
            const kvx::qt::ScaledFont font(kvx::qt::RealFont(Font(face, height)), metrics.tmAscent,
                                           metrics.tmDescent, ratio);
            const auto cell = static_cast<int>(metrics.tmHeight * ratio);
            QImage image(600, cell + 2 * kMargin, QImage::Format_ARGB32_Premultiplied);
            image.fill(Qt::transparent);
            QPainter painter(&image);
            painter.setPen(Qt::white);
            painter.translate(10, kMargin);
            font.Draw(painter, "gjpqy_()[]{}Qbdfhkl|", 250);
            painter.end();
            for (int y = 0; y < image.height(); ++y) {
                if (y >= kMargin && y < kMargin + cell) continue;
                int ink = 0;
                for (int x = 0; x < image.width(); ++x)
                    ink = std::max(ink, qAlpha(image.pixel(x, y)));
                EXPECT_LT(ink, 64) << face << height << " row " << y - kMargin << " of " << cell;
            }
        }
    }
}

TEST_F(ScaledTextTest, FixedFontsKeepTheirColumns) {
    for (int height = -9; height > -22; --height) {
        const LOGFONT font = Font("Courier New", height);
        const std::string text(40, 'H');
        const kvx::TextMask mask = engine.Render(font, text, ratio);
        const double pitch = mask.extent.cx * ratio / 40;
        const RECT first = InkOf(engine.Render(font, "H", ratio));
        for (int i = 1; i < 40; ++i) {
            const auto place = static_cast<int>(std::lround(i * pitch)) + first.left;
            // The left stem of the letter is there, and between the letters is nothing.
            int stem = 0;
            int gap = 255;
            for (int x = -1; x <= 1; ++x) {
                stem = std::max(stem, Coverage(mask, place + x - mask.offset.x, first.bottom - 2));
                gap =
                    std::min(gap, Coverage(mask, place - 1 + x - mask.offset.x, first.bottom - 2));
            }
            EXPECT_GT(stem, 90) << height << ' ' << i;
            EXPECT_LT(gap, 90) << height << ' ' << i;
        }
    }
}

// How much of the ink is neither there nor not, 0 to 1.
double Softness(const std::vector<std::uint8_t>& coverage) {
    double ink = 0;
    double soft = 0;
    for (const int c : coverage) {
        ink += c;
        soft += std::min(c, 255 - c);
    }
    return soft / ink;
}

TEST_F(ScaledTextTest, TextIsSharperThanAStretchedPicture) {
    for (const int height : {-11, -13, -15, -20}) {
        const LOGFONT font = Font("Courier New", height);
        const kvx::TextMask plain = engine.Render(font, "EFTLH", 1);
        const QImage small(plain.coverage.data(), plain.size.cx, plain.size.cy, plain.size.cx,
                           QImage::Format_Grayscale8);
        const QImage large =
            small.scaled(small.size() * ratio, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        std::vector<std::uint8_t> stretched;
        for (int y = 0; y < large.height(); ++y)
            stretched.insert(stretched.end(), large.constScanLine(y),
                             large.constScanLine(y) + large.width());
        EXPECT_LT(Softness(engine.Render(font, "EFTLH", ratio).coverage), 0.5 * Softness(stretched))
            << height;
    }
}

}  // namespace
