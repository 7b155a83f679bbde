#include "toolkit/text/visible_text.h"

#include <gtest/gtest.h>

namespace mcbin {
namespace {

TEST(VisibleText, OrdinaryTextStaysAsItIs) {
  for (const char* text : {"", "plain 'text' \\ \"q\"", "é ≤ \u00a0 漢字 \U0001F600", "שלום"}) {
    EXPECT_EQ(visibleText(text), text);
  }
}

TEST(VisibleText, WhatATerminalActsOnIsNamed) {
  EXPECT_EQ(visibleText(std::string_view("\0\a\b\x1b[31m\x7f", 9)),
            "\\x00\\x07\\x08\\x1B[31m\\x7F");
  EXPECT_EQ(visibleText("a\tb\r\nc"), "a\\tb\\r\\nc");
  EXPECT_EQ(visibleText("\u0080\u009b31m\u009f"), "\\u{80}\\u{9B}31m\\u{9F}");
  EXPECT_EQ(visibleText("\u2028\u2029\u202a\u202e\u2066\u2069\u200e\u200f\u061c"),
            "\\u{2028}\\u{2029}\\u{202A}\\u{202E}\\u{2066}\\u{2069}\\u{200E}\\u{200F}\\u{61C}");
}

TEST(VisibleText, BytesThatAreNoTextAreNamed) {
  EXPECT_EQ(visibleText("caf\xE9 \x9b!\xC2"), "caf\\xE9 \\x9B!\\xC2");
}

TEST(VisibleText, LinesKeepTheirEnds) {
  EXPECT_EQ(visibleLines("a\n\x1b\r\nb\n"), "a\n\\x1B\\r\nb\n");
}

TEST(VisibleText, AnExcerptIsNoLongerThanSixtyCharacters) {
  const std::string sixty(kExcerptLength, 'x');
  EXPECT_EQ(excerpt(sixty), sixty);
  EXPECT_EQ(excerpt(sixty + "y"), sixty + "...");
  EXPECT_EQ(quotedExcerpt(std::string(1'000'000, '\n')).size(), 2 * kExcerptLength + 5);
  std::string umlauts;
  for (std::size_t i = 0; i < kExcerptLength; ++i) umlauts += "ä";
  EXPECT_EQ(excerpt(umlauts + "ä"), umlauts + "...");
}

TEST(VisibleText, AListEndsWhereItGrowsLong) {
  EXPECT_EQ(excerptList({}, 2), "");
  EXPECT_EQ(excerptList({"a", "b\n"}, 2), "a, b\\n");
  EXPECT_EQ(excerptList({"a", "b", "c"}, 2), "a, b, ...");
}

}  // namespace
}  // namespace mcbin
