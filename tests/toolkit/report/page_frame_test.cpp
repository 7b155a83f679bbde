#include "toolkit/report/page_frame.h"

#include <gmock/gmock.h>

#include <utility>

namespace mcbin {
namespace {

using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::StartsWith;

TEST(PageFrame, APageLoadsNothingAndIsClosed) {
  Markup html;
  openPage(html, "a < b", ".own{}", "<svg/>");
  addLines(html, "one\ntwo & three\n");
  const std::string page = std::move(html).Take();
  EXPECT_THAT(page, StartsWith("<!DOCTYPE html>\n<html lang=\"en\">"));
  EXPECT_THAT(page, HasSubstr("content=\"default-src &#39;none&#39;; style-src "));
  EXPECT_THAT(page, HasSubstr("<title>a &lt; b</title>"));
  EXPECT_THAT(page, HasSubstr(".own{}</style>"));
  EXPECT_THAT(page, HasSubstr("<body>\n<svg/>\n<h1>a &lt; b</h1>\n<p>one</p>\n"));
  EXPECT_THAT(page, EndsWith("<p>two &amp; three</p>\n</body></html>"));
}

}  // namespace
}  // namespace mcbin
