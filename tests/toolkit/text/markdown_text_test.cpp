#include "toolkit/text/markdown_text.h"

#include <gtest/gtest.h>

namespace mcbin {
namespace {

TEST(MarkdownText, WhatMarkdownWouldTakeForItsOwnIsEscaped) {
  EXPECT_EQ(markdownText("a_b *c* `d` [e](f) <g> h|i #j &amp; ~k~ \\"),
            "a\\_b \\*c\\* \\`d\\` \\[e\\](f) \\<g\\> h\\|i \\#j \\&amp; \\~k\\~ \\\\");
  EXPECT_EQ(markdownText("plain, 12.5% (é)\n"), "plain, 12.5% (é)\n");
}

}  // namespace
}  // namespace mcbin
