// Whatever a user does, in whatever order, over whatever stands in the store: the dialogs against a plain
// account of how they work.
#include <random>
#include <tuple>

#include "tests/dialogs/PlainUse.h"

namespace loader::test {
namespace {

// --- The five dialogs in plain words

template <int Rows> int Fixed(const ModelFacts& /*model*/, int /*timing*/) {
  return Rows;
}
int NoneAndChannels(const ModelFacts& model, int /*timing*/) {
  return model.channels + 1;
}
int MessageSources(const ModelFacts& model, int timing) {
  return timing == 1 || timing == 2 ? model.digitalInputs : timing >= 3 ? model.channels + 1 : 0;
}
int MessageAlarms(const ModelFacts& /*model*/, int timing) {
  return timing >= 3 ? 4 : 0;
}
int MailSources(const ModelFacts& model, int timing) {
  const int rows[] = {0, model.digitalInputs, model.digitalInputs, model.channels, model.channels, 4, 7};
  return timing < 0 ? 0 : rows[timing];
}
int MailDetails(const ModelFacts& /*model*/, int timing) {
  constexpr int Rows[] = {0, 0, 0, 4, 4, 0, 24};
  return timing < 0 ? 0 : Rows[timing];
}

PlainKind GroupKind() {
  PlainKind kind{.dialog = Groups,
                 .lists = {{"cmbHyoji", "B", "BBRM", 0, Fixed<2>},
                           {"cmbTrend", "T", "TPVD", 0, Fixed<3>},
                           {"cmbTrendDirec", "T", "THOU", 0, Fixed<2>},
                           {"cmbTrendDivision", "T", "TBUN", 1, Fixed<20>},
                           {"cmbScale", "T", "TMEM", 0, Fixed<2>},
                           {"cmbScaleCh", "T", "TMCH", 0, NoneAndChannels}},
                 .texts = {{"txtDispNameTag", "G", "GNEM", 16, true}}};
  constexpr std::pair<const char*, const char*> Slots[] = {
      {"cmbGC(0)", "GC01"}, {"cmbGC(1)", "GC02"}, {"cmbGC(2)", "GC03"}, {"cmbGC(3)", "GC04"},
      {"cmbGC(4)", "GC05"}, {"cmbGC(5)", "GC06"}, {"cmbGC(6)", "GC07"}, {"cmbGC(7)", "GC08"},
      {"cmbGC(8)", "GC09"}, {"cmbGC(9)", "GC10"}};
  for (const auto& [control, tag] : Slots) {
    kind.lists.push_back(
        {.control = control, .section = "G", .tag = tag, .rows = NoneAndChannels, .specials = true});
  }
  return kind;
}
PlainKind MessageKind() {
  return {.dialog = Messages,
          .lists = {{"cmbTiming", "M", "MTM1", 0, Fixed<5>},
                    {"cmbTiming1", "M", "MTM2", 0, MessageSources, 0, false, WithoutARow::Zero},
                    {"cmbTiming2", "M", "MTM3", 0, MessageAlarms, 0, false, WithoutARow::Zero}},
          .texts = {{"txtMessage", "M", "MESS", 32, false}}};
}
PlainKind UnitKind() {
  return {.dialog = Units, .lists = {}, .texts = {{"txtMessage", "U", "UNIT", 8, false}}};
}
PlainKind ConstantKind() {
  return {
      .dialog = Constants, .lists = {}, .texts = {{"txtMessage", "N", "CONS", 64, true}}, .constant = true};
}
PlainKind TriggerKind() {
  return {.dialog = Triggers,
          .lists = {{"cmbTriggerTiming", "X", "ETRG", 0, Fixed<7>},
                    {"cmbTimingSetting1", "X", "ETG1", 0, MailSources, 0, false, WithoutARow::ZeroWhenHidden},
                    {"cmbTimingSetting2", "X", "ETG2", 0, MailDetails, 0, false, WithoutARow::ZeroWhenHidden},
                    {"cmbPvValueAffixation", "X", "EPVA", 0, Fixed<2>}},
          .texts = {{"txtTitle", "X", "ETTL", 32, true},
                    {"txtComment1", "X", "ECM1", 64, true},
                    {"txtComment2", "X", "ECM2", 64, true}},
          .boxes = true};
}

// --- A user without a plan

class RandomUse : public Dialogs, public testing::WithParamInterface<std::tuple<PlainKind, ModelFacts>> {
protected:
  int Upto(int most) { return std::uniform_int_distribution<int>(0, most)(random); }
  template <typename Container> auto OneOf(const Container& some) {
    return some[static_cast<std::size_t>(Upto(static_cast<int>(std::size(some)) - 1))];
  }

  std::u16string AnyText() {
    static const std::u16string Some[] = {u"",    u"a",  u"7",  u" lead", u"trail ", u"  both ",
                                          u"a,b", u" ,", u"湯", u"   ",   u"　"};
    switch (Upto(3)) {
    case 0:
      return std::u16string(static_cast<std::size_t>(OneOf(std::vector{8, 9, 16, 17, 32, 33, 64, 65})), u'x');
    case 1:
      return std::u16string(static_cast<std::size_t>(OneOf(std::vector{4, 5, 8, 9, 16, 17, 32, 33})), u'湯');
    default:
      return OneOf(Some);
    }
  }
  std::u16string AnyConstant() {
    static const std::u16string Some[] = {u"", u"abc", u"-", u"1,", u" ", u"0", u"0.00", u"12.34567", u"5."};
    if (Upto(3) == 0) {
      return Upto(1) == 0 ? OneOf(Some) : u"x";
    }
    const std::u16string number = PlainValue(Upto(80000) - 40000, Upto(6));
    return Upto(3) == 0 ? u" " + number + u"  " : number;
  }
  std::u16string AnyNumber() {
    static const std::u16string Some[] = {u"abc", u"", u"1.5", u"0", u"x1", u"999"};
    if (Upto(3) == 0) {
      return OneOf(Some);
    }
    const std::u16string number = PlainNumber(Upto(model.*kind.dialog.entries + 1));
    return OneOf(std::vector<std::u16string>{number, u" " + number + u" ", number + u".0"});
  }

  // Things that a recorder or a file has brought in, good and bad.
  void Litter() {
    for (int entry = 0; entry < model.*kind.dialog.entries; ++entry) {
      for (const PlainList& list : kind.lists) {
        const int value = Upto(9) != 0    ? list.first + Upto(7)
                          : list.specials ? -32768 + Upto(5)
                                          : OneOf(std::vector{-1, 99, 32767, -32768, 31, 73});
        Put(list.section, entry, list.tag, value);
      }
      if (kind.constant) {
        Put("N", entry, "CONS", Upto(9) == 0 ? -32768 : Upto(65534) - 32767);
        Put("N", entry, "CONP", Upto(9) == 0 ? 7 : Upto(4));
      }
      for (const PlainText& text : kind.texts) {
        if (!kind.constant) {
          PutText(text.section, entry, text.tag,
                  OneOf(std::vector<const char*>{"", "abc", "  abc", "x", "x", "abc", "y", "z,z"}));
        }
      }
      if (kind.boxes) {
        Put("X", entry, "EADD", Upto(9) == 0 ? OneOf(std::vector{256, 511, -1}) : Upto(255));
      }
    }
  }

  TextField& TextOf(std::size_t n) { return FieldNamed(*screen, kind.texts[n].control); }
  void ExpectBoxOf(const std::u16string& message) {
    if (!message.empty()) {
      ExpectMessage(message);
    }
  }

  // One thing that the user does; what he did, for a report.
  std::string Act(PlainUse& use) {
    const int what = Upto(19);
    if (what < 6 && !kind.lists.empty()) {
      const auto list = static_cast<std::size_t>(Upto(static_cast<int>(kind.lists.size()) - 1));
      const int row = Upto(std::max(use.lists[list].rows - 1, 0));
      ExpectBoxOf(use.Pick(list, row));
      user.Choose(ListNamed(*screen, kind.lists[list].control), row);
      return std::string("pick ") + kind.lists[list].control + " " + std::to_string(row);
    }
    if (what < 7 && kind.boxes) {
      const int box = Upto(7);
      ExpectBoxOf(use.Toggle(box));
      user.Click(static_cast<EMailTriggerSettingScreen&>(*screen).chkRecvMailAddNo(box));
      return "box " + std::to_string(box);
    }
    if (what < 9 && kind.dialog.numberTyped) {
      const std::u16string typed = AnyNumber();
      ExpectBoxOf(use.Type(PlainUse::Number, typed));
      user.Type(frame->number, typed);
      return "number " + ToUtf8(typed);
    }
    if (what < 13) {
      const int field = Upto(static_cast<int>(kind.texts.size()) - 1);
      const std::u16string typed = kind.constant ? AnyConstant() : AnyText();
      ExpectBoxOf(use.Type(field, typed));
      user.Type(TextOf(static_cast<std::size_t>(field)), typed);
      return "text " + ToUtf8(typed);
    }
    if (what < 16) {
      ExpectBoxOf(use.Apply());
      user.Click(frame->apply);
      return "apply";
    }
    using Move = PlainUse::Move;
    const std::tuple<Move, Button*, const char*> moves[] = {{Move::Top, &frame->btnTop, "top"},
                                                            {Move::Previous, &frame->btnPrev, "previous"},
                                                            {Move::Next, &frame->btnNext, "next"},
                                                            {Move::Next, &frame->btnNext, "next"},
                                                            {Move::Reset, &frame->btnReset, "reset"}};
    const auto& [move, button, name] = OneOf(moves);
    ExpectBoxOf(use.Go(move));
    user.Click(*button);
    return name;
  }

  void Compare(const PlainUse& use) {
    ASSERT_EQ(use.entry, frame->entry);
    ASSERT_EQ(ToUtf8(use.number), ToUtf8(frame->number.text));
    for (std::size_t n = 0; n < kind.lists.size(); ++n) {
      const ListBox& list = ListNamed(*screen, kind.lists[n].control);
      ASSERT_EQ(use.lists[n].row, list.index) << list.name;
      ASSERT_EQ(use.lists[n].rows, static_cast<int>(list.items.size())) << list.name;
      ASSERT_EQ(use.lists[n].rows > 0, list.visible) << list.name;
    }
    for (std::size_t n = 0; n < kind.texts.size(); ++n) {
      ASSERT_EQ(ToUtf8(use.texts[n].text), ToUtf8(TextOf(n).text));
    }
    if (kind.boxes) {
      for (int box = 0; box < 8; ++box) {
        ASSERT_EQ((use.boxes >> box & 1) != 0,
                  static_cast<EMailTriggerSettingScreen&>(*screen).chkRecvMailAddNo(box).checked);
      }
    }
    if (use.focus != PlainUse::Nothing) {
      ASSERT_TRUE(HasFocus(use.focus == PlainUse::Number ? frame->number
                                                         : TextOf(static_cast<std::size_t>(use.focus))));
    }
    ASSERT_EQ(use.units, UnitNames);
    ASSERT_EQ(use.told, told);
    CompareStores(use.store);
  }
  static void CompareStores(const ParamStoreTable& expected) {
    for (std::size_t s = 0; s < expected.size(); ++s) {
      for (std::size_t i = 0; i < expected[s].Items.size(); ++i) {
        const ParamItem& was = expected[s].Items[i];
        const ParamItem& is = ParamStore[s].Items[i];
        for (std::size_t r = 0; r < was.NumRecords.size(); ++r) {
          ASSERT_EQ(was.NumRecords[r].Value, is.NumRecords[r].Value)
              << expected[s].Code << i << was.NumRecords[r].Tag;
        }
        for (std::size_t r = 0; r < was.TextRecords.size(); ++r) {
          ASSERT_EQ(was.TextRecords[r].Value, is.TextRecords[r].Value)
              << expected[s].Code << i << was.TextRecords[r].Tag;
        }
      }
    }
  }

  void Use(unsigned seed) {
    random.seed(seed);
    Litter();
    told.clear();
    PlainUse use(kind, model);
    for (int opening = 0; opening < 6 && !HasFatalFailure(); ++opening) {
      const int entry = Upto(model.*kind.dialog.entries - 1);
      use.focus = PlainUse::Nothing;
      use.Load(entry);
      const auto act = [&](Screen& shown) {
        screen = &shown;
        frame = &kind.dialog.frame(shown);
        Compare(use);
        std::string done;
        for (int step = 0; step < 60 && !HasFatalFailure(); ++step) {
          done += Act(use) + "; ";
          platform.time.Advance(100); // the guard of the number fields
          SCOPED_TRACE(std::to_string(seed) + ": " + done);
          Compare(use);
        }
        if (Upto(1) == 0) { // the others are closed by the cross
          user.Escape(shown);
        }
      };
      platform.screens.Expect(kind.dialog.screen, act);
      if (kind.boxes) {
        ShowEMailTriggerSetting(entry, [this](int number) { told.push_back(number); });
      } else {
        kind.dialog.show(entry);
      }
      CompareStores(use.store); // closing has written nothing
    }
  }

  PlainKind kind = GroupKind();
  std::mt19937 random;
  Screen* screen = nullptr;
  BrowsingFrame* frame = nullptr;
};

TEST_P(RandomUse, IsAsThePlainAccountHasIt) {
  kind = std::get<0>(GetParam());
  Start(std::get<1>(GetParam()));
  for (unsigned seed = 1; seed <= 12; ++seed) {
    Use(seed);
    if (HasFatalFailure()) {
      return;
    }
  }
}
INSTANTIATE_TEST_SUITE_P(Dialogs, RandomUse,
                         testing::Combine(testing::Values(GroupKind(), MessageKind(), UnitKind(),
                                                          ConstantKind(), TriggerKind()),
                                          testing::Values(Kov, Rug)),
                         [](const auto& tested) {
                           return std::string(std::get<0>(tested.param).dialog.name) +
                                  std::get<1>(tested.param).code;
                         });

} // namespace
} // namespace loader::test
