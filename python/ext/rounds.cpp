#include <nanobind/ndarray.h>
#include <nanobind/stl/optional.h>
#include <nanobind/stl/pair.h>
#include <nanobind/stl/string.h>
#include <nanobind/stl/tuple.h>
#include <nanobind/stl/vector.h>

#include <algorithm>
#include <memory>
#include <tuple>
#include <utility>

#include "python/ext/bind.h"
#include "python/ext/run_monitor.h"
#include "toolkit/fit/column_cases.h"
#include "toolkit/fit/column_plan.h"
#include "toolkit/fit/declared_values.h"
#include "toolkit/fit/fit_model.h"
#include "toolkit/input/cells.h"
#include "toolkit/rounds/first_borders.h"
#include "toolkit/rounds/plain_answer.h"
#include "toolkit/rounds/rounds_pass.h"
#include "toolkit/text/number_text.h"

namespace mcbin::python {
namespace nb = nanobind;
using namespace nb::literals;  // NOLINT(google-build-using-namespace): how arguments are named
namespace {

template <class T>
using Array = nb::ndarray<const T, nb::ndim<1>, nb::c_contig, nb::device::cpu>;

template <class T>
std::vector<T> copyOf(const Array<T>& array) {
  return {array.data(), array.data() + array.size()};
}

/// An array that owns its numbers.
template <class T>
nb::object arrayOf(std::vector<T> numbers) {
  auto owned = std::make_unique<std::vector<T>>(std::move(numbers));
  T* const data = owned->data();
  const std::size_t size = owned->size();
  const nb::capsule owner(owned.release(), [](void* content) noexcept {
    delete static_cast<std::vector<T>*>(content);
  });
  return nb::cast(nb::ndarray<nb::numpy, T, nb::ndim<1>>(data, {size}, owner));
}

/// An item of a question: the attribute, borders, low and high ends of ranges, whether to count
/// distinct values.
using Item = std::tuple<std::size_t, Array<double>, Array<double>, Array<double>, bool>;

nb::list itemsOf(const BINRoundQuestion& question) {
  nb::list items;
  for (const BINAttributeQuestion& asked : question.attributes) {
    std::vector<double> lows;
    std::vector<double> highs;
    for (const BINValueRange& range : asked.ranges) {
      lows.push_back(range.low);
      highs.push_back(range.high);
    }
    items.append(nb::make_tuple(asked.attribute, arrayOf(asked.borders), arrayOf(std::move(lows)),
                                arrayOf(std::move(highs)), asked.countDistinct));
  }
  return items;
}

BINRoundQuestion questionOf(const nb::list& items) {
  BINRoundQuestion question;
  for (const nb::handle item : items) {
    const auto tuple = nb::cast<nb::tuple>(item);
    const auto lows = nb::cast<Array<double>>(tuple[2]);
    const auto highs = nb::cast<Array<double>>(tuple[3]);
    BINAttributeQuestion asked;
    asked.attribute = nb::cast<std::size_t>(tuple[0]);
    asked.borders = copyOf(nb::cast<Array<double>>(tuple[1]));
    for (std::size_t i = 0; i < std::min(lows.size(), highs.size()); ++i) {
      asked.ranges.push_back({lows.data()[i], highs.data()[i]});
    }
    question.attributes.push_back(std::move(asked));
  }
  return question;
}

/// The fields of PlainAnswer, in their order.
nb::tuple tupleOf(PlainAnswer plain) {
  return nb::make_tuple(arrayOf(std::move(plain.sums)), arrayOf(std::move(plain.minima)),
                        arrayOf(std::move(plain.maxima)), arrayOf(std::move(plain.items)),
                        arrayOf(std::move(plain.values)), arrayOf(std::move(plain.codes)),
                        arrayOf(std::move(plain.weights)));
}

PlainAnswer plainOf(const nb::tuple& fields) {
  const auto doubles = [&](int at) { return copyOf(nb::cast<Array<double>>(fields[at])); };
  const auto wholes = [&](int at) { return copyOf(nb::cast<Array<int>>(fields[at])); };
  return {doubles(0), doubles(1), doubles(2), wholes(3), doubles(4), wholes(5), doubles(6)};
}

/// `columns` are those of the items. Codes may be None (all 0), and so may weights (all 1).
nb::tuple countItems(const nb::list& items, std::size_t categories,
                     const std::vector<MissingRules>& rules, const std::optional<Array<int>>& codes,
                     const std::optional<Array<double>>& weights,
                     const std::vector<Array<double>>& columns) {
  const BINRoundQuestion question = questionOf(items);
  BINRoundCases cases;
  cases.size = columns.at(0).size();
  cases.codes = codes ? codes->data() : nullptr;
  cases.weights = weights ? weights->data() : nullptr;
  cases.columns.resize(rules.size(), nullptr);
  for (std::size_t i = 0; i < columns.size(); ++i) {
    if (columns[i].size() != cases.size) throw nb::value_error("columns of different lengths");
    cases.columns.at(question.attributes.at(i).attribute) = columns[i].data();
  }
  PlainAnswer plain;
  {
    const nb::gil_scoped_release unlocked;
    plain = plainAnswer(countCases(question, categories, rules, std::move(cases)));
  }
  return tupleOf(std::move(plain));
}

/// What Python found out of a table that lies elsewhere, in place of a scan.
struct Facts {
  std::uint64_t rows = 0;
  /// By column: a cell that is a number, one that is a text, one that is too large.
  std::vector<std::tuple<std::optional<std::string>, std::optional<std::string>,
                         std::optional<std::string>>>
      cells;
  std::vector<std::vector<double>> met;  ///< By column: values that the rules contain.
  std::vector<std::string> categories;
  std::vector<std::string> targetTexts;  ///< That occur, whether they name a category or not.
};

constexpr const char* kPlace = "the frame";

std::vector<std::string> namesOf(const BatchReader& source) {
  std::vector<std::string> names;
  for (const ColumnHead& head : source.Heads()) names.push_back(head.name);
  return names;
}

TableScan scanOf(const BatchReader& source, const Facts& facts) {
  const auto sighting = [](const std::optional<std::string>& text) {
    return text ? std::optional(Sighting{kPlace, *text}) : std::nullopt;
  };
  TableScan scan;
  scan.rows = facts.rows;
  scan.categories = facts.categories;
  for (std::size_t c = 0; c < source.Heads().size(); ++c) {
    const auto& [number, text, outOfRange] = facts.cells.at(c);
    scan.columns.push_back(
        {sighting(number), sighting(text), sighting(outOfRange), source.Heads()[c].whyUnfit});
  }
  return scan;
}

Notes neverMet(const std::vector<ColumnPlan>& columns, const Facts& facts) {
  Notes notes;
  for (std::size_t c = 0; c < columns.size(); ++c) {
    if (columns[c].use == ColumnUse::LeftOut) continue;
    DeclaredValues declared(columns[c]);
    for (const double value : facts.met.at(c)) declared.Meet(value);
    if (columns[c].use == ColumnUse::Target) {
      for (const std::string& text : facts.targetTexts) declared.Meet(std::string_view(text));
    }
    for (auto& [position, note] : declared.NeverMet()) notes.emplace(std::pair(c, position), note);
  }
  return notes;
}

/// Has Python answer.
class PythonEngine : public RoundEngine {
 public:
  /// `answer`, which is borrowed, takes items and a task; it gives the fields of PlainAnswer and,
  /// in a list, the numbers of distinct values.
  PythonEngine(nb::handle answer, const PassSetting& setting, const Facts& facts, bool isWeighted)
      : answer_(answer), setting_(setting), facts_(facts), isWeighted_(isWeighted) {}

  BINRoundAnswer Answer(const BINRoundQuestion& question, const std::string& task) override {
    const nb::gil_scoped_acquire lock;
    const auto [plain, distinct] =
        nb::cast<std::pair<nb::tuple, std::vector<double>>>(answer_(itemsOf(question), task));
    const std::size_t categories = std::max<std::size_t>(setting_.scan.categories.size(), 1);
    BINRoundAnswer answer = answerOf(plainOf(plain), question, categories);
    for (std::size_t i = 0; i < distinct.size(); ++i) {
      answer.attributes.at(i).distinctValues = distinct[i];
    }
    cases_.used = static_cast<std::uint64_t>(answer.cases);
    cases_.read = isWeighted_ ? std::max(facts_.rows, cases_.used) : cases_.used;
    cases_.droppedForWeight = cases_.read - cases_.used;
    return answer;
  }
  CaseCounts Cases() const override { return cases_; }
  Notes NeverMet() const override { return neverMet(setting_.columns, facts_); }

 private:
  nb::handle answer_;
  const PassSetting& setting_;
  const Facts& facts_;
  bool isWeighted_;
  CaseCounts cases_;
};

std::pair<Model, std::vector<std::string>> fitInRounds(const FitRequest& request,
                                                       const BatchReader& source,
                                                       const Facts& facts,
                                                       std::vector<std::vector<double>> borders,
                                                       const nb::callable& engine) {
  RunMonitor monitor{nb::none()};
  const nb::gil_scoped_release unlocked;
  std::vector<std::string> notes;
  FitWatch watch{monitor};
  watch.noted = [&notes](const std::string& text) { notes.push_back(text); };
  const auto bin = [&](const PassSetting& setting, const FeedLayout& layout) {
    RoundsStart start;
    start.firstBorders = std::move(borders);
    for (const std::size_t column : layout.attributeColumns) {
      start.exactBelow.push_back(source.Heads()[column].exactBelow);
    }
    PythonEngine answering(engine, setting, facts, layout.weightColumn.has_value());
    return runRounds(setting, layout, start, answering, monitor);
  };
  Model model =
      fitScanned(request, planColumns(request, namesOf(source)), scanOf(source, facts), watch, bin);
  return {std::move(model), std::move(notes)};
}

/// The positions of the columns to cut.
std::vector<std::size_t> columnsToCut(const FitRequest& request, const BatchReader& source,
                                      const Facts& facts) {
  std::vector<ColumnPlan> columns = planColumns(request, namesOf(source));
  applyScan(scanOf(source, facts), request.input.data, columns);
  std::vector<std::size_t> positions;
  for (std::size_t c = 0; c < columns.size(); ++c) {
    if (columns[c].use == ColumnUse::Attribute) positions.push_back(c);
  }
  return positions;
}

/// Files the categories that the only column of `values` names, and gives the code of each row,
/// negative for none.
std::vector<int> readTarget(const FitRequest& request, const BatchReader& source,
                            BatchReader& values, Facts& facts) {
  const std::vector<ColumnPlan> columns = planColumns(request, namesOf(source));
  const std::vector<std::string>& missing =
      columns.at(columnOf(columns, ColumnUse::Target).value()).missingTexts;
  Monitor monitor;
  ColumnCases cases(values, request.naTexts, kPlace);
  const TableScan scan = scanTable(cases, {{ScanAs::Target}, request.naTexts, missing}, monitor);
  facts.categories = scan.categories;
  std::vector<int> codes;
  cases.Rewind();
  while (cases.NextCase()) {
    const std::string_view text = cases.ReadText(0);
    facts.targetTexts.emplace_back(trimmed(text));
    const std::string_view category = categoryOf(text, request.naTexts, missing);
    codes.push_back(category.empty() ? -1 : scan.codes.find(category)->second);
  }
  return codes;
}

/// The numbers that cells of numbers must not be, since their texts stand for missing values.
std::vector<double> missingNumbers(const std::vector<std::string>& naTexts) {
  const ScaleCells cells(naTexts);
  std::vector<double> numbers;
  for (const std::string& text : naTexts) {
    double number = 0.0;
    if (readNumber(text, number) == NumberReading::Number &&
        cells.OfNumber(number) == CellKind::Missing) {
      numbers.push_back(number);
    }
  }
  return numbers;
}

const char* nameOf(ColumnUse use) {
  switch (use) {
    case ColumnUse::Attribute:
      return "attribute";
    case ColumnUse::Target:
      return "target";
    case ColumnUse::Weight:
      return "weight";
    default:
      return "left out";
  }
}

}  // namespace

void bindRounds(nb::module_& module) {
  nb::class_<MissingRules>(module, "MissingRules")
      .def(nb::init<>())
      .def_rw("values", &MissingRules::values)
      .def_rw("range", &MissingRules::range, nb::for_setter(nb::arg("value").none()));
  nb::class_<ColumnPlan>(module, "ColumnPlan")
      .def_ro("name", &ColumnPlan::name)
      .def_prop_ro("use", [](const ColumnPlan& column) { return nameOf(column.use); })
      .def_prop_ro(
          "is_category",
          [](const ColumnPlan& column) { return column.declaredType == ColumnType::Category; })
      .def_ro("missing", &ColumnPlan::missing);
  nb::class_<Facts>(module, "Facts")
      .def(nb::init<>())
      .def_rw("rows", &Facts::rows)
      .def_rw("cells", &Facts::cells)
      .def_rw("met", &Facts::met)
      .def_ro("categories", &Facts::categories);
  module.def(
      "plan_columns",
      [](const FitRequest& request, const BatchReader& source) {
        return planColumns(request, namesOf(source));
      },
      "request"_a, "source"_a);
  module.def("columns_to_cut", &columnsToCut, "request"_a, "source"_a, "facts"_a);
  module.def("read_target", &readTarget, "request"_a, "source"_a, "values"_a, "facts"_a);
  module.def("missing_numbers", &missingNumbers, "na"_a);
  module.def("first_borders", &firstBorders, "sample"_a, "categories"_a);
  module.def("count_items", &countItems, "items"_a, "categories"_a, "rules"_a, "codes"_a.none(),
             "weights"_a.none(), "columns"_a);
  module.def("fit_in_rounds", &fitInRounds, "request"_a, "source"_a, "facts"_a, "borders"_a,
             "engine"_a);
}

}  // namespace mcbin::python
