// recorder-sim: reads the options, builds the recorder and serves it until it is told to stop.
#include <signal.h>
#include <sys/signalfd.h>

#include <exception>
#include <filesystem>
#include <iostream>

#include "simulator/CommandLine.h"
#include "simulator/MemoryFile.h"
#include "simulator/ModbusSlave.h"
#include "simulator/Plant.h"
#include "simulator/Recorder.h"
#include "simulator/Server.h"

namespace {

using namespace loader::simulator;

constexpr int EndedWell = 0, CouldNotRun = 1, WrongOptions = 2;

// A descriptor that can be read once the program is told to stop.
Descriptor StopSignals() {
  sigset_t signals;
  sigemptyset(&signals);
  sigaddset(&signals, SIGINT);
  sigaddset(&signals, SIGTERM);
  sigaddset(&signals, SIGHUP);
  sigprocmask(SIG_BLOCK, &signals, nullptr);
  return Descriptor(signalfd(-1, &signals, SFD_CLOEXEC | SFD_NONBLOCK));
}

std::string ShapeFile(const Options& options) {
  if (!options.shape.empty()) {
    return options.shape;
  }
  std::error_code error;
  return (std::filesystem::read_symlink("/proc/self/exe", error).parent_path() / "InitSet.Ini").string();
}

void Serve(const Options& options) {
  const Descriptor stop = StopSignals();
  const Firmware firmware =
      FirmwareOf(options.model, options.firmware.value_or(std::string(NewestTag(options.model))));
  const auto shape = LoadShape(ShapeFile(options), options.model);
  const RegisterMap map = MapOf(shape, firmware);
  RegisterMemory start;
  Commission(PlantSetup(shape, options.model), firmware, map, start);
  Recorder recorder = SwitchOn(firmware, map, start, {options.recording, options.computing});

  ModbusSlave tcp(Line::Tcp, recorder.station);
  Server server([&](Line line, const std::string&, std::span<const std::uint8_t> frame) {
    ModbusAnswer answer = tcp.Answer(frame, recorder.memory);
    const Request request = ParseRequest(line, frame);
    if (request.IsWrite() && answer.exception == 0 && !answer.reply.empty()) {
      AfterWrite(recorder, request.address, request.count);
    }
    return answer.reply.empty() ? ReplyPlan{}
                                : ReplyPlan{{Microseconds{0}, std::move(answer.reply), Ending::None}};
  });
  std::cout << "listening on " << server.ListenOnTcp(*options.tcp) << std::endl;
  server.Run(stop.Number());
  if (options.dump) {
    WriteWholeFile(*options.dump, DumpText(recorder.memory));
  }
}

} // namespace

int main(int count, char** arguments) {
  try {
    const std::vector<std::string> words(arguments + 1, arguments + count);
    const Options options = ParseCommandLine(words);
    if (options.help) {
      std::cout << HelpText();
      return EndedWell;
    }
    Serve(options);
    return EndedWell;
  } catch (const CommandLineError& error) {
    std::cerr << "recorder-sim: " << error.what() << "\nTry recorder-sim --help.\n";
    return WrongOptions;
  } catch (const std::exception& error) {
    std::cerr << "recorder-sim: " << error.what() << '\n';
    return CouldNotRun;
  }
}
