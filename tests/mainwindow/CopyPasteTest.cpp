// Copy and paste on the window: rows, questions, what is written and what the user sees then.
#include <algorithm>
#include <random>

#include "core/modIni.h"
#include "mainwindow/modJoint.h"
#include "tests/mainwindow/ReadingWindow.h"

namespace loader::test {
namespace {

constexpr std::u16string_view ChannelTitle = u"チャネルコピー";
constexpr std::u16string_view MessageTitle = u"メッセージコピー";
constexpr std::u16string_view UnitTitle = u"単位名コピー";

std::u16string Number(int number) {
  return DecimalText(number);
}
// Channel numbers, or entry numbers of messages and units, from 1.
std::u16string ChannelQuestion(int source, int target) {
  return Number(source) + u"CHを" + Number(target) + u"CHにコピーしますか？";
}
std::u16string EntryQuestion(int source, int target) {
  return u"No." + Number(source) + u"をNo." + Number(target) + u"にコピーしますか？";
}
std::u16string Warning(int partner) {
  return u"\n" + Number(partner) + u" CHが初期化されます";
}

// The four tables, and two that have no copy.
struct Table {
  const char* name;
  Grid ParamLoaderScreen::*grid;
  int page;
};
constexpr Table Channels{"fgrCh", &ParamLoaderScreen::fgrCh, ChannelPage};
constexpr Table Operations{"fgrOperationChSet", &ParamLoaderScreen::fgrOperationChSet, OperationPage};
constexpr Table Messages{"fgrMess", &ParamLoaderScreen::fgrMess, DisplayPage};
constexpr Table Units{"fgrUnit", &ParamLoaderScreen::fgrUnit, DisplayPage};
constexpr Table Groups{"fgrGroup", &ParamLoaderScreen::fgrGroup, DisplayPage};
constexpr Table Constants{"fgrConst", &ParamLoaderScreen::fgrConst, OperationPage};
constexpr Table TablesWithCopy[]{Channels, Operations, Messages, Units};
constexpr Table TablesWithout[]{Groups, Constants};
void PrintTo(const Table& table, std::ostream* out) {
  *out << table.name;
}
std::string TableName(const testing::TestParamInfo<Table>& tested) {
  return tested.param.name;
}

class CopyPaste : public MainWindow {
protected:
  // The entry's row, from 1, in the table's page.
  void GoTo(const Table& table, int entry) {
    if (Window().tbsParameter.current != table.page) {
      ASSERT_TRUE(user.ChoosePage(Window().tbsParameter, table.page));
    }
    Grid& grid = Window().*table.grid;
    ASSERT_TRUE(user.MoveTo(grid));
    grid.SelectRow(grid.FixedRows + entry - 1);
  }
  void Copy() { ASSERT_TRUE(user.Click(Window().smenuCopy)); }
  void Paste() { ASSERT_TRUE(user.Click(Window().smenuPaste)); }
  void CopyFrom(const Table& table, int entry) {
    GoTo(table, entry);
    Copy();
  }
  void PasteTo(const Table& table, int entry, const std::u16string& question,
               BoxAnswer answer = BoxAnswer::Ok) {
    GoTo(table, entry);
    platform.boxes.Expect(question, answer);
    Paste();
  }
  void ExpectUnchangedBy(const std::function<void()>& act) {
    const std::vector<std::int16_t> numbers = AllNumbers();
    const std::vector<std::u16string> texts = AllTexts();
    act();
    EXPECT_EQ(numbers, AllNumbers());
    EXPECT_EQ(texts, AllTexts());
  }
};

// --- Copy

class CopyOfATable : public CopyPaste, public testing::WithParamInterface<Table> {
protected:
  void SetUp() override { Open("KOV"); }
};
INSTANTIATE_TEST_SUITE_P(Tables, CopyOfATable, testing::ValuesIn(TablesWithCopy), TableName);
TEST_P(CopyOfATable, RemembersTheRowAndShowsNothing) {
  ExpectUnchangedBy([&] { CopyFrom(GetParam(), 4); });
  EXPECT_EQ(3, Window().CopySourceRow);
  EXPECT_TRUE(platform.boxes.shown.empty());
}
TEST_P(CopyOfATable, ComesFromTheToolbarAsWell) {
  GoTo(GetParam(), 5);
  EXPECT_TRUE(user.Click(Window().V(2)));
  EXPECT_EQ(4, Window().CopySourceRow);
}
TEST_P(CopyOfATable, RemembersNothingWhileNoRowIsChosen) {
  CopyFrom(GetParam(), 4);
  (Window().*GetParam().grid).SelectRow(0);
  Copy();
  EXPECT_EQ(3, Window().CopySourceRow);
}
TEST_P(CopyOfATable, RemembersNoHeading) {
  CopyFrom(GetParam(), 4);
  Grid& grid = Window().*GetParam().grid;
  grid.SelectRow(grid.FixedRows - 1);
  Copy();
  EXPECT_EQ(3, Window().CopySourceRow);
}
TEST_P(CopyOfATable, IsForgottenWithThePage) {
  CopyFrom(GetParam(), 4);
  user.ChoosePage(Window().tbsParameter, RecorderPage);
  user.ChoosePage(Window().tbsParameter, GetParam().page);
  EXPECT_EQ(0, Window().CopySourceRow);
}

class NoCopyOfATable : public CopyPaste, public testing::WithParamInterface<Table> {
protected:
  void SetUp() override { Open("KOV"); }
};
INSTANTIATE_TEST_SUITE_P(Tables, NoCopyOfATable, testing::ValuesIn(TablesWithout), TableName);
TEST_P(NoCopyOfATable, RemembersNothing) {
  CopyFrom(GetParam(), 3);
  EXPECT_EQ(0, Window().CopySourceRow);
}

TEST_F(CopyPaste, AGroupCannotBePasted) {
  Open("KOV");
  CopyFrom(Groups, 1);
  GoTo(Groups, 2);
  ExpectUnchangedBy([&] { Paste(); });
}

// The page alone decides, and the question tells which channels are meant.
TEST_F(CopyPaste, PasteAmongTheConstantsIsThatOfTheOperationChannels) {
  Open("KOV");
  GoTo(Operations, 3);
  GoTo(Constants, 5);
  platform.boxes.Expect(ChannelQuestion(19, 21), BoxAnswer::Cancel);
  ExpectUnchangedBy([&] { Paste(); });
}

// --- The questions

struct Question {
  const char* model;
  Table table;
  int source; // entries from 1
  int target;
  std::u16string text;
  std::u16string_view title;
};
void PrintTo(const Question& question, std::ostream* out) {
  *out << question.model << " " << question.table.name << question.source << " to " << question.target;
}
class PasteQuestion : public CopyPaste, public testing::WithParamInterface<Question> {
protected:
  void SetUp() override { Open(GetParam().model); }
};
TEST_P(PasteQuestion, NamesBothAndOffersOkAndCancel) {
  const Question& asked = GetParam();
  CopyFrom(asked.table, asked.source);
  PasteTo(asked.table, asked.target, asked.text, BoxAnswer::Cancel);
  ASSERT_EQ(1U, platform.boxes.shown.size());
  EXPECT_EQ(BoxButtons::OkCancel, platform.boxes.shown[0].buttons);
  EXPECT_EQ(ToUtf8(asked.title), ToUtf8(platform.boxes.shown[0].title));
}
TEST_P(PasteQuestion, ComesFromTheToolbarAsWell) {
  const Question& asked = GetParam();
  CopyFrom(asked.table, asked.source);
  GoTo(asked.table, asked.target);
  platform.boxes.Expect(asked.text, BoxAnswer::Cancel);
  EXPECT_TRUE(user.Click(Window().V(3)));
}
TEST_P(PasteQuestion, WithCancelChangesNothing) {
  const Question& asked = GetParam();
  for (ParamSection& section : ParamStore) {
    for (ParamNumRecord& record : section.Items[static_cast<std::size_t>(0)].NumRecords) {
      record.Value = 1;
    }
  }
  CopyFrom(asked.table, asked.source);
  ExpectUnchangedBy([&] { PasteTo(asked.table, asked.target, asked.text, BoxAnswer::Cancel); });
  EXPECT_EQ(asked.source - 1, Window().CopySourceRow);
}
TEST_P(PasteQuestion, IsNotAskedWhileNoRowIsChosen) {
  const Question& asked = GetParam();
  GoTo(asked.table, asked.target);
  Grid& grid = Window().*asked.table.grid;
  for (int row = 0; row < grid.FixedRows; ++row) {
    grid.SelectRow(row);
    ExpectUnchangedBy([&] { Paste(); });
  }
}
// A read would overwrite the paste; a write would send half of it.
TEST_P(PasteQuestion, IsNotAskedDuringAnExchange) {
  const Question& asked = GetParam();
  CopyFrom(asked.table, asked.source);
  GoTo(asked.table, asked.target);
  for (const bool linkIsOpening : {true, false}) {
    Window().flowUnderWay = linkIsOpening;
    Window().btnRegRead.enabled = linkIsOpening;
    ExpectUnchangedBy([&] {
      user.Click(Window().smenuPaste);
      user.Click(Window().V(3));
    });
  }
  Window().btnRegRead.enabled = true;
  platform.boxes.Expect(asked.text, BoxAnswer::Cancel);
  Paste();
}
TEST_P(PasteQuestion, WithoutACopyNamesTheFirst) {
  const Question& asked = GetParam();
  GoTo(asked.table, asked.target);
  const bool operation = asked.table.grid == &ParamLoaderScreen::fgrOperationChSet;
  const int first = operation ? Profile.FirstOperationChannel : 1;
  const bool channel = operation || asked.table.grid == &ParamLoaderScreen::fgrCh;
  const int target = first + asked.target - 1;
  platform.boxes.Expect(channel ? ChannelQuestion(first, target) : EntryQuestion(first, target),
                        BoxAnswer::Cancel);
  Paste();
}
INSTANTIATE_TEST_SUITE_P(
    All, PasteQuestion,
    testing::Values(Question{"KOV", Channels, 1, 18, u"1CHを18CHにコピーしますか？", ChannelTitle},
                    Question{"KOV", Channels, 18, 1, u"18CHを1CHにコピーしますか？", ChannelTitle},
                    Question{"RUG", Channels, 2, 36, u"2CHを36CHにコピーしますか？", ChannelTitle},
                    Question{"RUG", Channels, 5, 5, u"5CHを5CHにコピーしますか？", ChannelTitle},
                    Question{"KOV", Operations, 1, 12, u"19CHを30CHにコピーしますか？", ChannelTitle},
                    Question{"KOV", Operations, 2, 2, u"20CHを20CHにコピーしますか？", ChannelTitle},
                    Question{"RUG", Operations, 36, 1, u"72CHを37CHにコピーしますか？", ChannelTitle},
                    Question{"KOV", Messages, 1, 10, u"No.1をNo.10にコピーしますか？", MessageTitle},
                    Question{"RUG", Messages, 10, 1, u"No.10をNo.1にコピーしますか？", MessageTitle},
                    Question{"KOV", Units, 1, 12, u"No.1をNo.12にコピーしますか？", UnitTitle},
                    Question{"RUG", Units, 12, 2, u"No.12をNo.2にコピーしますか？", UnitTitle}),
    [](const auto& tested) {
      return tested.param.model + std::string(tested.param.table.name) + std::to_string(tested.param.source) +
             "To" + std::to_string(tested.param.target);
    });

TEST_F(CopyPaste, IsOfferedOnThePagesWithTablesOnly) {
  Open("KOV");
  for (const int page : {RecorderPage, EthernetPage, MailPage}) {
    user.ChoosePage(Window().tbsParameter, page);
    ExpectUnchangedBy([&] {
      EXPECT_FALSE(user.Click(Window().smenuCopy)) << page;
      EXPECT_FALSE(user.Click(Window().smenuPaste)) << page;
      EXPECT_FALSE(user.Click(Window().V(2))) << page;
      EXPECT_FALSE(user.Click(Window().V(3))) << page;
    });
  }
}

// --- Channels

TEST_F(CopyPaste, AChannelIsPastedWithItsAlarmsAndShown) {
  Open("KOV");
  PutText("C", 0, "TAG", "FURNACE");
  Put("C", 0, "MMAX", 8000);
  Put("C", 0, "COLR", 9);
  Put("C", 0, "SEKI", 3);
  Put("A", 0, "A1TY", 2);
  CopyFrom(Channels, 1);
  PasteTo(Channels, 3, ChannelQuestion(1, 3));
  EXPECT_EQ("FURNACE", TrimmedText("C", 2, "TAG"));
  EXPECT_EQ(8000, Stored("C", 2, "MMAX"));
  EXPECT_EQ(2, Stored("A", 2, "A1TY"));
  EXPECT_NE(9, Stored("C", 2, "COLR"));
  EXPECT_EQ(1, Stored("C", 2, "SEKI"));
  EXPECT_EQ("CH 03", TrimmedText("C", 2, "STAG"));
  EXPECT_EQ("FURNACE", ChannelCell(3, 2));
}

TEST_F(CopyPaste, TheUserStaysAtTheRowThatHePastedTo) {
  Open("KOV");
  CopyFrom(Channels, 1);
  Window().fgrCh.Col = 7;
  PasteTo(Channels, 10, ChannelQuestion(1, 10));
  EXPECT_EQ(11, Window().fgrCh.Row);
  EXPECT_EQ(7, Window().fgrCh.Col);
}

TEST_F(CopyPaste, ASecondPasteTakesTheSameSource) {
  Open("KOV");
  PutText("C", 4, "TAG", "FURNACE");
  CopyFrom(Channels, 5);
  PasteTo(Channels, 9, ChannelQuestion(5, 9));
  PasteTo(Channels, 18, ChannelQuestion(5, 18));
  EXPECT_EQ("FURNACE", TrimmedText("C", 8, "TAG"));
  EXPECT_EQ("FURNACE", TrimmedText("C", 17, "TAG"));
}

// The defaults of the target are its own: what was pasted counts as the user's work.
TEST_F(CopyPaste, AChangeOfModelCarriesWhatWasPasted) {
  Open("KOV");
  PutText("C", 0, "TAG", "FURNACE");
  CopyFrom(Channels, 1);
  PasteTo(Channels, 3, ChannelQuestion(1, 3));
  platform.ExpectBox(11016);
  user.Choose(Window().cmbType, 1);
  EXPECT_EQ("FURNACE", TrimmedText("C", 2, "TAG"));
}

// --- The partner

// Of the kinds: what pairs with anything is 0.
int ClassOf(int kind) {
  return kind >= 1 && kind <= 19    ? 1
         : kind >= 20 && kind <= 29 ? 13
         : kind == 30               ? 1
         : kind == 31               ? 16
         : kind == 32               ? 17
         : kind == 33               ? 18
         : kind == 34               ? 19
                                    : 0;
}
bool AreAtOdds(int source, int partner) {
  return ClassOf(source) != 0 && ClassOf(partner) != 0 && ClassOf(source) != ClassOf(partner);
}

// Target and partner, by number: a leader, a dependent one, the same behind channel 9.
struct Pair {
  int target;
  int partner;
};
class PairedTarget : public CopyPaste, public testing::WithParamInterface<Pair> {};
INSTANTIATE_TEST_SUITE_P(Pairs, PairedTarget,
                         testing::Values(Pair{1, 2}, Pair{2, 1}, Pair{10, 11}, Pair{17, 16}, Pair{35, 34}));
TEST_P(PairedTarget, WarnsExactlyWhereTheClassesOfSourceAndPartnerDiffer) {
  Open("RUG");
  constexpr int Source = 9;
  const Pair pair = GetParam();
  CopyFrom(Channels, Source);
  for (int source = -1; source <= 42; ++source) {
    for (int partner = -1; partner <= 42; ++partner) {
      Put("C", Source - 1, "TYPE", source);
      Put("C", pair.partner - 1, "TYPE", partner);
      const std::u16string warning = AreAtOdds(source, partner) ? Warning(pair.partner) : std::u16string();
      PasteTo(Channels, pair.target, ChannelQuestion(Source, pair.target) + warning, BoxAnswer::Cancel);
      ASSERT_FALSE(HasFailure()) << source << " beside " << partner;
    }
  }
}

class LonelyTarget : public CopyPaste, public testing::WithParamInterface<int> {};
INSTANTIATE_TEST_SUITE_P(Channels, LonelyTarget, testing::Values(9, 18, 27, 36));
TEST_P(LonelyTarget, NeverWarns) {
  Open("RUG");
  for (int item = 1; item < 36; ++item) {
    Put("C", item, "TYPE", 20);
  }
  ASSERT_EQ(1, Stored("C", 0, "TYPE"));
  CopyFrom(Channels, 1);
  PasteTo(Channels, GetParam(), ChannelQuestion(1, GetParam()));
  EXPECT_EQ(1, Stored("C", GetParam() - 1, "TYPE"));
  EXPECT_EQ(20, Stored("C", GetParam() - 2, "TYPE"));
}

TEST_F(CopyPaste, APartnerThatCannotStayIsInitialisedWithTheSourcesKind) {
  Open("KOV");
  Put("C", 0, "TYPE", 33); // 0-5 V
  PutText("C", 5, "TAG", "BESIDE");
  Put("C", 5, "TYPE", 20);
  Put("C", 5, "MMAX", 6000);
  Put("C", 5, "FILT", 42);
  CopyFrom(Channels, 1);
  PasteTo(Channels, 5, ChannelQuestion(1, 5) + Warning(6));
  EXPECT_EQ(33, Stored("C", 4, "TYPE"));
  EXPECT_EQ(33, Stored("C", 5, "TYPE"));
  EXPECT_EQ(115, Stored("C", 5, "UNIT"));
  EXPECT_EQ(3, Stored("C", 5, "POIN"));
  EXPECT_EQ(5000, Stored("C", 5, "MMAX"));
  EXPECT_EQ(0, Stored("C", 5, "FILT"));
  EXPECT_EQ("BESIDE", TrimmedText("C", 5, "TAG")) << "no part of the kind";
  EXPECT_EQ("0-5V", ChannelCell(6, 4)) << "shown";
}

TEST_F(CopyPaste, CancelOfAWarningLeavesThePartnerAsItIs) {
  Open("KOV");
  Put("C", 0, "TYPE", 20);
  CopyFrom(Channels, 1);
  ExpectUnchangedBy([&] { PasteTo(Channels, 5, ChannelQuestion(1, 5) + Warning(6), BoxAnswer::Cancel); });
}

// 1-5 V and 0-5 V pair with each other in the dialog; here they warn all the same.
TEST_F(CopyPaste, VoltKindsAreAtOdds) {
  Open("KOV");
  Put("C", 0, "TYPE", 32);
  Put("C", 3, "TYPE", 33);
  CopyFrom(Channels, 1);
  PasteTo(Channels, 3, ChannelQuestion(1, 3) + Warning(4), BoxAnswer::Cancel);
}

TEST_F(CopyPaste, APasteOntoTheSameRowRunsLikeAnyOther) {
  Open("KOV");
  Put("C", 0, "TYPE", 20);
  CopyFrom(Channels, 1);
  PasteTo(Channels, 1, ChannelQuestion(1, 1) + Warning(2));
  EXPECT_EQ(20, Stored("C", 0, "TYPE"));
  EXPECT_EQ(20, Stored("C", 1, "TYPE"));
}

// --- Operation channels

class OperationPaste : public CopyPaste, public testing::WithParamInterface<const char*> {};
LOADER_FOR_BOTH_MODELS(OperationPaste);
TEST_P(OperationPaste, TakesTheFormulasAlongAndChecksNoPairs) {
  Open(GetParam());
  const int first = Profile.FirstOperationChannel;
  const int last = Profile.OperationChannelCount;
  const int source = first - 1;
  const int target = first - 1 + last - 1;
  PutText("C", source, "TAG", "SUM");
  Put("C", source, "TYPE", 1);
  Put("C", target - 1, "TYPE", 20);
  Put("A", source, "A4VL", 77);
  Put("O", 0, "OP11", 1);
  Put("O", 0, "S111", 4);
  CopyFrom(Operations, 1);
  PasteTo(Operations, last, ChannelQuestion(first, first + last - 1));
  EXPECT_EQ("SUM", TrimmedText("C", target, "TAG"));
  EXPECT_EQ(77, Stored("A", target, "A4VL"));
  EXPECT_EQ(1, Stored("O", last - 1, "OP11"));
  EXPECT_EQ(4, Stored("O", last - 1, "S111"));
  EXPECT_EQ(20, Stored("C", target - 1, "TYPE"));
  EXPECT_EQ("SUM", OperationCell(first + last - 1, 2));
  EXPECT_EQ("C05", OperationCell(first + last - 1, 4));
  EXPECT_EQ(last + 1, Window().fgrOperationChSet.Row);
}

// --- Messages and units

TEST_F(CopyPaste, AMessageIsPastedAndItsTableShowsItLater) {
  Open("KOV");
  PutText("M", 0, "MESS", "HELLO");
  Put("M", 0, "MTM1", 3);
  Put("M", 0, "MTM2", 5);
  Put("M", 0, "MTM3", 2);
  Put("M", 0, "MCOR", 9);
  CopyFrom(Messages, 1);
  PasteTo(Messages, 10, EntryQuestion(1, 10));
  EXPECT_EQ("HELLO", TrimmedText("M", 9, "MESS"));
  EXPECT_EQ(3, Stored("M", 9, "MTM1"));
  EXPECT_EQ(5, Stored("M", 9, "MTM2"));
  EXPECT_EQ(2, Stored("M", 9, "MTM3"));
  EXPECT_EQ(1, Stored("M", 9, "MCOR"));
  EXPECT_EQ("", CellText(Window().fgrMess, 10, 1));
  RefreshAll();
  EXPECT_EQ("HELLO", CellText(Window().fgrMess, 10, 1));
}

TEST_F(CopyPaste, AUnitIsPastedAndTableAndListShowItLater) {
  Open("KOV");
  PutText("U", 0, "UNIT", "kg/m");
  CopyFrom(Units, 1);
  const std::vector<std::u16string> names(UnitNames.begin(), UnitNames.end());
  PasteTo(Units, 2, EntryQuestion(1, 2));
  EXPECT_EQ("kg/m", TrimmedText("U", 1, "UNIT"));
  EXPECT_EQ("", CellText(Window().fgrUnit, 2, 1));
  EXPECT_EQ(names, std::vector<std::u16string>(UnitNames.begin(), UnitNames.end()));
}

TEST_F(CopyPaste, AMessageIsNoUnit) {
  Open("KOV");
  CopyFrom(Messages, 4);
  PasteTo(Units, 2, EntryQuestion(1, 2), BoxAnswer::Cancel); // the copy was forgotten with the table
}

// --- During a read

TEST_F(ReadingWindow, IsNotPastedInto) {
  bool seen = false;
  Window().fgrCh.SelectRow(4);
  recorder.onRequest = [&](int request) {
    if (request == 5) {
      seen = true;
      EXPECT_FALSE(user.Click(Window().smenuPaste));
      EXPECT_FALSE(user.Click(Window().V(3)));
    }
  };
  platform.ExpectBox(20104);
  user.Click(Window().btnRegRead);
  EXPECT_TRUE(seen);
  EXPECT_EQ(1U, platform.boxes.shown.size());
}

} // namespace
} // namespace loader::test
