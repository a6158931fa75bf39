// recorder-sim: reads the options, builds the recorder and serves it until it is told to stop.
#include <exception>
#include <filesystem>
#include <iostream>

#include "core/modFile.h"
#include "platform/DataFolder.h"
#include "simulator/CommandLine.h"
#include "simulator/MemoryFile.h"
#include "simulator/Plant.h"
#include "simulator/Program.h"
#include "simulator/Server.h"
#include "simulator/Simulator.h"

namespace {

using namespace loader;
using namespace loader::simulator;

constexpr int EndedWell = 0, CouldNotRun = 1, WrongOptions = 2;

std::filesystem::path ShapeFile(const Options& options) {
  if (!options.shape.empty()) {
    return FileOf(options.shape);
  }
  return DataFolder(ProgramFile().parent_path()) / InitialSettingsName;
}

// The memory file says what recorder it is of; the options must not say otherwise.
Firmware ChosenFirmware(const Options& options, const MemoryHead& head) {
  const Model model = options.model.value_or(head.model.value_or(Model::Kov));
  if (head.model && *head.model != model) {
    throw RunTimeFailure(*options.load + " is the memory of a " + std::string(ModelName(*head.model)));
  }
  const std::string tag = options.firmware.value_or(head.firmware.value_or(std::string(NewestTag(model))));
  if (head.firmware && *head.firmware != tag) {
    throw RunTimeFailure(*options.load + " is the memory of firmware " + *head.firmware);
  }
  return FirmwareOf(model, tag);
}

Recorder StartRecorder(const Options& options) {
  const std::string memoryText = options.load ? ReadWholeFile(FileOf(*options.load)) : std::string();
  try {
    const Firmware firmware = ChosenFirmware(options, ReadMemoryHead(memoryText));
    if (!firmware.regularTag) {
      std::cerr << "recorder-sim: " << firmware.tag << " is no tag of a " << ModelName(firmware.model)
                << ": its register layout is the newest\n";
    }
    const ParamStoreTable shape = LoadShape(ShapeFile(options), firmware.model);
    const RegisterMap map = MapOf(shape, firmware);
    RegisterMemory start;
    if (options.pattern) {
      FillUnused(map, *options.pattern, start);
    }
    if (options.load) {
      PutIdentity(firmware, map, start);
      ReadMemoryText(memoryText, map, start);
    } else {
      Commission(PlantSetup(shape, firmware.model), firmware, map, start);
    }
    Recorder recorder = SwitchOn(firmware, map, start, {options.recording, options.computing});
    recorder.station = options.station.value_or(recorder.station);
    return recorder;
  } catch (const MemoryFileError& error) {
    throw RunTimeFailure(*options.load + ", " + error.what());
  }
}

void SaveKept(const Options& options, const Recorder& recorder) {
  if (options.save) {
    WriteWholeFile(FileOf(*options.save), MemoryText(recorder.firmware, recorder.map, recorder.kept));
  }
}

SimulatorSettings SettingsOf(const Options& options) {
  SimulatorSettings settings{options.faults, options.seed, options.timing, {}, {}, {}};
  const auto tell = [](const std::string& line) { std::cerr << line + "\n" << std::flush; };
  if (options.trace) {
    settings.trace = tell;
  }
  if (options.traceFrames) {
    settings.frames = tell;
  }
  settings.whenStored = [&options](const Recorder& recorder) {
    try {
      SaveKept(options, recorder);
    } catch (const RunTimeFailure& failure) {
      std::cerr << "recorder-sim: " << failure.what() << '\n'; // the line must not fall silent over it
    }
  };
  return settings;
}

void Serve(const Options& options) {
  const int stop = StopDescriptor();
  Simulator simulator(StartRecorder(options), SettingsOf(options));
  Server server(
      [&](Line line, const std::string& client, std::span<const std::uint8_t> request) {
        return simulator.Handle(line, client, request);
      },
      options.idle);
  std::string ready;
  for (const TcpAddress& address : options.tcp) {
    ready += "listening on " + server.ListenOnTcp(address) + "\n";
  }
  for (const std::string& link : options.rtu) {
    ready += "listening on " + server.ListenOnRtu(link) + "\n";
  }
  std::cout << ready << std::flush;
  server.Run(stop);
  SaveKept(options, simulator.TheRecorder());
  if (options.dump) {
    WriteWholeFile(FileOf(*options.dump), DumpText(simulator.TheRecorder().memory));
  }
}

} // namespace

int main(int count, char** arguments) {
  try {
    PrepareOutput();
    const Options options = ParseCommandLine(ProgramArguments(count, arguments));
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
