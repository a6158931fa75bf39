// The cascades of the channel screens: what the pick of one row rewrites in other fields, which controls can
// be used then, and the marks on what was rewritten.
#pragma once

#include <initializer_list>
#include <span>
#include <string_view>

#include "channelscreens/ChannelScreen.h"

namespace loader {

// Enables what the channel as it is shown lets the user change, and disables the rest.
void SetEnabled(ChannelScreen& screen);

// Runs what `picked` sets off, then shows what follows from it, and marks exactly what has changed beside
// `picked` itself.
void RunCascade(ChannelScreen& screen, const Control& picked, const std::function<void()>& cascade);

// The cascades that both screens have.
void DecimalCascade(ChannelScreen& screen);   // cmbDecimal
void LogarithmCascade(ChannelScreen& screen); // cmbTaisu
void FValueCascade(ChannelScreen& screen);    // cmbFtio

// --- What cascades are made of. Tags that the screen does not have are passed over.

// A stored value into a number field, in the position and within the limits that are in force now.
void ShowValue(ChannelScreen& screen, std::string_view tag, int value);
// A list to the row of a value or of its record's default; one that it does not have leaves it as it is. No
// cascade runs (LoadingFlag).
void ShowValueRow(ChannelScreen& screen, std::string_view tag, int value);
void ShowDefaultRow(ChannelScreen& screen, std::string_view tag);
// A number field to its record's default.
void ShowDefault(ChannelScreen& screen, std::string_view tag);

// Reads each text as it stood under `before` and writes the same integer as it stands now; a blank stays
// blank, and what stands as before is left alone. False at the first text that cannot be read, after its
// message.
bool MoveFields(ChannelScreen& screen, const ChannelRow& before,
                std::initializer_list<std::string_view> tags);
// The low cut where a kind or scaling has moved the point under it: the same integer, also outside its
// limits. "適用" asks for it in its field then.
void MoveLowCut(ChannelScreen& screen, const ChannelRow& before);

// An engineering field that is disabled has no other way to a value that "適用" takes: one outside its limits
// shows the kind's default.
void ShowEngineering(ChannelScreen& screen, std::string_view tag, int value, int kindDefault);
void KeepEngineeringInside(ChannelScreen& screen);

// The number in a field as a stored integer in the position in force; nothing for a text that is none.
[[nodiscard]] std::optional<std::int16_t> ShownInteger(ChannelScreen& screen, std::string_view tag);
// The alarm of a number from 0, as the power of ten under the logarithm; empty without it, and while one of
// the fields of the scale is blank.
[[nodiscard]] std::u16string AlarmPower(ChannelScreen& screen, int alarm);

} // namespace loader
