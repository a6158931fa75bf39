#include "qt/FormIcons.h"

#include <QAction>
#include <QApplication>
#include <QIconEngine>
#include <QLabel>
#include <QPainter>
#include <QPixmapCache>
#include <QStyle>
#include <QStyleOption>
#include <array>
#include <stdexcept>
#include <string>

#include "qt/System.h"

// The icons lie in a library, where nothing but this call pulls them in; it can't stand in a namespace.
static void LoadIcons() {
  Q_INIT_RESOURCE(icons);
}

namespace loader {

namespace {

QPixmap Draw(const std::string& name, const QSize& size) {
  const QString key =
      QStringLiteral("icon %1 %2 %3").arg(QString::fromStdString(name)).arg(size.width()).arg(size.height());
  QPixmap drawn;
  if (!QPixmapCache::find(key, &drawn)) {
    drawn = QPixmap::fromImage(DrawProgramIcon(name, size));
    QPixmapCache::insert(key, drawn);
  }
  return drawn;
}

// Sizes are in pixels of the screen: QIcon asks for as many as the screen's scale takes.
class DrawnIconEngine final : public QIconEngine {
public:
  explicit DrawnIconEngine(std::string name) : name_(std::move(name)) {}

  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State /*state*/) override {
    if (size.isEmpty()) {
      return {};
    }
    QPixmap drawn = Draw(name_, size);
    if (mode == QIcon::Normal) {
      return drawn;
    }
    QStyleOption option;
    option.palette = QGuiApplication::palette();
    return QApplication::style()->generatedIconPixmap(mode, drawn, &option);
  }
  void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override {
    const QSizeF size = QSizeF(rect.size()) * painter->device()->devicePixelRatioF();
    painter->drawPixmap(rect, pixmap(size.toSize(), mode, state));
  }
  [[nodiscard]] QIconEngine* clone() const override { return new DrawnIconEngine(*this); }
  bool isNull() override { return false; }

private:
  std::string name_;
};

struct FormIcon {
  std::string_view form;
  std::string_view object; // an action or a label; empty: the window itself
  std::string_view icon;
};

constexpr auto Icons = std::to_array<FormIcon>({
    {"frmParamLoader", "", "loader"},     {"frmParamLoader", "V_1", "open"},
    {"frmParamLoader", "V_2", "copy"},    {"frmParamLoader", "V_3", "paste"},
    {"frmParamLoader", "V_4", "help"},    {"frmAbout", "", "loader"},
    {"frmAbout", "picProgram", "loader"}, {"frmIPSetting", "", "loader"},
    {"frmTimeChange", "", "loader"},      {"frmGroupSetting", "", "loader"},
    {"frmMsgSetting", "", "loader"},      {"frmUnitSetting", "", "loader"},
    {"frmSelectUnit", "", "loader"},      {"frmConstSetting", "", "loader"},
    {"frmAlarmSetting", "", "loader"},    {"frmEMailTriggerSetting", "", "loader"},
    {"frmChSetting", "", "loader"},       {"frmOperationChSet", "", "loader"},
    {"frmFormula", "", "loader"},         {"frmOpSetting", "", "loader"},
});

void Give(QWidget& form, const FormIcon& row) {
  const QIcon icon = DrawnIcon(row.icon);
  const QString name = QString::fromLatin1(row.object.data(), static_cast<qsizetype>(row.object.size()));
  if (name.isEmpty()) {
    form.setWindowIcon(icon);
  } else if (auto* action = form.findChild<QAction*>(name)) {
    action->setIcon(icon);
  } else if (auto* label = form.findChild<QLabel*>(name)) {
    label->setPixmap(icon.pixmap(label->minimumSize(), qApp->devicePixelRatio()));
  } else {
    throw std::logic_error("no " + std::string(row.object) + " on the form " + std::string(row.form));
  }
}

} // namespace

QIcon DrawnIcon(std::string_view name) {
  LoadIcons();
  return QIcon(new DrawnIconEngine(std::string(name)));
}

void GiveFormIcons(QWidget& form, std::string_view name) {
  for (const FormIcon& row : Icons) {
    if (row.form == name) {
      Give(form, row);
    }
  }
}

} // namespace loader
