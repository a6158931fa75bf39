// Children of a fleet, with a program of the test's own in the place of paramtool.
#include "paramtool/FleetRun.h"

#include <gtest/gtest.h>

#include <csignal>
#include <sys/stat.h>

#include "core/Text.h"
#include "paramtool/Fleet.h"
#include "paramtool/FleetTable.h"
#include "platform/BarePlatform.h"
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
  // Children that run this script of sh, in the test's folder; what a job is stands in $1.
  ChildResults Run(const std::string& script, const std::vector<ChildJob>& jobs) {
    run.program = QString::fromStdString(Write("child", "#!/bin/sh\ncd '" + File("") + "'\n" + script));
    std::filesystem::permissions(File("child"), std::filesystem::perms::owner_all);
    return RunChildren(jobs, run);
  }
  static std::vector<ChildEnd> EndsOf(const ChildResults& all) {
    std::vector<ChildEnd> ends;
    for (const ChildResult& result : all.results) {
      ends.push_back(result.end);
    }
    return ends;
  }
  void MakePipe(const char* name) const { ASSERT_EQ(::mkfifo(File(name).c_str(), 0600), 0); }

  ChildRun run;
};
using Ends = std::vector<ChildEnd>;

TEST_F(FleetRun, AChildGivesItsReportItsErrorsAndItsExitCode) {
  const ChildResults all = Run("echo '{\"a\": 1}'; echo why >&2; exit 1", {{{"x"}, u"1"}});
  ASSERT_EQ(EndsOf(all), (Ends{ChildEnd::Ended}));
  EXPECT_EQ(all.results[0].exit, 1);
  EXPECT_EQ(all.results[0].report, (QJsonObject{{QStringLiteral("a"), 1}}));
  EXPECT_EQ(all.results[0].errors, QStringLiteral("why\n"));
  EXPECT_GT(all.results[0].seconds, 0);
  EXPECT_FALSE(all.interrupted);
  EXPECT_TRUE(Run("echo no JSON", {{{"x"}, u"1"}}).results[0].report.isEmpty());
}

// The first one waits until the third one runs; the second one, on the wire of the first, begins when that
// has ended.
TEST_F(FleetRun, OneWireIsUsedByOneAtATimeAndOthersRunMeanwhile) {
  MakePipe("pipe");
  const ChildResults all = Run("case $1 in\n"
                               "a1) read line <pipe; : >ended ;;\n"
                               "a2) [ -e ended ] ;;\n"
                               "b) echo >pipe ;;\n"
                               "esac",
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
  EXPECT_EQ(Run(":", jobs).results.size(), jobs.size());
  EXPECT_EQ(most, 3U);
}

TEST_F(FleetRun, WhatDoesNotStartAndWhatCrashesIsTold) {
  EXPECT_EQ(EndsOf(Run("[ $1 = good ] || kill -SEGV $$", {{{"bad"}, u"a"}, {{"good"}, u"b"}})),
            (Ends{ChildEnd::Crashed, ChildEnd::Ended}));
  run.program = QString::fromStdString(File("absent"));
  EXPECT_EQ(EndsOf(RunChildren({{{"x"}, u"a"}, {{"y"}, u"a"}, {{"z"}, u"b"}}, run)),
            (Ends{ChildEnd::NotStarted, ChildEnd::NotStarted, ChildEnd::NotStarted}));
}

TEST_F(FleetRun, OneThatHangsIsEndedAlsoWhenItDoesNotListen) {
  run.timeout = 200;
  run.grace = 200;
  MakePipe("never"); // nobody opens its other end
  const std::string hang = "[ $1 = deaf ] && trap '' TERM; exec sh -c 'read line <never'";
  EXPECT_EQ(EndsOf(Run(hang, {{{"deaf"}, u"a"}, {{"x"}, u"b"}})),
            (Ends{ChildEnd::TimedOut, ChildEnd::TimedOut}));
}

// A Ctrl+C to the program itself, at a moment that is known: when the first child has ended.
TEST_F(FleetRun, AnInterruptEndsThoseThatRunAndStartsNoMore) {
  run.jobs = 2;
  run.ended = [](std::size_t job, const ChildResult&) {
    if (job == 0) {
      ::raise(SIGINT);
    }
  };
  MakePipe("pipe");
  const ChildResults all =
      Run("case $1 in\nfirst) echo >pipe ;;\nsecond) trap 'echo {\\\"x\\\":1}; exit 3' TERM; read line <pipe;"
          " while :; do read line <pipe; done ;;\nesac",
          {{{"first"}, u"a"}, {{"second"}, u"b"}, {{"third"}, u"b"}});
  EXPECT_TRUE(all.interrupted);
  EXPECT_EQ(EndsOf(all), (Ends{ChildEnd::Ended, ChildEnd::Interrupted, ChildEnd::NeverStarted}));
}

TEST_F(FleetRun, TheSecondInterruptWaitsForNobody) {
  run.jobs = 2;
  int ended = 0;
  run.ended = [&](std::size_t, const ChildResult&) {
    if (ended++ == 0) {
      ::raise(SIGINT);
      ::raise(SIGINT);
    }
  };
  MakePipe("pipe");
  const ChildResults all = Run("trap '' TERM; [ $1 = first ] && echo >pipe || { read line <pipe; cat pipe; }",
                               {{{"first"}, u"a"}, {{"deaf"}, u"b"}});
  EXPECT_EQ(EndsOf(all), (Ends{ChildEnd::Ended, ChildEnd::Interrupted}));
}

TEST_F(FleetRun, AfterItsEndASignalDoesWhatItDidBefore) {
  struct sigaction before {};
  sigaction(SIGINT, nullptr, &before);
  (void)Run(":", {{{"x"}, u"a"}});
  struct sigaction after {};
  sigaction(SIGINT, nullptr, &after);
  EXPECT_EQ(before.sa_handler, after.sa_handler);
}

// --- What the program is asked, and what is made of its answer

class FleetOrders : public FleetRun {
protected:
  paramtool::FleetReport CarryOut(const std::string& script, const std::vector<std::u16string>& addresses) {
    order.run = run;
    order.run.program = QString::fromStdString(
        Write("child", "#!/bin/sh\nprintf '%s\\n' \"$@\" >>'" + File("asked") + "'\n" + script));
    std::filesystem::permissions(File("child"), std::filesystem::perms::owner_all);
    order.folder = File("");
    order.language = Language::English;
    order.recorders.clear();
    for (const std::u16string& address : addresses) {
      FleetRecorder recorder;
      recorder.name = address;
      recorder.address = ParseAddress(address, Language::English);
      recorder.model = "RUG";
      recorder.file = u"file.RUG";
      order.recorders.push_back(recorder);
    }
    return paramtool::CarryOut(order, {.ended = [](auto...) {}, .changed = [](auto...) {}});
  }
  std::string TextOf(const std::string& script) {
    const paramtool::FleetReport report = CarryOut(script, {u"tcp:a"});
    return ToUtf8(report.results.at(0).text);
  }

  BarePlatform platform{{.programFolder = LOADER_DATA_DIR}};
  paramtool::FleetOrder order;
};

TEST_F(FleetOrders, AWriteIsAskedWithItsOptionsAndTold) {
  order.action = paramtool::FleetAction::Write;
  EXPECT_EQ(TextOf("echo '{\"dryRun\": true, \"changes\": [1, 2], \"losses\": [{\"why\": \"notMoved\"}, "
                   "{\"why\": \"zero\"}]}'; exit 1"),
            "dry run: parameters to change: 2, losses: 1");
  EXPECT_EQ(WithoutFolder(Read("asked")),
            "write\nFOLDER/file.RUG\ntcp:a\n--json\n--lang\nen\n--model\nRUG\n");
  order.passedOn = QStringList{"--yes", "--store"};
  EXPECT_EQ(TextOf("echo '{\"end\": \"verified\"}'"), "written and verified");
  EXPECT_TRUE(Read("asked").ends_with("RUG\n--yes\n--store\n"));
  EXPECT_EQ(TextOf("echo '{\"end\": \"different\"}'; exit 1"), "not verified after writing");
  EXPECT_EQ(TextOf("echo '{\"error\": \"tcp:a: no answer\"}'; exit 2"), "failed: no answer");
  EXPECT_EQ(TextOf("exit 2"), "failed: its process gave no report (exit code 2)");
  // Nothing is believed that does not say so itself, whatever the exit code says.
  EXPECT_EQ(TextOf("echo '{\"end\": \"mixture\"}'"), "failed: its process gave no report (exit code 0)");
  EXPECT_EQ(TextOf("exit 0"), "failed: its process gave no report (exit code 0)");
  EXPECT_EQ(TextOf("echo '{\"exit\": 64}'; exit 64"), "failed: its process gave no report (exit code 64)");
  EXPECT_EQ(TextOf("echo '{\"recorder\": {\"model\": \"KOV\"}}'"),
            "failed: the recorder is a KOV, and not a RUG as the list says");
}

// Half of a set-up in a recorder is told, also when the program was asked to end.
TEST_F(FleetOrders, WhatAChildSaysOfItsEndIsToldWhenItWasAskedToEnd) {
  order.action = paramtool::FleetAction::Write;
  order.recorders.clear();
  run.timeout = 300;
  MakePipe("never");
  EXPECT_EQ(TextOf("trap 'echo {\\\"error\\\": \\\"half of it\\\"}; exit 2' TERM\nread line <'" +
                   File("never") + "'"),
            "failed: ended after 0 s: half of it");
}

TEST_F(FleetOrders, AReadThatSaysWellAndLeavesNoFileHasFailed) {
  const std::string text = TextOf("echo '{\"exit\": 0}'");
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
