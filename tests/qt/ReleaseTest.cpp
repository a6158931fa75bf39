// What is left of a binding when its screen has closed and the records may go.
#include <QShortcut>
#include <QTabWidget>

#include "tests/qt/SampleForms.h"

namespace loader::test {
namespace {

using ReleaseTest = SampleTest;

TEST_F(ReleaseTest, NoShortcutOutlivesTheBinding) {
  ShowSample();
  QWidget& window = Window();
  ASSERT_FALSE(window.findChildren<QShortcut*>().isEmpty());
  platform.screens.Close(screen);
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_TRUE(window.findChildren<QShortcut*>().isEmpty());
}

// The page key that closes its own screen: it is still being acted on when the binding goes.
TEST_F(ReleaseTest, AShortcutMayCloseItsScreen) {
  ShowSample();
  screen.tbsPages.onChange = [this] { platform.screens.Close(screen); };
  QTest::keyClick(&Find<QLineEdit>("txtName"), Qt::Key_Tab, Qt::ControlModifier);
  EXPECT_EQ(nullptr, platform.screens.WindowOf(screen));
}

} // namespace
} // namespace loader::test
