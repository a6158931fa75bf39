// manual man ja|en, manual bash: prints the manual page of paramtool, or its completion in bash.
#include <cstdlib>
#include <iostream>
#include <string>

#include "paramtool/Completion.h"
#include "paramtool/Manual.h"

int main(int count, char** arguments) {
  std::string asked;
  for (int i = 1; i < count; ++i) {
    asked += (i == 1 ? "" : " ") + std::string(arguments[i]);
  }
  if (asked == "man ja") {
    std::cout << loader::paramtool::ManualPage(loader::Language::Japanese);
  } else if (asked == "man en") {
    std::cout << loader::paramtool::ManualPage(loader::Language::English);
  } else if (asked == "bash") {
    std::cout << loader::paramtool::BashCompletion();
  } else {
    std::cerr << "usage: manual man ja | manual man en | manual bash\n";
    return EXIT_FAILURE;
  }
  std::cout.flush();
  return std::cout ? EXIT_SUCCESS : EXIT_FAILURE;
}
