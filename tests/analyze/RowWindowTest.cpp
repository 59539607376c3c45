#include "analyze/RowWindow.h"

#include <gtest/gtest.h>

namespace kvx {
namespace {

TEST(RowWindow, ScrollsWithinTheRows) {
    RowWindow window;
    EXPECT_FALSE(window.Scroll(1, 100, 10));  // at the top already
    EXPECT_TRUE(window.Scroll(-30, 100, 10));
    EXPECT_EQ(window.First(), 30);
    EXPECT_TRUE(window.Scroll(11, 100, 10));
    EXPECT_EQ(window.First(), 19);
    EXPECT_TRUE(window.Scroll(-1000, 100, 10));
    EXPECT_EQ(window.First(), 90);
    EXPECT_FALSE(window.Scroll(-1, 100, 10));
    EXPECT_TRUE(window.Scroll(1000, 100, 10));
    EXPECT_EQ(window.First(), 0);
    // Rows that all fit do not scroll; nor do those of a window without room for one.
    EXPECT_FALSE(window.Scroll(-5, 10, 10));
    EXPECT_FALSE(window.Scroll(-5, 3, 10));
    window.Scroll(-1000, 5, -1);
    EXPECT_EQ(window.First(), 5);
}

TEST(RowWindow, KeepsTheLastPageFull) {
    RowWindow window;
    window.Scroll(-90, 100, 10);
    window.FillLastPage(100, 10);
    EXPECT_EQ(window.First(), 90);
    window.FillLastPage(100, 25);
    EXPECT_EQ(window.First(), 75);
    window.FillLastPage(20, 25);
    EXPECT_EQ(window.First(), 0);
}

TEST(RowWindow, ClampsToTheRows) {
    RowWindow window;
    window.Scroll(-90, 100, 10);
    window.Clamp(100);
    EXPECT_EQ(window.First(), 90);
    window.Clamp(40);
    EXPECT_EQ(window.First(), 39);
    window.Clamp(0);
    EXPECT_EQ(window.First(), 0);
}

TEST(RowWindow, ShowsARowInTheMiddleUnlessItIsShown) {
    RowWindow window;
    window.Show(9, 100, 10);  // the last that is shown as a whole
    EXPECT_EQ(window.First(), 0);
    window.Show(10, 100, 10);
    EXPECT_EQ(window.First(), 5);
    window.Show(99, 100, 10);
    EXPECT_EQ(window.First(), 90);
    window.Show(2, 100, 10);
    EXPECT_EQ(window.First(), 0);
}

TEST(RowWindow, StaysAboveTheLastRow) {
    RowWindow window;
    window.Scroll(-50, 100, 10);
    window.StayAbove(100, 10);
    EXPECT_EQ(window.First(), 50);
    window.StayAbove(55, 10);
    EXPECT_EQ(window.First(), 45);
    window.StayAbove(8, 10);
    EXPECT_EQ(window.First(), 0);
}

}  // namespace
}  // namespace kvx
