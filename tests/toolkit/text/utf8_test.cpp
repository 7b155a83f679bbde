#include "toolkit/text/utf8.h"

#include <gtest/gtest.h>

namespace mcbin {
namespace {

TEST(Utf8, CharactersComeWithTheirSize) {
  const auto first = [](std::string_view bytes) {
    const Utf8Character character = firstCharacter(bytes);
    return std::pair(static_cast<unsigned>(character.code), character.size);
  };
  EXPECT_EQ(first("ab"), std::pair(0x61U, std::size_t{1}));
  EXPECT_EQ(first("\xC2\x9B|"), std::pair(0x9BU, std::size_t{2}));
  EXPECT_EQ(first("\xE2\x80\xAEx"), std::pair(0x202EU, std::size_t{3}));
  EXPECT_EQ(first("\xF0\x9F\x98\x80"), std::pair(0x1F600U, std::size_t{4}));
  EXPECT_EQ(first("\xE2\x80"), std::pair(0U, std::size_t{0}));
}

TEST(Utf8, TellsWellFormedTextFromOther) {
  for (const char* good : {"", "abc", "\xC3\xA9", "\xE2\x82\xAC", "\xF0\x9F\x98\x80",
                           "\xED\x9F\xBF", "\xF4\x8F\xBF\xBF", "\xE0\xA0\x80"}) {
    EXPECT_TRUE(isUtf8(good)) << good;
  }
  // Stray continuation, overlong forms, surrogates, beyond U+10FFFF, cut short.
  for (const char* bad :
       {"\x80", "\xC0\xAF", "\xC1\xBF", "\xE0\x9F\xBF", "\xED\xA0\x80", "\xF0\x8F\xBF\xBF",
        "\xF4\x90\x80\x80", "\xF5\x80\x80\x80", "\xC3", "\xE2\x82", "\xC3(", "\xFF"}) {
    EXPECT_FALSE(isUtf8(bad)) << bad;
  }
}

TEST(Utf8, OtherBytesAreStoredAsEscapes) {
  EXPECT_EQ(asUtf8(""), "");
  EXPECT_EQ(asUtf8("caf\xC3\xA9\n"), "caf\xC3\xA9\n");
  EXPECT_EQ(asUtf8("caf\xE9 \xE2\x82|\xFF"), "caf\\xE9 \\xE2\\x82|\\xFF");
}

}  // namespace
}  // namespace mcbin
