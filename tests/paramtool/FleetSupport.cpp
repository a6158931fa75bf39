#include "tests/paramtool/FleetTest.h"
#include "tests/paramtool/LoopbackSockets.h"

namespace loader::test {

namespace {

constexpr int Patience = 60000; // milliseconds

std::vector<std::string> EachOne(const QJsonObject& report, const char* key) {
  std::vector<std::string> texts;
  for (const QJsonValue& recorder : report.value(QStringLiteral("recorders")).toArray()) {
    texts.push_back(recorder.toObject().value(QLatin1String(key)).toString().toStdString());
  }
  return texts;
}

} // namespace

SilentRecorder::SilentRecorder() : listener_(BindToFreePort(port_)) {
  EXPECT_TRUE(ListenOn(listener_));
}

SilentRecorder::~SilentRecorder() {
  CloseSocket(listener_);
  CloseSocket(client_);
}

std::string SilentRecorder::Address() const {
  return "tcp:127.0.0.1:" + std::to_string(port_);
}

void SilentRecorder::WaitForClient() {
  ASSERT_TRUE(WaitForNews(listener_, Patience)) << "nobody connects";
  client_ = AcceptOn(listener_);
  ASSERT_GE(client_, 0);
}

bool SilentRecorder::ClientHasGone() const {
  while (WaitForNews(client_, Patience)) {
    std::uint8_t byte = 0;
    if (ReceiveFrom(client_, &byte, 1) <= 0) {
      return true;
    }
  }
  return false;
}

std::string NobodyThere() {
  int port = 0;
  CloseSocket(BindToFreePort(port));
  return "tcp:127.0.0.1:" + std::to_string(port);
}

std::string FleetTest::WriteList(const std::vector<std::string>& rows) const {
  std::string text = "name,address,model,file\n";
  for (const std::string& row : rows) {
    text += row + "\n";
  }
  return Write("plant.csv", text);
}

Ended FleetTest::Fleet(std::vector<std::string> arguments, const ProcessOptions& options) const {
  arguments.insert(arguments.begin(), {"fleet", File("plant.csv"), "--lang", "en"});
  return Tool(std::move(arguments), options);
}

QJsonObject FleetTest::Report(const Ended& ended) {
  return QJsonDocument::fromJson(QByteArray::fromStdString(ended.output)).object();
}

std::vector<std::string> FleetTest::Outcomes(const QJsonObject& report) {
  return EachOne(report, "outcome");
}

std::vector<std::string> FleetTest::Texts(const QJsonObject& report) {
  return EachOne(report, "text");
}

std::unique_ptr<simulator::RunningSimulator>
FleetTest::StartPlainRecorder(const std::string& versionTag, const std::vector<std::string>& more) {
  std::vector<std::string> arguments{"--model", ModelOfTag(versionTag), "--firmware", versionTag, "--tcp",
                                     "0"};
  arguments.insert(arguments.end(), more.begin(), more.end());
  return std::make_unique<simulator::RunningSimulator>(std::move(arguments));
}

} // namespace loader::test
