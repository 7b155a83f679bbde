#include "toolkit/report/page_frame.h"

#include <sstream>

#include "toolkit/report/page_style.h"

namespace mcbin {

void openPage(Markup& html, const std::string& title, const std::string& style,
              const std::string& defs) {
  html.Raw("<!DOCTYPE html>\n").Open("html", {{"lang", "en"}}).LineEnd().Open("head").LineEnd();
  html.Empty("meta", {{"charset", "utf-8"}}).LineEnd();
  html.Empty("meta", {{"http-equiv", "Content-Security-Policy"},
                      {"content", "default-src 'none'; style-src 'unsafe-inline'"}});
  html.LineEnd();
  html.Empty("meta", {{"name", "viewport"}, {"content", "width=device-width, initial-scale=1"}});
  html.LineEnd().Element("title", title).LineEnd();
  html.Open("style").Raw(kPageStyle).Raw(style).Close().LineEnd();
  html.Close().LineEnd();
  html.Open("body").LineEnd();
  if (!defs.empty()) html.Raw(defs).LineEnd();
  html.Element("h1", title).LineEnd();
}

void addLines(Markup& html, const std::string& text) {
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) html.Element("p", line).LineEnd();
}

}  // namespace mcbin
