#include <QJsonDocument>

#include "core/Text.h"
#include "paramtool/Command.h"
#include "paramtool/StandardStreams.h"

namespace loader::paramtool {

void Output::Line(std::u16string_view text) {
  bytes_ += ToUtf8(VisibleText(text));
  bytes_ += '\n';
}

void Output::Json(const QJsonObject& report) {
  json_ = report;
}

void Output::Raw(std::string_view bytes) {
  bytes_ += bytes;
}

void Output::Message(std::u16string_view text) {
  WriteToErrors("paramtool: " + ToUtf8(VisibleText(text)) + "\n");
}

bool Output::Flush(Exit exit) {
  if (json_) {
    json_->insert(QStringLiteral("exit"), static_cast<int>(exit));
    bytes_ = QJsonDocument(*json_).toJson(QJsonDocument::Indented).toStdString();
  }
  return WriteToOutput(bytes_);
}

} // namespace loader::paramtool
