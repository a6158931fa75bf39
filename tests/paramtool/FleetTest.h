// What the tests of fleets share: lists, a recorder that takes a connection and never answers.
#pragma once

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QString>
#include <string>
#include <vector>

#include "tests/paramtool/ToolTest.h"

namespace loader::test {

class SilentRecorder {
public:
  SilentRecorder();
  ~SilentRecorder();
  SilentRecorder(const SilentRecorder&) = delete;
  SilentRecorder& operator=(const SilentRecorder&) = delete;

  [[nodiscard]] std::string Address() const;
  // Until somebody has connected.
  void WaitForClient();
  // Whether the client has gone; waits for it, and gives up when it stays too long.
  [[nodiscard]] bool ClientHasGone() const;

private:
  int port_ = 0;
  int listener_ = -1;
  int client_ = -1;
};

// An address of this machine where nothing listens.
[[nodiscard]] std::string NobodyThere();

class FleetTest : public ToolTest {
protected:
  // Writes "plant.csv" from rows without their end and returns its path.
  std::string WriteList(const std::vector<std::string>& rows) const; // NOLINT(modernize-use-nodiscard)
  // Runs "fleet plant.csv ..." in English.
  [[nodiscard]] Ended Fleet(std::vector<std::string> arguments, const ProcessOptions& options = {}) const;
  [[nodiscard]] static QJsonObject Report(const Ended& ended);
  // "good", "failed" ... of each recorder.
  [[nodiscard]] static std::vector<std::string> Outcomes(const QJsonObject& report);
  [[nodiscard]] static std::vector<std::string> Texts(const QJsonObject& report);
  [[nodiscard]] static std::unique_ptr<simulator::RunningSimulator>
  StartPlainRecorder(const std::string& versionTag, const std::vector<std::string>& more = {});
};

} // namespace loader::test
