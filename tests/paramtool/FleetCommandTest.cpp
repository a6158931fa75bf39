// paramtool fleet as a user runs it: recorders of a list, dead ones among them.
#include <gtest/gtest.h>

#include <QDir>
#include <algorithm>
#include <csignal>
#include <sstream>

#include "tests/paramtool/FleetTest.h"

namespace loader::test {
namespace {

using FleetCommand = FleetTest;
using Words = std::vector<std::string>;
constexpr const char* Rug = "V12W"; // a plant that a file holds as it is

Words LinesOf(const std::string& text) {
  Words lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) {
    lines.push_back(line);
  }
  return lines;
}

std::string Row(const std::string& name, const std::string& address, const std::string& model,
                const std::string& file) {
  return name + "," + address + "," + model + "," + file;
}

// --- The list

TEST_F(FleetCommand, TellsEveryDefectOfTheListBeforeAnythingRuns) {
  SilentRecorder recorder;
  WriteList({Row("A", recorder.Address(), "RUG", "a.RUG"), Row("A", "tcp:", "XYZ", "b.RUG"),
             Row("C", "tcp:c", "", "plant.csv")});
  const Ended ended = Fleet({"read"});
  EXPECT_EQ(ended.status, ExitFailed);
  EXPECT_EQ(ended.output, "");
  const std::string list = "paramtool: FOLDER/plant.csv";
  EXPECT_EQ(
      LinesOf(WithoutFolder(ended.errors)),
      (Words{list + ":3: XYZ: the models are KOV and RUG", list + ":4: file \"plant.csv\" is the list itself",
             list + ": nothing was done, defects in the list: 2"}));
  EXPECT_EQ(Files(), (Words{"plant.csv"}));
  const QJsonObject report = Report(Fleet({"read", "--json"}));
  const QJsonArray defects = report.value(QStringLiteral("defects")).toArray();
  ASSERT_EQ(defects.size(), 2);
  EXPECT_EQ(defects.at(0).toObject().value(QStringLiteral("line")).toInt(), 3);
  EXPECT_NE(report.value(QStringLiteral("error")).toString(), QString());
}

// The set-up of one would take the place of the other's.
TEST_F(FleetCommand, OneFileUnderTwoNamesIsADefect) {
  std::filesystem::create_directory(File("real"));
  std::filesystem::create_directory_symlink("real", File("link"));
  WriteList({Row("A", "tcp:a", "", "real/a.RUG"), Row("B", "tcp:b", "", "link/a.RUG"),
             Row("C", "tcp:c", "", "c.RUG"), Row("D", "tcp:d", "", File("c.RUG")),
             Row("E", "tcp:e", "", "link/e.RUG")});
  const Ended ended = Fleet({"read"});
  EXPECT_EQ(ended.status, ExitFailed);
  const std::string list = "paramtool: FOLDER/plant.csv";
  EXPECT_EQ(LinesOf(WithoutFolder(ended.errors)),
            (Words{list + ":3: file \"link/a.RUG\" is that of line 2",
                   list + ":5: file \"FOLDER/c.RUG\" is that of line 4",
                   list + ": nothing was done, defects in the list: 2"}));
}

TEST_F(FleetCommand, AListThatCannotBeReadIsTold) {
  const Ended ended = Fleet({"read"});
  EXPECT_EQ(ended.status, ExitFailed);
  EXPECT_TRUE(ended.errors.starts_with("paramtool: " + File("plant.csv") + ": the list cannot be read ("))
      << ended.errors;
}

TEST_F(FleetCommand, OptionsOfAnotherActionAreWrongUsage) {
  WriteList({Row("A", NobodyThere(), "", "a.RUG")});
  const std::vector<Words> wrong{
      {"erase"},
      {"read", "--yes"},
      {"read", "--store"},
      {"compare", "--no-commit"},
      {"compare", "--no-backup"},
      {"write", "--only", "CH1"},
      {"write", "--files"},
      {"write", "--yes", "--no-backup", "--backup-folder", "x"},
      {"read", "reference.RUG"},
      {"compare", "--files"},
      {"compare", "tcp:host"},
      {"read", "--jobs", "0"},
      {"read", "--jobs", "65"},
      {"read", "--jobs", "x"},
      {"read", "--timeout", "0"},
      {},
  };
  for (const Words& arguments : wrong) {
    const Ended ended = Fleet(arguments);
    EXPECT_EQ(ended.status, ExitUsage) << testing::PrintToString(arguments);
    EXPECT_EQ(ended.output, "") << testing::PrintToString(arguments);
  }
}

// --- read

TEST_F(FleetCommand, ReadsEachRecorderToItsFile) {
  const auto one = StartPlainRecorder(Rug);
  const auto two = StartPlainRecorder("V09W");
  const std::string dead = NobodyThere();
  WriteList({Row("ボイラ 1", TcpOf(*one), "RUG", "炉 1.RUG"),
             Row("\"Dryer, left\"", TcpOf(*two), "", "line 2/dryer.RUG"),
             Row("Dead", dead, "KOV", "dead.KOV")});
  const Ended ended = Fleet({"read", "-d", File("backup")});
  EXPECT_EQ(ended.status, ExitDifferent);
  const std::string direct = File("direct.RUG");
  EXPECT_EQ(Tool({"read", TcpOf(*one), "-o", direct}).status, ExitGood);
  EXPECT_TRUE(Read("backup/炉 1.RUG") == Read("direct.RUG"));
  EXPECT_TRUE(Exists("backup/line 2/dryer.RUG"));
  EXPECT_FALSE(Exists("backup/dead.KOV"));
  const Words table = LinesOf(ended.output);
  ASSERT_EQ(table.size(), 5U) << ended.output;
  EXPECT_TRUE(table[0].starts_with("Name ")) << table[0];
  EXPECT_TRUE(table[1].starts_with("ボイラ 1     " + TcpOf(*one) + "  RUG V12W  saved, new ")) << table[1];
  EXPECT_TRUE(table[2].starts_with("Dryer, left  " + TcpOf(*two) + "  RUG V09W  saved, new ")) << table[2];
  EXPECT_TRUE(table[3].starts_with("Dead         " + dead + " ")) << table[3];
  EXPECT_NE(table[3].find("  failed: "), std::string::npos) << table[3];
  EXPECT_EQ(table[4], "recorders: 3, good: 2, different: 0, failed: 1, interrupted or not done: 0");
  // As they end.
  const Words told = LinesOf(ended.errors);
  ASSERT_EQ(told.size(), 3U) << ended.errors;
  EXPECT_TRUE(told[0].starts_with("paramtool: 1/3 ")) << told[0];
  EXPECT_TRUE(told[2].starts_with("paramtool: 3/3 ")) << told[2];
}

TEST_F(FleetCommand, AFileWhoseSettingsHaveNotChangedIsNotTouched) {
  const auto recorder = StartPlainRecorder(Rug);
  WriteList({Row("A", TcpOf(*recorder), "RUG", "a.RUG")});
  ASSERT_EQ(Fleet({"read"}).status, ExitGood);
  // As if it had been read long ago: at another time of the recorder's clock.
  std::string before = Read("a.RUG");
  const std::size_t minute = before.find("MINT,") + 5;
  before.replace(minute, before.find('\r', minute) - minute, "61");
  Write("a.RUG", before);
  std::filesystem::last_write_time(File("a.RUG"),
                                   std::filesystem::file_time_type::clock::now() - std::chrono::hours(24));
  const auto long_ago = std::filesystem::last_write_time(File("a.RUG"));
  const Ended again = Fleet({"read", "--json"});
  EXPECT_EQ(Texts(Report(again)), (Words{"unchanged"}));
  EXPECT_TRUE(Read("a.RUG") == before);
  EXPECT_EQ(std::filesystem::last_write_time(File("a.RUG")), long_ago);
  // And one with a change is.
  const std::size_t limit = before.find("C02MMAX,") + 8;
  Write("a.RUG", before.replace(limit, before.find('\r', limit) - limit, "77"));
  EXPECT_EQ(Texts(Report(Fleet({"read", "--json"}))), (Words{"saved, parameters changed: 1"}));
  EXPECT_FALSE(Read("a.RUG") == before);
  // What stands there and is no parameter file is replaced and told.
  Write("a.RUG", "x");
  EXPECT_EQ(Texts(Report(Fleet({"read", "--json"}))), (Words{"saved in place of another file"}));
}

TEST_F(FleetCommand, TheModelOfTheCallIsThatOfRowsWithoutOne) {
  const auto recorder = StartPlainRecorder(Rug);
  WriteList({Row("A", TcpOf(*recorder), "", "a.KOV")});
  EXPECT_EQ(Outcomes(Report(Fleet({"read", "--model", "KOV", "--json"}))), (Words{"failed"}));
  WriteList({Row("A", TcpOf(*recorder), "RUG", "a.KOV")});
  EXPECT_EQ(Outcomes(Report(Fleet({"read", "--model", "KOV", "--json"}))), (Words{"good"}));
}

TEST_F(FleetCommand, TheReportHoldsThatOfEachRecorder) {
  const auto recorder = StartPlainRecorder(Rug);
  const std::string dead = NobodyThere();
  WriteList({Row("A", TcpOf(*recorder), "", "a.RUG"), Row("B", dead, "KOV", "b.KOV")});
  const QJsonObject report = Report(Fleet({"read", "--json"}));
  EXPECT_EQ(report.value(QStringLiteral("form")).toInt(), 1);
  EXPECT_EQ(report.value(QStringLiteral("command")).toString(), QStringLiteral("fleet"));
  EXPECT_EQ(report.value(QStringLiteral("action")).toString(), QStringLiteral("read"));
  EXPECT_EQ(report.value(QStringLiteral("exit")).toInt(), ExitDifferent);
  EXPECT_FALSE(report.value(QStringLiteral("interrupted")).toBool(true));
  EXPECT_GT(report.value(QStringLiteral("seconds")).toDouble(), 0);
  EXPECT_EQ(report.value(QStringLiteral("counts")).toObject(), (QJsonObject{{QStringLiteral("good"), 1},
                                                                            {QStringLiteral("different"), 0},
                                                                            {QStringLiteral("failed"), 1},
                                                                            {QStringLiteral("stopped"), 0}}));
  const QJsonArray recorders = report.value(QStringLiteral("recorders")).toArray();
  ASSERT_EQ(recorders.size(), 2);
  const QJsonObject first = recorders.at(0).toObject();
  EXPECT_EQ(first.keys(), (QStringList{"address", "file", "line", "model", "name", "outcome", "report",
                                       "seconds", "text"}));
  EXPECT_EQ(QDir::fromNativeSeparators(first.value(QStringLiteral("file")).toString()).toStdString(),
            File("a.RUG"));
  const QJsonObject own = first.value(QStringLiteral("report")).toObject();
  EXPECT_EQ(own.value(QStringLiteral("command")).toString(), QStringLiteral("read"));
  EXPECT_EQ(QDir::fromNativeSeparators(own.value(QStringLiteral("file")).toString()).toStdString(),
            File("a.RUG"));
  EXPECT_EQ(own.value(QStringLiteral("recorder")).toObject().value(QStringLiteral("version")).toString(),
            QStringLiteral("V12W"));
  const QJsonObject second = recorders.at(1).toObject();
  EXPECT_EQ(second.value(QStringLiteral("outcome")).toString(), QStringLiteral("failed"));
  EXPECT_NE(second.value(QStringLiteral("report")).toObject().value(QStringLiteral("error")).toString(),
            QString());
}

// --- compare

TEST_F(FleetCommand, ComparesRecordersWithTheirFilesAndWithAReference) {
  const auto one = StartPlainRecorder(Rug);
  const auto two = StartPlainRecorder(Rug);
  WriteList({Row("A", TcpOf(*one), "RUG", "a.RUG"), Row("B", TcpOf(*two), "RUG", "b.RUG")});
  ASSERT_EQ(Fleet({"read"}).status, ExitGood);
  std::string other = Read("b.RUG");
  const std::size_t limit = other.find("C02MMAX,") + 8;
  Write("b.RUG", other.replace(limit, other.find('\r', limit) - limit, "77"));
  const Ended compared = Fleet({"compare", "--only", "CH*", "--json"});
  EXPECT_EQ(compared.status, ExitDifferent);
  EXPECT_EQ(Texts(Report(compared)), (Words{"equal", "different, parameters: 1"}));
  EXPECT_EQ(Outcomes(Report(compared)), (Words{"good", "different"}));
  EXPECT_EQ(Fleet({"compare", File("a.RUG"), "--only", "CH3"}).status, ExitGood);
  // With --files the recorders are not asked: they are gone.
  (void)one->Stop(SIGTERM);
  (void)two->Stop(SIGTERM);
  const auto files = [&](const Words& more) {
    Words arguments{"compare", File("a.RUG"), "--files", "--json"};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return Report(Fleet(arguments));
  };
  EXPECT_EQ(Texts(files({})), (Words{"equal", "different, parameters: 1"}));
  EXPECT_EQ(Texts(files({"--ignore", "CH3"})), (Words{"equal", "equal"}));
}

// Every night it would fail otherwise, and nobody would see the recorder that is dead.
TEST_F(FleetCommand, AReadOfWhatNoFileCanKeepIsToldAndFailsNothing) {
  const auto recorder = StartRecorder("V40A");
  WriteList({Row("A", TcpOf(*recorder), "KOV", "a.KOV")});
  const Ended read = Fleet({"read", "--json"});
  EXPECT_EQ(read.status, ExitGood) << read.errors;
  EXPECT_EQ(Texts(Report(read)), (Words{"saved, new (parameters that no file can keep: 2)"}));
  EXPECT_EQ(Tool({"read", TcpOf(*recorder), "-o", File("b.KOV")}).status, ExitDifferent);
}

// --- write

std::string WithLimit(std::string bytes, const std::string& value) {
  const std::size_t limit = bytes.find("C02MMAX,") + 8;
  return bytes.replace(limit, bytes.find('\r', limit) - limit, value);
}

TEST_F(FleetCommand, WritesWithProofAndTheBackupsCanBeWrittenBackWithTheSameList) {
  const auto one = StartPlainRecorder(Rug);
  const auto two = StartPlainRecorder(Rug);
  WriteList({Row("A", TcpOf(*one), "RUG", "line 1/a.RUG"), Row("B", TcpOf(*two), "RUG", "b.RUG"),
             Row("Dead", NobodyThere(), "RUG", "b2.RUG")});
  EXPECT_EQ(Fleet({"read", "-d", File("new")}).status, ExitDifferent);
  const std::string before = Read("new/b.RUG");
  Write("new/line 1/a.RUG", WithLimit(before, "77"));
  Write("new/b.RUG", WithLimit(before, "78"));
  Write("new/b2.RUG", before);

  const Ended dry = Fleet({"write", "-d", File("new"), "--json"});
  EXPECT_EQ(dry.status, ExitDifferent);
  EXPECT_EQ(Texts(Report(dry))[0], "dry run: parameters to change: 1, losses: 0");

  const Ended written =
      Fleet({"write", "-d", File("new"), "--yes", "--store", "--backup-folder", File("before"), "--json"});
  EXPECT_EQ(written.status, ExitDifferent);
  EXPECT_EQ(Outcomes(Report(written)), (Words{"good", "good", "failed"}));
  EXPECT_EQ(Texts(Report(written))[1], "written and verified");
  EXPECT_EQ(Outcomes(Report(Fleet({"compare", "-d", File("new"), "--only", "CH*", "--json"}))),
            (Words{"good", "good", "failed"}));

  const auto runs = std::filesystem::directory_iterator(File("before"));
  const std::string run = runs->path().string();
  EXPECT_TRUE(std::filesystem::exists(run + "/line 1/a.RUG"));
  EXPECT_EQ(Outcomes(Report(Fleet({"write", "-d", run, "--yes", "--no-backup", "--json"}))),
            (Words{"good", "good", "failed"}));
  EXPECT_EQ(Fleet({"read", "-d", File("again")}).status, ExitDifferent);
  EXPECT_TRUE(Read("again/b.RUG").find("C02MMAX,78\r") == std::string::npos);
}

// --- Waiting, ending

TEST_F(FleetCommand, OneThatIsTooSlowIsEndedAndTold) {
  // Shorter than the link's own patience with a silent one (5 s), longer than the reading of a good one.
  constexpr const char* Seconds = "4";
  SilentRecorder silent;
  const auto recorder = StartPlainRecorder(Rug);
  WriteList({Row("Silent", silent.Address(), "RUG", "a.RUG"), Row("B", TcpOf(*recorder), "RUG", "b.RUG")});
  const Ended ended = Fleet({"read", "--timeout", Seconds, "--jobs", "1", "--json"});
  EXPECT_EQ(ended.status, ExitDifferent);
  const Words texts = Texts(Report(ended));
  ASSERT_EQ(texts.size(), 2U);
  EXPECT_TRUE(texts[0].starts_with(std::string("failed: ended after ") + Seconds + " s")) << texts[0];
  EXPECT_EQ(texts[1], "saved, new");
  EXPECT_EQ(Files(), (Words{"b.RUG", "plant.csv"}));
}

TEST_F(FleetCommand, CtrlCEndsAllAndTellsWhatWasDone) {
  for (const int signal : {Interrupt, Terminate, HangUp}) {
    const auto recorder = StartPlainRecorder(Rug);
    SilentRecorder silent;
    WriteList({Row("A", TcpOf(*recorder), "RUG", "a.RUG"), Row("Silent", silent.Address(), "RUG", "b.RUG"),
               Row("C", TcpOf(*recorder) + "#2", "RUG", "c.RUG")});
    RunningProcess fleet(ToolProgram(),
                         {"fleet", File("plant.csv"), "read", "--jobs", "1", "--json", "--lang", "en"},
                         {.console = true});
    silent.WaitForClient();
    fleet.Signal(signal);
    const Ended ended = fleet.Wait();
    EXPECT_EQ(ended.status, ExitDifferent) << ended.errors;
    EXPECT_TRUE(silent.ClientHasGone());
    const QJsonObject report = Report(ended);
    EXPECT_TRUE(report.value(QStringLiteral("interrupted")).toBool());
    const Words texts = Texts(report);
    ASSERT_EQ(texts.size(), 3U) << ended.errors;
    EXPECT_EQ(texts[0], "saved, new");
    EXPECT_TRUE(texts[1].starts_with("interrupted")) << texts[1];
    EXPECT_EQ(texts[2], "not done");
    EXPECT_EQ(Outcomes(report), (Words{"good", "stopped", "stopped"}));
    EXPECT_EQ(Files(), (Words{"a.RUG", "plant.csv"}));
    EXPECT_TRUE(Read("a.RUG").ends_with("\r\n"));
    std::filesystem::remove(File("a.RUG"));
  }
}

TEST_F(FleetCommand, AReaderThatHasGoneIsToldAndTheFilesAreThere) {
  const auto recorder = StartPlainRecorder(Rug);
  WriteList({Row("A", TcpOf(*recorder), "RUG", "a.RUG")});
  RunningProcess fleet(ToolProgram(), {"fleet", File("plant.csv"), "read", "--lang", "en"});
  fleet.CloseOutput();
  const Ended ended = fleet.Wait();
  EXPECT_EQ(ended.status, ExitFailed);
  EXPECT_TRUE(ended.errors.ends_with("paramtool: the results could not be written to the standard output\n"));
  EXPECT_TRUE(Exists("a.RUG"));
}

// --- A whole plant

// 30 recorders, of them three that are switched off, two that take a connection and never answer, two that
// answer each request late and one of another model than the list says.
//
// How long it may take: the longest of the recorders, or an eighth of what all of them take one after the
// other, whichever is more, and three tenths beside. The times are those that the report gives for each, so
// that a busy machine counts on both sides.
TEST_F(FleetCommand, APlantOf30TakesNoLongerThanItsSlowestShare) {
  constexpr int Jobs = 8;
  std::vector<std::unique_ptr<simulator::RunningSimulator>> recorders;
  SilentRecorder silent1;
  SilentRecorder silent2;
  const Words kinds{"V40A", Rug, "V09W", "V05A", "V13A", "V17A", "V26A", "V39A"};
  Words rows;
  Words expected;
  const auto add = [&](const std::string& address, const std::string& model, bool isRead) {
    const std::string number = std::to_string(rows.size() + 1);
    rows.push_back(Row("Recorder " + number, address, model, number + "." + model));
    expected.emplace_back(isRead ? "read" : "failed");
  };
  add(NobodyThere(), "KOV", false);
  add(silent1.Address(), "KOV", false);
  for (int slow = 0; slow < 2; ++slow) {
    recorders.push_back(StartPlainRecorder("V40A", {"--fault", "late:100%", "--late", "30"}));
    add(TcpOf(*recorders.back()), "KOV", true);
  }
  add(silent2.Address(), "RUG", false);
  recorders.push_back(StartPlainRecorder(Rug));
  add(TcpOf(*recorders.back()), "KOV", false);
  while (rows.size() < 30) {
    if (rows.size() == 15 || rows.size() == 29) {
      add(NobodyThere(), "RUG", false);
      continue;
    }
    const std::string& kind = kinds[rows.size() % kinds.size()];
    recorders.push_back(StartPlainRecorder(kind));
    add(TcpOf(*recorders.back()), ModelOfTag(kind), true);
  }
  WriteList(rows);
  const Ended ended = Fleet({"read", "-d", File("backup"), "--jobs", std::to_string(Jobs), "--json"});
  EXPECT_EQ(ended.status, ExitDifferent);
  const QJsonObject report = Report(ended);
  const QJsonArray results = report.value(QStringLiteral("recorders")).toArray();
  ASSERT_EQ(results.size(), 30);
  double all = 0;
  double longest = 0;
  for (int i = 0; i < results.size(); ++i) {
    const QJsonObject result = results.at(i).toObject();
    const std::string outcome = result.value(QStringLiteral("outcome")).toString().toStdString();
    const bool isRead = expected[static_cast<std::size_t>(i)] == "read";
    EXPECT_EQ(outcome == "failed", !isRead)
        << i << result.value(QStringLiteral("text")).toString().toStdString();
    EXPECT_EQ(std::filesystem::exists(result.value(QStringLiteral("file")).toString().toStdString()), isRead)
        << i;
    const double seconds = result.value(QStringLiteral("seconds")).toDouble();
    all += seconds;
    longest = std::max(longest, seconds);
  }
  const std::string otherModel =
      results.at(5).toObject().value(QStringLiteral("text")).toString().toStdString();
  EXPECT_NE(otherModel.find("RUG"), std::string::npos) << otherModel;
  const double share = std::max(longest, all / Jobs);
  const double taken = report.value(QStringLiteral("seconds")).toDouble();
  RecordProperty("seconds", std::to_string(taken) + " of " + std::to_string(share));
  EXPECT_LE(taken, 1.3 * share) << "all of them " << all << " s, the longest " << longest << " s";
}

} // namespace
} // namespace loader::test
