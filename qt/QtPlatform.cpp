#include "qt/QtPlatform.h"

#include "qt/Application.h"

namespace loader {

namespace {

// 0 with an application that does not count them: then every event ends a wait.
std::uint64_t EventsGiven() {
  const auto* application = dynamic_cast<const Application*>(QCoreApplication::instance());
  return application == nullptr ? 0 : application->EventsGiven();
}

} // namespace

QtPlatform::QtPlatform(QtPlatformOptions options)
    : programFolder_(ProgramFolderOr(options.programFolder)),
      screens(userInterface, std::move(options.makeForm)),
      timers([this](const Handler& handler) { userInterface.Run(handler); }),
      eventLoop({.show = [this] { userInterface.Refresh(); }, .eventsGiven = EventsGiven}),
      serial(programFolder_), socket(std::move(options.portMap)),
      usb(programFolder_), platform{.boxes = boxes,
                                    .fileDialogs = fileDialogs,
                                    .screens = screens,
                                    .timers = timers,
                                    .eventLoop = eventLoop,
                                    .clock = clock,
                                    .MSComm1 = serial,
                                    .winSock = socket,
                                    .USBOCX1 = usb,
                                    .programFolder = programFolder_} {
  SetPlatform(&platform);
}

QtPlatform::~QtPlatform() {
  SetPlatform(nullptr);
}

} // namespace loader
