// Cut points on public data sets against published results of the classical entropy method with
// the minimum-description-length criterion. The published cuts lie halfway between two neighbouring
// values; with closed right borders ours is the lower of the two.
#include <gtest/gtest.h>
#include <mcbinning/mcbinning.h>

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "support/csv_table.h"
#include "support/vector_cases.h"

namespace {

using mcbinning_tests::CsvTable;

class KnownAnswers : public testing::Test {
 protected:
  void SetUp() override {
    if (!std::filesystem::is_directory(MCBINNING_KNOWN_DATA)) {
      GTEST_SKIP() << "no data sets in " << MCBINNING_KNOWN_DATA;
    }
  }

  static CsvTable Read(const std::string& file) {
    return CsvTable(std::string(MCBINNING_KNOWN_DATA) + "/" + file);
  }

  // The record of `column` against `targetColumn`: right borders closed, no pre-binning.
  static BINAttributeTargetResults Bin(const CsvTable& table, const std::string& column,
                                       const std::string& targetColumn) {
    BINStringEncoder encoder(0);
    const std::vector<double> values = table.Numbers(column);
    const std::vector<std::string> targets = table.Texts(targetColumn);
    std::vector<std::vector<double>> rows;
    rows.reserve(values.size());
    for (std::size_t i = 0; i < values.size(); ++i) {
      rows.push_back({values[i], encoder.Encode(targets[i])});
    }
    BINVarList list;
    list.AddContVar(column, "", IBINVariable::AttributeRole);
    list.AddCatVar(targetColumn, "", encoder.GetNumberOfCategories(),
                   IBINVariable::StringCategoricalLevel, IBINVariable::TargetRole);
    BINSettings settings;
    EXPECT_TRUE(settings.SetNumberOfBins(20));
    EXPECT_TRUE(settings.SetNumDistinctValueThreshold(0));
    settings.SetRightBorderClosed(true);
    BINFactory factory;
    const std::unique_ptr<IBINAlgorithm> algorithm(factory.CreateBINAlgorithm(settings, list));
    BINAttributeTargetResults record;
    if (algorithm == nullptr) {
      ADD_FAILURE() << "factory status " << factory.GetStatus().GetErrorCode();
      return record;
    }
    mcbinning_tests::VectorCases cases(rows);
    algorithm->Run(cases, nullptr, nullptr);
    algorithm->GetOutput()->GetAttributeTargetCutPoints(0, 1, record);
    return record;
  }

  // Each cut point must be the data value just below the published one.
  static void ExpectCuts(const CsvTable& table, const std::string& column,
                         const std::string& targetColumn, const std::vector<double>& published) {
    SCOPED_TRACE(column);
    const BINAttributeTargetResults record = Bin(table, column, targetColumn);
    std::vector<double> values = table.Numbers(column);
    std::sort(values.begin(), values.end());
    std::vector<double> expected;
    for (const double cut : published) {
      expected.push_back(*(std::lower_bound(values.begin(), values.end(), cut) - 1));
    }
    EXPECT_EQ(record.GetCutPoints(), expected);
    EXPECT_EQ(record.GetCellCounts().size(), expected.size() + 1);
    EXPECT_EQ(record.GetStatus().GetErrorCode(), published.empty() ? 120017 : 0);
    EXPECT_EQ(record.GetTotalWeight(), static_cast<double>(values.size()));
  }
};

TEST_F(KnownAnswers, Pima) {
  const CsvTable pima = Read("pima.csv");
  ExpectCuts(pima, "pregnancies", "diabetes", {6.5});
  ExpectCuts(pima, "glucose", "diabetes", {99.5, 127.5, 154.5});
  ExpectCuts(pima, "blood_pressure", "diabetes", {});
  ExpectCuts(pima, "skin_thickness", "diabetes", {});
  ExpectCuts(pima, "insulin", "diabetes", {14.5, 121});
  ExpectCuts(pima, "bmi", "diabetes", {27.85});
  ExpectCuts(pima, "pedigree", "diabetes", {0.5275});
  ExpectCuts(pima, "age", "diabetes", {28.5});
}

TEST_F(KnownAnswers, Iris) {
  const CsvTable iris = Read("iris.csv");
  ExpectCuts(iris, "petal_length", "species", {2.45, 4.75});
  ExpectCuts(iris, "petal_width", "species", {0.8, 1.75});
  ExpectCuts(iris, "sepal_length", "species", {5.55, 6.15});
  // The classical criterion also cuts at 2.95; ours is the stricter one.
  ExpectCuts(iris, "sepal_width", "species", {3.35});
}

}  // namespace
