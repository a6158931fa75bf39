#include "paramtool/RecorderSession.h"

#include "comm/TransferWatch.h"
#include "comm/modComunication.h"
#include "paramtool/Json.h"

namespace loader::paramtool {

namespace {

DevicePlatformOptions DevicesOf(const SetUpAddress& address) {
  DevicePlatformOptions options{.programFolder = ThePlatform().programFolder, .portMap = {}};
  switch (address.place) {
  case Place::Tcp:
    options.portMap = [port = address.port](int) { return port; };
    break;
  case Place::Serial:
    options.serialLine = {Q(address.where), address.baud};
    break;
  default:
    options.usbDevice = Q(address.where);
    break;
  }
  return options;
}

} // namespace

RecorderSession::RecorderSession(const Call& call, const SetUpAddress& address)
    : line_{address, call.language(), Interrupt::Asked}, devices_(DevicesOf(address)),
      interrupt_([] { StopTimer(WaitTimer); }), progress_(call.language()) {
  WatchOfTransfers.mayGo = [this](const BlockStep& step) {
    progress_.Show(step);
    return !Interrupt::Asked();
  };
}

RecorderSession::~RecorderSession() {
  WatchOfTransfers.mayGo = {};
}

void RecorderSession::RequireNotStopped() const {
  if (Interrupt::Asked()) {
    throw Undone{line_.address.text + u": " +
                 std::u16string(PhraseText(Phrase::StoppedBetween, line_.language))};
  }
}

SetUpAddress RecorderAddress(const Call& call, std::u16string_view text) {
  SetUpAddress address = ParseAddress(text, call.language());
  if (!IsRecorder(address.place)) {
    throw Undone{Say(Phrase::NotARecorder, call.language(), {{u"SETUP", text}})};
  }
  return address;
}

} // namespace loader::paramtool
