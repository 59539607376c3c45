// Menus, toolbars, keys and icons made of what a component describes.

#include <gtest/gtest.h>

#include <QApplication>
#include <QMenuBar>
#include <QPushButton>

#include "workbench/desktop/docking/AcceleratorKeys.h"
#include "workbench/desktop/docking/CommandToolbar.h"
#include "workbench/desktop/docking/MenuMerge.h"
#include "workbench/desktop/docking/ToolbarDialog.h"
#include "workbench/desktop/docking/ToolbarIcon.h"

namespace kvx::desktop {
namespace {

class Target final : public IQCommandTarget {
  public:
    HRESULT KVX_CALL OnCommand(std::uint32_t) override { return S_OK; }
    HRESULT KVX_CALL OnUpdateCommand(std::uint32_t command, CommandState* state) override {
        const auto found = states.find(command);
        if (found == states.end()) return E_NOTIMPL;
        *state = found->second;
        return S_OK;
    }
    HRESULT KVX_CALL OnCloseRequest() override { return S_OK; }
    HRESULT KVX_CALL GetHelpKey(BSTR*) override { return E_NOTIMPL; }

    std::map<std::uint32_t, CommandState> states;
};

// "File[Open] View[RTOS[OSTrace,-]]" of a menu or menu bar.
QString Outline(const QWidget& container) {
    QStringList parts;
    for (const QAction* action : container.actions()) {
        QString text = action->isSeparator() ? "-" : action->text().remove('&');
        if (action->menu()) text += "[" + Outline(*action->menu()) + "]";
        parts.append(text);
    }
    return parts.join(",");
}

class Commands : public testing::Test {
  protected:
    Target target_;
    std::vector<std::uint32_t> ran_;
    CommandSet commands_{
        [this](IQCommandTarget*, std::uint32_t command) { ran_.push_back(command); }};
    Settings settings_;
};

TEST_F(Commands, MenusMergeByTextAndLeaveNothingBehind) {
    QMenuBar bar;
    bar.addMenu("&File")->addAction("Open");
    bar.addMenu("View");
    QAction* help = bar.addMenu("Help")->menuAction();
    const MenuNode open[] = {{u"&OSTrace", u"Open OS Trace window\nOS Trace", 1, nullptr, 0},
                             {nullptr, nullptr, 0, nullptr, 0}};
    const MenuNode rtos = {u"&RTOS", nullptr, 0, open, 2};
    const MenuNode top[] = {{u"&View", nullptr, 0, &rtos, 1}, {u"E&xtra", nullptr, 0, open, 1}};
    {
        CommandSet commands([](IQCommandTarget*, std::uint32_t) {});
        MergeMenu(bar, top, 2, &target_, commands, help);
        const MenuNode analyze = {u"OS &Analyze", nullptr, 2, nullptr, 0};
        const MenuNode rtosAgain = {u"RTOS", nullptr, 0, &analyze, 1};
        const MenuNode viewAgain = {u"View", nullptr, 0, &rtosAgain, 1};
        MergeMenu(bar, &viewAgain, 1, &target_, commands, help);
        EXPECT_EQ(Outline(bar),
                  "File[Open],View[RTOS[OSTrace,-,OS Analyze]],Extra[OSTrace],Help[]");
        QAction* action = commands.Action(&target_, 1);
        EXPECT_EQ(action->statusTip(), "Open OS Trace window");
        EXPECT_EQ(action->toolTip(), "OS Trace");
    }
    PruneMenus(bar);
    EXPECT_EQ(Outline(bar), "File[Open],View[],Help[]") << "the host's own empty menus stay";
}

TEST_F(Commands, UpdateShowsWhatTheTargetAnswers) {
    QAction* checked = commands_.Action(&target_, 1);
    QAction* disabled = commands_.Action(&target_, 2);
    QAction* unhandled = commands_.Action(&target_, 3);
    target_.states = {{1, {1, 1}}, {2, {0, 0}}};
    commands_.Update();
    EXPECT_TRUE(checked->isEnabled() && checked->isChecked());
    EXPECT_FALSE(disabled->isEnabled());
    EXPECT_FALSE(disabled->isCheckable()) << "never checked: no check box in the menu";
    EXPECT_FALSE(unhandled->isEnabled());

    checked->trigger();
    EXPECT_EQ(ran_, std::vector<std::uint32_t>{1});
    target_.states[1] = {1, 0};
    commands_.Update();
    EXPECT_FALSE(checked->isChecked());
    EXPECT_EQ(commands_.Action(&target_, 1), checked) << "one action a command";
}

class Toolbar : public Commands {
  protected:
    static constexpr std::uint32_t kCount = 4;
    void Fill(CommandToolbar& toolbar) {
        const ToolbarButton buttons[kCount] = {{10, u"Ten\nTen", pixels_.data()},
                                               {0, nullptr, nullptr},
                                               {20, u"Twenty\nTwenty", pixels_.data()},
                                               {30, u"Thirty\nThirty", nullptr}};
        toolbar.AddButtons(buttons, kCount, &target_, commands_);
    }
    std::vector<std::uint32_t> pixels_ = std::vector<std::uint32_t>(256, 0xFF000000);
};

TEST_F(Toolbar, ArrangementComesBackAndForgetsWhatIsGone) {
    using Arrangement = CommandToolbar::Arrangement;
    {
        CommandToolbar toolbar("bar", "Bar", settings_);
        Fill(toolbar);
        EXPECT_EQ(toolbar.Current(), (Arrangement{10, 0, 20, 30}));
        toolbar.Arrange({30, 99, 0, 10});
        EXPECT_EQ(toolbar.Current(), (Arrangement{30, 0, 10})) << "99 is no command of it";
        toolbar.SetShown(false);
    }
    CommandToolbar again("bar", "Bar", settings_);
    Fill(again);
    EXPECT_EQ(again.Current(), (Arrangement{30, 0, 10}));
    EXPECT_TRUE(again.isHidden());
    CommandToolbar other("other", "Other", settings_);
    EXPECT_FALSE(other.isVisibleTo(nullptr) && other.isHidden()) << "another one has its own";
    again.Arrange(again.Offered());
    CommandToolbar third("bar", "Bar", settings_);
    Fill(third);
    EXPECT_EQ(third.Current(), (Arrangement{10, 0, 20, 30}));
}

QListWidget* List(ToolbarDialog& dialog, int which) {
    return dialog.findChildren<QListWidget*>().at(which);
}

void Press(QDialog& dialog, const QString& text) {
    for (auto* button : dialog.findChildren<QPushButton*>()) {
        if (button->text().remove('&') == text) return button->click();
    }
    FAIL() << "no button " << text.toStdString();
}

TEST_F(Toolbar, DialogAddsRemovesAndMovesButtons) {
    using Arrangement = CommandToolbar::Arrangement;
    CommandToolbar toolbar("bar", "Bar", settings_);
    Fill(toolbar);
    ToolbarDialog dialog(toolbar, nullptr);
    QListWidget* available = List(dialog, 0);
    QListWidget* shown = List(dialog, 1);
    if (available->count() > shown->count()) std::swap(available, shown);

    shown->setCurrentRow(0);
    Press(dialog, "Remove");  // 10
    EXPECT_EQ(available->count(), 2);
    shown->setCurrentRow(2);
    Press(dialog, "Move Up");  // 30 before 20
    available->setCurrentRow(0);
    Press(dialog, "Add");  // a separator after 30
    EXPECT_EQ(available->count(), 2) << "separators do not run out";
    EXPECT_EQ(toolbar.Current(), (Arrangement{10, 0, 20, 30})) << "nothing before OK";
    dialog.accept();
    EXPECT_EQ(toolbar.Current(), (Arrangement{0, 30, 0, 20}));
}

TEST(AcceleratorKeys, NamesKeysAsTheirLabels) {
    struct Case {
        Accelerator accelerator;
        const char* keys;
    };
    const Case cases[] = {
        {{'F', 1, 0, 0, 1}, "Ctrl+F"},
        {{0x72, 0, 0, 0, 1}, "F3"},
        {{0x72, 0, 1, 0, 1}, "Shift+F3"},
        {{0x6B, 0, 0, 0, 1}, "+"},
        {{0xBD, 0, 0, 0, 1}, "-"},
        {{'?', 0, 0, 0, 1}, "?"},
        {{0x2D, 0, 0, 1, 1}, "Alt+Ins"},
        {{0x25, 1, 1, 0, 1}, "Ctrl+Shift+Left"},
        {{0x87, 0, 0, 0, 1}, "F24"},
        {{0x88, 0, 0, 0, 1}, ""},
        {{0, 1, 0, 0, 1}, ""},
        {{'9', 0, 0, 0, 1}, "9"},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(KeySequenceOf(c.accelerator).toString(), c.keys) << c.accelerator.key;
    }
}

// Sets the program's background for one test.
class Background {
  public:
    explicit Background(const QColor& colour) : before_(QApplication::palette()) {
        QPalette palette = before_;
        palette.setColor(QPalette::Window, colour);
        QApplication::setPalette(palette);
    }
    ~Background() { QApplication::setPalette(before_); }

  private:
    QPalette before_;
};

TEST(ToolbarIcon, StaysReadableOnDarkAndKeepsItsColoursOnLight) {
    std::vector<std::uint32_t> pixels(256, 0);
    pixels[0] = 0xFF000000;
    pixels[1] = 0xFFE0A000;
    const QIcon icon = MakeToolbarIcon(pixels.data());
    {
        const Background light(Qt::white);
        const QImage image = icon.pixmap(16).toImage();
        EXPECT_EQ(image.pixelColor(0, 0), QColor(Qt::black));
        EXPECT_EQ(image.pixelColor(15, 15).alpha(), 0);
    }
    const Background dark(QColor(43, 45, 48));
    const QImage image = icon.pixmap(16).toImage();
    EXPECT_GT(image.pixelColor(0, 0).lightness(), 200);
    EXPECT_EQ(image.pixelColor(1, 0), QColor(0xE0, 0xA0, 0x00)) << "was readable already";
}

TEST(ToolbarIcon, EnlargesByWholePixels) {
    std::vector<std::uint32_t> pixels(256, 0xFFFF0000);
    for (std::size_t i = 0; i < 256; i += 2) pixels[i] = 0xFF00FF00;
    const QImage small = MakeToolbarIcon(pixels.data()).pixmap(16).toImage();
    const QImage large = MakeToolbarIcon(pixels.data()).pixmap(32).toImage();
    ASSERT_EQ(large.size(), QSize(32, 32));
    for (int x = 0; x < 32; ++x) ASSERT_EQ(large.pixel(x, 5), small.pixel(x / 2, 2)) << x;
    // Two pixels share three, and none is a mixture.
    const QImage odd = MakeToolbarIcon(pixels.data()).pixmap(24).toImage();
    ASSERT_EQ(odd.size(), QSize(24, 24));
    for (int x = 0; x < 24; ++x) {
        const QRgb first = small.pixel(0, 0);
        EXPECT_TRUE(odd.pixel(x, 5) == first || odd.pixel(x, 5) == small.pixel(1, 0)) << x;
    }
    for (int x = 3; x < 24; ++x) EXPECT_EQ(odd.pixel(x, 5), odd.pixel(x - 3, 5)) << x;
}

}  // namespace
}  // namespace kvx::desktop
