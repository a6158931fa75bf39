#include "simulator/CommandLine.h"

#include <charconv>

#include "simulator/Program.h"
#include "simulator/Terminal.h"

namespace loader::simulator {

namespace {

constexpr int HighestPort = 65535;
constexpr int HighestStation = 247;
constexpr int LowestPace = 50, HighestPace = 10'000'000; // bits a second
constexpr int LongestDelay = 3'600'000;                  // milliseconds
constexpr int LongestIdle = 86'400;                      // seconds

using Taker = void (*)(Options& options, std::string_view option, std::string_view value);

[[noreturn]] void Refuse(std::string_view option, std::string_view value, std::string_view expected) {
  throw CommandLineError(std::string(option) + ": \"" + std::string(value) + "\" is not " +
                         std::string(expected));
}

template <typename Number> std::optional<Number> Parsed(std::string_view text, int base = 10) {
  Number number{};
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, base);
  if (text.empty() || error != std::errc{} || end != text.data() + text.size()) {
    return std::nullopt;
  }
  return number;
}

int NumberWithin(std::string_view option, std::string_view value, int lowest, int highest) {
  const std::optional<int> number = Parsed<int>(value);
  if (!number || *number < lowest || *number > highest) {
    Refuse(option, value, "a whole number from " + std::to_string(lowest) + " to " + std::to_string(highest));
  }
  return *number;
}

std::string NotEmpty(std::string_view option, std::string_view value) {
  if (value.empty()) {
    Refuse(option, value, "the name of a file");
  }
  return std::string(value);
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
  if (!IsTag(value)) {
    Refuse(option, value, "a firmware tag: up to eight letters and digits, such as V40A");
  }
  options.firmware = std::string(value);
}

// [ADDR:]PORT; an address of version 6 stands in brackets.
void TakeTcp(Options& options, std::string_view option, std::string_view value) {
  constexpr std::string_view Expected = "[ADDR:]PORT, such as 1502 or 192.168.1.1:502";
  TcpAddress address;
  std::string_view port = value;
  if (const std::size_t colon = value.rfind(':'); colon != std::string_view::npos) {
    std::string_view host = value.substr(0, colon);
    port = value.substr(colon + 1);
    if (host.starts_with('[') && host.ends_with(']')) {
      host = host.substr(1, host.size() - 2);
    }
    if (host.empty()) {
      Refuse(option, value, Expected);
    }
    address.host = host;
  }
  const std::optional<int> number = Parsed<int>(port);
  if (!number || *number < 0 || *number > HighestPort) {
    Refuse(option, value, Expected);
  }
  address.port = *number;
  options.tcp.push_back(std::move(address));
}

void TakePattern(Options& options, std::string_view option, std::string_view value) {
  const std::string_view digits = value.starts_with("0x") ? value.substr(2) : value;
  const std::optional<std::uint16_t> pattern = Parsed<std::uint16_t>(digits, 16);
  if (!pattern || digits.size() != 4) {
    Refuse(option, value, "a register in four hexadecimal digits, such as A55A");
  }
  options.pattern = *pattern;
}

void TakeFault(Options& options, std::string_view option, std::string_view value) {
  const std::optional<FaultRule> rule = ParseFault(value);
  if (!rule) {
    Refuse(option, value, "KIND@N or KIND:P%, such as no-reply@3 or late:5% (--help names the kinds)");
  }
  options.faults.push_back(*rule);
}

void TakeSeed(Options& options, std::string_view option, std::string_view value) {
  const std::optional<std::uint64_t> seed = Parsed<std::uint64_t>(value);
  if (!seed) {
    Refuse(option, value, "a whole number that is not negative");
  }
  options.seed = *seed;
}

enum class Value { None, Required, Optional };

struct OptionRow {
  std::string_view name;
  Value value;
  Taker take;
};
constexpr OptionRow Rows[] = {
    {"--help", Value::None, [](Options& to, std::string_view, std::string_view) { to.help = true; }},
    {"-h", Value::None, [](Options& to, std::string_view, std::string_view) { to.help = true; }},
    {"--model", Value::Required, TakeModel},
    {"--firmware", Value::Required, TakeFirmware},
    {"--station", Value::Required,
     [](Options& to, std::string_view name, std::string_view value) {
       to.station = NumberWithin(name, value, 1, HighestStation);
     }},
    {"--recording", Value::None,
     [](Options& to, std::string_view, std::string_view) { to.recording = true; }},
    {"--computing", Value::None,
     [](Options& to, std::string_view, std::string_view) { to.computing = true; }},
    {"--tcp", Value::Optional, TakeTcp},
    {"--rtu", Value::Required,
     [](Options& to, std::string_view name, std::string_view value) {
       to.rtu.push_back(NotEmpty(name, value));
     }},
    {"--pace", Value::Required,
     [](Options& to, std::string_view name, std::string_view value) {
       to.timing.pace = NumberWithin(name, value, LowestPace, HighestPace);
     }},
    {"--turnaround", Value::Required,
     [](Options& to, std::string_view name, std::string_view value) {
       to.timing.turnaround = Milliseconds(NumberWithin(name, value, 0, LongestDelay));
     }},
    {"--late", Value::Required,
     [](Options& to, std::string_view name, std::string_view value) {
       to.timing.late = Milliseconds(NumberWithin(name, value, 0, LongestDelay));
     }},
    {"--idle", Value::Required,
     [](Options& to, std::string_view name, std::string_view value) {
       to.idle = std::chrono::seconds(NumberWithin(name, value, 0, LongestIdle));
     }},
    {"--load", Value::Required,
     [](Options& to, std::string_view name, std::string_view value) { to.load = NotEmpty(name, value); }},
    {"--save", Value::Required,
     [](Options& to, std::string_view name, std::string_view value) { to.save = NotEmpty(name, value); }},
    {"--dump", Value::Required,
     [](Options& to, std::string_view name, std::string_view value) { to.dump = NotEmpty(name, value); }},
    {"--shape", Value::Required,
     [](Options& to, std::string_view name, std::string_view value) { to.shape = NotEmpty(name, value); }},
    {"--pattern", Value::Required, TakePattern},
    {"--trace", Value::None, [](Options& to, std::string_view, std::string_view) { to.trace = true; }},
    {"--trace-frames", Value::None,
     [](Options& to, std::string_view, std::string_view) { to.traceFrames = true; }},
    {"--fault", Value::Required, TakeFault},
    {"--seed", Value::Required, TakeSeed},
};
constexpr std::string_view StandardTcp = "502"; // of an option --tcp without a value

const OptionRow& RowNamed(std::string_view name) {
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
    const OptionRow& row = RowNamed(name);
    const bool valueFollows = i + 1 < arguments.size() && !arguments[i + 1].starts_with("--");
    if (equals != std::string_view::npos) {
      if (row.value == Value::None) {
        throw CommandLineError(std::string(name) + " takes no value");
      }
      row.take(options, name, argument.substr(equals + 1));
    } else if (row.value == Value::None) {
      row.take(options, name, {});
    } else if (valueFollows) {
      row.take(options, name, arguments[++i]);
    } else if (row.value == Value::Optional) {
      row.take(options, name, StandardTcp);
    } else {
      throw CommandLineError(std::string(name) + " needs a value");
    }
  }
  if (options.tcp.empty() && options.rtu.empty()) {
    options.tcp.emplace_back();
  }
  return options;
}

std::string HelpText() {
  std::string text =
      R"(recorder-sim: a recorder to talk to when there is none on the desk

Usage: recorder-sim [OPTIONS]

The recorder:
  --model KOV|RUG        the model (KOV)
  --firmware TAG         the firmware tag that it reports, and whose register layout it has: V00A to
                         V99A of KOV, V00W to V99W of RUG (V40A, V12W); the layout of any other tag
                         is the newest
  --station N            the station number on RTU lines (that of its settings, at the start)
  --recording            it is recording: a loader will not write to it
  --computing            it is computing: a loader will not write to it

Lines (without one: --tcp):
  --tcp [ADDR:]PORT      Modbus/TCP (127.0.0.1:502). Nobody but this machine can connect unless ADDR says
                         otherwise, as in 0.0.0.0:502. Port 0 takes a free port
  --idle S               drop a TCP client after S seconds without a byte (60; 0: never). Up to 256 clients are
                         served at a time
)" + std::string(TerminalHelp()) +
      R"(  --pace BAUD            RTU lines run at the speed of a wire, such as 19200: 11 bits a character, in both
                         directions
  --turnaround MS        from the end of a request to the start of its reply (0)

Memory:
  --load FILE            start with this memory in place of the plant that each model comes with
  --save FILE            keep the non-volatile memory there: written when a client stores the settings,
                         and at the end. What was written but not stored is not in it
  --dump FILE            write all registers of the working memory there at the end
  --pattern HHHH         fill the registers that hold no value, such as A55A
  --shape FILE           where the values lie (InitSet.Ini beside this program)

Tests:
  --trace                tell every request on the standard error output
  --trace-frames         show the bytes of every request (>) and reply (<) there, passwords included
  --fault KIND@N         a fault in request number N, counted from 1 over all lines
  --fault KIND:P%        a fault in P of 100 requests, by chance; --fault may be given several times
  --seed N               another run of chance (1)
  --late MS              how late the fault "late" is (6000)
  --help                 this text

Kinds of fault:
)";
  for (const FaultKindRow& row : FaultKinds()) {
    std::string name = "  " + std::string(row.name);
    name.resize(25, ' ');
    text +=
        name + std::string(row.meaning) + (row.onTcp ? "" : " (RTU)") + (row.onRtu ? "" : " (TCP)") + "\n";
  }
  return text + R"(
When all lines are open it prints a line for each, such as "listening on 127.0.0.1:502". )" +
         std::string(StopHelp()) +
         R"( Exit status: 0 after a clean end, 1 when it could not run, 2 on a wrong option.
)";
}

} // namespace loader::simulator
