// Labels and frames from tables of captions.
#include "fields/Captions.h"

#include <gtest/gtest.h>

#include <array>
#include <stdexcept>

#include "core/Text.h"
#include "fields/NamedControls.h"

namespace loader::test {
namespace {

constexpr auto Rows = std::to_array<CaptionOf>({
    {"lblTrend", 18062},
    {.control = "lblHyoji", .text = 18061, .field = "cmbHyoji"},
    {.control = "lblGC", .text = 18070, .elements = 3, .field = "cmbGC"},
    {.control = "lblPlain", .text = 18075, .elements = 2},
});

struct Captions : testing::Test {
  Screen screen{"frmSample"};
  ListBox cmbHyoji{screen, "cmbHyoji"};
  ControlArray<ListBox> cmbGC{screen, "cmbGC", 3};
  std::deque<Label> labels;
  std::string CaptionOfLabel(std::string_view name) { return ToUtf8(LabelNamed(screen, name).caption); }
};

TEST_F(Captions, MakeALabelOfEachRowAndOfEachElement) {
  MakeLabels(screen, labels, Rows);
  EXPECT_EQ(7U, labels.size());
  EXPECT_EQ("カラーバー表示選択", CaptionOfLabel("lblTrend"));
  EXPECT_EQ("ﾊﾞｰｸﾞﾗﾌ/ｱﾅﾛｸﾞﾒｰﾀ選択", CaptionOfLabel("lblHyoji"));
  EXPECT_EQ("データ１", CaptionOfLabel("lblGC(0)"));
  EXPECT_EQ("データ３", CaptionOfLabel("lblGC(2)"));
  EXPECT_EQ("データ６", CaptionOfLabel("lblPlain(0)"));
  EXPECT_EQ("データ７", CaptionOfLabel("lblPlain(1)"));
  EXPECT_EQ(nullptr, screen.Find("lblGC"));
}

TEST_F(Captions, MakeFrames) {
  constexpr CaptionOf rows[] = {{"fraTrend", 18065}};
  std::deque<Frame> frames;
  MakeFrames(screen, frames, rows);
  ASSERT_EQ(1U, frames.size());
  EXPECT_EQ(ControlKind::Frame, ControlNamed(screen, "fraTrend").kind);
  EXPECT_EQ("トレンド表示", ToUtf8(frames.front().caption));
}

TEST_F(Captions, ALabelGoesWithItsField) {
  MakeLabels(screen, labels, Rows);
  cmbHyoji.visible = false;
  cmbGC(1).visible = false;
  LabelNamed(screen, "lblTrend").visible = false; // has no field: nobody shows it
  ShowLabelsWithFields(screen, Rows);
  EXPECT_FALSE(LabelNamed(screen, "lblHyoji").visible);
  EXPECT_TRUE(LabelNamed(screen, "lblGC(0)").visible);
  EXPECT_FALSE(LabelNamed(screen, "lblGC(1)").visible);
  EXPECT_TRUE(LabelNamed(screen, "lblGC(2)").visible);
  EXPECT_FALSE(LabelNamed(screen, "lblTrend").visible);
  EXPECT_TRUE(LabelNamed(screen, "lblPlain(0)").visible);
  cmbHyoji.visible = true;
  cmbGC(1).visible = true;
  ShowLabelsWithFields(screen, Rows);
  EXPECT_TRUE(LabelNamed(screen, "lblHyoji").visible);
  EXPECT_TRUE(LabelNamed(screen, "lblGC(1)").visible);
}

TEST_F(Captions, AFieldThatTheScreenDoesNotHaveIsADefect) {
  constexpr CaptionOf rows[] = {{.control = "lblNew", .text = 18065, .field = "cmbNew"}};
  MakeLabels(screen, labels, rows);
  EXPECT_THROW(ShowLabelsWithFields(screen, rows), std::logic_error);
}

TEST_F(Captions, TwoLabelsOfOneNameAreADefect) {
  constexpr CaptionOf rows[] = {{"lblNew", 18065}, {"lblNew", 18066}};
  EXPECT_THROW(MakeLabels(screen, labels, rows), std::logic_error);
}

} // namespace
} // namespace loader::test
