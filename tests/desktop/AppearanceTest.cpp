#include "workbench/desktop/window/Appearance.h"

#include <gtest/gtest.h>

#include <QApplication>

namespace kvx::desktop {
namespace {

int Lightness(QPalette::ColorRole role) {
    return QApplication::palette().color(role).lightness();
}

TEST(Appearance, SwitchesBetweenReadablePalettes) {
    AppearanceSwitch appearance(Appearance::Light);
    EXPECT_GT(Lightness(QPalette::Window), 128);
    appearance.Set(Appearance::Dark);
    EXPECT_LT(Lightness(QPalette::Window), 80);
    for (const auto& [text, ground] : {std::pair(QPalette::WindowText, QPalette::Window),
                                       std::pair(QPalette::Text, QPalette::Base),
                                       std::pair(QPalette::ButtonText, QPalette::Button),
                                       std::pair(QPalette::HighlightedText, QPalette::Highlight)}) {
        EXPECT_GT(Lightness(text) - Lightness(ground), 100) << text;
    }
    appearance.Set(Appearance::Light);
    EXPECT_GT(Lightness(QPalette::Window), 128);
}

TEST(Appearance, NamesComeBack) {
    for (const Appearance each : {Appearance::System, Appearance::Light, Appearance::Dark}) {
        EXPECT_EQ(AppearanceOf(NameOf(each)), each);
    }
    EXPECT_EQ(AppearanceOf("purple"), Appearance::System);
}

}  // namespace
}  // namespace kvx::desktop
