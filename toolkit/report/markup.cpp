#include "toolkit/report/markup.h"

#include <utility>

#include "toolkit/text/visible_text.h"

namespace mcbin {

std::string escapedMarkup(std::string_view text) {
  std::string escaped;
  for (const char c : visibleText(text)) {
    if (c == '&') {
      escaped += "&amp;";
    } else if (c == '<') {
      escaped += "&lt;";
    } else if (c == '>') {
      escaped += "&gt;";
    } else if (c == '"') {
      escaped += "&quot;";
    } else if (c == '\'') {
      escaped += "&#39;";
    } else {
      escaped += c;
    }
  }
  return escaped;
}

void Markup::Start(std::string_view tag, Attributes attributes) {
  text_ += '<';
  text_ += tag;
  for (const Attribute& attribute : attributes) {
    text_ += ' ';
    text_ += attribute.name;
    text_ += "=\"" + escapedMarkup(attribute.value) + '"';
  }
}

Markup& Markup::Open(std::string_view tag, Attributes attributes) {
  Start(tag, attributes);
  text_ += '>';
  open_.emplace_back(tag);
  return *this;
}

Markup& Markup::Close() {
  text_ += "</" + open_.back() + '>';
  open_.pop_back();
  return *this;
}

Markup& Markup::Text(std::string_view text) {
  text_ += escapedMarkup(text);
  return *this;
}

Markup& Markup::Element(std::string_view tag, std::string_view text, Attributes attributes) {
  return Open(tag, attributes).Text(text).Close();
}

Markup& Markup::Empty(std::string_view tag, Attributes attributes) {
  Start(tag, attributes);
  text_ += "/>";
  return *this;
}

Markup& Markup::Raw(std::string_view markup) {
  text_ += markup;
  return *this;
}

Markup& Markup::LineEnd() {
  text_ += '\n';
  return *this;
}

std::string Markup::Take() && {
  while (!open_.empty()) Close();
  return std::move(text_);
}

}  // namespace mcbin
