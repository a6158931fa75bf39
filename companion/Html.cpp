#include "companion/Html.h"

#include <array>

#include "companion/HtmlStyle.h"
#include "core/Text.h"

namespace loader {

namespace {

constexpr std::array<std::string_view, 7> ToneNames{"plain",  "changed", "reads", "only-a",
                                                    "only-b", "lost",    "good"};
std::string_view NameOfTone(Tone tone) {
  return ToneNames.at(static_cast<std::size_t>(tone));
}

std::string Escaped(std::u16string_view text) {
  std::string safe;
  for (const char c : ToUtf8(text)) {
    switch (c) {
    case '&':
      safe += "&amp;";
      break;
    case '<':
      safe += "&lt;";
      break;
    case '>':
      safe += "&gt;";
      break;
    case '"':
      safe += "&quot;";
      break;
    case '\'':
      safe += "&#39;";
      break;
    default:
      safe += c;
    }
  }
  return safe;
}

std::string Element(std::string_view name, std::string_view style, const std::string& content) {
  std::string element = "<" + std::string(name);
  if (!style.empty()) {
    element += " class=\"" + std::string(style) + "\"";
  }
  return element + ">" + content + "</" + std::string(name) + ">";
}

// Nothing for an empty text.
std::string Optional(std::string_view name, std::string_view style, std::u16string_view text) {
  return text.empty() ? std::string() : Element(name, style, Escaped(text));
}

class PageWriter {
public:
  explicit PageWriter(const HtmlReport& report) : report_(report) {}

  std::string Write() {
    Line("<!DOCTYPE html>");
    Line(report_.language == Language::Japanese ? "<html lang=\"ja\">" : "<html lang=\"en\">");
    WriteHead();
    Line("<body>");
    WriteTop();
    Line("<main>");
    for (std::size_t i = 0; i < report_.groups.size(); ++i) {
      WriteGroup(report_.groups[i], i);
    }
    Line("</main>");
    Line(Element("footer", {}, "paramtool"));
    Line("</body>");
    Line("</html>");
    return std::move(html_);
  }

private:
  void Line(const std::string& text) { html_ += text + "\n"; }
  std::string Words(Phrase phrase) const { return Escaped(PhraseText(phrase, report_.language)); }

  void WriteHead() {
    Line("<head>");
    Line("<meta charset=\"utf-8\">");
    Line("<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">");
    Line("<meta name=\"color-scheme\" content=\"light dark\">");
    Line(Element("title", {}, Escaped(report_.title + u": " + report_.a.name + u", " + report_.b.name)));
    Line("<style>");
    html_ += HtmlStyle;
    Line("</style>");
    Line("</head>");
  }

  std::string MadeAt() const {
    const DateAndTime& at = report_.made;
    const auto two = [](int number) { return Narrow(PaddedDecimal(number, 2)); };
    const std::string day = Narrow(PaddedDecimal(at.year, 4)) + "-" + two(at.month) + "-" + two(at.day);
    const std::string time = two(at.hour) + ":" + two(at.minute) + ":" + two(at.second);
    return "<time datetime=\"" + day + "T" + time + "\">" + day + " " + time + "</time>";
  }

  static std::string Card(const HtmlSetUp& setUp, std::string_view style) {
    return Element("div", "setup " + std::string(style),
                   Optional("span", "letter", setUp.letter) + "<div>" +
                       Element("p", "file", Escaped(setUp.name)) + Optional("p", "model", setUp.model) +
                       Optional("p", "note", setUp.note) + "</div>");
  }

  void WriteTop() {
    Line("<header>");
    Line(Element("h1", {}, Escaped(report_.title)));
    Line(Element("p", "made", MadeAt()));
    Line("<div class=\"setups\">");
    Line(Card(report_.a, "a"));
    Line(Card(report_.b, "b"));
    Line("</div>");
    Line("<ul class=\"counts\">");
    for (const HtmlCount& count : report_.counts) {
      const std::string none = count.count == 0 ? " none" : "";
      Line(Element("li", std::string(NameOfTone(count.tone)) + none,
                   Element("b", {}, std::to_string(count.count)) + " " +
                       Element("span", {}, Escaped(count.label))));
    }
    Line("</ul>");
    if (!report_.summary.empty()) {
      Line(Element("p", "summary", Escaped(report_.summary)));
    }
    WriteContents();
    Line("</header>");
  }

  // For one group they would say what stands just below.
  void WriteContents() {
    if (report_.groups.size() < 2) {
      return;
    }
    Line("<nav><ul>");
    for (std::size_t i = 0; i < report_.groups.size(); ++i) {
      const HtmlGroup& group = report_.groups[i];
      Line("<li><a href=\"#group-" + std::to_string(i + 1) + "\">" + Escaped(group.title) + "</a> " +
           Element("span", "size", std::to_string(group.Rows())) + "</li>");
    }
    Line("</ul></nav>");
  }

  void WriteGroup(const HtmlGroup& group, std::size_t index) {
    Line("<section id=\"group-" + std::to_string(index + 1) + "\">");
    Line(Element("h2", {},
                 Escaped(group.title) + " " + Element("span", "size", std::to_string(group.Rows()))));
    Line("<table>");
    Line("<thead><tr><th scope=\"col\" class=\"name\">" + Words(Phrase::HtmlName) +
         "</th><th scope=\"col\" class=\"value\">" + Escaped(report_.headingA) +
         "</th><th scope=\"col\" class=\"value\">" + Escaped(report_.headingB) +
         "</th><th scope=\"col\" class=\"verdict\">" + Words(Phrase::HtmlVerdict) + "</th></tr></thead>");
    for (const HtmlSubgroup& subgroup : group.subgroups) {
      WriteSubgroup(subgroup);
    }
    Line("</table>");
    Line("</section>");
  }

  void WriteSubgroup(const HtmlSubgroup& subgroup) {
    Line("<tbody>");
    if (!subgroup.title.empty()) {
      Line("<tr class=\"subgroup\"><th scope=\"rowgroup\" colspan=\"4\">" + Escaped(subgroup.title) +
           "</th></tr>");
    }
    for (const HtmlRow& row : subgroup.rows) {
      WriteRow(row);
    }
    Line("</tbody>");
  }

  // On a narrow screen the columns stand below each other, and each value says whose it is.
  static std::string Cell(const HtmlValue& value, std::string_view style, std::u16string_view heading) {
    const std::string look = std::string(style) + (value.absent ? " absent" : "");
    return "<td class=\"" + look + "\" data-of=\"" + Escaped(heading) + "\">" +
           Element("span", "text", Escaped(value.text)) + Optional("span", "note", value.note) + "</td>";
  }

  void WriteRow(const HtmlRow& row) {
    const std::string name =
        Escaped(row.name) + " " + Element("code", {}, Escaped(row.key)) + Optional("span", "note", row.note);
    Line("<tr class=\"" + std::string(NameOfTone(row.tone)) + "\"><th scope=\"row\">" + name + "</th>" +
         Cell(row.a, "a", report_.headingA) + Cell(row.b, "b", report_.headingB) +
         Element("td", "verdict", Escaped(row.verdict) + Optional("span", "note", row.verdictNote)) +
         "</tr>");
  }

  const HtmlReport& report_;
  std::string html_;
};

} // namespace

std::size_t HtmlGroup::Rows() const {
  std::size_t rows = 0;
  for (const HtmlSubgroup& subgroup : subgroups) {
    rows += subgroup.rows.size();
  }
  return rows;
}

std::string HtmlPage(const HtmlReport& report) {
  return PageWriter(report).Write();
}

} // namespace loader
