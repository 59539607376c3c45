// Texts between UTF-8, which the component keeps, and the wide texts of the interfaces. What is
// right stands as the compiler encodes it.

#include <gtest/gtest.h>

#include "platform/base/Automation.h"
#include "platform/base/Text.h"

namespace {

using kvx::ToBstr;
using kvx::ToUtf8;

std::u16string Wide(std::string_view utf8) {
    BSTR text = ToBstr(utf8);
    std::u16string wide(text, SysStringLen(text));
    EXPECT_EQ(text[wide.size()], u'\0');
    SysFreeString(text);
    return wide;
}

TEST(TextEncoding, EveryLengthComesBack) {
    const std::pair<const char8_t*, const char16_t*> texts[] = {
        {u8"", u""},
        {u8"a\u007F", u"a\u007F"},
        {u8"\u0080\u07FF", u"\u0080\u07FF"},
        {u8"\u0800\u5A5A\uA5A5\uD7FF\uE000\uFFFD", u"\u0800\u5A5A\uA5A5\uD7FF\uE000\uFFFD"},
        {u8"\U00010000\U00012345\U000A5A5A\U0010FFFF", u"\U00010000\U00012345\U000A5A5A\U0010FFFF"},
        {u8"Größe 周期 🕑.", u"Größe 周期 🕑."},
    };
    for (const auto& [narrow, wide] : texts) {
        const std::string utf8(reinterpret_cast<const char*>(narrow));
        EXPECT_EQ(Wide(utf8), wide) << utf8;
        EXPECT_EQ(ToUtf8(wide), utf8);
        EXPECT_EQ(kvx::TakeUtf8(ToBstr(utf8)), utf8);
    }
    EXPECT_EQ(ToUtf8(nullptr), "");
    EXPECT_EQ(SysStringLen(nullptr), 0u);
}

// A byte that cannot stand where it stands costs itself; what follows is read.
TEST(TextEncoding, DamagedTextsShowWhereTheyAre) {
    const auto damaged = [](std::string_view text) {
        std::string shown;
        for (const char16_t c : Wide(text)) shown += c == 0xFFFD ? '?' : static_cast<char>(c);
        return shown;
    };
    EXPECT_EQ(damaged("\xFFz"), "?z");
    EXPECT_EQ(damaged("\x80z"), "?z") << "nothing begins with it";
    EXPECT_EQ(damaged("\xC3z"), "?z") << "cut by another character";
    EXPECT_EQ(damaged("z\xE4\xB8"), "z??") << "cut by the end";
    EXPECT_EQ(damaged("\xE4\xB8z"), "??z");
    EXPECT_EQ(damaged("\xC1\xBFz"), "??z") << "longer than it must be";
    EXPECT_EQ(damaged("\xE0\x9F\xBFz"), "???z");
    EXPECT_EQ(damaged("\xF0\x8F\xBF\xBFz"), "????z");
    EXPECT_EQ(damaged("\xED\xA0\x80z"), "???z") << "half of a pair";
    EXPECT_EQ(damaged("\xED\xBF\xBFz"), "???z");
    EXPECT_EQ(damaged("\xF4\x90\x80\x80z"), "????z") << "behind the last one";
    const char16_t halves[] = {0xD800, 'a', 0xDC00, 'b', 0xDBFF, 0};
    EXPECT_EQ(ToUtf8(halves),
              "\xEF\xBF\xBD"
              "a\xEF\xBF\xBD"
              "b\xEF\xBF\xBD");
}

TEST(TextEncoding, ResourceTextsTakeTheirArgumentOnce) {
    EXPECT_EQ(kvx::FormatResource("cannot load %s here", "X"), "cannot load X here");
    EXPECT_EQ(kvx::FormatResource("%s and %s", "%s"), "%s and %s");
    EXPECT_EQ(kvx::FormatResource("none", "X"), "none");
    EXPECT_EQ(kvx::FormatText("%s", ""), "");
}

}  // namespace
