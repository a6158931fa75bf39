// One parameter of the set-up in force, as reports name it and say its value.
#pragma once

#include <compare>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "companion/Phrases.h"
#include "core/modMain.h"
#include "meaning/Meaning.h"

namespace loader {

// Section and tag are trimmed; the item counts from 0.
struct ParameterRef {
  std::string section;
  int item = 0;
  std::string tag;
  // NOLINTNEXTLINE(modernize-use-nullptr): takes the comparison with zero that it is made of for a pointer
  auto operator<=>(const ParameterRef&) const = default;
};

// A record of the store: one of the two is set.
struct StoredParameter {
  ParamNumRecord* number = nullptr;
  ParamTextRecord* text = nullptr;
};
[[nodiscard]] StoredParameter FindParameter(const ParameterRef& ref); // neither is set where it is absent

// All parameters of the set-up in force, in the order of the parameter file: of an item the texts stand
// first.
void ForEachParameter(const std::function<void(const ParameterRef&, const StoredParameter&)>& use);
[[nodiscard]] std::vector<ParameterRef> AllParameters();

// As the parameter file writes it: "C02MMAX".
[[nodiscard]] std::string KeyOf(const ParameterRef& ref);
// The parameter of such a key, be it in the store or not; blanks behind it are passed over. Empty for a text
// that is no key.
[[nodiscard]] std::optional<ParameterRef> RefOfKey(std::string_view key);

// A number, or a text without the blanks at its end.
using StoredValue = std::variant<std::int16_t, std::u16string>;
// Empty where the set-up in force does not have it.
[[nodiscard]] std::optional<StoredValue> ValueOf(const ParameterRef& ref);
// The values of AllParameters, in its order: for set-ups of one model the same place is the same parameter.
[[nodiscard]] std::vector<StoredValue> AllValues();
// As the parameter file writes it.
[[nodiscard]] std::u16string RawText(const StoredValue& value);

// How a report speaks.
struct Speech {
  Language language = Language::Japanese;
  bool secrets = false; // show passwords
};

// Stands for every secret, an empty one too: a report does not tell whether there is a password.
inline constexpr std::u16string_view HiddenSecret = u"\u2022\u2022\u2022\u2022";
[[nodiscard]] bool IsSecret(const ParameterRef& ref);

// A recorder may hold line breaks and other control characters in a text. In a report each shows as its sign,
// so that a parameter stays one line and nothing of a set-up commands a terminal.
[[nodiscard]] std::u16string VisibleText(std::u16string_view text);

// A character below the blank, or DEL: no field takes one.
[[nodiscard]] bool HasControlCharacter(std::u16string_view text);
// A value of a file as a report shows it, whatever it is: cut, and visible.
[[nodiscard]] std::u16string ShownValue(std::u16string_view value);
// The key of a line of a file as a report shows it: cut behind the columns of a key, since what stands in its
// place in a damaged line may be a value.
[[nodiscard]] std::u16string ShownKey(std::string_view key);
// Whether what stands in the place of a key may be one, damaged or not. What is none may be the rest of
// another line: of a password, behind a line end that got into it.
[[nodiscard]] bool LooksLikeKey(std::u16string_view key);

// "CH 3 Alarm 1 set value"; a parameter that has no name of its own is called by its tag.
[[nodiscard]] std::u16string NameOf(const ParameterRef& ref, Language language);
// The value as an engineer reads it, by the set-up in force: "800.0", "K熱電対", "8:05". A value that has no
// such text (outside its list or its limits) is its number. A secret is hidden unless asked for. Always one
// line: VisibleText.
[[nodiscard]] std::u16string ReadableValue(const ParameterRef& ref, const Speech& speech);

// The pages of the window, in their order, then what stands on none of them.
enum class Page { Channels, Operations, General, Display, Network, Mail, Unshown, Recorder };
inline constexpr int Pages = 8;
[[nodiscard]] Page PageOf(const ParameterRef& ref);
[[nodiscard]] std::u16string_view PageName(Page page, Language language);

} // namespace loader
