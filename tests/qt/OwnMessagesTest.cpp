// Messages of the window's own making.
#include <QPushButton>

#include "core/OwnTexts.h"
#include "tests/qt/SampleForms.h"

namespace loader::test {
namespace {

struct OwnMessages : SampleTest {};

TEST_F(OwnMessages, AFailureThatNamesNothingIsToldInTheUsersLanguage) {
  ShowSample();
  screen.btnApply.onClick = [] { throw 1; };
  boxes.Expect(std::u16string(OwnText(OwnTextId::UnknownFailure)));
  Click(Find<QPushButton>("btnApply"));
  EXPECT_EQ(1, boxes.Shown());
}

} // namespace
} // namespace loader::test
