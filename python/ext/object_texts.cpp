#include "python/ext/object_texts.h"

#include <fmt/format.h>

#include <cmath>

#include "python/ext/memory_columns.h"
#include "toolkit/text/number_text.h"

namespace mcbin::python {
namespace nb = nanobind;
namespace {

class Collector {
 public:
  explicit Collector(const std::string& column) : column_(column) {}

  void Cell(nb::handle cell) {
    if (cell.is_none()) {
      Missing();
    } else if (PyUnicode_Check(cell.ptr())) {
      store_.onlyNumbers = false;
      Text(Utf8Of(cell));
    } else if (PyBool_Check(cell.ptr())) {
      store_.onlyNumbers = false;
      Text(cell.is(Py_True) ? "true" : "false");
    } else if (PyFloat_Check(cell.ptr())) {
      const double number = PyFloat_AsDouble(cell.ptr());
      std::isnan(number) ? Missing() : Text(shortestNumber(number));
    } else if (PyLong_Check(cell.ptr())) {
      Text(Utf8Of(nb::str(cell)));
    } else {
      Fail(cell);
    }
  }

  TextStore Take() { return std::move(store_); }

 private:
  void Missing() { End(1); }
  void Text(std::string_view text) {
    store_.bytes += text;
    End(0);
  }
  void End(std::uint8_t isMissing) {
    store_.isMissing.push_back(isMissing);
    store_.offsets.push_back(static_cast<std::int64_t>(store_.bytes.size()));
  }
  /// Lone surrogates are refused.
  std::string_view Utf8Of(nb::handle text) const {
    Py_ssize_t size = 0;
    const char* const bytes = PyUnicode_AsUTF8AndSize(text.ptr(), &size);
    if (bytes != nullptr) return {bytes, static_cast<std::size_t>(size)};
    const nb::python_error error;
    throw nb::value_error(fmt::format("row {}: column {} holds a text that is no UTF-8: {}",
                                      store_.isMissing.size(), column_, error.what())
                              .c_str());
  }
  [[noreturn]] void Fail(nb::handle cell) const {
    const nb::str type = nb::type_name(cell.type());
    throw nb::type_error(fmt::format("row {}: column {} holds an object of type {}, which is "
                                     "neither a number nor a text",
                                     store_.isMissing.size(), column_, type.c_str())
                             .c_str());
  }

  const std::string& column_;
  TextStore store_;
};

}  // namespace

TextStore textsOfObjects(const nb::list& cells, const std::string& column) {
  Collector collector(column);
  for (nb::handle cell : cells) collector.Cell(cell);
  return collector.Take();
}

}  // namespace mcbin::python
