// What tests of the devices ask of the system itself, and what it calls things.
#pragma once

#include <QtGlobal>
#include <filesystem>
#include <string>
#include <vector>

namespace loader::test {

// The Qt libraries of this process, without their endings, sorted.
[[nodiscard]] std::vector<std::string> LoadedQtLibraries();
// Those that the devices are built on: "libQt6Core" or "Qt6Core".
[[nodiscard]] std::vector<std::string> QtLibrariesOfTheDevices();
// The file of this program.
[[nodiscard]] std::filesystem::path ThisProgram();
// The connection is cut off instead of ended when the socket is closed.
void ResetWhenClosed(qintptr socket);
// A port that a program has open is refused to all others. Not so under wine.
[[nodiscard]] bool PortsAreForOneProgram();

// Port 16, which is none, and why it can't be opened.
[[nodiscard]] std::u16string NameOfPort16();
[[nodiscard]] std::u16string ReasonForNoDevice();

} // namespace loader::test
