#include "mcbinning/status.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <limits>
#include <type_traits>
#include <utility>

namespace {

using MCBinning::MCStatus;

template <typename Field>
Field FieldAt(const MCStatus& status, std::size_t offset) {
  Field field;
  std::memcpy(&field, reinterpret_cast<const char*>(&status) + offset, sizeof field);
  return field;
}

TEST(StatusTest, DefaultIsOkAndEqualsAnotherDefault) {
  const MCStatus status;
  EXPECT_TRUE(status.IsOK());
  EXPECT_FALSE(status.IsError());
  EXPECT_FALSE(status.IsWarning());
  EXPECT_EQ(status.GetErrorCode(), 0);
  for (unsigned int slot = 0; slot < 3; ++slot) {
    EXPECT_EQ(status.GetDiscreteDatum(slot), 0);
    EXPECT_EQ(status.GetScaleDatum(slot), 0.0);
  }
  EXPECT_TRUE(status == MCStatus());
}

TEST(StatusTest, CodeZeroIsStillAnErrorOrAWarning) {
  const MCStatus error(0, false);
  const MCStatus warning(0, true);
  EXPECT_TRUE(error.IsError());
  EXPECT_FALSE(error.IsOK());
  EXPECT_FALSE(error.IsWarning());
  EXPECT_TRUE(warning.IsWarning());
  EXPECT_FALSE(warning.IsOK());
  EXPECT_FALSE(warning.IsError());
  EXPECT_EQ(error.GetErrorCode(), 0);
  EXPECT_FALSE(error == MCStatus());
  EXPECT_FALSE(warning == MCStatus());
  EXPECT_FALSE(error == warning);
}

TEST(StatusTest, CodeIsKept) {
  EXPECT_EQ(MCStatus(120018, true).GetErrorCode(), 120018);
  EXPECT_FALSE(MCStatus(120018, true) == MCStatus(120017, true));
}

TEST(StatusTest, EveryDataSlotIsReadBackAndCompared) {
  for (unsigned int slot = 0; slot < 3; ++slot) {
    MCStatus discrete(120012, true);
    discrete.SetDiscreteDatum(slot, -7);
    EXPECT_EQ(discrete.GetDiscreteDatum(slot), -7);
    EXPECT_FALSE(discrete == MCStatus(120012, true));
    MCStatus scale(120012, true);
    scale.SetScaleDatum(slot, 0.25);
    EXPECT_EQ(scale.GetScaleDatum(slot), 0.25);
    EXPECT_FALSE(scale == MCStatus(120012, true));
  }
}

TEST(StatusTest, NaNInAScaleSlotMakesACopyUnequal) {
  MCStatus status;
  status.SetScaleDatum(1, std::numeric_limits<double>::quiet_NaN());
  const MCStatus copy = status;
  EXPECT_FALSE(status == copy);
}

TEST(StatusTest, NegativeZeroEqualsZero) {
  MCStatus status;
  status.SetScaleDatum(0, -0.0);
  EXPECT_TRUE(status == MCStatus());
}

TEST(StatusTest, AssignmentAndMoveCopyEveryFieldAndLeaveTheSource) {
  MCStatus source(120003, false);
  source.SetDiscreteDatum(1, 4);
  source.SetScaleDatum(2, 2.5);
  const MCStatus original = source;
  MCStatus assigned;
  assigned = source;
  EXPECT_TRUE(assigned == original);
  MCStatus moved;
  moved = std::move(source);
  EXPECT_TRUE(moved == original);
  EXPECT_TRUE(source == original);  // NOLINT(bugprone-use-after-move): the move must copy
}

TEST(StatusTest, LayoutIsCodeSeverityDiscreteScale) {
  static_assert(sizeof(MCStatus) == 48);
  static_assert(std::is_trivially_copyable_v<MCStatus>);
  static_assert(std::is_standard_layout_v<MCStatus>);
  MCStatus status(0x01020304, true);
  for (unsigned int slot = 0; slot < 3; ++slot) {
    status.SetDiscreteDatum(slot, 11 + static_cast<long>(slot));
    status.SetScaleDatum(slot, 0.5 + slot);
  }
  EXPECT_EQ(FieldAt<std::int32_t>(status, 0), 0x01020304);
  EXPECT_EQ(FieldAt<std::int16_t>(status, 4), 1);
  EXPECT_EQ(FieldAt<std::int16_t>(MCStatus(1, false), 4), -1);
  for (std::size_t slot = 0; slot < 3; ++slot) {
    EXPECT_EQ(FieldAt<std::int32_t>(status, 8 + 4 * slot), 11 + static_cast<int>(slot));
    EXPECT_EQ(FieldAt<double>(status, 24 + 8 * slot), 0.5 + static_cast<double>(slot));
  }
}

TEST(StatusTest, OperationsTakeAndReturnLong) {
  static_assert(std::is_same_v<decltype(MCStatus().GetErrorCode()), long>);
  static_assert(std::is_same_v<decltype(MCStatus().GetDiscreteDatum(0)), long>);
  static_assert(std::is_same_v<decltype(&MCStatus::SetDiscreteDatum),
                               void (MCStatus::*)(unsigned int, long) noexcept>);
}

}  // namespace
