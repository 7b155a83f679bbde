#include "toolkit/fit/status_text.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <new>
#include <utility>

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
}

TEST(StatusText, EveryWarningOfAnAttributeHasItsWords) {
  const std::pair<long, const char*> words[] = {
      {120002, "some values lie outside the pre-bins (infinite values?)"},
      {120014, "not cut: the attribute has a single value"},
      {120015, "not cut: no case has a value"},
      {120016, "not cut: the cases with a value all have the same target category"},
      {120017, "not cut: no cut tells the target's categories apart well enough"},
      {120019, "not cut: the values are too few or too unevenly spread for another bin"},
      {7, "warning 7 of the binning library"}};
  for (const auto& [code, text] : words) {
    EXPECT_EQ(attributeStatus(MCStatus(code, true)).reason, text);
  }
}

TEST(StatusText, AnAttributesErrorIsThrown) {
  EXPECT_NO_THROW(throwIfAttributeFailed(MCStatus(), "a", true, 0));
  EXPECT_NO_THROW(throwIfAttributeFailed(MCStatus(120017, true), "a", true, ENOMEM));
  const auto saidOf3 = [](bool filesAreWhole, int reason) {
    return messageOf<DataError>(
        [=] { throwIfAttributeFailed(MCStatus(3, false), "a", filesAreWhole, reason); });
  };
  EXPECT_EQ(saidOf3(true, EMFILE), "cannot bin column a: Too many open files");
  EXPECT_EQ(saidOf3(true, 0), "cannot bin column a: its temporary file cannot be read back");
  const std::string notWhole =
      "cannot bin column a: the temporary files in " + temporaryRoot() + " are not whole";
  EXPECT_EQ(saidOf3(false, ENOSPC),
            notWhole + ": No space left on device; TMPDIR names another directory");
  EXPECT_EQ(saidOf3(false, 0), notWhole + "; TMPDIR names another directory");
  EXPECT_EQ(messageOf<std::runtime_error>(
                [] { throwIfAttributeFailed(MCStatus(120013, false), "a", true, 0); }),
            "status 120013 of the binning library for column a");
}

TEST(StatusText, WarningsDoNotEndARun) {
  EXPECT_NO_THROW(throwIfRunFailed(MCStatus(), 0));
  EXPECT_NO_THROW(throwIfRunFailed(MCStatus(120018, true), ENOMEM));
}

TEST(StatusText, ErrorsEndARun) {
  EXPECT_THROW(throwIfRunFailed(MCStatus(3, false), 0), std::bad_alloc);
  EXPECT_EQ(messageOf<DataError>([] { throwIfRunFailed(MCStatus(120021, false), EMFILE); }),
            "cannot write temporary files in " + temporaryRoot() +
                ": Too many open files; TMPDIR names another directory");
  EXPECT_EQ(messageOf<std::runtime_error>([] { throwIfRunFailed(MCStatus(120009, false), 0); }),
            "status 120009 of the binning library");
}

}  // namespace
}  // namespace mcbin
