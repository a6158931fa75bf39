#include "qt/FindBar.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <utility>

#include "core/OwnTexts.h"
#include "qt/FocusMark.h"
#include "qt/QtText.h"

namespace loader {

FindBar::FindBar(QWidget& table, std::function<bool(const QString&, Direction)> find)
    : QFrame(&table), text_(new QLineEdit(this)), note_(new QLabel(this)), find_(std::move(find)) {
  setObjectName(QStringLiteral("findBar"));
  setFrameShape(QFrame::StyledPanel);
  setAutoFillBackground(true);
  setCursor(Qt::ArrowCursor);
  constexpr int Margin = 4;
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(Margin, Margin, Margin, Margin);
  row->addWidget(text_);
  row->addWidget(note_);
  constexpr int Characters = 20; // half-width
  const QString name = ToQt(OwnText(OwnTextId::TextToFind));
  text_->setObjectName(QStringLiteral("findText"));
  text_->setAccessibleName(name);
  text_->setPlaceholderText(name);
  text_->setMinimumWidth(Characters * fontMetrics().horizontalAdvance(u'0'));
  text_->installEventFilter(this);
  new FocusMark(*text_); // the field's own
  note_->setObjectName(QStringLiteral("findNote"));
  note_->setText(ToQt(OwnText(OwnTextId::TextNotFound)));
  note_->hide();
  // A text that is typed anew has not been looked for yet.
  connect(text_, &QLineEdit::textEdited, this, [this] { Tell(true); });
  hide();
}

void FindBar::Open() {
  Tell(true);
  show();
  raise();
  text_->setFocus(Qt::ShortcutFocusReason);
  text_->selectAll();
}

void FindBar::GoOn(Direction direction) {
  if (text_->text().isEmpty()) {
    Open();
    return;
  }
  const bool found = find_(text_->text(), direction);
  if (!found) {
    show();
    raise();
  }
  Tell(found);
}

void FindBar::Tell(bool found) {
  note_->setVisible(!found);
  Place(area_, cell_); // it is wider with the note
}

void FindBar::Place(const QRect& area, const QRect& cell) {
  area_ = area;
  cell_ = cell;
  layout()->activate();
  resize(sizeHint().boundedTo(area.size()));
  const QRect above(QPoint(area.right() - width() + 1, area.top()), size());
  move(above.left(), above.intersects(cell) ? area.bottom() - height() + 1 : above.top());
}

void FindBar::Close() {
  hide();
  parentWidget()->setFocus(Qt::OtherFocusReason);
}

bool FindBar::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress) {
    return QFrame::eventFilter(watched, event);
  }
  const auto& key = static_cast<const QKeyEvent&>(*event);
  const bool back = (key.modifiers() & Qt::ShiftModifier) != 0;
  switch (key.key()) {
  case Qt::Key_Return:
  case Qt::Key_Enter:
  case Qt::Key_F3:
    GoOn(back ? Direction::Backward : Direction::Forward);
    return true;
  case Qt::Key_Escape:
    Close();
    return true;
  default:
    return false;
  }
}

} // namespace loader
