// What the docking manager makes of resources, and of a host that gives no identifiers.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "component/TestDocking.h"
#include "support/ScriptedHost.h"
#include "toolbar/HostMenu.h"
#include "toolbar/MenuDockingManager.h"

namespace kvx::test {
namespace {

using ::testing::ElementsAre;

TEST(HostToolbar, EachButtonHasItsImageOfTheStrip) {
    constexpr UINT kButtons[] = {10, 0, 11, 12};
    // Two images of 2 x 3 pixels beside each other.
    constexpr std::uint32_t kStrip[] = {1, 2, 7, 8, 3, 4, 9, 10, 5, 6, 11, 12};
    const HostToolbar toolbar({1, kButtons, 4, 2, 3, kStrip, 2});
    ASSERT_EQ(toolbar.Count(), 4u);
    const auto image = [&](int button) {
        const std::uint32_t* const pixels = toolbar.Buttons()[button].pixels;
        return pixels ? std::vector<std::uint32_t>(pixels, pixels + 6)
                      : std::vector<std::uint32_t>();
    };
    EXPECT_THAT(image(0), ElementsAre(1, 2, 3, 4, 5, 6));
    EXPECT_THAT(image(1), ElementsAre()) << "a separator";
    EXPECT_THAT(image(2), ElementsAre(7, 8, 9, 10, 11, 12));
    EXPECT_THAT(image(3), ElementsAre()) << "the strip has no more";
    EXPECT_EQ(toolbar.Buttons()[1].command, 0u);
    EXPECT_EQ(toolbar.Buttons()[3].command, 12u);
}

TEST(DockingManager, MakesIdentifiersWhereTheHostGivesNone) {
    TestDocking docking;
    ScriptedHost host;
    host.services[host::kDockingHost] = static_cast<IQDockingHost*>(&docking);
    CDockingManager manager;
    EXPECT_GE(manager.AllocateIdentifier(), 0x80000000u) << "no host yet";
    manager.SetHost(&host);
    const std::uint32_t given = manager.AllocateIdentifier();
    EXPECT_EQ(given, 1u);
    docking.failing = {"AllocateIdentifier"};
    const std::uint32_t own = manager.AllocateIdentifier();
    EXPECT_EQ(own, 0x80000001u);
    EXPECT_EQ(manager.AllocateIdentifier(), 0x80000002u);
    for (const std::uint32_t identifier : {0x80000000u, own, given}) {
        manager.ReleaseIdentifier(identifier);
    }
    EXPECT_THAT(docking.released, ElementsAre(given)) << "the host's go back to it";
    docking.failing = {"IsToolbarShown"};
    EXPECT_FALSE(manager.IsToolbarShown(nullptr));
}

}  // namespace
}  // namespace kvx::test
