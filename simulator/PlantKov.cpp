// The heat treatment shop of the KOV: two furnaces, a sintering furnace, their gas, water and power.
#include "simulator/Plant.h"

namespace loader::simulator {

namespace {

// Units by their numbers in the loader's list; 156 up are the user units of section U.
enum Unit {
  Celsius = 0,
  M3PerHour = 15,
  KiloPascal = 38,
  Percent = 82,
  PercentO2 = 87,
  MilliVolt = 114,
  Volt = 115,
  KiloWatt = 123,
  NormalM3 = 156,
  CelsiusPerMinute = 157,
  MegaPascalGauge = 158,
  KiloWattHour = 159
};

// clang-format off
constexpr ChannelRow Measuring[] = {
    {u"1号炉 上段", u"ZONE-1 UPPER", u"1号炉 上段", 1, Celsius, false, 1, {0, 5000}, {0, 12000}, {0, 12000},
     {{{AlarmHigh, 9500, 1}, {AlarmHigh, 9700, 2}, {AlarmLow, 7800, 3}, {}}}},
    {u"1号炉 下段", u"ZONE-1 LOWER", u"1号炉 下段", 1, Celsius, false, 1, {0, 5000}, {0, 12000}, {0, 12000},
     {{{AlarmHigh, 9500, 1}, {AlarmHigh, 9700, 2}, {AlarmLow, 7800, 3}, {}}}},
    {u"2号炉 上段", u"ZONE-2 UPPER", u"2号炉 上段", 1, Celsius, false, 1, {0, 5000}, {0, 12000}, {2000, 10000},
     {{{AlarmHigh, 9200, 4}, {AlarmLow, 7500, 5}, {}, {}}}},
    {u"2号炉 下段", u"ZONE-2 LOWER", u"2号炉 下段", 8, Celsius, false, 1, {0, 5000}, {0, 13000}, {2000, 10000},
     {{{AlarmHigh, 9200, 4}, {AlarmLow, 7500, 5}, {}, {}}}},
    {u"焼結炉 炉心", u"SINTER CORE", u"焼結炉", 5, Celsius, false, 1, {0, 5000}, {0, 16000}, {0, 16000},
     {{{AlarmHigh, 14500, 6}, {}, {}, {}}}},
    {u"炭素電位ｾﾝｻ", u"CARBON mV", u"炭素電位", 30, MilliVolt, false, 2, {0, 5000}, {0, 5000}, {0, 5000}},
    {u"燃料ガス流量", u"FUEL GAS", u"燃料ガス積算", 32, NormalM3, true, 1, {1000, 5000}, {0, 2000}, {0, 2000},
     {{{AlarmHigh, 1850, 7}, {AlarmLow, 50, 8}, {}, {}}}},
    {u"炉内圧力", u"CHAMBER", u"炉内圧力", 33, KiloPascal, true, 2, {0, 5000}, {-500, 500}, {-500, 500},
     {{{AlarmHigh, 350, 9}, {AlarmLow, -350, 9}, {}, {}}}},
    {u"冷却水 入口", u"CW INLET", u"冷却水 入口", 20, Celsius, false, 1, {0, 5000}, {0, 1000}, {0, 1000},
     {{{AlarmHigh, 350, 10}, {}, {}, {}}}},
    {u"冷却水 出口", u"CW OUTLET", u"冷却水 出口", 20, Celsius, false, 1, {0, 5000}, {0, 1000}, {0, 1000},
     {{{AlarmHigh, 550, 10}, {AlarmHigh, 600, 11}, {}, {}}}},
    {u"焼入油 温度", u"QUENCH OIL", u"焼入油", 21, Celsius, false, 1, {0, 5000}, {-200, 2000}, {0, 2000},
     {{{AlarmHigh, 1200, 12}, {AlarmLow, 500, 0}, {}, {}}}},
    {u"ﾜｰｸ温度 1", u"WORK T1", u"ﾜｰｸ 1", 4, Celsius, false, 1, {0, 3000}, {0, 4000}, {0, 4000}},
    {u"ﾜｰｸ温度 2", u"WORK T2", u"ﾜｰｸ 2", 4, Celsius, false, 1, {0, 3000}, {0, 4000}, {0, 4000}},
    {u"排ガスＯ２", u"FLUE O2", u"排ガス", 31, PercentO2, true, 1, {0, 5000}, {0, 250}, {0, 250},
     {{{AlarmHigh, 80, 13}, {AlarmLow, 15, 14}, {}, {}}}},
    {u"真空計", u"VACUUM", u"真空計", 31, MilliVolt, false, 1, {0, 5000}, {0, 5000}, {0, 5000}},
    {u"炉電力", u"POWER", u"電力量", 32, KiloWatt, true, 1, {1000, 5000}, {0, 5000}, {0, 5000},
     {{{AlarmHigh, 4800, 15}, {}, {}, {}}}},
    {u"予備", u"SPARE", u"予備", 0, 5, false, 1, {0, 5000}, {0, 5000}, {0, 5000}},
    {u"1号炉 上下差", u"ZONE-1 DIFF", u"1号炉 差", 40, Celsius, true, 1, {0, 5000}, {-5000, 5000}, {-500, 500},
     {{{AlarmHigh, 250, 16}, {AlarmLow, -250, 16}, {}, {}}}},
};

constexpr ChannelRow Operation[] = {
    {u"1号炉 平均", u"ZONE-1 AVG", u"1号炉 平均", 40, Celsius, true, 1, {0, 5000}, {0, 12000}, {0, 12000},
     {{{AlarmHigh, 9600, 17}, {}, {}, {}}}},
    {u"2号炉 平均", u"ZONE-2 AVG", u"2号炉 平均", 40, Celsius, true, 1, {0, 5000}, {0, 12000}, {0, 12000}},
    {u"最高温度", u"HIGHEST", u"最高温度", 40, Celsius, true, 1, {0, 5000}, {0, 16000}, {0, 16000},
     {{{AlarmHigh, 14600, 18}, {}, {}, {}}}},
    {u"冷却水温度差", u"CW DELTA", u"冷却水差", 40, Celsius, true, 1, {0, 5000}, {0, 500}, {0, 500}},
    {u"抜熱量", u"HEAT LOSS", u"抜熱量積算", 40, KiloWatt, true, 1, {0, 5000}, {0, 3000}, {0, 3000}},
    {u"ガス原単位", u"GAS/POWER", u"原単位", 40, Percent, true, 1, {0, 5000}, {0, 1000}, {0, 1000}},
    {u"ガス積算", u"GAS TOTAL", u"ガス積算", 40, NormalM3, true, 0, {0, 5000}, {0, 30000}, {0, 30000}},
    {u"昇温速度", u"RAMP RATE", u"昇温速度", 40, CelsiusPerMinute, true, 2, {0, 5000}, {-1000, 1000}, {-1000, 1000}},
    {u"運転中", u"RUNNING", u"運転時間", 40, 5, true, 0, {0, 5000}, {0, 1}, {0, 1}},
};

constexpr TermRow Terms[] = {
    // 19: the mean of both zones, by B01 = C01 + C02.
    {0, 1, 1, Plus, Plain, Channel, 1}, {0, 1, 2, Plus, Plain, Channel, 2},
    {0, 4, 1, Plus, Plain, Result, 1}, {0, 4, 2, Over, Plain, Constant, 1},
    {1, 1, 1, Plus, Plain, Channel, 3}, {1, 1, 2, Plus, Plain, Channel, 4},
    {1, 4, 1, Plus, Plain, Result, 1}, {1, 4, 2, Over, Plain, Constant, 1},
    // 21: the highest of five.
    {2, 1, 1, Plus, Highest, Channel, 1, Channel, 2}, {2, 2, 1, Plus, Highest, Channel, 3, Channel, 4},
    {2, 3, 1, Plus, Highest, Result, 1, Result, 2}, {2, 4, 1, Plus, Highest, Result, 3, Channel, 5},
    {3, 4, 1, Plus, Abs, Channel, 10}, {3, 4, 2, Minus, Plain, Channel, 9},
    {4, 4, 1, Plus, Plain, Channel, 22}, {4, 4, 2, Times, Plain, Constant, 2}, {4, 4, 3, Times, Plain, Constant, 3},
    {5, 4, 1, Plus, Plain, Channel, 7}, {5, 4, 2, Over, Plain, Channel, 16}, {5, 4, 3, Times, Plain, Constant, 4},
    {6, 4, 1, Plus, Plain, Total, 7},
    {7, 1, 1, Plus, Average, Channel, 1}, {7, 4, 1, Plus, Plain, Channel, 1}, {7, 4, 2, Minus, Plain, Result, 1},
    {8, 4, 1, Plus, Plain, Digital, 1}, {8, 4, 2, Times, Plain, Received, 1},
};

constexpr NumberRow Numbers[] = {
    // The difference of the zones: channel 18 refers to channel 1 and subtracts channel 2.
    {"C", 17, "OTCH", 0}, {"C", 17, "SUBC", 2},
    {"C", 0, "FILT", 2}, {"C", 1, "FILT", 2}, {"C", 6, "FILT", 5}, {"C", 7, "FILT", 10}, {"C", 15, "FILT", 1},
    {"C", 0, "PVSI", -12}, {"C", 1, "PVSI", 8}, {"C", 6, "PVKA", 102}, {"C", 13, "PVKA", 98},
    {"C", 6, "ROOT", 1},
    {"C", 5, "RECO", 1}, {"C", 14, "RECO", 1}, {"C", 16, "RECO", 1},
    {"C", 6, "RECM", 2}, {"C", 15, "RECM", 1}, {"C", 4, "RECM", 2},
    {"C", 4, "FTIO", 1},
    // Totals: gas by day, power by month, heat by day, running time by external input DI1.
    {"C", 6, "STYP", 0}, {"C", 6, "SEUN", NormalM3}, {"C", 6, "SBAS", 2}, {"C", 6, "SSCL", 10}, {"C", 6, "SECU", 20},
    {"C", 15, "STYP", 1}, {"C", 15, "SEUN", KiloWattHour}, {"C", 15, "SBAS", 2}, {"C", 15, "SSCL", 1},
    {"C", 22, "STYP", 0}, {"C", 22, "SEUN", KiloWattHour}, {"C", 22, "SBAS", 2}, {"C", 22, "SRES", 1},
    {"C", 26, "STYP", 6}, {"C", 26, "SDIG", 10}, {"C", 26, "SRIN", 3},
    {"C", 6, "SDIG", 2}, {"C", 6, "SRIN", 2}, {"C", 14, "TAIS", 0},
    {"C", 0, "ZMB1", 6000}, {"C", 0, "ZMB2", 10000}, {"C", 0, "ZMP1", 20}, {"C", 0, "ZMP2", 80}, {"C", 0, "DSPM", 1},
    {"C", 18, "RECO", 0}, {"C", 19, "RECO", 0}, {"C", 20, "RECO", 0},
    // Groups: both furnaces, sintering, utilities, results.
    {"G", 0, "GC01", 1}, {"G", 0, "GC02", 2}, {"G", 0, "GC03", 3}, {"G", 0, "GC04", 4}, {"G", 0, "GC05", 19},
    {"G", 0, "GC06", 20}, {"G", 0, "GC07", 18},
    {"G", 1, "GC01", 5}, {"G", 1, "GC02", 6}, {"G", 1, "GC03", 15}, {"G", 1, "GC04", 8}, {"G", 1, "GC05", 21},
    {"G", 2, "GC01", 9}, {"G", 2, "GC02", 10}, {"G", 2, "GC03", 11}, {"G", 2, "GC04", 7}, {"G", 2, "GC05", 14},
    {"G", 2, "GC06", 16}, {"G", 2, "GC07", 22},
    {"G", 3, "GC01", 12}, {"G", 3, "GC02", 13}, {"G", 3, "GC03", 23}, {"G", 3, "GC04", 24}, {"G", 3, "GC05", 25},
    {"G", 3, "GC10", 30},
    {"T", 0, "THOU", 1}, {"T", 0, "TMCH", 1}, {"T", 0, "TBUN", 12}, {"T", 0, "TPVD", 1}, {"T", 0, "TMEM", 1},
    {"T", 1, "TMCH", 5}, {"T", 1, "TBUN", 8}, {"T", 1, "TPVD", 2}, {"T", 2, "TMCH", 9}, {"T", 2, "TBUN", 5},
    {"T", 3, "THOU", 1}, {"T", 3, "TMCH", 12}, {"T", 3, "TPVD", 1},
    {"B", 0, "BHOU", 1}, {"B", 0, "BPVD", 1}, {"B", 1, "BBRM", 1}, {"B", 1, "BPVM", 1}, {"B", 2, "BPVD", 1},
    {"B", 3, "BHOU", 1}, {"B", 3, "BBRM", 1},
    {"H", 0, "KLOC", 1}, {"H", 0, "BETU", 2}, {"H", 0, "MSMP", 3}, {"H", 0, "SSMP", 5}, {"H", 0, "ALMH", 40},
    {"H", 0, "ALML", 1}, {"H", 0, "ASBY", 1}, {"H", 0, "FSTN", 850}, {"H", 0, "FZTI", 10}, {"H", 0, "FPOI", 1},
    {"H", 0, "FTIR", 480}, {"H", 0, "FTIT", 600}, {"H", 0, "BAAL", 20}, {"H", 0, "SHOU", 10}, {"H", 0, "CFFL", 19},
    {"H", 0, "PAS1", 1234}, {"H", 0, "PAS2", 5678}, {"H", 0, "RPAS", 4321}, {"H", 0, "COMS", 1}, {"H", 0, "COMB", 1},
    {"H", 0, "COMP", 1}, {"H", 0, "TIMF", 2}, {"H", 0, "CMPL", 1}, {"H", 0, "FIFO", 1}, {"H", 0, "LANG", 0},
    {"H", 0, "LOGO", 1}, {"H", 0, "TBKC", 1}, {"H", 0, "HBKC", 0},
    {"H", 0, "YEAR", 26}, {"H", 0, "MONT", 4}, {"H", 0, "DAYS", 13}, {"H", 0, "HOUR", 8}, {"H", 0, "MINT", 30},
    {"M", 0, "MCOR", 4}, {"M", 0, "MTM1", 1}, {"M", 0, "MTM2", 0},
    {"M", 1, "MCOR", 2}, {"M", 1, "MTM1", 2}, {"M", 1, "MTM2", 0},
    {"M", 2, "MCOR", 1}, {"M", 2, "MTM1", 3}, {"M", 2, "MTM2", 1}, {"M", 2, "MTM3", 1},
    {"M", 3, "MCOR", 11}, {"M", 3, "MTM1", 4}, {"M", 3, "MTM2", 1}, {"M", 3, "MTM3", 1},
    {"M", 4, "MCOR", 1}, {"M", 4, "MTM1", 3}, {"M", 4, "MTM2", 7}, {"M", 4, "MTM3", 0}, {"M", 4, "MITI", 1},
    {"M", 5, "MCOR", 6}, {"M", 5, "MTM1", 1}, {"M", 5, "MTM2", 3},
    {"M", 6, "MCOR", 3}, {"M", 6, "MTM1", 3}, {"M", 6, "MTM2", 19},
    {"M", 7, "MCOR", 8}, {"M", 7, "MTM1", 1}, {"M", 7, "MTM2", 8},
    {"D", 0, "DIKI", 1}, {"D", 1, "DIKI", 3}, {"D", 2, "DIKI", 4}, {"D", 3, "DIKI", 2}, {"D", 4, "DIKI", 1},
    {"D", 5, "DIKI", 5},
    {"E", 0, "TSBA", 480}, {"E", 0, "TCYC", 3}, {"E", 0, "TWDY", 1}, {"E", 0, "TDAY", 19}, {"E", 0, "TSTR", 495},
    {"E", 0, "TSTO", 1035}, {"E", 0, "TEXT", 1}, {"E", 0, "TIMH", 2}, {"E", 0, "TIMA", 30}, {"E", 0, "TIMT", 60},
    {"E", 0, "TTSH", 8}, {"E", 0, "TTSM", 15}, {"E", 0, "TTEH", 17}, {"E", 0, "TTEM", 15},
    {"Z", 0, "TOTA", 1}, {"Z", 0, "TSTM", 2}, {"Z", 0, "TSIG", 3},
    {"N", 0, "CONS", 2}, {"N", 1, "CONS", 419}, {"N", 1, "CONP", 2}, {"N", 2, "CONS", 125}, {"N", 2, "CONP", 1},
    {"N", 3, "CONS", 1000}, {"N", 3, "CONP", 1}, {"N", 4, "CONS", -2731}, {"N", 4, "CONP", 1},
    {"N", 19, "CONS", 31416}, {"N", 19, "CONP", 4},
    {"J", 0, "ETHE", 1}, {"J", 0, "MAIL", 1}, {"J", 0, "FTPF", 1}, {"J", 0, "FTPA", 0}, {"J", 0, "WEBF", 1},
    {"J", 0, "WEBA", 0}, {"J", 0, "WEBM", 1}, {"J", 0, "MOTC", 1},
    {"J", 0, "IPA1", 192}, {"J", 0, "IPA2", 168}, {"J", 0, "IPA3", 10}, {"J", 0, "IPA4", 41},
    {"J", 0, "SUB1", 255}, {"J", 0, "SUB2", 255}, {"J", 0, "SUB3", 255}, {"J", 0, "SUB4", 0},
    {"J", 0, "DEF1", 192}, {"J", 0, "DEF2", 168}, {"J", 0, "DEF3", 10}, {"J", 0, "DEF4", 1},
    {"J", 0, "SIP1", 192}, {"J", 0, "SIP2", 168}, {"J", 0, "SIP3", 10}, {"J", 0, "SIP4", 25},
    {"K", 0, "LVEL", 0}, {"K", 1, "LVEL", 1}, {"K", 2, "LVEL", 1}, {"K", 3, "LVEL", 1},
    {"X", 0, "ETRG", 3}, {"X", 0, "ETG1", 0}, {"X", 0, "ETG2", 1}, {"X", 0, "EADD", 3}, {"X", 0, "EPVA", 1},
    {"X", 1, "ETRG", 3}, {"X", 1, "ETG1", 6}, {"X", 1, "ETG2", 0}, {"X", 1, "EADD", 7}, {"X", 1, "EPVA", 1},
    {"X", 2, "ETRG", 1}, {"X", 2, "ETG1", 3}, {"X", 2, "EADD", 1},
    {"X", 3, "ETRG", 5}, {"X", 3, "ETG1", 3}, {"X", 3, "EADD", 132},
    {"X", 4, "ETRG", 6}, {"X", 4, "ETG1", 6}, {"X", 4, "ETG2", 8}, {"X", 4, "EADD", 255}, {"X", 4, "EPVA", 1},
    {"L", 0, "MODF", 1}, {"L", 0, "RECY", 2}, {"L", 0, "RETR", 3}, {"L", 0, "TIOU", 5}, {"L", 0, "DELT", 10},
    {"L", 0, "RETN", 1},
    {"Y", 0, "SLST", 11}, {"Y", 0, "SLRA", 101}, {"Y", 0, "SLRN", 2}, {"Y", 1, "SLST", 12}, {"Y", 1, "SLRA", 201},
    {"Y", 1, "SLRN", 4},
    {"I", 0, "DCOL", 4}, {"I", 0, "DREM", 1}, {"I", 0, "DREO", 1}, {"I", 1, "DCOL", 2}, {"I", 1, "DRMN", 10},
    {"I", 1, "DRMX", 90},
};

constexpr TextRow Texts[] = {
    {"P", 0, "SNO.", u"K4A260413-0187"},
    {"G", 0, "GNEM", u"1･2号炉"}, {"G", 1, "GNEM", u"焼結炉"}, {"G", 2, "GNEM", u"ユーティリティ"},
    {"G", 3, "GNEM", u"ﾜｰｸ･演算"},
    {"M", 0, "MESS", u"運転開始"}, {"M", 1, "MESS", u"運転停止"}, {"M", 2, "MESS", u"1号炉 上段 温度上限"},
    {"M", 3, "MESS", u"1号炉 上段 温度復帰"}, {"M", 4, "MESS", u"燃料ガス流量 異常"}, {"M", 5, "MESS", u"F値ﾘｾｯﾄ"},
    {"M", 6, "MESS", u"1号炉 平均 上限"}, {"M", 7, "MESS", u"点検中 (DI9)"},
    {"U", 0, "UNIT", u"Nm3/h"}, {"U", 1, "UNIT", u"゜C/min"}, {"U", 2, "UNIT", u"MPa(G)"}, {"U", 3, "UNIT", u"kWh"},
    {"U", 4, "UNIT", u"個"}, {"U", 5, "UNIT", u"ﾛｯﾄ"}, {"U", 11, "UNIT", u"炭素%"},
    {"J", 0, "SDAD", u"kov-line4@heat.example.jp"}, {"J", 0, "SDNM", u"熱処理4号ライン記録計"},
    {"J", 0, "RAD1", u"furnace-duty@heat.example.jp"}, {"J", 0, "RAD2", u"maintenance@heat.example.jp"},
    {"J", 0, "RAD3", u"quality@heat.example.jp"}, {"J", 0, "RAD8", u"archive@heat.example.jp"},
    {"K", 0, "UNAM", u"主任"}, {"K", 0, "PASS", u"heat4120"}, {"K", 1, "UNAM", u"保全"}, {"K", 1, "PASS", u"m8-kov"},
    {"K", 2, "UNAM", u"オペレータ"}, {"K", 2, "PASS", u"ope1"}, {"K", 3, "UNAM", u"GUEST"}, {"K", 3, "PASS", u"guest"},
    {"X", 0, "ETTL", u"1号炉 温度上限"}, {"X", 0, "ECM1", u"1号炉 上段の温度が上限を超えました。"},
    {"X", 0, "ECM2", u"バーナーと熱電対を確認してください。"},
    {"X", 1, "ETTL", u"燃料ガス流量 上限"}, {"X", 1, "ECM1", u"燃料ガス流量が上限を超えました。"},
    {"X", 2, "ETTL", u"F値リセット"}, {"X", 2, "ECM1", u"DI4によりF値をリセットしました。"},
    {"X", 3, "ETTL", u"ﾒﾓﾘｶｰﾄﾞ フル"}, {"X", 3, "ECM1", u"メモリカードを交換してください。"},
    {"X", 4, "ETTL", u"日報"}, {"X", 4, "ECM1", u"本日の測定値を送ります。"}, {"X", 4, "ECM2", u"熱処理4号ライン"},
};
// clang-format on

} // namespace

const Plant KovPlant{Measuring, Operation, Terms, Numbers, Texts, 18, 12};

} // namespace loader::simulator
