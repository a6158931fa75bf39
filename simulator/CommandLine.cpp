#include "simulator/CommandLine.h"

#include <charconv>

namespace loader::simulator {

namespace {

constexpr int HighestPort = 65535;

[[noreturn]] void Refuse(std::string_view option, std::string_view value, std::string_view expected) {
  throw CommandLineError(std::string(option) + ": \"" + std::string(value) + "\" is not " +
                         std::string(expected));
}

std::optional<int> WholeNumber(std::string_view text, int lowest, int highest) {
  int number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc{} || end != text.data() + text.size() || text.empty() || number < lowest ||
      number > highest) {
    return std::nullopt;
  }
  return number;
}

void TakeModel(Options& options, std::string_view option, std::string_view value) {
  if (value == "KOV" || value == "kov") {
    options.model = Model::Kov;
  } else if (value == "RUG" || value == "rug") {
    options.model = Model::Rug;
  } else {
    Refuse(option, value, "a model: KOV or RUG");
  }
}

void TakeFirmware(Options& options, std::string_view option, std::string_view value) {
  for (const char character : value) {
    if (character <= ' ' || character > '~') {
      Refuse(option, value, "a firmware tag: up to eight letters and digits, such as V40A");
    }
  }
  if (value.empty() || value.size() > LongestTag) {
    Refuse(option, value, "a firmware tag: up to eight letters and digits, such as V40A");
  }
  options.firmware = std::string(value);
}

// [ADDR:]PORT; an address of version 6 stands in brackets.
void TakeTcp(Options& options, std::string_view option, std::string_view value) {
  TcpAddress address;
  std::string_view port = value;
  if (const std::size_t colon = value.rfind(':'); colon != std::string_view::npos) {
    std::string_view host = value.substr(0, colon);
    port = value.substr(colon + 1);
    if (host.size() > 2 && host.front() == '[' && host.back() == ']') {
      host = host.substr(1, host.size() - 2);
    }
    if (host.empty()) {
      Refuse(option, value, "[ADDR:]PORT, such as 1502 or 192.168.1.1:502");
    }
    address.host = host;
  }
  const std::optional<int> number = WholeNumber(port, 0, HighestPort);
  if (!number) {
    Refuse(option, value, "[ADDR:]PORT, such as 1502 or 192.168.1.1:502");
  }
  address.port = *number;
  options.tcp = address;
}

void TakeRecording(Options& options, std::string_view, std::string_view) {
  options.recording = true;
}
void TakeComputing(Options& options, std::string_view, std::string_view) {
  options.computing = true;
}
void TakeHelp(Options& options, std::string_view, std::string_view) {
  options.help = true;
}

void TakeFile(std::optional<std::string>& file, std::string_view option, std::string_view value) {
  if (value.empty()) {
    Refuse(option, value, "the name of a file");
  }
  file = std::string(value);
}
void TakeDump(Options& options, std::string_view option, std::string_view value) {
  TakeFile(options.dump, option, value);
}
void TakeShape(Options& options, std::string_view option, std::string_view value) {
  std::optional<std::string> file;
  TakeFile(file, option, value);
  options.shape = *file;
}

enum class Value { None, Required, Optional };

struct OptionRow {
  std::string_view name;
  Value value;
  void (*take)(Options& options, std::string_view option, std::string_view value);
  std::string_view standard; // the value of an optional one that is not given
};
constexpr OptionRow Rows[] = {
    {"--help", Value::None, TakeHelp, ""},           {"-h", Value::None, TakeHelp, ""},
    {"--model", Value::Required, TakeModel, ""},     {"--firmware", Value::Required, TakeFirmware, ""},
    {"--tcp", Value::Optional, TakeTcp, "502"},      {"--recording", Value::None, TakeRecording, ""},
    {"--computing", Value::None, TakeComputing, ""}, {"--dump", Value::Required, TakeDump, ""},
    {"--shape", Value::Required, TakeShape, ""},
};

const OptionRow& RowOf(std::string_view name) {
  for (const OptionRow& row : Rows) {
    if (row.name == name) {
      return row;
    }
  }
  throw CommandLineError("unknown option \"" + std::string(name) + "\"");
}

} // namespace

Options ParseCommandLine(std::span<const std::string> arguments) {
  Options options;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const std::string_view argument = arguments[i];
    const std::size_t equals = argument.starts_with("--") ? argument.find('=') : std::string_view::npos;
    const std::string_view name = argument.substr(0, equals);
    const OptionRow& row = RowOf(name);
    const bool next = i + 1 < arguments.size() && !arguments[i + 1].starts_with("--");
    if (equals != std::string_view::npos) {
      if (row.value == Value::None) {
        throw CommandLineError(std::string(name) + " takes no value");
      }
      row.take(options, name, argument.substr(equals + 1));
    } else if (row.value == Value::None) {
      row.take(options, name, {});
    } else if (next) {
      row.take(options, name, arguments[++i]);
    } else if (row.value == Value::Optional) {
      row.take(options, name, row.standard);
    } else {
      throw CommandLineError(std::string(name) + " needs a value");
    }
  }
  if (!options.tcp) {
    options.tcp = TcpAddress{};
  }
  return options;
}

std::string_view HelpText() {
  return R"(recorder-sim: a recorder to talk to when there is none on the desk

Usage: recorder-sim [OPTIONS]

The recorder:
  --model KOV|RUG        the model (KOV)
  --firmware TAG         the firmware tag that it reports, and whose register layout it has:
                         V00A to V99A of KOV, V00W to V99W of RUG (V40A, V12W)
  --recording            it is recording: a loader will not write to it
  --computing            it is computing: a loader will not write to it
Lines:
  --tcp [ADDR:]PORT      serve Modbus/TCP (127.0.0.1:502). Only this machine can connect unless ADDR says
                         otherwise, as in 0.0.0.0:502. Port 0 takes a free port
Files:
  --dump FILE            write all registers there at the end
  --shape FILE           where the registers lie (InitSet.Ini beside this program)
  --help                 this text

When it is ready it prints a line "listening on 127.0.0.1:502". It ends with SIGINT (Ctrl+C) or SIGTERM.
)";
}

} // namespace loader::simulator
