/// Writing HTML and SVG text.
#ifndef MCBIN_TOOLKIT_REPORT_MARKUP_H
#define MCBIN_TOOLKIT_REPORT_MARKUP_H

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace mcbin {

/// `text` with the characters that mean something in markup as entities, and control characters,
/// which have no place in HTML, as blanks.
std::string escapedMarkup(std::string_view text);

/// Collects elements as text. Texts and attribute values are escaped; every element that is opened
/// is closed, in order.
class Markup {
 public:
  struct Attribute {
    std::string_view name;
    std::string value;
  };
  using Attributes = std::initializer_list<Attribute>;

  Markup& Open(std::string_view tag, Attributes attributes = {});
  /// Closes the element that was opened last.
  Markup& Close();
  Markup& Text(std::string_view text);
  /// An element that holds nothing but a text.
  Markup& Element(std::string_view tag, std::string_view text, Attributes attributes = {});
  /// An element that holds nothing and needs no end: an SVG shape, or <meta> and its like.
  Markup& Empty(std::string_view tag, Attributes attributes = {});
  /// Text that is markup already.
  Markup& Raw(std::string_view markup);
  Markup& LineEnd();

  /// What was written, with every element closed. Nothing can be written afterwards.
  std::string Take() &&;

 private:
  void Start(std::string_view tag, Attributes attributes);

  std::string text_;
  std::vector<std::string> open_;
};

}  // namespace mcbin

#endif
