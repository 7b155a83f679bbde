// Numbers are read and written alike whatever the language of the user is.
#include <gtest/gtest.h>

#include <clocale>
#include <cstdlib>
#include <filesystem>
#include <locale>
#include <string>
#include <vector>

#include "system/process.h"
#include "tests/toolkit/support/example_model.h"
#include "tests/toolkit/support/temporary_file.h"
#include "toolkit/export/export_formats.h"
#include "toolkit/input/cells.h"
#include "toolkit/model/model_json.h"
#include "toolkit/report/report_page.h"
#include "toolkit/tables/model_tables.h"
#include "toolkit/text/number_text.h"

namespace mcbin {
namespace {

class CommaAndDots : public std::numpunct<char> {
  char do_decimal_point() const override { return ','; }
  char do_thousands_sep() const override { return '.'; }
  std::string do_grouping() const override { return "\3"; }
};

/// While it lives, the language of the program is German.
class German {
 public:
  German() : before_(std::locale::global(std::locale(std::locale::classic(), new CommaAndDots))) {}
  German(const German&) = delete;
  German& operator=(const German&) = delete;
  ~German() {
    std::setlocale(LC_ALL, "C");
    std::locale::global(before_);
    std::filesystem::remove_all(languages_.Path("de_DE.UTF-8"));
  }

  /// Sets the language of the C library, too; false where the system neither has it nor makes it.
  bool SpeaksC() const {
    if (std::setlocale(LC_ALL, "de_DE.UTF-8") == nullptr &&
        std::setlocale(LC_ALL, "German_Germany") == nullptr) {
      const std::string made = languages_.Path("de_DE.UTF-8");
      const std::string command = "localedef -i de_DE -f UTF-8 " + made + " 2>&1";
      mcbinning_tests::SetVariable("LOCPATH", languages_.Directory());
      if (std::system(command.c_str()) != 0 || std::setlocale(LC_ALL, "de_DE.UTF-8") == nullptr) {
        return false;
      }
    }
    return *std::localeconv()->decimal_point == ',';
  }

 private:
  std::locale before_;
  testing::TemporaryFiles languages_;
};

/// Everything that is written of a model, the model read back among it, and of numbers in cells.
std::vector<std::string> allTexts() {
  const Model model = testing::exampleModel();
  const std::string json = modelToJson(model);
  std::vector<std::string> texts = {json, modelToJson(modelFromJson(json, "model")),
                                    modelText(model), reportPage(model)};
  for (const ExportFormat& format : exportFormats()) texts.push_back(format.write(model, {}));
  for (const char* const cell : {"1234567.5", "1,5", "2.5e-320", "1.5e-400", "1.5e400", "1e22"}) {
    double value = 0.0;
    const auto reading = static_cast<int>(readNumber(cell, value));
    texts.push_back(std::to_string(reading) + " " + shortestNumber(value) + " " +
                    fixedNumber(value, 2));
  }
  return texts;
}

TEST(Locale, TextsAreThoseOfTheStandardLanguage) {
  const std::vector<std::string> expected = allTexts();
  const German german;
  EXPECT_EQ(allTexts(), expected);
}

TEST(Locale, TextsAreThoseOfTheStandardLanguageInTheCLibraryToo) {
  const std::vector<std::string> expected = allTexts();
  const German german;
  if (!german.SpeaksC()) GTEST_SKIP() << "the system has no German, nor what localedef makes it of";
  EXPECT_EQ(allTexts(), expected);
}

}  // namespace
}  // namespace mcbin
