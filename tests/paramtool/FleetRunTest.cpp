// Children of a fleet, with a program of the test's own in the place of paramtool.
#include "paramtool/FleetRun.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <sstream>

#include "core/Text.h"
#include "paramtool/Fleet.h"
#include "paramtool/FleetTable.h"
#include "platform/BarePlatform.h"
#include "tests/paramtool/FleetGate.h"
#include "tests/paramtool/FleetTest.h"

namespace loader::test {
namespace {

using paramtool::ChildEnd;
using paramtool::ChildJob;
using paramtool::ChildResult;
using paramtool::ChildResults;
using paramtool::ChildRun;
using paramtool::RunChildren;

class FleetRun : public ToolTest {
protected:
  FleetRun() { run.program = QStringLiteral(FLEET_CHILD_PROGRAM); }
  ~FleetRun() override { qunsetenv("FLEET_CHILD"); }

  // What the children do (FleetChild.h).
  void Tell(const std::string& script) const {
    qputenv("FLEET_CHILD", QByteArray::fromStdString(Write("script", script)));
  }
  ChildResults Run(const std::string& script, const std::vector<ChildJob>& jobs) const {
    Tell(script);
    return RunChildren(jobs, run);
  }
  static std::vector<ChildEnd> EndsOf(const ChildResults& all) {
    std::vector<ChildEnd> ends;
    for (const ChildResult& result : all.results) {
      ends.push_back(result.end);
    }
    return ends;
  }

  ChildRun run;
};
using Ends = std::vector<ChildEnd>;

TEST_F(FleetRun, AChildGivesItsReportItsErrorsAndItsExitCode) {
  const ChildResults all = Run("print {\"a\": 1}\ncomplain why\nexit 1", {{{"x"}, u"1"}});
  ASSERT_EQ(EndsOf(all), (Ends{ChildEnd::Ended}));
  EXPECT_EQ(all.results[0].exit, 1);
  EXPECT_EQ(all.results[0].report, (QJsonObject{{QStringLiteral("a"), 1}}));
  EXPECT_EQ(all.results[0].errors.trimmed(), QStringLiteral("why"));
  EXPECT_GT(all.results[0].seconds, 0);
  EXPECT_FALSE(all.interrupted);
  EXPECT_TRUE(Run("print no JSON", {{{"x"}, u"1"}}).results[0].report.isEmpty());
}

// The first one waits until the third one runs; the second one, on the wire of the first, begins when that
// has ended.
TEST_F(FleetRun, OneWireIsUsedByOneAtATimeAndOthersRunMeanwhile) {
  const FleetGate gate(File("gate"));
  const ChildResults all = Run("job a1\nawait gate\nmark ended\n"
                               "job a2\nneed ended\n"
                               "job b\ntell gate\n",
                               {{{"a1"}, u"a"}, {{"a2"}, u"a"}, {{"b"}, u"b"}});
  EXPECT_EQ(EndsOf(all), (Ends{ChildEnd::Ended, ChildEnd::Ended, ChildEnd::Ended}));
  for (const ChildResult& result : all.results) {
    EXPECT_EQ(result.exit, 0);
  }
}

TEST_F(FleetRun, NoMoreThanSoManyRunAtATime) {
  std::size_t most = 0;
  run.jobs = 3;
  run.changed = [&](std::size_t running) { most = std::max(most, running); };
  std::vector<ChildJob> jobs;
  for (char16_t wire = u'a'; wire < u'k'; ++wire) {
    jobs.push_back({{"x"}, std::u16string(1, wire)});
  }
  EXPECT_EQ(Run("", jobs).results.size(), jobs.size());
  EXPECT_EQ(most, 3U);
}

TEST_F(FleetRun, WhatDoesNotStartAndWhatCrashesIsTold) {
  EXPECT_EQ(EndsOf(Run("job bad\ncrash", {{{"bad"}, u"a"}, {{"good"}, u"b"}})),
            (Ends{ChildEnd::Crashed, ChildEnd::Ended}));
  run.program = QString::fromStdString(File("absent"));
  EXPECT_EQ(EndsOf(RunChildren({{{"x"}, u"a"}, {{"y"}, u"a"}, {{"z"}, u"b"}}, run)),
            (Ends{ChildEnd::NotStarted, ChildEnd::NotStarted, ChildEnd::NotStarted}));
}

TEST_F(FleetRun, OneThatHangsIsEndedAlsoWhenItDoesNotListen) {
  run.timeout = 200;
  run.grace = 200;
  EXPECT_EQ(EndsOf(Run("job deaf\ndeaf\nhang\njob x\nhang", {{{"deaf"}, u"a"}, {{"x"}, u"b"}})),
            (Ends{ChildEnd::TimedOut, ChildEnd::TimedOut}));
}

// A Ctrl+C to the program itself, at a moment that is known: when the first child has ended.
TEST_F(FleetRun, AnInterruptEndsThoseThatRunAndStartsNoMore) {
  run.jobs = 2;
  run.ended = [](std::size_t job, const ChildResult&) {
    if (job == 0) {
      InterruptThisProgram();
    }
  };
  const FleetGate gate(File("gate"));
  const ChildResults all = Run("job first\ntell gate\njob second\nstop 3 {\"x\":1}\nawait gate\nhang",
                               {{{"first"}, u"a"}, {{"second"}, u"b"}, {{"third"}, u"b"}});
  EXPECT_TRUE(all.interrupted);
  EXPECT_EQ(EndsOf(all), (Ends{ChildEnd::Ended, ChildEnd::Interrupted, ChildEnd::NeverStarted}));
  EXPECT_EQ(all.results[1].exit, 3);
  EXPECT_EQ(all.results[1].report, (QJsonObject{{QStringLiteral("x"), 1}}));
}

TEST_F(FleetRun, TheSecondInterruptWaitsForNobody) {
  run.jobs = 2;
  int ended = 0;
  run.ended = [&](std::size_t, const ChildResult&) {
    if (ended++ == 0) {
      InterruptThisProgram();
      InterruptThisProgram();
    }
  };
  const FleetGate gate(File("gate"));
  const ChildResults all =
      Run("job first\ntell gate\njob deaf\ndeaf\nawait gate\nhang", {{{"first"}, u"a"}, {{"deaf"}, u"b"}});
  EXPECT_EQ(EndsOf(all), (Ends{ChildEnd::Ended, ChildEnd::Interrupted}));
}

// --- What the program is asked, and what is made of its answer

class FleetOrders : public FleetRun {
protected:
  paramtool::FleetReport CarryOut(const std::string& script, const std::vector<std::u16string>& addresses) {
    order.run = run;
    order.run.jobs = 1; // all of them note their words in one file
    Tell("note asked\n" + script);
    order.folder = File("");
    order.language = Language::English;
    order.recorders.clear();
    for (const std::u16string& address : addresses) {
      FleetRecorder recorder;
      recorder.name = address;
      recorder.address = ParseAddress(address, Language::English);
      recorder.model = "RUG";
      const std::size_t row = order.recorders.size();
      recorder.file = row < files.size() ? files[row] : u"file.RUG";
      recorder.line = 11 + static_cast<int>(row);
      order.recorders.push_back(recorder);
    }
    return paramtool::CarryOut(order, {.ended = [](auto...) {}, .changed = [](auto...) {}});
  }
  std::string TextOf(const std::string& script) {
    const paramtool::FleetReport report = CarryOut(script, {u"tcp:a"});
    return ToUtf8(report.results.at(0).text);
  }
  // The words of all children, a line each, with "/" in names on every system.
  std::string Asked() const {
    std::string words = Read("asked");
    std::ranges::replace(words, '\\', '/');
    return WithoutFolder(words);
  }

  BarePlatform platform{{.programFolder = LOADER_DATA_DIR}};
  paramtool::FleetOrder order;
  std::vector<std::u16string> files; // of the recorders, in their order
};

TEST_F(FleetOrders, AWriteIsAskedWithItsOptionsAndTold) {
  order.action = paramtool::FleetAction::Write;
  EXPECT_EQ(TextOf("print {\"dryRun\": true, \"changes\": [1, 2], \"losses\": [{\"why\": \"notMoved\"}, "
                   "{\"why\": \"zero\"}]}\nexit 1"),
            "dry run: parameters to change: 2, losses: 1");
  EXPECT_EQ(Asked(), "write\nFOLDER/file.RUG\ntcp:a\n--json\n--lang\nen\n--model\nRUG\n");
  order.passedOn = QStringList{"--yes", "--store"};
  EXPECT_EQ(TextOf("print {\"end\": \"verified\"}"), "written and verified");
  EXPECT_TRUE(Asked().ends_with("RUG\n--yes\n--store\n"));
  EXPECT_EQ(TextOf("print {\"end\": \"different\"}\nexit 1"), "not verified after writing");
  EXPECT_EQ(TextOf("print {\"error\": \"tcp:a: no answer\"}\nexit 2"), "failed: no answer");
  EXPECT_EQ(TextOf("exit 2"), "failed: its process gave no report (exit code 2)");
  // Nothing is believed that does not say so itself, whatever the exit code says.
  EXPECT_EQ(TextOf("print {\"end\": \"mixture\"}"), "failed: its process gave no report (exit code 0)");
  EXPECT_EQ(TextOf("exit 0"), "failed: its process gave no report (exit code 0)");
  EXPECT_EQ(TextOf("print {\"exit\": 64}\nexit 64"), "failed: its process gave no report (exit code 64)");
  EXPECT_EQ(TextOf("print {\"recorder\": {\"model\": \"KOV\"}}"),
            "failed: the recorder is a KOV, and not a RUG as the list says");
}

// Half of a set-up in a recorder is told, also when the program was asked to end.
TEST_F(FleetOrders, WhatAChildSaysOfItsEndIsToldWhenItWasAskedToEnd) {
  order.action = paramtool::FleetAction::Write;
  order.recorders.clear();
  run.timeout = 300;
  EXPECT_EQ(TextOf("stop 2 {\"error\": \"half of it\"}\nhang"), "failed: ended after 0 s: half of it");
}

TEST_F(FleetOrders, AWriteThatWasKilledMayHaveLeftHalf) {
  order.action = paramtool::FleetAction::Write;
  EXPECT_EQ(TextOf("kill"), "failed: its process has crashed");
  order.passedOn = QStringList{"--yes"};
  EXPECT_EQ(
      TextOf("kill"),
      "failed: its process has crashed; the recorder may hold a mixture of both set-ups: write it again");
}

// Files of the same name outside of the folder, and one whose whole path looks like another's place.
TEST_F(FleetOrders, EachRecorderHasABackupOfItsOwn) {
  order.action = paramtool::FleetAction::Write;
  order.backups = File("backups");
  files = {u"../a/x.RUG", u"../b/x.RUG", u"/c/y.RUG", u"x.RUG", u"c/y.RUG", u"d/../x.RUG2"};
  static_cast<void>(CarryOut("exit 2", {u"tcp:1", u"tcp:2", u"tcp:3", u"tcp:4", u"tcp:5", u"tcp:6"}));
  std::set<std::string> backups;
  std::istringstream asked(Asked());
  for (std::string line; std::getline(asked, line);) {
    if (line == "--backup" && std::getline(asked, line)) {
      backups.insert(line);
    }
  }
  const std::string folder = "FOLDER/backups/";
  EXPECT_EQ(backups, (std::set<std::string>{folder + "11-x.RUG", folder + "12-x.RUG", folder + "y.RUG",
                                            folder + "x.RUG", folder + "c/y.RUG", folder + "x.RUG2"}));
}

TEST_F(FleetOrders, AReadThatSaysWellAndLeavesNoFileHasFailed) {
  const std::string text = TextOf("print {\"exit\": 0}");
  EXPECT_TRUE(text.starts_with("failed: ")) << text;
  EXPECT_FALSE(Exists("file.RUG"));
}

TEST(FleetColumns, AFullWidthCharacterTakesTwo) {
  EXPECT_EQ(paramtool::ColumnsOf(u"abc"), 3U);
  EXPECT_EQ(paramtool::ColumnsOf(u"炉 1"), 4U);
  EXPECT_EQ(paramtool::ColumnsOf(u"「、」（Ａ）"), 12U);
  EXPECT_EQ(paramtool::ColumnsOf(u"ﾎﾞｲﾗ"), 4U);
}

} // namespace
} // namespace loader::test
