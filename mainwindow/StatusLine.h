// The status line: which recorder "読み出し" and "書き込み" would talk to, and what was done last, when it
// ended and how.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "core/ModelProfile.h"
#include "platform/Platform.h"

namespace loader {

// "通信先: RUG　イーサネット 192.168.1.1　ｽﾃｰｼｮﾝ No. 1"; without address or port for USB.
[[nodiscard]] std::u16string RecorderText(const CommSettings& settings, std::string_view model);

enum class Deed { Read, Write, Store, SetClock, Open, Save, TextOutput };

// A deed that is over.
struct DeedDone {
  Deed deed = Deed::Read;
  DateAndTime ended;
  std::u16string with; // the recorder or the file
  bool good = false;
  std::u16string words; // of its messages, when it is not good
};
// "10:32 読み出し RUG V12W 192.168.1.1", "10:32 開く BOILER.KOV 失敗: 読み込みに失敗しました".
[[nodiscard]] std::u16string DoneText(const DeedDone& done);

struct DeedResult {
  bool done = true;         // asked where no message tells
  std::u16string file = {}; // that no file dialog has named
};
using DeedAction = std::function<DeedResult()>;
// Does it and tells what became of it. Empty when the user has not gone through with it: a question answered
// with Cancel. What the action fails with passes through, after `tell`.
void DoAndTell(Deed deed, const DeedAction& action, const std::function<void(const DeedDone&)>& tell);

} // namespace loader
