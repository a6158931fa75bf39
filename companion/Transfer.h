// Reading a recorder for programs without a window: one flow, no questions, and its end in words.
//
// The platform in force has the devices that the address names; its boxes are not used. Everything here
// throws Undone where it cannot be done, with the address, the section, the registers and the reason.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "comm/TransferResult.h"
#include "comm/TransferWatch.h"
#include "companion/SetUps.h"

namespace loader {

// The recorder that is meant, and how its program speaks.
struct RecorderLine {
  SetUpAddress address;
  Language language = Language::Japanese;
  // Whether the user has ended the program. A transfer that ends for that reason says so.
  std::function<bool()> stopped = {};
};

// Which recorder stands there.
struct RecorderThere {
  std::string model;
  std::u16string versionTag;
  std::int16_t generation = 0;
};

// A section's registers, low byte first.
struct SectionBlock {
  std::string section;
  std::int32_t firstRegister = 0;
  std::vector<std::uint8_t> bytes;
};

struct RecorderRead {
  RecorderThere recorder;
  WholeSetUp setUp;                 // of the recorder's model; what a read does not take has its default
  std::vector<SectionBlock> blocks; // that were read, in their order
  bool busy = false;                // recording or computing, where that was asked
};
enum class AskState { No, Yes };

// The whole set-up of a recorder, of whichever model: the model in force plays no part. Another model than
// `asked` (empty: any) is Undone, with both names.
[[nodiscard]] RecorderRead ReadRecorder(const RecorderLine& line, const std::string& asked,
                                        AskState state = AskState::No);

// "KOV V40A（世代 5、ステーション 1）"
[[nodiscard]] std::u16string RecorderText(const RecorderThere& recorder, const RecorderLine& line);

// --- For the flows of this folder

// While it stands the address is what the link is opened to, boxes are kept, and a connection that fails ends
// a wait at once.
class LineInUse {
public:
  explicit LineInUse(const RecorderLine& line);
  ~LineInUse();
  LineInUse(const LineInUse&) = delete;
  LineInUse& operator=(const LineInUse&) = delete;

  // Undone unless it is open.
  void Open();
  // Why it ended: "チャネル（C）のレジスタ 44001～44064
  // を読めません（応答がありません）「タイムアウトエラー」".
  [[nodiscard]] std::u16string Reason(const TransferResult& result) const;
  // Undone with the reason.
  void RequireDone(const TransferResult& result) const;
  // Undone when an exchange has failed and counted as success: what was read is not the recorder's.
  void RequireNothingSwallowed() const;
  [[nodiscard]] bool HasSwallowed() const;

private:
  struct Inside;
  const RecorderLine& line_;
  std::unique_ptr<Inside> inside_;
};

// Adds each block that was read (or written) to `blocks` while it stands.
class KeepBlocks {
public:
  KeepBlocks(std::vector<SectionBlock>& blocks, bool written);
  ~KeepBlocks();
  KeepBlocks(const KeepBlocks&) = delete;
  KeepBlocks& operator=(const KeepBlocks&) = delete;

private:
  std::function<void(const WholeBlock&)> before_;
};

} // namespace loader
