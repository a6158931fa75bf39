// Every modal screen of the program, for the tests that hold for each of them: a new dialog is one more row.
#pragma once

#include <ostream>

#include "comm/frmIPSetting.h"
#include "comm/frmTimeChange.h"
#include "mainwindow/frmAbout.h"

namespace loader::test {

struct ModalScreen {
  const char* name; // of the screen and of its form
  void (*show)();   // returns when it has closed; the main window is open
};

inline void PrintTo(const ModalScreen& screen, std::ostream* out) {
  *out << screen.name;
}

inline const ModalScreen AllModalScreens[] = {
    {"frmAbout", ShowAbout},
    {"frmIPSetting", ShowIpSetting},
    {"frmTimeChange",
     [] {
       static const FlowCallbacks nobody;
       ShowTimeChange(nobody);
     }},
};

} // namespace loader::test
