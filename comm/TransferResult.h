// What became of a transfer between the store and a recorder.
//
// The cores of the flows (ReadSetUp, WriteSetUp, ReadAll, WriteAll, CheckRecorder, OpenLink) ask nothing and
// show no box of their own; they return this. The boxes stand in the flows of the window, which say them in
// their order, and a program without a window says it in its own words. The link's own messages (11000, 11001
// and the 11004 of a USB device) still come from the exchange, before the result is there.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace loader {

enum class TransferEnd {
  Done,
  NothingToTransfer, // the recorder's generation has no sections: done for the window, though nothing went
  LinkNotOpened,
  StateNotRead, // section S; a write alone
  RecorderBusy, // recording or computing: nothing was written
  IdentityNotRead,
  OtherModel, // than the one in force
  NoVersion,  // the version tag has the wrong shape
  RequestFailed,
  SectionUnfit, // the section cannot be transferred at all: `detail` says why
};

// What a request that failed asked for. `code` is a ResultCode of the link.
struct FailedRequest {
  bool writing = false;
  std::int32_t firstRegister = 0; // as the initial settings count: 3xxxx or 4xxxx
  std::int16_t registers = 0;
  std::uint8_t code = 0;
  bool operator==(const FailedRequest&) const = default;
};

struct TransferResult {
  TransferEnd end = TransferEnd::Done;
  std::string sections = {}; // that came through whole, in their order, one letter each
  std::string section = {};  // in which it ended: S and P too; empty when it is done or no section was begun
  // Of RequestFailed, and of StateNotRead and IdentityNotRead where a request failed.
  FailedRequest request = {};
  std::string detail = {}; // of SectionUnfit, and of the other two where no request failed
  bool operator==(const TransferResult&) const = default;
  [[nodiscard]] bool IsDone() const {
    return end == TransferEnd::Done || end == TransferEnd::NothingToTransfer;
  }
};

// Where a flow's words stand. Empty functions are passed over.
struct TransferTalk {
  std::function<void(const TransferResult&)> whileOpen = {};  // the link is open, the lamp on
  std::function<void(const TransferResult&)> whenClosed = {}; // the lamp is off, the controls still disabled
};
inline void Tell(const std::function<void(const TransferResult&)>& words, const TransferResult& result) {
  if (words) {
    words(result);
  }
}

} // namespace loader
