// Writes the example data, loan applications, to standard output: the same bytes on every machine.
// Only the generator of the standard is used (its distributions differ between libraries), and of
// floating point only + - * / and comparisons (functions like exp differ in the last bit).
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <random>

namespace {

constexpr int kApplications = 4000;
constexpr std::uint64_t kSeed = 20240607;

class Dice {
 public:
  explicit Dice(std::uint64_t seed) : engine_(seed) {}

  /// From 0 up to, not including, 1.
  double Uniform() { return static_cast<double>(engine_() >> 11U) / 9007199254740992.0; }

  /// Mean 0, standard deviation 1, between -6 and 6: the sum of twelve uniforms.
  double Bell() {
    double sum = -6.0;
    for (int i = 0; i < 12; ++i) sum += Uniform();
    return sum;
  }

  int Below(int end) { return static_cast<int>(Uniform() * end); }
  bool Chance(double probability) { return Uniform() < probability; }

 private:
  std::mt19937_64 engine_;
};

struct Application {
  int age;
  int income;           // yearly, whole hundreds; -1: not stated
  int employmentYears;  // 999: not known
  int loanAmount;
  double debtRatio;  // negative: missing
  int creditScore;   // 0: missing, nobody has one between 580 and 599
  int openAccounts;
  double weight;
  double risk;
};

int roundedTo(double value, int step) {
  return static_cast<int>(value / step + (value < 0.0 ? -0.5 : 0.5)) * step;
}

/// A smooth step from 0 to 1 without exp.
double smoothStep(double x) { return 0.5 + 0.5 * x / (1.0 + (x < 0.0 ? -x : x)); }

int drawScore(Dice& dice) {
  const int score = std::clamp(roundedTo(660.0 + 85.0 * dice.Bell(), 1), 300, 850);
  // The two bureaus meet here: one ends at 579, the other starts at 600.
  return score >= 580 && score < 600 ? score + 20 : score;
}

int drawLoan(Dice& dice) {
  const double size = dice.Uniform();
  const double amount = 2000.0 + 14000.0 * size * (0.5 + dice.Uniform());
  // People ask for round sums: most for thousands, some for hundreds.
  return roundedTo(amount, dice.Chance(0.7) ? 1000 : 100);
}

Application draw(Dice& dice) {
  Application a = {};
  a.age = std::clamp(roundedTo(41.0 + 13.0 * dice.Bell(), 1), 18, 84);
  const double bell = dice.Bell();
  const double income = 31000.0 + 11000.0 * bell + 2500.0 * bell * bell;
  a.income = std::max(roundedTo(income, 100), 6000);
  a.employmentYears =
      std::min(static_cast<int>(dice.Uniform() * dice.Uniform() * 40.0), a.age - 17);
  a.loanAmount = drawLoan(dice);
  a.debtRatio = roundedTo(1000.0 * (0.05 + 0.6 * dice.Uniform() * dice.Uniform()), 1) / 1000.0;
  a.creditScore = drawScore(dice);
  a.openAccounts = static_cast<int>(dice.Uniform() * dice.Uniform() * 14.0);
  a.weight = 1.0 + 0.25 * dice.Below(13);
  double risk = -2.1;
  if (a.creditScore < 640) risk += 1.6;
  if (a.creditScore < 560) risk += 1.2;
  if (a.debtRatio > 0.28) risk += 1.1;
  if (a.income < 24000) risk += 0.9;
  if (a.income > 60000) risk -= 0.8;
  if (a.employmentYears < 2) risk += 0.8;
  if (a.age < 25) risk += 0.7;
  a.risk = risk;
  return a;
}

/// What the applicants leave out and what the clerk cannot find.
void blankOut(Dice& dice, Application& a) {
  if (dice.Chance(0.06)) a.income = -1;
  if (dice.Chance(0.05)) a.employmentYears = 999;
  if (dice.Chance(0.03)) a.debtRatio = -1.0;
  if (dice.Chance(0.02)) a.creditScore = 0;
  if (dice.Chance(0.004)) a.weight = 0.0;
}

void print(Dice& dice, int number, const Application& a) {
  static const char* const purposes[] = {"car", "furniture", "business", "education", "repairs"};
  const bool defaults = dice.Chance(smoothStep(2.0 * a.risk));
  const double gradeRisk = a.risk + 0.6 * dice.Bell();
  const char* const grade = gradeRisk < -1.6 ? "A" : gradeRisk < 0.0 ? "B" : "C";
  std::printf("L%05d,%d,%d,%d,%s,%d,", number, a.age, a.income, a.employmentYears,
              purposes[dice.Below(5)], a.loanAmount);
  if (a.debtRatio >= 0.0) std::printf("%.3f", a.debtRatio);
  std::printf(",");
  if (a.creditScore > 0) std::printf("%d", a.creditScore);
  std::printf(",%d,%.2f,%s,%s\n", a.openAccounts, a.weight, grade, defaults ? "yes" : "no");
}

}  // namespace

int main() {
  Dice dice(kSeed);
  std::puts(
      "application,age,income,employment_years,purpose,loan_amount,debt_ratio,credit_score,"
      "open_accounts,weight,grade,default");
  for (int number = 1; number <= kApplications; ++number) {
    Application application = draw(dice);
    blankOut(dice, application);
    print(dice, number, application);
  }
  return std::fflush(stdout) == 0 ? 0 : 1;
}
