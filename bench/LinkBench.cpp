// How fast a whole read and a whole write of RUG are: over TCP against libmodbus's client doing the very same
// requests, over a paced serial line against the time that the characters take on a wire; and how much of a
// processor the waiting takes.
#include <cstdio>
#include <exception>
#include <functional>
#include <numeric>
#include <stdexcept>
#include <string_view>

#include "bench/BenchPlatform.h"
#include "bench/RequestLog.h"
#include "comm/BulkRead.h"
#include "comm/BulkWrite.h"
#include "comm/modComunication.h"
#include "core/ModelProfile.h"
#include "core/TextTable.h"
#include "mainwindow/frmParamLoader.h"
#include "qt/Application.h"

namespace loader::bench {
namespace {

struct Bars {
  double tcp;       // times libmodbus's time
  double wire;      // times the computed wire time
  double processor; // share of one core while waiting
  bool medians;     // the bar over TCP is for the medians; else for the rounds that nothing disturbed
};
constexpr Bars Prescribed{1.15, 1.03, 0.02, true};
// Of the short form: they tell a mistake from a machine that has other things to do.
constexpr Bars Wide{1.5, 1.1, 0.04, false};

constexpr int Pace = 19200;
constexpr int BitsOfCharacter = 11;

enum class Way { Read, Write };
const char* NameOf(Way way) {
  return way == Way::Read ? "read" : "write";
}

// The flow of the button, with what the window does around it but the refresh behind it, which is no matter
// of the link.
void RunFlow(BenchPlatform& bench, Way way) {
  FlowCallbacks window;
  if (frmParamLoader) {
    window = CallbacksOf(*frmParamLoader, Flow::ReadOrWrite);
    window.refresh = nullptr;
  }
  bench.boxes.shown.clear();
  if (way == Way::Read) {
    ReadFromRecorder(window);
  } else {
    WriteToRecorder(window);
  }
  const std::size_t boxesOfSuccess = way == Way::Read ? 1 : 2;
  if (bench.boxes.shown.size() != boxesOfSuccess) {
    throw std::runtime_error("the flow failed");
  }
}

std::vector<Request> RequestsOf(BenchPlatform& bench, Way way) {
  ListeningSocket ear(bench.qt.socket);
  Platform listening = WithParts(bench.platform, {.winSock = &ear});
  SetPlatform(&listening);
  RunFlow(bench, way);
  SetPlatform(&bench.platform);
  return ear.requests;
}

bool TcpBench(BenchPlatform& bench, Way way, int rounds, const Bars& bars) {
  const RecorderProcess recorder({"--model", "RUG", "--tcp", "127.0.0.1:0"});
  bench.tcpPort = recorder.Port();
  Settings.ConfiguredLink = LinkEthernet;
  const std::vector<Request> requests = RequestsOf(bench, way);
  ModbusClient other(recorder.Port());
  std::vector<double> ours;
  std::vector<double> theirs;
  for (int round = 0; round < rounds; ++round) {
    ours.push_back(Milliseconds([&] { RunFlow(bench, way); }));
    theirs.push_back(Milliseconds([&] { other.Replay(requests); }));
  }
  std::printf("  TCP %s: %zu requests, %d rounds, medians: ours %.2f ms, libmodbus %.2f ms\n", NameOf(way),
              requests.size(), rounds, Median(ours), Median(theirs));
  return ReportRatio("  ours / libmodbus", ours, theirs, bars.tcp, bars.medians);
}

bool RtuBench(BenchPlatform& bench, Way way, const Bars& bars) {
  const std::filesystem::path device = bench.Folder() / "COM1";
  std::vector<Request> requests;
  {
    const RecorderProcess recorder({"--model", "RUG", "--tcp", "127.0.0.1:0"});
    bench.tcpPort = recorder.Port();
    Settings.ConfiguredLink = LinkEthernet;
    requests = RequestsOf(bench, way);
  }
  const RecorderProcess recorder({"--model", "RUG", "--station", "1", "--rtu", device.string(), "--pace",
                                  std::to_string(Pace), "--turnaround", "0"});
  Settings.ConfiguredLink = LinkSerial;
  const int characters = std::accumulate(requests.begin(), requests.end(), 0,
                                         [](int sum, const Request& r) { return sum + RtuCharacters(r); });
  const double wire = 1e3 * characters * BitsOfCharacter / Pace;
  const double before = ProcessorMilliseconds();
  const double ours = Milliseconds([&] { RunFlow(bench, way); });
  const double used = ProcessorMilliseconds() - before;
  std::printf("  RTU %s at %d bit/s: %zu requests, %d characters; ours %.1f ms, wire %.1f ms, "
              "processor %.1f ms\n",
              NameOf(way), Pace, requests.size(), characters, ours, wire, used);
  const bool fast = Report("  ours / wire time", ours / wire, bars.wire);
  const bool idle = Report("  processor while waiting, share of one core", used / ours, bars.processor);
  return fast && idle;
}

// No bar: a recorder's USB device has no pace of its own.
void TellUsb(BenchPlatform& bench) {
  const std::filesystem::path device = bench.Folder() / "USB";
  const RecorderProcess recorder({"--model", "RUG", "--station", "1", "--rtu", device.string()});
  Settings.ConfiguredLink = LinkUsb;
  const double before = ProcessorMilliseconds();
  const double ours = Milliseconds([&] { RunFlow(bench, Way::Read); });
  std::printf("  USB read without a pace, for information: %.1f ms, processor %.1f ms\n", ours,
              ProcessorMilliseconds() - before);
}

struct Options {
  bool shortForm = false;
  bool window = true;
  bool serial = true;
};

// True when all bars are held.
bool RunAll(const Options& options) {
  const Bars& bars = options.shortForm ? Wide : Prescribed;
  const auto measure = [&](const std::function<bool()>& work) { return Holds(options.shortForm, work); };
  BenchPlatform bench;
  std::printf("%s the main window:\n", options.window ? "With" : "Without");
  bench.Start("RUG", options.window);
  Settings.RecorderIpAddress = u"127.0.0.1";
  Settings.StationSetting = 1;
  const int rounds = options.shortForm ? 40 : 200;
  bool held = true;
  for (const Way way : {Way::Read, Way::Write}) {
    held = measure([&] { return TcpBench(bench, way, rounds, bars); }) && held;
  }
  if (options.serial) {
    held = measure([&] { return RtuBench(bench, Way::Read, bars); }) && held;
  }
  if (options.serial && !options.shortForm) {
    held = measure([&] { return RtuBench(bench, Way::Write, bars); }) && held;
    TellUsb(bench);
  }
  bench.CloseWindow();
  return held;
}

} // namespace
} // namespace loader::bench

int main(int argc, char** argv) {
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
  }
  const loader::Application application(argc, argv);
  loader::bench::Options options;
  for (int i = 1; i < argc; ++i) {
    const std::string_view option = argv[i];
    if (option == "--short") {
      options.shortForm = true;
    } else if (option == "--no-window") {
      options.window = false;
    } else if (option == "--tcp-only") {
      options.serial = false;
    } else {
      std::fputs("usage: bench-links [--short] [--no-window] [--tcp-only]\n", stderr);
      return 2;
    }
  }
  try {
    return loader::bench::RunAll(options) ? 0 : 1;
  } catch (const std::exception& failure) {
    std::printf("bench-links: FAILED: %s\n", failure.what());
    return 1;
  }
}
