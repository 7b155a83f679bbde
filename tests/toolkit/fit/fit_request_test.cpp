#include "toolkit/fit/fit_request.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "tests/toolkit/support/temporary_file.h"
#include "toolkit/errors.h"

namespace mcbin {
namespace {

template <class Set>
std::string refusal(Set set) {
  FitRequest request;
  set(request);
  return testing::messageOf<UsageError>([&] { checkNumbers(request); });
}

TEST(FitRequest, NumbersThatCannotBeAreRefused) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(refusal([](auto& request) { request.bins = 1; }), "--bins must be at least 2");
  EXPECT_EQ(refusal([](auto& request) { request.distinctValueThreshold = -1; }),
            "--threshold must not be negative");
  EXPECT_EQ(refusal([](auto& request) { request.maxBins = 1; }), "--max-bins must be at least 2");
  for (const double wrong : {-0.1, 1.1, kNan}) {
    EXPECT_EQ(refusal([=](auto& request) { request.smallBinThreshold = wrong; }),
              "--small-bins must be from 0 to 1");
    EXPECT_EQ(refusal([=](auto& request) { request.minBinShare = wrong; }),
              "--min-bin-share must be from 0 to 1");
  }
  for (const double wrong : {-1.0, kInfinity, kNan}) {
    EXPECT_EQ(refusal([=](auto& request) { request.minBinWeight = wrong; }),
              "--min-bin-weight must be finite and not negative");
    EXPECT_EQ(refusal([=](auto& request) { request.evidenceAdjustment = wrong; }),
              "--woe-adjustment must lie between 1e-100 and 1e+100");
  }
}

TEST(FitRequest, NumbersAtTheirLimitsAreTaken) {
  FitRequest request;
  request.bins = request.maxBins.emplace(2);
  request.smallBinThreshold = request.minBinShare.emplace(1.0);
  request.minBinWeight = 0.0;
  request.evidenceAdjustment = 1e100;
  EXPECT_NO_THROW(checkNumbers(request));
}

}  // namespace
}  // namespace mcbin
