#include "mainwindow/StatusLine.h"

#include <algorithm>
#include <array>
#include <exception>

#include "core/OwnTexts.h"
#include "core/Text.h"
#include "core/TextTable.h"
#include "core/modFile.h"
#include "core/modMain.h"
#include "files/ParameterFile.h"
#include "mainwindow/Overhearing.h"

namespace loader {

namespace {

// How a deed is told: its caption, and the message that alone says that it went through. Without one it went
// through when nothing was said.
struct DeedRow {
  TextId caption;
  std::optional<TextId> success;
  bool withRecorder;
  bool tellsVersion; // the recorder has been asked for it
};
DeedRow RowOf(Deed deed) {
  switch (deed) {
  case Deed::Read:
    return {19623, {}, true, true};
  case Deed::Write:
    return {19624, TextId(62701), true, true};
  case Deed::Store:
    return {19625, TextId(62702), true, false};
  case Deed::SetClock:
    return {19626, {}, true, true};
  case Deed::Open:
    return {10600, {}, false, false};
  case Deed::Save:
    return {10016, {}, false, false};
  case Deed::TextOutput:
    break;
  }
  return {10017, {}, false, false};
}

std::u16string LinkText(const CommSettings& settings) {
  switch (settings.ConfiguredLink) {
  case 0:
    return std::u16string(LoadText(10511));
  case 1:
    return std::u16string(LoadText(10512));
  default:
    return std::u16string(LoadText(10513));
  }
}

// What tells one recorder of a link from another.
std::u16string PlaceText(const CommSettings& settings) {
  constexpr TextId FirstPort = 10516;
  constexpr std::int16_t LastPort = 4;
  switch (settings.ConfiguredLink) {
  case 0:
    return {};
  case 1:
    return settings.RecorderIpAddress;
  default:
    return std::u16string(LoadText(FirstPort + std::clamp<int>(settings.ComPortIndex, 0, LastPort)));
  }
}

// The words behind one another, with one blank between any two that are not empty.
template <typename... Words> std::u16string Joined(const Words&... words) {
  std::u16string line;
  const auto add = [&line](std::u16string_view word) {
    if (!line.empty() && !word.empty()) {
      line += u' ';
    }
    line += word;
  };
  (add(words), ...);
  return line;
}

std::u16string WordsOf(const Overheard& heard) {
  std::u16string words;
  for (const std::u16string& message : heard.messages) {
    words = Joined(words, Trim(Replace(message, u"\n", u" ")));
  }
  return words;
}

std::u16string TextOfP(std::string_view tag, std::size_t characters) {
  const ParamTextRecord* record = FindTextRecord("P", 0, tag);
  return record == nullptr ? std::u16string() : std::u16string(Trim(record->Value).substr(0, characters));
}

// As the recorder has named itself, when it was asked and has answered.
std::u16string RecorderOf(const DeedRow& row, bool good, const std::u16string& place) {
  constexpr std::size_t ModelCharacters = 3;
  constexpr std::size_t VersionCharacters = 4;
  const bool named = row.tellsVersion && good;
  return Joined(named ? TextOfP("PILC", ModelCharacters) : Widen(ModelCode),
                named ? TextOfP("PVER", VersionCharacters) : std::u16string(), place);
}

bool WentThrough(const DeedRow& row, const Overheard& heard, bool done) {
  if (row.success) {
    return !heard.messages.empty() && heard.messages.back() == LoadText(*row.success);
  }
  return heard.messages.empty() && done;
}

// A disk that fills up leaves a shortened file, and the save says nothing.
bool IsWhole(const std::filesystem::path& saved) {
  try {
    return ReadRegularFile(saved) == ParamFileBytes();
  } catch (const RunTimeFailure&) {
    return false;
  }
}

} // namespace

std::u16string RecorderText(const CommSettings& settings, std::string_view model) {
  const std::u16string station = Joined(LoadText(18081), DecimalText(settings.StationSetting));
  std::u16string text(OwnText(OwnTextId::StatusRecorder));
  text = Replace(text, u"@MODEL@", Widen(model));
  text = Replace(text, u"@LINK@", Joined(LinkText(settings), PlaceText(settings)));
  return Replace(text, u"@STATION@", station);
}

std::u16string DoneText(const DeedDone& done) {
  constexpr int Digits = 2;
  const std::u16string time =
      PaddedDecimal(done.ended.hour, Digits) + u":" + PaddedDecimal(done.ended.minute, Digits);
  std::u16string failed;
  if (!done.good) {
    failed = done.words.empty() ? std::u16string(OwnText(OwnTextId::StatusFailed))
                                : Replace(OwnText(OwnTextId::StatusFailedWith), u"@WORDS@", done.words);
  }
  return Joined(time, LoadText(RowOf(done.deed).caption), done.with, failed);
}

void DoAndTell(Deed deed, const DeedAction& action, const std::function<void(const DeedDone&)>& tell) {
  const DeedRow row = RowOf(deed);
  const std::u16string place = PlaceText(Settings); // the menus may choose another one meanwhile
  const std::u16string link = place.empty() ? LinkText(Settings) : place;
  Overheard heard;
  DeedResult result;
  const auto end = [&](bool good, const std::u16string& words) {
    const std::u16string with = row.withRecorder          ? RecorderOf(row, good, link)
                                : heard.fileTitle.empty() ? result.file
                                                          : heard.fileTitle;
    tell({deed, ThePlatform().clock.Now(), with, good, good ? std::u16string() : words});
  };
  try {
    Overhear(heard, [&] { result = action(); });
  } catch (const std::exception& failure) {
    end(false, Joined(WordsOf(heard), FromUtf8(failure.what())));
    throw;
  }
  if (heard.declined) {
    return;
  }
  if (deed == Deed::Save && heard.messages.empty() && !IsWhole(heard.file)) {
    end(false, std::u16string(OwnText(OwnTextId::FileNotWhole)));
    return;
  }
  end(WentThrough(row, heard, result.done), WordsOf(heard));
}

} // namespace loader
