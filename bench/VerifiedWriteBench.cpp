// How much a write with proof costs over a plain one: RUG over TCP, in requests and in time. The write alone
// with its comparison, and all that `paramtool write --yes` does with a recorder: the present set-up is read,
// saved and proved, the write foretold, written and compared.
#include <cstdio>
#include <exception>
#include <stdexcept>
#include <string_view>

#include "bench/BenchPlatform.h"
#include "bench/RequestLog.h"
#include "comm/BulkWrite.h"
#include "comm/modComunication.h"
#include "companion/LossesOfWrite.h"
#include "companion/SavedSetUp.h"
#include "companion/Verify.h"
#include "core/ModelProfile.h"
#include "qt/Application.h"

namespace loader::bench {
namespace {

constexpr double Prescribed = 2.2; // times the plain write
constexpr double Wide = 2.6;       // of the short form: a machine that has other things to do

struct Work {
  BenchPlatform& bench;
  RecorderLine line;
  WholeSetUp setUp;

  void Plain() {
    const SetUpInForce inForce(setUp);
    Settings.ConfiguredLink = LinkEthernet;
    Settings.RecorderIpAddress = line.address.where;
    if (!WriteSetUp({}, {}).IsDone()) {
      throw std::runtime_error("the plain write failed");
    }
  }
  void Verified() {
    if (WriteAndVerify(line, setUp, false).end != WriteEnd::Verified) {
      throw std::runtime_error("the write is not verified");
    }
  }
  void Whole() {
    RecorderRead present = ReadRecorder(line, "RUG", AskState::Yes);
    if (!SaveAndProve(present.setUp, bench.Folder() / "backup.RUG", line.language).empty() ||
        !ForecastWrite(setUp, present).changes.empty()) {
      throw std::runtime_error("the recorder holds another set-up");
    }
    Verified();
  }
};

std::size_t RequestsOf(BenchPlatform& bench, const std::function<void()>& work) {
  ListeningSocket ear(bench.qt.socket);
  Platform listening = WithParts(bench.platform, {.winSock = &ear});
  SetPlatform(&listening);
  work();
  SetPlatform(&bench.platform);
  return ear.requests.size();
}

bool RunAll(bool shortForm) {
  BenchPlatform bench;
  bench.Start("RUG", false);
  const RecorderProcess recorder({"--model", "RUG", "--tcp", "127.0.0.1:0"});
  bench.tcpPort = recorder.Port();
  Work work{bench, {ParseAddress(u"tcp:127.0.0.1", Language::English), Language::English, {}}, {}};
  work.setUp = ReadRecorder(work.line, "RUG").setUp;

  const auto plainWrite = [&] { work.Plain(); };
  const auto verifiedWrite = [&] { work.Verified(); };
  const auto wholeWrite = [&] { work.Whole(); };
  const std::size_t plainRequests = RequestsOf(bench, plainWrite);
  const std::size_t verifiedRequests = RequestsOf(bench, verifiedWrite);
  const std::size_t wholeRequests = RequestsOf(bench, wholeWrite);
  std::printf("RUG over TCP: plain write %zu requests, with proof %zu, with backup and forecast %zu\n",
              plainRequests, verifiedRequests, wholeRequests);
  const bool fewRequests =
      Report("  requests with backup and forecast / plain",
             static_cast<double>(wholeRequests) / static_cast<double>(plainRequests), Prescribed);
  const double bar = shortForm ? Wide : Prescribed;
  const bool fast = Holds(shortForm, [&] {
    std::vector<double> plain;
    std::vector<double> verified;
    std::vector<double> whole;
    const int rounds = shortForm ? 30 : 150;
    for (int round = 0; round < rounds; ++round) {
      plain.push_back(Milliseconds(plainWrite));
      verified.push_back(Milliseconds(verifiedWrite));
      whole.push_back(Milliseconds(wholeWrite));
    }
    std::printf("  medians: plain %.2f ms, with proof %.2f ms, with backup and forecast %.2f ms\n",
                Median(plain), Median(verified), Median(whole));
    const bool held = ReportRatio("  with proof / plain", verified, plain, bar, !shortForm);
    // For information: the disk has its part in it.
    std::printf("  with backup and forecast / plain: %.2f\n", Median(whole) / Median(plain));
    return held;
  });
  return fewRequests && fast;
}

} // namespace
} // namespace loader::bench

int main(int argc, char** argv) {
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
  }
  const loader::Application application(argc, argv);
  const bool shortForm = argc > 1 && std::string_view(argv[1]) == "--short";
  try {
    return loader::bench::RunAll(shortForm) ? 0 : 1;
  } catch (const loader::Undone&) {
    std::printf("bench-verified-write: FAILED: the recorder could not be read\n");
  } catch (const std::exception& failure) {
    std::printf("bench-verified-write: FAILED: %s\n", failure.what());
  }
  return 1;
}
