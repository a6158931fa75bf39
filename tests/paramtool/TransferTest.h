// What the tests of read and write share: recorders, their memory, reports.
#pragma once

#include <QJsonDocument>
#include <QJsonObject>
#include <csignal>
#include <map>
#include <string>

#include "tests/paramtool/HoldingProxy.h"
#include "tests/paramtool/ToolTest.h"
#include "tests/support/MemoryDump.h"

namespace loader::test {

class TransferTest : public ToolTest {
protected:
  // A line of the parameter file of the plant with another value.
  static std::string With(std::string file, const std::string& key, const std::string& value) {
    const std::size_t at = file.find("\n" + key + ",");
    EXPECT_NE(at, std::string::npos) << key;
    const std::size_t begin = at + key.size() + 2;
    return file.replace(begin, file.find("\r\n", begin) - begin, value);
  }
  // The plant with a few settings of an engineer's.
  static std::string Changed(const std::string& model) {
    return With(With(PlantFile(model), "C02MMAX", "777"), "H00PAS1", "4321");
  }

  // Its working memory, at its end.
  [[nodiscard]] std::map<int, int> EndAndDump(simulator::RunningSimulator& recorder) const {
    EXPECT_EQ(recorder.Stop(SIGTERM).status, 0);
    return ReadMemoryDump(File("dump"));
  }
  // The report without the number of the port.
  static std::string WithoutPort(std::string text) {
    constexpr std::string_view Host = "tcp:127.0.0.1:";
    for (std::size_t at = text.find(Host); at != std::string::npos; at = text.find(Host, at + 1)) {
      const std::size_t begin = at + Host.size();
      text.replace(begin, text.find_first_not_of("0123456789", begin) - begin, "PORT");
    }
    return text;
  }
  static QJsonObject JsonOfOutput(const Ended& ended) {
    return QJsonDocument::fromJson(QByteArray::fromStdString(ended.output)).object();
  }
};

} // namespace loader::test
