// What is shown for which model.
#include "tests/mainwindow/Fixture.h"

namespace loader::test {
namespace {

struct Shown {
  const char* control;
  bool onKov;
  bool onRug;
};
void PrintTo(const Shown& row, std::ostream* out) {
  *out << row.control;
}
const auto NameByControl = [](const auto& tested) { return TestName(tested.param.control); };

const Control& ControlOf(std::string_view name) {
  const Control* control = Window().Find(name);
  if (control == nullptr) {
    throw std::logic_error("no such control: " + std::string(name));
  }
  return *control;
}

class Visibility : public MainWindow, public testing::WithParamInterface<Shown> {};
TEST_P(Visibility, FollowsTheModel) {
  Open("KOV");
  EXPECT_EQ(GetParam().onKov, ControlOf(GetParam().control).visible) << "KOV";
  frmParamLoader.reset();
  Open("RUG");
  EXPECT_EQ(GetParam().onRug, ControlOf(GetParam().control).visible) << "RUG";
}
// A layout for the other model shows again what the first one hid.
TEST_P(Visibility, FollowsAChangeOfTheModelBothWays) {
  Open("KOV");
  for (const char* model : {"RUG", "KOV"}) {
    platform.boxes.Expect(u"パラメータ設定機種を切替えますか？");
    user.Choose(Window().cmbType, model == std::string_view("RUG") ? 1 : 0);
    EXPECT_EQ(model == std::string_view("RUG") ? GetParam().onRug : GetParam().onKov,
              ControlOf(GetParam().control).visible)
        << model;
  }
}
INSTANTIATE_TEST_SUITE_P(Both, Visibility,
                         testing::Values(Shown{"lblpPassword", true, true}, Shown{"lblcPassword", true, true},
                                         Shown{"lblRpas", true, true}, Shown{"txtpPassword", true, true},
                                         Shown{"txtcPassword", true, true}, Shown{"txtRpas", true, true},
                                         Shown{"fraTimer", true, true}, Shown{"fraConstant", true, true},
                                         Shown{"lblCompression", true, true},
                                         Shown{"cmbCompression", true, true},
                                         Shown{"lblOverwrite", true, true},
                                         Shown{"cmbOverwrite", true, true}),
                         NameByControl);
INSTANTIATE_TEST_SUITE_P(DigitalInputs, Visibility,
                         testing::Values(Shown{"cmbDI(0)", true, true}, Shown{"cmbDI(9)", true, true},
                                         Shown{"cmbDI(10)", false, true}, Shown{"cmbDI(11)", false, true},
                                         Shown{"cmbDI(12)", false, true}, Shown{"cmbDI(13)", false, true},
                                         Shown{"cmbDI(14)", false, true}, Shown{"cmbDI(15)", false, true},
                                         Shown{"lblDI(0)", true, true}, Shown{"lblDI(9)", true, true},
                                         Shown{"lblDI(10)", false, true}, Shown{"lblDI(11)", false, true},
                                         Shown{"lblDI(12)", false, true}, Shown{"lblDI(13)", false, true},
                                         Shown{"lblDI(14)", false, true}, Shown{"lblDI(15)", false, true}),
                         NameByControl);
INSTANTIATE_TEST_SUITE_P(KovOnly, Visibility,
                         testing::Values(Shown{"lblTitle(1)", true, false}, Shown{"lblTitle(2)", true, false},
                                         Shown{"lblTota", true, false}, Shown{"lblTstm", true, false},
                                         Shown{"lblTsig", true, false}, Shown{"lblTts", true, false},
                                         Shown{"lblTte", true, false}, Shown{"Label3", true, false},
                                         Shown{"Label2", true, false}, Shown{"cmbTota", true, false},
                                         Shown{"cmbTstm", true, false}, Shown{"cmbTsig", true, false},
                                         Shown{"cmbTstrh", true, false}, Shown{"cmbTstrm", true, false},
                                         Shown{"cmbTstoh", true, false}, Shown{"cmbTstom", true, false},
                                         Shown{"lblTrend_backcolor", true, false},
                                         Shown{"cmbTrend_backcolor", true, false},
                                         Shown{"lblHistorical_backcolor", true, false},
                                         Shown{"cmbHistorical_backcolor", true, false}),
                         NameByControl);
INSTANTIATE_TEST_SUITE_P(DateFormat, Visibility,
                         testing::Values(Shown{"lblDateFormat", false, false},
                                         Shown{"cmbDateFormat", false, false}),
                         NameByControl);
INSTANTIATE_TEST_SUITE_P(Others, Visibility,
                         testing::Values(Shown{"cmbMainSample", true, true}, Shown{"cmbTsbah", true, true},
                                         Shown{"cmbTcyc", true, true}, Shown{"cmbText", true, true},
                                         Shown{"txtHPLP", true, true}, Shown{"fgrCh", true, true},
                                         Shown{"fgrOperationChSet", true, true},
                                         Shown{"fgrConst", true, true},
                                         Shown{"flxEMailTriggerSetting", true, true},
                                         Shown{"cmbType", true, true}),
                         NameByControl);

TEST_F(KovWindow, OperationPageIsMadeVisibleByTheLayout) {
  Window().tbsParameter.pages.at(1).visible = false;
  BuildTables();
  EXPECT_TRUE(Window().tbsParameter.pages.at(1).visible);
}

TEST_F(RugWindow, OperationPageIsMadeVisibleByTheLayout) {
  Window().tbsParameter.pages.at(1).visible = false;
  BuildTables();
  EXPECT_TRUE(Window().tbsParameter.pages.at(1).visible);
}

// The date format is hidden for every model, the rest of the step is skipped.
TEST_F(KovWindow, UnknownModelChangesNoVisibilityAndSelectsNoModel) {
  List("cmbDateFormat").visible = true;
  LabelNamed(Window(), "lblDateFormat").visible = true;
  Window().tbsParameter.pages.at(1).visible = false;
  List("cmbTota").visible = false;
  List("cmbDI(15)").visible = true;
  ModelCode = "VOQ";
  BuildTables();
  EXPECT_FALSE(List("cmbDateFormat").visible);
  EXPECT_FALSE(LabelNamed(Window(), "lblDateFormat").visible);
  EXPECT_FALSE(Window().tbsParameter.pages.at(1).visible);
  EXPECT_FALSE(List("cmbTota").visible);
  EXPECT_TRUE(List("cmbDI(15)").visible);
  EXPECT_EQ(2U, Window().cmbType.items.size());
  EXPECT_EQ(-1, Window().cmbType.index);
}

} // namespace
} // namespace loader::test
