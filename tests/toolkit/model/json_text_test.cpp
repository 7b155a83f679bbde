#include "toolkit/model/json_text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <random>
#include <stdexcept>

namespace mcbin {
namespace {

TEST(JsonText, PlainArraysStandOnOneLine) {
  Json json;
  json["a"] = {1, 2.5, "x"};
  json["b"] = Json::array();
  json["c"] = Json::object();
  json["d"] = {{1, 2}, {3}};
  json["e"] = nullptr;
  EXPECT_EQ(jsonText(json),
            "{\n  \"a\": [1, 2.5, \"x\"],\n  \"b\": [],\n  \"c\": {},\n  \"d\": [\n    [1, 2],\n"
            "    [3]\n  ],\n  \"e\": null\n}");
}

TEST(JsonText, StringsAreEscaped) {
  EXPECT_EQ(jsonText("a\"b\\\n\t\x01"), "\"a\\\"b\\\\\\n\\t\\u0001\"");
  EXPECT_EQ(jsonText("\u007f\u009b\u202e é"), "\"\\u007f\\u009b\\u202e é\"");
  Json json;
  json["k\"ey"] = 1;
  EXPECT_EQ(jsonText(json), "{\n  \"k\\\"ey\": 1\n}");
}

TEST(JsonText, DoublesAreShortest) {
  EXPECT_EQ(jsonText(0.1), "0.1");
  EXPECT_EQ(jsonText(0.1 + 0.2), "0.30000000000000004");
  EXPECT_EQ(jsonText(42.0), "42");
  EXPECT_EQ(jsonText(-0.0), "0");
  EXPECT_EQ(jsonText(1e300), "1e+300");
  EXPECT_EQ(jsonText(5e-324), "5e-324");
}

TEST(JsonText, AnyFiniteDoubleReadsBack) {
  const std::uint64_t seed = 7;
  SCOPED_TRACE(seed);
  std::mt19937_64 engine(seed);
  for (int i = 0; i < 20000; ++i) {
    const std::uint64_t bits = engine();
    double value = 0.0;
    std::memcpy(&value, &bits, sizeof value);
    if (!std::isfinite(value)) continue;
    ASSERT_EQ(Json::parse(jsonText(value)).get<double>(), value);
  }
}

TEST(JsonText, InfinitiesBecomeTexts) {
  EXPECT_EQ(jsonText(numberToJson(std::numeric_limits<double>::infinity())), "\"inf\"");
  EXPECT_EQ(jsonText(numberToJson(-std::numeric_limits<double>::infinity())), "\"-inf\"");
  EXPECT_EQ(jsonText(numberToJson(1.5)), "1.5");
}

TEST(JsonText, OtherDoublesAreRefused) {
  for (const double value : {HUGE_VAL, -HUGE_VAL, std::nan("")}) {
    EXPECT_THROW(jsonText(value), std::logic_error);
    EXPECT_THROW(jsonText(Json::array({1.0, value})), std::logic_error);
  }
}

}  // namespace
}  // namespace mcbin
