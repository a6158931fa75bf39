// The fields that the screens of measuring and of operation channels have alike. The texts are each screen's
// own: their messages are.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>

#include "fields/Fields.h"

namespace loader {

inline constexpr auto SharedChannelFields = std::to_array<FieldRow>({
    {"cmbDecimal", "C", "POIN"},     {"cmbFtio", "C", "FTIO"},        {"cmbTaisu", "C", "TAIS"},
    {"cmbROOT", "C", "ROOT"},        {"cmbDispColor", "C", "COLR"},   {"txtInputFilter", "C", "FILT"},
    {"txtStMin", "C", "MMIN"},       {"txtStMax", "C", "MMAX"},       {"txtIndMin", "C", "SMIN"},
    {"txtIndMax", "C", "SMAX"},      {"txtPVShift", "C", "PVSI"},     {"txtPVSlope", "C", "PVKA"},
    {"txtRecRangeMin", "C", "RMIN"}, {"txtRecRangeMax", "C", "RMAX"}, {"cmbRecMode", "C", "RECO"},
    {"cmbRecM", "C", "RECM"},        {"cmbSUBCh", "C", "SUBC"},       {"cmbSeki", "C", "SEKI"},
    {"cmbStyp", "C", "STYP"},        {"cmbSdig", "C", "SDIG"},        {"cmbSbas", "C", "SBAS"},
    {"cmbSres", "C", "SRES"},        {"cmbSri", "C", "SRIN"},         {"txtSekiScale", "C", "SSCL"},
    {"txtSecu", "C", "SECU"},        {"cmbAlarmType1", "A", "A1TY"},  {"cmbAlarmType2", "A", "A2TY"},
    {"cmbAlarmType3", "A", "A3TY"},  {"cmbAlarmType4", "A", "A4TY"},  {"txtAlarmSet1", "A", "A1VL"},
    {"txtAlarmSet2", "A", "A2VL"},   {"txtAlarmSet3", "A", "A3VL"},   {"txtAlarmSet4", "A", "A4VL"},
    {"cmbAlarmOut1", "A", "A1RL"},   {"cmbAlarmOut2", "A", "A2RL"},   {"cmbAlarmOut3", "A", "A3RL"},
    {"cmbAlarmOut4", "A", "A4RL"},
});

// A screen's own fields and, behind them, those that both have.
template <std::size_t Count>
consteval std::array<FieldRow, Count + SharedChannelFields.size()>
WithSharedFields(const std::array<FieldRow, Count>& own) {
  std::array<FieldRow, Count + SharedChannelFields.size()> all{};
  std::ranges::copy(SharedChannelFields, std::ranges::copy(own, all.begin()).out);
  return all;
}

} // namespace loader
