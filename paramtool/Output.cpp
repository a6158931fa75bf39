#include <cstdio>

#include <QJsonDocument>

#include "core/Text.h"
#include "paramtool/Command.h"

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
  const std::string line = "paramtool: " + ToUtf8(VisibleText(text)) + "\n";
  std::fwrite(line.data(), 1, line.size(), stderr);
}

bool Output::Flush(Exit exit) {
  if (json_) {
    json_->insert(QStringLiteral("exit"), static_cast<int>(exit));
    bytes_ = QJsonDocument(*json_).toJson(QJsonDocument::Indented).toStdString();
  }
  const bool all = std::fwrite(bytes_.data(), 1, bytes_.size(), stdout) == bytes_.size();
  return std::fflush(stdout) == 0 && all;
}

} // namespace loader::paramtool
