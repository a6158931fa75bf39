// From the arguments to the exit code.
#include <QCoreApplication>
#include <QLibraryInfo>
#include <QTranslator>
#include <exception>

#include "core/Text.h"
#include "paramtool/Command.h"
#include "paramtool/Json.h"
#include "paramtool/Wildcards.h"
#include "platform/RunTimeFailure.h"

namespace loader::paramtool {

namespace {

const QString HelpOption = QStringLiteral("help");

QStringList NamesOf(const OptionRow& row) {
  return QString::fromLatin1(row.names).split(QLatin1Char(','));
}

void AddOptions(QCommandLineParser& parser, std::span<const OptionRow> rows, Language language) {
  for (const OptionRow& row : rows) {
    QCommandLineOption option(NamesOf(row), Q(PhraseText(row.says, language)));
    if (row.value != nullptr) {
      option.setValueName(QLatin1String(row.value));
    }
    parser.addOption(option);
  }
}

void SetUpParser(QCommandLineParser& parser, const Command* command, Language language) {
  AddOptions(parser, CommonOptions(), language);
  if (command != nullptr) {
    AddOptions(parser, command->options, language);
  }
  parser.addOption(
      QCommandLineOption({QStringLiteral("h"), HelpOption}, Q(PhraseText(Phrase::OptionHelp, language))));
}

// Qt's own words of a help text ("Usage:") in the user's language.
void TranslateQt(Language language) {
  static QTranslator translator;
  if (language == Language::Japanese &&
      translator.load(QStringLiteral("qtbase_ja"), QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
    QCoreApplication::installTranslator(&translator);
  }
}

// Asked before anything else is read, so that wrong usage is told in it too.
Language AskedLanguage(const QStringList& arguments) {
  const qsizetype at = arguments.lastIndexOf(QStringLiteral("--lang"));
  const bool english = (at >= 0 && arguments.value(at + 1) == QLatin1String("en")) ||
                       arguments.contains(QStringLiteral("--lang=en"));
  return english ? Language::English : Language::Japanese;
}

// The first word that is a command: the value of an option may stand before it ("--jobs 8 fleet"). Where none
// is, the first one that is neither an option nor the value of --lang or --model.
qsizetype CommandAt(const QStringList& arguments) {
  qsizetype first = -1;
  for (qsizetype at = 1; at < arguments.size(); ++at) {
    const QString& word = arguments.at(at);
    if (word == HelpOption || FindCommand(word) != nullptr) {
      return at;
    }
    if (word == QLatin1String("--lang") || word == QLatin1String("--model")) {
      ++at;
    } else if (first < 0 && !word.startsWith(QLatin1Char('-'))) {
      first = at;
    }
  }
  return first;
}

std::u16string HeadedBlock(Phrase heading, Language language, std::u16string_view text) {
  return u"\n" + std::u16string(PhraseText(heading, language)) + u":\n" + std::u16string(text) + u"\n";
}

[[noreturn]] void RefuseCount(const Command& command, Language language) {
  throw WrongUsage{Say(Phrase::WrongCount, language,
                       {{u"USAGE", u"paramtool " + Widen(command.name) + u" " + Widen(command.usage)}})};
}

std::string CheckedModel(const QCommandLineParser& parser, Language language) {
  std::string model = parser.value(QStringLiteral("model")).toStdString();
  if (!model.empty() && !IsModelCode(model)) {
    throw WrongUsage{std::u16string(PhraseText(Phrase::WrongModel, language))};
  }
  return model;
}

void CheckLanguage(const QCommandLineParser& parser, Language language) {
  const QString asked = parser.value(QStringLiteral("lang"));
  if (!asked.isEmpty() && asked != QLatin1String("ja") && asked != QLatin1String("en")) {
    throw WrongUsage{std::u16string(PhraseText(Phrase::WrongLanguage, language))};
  }
}

Exit RunCommand(const Command& command, QStringList arguments, qsizetype at, Language language, Output& out) {
  arguments.removeAt(at);
  QCommandLineParser parser;
  SetUpParser(parser, &command, language);
  if (!parser.parse(arguments)) {
    throw WrongUsage{parser.errorText().toStdU16String()};
  }
  if (parser.isSet(HelpOption)) {
    out.Raw(ToUtf8(CommandHelp(command, language)));
    return Exit::Good;
  }
  CheckLanguage(parser, language);
  Call call{.options = parser,
            .arguments = WithFiles(command, parser.positionalArguments()),
            .speech = {language, parser.isSet(QStringLiteral("secrets"))},
            .json = parser.isSet(QStringLiteral("json")),
            .model = CheckedModel(parser, language),
            .out = out,
            .command = command.name};
  const qsizetype count = call.arguments.size();
  if (count < command.fewest || (command.most >= 0 && count > command.most)) {
    RefuseCount(command, language);
  }
  return command.run(call);
}

Exit RunHelp(const QStringList& arguments, Language language, Output& out) {
  for (const QString& word : arguments.mid(1)) {
    if (const Command* command = FindCommand(word)) {
      out.Raw(ToUtf8(CommandHelp(*command, language)));
      return Exit::Good;
    }
  }
  out.Raw(ToUtf8(ProgramHelp(language)));
  return Exit::Good;
}

Exit Dispatch(const QStringList& arguments, Language language, Output& out) {
  if (arguments.contains(QStringLiteral("--version"))) {
    out.Line(u"paramtool " + QCoreApplication::applicationVersion().toStdU16String());
    return Exit::Good;
  }
  const qsizetype at = CommandAt(arguments);
  if (at < 0 || arguments.at(at) == HelpOption) {
    const bool asked =
        at >= 0 || arguments.contains(QStringLiteral("--help")) || arguments.contains(QStringLiteral("-h"));
    if (!asked) {
      throw WrongUsage{std::u16string(PhraseText(Phrase::HelpHint, language))};
    }
    return RunHelp(arguments, language, out);
  }
  const Command* command = FindCommand(arguments.at(at));
  if (command == nullptr) {
    throw WrongUsage{
        Say(Phrase::UnknownCommand, language, {{u"COMMAND", arguments.at(at).toStdU16String()}})};
  }
  return RunCommand(*command, arguments, at, language, out);
}

// What could not be done is told on both: a script reads the one, a person the other.
Exit Fail(Output& out, bool json, std::u16string_view message, Exit exit) {
  Output::Message(message);
  if (json) {
    out.Json({{QStringLiteral("form"), ReportForm}, {QStringLiteral("error"), Q(message)}});
  }
  return exit;
}

} // namespace

std::u16string ProgramHelp(Language language) {
  std::u16string help = u"paramtool: " + std::u16string(PhraseText(Phrase::ProgramSummary, language)) + u"\n";
  std::u16string commands;
  for (const Command& command : Commands()) {
    constexpr std::size_t NameWidth = 10;
    std::u16string name = Widen(command.name);
    name.resize(NameWidth, u' ');
    commands += u"  " + name + std::u16string(PhraseText(command.summary, language)) + u"\n";
  }
  commands.pop_back();
  help += HeadedBlock(Phrase::UsageHeading, language, u"  paramtool COMMAND [OPTIONS] ...");
  help += HeadedBlock(Phrase::CommandsHeading, language, commands);
  help += HeadedBlock(Phrase::SetUpsHeading, language, PhraseText(Phrase::SetUpsHelp, language));
  help += u"\n" + std::u16string(PhraseText(Phrase::ExitCodesHelp, language)) + u"\n";
  return help + std::u16string(PhraseText(Phrase::HelpHint, language)) + u"\n";
}

std::u16string CommandHelp(const Command& command, Language language) {
  TranslateQt(language);
  QCommandLineParser parser;
  SetUpParser(parser, &command, language);
  parser.setApplicationDescription(Q(PhraseText(command.help, language)));
  const QString name = QLatin1String(command.name);
  parser.addPositionalArgument(name, Q(PhraseText(command.summary, language)),
                               name + QLatin1Char(' ') + QLatin1String(command.usage));
  std::u16string examples;
  for (const QString& line : QString::fromUtf8(command.examples).split(QLatin1Char('\n'))) {
    examples += u"  " + line.toStdU16String() + u"\n";
  }
  examples.pop_back();
  return parser.helpText().toStdU16String() + HeadedBlock(Phrase::ExamplesHeading, language, examples);
}

Exit Run(const QStringList& arguments) {
  const Language language = AskedLanguage(arguments);
  const bool json = arguments.contains(QStringLiteral("--json"));
  Output out;
  Exit exit = Exit::Failed;
  try {
    exit = Dispatch(arguments, language, out);
  } catch (const WrongUsage& wrong) {
    exit = Fail(out, json, wrong.message, Exit::Usage);
  } catch (const Undone& undone) {
    exit = Fail(out, json, undone.message, Exit::Failed);
  } catch (const std::exception& failure) {
    exit = Fail(out, json, Say(Phrase::UnexpectedFailure, language, {{u"REASON", FromUtf8(failure.what())}}),
                Exit::Failed);
  }
  if (!out.Flush(exit)) {
    Output::Message(PhraseText(Phrase::OutputFailed, language));
    return Exit::Failed;
  }
  return exit;
}

} // namespace loader::paramtool
