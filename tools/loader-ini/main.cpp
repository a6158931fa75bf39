// loader-ini: reads and writes the keys of a LOADER.INI, for scripts.
//   loader-ini FILE KEY               prints the value; 0 where the file or the key is absent
//   loader-ini FILE KEY VALUE ...     sets one or more keys; everything else of the file stays
#include <cstdio>
#include <string>
#include <vector>

#include "platform/PrivateProfile.h"

int main(int argc, char** argv) {
  constexpr std::string_view Section = "LOADER";
  const std::vector<std::string> words(argv + 1, argv + argc);
  if (words.size() == 2) {
    std::puts(loader::GetPrivateProfileStringA(Section, words[1], "0", 255, words[0]).c_str());
    return 0;
  }
  if (words.size() < 3 || words.size() % 2 == 0) {
    std::fputs("usage: loader-ini FILE KEY [VALUE [KEY VALUE]...]\n", stderr);
    return 2;
  }
  for (std::size_t i = 1; i + 1 < words.size(); i += 2) {
    if (!loader::WritePrivateProfileStringA(Section, words[i], words[i + 1], words[0])) {
      std::fprintf(stderr, "loader-ini: cannot write %s\n", words[0].c_str());
      return 1;
    }
  }
  return 0;
}
