// The commit that a reading of a plant leaves in git.
#include <gtest/gtest.h>

#include <fstream>

#include "tests/paramtool/FleetTest.h"

namespace loader::test {
namespace {

class FleetGit : public FleetTest {
protected:
  FleetGit() {
    std::filesystem::create_directories(Folder());
    WriteList({"炉 1," + TcpOf(*one_) + ",RUG,炉 1.RUG", "Dryer," + TcpOf(*two_) + ",RUG,[d]*.RUG"});
  }

  [[nodiscard]] std::string Folder() const { return File("plant"); }
  [[nodiscard]] static ProcessOptions Own() {
    return {.environment = {"GIT_CONFIG_GLOBAL=/dev/null", "GIT_CONFIG_NOSYSTEM=1", "LC_ALL=C.UTF-8"}};
  }
  [[nodiscard]] Ended Git(std::vector<std::string> arguments) const {
    arguments.insert(arguments.begin(), {"git", "-C", Folder()});
    return RunProcess("/usr/bin/env", std::move(arguments), Own());
  }
  std::string GitText(std::vector<std::string> arguments) const { // NOLINT(modernize-use-nodiscard)
    const Ended ended = Git(std::move(arguments));
    EXPECT_EQ(ended.status, 0) << ended.errors;
    return ended.output;
  }
  void MakeRepository() const {
    GitText({"init", "--quiet", "--initial-branch=main"});
    GitText({"config", "user.name", "Plant"});
    GitText({"config", "user.email", "plant@example.com"});
    GitText({"config", "core.quotePath", "false"});
  }
  [[nodiscard]] Ended ReadPlant(std::vector<std::string> more = {}) const {
    more.insert(more.begin(), {"read", "-d", Folder()});
    return Fleet(std::move(more), Own());
  }
  [[nodiscard]] int Commits() const {
    const Ended count = Git({"rev-list", "--count", "--all"});
    return count.status == 0 ? std::stoi(count.output) : -1;
  }
  // As if somebody had changed the recorder since: another value stands in the last commit.
  void CommitOther(const std::string& file, const std::string& key, const std::string& value) const {
    const std::string path = Folder() + "/" + file;
    std::string bytes = ContentOf(path);
    const std::size_t at = bytes.find(key + ",") + key.size() + 1;
    std::ofstream(path, std::ios::binary) << bytes.replace(at, bytes.find('\r', at) - at, value);
    GitText({"--literal-pathspecs", "commit", "--quiet", "-m", "other", "--", file});
  }
  void MakeHook(const std::string& script) const {
    const std::string hook = Folder() + "/.git/hooks/pre-commit";
    std::filesystem::create_directories(std::filesystem::path(hook).parent_path());
    std::ofstream(hook) << "#!/bin/sh\n" << script;
    std::filesystem::permissions(hook, std::filesystem::perms::owner_all);
  }
  // Read well, but with no commit and the reason told.
  void ExpectRefused(const std::string& reason) {
    const int commits = Commits();
    const Ended ended = ReadPlant();
    EXPECT_EQ(ended.status, ExitDifferent);
    EXPECT_NE(ended.errors.find("not committed to git ("), std::string::npos) << ended.errors;
    EXPECT_NE(ended.errors.find(reason), std::string::npos) << ended.errors;
    EXPECT_NE(ended.output.find("good: 2"), std::string::npos) << ended.output;
    EXPECT_TRUE(Exists("plant/炉 1.RUG"));
    EXPECT_EQ(Commits(), commits);
  }

private:
  std::unique_ptr<simulator::RunningSimulator> one_ = StartPlainRecorder("V12W");
  std::unique_ptr<simulator::RunningSimulator> two_ = StartPlainRecorder("V12W");
};

TEST_F(FleetGit, OneCommitARunWithWhoChangedAndNoneWhenNothingDid) {
  MakeRepository();
  const Ended first = ReadPlant();
  EXPECT_EQ(first.status, ExitGood) << first.errors;
  EXPECT_NE(first.errors.find(": committed to git ("), std::string::npos) << first.errors;
  EXPECT_EQ(GitText({"log", "--format=%B"}),
            "Recorder settings, changed: 2: 炉 1, Dryer\n\n炉 1: new\nDryer: new\n\n");
  EXPECT_EQ(GitText({"status", "--porcelain"}), "");

  EXPECT_EQ(ReadPlant().status, ExitGood);
  EXPECT_EQ(Commits(), 1);

  CommitOther("[d]*.RUG", "C02MMAX", "77");
  CommitOther("[d]*.RUG", "H00PAS1", "1111");
  const Ended changed = ReadPlant({"--json"});
  EXPECT_EQ(changed.status, ExitGood);
  EXPECT_EQ(Commits(), 4);
  const std::string message = GitText({"log", "-1", "--format=%B"});
  EXPECT_TRUE(
      message.starts_with("Recorder settings, changed: 1: Dryer\n\nDryer: parameters changed: 2: CH 3 "))
      << message;
  EXPECT_EQ(message.find("1111"), std::string::npos) << message;
  EXPECT_EQ(GitText({"show", "--format=", "--name-only", "HEAD"}), "[d]*.RUG\n");
  const QJsonArray commits = Report(changed).value(QStringLiteral("commits")).toArray();
  ASSERT_EQ(commits.size(), 1);
  EXPECT_EQ(commits.at(0).toObject().value(QStringLiteral("commit")).toString().toStdString() + "\n",
            GitText({"rev-parse", "--short", "HEAD"}));
}

// A hook of another repository has started it, and git says there which repository it is.
TEST_F(FleetGit, TheRepositoryIsThatOfTheFolderWhateverTheEnvironmentSays) {
  MakeRepository();
  ASSERT_EQ(RunProcess("/usr/bin/env", {"git", "init", "--quiet", File("other")}, Own()).status, 0);
  ProcessOptions options = Own();
  options.environment.push_back("GIT_DIR=" + File("other/.git"));
  options.environment.push_back("GIT_INDEX_FILE=" + File("other/.git/index"));
  EXPECT_EQ(Fleet({"read", "-d", Folder()}, options).status, ExitGood);
  EXPECT_EQ(Commits(), 1);
  EXPECT_FALSE(Exists("other/.git/index"));
}

TEST_F(FleetGit, SpeaksTheLanguageOfTheReport) {
  MakeRepository();
  EXPECT_EQ(ReadPlant({"--lang", "ja"}).status, ExitGood);
  EXPECT_EQ(GitText({"log", "--format=%B"}), "記録計の設定 2 台: 炉 1、Dryer\n\n炉 1: 新規\nDryer: 新規\n\n");
}

TEST_F(FleetGit, WhatOthersHaveStagedStaysTheirs) {
  MakeRepository();
  Write("plant/notes.txt", "mine");
  Write("plant/d.RUG", "what the pattern [d]*.RUG would name");
  GitText({"add", "notes.txt"});
  EXPECT_EQ(ReadPlant().status, ExitGood);
  EXPECT_EQ(GitText({"show", "--format=", "--name-only", "HEAD"}), "[d]*.RUG\n炉 1.RUG\n");
  EXPECT_EQ(GitText({"status", "--porcelain"}), "A  notes.txt\n?? d.RUG\n");
}

TEST_F(FleetGit, ARunThatCouldNotCommitIsMadeUpForByTheNext) {
  MakeRepository();
  EXPECT_EQ(ReadPlant({"--no-commit"}).status, ExitGood);
  EXPECT_EQ(Commits(), 0);
  EXPECT_EQ(GitText({"status", "--porcelain"}), "?? [d]*.RUG\n?? \"炉 1.RUG\"\n");
  const Ended next = ReadPlant({"--json"});
  EXPECT_EQ(Texts(Report(next)), (std::vector<std::string>{"unchanged", "unchanged"}));
  EXPECT_EQ(Commits(), 1);
}

TEST_F(FleetGit, InASubfolderOfAWorkTreeToo) {
  MakeRepository();
  std::filesystem::create_directories(Folder() + "/night");
  EXPECT_EQ(Fleet({"read", "-d", Folder() + "/night"}, Own()).status, ExitGood);
  EXPECT_EQ(GitText({"ls-files"}), "night/[d]*.RUG\nnight/炉 1.RUG\n");
}

TEST_F(FleetGit, OnNoBranchItIsTold) {
  MakeRepository();
  EXPECT_EQ(ReadPlant().status, ExitGood);
  CommitOther("炉 1.RUG", "C02MMAX", "77");
  GitText({"checkout", "--quiet", "--detach"});
  const Ended ended = ReadPlant();
  EXPECT_EQ(ended.status, ExitGood);
  EXPECT_NE(ended.errors.find("detached HEAD"), std::string::npos) << ended.errors;
  EXPECT_EQ(Commits(), 3);
}

TEST_F(FleetGit, WithoutARepositoryNothingIsToldOfGit) {
  const Ended ended = ReadPlant();
  EXPECT_EQ(ended.status, ExitGood);
  EXPECT_EQ(ended.errors.find("git"), std::string::npos) << ended.errors;
}

TEST_F(FleetGit, ARefusalIsToldAndTheFilesStay) {
  MakeRepository();
  GitText({"config", "--unset", "user.name"});
  GitText({"config", "--unset", "user.email"});
  GitText({"config", "user.useConfigOnly", "true"});
  ExpectRefused("fatal: ");
  GitText({"config", "user.name", "Plant"});
  GitText({"config", "user.email", "plant@example.com"});
  MakeHook("echo 'not at night' >&2; exit 1\n");
  ExpectRefused("(not at night)");
  MakeHook("exit 0\n");
  Write("plant/.git/index.lock", "");
  ExpectRefused("index.lock");
  std::filesystem::remove(Folder() + "/.git/index.lock");
  Write("plant/.gitignore", "*.RUG\n");
  GitText({"rm", "--cached", "--quiet", "--ignore-unmatch", "-r", "."});
  ExpectRefused("ignored");
  std::filesystem::remove(Folder() + "/.gitignore");
  EXPECT_EQ(ReadPlant().status, ExitGood);
  EXPECT_EQ(Commits(), 1);
}

TEST_F(FleetGit, WithoutGitItIsToldWhereThereIsARepository) {
  MakeRepository();
  ProcessOptions noGit = Own();
  noGit.environment.push_back("PATH=" + File("nothing"));
  const Ended ended = Fleet({"read", "-d", Folder()}, noGit);
  EXPECT_EQ(ended.status, ExitDifferent);
  EXPECT_NE(ended.errors.find("not committed to git (git cannot be run)"), std::string::npos) << ended.errors;
  const Ended elsewhere = Fleet({"read", "-d", File("elsewhere")}, noGit);
  EXPECT_EQ(elsewhere.status, ExitGood) << elsewhere.errors;
}

} // namespace
} // namespace loader::test
