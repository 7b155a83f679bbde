#include "toolkit/report/markup.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace mcbin {
namespace {

TEST(EscapedMarkup, CharactersThatMeanSomethingBecomeEntities) {
  EXPECT_EQ(escapedMarkup("<b a=\"1\" c='2'>&amp;</b>"),
            "&lt;b a=&quot;1&quot; c=&#39;2&#39;&gt;&amp;amp;&lt;/b&gt;");
}

TEST(EscapedMarkup, WhatATerminalActsOnIsMadeVisible) {
  EXPECT_EQ(escapedMarkup("a\n\x1b<\u009f"), "a\\n\\x1B&lt;\\u{9F}");
}

TEST(EscapedMarkup, OtherTextStaysAsItIs) {
  EXPECT_EQ(escapedMarkup("é ≤ \u00a0 漢字"), "é ≤ \u00a0 漢字");
}

TEST(Markup, ElementsNestAndAttributesAreEscaped) {
  Markup html;
  html.Open("p", {{"class", "a\"b"}}).Text("x < y").Element("b", "&").Empty("br").Close().LineEnd();
  EXPECT_EQ(std::move(html).Take(), "<p class=\"a&quot;b\">x &lt; y<b>&amp;</b><br/></p>\n");
}

TEST(Markup, TakingClosesWhatIsOpen) {
  Markup html;
  html.Open("ul").Open("li").Raw("<b>as it is</b>");
  EXPECT_EQ(std::move(html).Take(), "<ul><li><b>as it is</b></li></ul>");
}

}  // namespace
}  // namespace mcbin
