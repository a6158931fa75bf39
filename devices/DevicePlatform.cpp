#include "devices/DevicePlatform.h"

#include <QCoreApplication>
#include <utility>

namespace loader {

std::filesystem::path ProgramFolderOr(const std::filesystem::path& wanted) {
  return wanted.empty() ? std::filesystem::path(QCoreApplication::applicationDirPath().toStdU16String())
                        : wanted;
}

namespace {
DevicePlatformOptions WithFolder(DevicePlatformOptions options) {
  options.programFolder = ProgramFolderOr(options.programFolder);
  return options;
}
} // namespace

DevicePlatform::DevicePlatform(DevicePlatformOptions options)
    : options_(WithFolder(std::move(options))), bare({.timers = &timers,
                                                      .eventLoop = &eventLoop,
                                                      .MSComm1 = &serial,
                                                      .winSock = &socket,
                                                      .USBOCX1 = &usb,
                                                      .programFolder = options_.programFolder}) {}

} // namespace loader
