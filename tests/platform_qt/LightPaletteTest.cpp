#include "platform/qt/LightPalette.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QPushButton>

namespace kvx::qt {
namespace {

int Lightness(const QWidget& widget) {
    return widget.palette().color(QPalette::Window).lightness();
}

TEST(LightPalette, HoldsOnADarkDesktopForTheWindowAndWhatLiesInIt) {
    const QPalette before = QApplication::palette();
    QWidget window;
    QPushButton inside(&window);
    QWidget other;
    new LightPalette(window);
    EXPECT_EQ(inside.palette(), other.palette()) << "a light desktop's is taken as it is";
    QApplication::setPalette(QPalette(Qt::black, Qt::black));
    EXPECT_LT(Lightness(other), 128);
    EXPECT_GT(Lightness(window), 128);
    EXPECT_GT(Lightness(inside), 128);
    QApplication::setPalette(before);
    EXPECT_EQ(inside.palette().color(QPalette::Window), other.palette().color(QPalette::Window));
}

}  // namespace
}  // namespace kvx::qt
