// parameters FILE: prints what each parameter of an initial settings file means, as Markdown.
#include <cstdlib>
#include <exception>
#include <iostream>

#include "core/Text.h"
#include "core/modFile.h"
#include "tools/parameters/ParametersDocument.h"

int main(int count, char** arguments) {
  if (count != 2) {
    std::cerr << "usage: parameters InitSet.Ini\nPrints what each parameter means as Markdown.\n";
    return EXIT_FAILURE;
  }
  try {
    std::cout << loader::parameters::Document(loader::FromCodePage(loader::ReadWholeFile(arguments[1])));
    std::cout.flush();
    return std::cout ? EXIT_SUCCESS : EXIT_FAILURE;
  } catch (const std::exception& failure) {
    std::cerr << "parameters: " << failure.what() << "\n";
    return EXIT_FAILURE;
  }
}
