// register-map FILE: prints the register map of an initial settings file as Markdown.
#include <cstdlib>
#include <exception>
#include <iostream>

#include "core/Text.h"
#include "core/modFile.h"
#include "tools/register-map/RegisterMapDocument.h"

int main(int count, char** arguments) {
  if (count != 2) {
    std::cerr << "usage: register-map InitSet.Ini\nPrints the register map of an initial settings file as "
                 "Markdown.\n";
    return EXIT_FAILURE;
  }
  try {
    std::cout << loader::registermap::Document(loader::FromCodePage(loader::ReadWholeFile(arguments[1])));
    std::cout.flush();
    return std::cout ? EXIT_SUCCESS : EXIT_FAILURE;
  } catch (const std::exception& failure) {
    std::cerr << "register-map: " << failure.what() << "\n";
    return EXIT_FAILURE;
  }
}
