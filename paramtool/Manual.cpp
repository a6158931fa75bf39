#include "paramtool/Manual.h"

#include <algorithm>

#include "core/Text.h"
#include "paramtool/Command.h"

namespace loader::paramtool {

namespace {

constexpr std::string_view Head =
    R"(.\" Made from the table of commands by "manual man en" and "manual man ja"; do not edit it.
)";

// One line of text: what man(7) would take for its own is escaped.
std::string Escaped(std::string_view line) {
  std::string escaped;
  if (line.starts_with('.') || line.starts_with('\'')) {
    escaped = "\\&";
  }
  for (const char c : line) {
    if (c == '\\') {
      escaped += "\\e";
    } else if (c == '-') {
      escaped += "\\-"; // a minus, which can be copied into a command line, and no hyphen
    } else if (c == '\'') {
      escaped += "\\(aq";
    } else if (c == '^') {
      escaped += "\\(ha";
    } else if (c == '~') {
      escaped += "\\(ti";
    } else if (c == '`') {
      escaped += "\\(ga";
    } else {
      escaped += c;
    }
  }
  return escaped;
}

std::vector<std::string> LinesOf(std::string_view text) {
  std::vector<std::string> lines;
  while (true) {
    const std::size_t end = text.find('\n');
    lines.emplace_back(text.substr(0, end));
    if (end == std::string_view::npos) {
      return lines;
    }
    text.remove_prefix(end + 1);
  }
}

class Page {
public:
  explicit Page(Language language) : language_(language) {}

  [[nodiscard]] std::string Text(Phrase id) const { return ToUtf8(PhraseText(id, language_)); }
  void Raw(std::string_view line) { bytes_ += std::string(line) + "\n"; }
  // In capitals, as manual pages have them.
  void Section(Phrase heading) {
    std::string text = Text(heading);
    std::ranges::transform(text, text.begin(), [](char c) {
      return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
    });
    Raw(".SH " + Escaped(text));
  }
  // The lines of a phrase stay lines.
  void Lines(std::string_view text) {
    bool first = true;
    for (const std::string& line : LinesOf(text)) {
      if (line.empty()) {
        Raw(".PP");
        first = true;
        continue;
      }
      if (!first) {
        Raw(".br");
      }
      Raw(Escaped(line));
      first = false;
    }
  }
  // As it stands: tables and command lines.
  void AsItStands(std::string_view text) {
    Raw(".nf");
    for (const std::string& line : LinesOf(text)) {
      Raw(line.empty() ? ".sp" : Escaped(line));
    }
    Raw(".fi");
  }
  void Option(const OptionRow& row) {
    Raw(".TP");
    std::string line = "\\fB";
    for (const char* c = row.names; *c != '\0'; ++c) {
      const bool first = c == row.names || *(c - 1) == ',';
      const bool isShort = first && (c[1] == '\0' || c[1] == ',');
      if (first) {
        line += isShort ? "\\-" : "\\-\\-";
      }
      line += *c == ',' ? std::string("\\fR, \\fB") : Escaped(std::string_view(c, 1));
    }
    line += "\\fR";
    Raw(row.value == nullptr ? line : line + " \\fI" + Escaped(row.value) + "\\fR");
    Lines(Text(row.says));
  }
  [[nodiscard]] std::string Take() { return std::move(bytes_); }

private:
  Language language_;
  std::string bytes_;
};

void WriteName(Page& page) {
  page.Section(Phrase::ManualName);
  page.Raw("paramtool \\- " + Escaped(page.Text(Phrase::ProgramSummary)));
}

void WriteSynopsis(Page& page) {
  page.Section(Phrase::ManualSynopsis);
  for (const Command& command : Commands()) {
    if (&command != Commands().data()) {
      page.Raw(".br");
    }
    page.Raw(std::string("\\fBparamtool ") + command.name + "\\fR " + Escaped(command.usage) +
             " [\\fIOPTIONS\\fR]");
  }
  page.Raw(".br");
  page.Raw("\\fBparamtool help\\fR [\\fICOMMAND\\fR]");
}

void WriteCommand(Page& page, const Command& command) {
  page.Raw(std::string(".SS ") + command.name + " " + Escaped(command.usage));
  page.Lines(page.Text(command.help));
  for (const OptionRow& option : command.options) {
    page.Option(option);
  }
  page.Raw(".PP");
  page.Raw(Escaped(page.Text(Phrase::ExamplesHeading)) + ":");
  page.Raw(".PP");
  page.Raw(".RS 4");
  page.AsItStands(command.examples);
  page.Raw(".RE");
}

} // namespace

std::string ManualPage(Language language) {
  Page page(language);
  page.Raw(R"(.TH PARAMTOOL 1 "" paramtool)");
  page.Raw(".ad l");
  page.Raw(".nh");
  WriteName(page);
  WriteSynopsis(page);
  page.Section(Phrase::ManualDescription);
  page.Lines(page.Text(Phrase::ManualText));
  page.Section(Phrase::SetUpsHeading);
  page.AsItStands(page.Text(Phrase::SetUpsHelp));
  page.Section(Phrase::CommandsHeading);
  for (const Command& command : Commands()) {
    WriteCommand(page, command);
  }
  page.Section(Phrase::ManualCommonOptions);
  for (const OptionRow& option : CommonOptions()) {
    page.Option(option);
  }
  page.Option({"h,help", Phrase::OptionHelp});
  page.Option({"version", Phrase::OptionVersion});
  page.Section(Phrase::ManualExit);
  page.Lines(page.Text(Phrase::ExitCodesHelp));
  page.Section(Phrase::ManualFiles);
  page.Lines(page.Text(Phrase::ManualFilesText));
  return std::string(Head) + page.Take();
}

} // namespace loader::paramtool
