// The wait for an event, as each system's event dispatcher needs it.
#pragma once

#include <QObject>
#include <cstdint>

namespace loader {

class EventWait : public QObject {
public:
  EventWait();
  // Sleeps in the kernel until something comes, and gives it out; what is there already is given out at once.
  void Wait();

protected:
  // Counts what is given out, on the system whose dispatcher does not say so.
  bool eventFilter(QObject* watched, QEvent* event) override;

private:
  // The waits under way: a handler may wait in its turn.
  struct Round;
  void GoOnWhenGiven() const;

  std::uint64_t given_ = 0;
  const Round* round_ = nullptr; // the innermost
};

} // namespace loader
