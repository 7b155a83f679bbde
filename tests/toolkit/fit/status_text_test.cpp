#include "toolkit/fit/status_text.h"

#include <gtest/gtest.h>

#include <new>

#include "tests/toolkit/support/temporary_file.h"
#include "toolkit/errors.h"
#include "toolkit/system/temporary_directory.h"

namespace mcbin {
namespace {

using MCBinning::MCStatus;
using testing::messageOf;

TEST(StatusText, AnAttributesStatusKeepsCodeAndSeverity) {
  EXPECT_EQ(attributeStatus(MCStatus()).severity, Severity::Ok);
  EXPECT_EQ(attributeStatus(MCStatus()).reason, "");
  const AttributeStatus uncut = attributeStatus(MCStatus(120017, true));
  EXPECT_EQ(uncut.code, 120017);
  EXPECT_EQ(uncut.severity, Severity::Warning);
  EXPECT_EQ(uncut.reason, "not cut: no cut tells the target's categories apart well enough");
}

TEST(StatusText, EveryWarningOfAnAttributeHasItsWords) {
  for (long code : {120002L, 120014L, 120015L, 120016L, 120017L, 120019L}) {
    EXPECT_EQ(attributeStatus(MCStatus(code, true)).reason.find("library"), std::string::npos);
  }
  EXPECT_EQ(attributeStatus(MCStatus(7, true)).reason, "warning 7 of the binning library");
}

TEST(StatusText, AnAttributesErrorIsThrown) {
  EXPECT_NO_THROW(throwIfAttributeFailed(MCStatus(), "a", true));
  EXPECT_NO_THROW(throwIfAttributeFailed(MCStatus(120017, true), "a", true));
  EXPECT_EQ(messageOf<DataError>([] { throwIfAttributeFailed(MCStatus(3, false), "a", true); }),
            "cannot bin column a: memory or file descriptors ran out");
  EXPECT_EQ(messageOf<DataError>([] { throwIfAttributeFailed(MCStatus(3, false), "a", false); }),
            "cannot bin column a: the temporary files in " + temporaryRoot() +
                " are not whole: is the disk full? TMPDIR names another directory");
  EXPECT_EQ(messageOf<std::runtime_error>(
                [] { throwIfAttributeFailed(MCStatus(120013, false), "a", true); }),
            "status 120013 of the binning library for column a");
}

TEST(StatusText, WarningsDoNotEndARun) {
  EXPECT_NO_THROW(throwIfRunFailed(MCStatus()));
  EXPECT_NO_THROW(throwIfRunFailed(MCStatus(120018, true)));
}

TEST(StatusText, ErrorsEndARun) {
  EXPECT_THROW(throwIfRunFailed(MCStatus(3, false)), std::bad_alloc);
  EXPECT_EQ(messageOf<DataError>([] { throwIfRunFailed(MCStatus(120021, false)); }),
            "cannot write temporary files in " + temporaryRoot() +
                ": is the disk full, or are too many files open? TMPDIR names another directory");
  EXPECT_EQ(messageOf<std::runtime_error>([] { throwIfRunFailed(MCStatus(120009, false)); }),
            "status 120009 of the binning library");
}

}  // namespace
}  // namespace mcbin
