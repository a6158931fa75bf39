#include "devices/DevicePlatform.h"

#include <QCoreApplication>
#include <utility>

namespace loader {

std::filesystem::path ProgramFolderOr(const std::filesystem::path& wanted) {
  return wanted.empty() ? std::filesystem::path(QCoreApplication::applicationDirPath().toStdU16String())
                        : wanted;
}

DevicePlatform::DevicePlatform(DevicePlatformOptions options)
    : programFolder_(ProgramFolderOr(options.programFolder)), socket(std::move(options.portMap)),
      bare({.timers = &timers,
            .eventLoop = &eventLoop,
            .MSComm1 = &serial,
            .winSock = &socket,
            .USBOCX1 = &usb,
            .programFolder = programFolder_}) {}

} // namespace loader
