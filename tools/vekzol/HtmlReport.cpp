// File: HtmlReport.cpp
#include "HtmlReport.h"

namespace vekzol_tool {

namespace {

constexpr char kHead[] = R"(<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta http-equiv="Content-Security-Policy" content="default-src 'none'; style-src 'unsafe-inline'; script-src 'unsafe-inline'; img-src data:">
<meta name="viewport" content="width=device-width, initial-scale=1">
)";

constexpr char kStyle[] = R"(<style>
body { font-family: Helvetica, Arial, sans-serif; color: #1f2328; margin: 1.5em; }
h1 { font-size: 1.5em; margin: 0 0 0.5em 0; }
h2 { font-size: 1.2em; margin: 1.2em 0 0.5em 0; }
h3 { font-size: 1em; margin: 0.8em 0 0.3em 0; }
code, li { font-family: Menlo, Consolas, monospace; }
#outcome { font-weight: bold; }
#counts { border-collapse: collapse; }
#counts th { text-align: left; font-weight: normal; padding: 0.15em 1.5em 0.15em 0; }
#counts td { text-align: right; padding: 0.15em 0; }
#cut-note { color: #bc4c00; }
#drawing { overflow: auto; max-height: 85vh; border: 1px solid #d0d7de; border-radius: 6px; }
#filter { font-size: 1em; padding: 0.2em 0.4em; width: 20em; }
ul { margin: 0; padding-left: 1.5em; }
</style>
</head>
<body>
)";

constexpr char kScript[] = R"(<script>
(function () {
  'use strict';
  var filter = document.getElementById('filter');
  var sections = document.querySelectorAll('section.list');
  function apply() {
    var wanted = filter.value.toLowerCase();
    for (var i = 0; i < sections.length; i++) {
      var items = sections[i].querySelectorAll('li');
      var shown = 0;
      for (var j = 0; j < items.length; j++) {
        var hit = items[j].textContent.toLowerCase().indexOf(wanted) !== -1;
        items[j].hidden = !hit;
        if (hit) shown++;
      }
      sections[i].querySelector('.shown').textContent =
          wanted === '' ? String(items.length) : shown + ' of ' + items.length;
    }
  }
  filter.addEventListener('input', apply);
  apply();
})();
</script>
</body>
</html>
)";

std::string Escaped(const CString& text) {
  return HtmlEscape(std::string_view(text.GetString(), static_cast<size_t>(text.GetLength())));
}

void AppendCount(std::string& html, const ComparisonReport::List& list) {
  html += "<tr><th>";
  html += list.title;
  html += "</th><td>" + std::to_string(list.ids.size()) + "</td></tr>\n";
}

void AppendList(std::string& html, const ComparisonReport::List& list) {
  html += "<section class=\"list\" id=\"";
  html += list.key;
  html += "\">\n<h3>";
  html += list.title;
  html += " (<span class=\"shown\">" + std::to_string(list.ids.size()) + "</span>)</h3>\n<ul>\n";
  for (const CString& id : list.ids) html += "<li>" + Escaped(id) + "</li>\n";
  html += "</ul>\n</section>\n";
}

}  // namespace

std::string HtmlEscape(std::string_view text) {
  std::string out;
  out.reserve(text.size());
  for (char c : text) {
    const unsigned char byte = static_cast<unsigned char>(c);
    switch (c) {
      case '&':
        out += "&amp;";
        break;
      case '<':
        out += "&lt;";
        break;
      case '>':
        out += "&gt;";
        break;
      case '"':
        out += "&quot;";
        break;
      case '\'':
        out += "&#39;";
        break;
      default:
        if ((byte < 0x20 && c != '\t' && c != '\n' && c != '\r') || byte == 0x7F) {
          // Control characters, which HTML does not allow in text, as the
          // Unicode symbols for them, as the drawing shows them.
          out += "\xE2\x90";
          out += static_cast<char>(byte == 0x7F ? 0xA1 : 0x80 + byte);
        } else {
          out += c;
        }
    }
  }
  return out;
}

std::string RenderHtml(const ComparisonReport& report, const HtmlPage& page) {
  const char* outcome = report.different ? "different" : "identical";
  std::string html = kHead;
  html += "<title>vekzol compare: ";
  html += outcome;
  html += "</title>\n";
  html += kStyle;
  html += "<h1>vekzol compare</h1>\n";
  html += "<p class=\"files\">Old: <code>" + HtmlEscape(page.oldPath) + "</code><br>New: <code>" +
          HtmlEscape(page.newPath) + "</code></p>\n";
  html += "<p id=\"outcome\">Outcome: ";
  html += outcome;
  html += "</p>\n<table id=\"counts\">\n";
  for (const auto& list : report.lists) AppendCount(html, list);
  for (const auto& list : report.roots) AppendCount(html, list);
  html += "</table>\n<h2>Drawing</h2>\n";
  if (!page.cutNote.empty()) {
    std::string note = page.cutNote;
    note[0] = 'D';
    html += "<p id=\"cut-note\">" + HtmlEscape(note) + "</p>\n";
  }
  html += "<div id=\"drawing\">\n";
  const size_t start = page.svg.find("<svg");
  if (start != std::string::npos) html.append(page.svg, start, std::string::npos);
  if (html.back() != '\n') html += '\n';
  html += "</div>\n<h2>Lists</h2>\n";
  html +=
      "<p><label for=\"filter\">Filter:</label> <input type=\"search\" id=\"filter\" "
      "placeholder=\"part of an id\" autocomplete=\"off\"></p>\n";
  for (const auto& list : report.lists) AppendList(html, list);
  for (const auto& list : report.roots) AppendList(html, list);
  html += kScript;
  return html;
}

}  // namespace vekzol_tool
