// The commands of paramtool: what every command is, and what it gets of its call.
//
// A command is a row of the table in Commands.cpp and one file. It works on what companion/ knows, says its
// results through Output, and says what could not be done by throwing Undone.
#pragma once

#include <QCommandLineParser>
#include <QJsonObject>
#include <QString>
#include <QStringList>
#include <filesystem>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "companion/Parameters.h"
#include "companion/Phrases.h"
#include "companion/Selection.h"
#include "companion/SetUps.h"

namespace loader::paramtool {

enum class Exit {
  Good = 0,      // as asked, and equal
  Different = 1, // different, or defects found
  Failed = 2,    // could not be done
  Usage = 64,    // wrong usage
};

// Wrong usage, in the user's words.
struct WrongUsage {
  std::u16string message;
};

// Results go to the standard output when the command has ended, in one piece; messages and progress to the
// standard error output at once.
class Output {
public:
  void Line(std::u16string_view text = {});
  // The whole of a JSON report; in place of lines.
  void Json(const QJsonObject& report);
  // Bytes of a result that is no report (help, a completion script).
  void Raw(std::string_view bytes);
  // A line of its own on the standard error output.
  static void Message(std::u16string_view text);
  // With the exit code in a JSON report. False when the standard output does not take it all: a closed pipe,
  // a full disk.
  [[nodiscard]] bool Flush(Exit exit);

private:
  std::string bytes_;
  std::optional<QJsonObject> json_;
};

struct Call {
  const QCommandLineParser& options;
  QStringList arguments; // without the command's name
  Speech speech;         // --lang, --secrets
  bool json = false;
  std::string model; // --model; empty: by content
  Output& out;
  const char* command = "";

  // What every JSON report begins with: the version of its form, and the command.
  [[nodiscard]] QJsonObject Report() const;
  [[nodiscard]] Language language() const { return speech.language; }
  [[nodiscard]] std::u16string Argument(int at) const { return arguments.at(at).toStdU16String(); }
  [[nodiscard]] bool Has(const char* option) const { return options.isSet(QString::fromLatin1(option)); }
  // Of an option with a value; empty when it was not given.
  [[nodiscard]] std::u16string Value(const char* option) const {
    return options.value(QString::fromLatin1(option)).toStdU16String();
  }
  // The file of --output; WrongUsage when it was not given.
  [[nodiscard]] std::filesystem::path OutputFile() const;
  // The patterns of an option that may be given several times.
  [[nodiscard]] std::vector<Selection> Selections(const char* option) const;
};

// An option of a command. Without a value name it is a switch.
struct OptionRow {
  const char* names; // "o,output": short ones first
  Phrase says;
  const char* value = nullptr; // "FILE"
};

struct Command {
  const char* name;
  const char* usage; // what stands behind the name: "A B"
  int fewest;        // arguments
  int most;          // -1: any number
  Phrase summary;    // one line
  Phrase help;       // what it does, in a paragraph or two
  const char* examples;
  std::span<const OptionRow> options; // beside those that all commands have
  Exit (*run)(Call& call);
};

// In the order of the help.
[[nodiscard]] std::span<const Command> Commands();
// nullptr for a name that is none.
[[nodiscard]] const Command* FindCommand(const QString& name);

// Of every command: --lang, --json, --secrets, --model, --help.
[[nodiscard]] std::span<const OptionRow> CommonOptions();
[[nodiscard]] std::u16string ProgramHelp(Language language);
[[nodiscard]] std::u16string CommandHelp(const Command& command, Language language);

// Each stands in the file of its name, with its options.
[[nodiscard]] Exit RunCheck(Call& call);
[[nodiscard]] Exit RunShow(Call& call);
[[nodiscard]] Exit RunCompare(Call& call);
[[nodiscard]] Exit RunConvert(Call& call);
[[nodiscard]] Exit RunPrint(Call& call);
[[nodiscard]] Exit RunSet(Call& call);
[[nodiscard]] Exit RunMerge(Call& call);
[[nodiscard]] Exit RunDecode(Call& call);
[[nodiscard]] Exit RunRead(Call& call);
[[nodiscard]] Exit RunWrite(Call& call);
[[nodiscard]] Exit RunFleet(Call& call);

// The whole program, from the arguments (the program's own name is the first) to its exit code. A platform is
// in force.
[[nodiscard]] Exit Run(const QStringList& arguments);

} // namespace loader::paramtool
