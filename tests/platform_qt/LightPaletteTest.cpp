#include "platform/qt/LightPalette.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QPushButton>
#include <QTimer>

namespace kvx::qt {
namespace {

int Lightness(const QWidget& widget) {
    return widget.palette().color(QPalette::Window).lightness();
}

// Windows hear of another palette only while the application runs.
void SetPalette(const QPalette& palette) {
    QTimer::singleShot(0, [&] {
        QApplication::setPalette(palette);
        QTimer::singleShot(0, [] { QApplication::exit(); });
    });
    QApplication::exec();
}

TEST(LightPalette, HoldsOnADarkDesktopForTheWindowAndWhatLiesInIt) {
    const QPalette before = QApplication::palette();
    QWidget window;
    QPushButton inside(&window);
    QWidget other;
    new LightPalette(window);
    EXPECT_EQ(inside.palette(), other.palette()) << "a light desktop's is taken as it is";
    QPalette dark;
    dark.setColor(QPalette::Window, Qt::black);
    SetPalette(dark);
    EXPECT_LT(Lightness(other), 128);
    EXPECT_GT(Lightness(window), 128);
    EXPECT_GT(Lightness(inside), 128);
    SetPalette(before);
    EXPECT_EQ(inside.palette().color(QPalette::Window), other.palette().color(QPalette::Window));
}

}  // namespace
}  // namespace kvx::qt
