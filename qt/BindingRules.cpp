#include "qt/BindingRules.h"

#include <QAction>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QShortcut>
#include <QSignalBlocker>
#include <QTabWidget>
#include <algorithm>
#include <array>
#include <stdexcept>
#include <utility>

#include "core/Text.h"
#include "qt/ActionKeys.h"
#include "qt/FocusMark.h"
#include "qt/GridView.h"
#include "qt/LampView.h"
#include "qt/ListBoxView.h"
#include "qt/QtText.h"
#include "qt/ReadableColour.h"
#include "qt/UserInterface.h"

namespace loader {

namespace {

template <typename Record> Record& RecordOf(Binding& binding) {
  return static_cast<Record&>(binding.control);
}
template <typename Widget> Widget& WidgetAs(Binding& binding) {
  return static_cast<Widget&>(binding.object);
}
template <typename Widget> bool Is(const QObject& object) {
  return qobject_cast<const Widget*>(&object) != nullptr;
}
bool IsEntry(const QObject& object) {
  return Is<QAction>(object) || Is<QMenu>(object);
}
void ListenToNothing(UserInterface& /*userInterface*/, Binder& /*binder*/, Binding& /*binding*/) {}

// True when the text has to be given to the widget; remembers it.
bool Differs(Binding& binding, const std::u16string& text) {
  if (!binding.fresh && binding.text == text) {
    return false;
  }
  binding.text = text;
  return true;
}

// What a screen reader says: the caption without its mnemonic.
QString SpokenCaption(std::u16string_view caption) {
  return ToQt(OneLine(caption)).remove(u'&').trimmed();
}

// What a field takes of a text that the user types or pastes: one line, since a line break would split the
// row that the value has in the parameter file, and the characters that the recorder knows, so that the user
// sees at once what will be stored.
std::u16string Taken(std::u16string_view inserted) {
  constexpr std::u16string_view LineBreaks = u"\r\n\u2028\u2029";
  const std::size_t begin = inserted.find_first_not_of(LineBreaks);
  if (begin == std::u16string_view::npos) {
    return {};
  }
  inserted.remove_prefix(begin);
  return FromCodePage(ToCodePage(inserted.substr(0, inserted.find_first_of(LineBreaks))));
}

// Takes back of an edit what a field does not take. `before` is the text that the edit found; what was
// inserted ends at the cursor. The edit stays one step for Ctrl+Z.
void CleanEdit(QLineEdit& edit, const std::u16string& before) {
  const std::u16string after = FromQt(edit.text());
  const auto end = static_cast<std::size_t>(edit.cursorPosition());
  const auto differs = std::mismatch(after.begin(), after.begin() + static_cast<std::ptrdiff_t>(end),
                                     before.begin(), before.end())
                           .first;
  // Where the insertion began, or further on when it begins like what it replaced.
  auto begin = static_cast<std::size_t>(differs - after.begin());
  const std::u16string inserted = after.substr(begin, end - begin);
  if (Taken(inserted) == inserted) {
    return;
  }
  const QSignalBlocker quiet(edit);
  edit.undo();
  if (FromQt(edit.text()) == before) {
    const int selected = edit.selectionStart();
    begin = std::min(begin, static_cast<std::size_t>(selected >= 0 ? selected : edit.cursorPosition()));
    const std::size_t behind = after.size() - end;
    edit.setSelection(static_cast<int>(begin), static_cast<int>(before.size() - behind - begin));
    edit.insert(ToQt(Taken(after.substr(begin, end - begin))));
  } else { // the step was joined with others
    const std::u16string taken = Taken(inserted);
    edit.setText(ToQt(after.substr(0, begin) + taken + after.substr(end)));
    edit.setCursorPosition(static_cast<int>(begin + taken.size()));
  }
}

void ListenToField(UserInterface& userInterface, Binder& binder, Binding& binding) {
  auto& field = RecordOf<TextField>(binding);
  auto& edit = WidgetAs<QLineEdit>(binding);
  // A drop would edit a field that the user isn't in and whose check never comes.
  edit.setAcceptDrops(false);
  new FocusMark(edit); // the field's own; a style's own line is too faint in a dark palette
  QObject::connect(&edit, &QLineEdit::textEdited, &binder, [&userInterface, &binding, &field, &edit] {
    CleanEdit(edit, binding.text);
    binding.text = FromQt(edit.text());
    if (field.enabled && field.visible) {
      userInterface.EditBegins(field);
    }
    userInterface.Act(
        field, [&] { field.text = binding.text; }, field.onChange);
  });
}

void ShowField(Binding& binding) {
  auto& field = RecordOf<TextField>(binding);
  auto& edit = WidgetAs<QLineEdit>(binding);
  if (Differs(binding, field.text)) {
    const int cursor = edit.cursorPosition();
    const int selected = edit.selectionStart();
    const int length = static_cast<int>(edit.selectedText().size());
    edit.setText(ToQt(field.text));
    edit.setCursorPosition(cursor);
    if (selected >= 0) {
      edit.setSelection(selected, length);
    }
  }
  if (edit.isReadOnly() != field.readOnly) {
    edit.setReadOnly(field.readOnly);
  }
  if (field.selectionPending) {
    field.selectionPending = false;
    const int size = static_cast<int>(field.text.size());
    const int start = std::clamp(field.selStart, 0, size);
    const int length = std::clamp(field.selLength, 0, size - start);
    edit.setCursorPosition(start);
    if (length > 0) {
      edit.setSelection(start, length);
    }
  }
}

void ListenToList(UserInterface& userInterface, Binder& binder, Binding& binding) {
  auto& list = RecordOf<ListBox>(binding);
  QObject::connect(&WidgetAs<ListBoxView>(binding), &QComboBox::activated, &binder,
                   [&userInterface, &list](int row) {
                     userInterface.Act(
                         list, [&] { list.indexBefore = std::exchange(list.index, row); }, list.onChange);
                   });
}

void ShowList(Binding& binding) {
  const auto& list = RecordOf<ListBox>(binding);
  WidgetAs<ListBoxView>(binding).ShowItems(list.items, list.index);
}

bool IsLabel(const QObject& object) {
  return Is<QLabel>(object) || Is<QGroupBox>(object);
}

void ShowTitle(QGroupBox& box, const std::u16string& caption) {
  box.setTitle(ToQt(caption));
  box.setAccessibleName(SpokenCaption(caption));
}

void ListenToLabel(UserInterface& /*userInterface*/, Binder& /*binder*/, Binding& binding) {
  if (Is<QGroupBox>(binding.object)) {
    return;
  }
  auto& label = WidgetAs<QLabel>(binding);
  label.setTextFormat(Qt::PlainText);
  if (RecordOf<Label>(binding).onClick) {
    label.setFocusPolicy(Qt::TabFocus); // the keyboard reaches what the mouse can click
    label.setCursor(Qt::PointingHandCursor);
    new FocusMark(label); // the label's own
  }
}

void ShowLabelColour(Label& record, QLabel& label, Binding& binding) {
  if (!binding.fresh && binding.hasBackColour == record.hasBackColour &&
      (!record.hasBackColour || binding.backColour == record.backColour)) {
    return;
  }
  binding.hasBackColour = record.hasBackColour;
  binding.backColour = record.backColour;
  if (record.hasBackColour) {
    QPalette palette = label.palette();
    palette.setColor(QPalette::Window, ToColour(record.backColour));
    palette.setColor(QPalette::WindowText, ReadableOn(ToColour(record.backColour)));
    label.setPalette(palette);
  } else {
    label.setPalette({});
  }
  label.setAutoFillBackground(record.hasBackColour);
}

void ShowLabel(Binding& binding) {
  auto& record = RecordOf<Label>(binding);
  if (auto* box = qobject_cast<QGroupBox*>(&binding.object)) {
    if (Differs(binding, record.caption)) {
      ShowTitle(*box, record.caption);
    }
    return;
  }
  auto& label = WidgetAs<QLabel>(binding);
  if (Differs(binding, record.caption)) {
    label.setText(ToQt(OneLine(record.caption)));
    if (label.property(NamedByForm).toBool()) { // which names what the text belongs to
      label.setAccessibleName((label.toolTip() + u' ' + SpokenCaption(record.caption)).trimmed());
    }
    if (QWidget* field = label.buddy(); field != nullptr && !record.caption.empty()) {
      // A field that the form names is told more about by what stands beside it.
      if (field->property(NamedByForm).toBool()) {
        field->setAccessibleDescription(SpokenCaption(record.caption));
      } else {
        field->setAccessibleName(SpokenCaption(record.caption));
      }
    }
  }
  ShowLabelColour(record, label, binding);
}

void ListenToButton(UserInterface& userInterface, Binder& binder, Binding& binding) {
  auto& button = RecordOf<Button>(binding);
  // A style marks it only while the user goes about by the Tab key: not in a screen that was just opened, nor
  // behind one that has closed.
  new FocusMark(WidgetAs<QAbstractButton>(binding));
  TieActionOf(WidgetAs<QAbstractButton>(binding));
  QObject::connect(&WidgetAs<QAbstractButton>(binding), &QAbstractButton::clicked, &binder,
                   [&userInterface, &button] {
                     userInterface.Act(
                         button, [] {}, button.onClick);
                   });
}

void ShowButtonCaption(Binding& binding, const std::u16string& caption) {
  if (Differs(binding, caption)) {
    auto& button = WidgetAs<QAbstractButton>(binding);
    button.setText(ToQt(caption));
    if (!caption.empty() && !button.property(NamedByForm).toBool()) {
      button.setAccessibleName(SpokenCaption(caption));
    }
  }
}

void ShowButton(Binding& binding) {
  const std::u16string& caption = RecordOf<Button>(binding).caption;
  if (binding.fresh || binding.text != caption) {
    ShowCaptionOnAction(WidgetAs<QAbstractButton>(binding), ToQt(caption));
  }
  ShowButtonCaption(binding, caption);
}

void ListenToCheckBox(UserInterface& userInterface, Binder& binder, Binding& binding) {
  auto& box = RecordOf<CheckBox>(binding);
  new FocusMark(WidgetAs<QAbstractButton>(binding)); // the box's own; see the field's
  QObject::connect(&WidgetAs<QAbstractButton>(binding), &QAbstractButton::clicked, &binder,
                   [&userInterface, &box](bool checked) {
                     userInterface.Act(
                         box, [&] { box.checked = checked; }, box.onClick);
                   });
}

void ShowCheckBox(Binding& binding) {
  auto& box = RecordOf<CheckBox>(binding);
  ShowButtonCaption(binding, box.caption);
  auto& button = WidgetAs<QAbstractButton>(binding);
  if (button.isChecked() != box.checked) {
    button.setChecked(box.checked);
  }
}

void ListenToToolButton(UserInterface& userInterface, Binder& binder, Binding& binding) {
  auto& tool = RecordOf<ToolButton>(binding);
  QObject::connect(&WidgetAs<QAction>(binding), &QAction::triggered, &binder, [&userInterface, &tool] {
    userInterface.Act(
        tool, [] {}, tool.onClick);
  });
}

void ShowToolButton(Binding& binding) {
  auto& tool = RecordOf<ToolButton>(binding);
  if (Differs(binding, tool.toolTip)) {
    auto& action = WidgetAs<QAction>(binding);
    action.setToolTip(TipWithKey(action, ToQt(tool.toolTip)));
    action.setText(ToQt(tool.toolTip));
  }
}

void ListenToMenuEntry(UserInterface& userInterface, Binder& binder, Binding& binding) {
  if (auto* menu = qobject_cast<QMenu*>(&binding.object)) {
    LetLettersWork(*menu);
  }
  if (auto* action = qobject_cast<QAction*>(&binding.object)) {
    auto& entry = RecordOf<MenuEntry>(binding);
    QObject::connect(action, &QAction::triggered, &binder, [&userInterface, &entry] {
      userInterface.Act(
          entry, [] {}, entry.onClick);
    });
  }
}

void ShowMenuEntry(Binding& binding) {
  auto& entry = RecordOf<MenuEntry>(binding);
  if (auto* menu = qobject_cast<QMenu*>(&binding.object)) {
    if (Differs(binding, entry.caption)) {
      menu->setTitle(ToQt(entry.caption));
      menu->setAccessibleName(SpokenCaption(entry.caption));
    }
    return;
  }
  auto& action = WidgetAs<QAction>(binding);
  if (Differs(binding, entry.caption)) {
    action.setSeparator(entry.caption == u"-");
    action.setText(ToQt(entry.caption));
  }
  // The action flips its own mark when it is triggered; the record has the say.
  if (entry.checked) {
    action.setCheckable(true);
  }
  if (action.isChecked() != entry.checked) {
    action.setChecked(entry.checked);
  }
}

void ShowFrame(Binding& binding) {
  auto& frame = RecordOf<Frame>(binding);
  if (auto* box = qobject_cast<QGroupBox*>(&binding.object);
      box != nullptr && Differs(binding, frame.caption)) {
    ShowTitle(*box, frame.caption);
  }
}

// Ctrl+Tab from wherever the keyboard is: some widgets keep the key from their page.
void StepThroughPages(UserInterface& userInterface, Binder& binder, Binding& binding, int key, int step) {
  auto& pages = RecordOf<TabPages>(binding);
  auto& tabs = WidgetAs<QTabWidget>(binding);
  auto* shortcut = new QShortcut(QKeySequence(key), tabs.window());
  binder.GoesWithRecords(*shortcut);
  QObject::connect(shortcut, &QShortcut::activated, &binder, [&userInterface, &pages, &tabs, step] {
    const int count = tabs.count();
    for (int distance = 1; distance < count; ++distance) {
      const int page = (tabs.currentIndex() + distance * step + distance * count) % count;
      if (tabs.isTabVisible(page) && tabs.isTabEnabled(page)) {
        userInterface.Act(
            pages, [&] { pages.current = page; }, pages.onChange);
        return;
      }
    }
  });
}

void ListenToPages(UserInterface& userInterface, Binder& binder, Binding& binding) {
  auto& pages = RecordOf<TabPages>(binding);
  QObject::connect(&WidgetAs<QTabWidget>(binding), &QTabWidget::currentChanged, &binder,
                   [&userInterface, &pages](int page) {
                     userInterface.Act(
                         pages, [&] { pages.current = page; }, pages.onChange);
                   });
  StepThroughPages(userInterface, binder, binding, QKeyCombination(Qt::CTRL, Qt::Key_Tab).toCombined(), 1);
  StepThroughPages(userInterface, binder, binding,
                   QKeyCombination(Qt::CTRL | Qt::SHIFT, Qt::Key_Backtab).toCombined(), -1);
}

void ShowPages(Binding& binding) {
  auto& record = RecordOf<TabPages>(binding);
  auto& tabs = WidgetAs<QTabWidget>(binding);
  for (int page = 0; page < tabs.count(); ++page) {
    const auto index = static_cast<std::size_t>(page);
    const bool known = index < record.pages.size();
    const QString caption = known ? ToQt(record.pages[index].caption) : QString();
    if (tabs.tabText(page) != caption) {
      tabs.setTabText(page, caption);
    }
    const bool visible = known && record.pages[index].visible;
    if (tabs.isTabVisible(page) != visible) {
      tabs.setTabVisible(page, visible);
    }
  }
  if (record.current >= 0 && record.current < tabs.count() && tabs.currentIndex() != record.current) {
    tabs.setCurrentIndex(record.current);
  }
  // The pages as a whole are called by the one that shows.
  if (const QString shown = tabs.tabText(tabs.currentIndex()); tabs.accessibleName() != shown) {
    tabs.setAccessibleName(shown);
  }
}

void ShowPicture(Binding& binding) {
  WidgetAs<LampView>(binding).SetColour(ToColour(RecordOf<Picture>(binding).colour));
}

void ListenToGrid(UserInterface& userInterface, Binder& binder, Binding& binding) {
  auto& grid = RecordOf<Grid>(binding);
  auto& view = WidgetAs<GridView>(binding);
  view.SetOpensRows(grid.onDoubleClick != nullptr);
  QObject::connect(&view, &GridView::CellEntered, &binder, [&userInterface, &grid](int row, int col) {
    if (row >= grid.Rows() || col >= grid.Cols()) {
      return; // a cell of a table that the program has just made smaller
    }
    userInterface.Act(grid,
                      [&] {
                        grid.SelectRow(row);
                        grid.Col = col;
                      },
                      {});
  });
  QObject::connect(&view, &GridView::CellClicked, &binder, [&userInterface, &grid] {
    userInterface.Act(
        grid, [] {}, grid.onClick);
  });
  QObject::connect(&view, &GridView::CellOpened, &binder, [&userInterface, &grid] {
    userInterface.Act(
        grid, [] {}, grid.onDoubleClick);
  });
}

void ShowGrid(Binding& binding) {
  WidgetAs<GridView>(binding).ShowRecord(RecordOf<Grid>(binding));
}

constexpr auto Rules = std::to_array<BindingRule>({
    {ControlKind::TextField, Is<QLineEdit>, ListenToField, ShowField},
    {ControlKind::ListBox, Is<ListBoxView>, ListenToList, ShowList},
    {ControlKind::Label, IsLabel, ListenToLabel, ShowLabel},
    {ControlKind::Button, Is<QAbstractButton>, ListenToButton, ShowButton},
    {ControlKind::ToolButton, Is<QAction>, ListenToToolButton, ShowToolButton},
    {ControlKind::CheckBox, Is<QAbstractButton>, ListenToCheckBox, ShowCheckBox},
    {ControlKind::Frame, Is<QWidget>, ListenToNothing, ShowFrame},
    {ControlKind::TabPages, Is<QTabWidget>, ListenToPages, ShowPages},
    {ControlKind::MenuEntry, IsEntry, ListenToMenuEntry, ShowMenuEntry},
    {ControlKind::Picture, Is<LampView>, ListenToNothing, ShowPicture},
    {ControlKind::Grid, Is<GridView>, ListenToGrid, ShowGrid},
});

} // namespace

QString TakenByField(const QString& inserted) {
  return ToQt(Taken(FromQt(inserted)));
}

const BindingRule& RuleOf(ControlKind kind) {
  const auto found =
      std::find_if(Rules.begin(), Rules.end(), [&](const BindingRule& rule) { return rule.kind == kind; });
  if (found == Rules.end()) {
    throw std::logic_error("a control of a kind that no widget shows");
  }
  return *found;
}

} // namespace loader
