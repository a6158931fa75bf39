// libmodbus's own server in a thread: a recorder whose every frame is made and judged by code that is not
// ours.
#pragma once

#include <modbus/modbus.h>

#include <filesystem>
#include <memory>
#include <thread>

#include "tests/links/RecorderRegisters.h"

namespace loader::test {

class ModbusServer {
public:
  // On a free port of 127.0.0.1, and on pseudo-terminals that COM1 and USB of the folder point at. Registers
  // that `registers` doesn't name are 0.
  ModbusServer(const Registers& registers, const std::filesystem::path& folder);
  ~ModbusServer();
  ModbusServer(const ModbusServer&) = delete;
  ModbusServer& operator=(const ModbusServer&) = delete;

  [[nodiscard]] int Port() const { return port_; }
  // Ends the server and tells what it holds.
  [[nodiscard]] Registers Stop();
  // Requests that libmodbus has answered, and those that it could make nothing of.
  [[nodiscard]] int Answered() const { return answered_; }
  [[nodiscard]] int Refused() const { return refused_; }

private:
  struct Deleter {
    void operator()(modbus_t* context) const { modbus_free(context); }
    void operator()(modbus_mapping_t* mapping) const { modbus_mapping_free(mapping); }
  };
  using Context = std::unique_ptr<modbus_t, Deleter>;
  // A pseudo-terminal whose master libmodbus works on.
  struct Terminal {
    int master = -1, slave = -1;
    Context context;
  };
  Terminal OpenTerminal(const std::filesystem::path& link);
  void Run();
  // False once the other end has gone.
  bool Serve(modbus_t* context);

  std::unique_ptr<modbus_mapping_t, Deleter> mapping_;
  Context tcp_;
  Terminal terminals_[2];
  int listener_ = -1, stop_ = -1, port_ = 0;
  int answered_ = 0, refused_ = 0; // read by the test after Stop
  std::thread thread_;
};

} // namespace loader::test
