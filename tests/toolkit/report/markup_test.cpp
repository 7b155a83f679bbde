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

TEST(EscapedMarkup, ControlCharactersBecomeBlanks) {
  EXPECT_EQ(escapedMarkup(std::string("a\0b\r\n\tc\x1b\x7f", 9)), "a b   c  ");
  EXPECT_EQ(escapedMarkup("a\u0080b\u009fc"), "a b c");
}

TEST(EscapedMarkup, OtherTextStaysAsItIs) {
  EXPECT_EQ(escapedMarkup("é ≤ \u00a0 漢字 \xC2"), "é ≤ \u00a0 漢字 \xC2");
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
