// Reply bytes into the three exchanges: one link for a run of several requests. The input decides the
// requests, what becomes of each good reply on its way, in which pieces and how late it arrives, and when a
// device fails.
#include <algorithm>
#include <array>

#include "comm/modComunication.h"
#include "comm/modEthernet.h"
#include "core/ModelProfile.h"
#include "tests/fuzz/FuzzPlatform.h"
#include "tests/fuzz/FuzzRecorder.h"

namespace loader::fuzz {

namespace {

constexpr int MostRequests = 24;

// The bytes of one reply on their way, as the input says.
class ReplyPlan {
public:
  ReplyPlan(FuzzInput& input, FuzzRecorder& recorder) : input_(input), recorder_(recorder) {}

  // True when the last reply went out as it should have, in time.
  bool clean = false;

  void Send(FuzzWire& wire, const Bytes& request, bool tcp, int timeOut) {
    Bytes reply = recorder_.Answer(request, tcp);
    const int edits = input_.Choice(4);
    for (int edit = 0; edit < edits; ++edit) {
      Edit(reply, request, tcp);
    }
    const int pieces = 1 + input_.Choice(4);
    int delay = 0;
    for (int piece = 1; piece <= pieces && !reply.empty(); ++piece) {
      const std::size_t size =
          piece == pieces ? reply.size() : std::min<std::size_t>(input_.Byte(), reply.size());
      delay += Delay();
      wire.Reply(Bytes(reply.begin(), reply.begin() + static_cast<std::ptrdiff_t>(size)), delay);
      reply.erase(reply.begin(), reply.begin() + static_cast<std::ptrdiff_t>(size));
    }
    clean = edits == 0 && delay < timeOut;
  }

private:
  int Delay() {
    constexpr int FirstLong = 240;
    const int byte = input_.Byte();
    return byte < FirstLong ? byte : (byte - FirstLong) * 500;
  }
  void Edit(Bytes& reply, const Bytes& request, bool tcp) {
    switch (input_.Choice(7)) {
    case 0: { // a byte changed
      const std::size_t at = input_.Byte();
      const std::uint8_t change = input_.Byte();
      if (!reply.empty()) {
        reply[at % reply.size()] ^= change;
      }
      break;
    }
    case 1: // cut short
      reply.resize(std::min<std::size_t>(input_.Byte(), reply.size()));
      break;
    case 2: { // more behind it
      const std::string_view more = input_.ShortText();
      reply.insert(reply.end(), more.begin(), more.end());
      break;
    }
    case 3: { // something else altogether
      const std::string_view other = input_.ShortText();
      reply.assign(other.begin(), other.end());
      break;
    }
    case 4:
      reply = ErrorReplyTo(request, tcp);
      break;
    case 5:
      PutCheck(reply);
      break;
    default: { // as long as it should be, with other bytes in it
      const std::string_view other = input_.ShortText();
      std::copy_n(other.begin(), std::min(other.size(), reply.size()), reply.begin());
    }
    }
  }

  FuzzInput& input_;
  FuzzRecorder& recorder_;
};

// Boxes that an exchange shows, by its result.
int ExpectedBoxes(std::uint8_t code, bool sent) {
  const bool usb = CommLink.LinkKind == LinkUsb;
  switch (code) {
  case ResultOk:
    return 0;
  case ResultRefused:
    return usb && sent ? 1 : 0;
  case ResultDamaged:
  case ResultErrorReply:
  case ResultWrongLength:
  case ResultWrongTransaction:
    return usb ? 1 : 0;
  default:
    return 1;
  }
}

bool CodeExists(std::uint8_t code) {
  switch (code) {
  case ResultOk:
  case ResultRefused:
  case ResultErrorReply:
  case ResultNoAnswer:
    return true;
  case ResultDamaged:
    return CommLink.LinkKind != LinkEthernet;
  case ResultWrongLength:
    return CommLink.LinkKind == LinkUsb;
  case ResultWrongTransaction:
    return CommLink.LinkKind == LinkEthernet;
  default:
    return code == ResultRunTimeFailure && CommLink.LinkKind != LinkUsb;
  }
}

// A request that no frame can hold.
bool Frameable(bool write) {
  if (CommLink.RegCount < 0 || CommLink.RegCount > MaxRegisters) {
    return false;
  }
  if (!write) {
    return CommLink.RegAddress % 10000 >= 1;
  }
  const std::int64_t address = std::int64_t{CommLink.RegAddress} - 40001;
  return CommLink.RegAddress / 10000 == 3 || (address >= 0 && address <= 0xFFFF);
}

class ExchangeRun {
public:
  explicit ExchangeRun(FuzzInput& input) : input_(input), plan_(input, recorder_) {
    const auto tie = [this](FuzzWire& wire, bool tcp, int timeOut) {
      wire.onSend = [this, &wire, tcp, timeOut](const Bytes& frame) {
        plan_.Send(wire, frame, tcp, timeOut);
      };
    };
    constexpr int UsbTimeOut = 1000;
    tie(platform_.usb.wire, false, UsbTimeOut);
    tie(platform_.socket.wire, true, WaitMilliseconds);
    tie(platform_.serial.wire, false, WaitMilliseconds);
    for (std::size_t i = 0; i < FuzzRecorder::TableRegisters; ++i) {
      recorder_.input[i] = static_cast<std::uint16_t>(0x3000 + i);
      recorder_.holding[i] = static_cast<std::uint16_t>(0xA000 ^ i);
    }
  }

  void Run() {
    ResetLink();
    const int link = input_.Choice(4);
    Settings.ConfiguredLink = link < 3 ? static_cast<std::int16_t>(link) : input_.Number16();
    const std::uint8_t station = input_.Byte();
    Settings.StationSetting = station < 250 ? station : input_.Number16();
    Settings.ComPortIndex = static_cast<std::int16_t>(input_.Choice(8));
    CommLink.TransactionNo = static_cast<std::int16_t>(input_.Number16() & 0x7FFF);
    const std::uint8_t beforeMidnight = input_.Byte();
    if (beforeMidnight != 0) {
      platform_.time.millisecondsSinceMidnight = 86400000 - beforeMidnight;
    }
    Open();
    for (int request = 0; request < MostRequests && !input_.Empty(); ++request) {
      Step();
    }
    gFLinkClose();
    RequireAtRest();
  }

private:
  void Step() {
    switch (input_.Choice(8)) {
    case 0:
    case 1:
    case 2:
      Exchange(false);
      break;
    case 3:
    case 4:
      Exchange(true);
      break;
    case 5:
      if (input_.Flag()) {
        gFLinkClose();
      }
      Open();
      break;
    case 6:
      FailDevice();
      break;
    default:
      platform_.time.Advance(input_.Byte() * 10);
    }
  }

  void Open() {
    const int before = platform_.boxes.Count();
    const bool opened = gFLinkOpen();
    Require(platform_.boxes.Count() == before + (opened ? 0 : 1), "a failed opening is told once");
    RequireAtRest();
  }

  void FailDevice() {
    FuzzWire& wire = Wire();
    switch (input_.Choice(7)) {
    case 0:
      wire.lost = true;
      break;
    case 1:
      wire.lost = false;
      break;
    case 2:
      platform_.usb.failOpen = !platform_.usb.failOpen;
      break;
    case 3:
      platform_.usb.failWrite = !platform_.usb.failWrite;
      break;
    case 4:
      platform_.usb.claimedCount = input_.Number32();
      break;
    case 5: {
      const std::size_t count = input_.Byte();
      wire.between = Bytes(2 * count, 0x55);
      break;
    }
    default:
      // In the middle of what comes next.
      platform_.time.After(input_.Byte(), [&wire] { wire.lost = true; });
    }
  }

  FuzzWire& Wire() {
    return CommLink.LinkKind == LinkUsb        ? platform_.usb.wire
           : CommLink.LinkKind == LinkEthernet ? platform_.socket.wire
                                               : platform_.serial.wire;
  }

  void TakeRequest(bool write) {
    constexpr std::array<std::int32_t, 8> Numbers{30001, 40001, 40011, 44001, 49999, 39999, 30101, 41501};
    const std::uint8_t count = input_.Byte();
    CommLink.RegCount = count <= 192 ? static_cast<std::int16_t>(count % 65) : input_.Number16();
    const std::uint8_t number = input_.Byte();
    CommLink.RegAddress = number < 200 ? Numbers[number % Numbers.size()] : input_.Number32();
    if (write) {
      const auto words = input_.Take(static_cast<std::size_t>(std::clamp<int>(CommLink.RegCount, 0, 64)));
      std::copy(words.begin(), words.end(), CommLink.TxWords.begin());
    }
  }

  void Exchange(bool write) {
    TakeRequest(write);
    FuzzWire& wire = Wire();
    const bool quiet = wire.waiting.empty() && !platform_.time.AnyEventPending();
    const bool sound = !wire.lost && !platform_.usb.failOpen && !platform_.usb.failWrite &&
                       !platform_.usb.claimedCount && wire.between.empty() && LinkStands();
    const int boxes = platform_.boxes.Count();
    const int sent = wire.sent;
    const std::int64_t start = platform_.time.millisecondsNow;
    const auto number = CommLink.RegAddress;
    const bool frameable = Frameable(write);
    const std::int16_t transaction = CommLink.TransactionNo;
    plan_.clean = false;
    bool result = false;
    try {
      result = write ? gFWriteRegs() : gFReadRegs();
    } catch (const RunTimeFailure&) {
      Require(!frameable, "only a request that no frame can hold is a failure");
      Require(platform_.boxes.Count() == boxes && wire.sent == sent,
              "such a request is neither sent nor told");
      RequireAtRest();
      return;
    }
    Require(frameable, "a request that no frame can hold is a failure");
    const std::uint8_t code = CommLink.ResultCode;
    Require(result == (code == ResultOk), "the result is that of the code");
    Require(CodeExists(code), "the link knows the code");
    Require(platform_.boxes.Count() == boxes + ExpectedBoxes(code, wire.sent > sent),
            "an exchange tells what it has to tell");
    Require(platform_.time.millisecondsNow - start <= WaitMilliseconds + 200, "an exchange ends in time");
    Require(wire.sent <= sent + 1, "there is one attempt");
    RequireAtRest();
    if (CommLink.LinkKind == LinkEthernet) {
      Require(CommLink.TransactionNo == (transaction == 32767 ? 0 : transaction + 1),
              "a frame takes a transaction number");
    }
    if (quiet && sound && plan_.clean && wire.sent > sent) {
      Require(result, "a good reply is a success");
      if (!write) {
        RequireRegisters(number);
      }
    }
  }

  bool LinkStands() {
    return CommLink.LinkKind == LinkUsb        ? true
           : CommLink.LinkKind == LinkEthernet ? platform_.socket.state == 7
                                               : platform_.serial.open;
  }

  void RequireRegisters(std::int32_t number) {
    const auto& table = number / 10000 == 3 ? recorder_.input : recorder_.holding;
    for (std::size_t i = 0; i < static_cast<std::size_t>(CommLink.RegCount); ++i) {
      const std::size_t at =
          (static_cast<std::size_t>(number % 10000 - 1) + i) % FuzzRecorder::TableRegisters;
      Require(CommLink.RxWords[2 * i] + 256 * CommLink.RxWords[2 * i + 1] == table[at],
              "the registers are those of the recorder");
    }
  }

  void RequireAtRest() {
    Require(!WaitTimer.Enabled && !platform_.time.AnyTimerArmed(), "no timer runs behind an exchange");
  }

  FuzzInput& input_;
  FuzzPlatform platform_;
  FuzzRecorder recorder_;
  ReplyPlan plan_;
};

} // namespace

} // namespace loader::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  loader::fuzz::FuzzInput input(data, size);
  loader::fuzz::ExchangeRun(input).Run();
  return 0;
}
