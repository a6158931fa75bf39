// The parameter store: the one image of a recorder's set-up in memory, and its look-ups.
//
// The store has no fixed shape: sections, items and parameters come from the initial settings file. The code
// knows a parameter only by section code, item number (from 0) and tag. All look-ups are linear walks: a
// store has some twenty sections of a few dozen tags.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace loader {

constexpr std::size_t TextWidth = 64; // characters of a text record
constexpr std::size_t TagWidth = 4;
constexpr std::size_t CodeWidth = 3;

// A whole-number parameter: one register of the recorder.
struct ParamNumRecord {
  std::string Tag;             // 4 characters, blank padded
  std::int16_t WordOffset = 0; // register relative to the start of the item
  std::int16_t Value = 0;      // what the screens show, what is saved and written
  std::int16_t ReadValue = 0;  // as last taken from the recorder
  std::int16_t DefaultValue = 0;
  std::int16_t MinValue = 0;
  std::int16_t MaxValue = 0;
  bool operator==(const ParamNumRecord&) const = default;
};

// A text parameter. The three texts are always 64 characters, blank padded: assign them with SetText.
struct ParamTextRecord {
  std::string Tag;
  std::int16_t WordOffset = 0;
  std::u16string Value;
  std::u16string ReadValue;
  std::u16string DefaultValue;
  std::int16_t ByteLength = 0; // bytes of code page 932 that the text takes in the recorder
  bool operator==(const ParamTextRecord&) const = default;
};

struct ParamItem {
  std::vector<ParamNumRecord> NumRecords;
  std::vector<ParamTextRecord> TextRecords;
  bool operator==(const ParamItem&) const = default;
};

struct ParamSection {
  std::string Code;             // 3 characters, blank padded
  std::int32_t BaseAddress = 0; // 3xxxx or 4xxxx, 1-based
  std::int16_t ItemWords = 0;   // registers of one item
  std::int16_t ItemCount = 0;
  std::vector<ParamItem> Items; // ItemCount entries of the same tags in the same order
  bool operator==(const ParamSection&) const = default;
};

using ParamStoreTable = std::vector<ParamSection>;

extern ParamStoreTable ParamStore;
// The store before the last change of model.
extern ParamStoreTable ParamStoreBackup;

using StoreIndex = std::uint16_t;
// What every look-up returns when the thing sought is absent; also for a section or item number outside the
// store.
constexpr StoreIndex NotFound = 65535;

// Which copies a write goes to: 0 Value, 1 ReadValue, 2 and any other value both.
using ValueSlot = int;
constexpr ValueSlot SlotValue = 0;
constexpr ValueSlot SlotReadValue = 1;
constexpr ValueSlot SlotBoth = 2;

// Codes and tags are compared in full, trimmed on both sides.
[[nodiscard]] StoreIndex gFFindSection(std::string_view sectionCode);
[[nodiscard]] StoreIndex gFFindNumTag(StoreIndex sectionIndex, int itemNumber, std::string_view tag);
[[nodiscard]] StoreIndex gFFindTextTag(StoreIndex sectionIndex, int itemNumber, std::string_view tag);

// The one generic setter. A tag is sought among the texts first, then among the numbers. False, with nothing
// changed, when the section, the item or the tag is absent. A number that is no signed 16-bit number is a
// RunTimeFailure.
bool gFParamValue(std::string_view sectionCode, int itemNumber, std::string_view tag,
                  std::u16string_view value, ValueSlot slot);

// The record, or nullptr where a look-up gives NotFound: section, tag and bounds in one step.
[[nodiscard]] ParamNumRecord* FindNumRecord(std::string_view sectionCode, int itemNumber,
                                            std::string_view tag);
[[nodiscard]] ParamTextRecord* FindTextRecord(std::string_view sectionCode, int itemNumber,
                                              std::string_view tag);
// Value of a number, or `absent` where it does not exist.
[[nodiscard]] std::int16_t NumValue(std::string_view sectionCode, int itemNumber, std::string_view tag,
                                    std::int16_t absent = 0);
// Value of a number; false, with nothing changed, where it does not exist.
bool SetNumValue(std::string_view sectionCode, int itemNumber, std::string_view tag, std::int16_t value);

// Padded with blanks to 64 characters, or cut there.
[[nodiscard]] std::u16string FixedText(std::u16string_view text);
void SetText(ParamTextRecord& record, std::u16string_view text, ValueSlot slot);
void SetNumber(ParamNumRecord& record, std::int16_t value, ValueSlot slot);

// Start counts and catalogues: what a program needs, with a window or without, before it loads a model.
void TakeStartValues();

// The entry routine: start counts, catalogues, the store; then `showMainWindow`. When the initial settings
// cannot be loaded it shows text 11005, never calls `showMainWindow` and returns false: the program ends.
[[nodiscard]] bool Main(const std::function<void()>& showMainWindow);

} // namespace loader
