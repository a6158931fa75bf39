#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include "tests/paramtool/FleetTest.h"

namespace loader::test {

namespace {

constexpr int Patience = 60000; // milliseconds

sockaddr_in Loopback() {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  return address;
}

int BoundSocket(int& port) {
  const int bound = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_in address = Loopback();
  socklen_t size = sizeof(address);
  EXPECT_EQ(::bind(bound, reinterpret_cast<sockaddr*>(&address), size), 0);
  EXPECT_EQ(::getsockname(bound, reinterpret_cast<sockaddr*>(&address), &size), 0);
  port = ntohs(address.sin_port);
  return bound;
}

std::vector<std::string> EachOne(const QJsonObject& report, const char* key) {
  std::vector<std::string> texts;
  for (const QJsonValue& recorder : report.value(QStringLiteral("recorders")).toArray()) {
    texts.push_back(recorder.toObject().value(QLatin1String(key)).toString().toStdString());
  }
  return texts;
}

} // namespace

SilentRecorder::SilentRecorder() : listener_(BoundSocket(port_)) {
  EXPECT_EQ(::listen(listener_, 8), 0);
}

SilentRecorder::~SilentRecorder() {
  ::close(listener_);
  ::close(client_);
}

std::string SilentRecorder::Address() const {
  return "tcp:127.0.0.1:" + std::to_string(port_);
}

void SilentRecorder::WaitForClient() {
  pollfd wait{listener_, POLLIN, 0};
  ASSERT_EQ(::poll(&wait, 1, Patience), 1) << "nobody connects";
  client_ = ::accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
  ASSERT_GE(client_, 0);
}

bool SilentRecorder::ClientHasGone() const {
  while (true) {
    pollfd wait{client_, POLLIN, 0};
    char byte = 0;
    if (::poll(&wait, 1, Patience) != 1) {
      return false;
    }
    if (::read(client_, &byte, 1) <= 0) {
      return true;
    }
  }
}

std::string NobodyThere() {
  int port = 0;
  ::close(BoundSocket(port));
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
