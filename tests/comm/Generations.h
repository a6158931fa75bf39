// The eight register layouts as the tests know them, written down apart from the program's own tables: where
// each section lies, in which order the flows walk, and which requests that makes.
#pragma once

#include <algorithm>
#include <array>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "tests/comm/ScriptedRecorder.h"

namespace loader::test {

struct Generation {
  int number;
  const char* model;
  const char* version;
  const char* readOrder;
  const char* writeOrder;
};

inline constexpr std::array<Generation, 8> Generations{{
    {0, "KOV", "V05A", "C A G T B H M U D E N O J K X L Y", "C A G T B H M U D"},
    {1, "KOV", "V06A", "C A G T B H M U D E N O J K X L Y", "C A G T B H M U D"},
    {2, "KOV", "V14A", "C A G T B H M U D E N O J K X L Y", "C A G T B H M U D E"},
    {3, "KOV", "V18A", "C A G T B H M U D E N O J K X L Y", "C A G T B H M U D E"},
    {4, "KOV", "V27A", "C A G T B H M U D E N O J K X L Y", "C A G T B H M U D E J K X L Y"},
    {5, "KOV", "V40A", "C A G T B H M U D E N O J K X L Y", "C A G T B H M U D E O N J K X L Y"},
    {20, "RUG", "V09W", "C A G T B E O N H M U D J K X", "C A G T B E O N H M U D J K X"},
    {21, "RUG", "V10W", "C A G T B E O N H M U D J K X", "C A G T B E O N H M U D J K X"},
}};

inline std::string GenerationName(const Generation& generation) {
  return "Generation" + std::to_string(generation.number);
}
// For GoogleTest's names and messages.
inline void PrintTo(const Generation& generation, std::ostream* out) {
  *out << GenerationName(generation);
}

struct Place {
  char section;
  int base;
  int words; // of one item
  int items;
};
inline constexpr std::array<Place, 22> PlacesOfKov{{
    {'C', 44001, 60, 30}, {'A', 41001, 16, 30}, {'G', 40761, 20, 4},  {'T', 40261, 8, 4},
    {'B', 40301, 4, 4},   {'H', 40011, 40, 1},  {'M', 40531, 22, 10}, {'U', 40321, 4, 12},
    {'D', 40061, 1, 16},  {'E', 40101, 20, 1},  {'N', 40371, 2, 20},  {'O', 43001, 36, 12},
    {'J', 41501, 330, 1}, {'K', 40851, 18, 8},  {'X', 42001, 88, 8},  {'L', 40201, 8, 1},
    {'Y', 40211, 4, 12},  {'P', 30001, 16, 1},  {'I', 40421, 6, 10},  {'Z', 40191, 4, 1},
    {'F', 40001, 1, 1},   {'S', 30101, 1, 1},
}};
inline constexpr std::array<Place, 22> PlacesOfRug{{
    {'C', 45201, 60, 72}, {'A', 42601, 16, 72}, {'G', 41031, 20, 8},  {'T', 40361, 8, 8},
    {'B', 40431, 4, 8},   {'H', 40011, 40, 1},  {'M', 40801, 22, 10}, {'U', 40471, 4, 12},
    {'D', 40061, 1, 16},  {'E', 40101, 20, 1},  {'N', 40531, 2, 60},  {'O', 43801, 36, 36},
    {'J', 41401, 330, 1}, {'K', 41201, 18, 8},  {'X', 41801, 88, 8},  {'L', 40201, 8, 1},
    {'Y', 40211, 4, 36},  {'P', 30001, 16, 1},  {'I', 40661, 6, 16},  {'Z', 40191, 4, 1},
    {'F', 40001, 1, 1},   {'S', 30101, 1, 1},
}};

// Where the section's block lies in a recorder of the generation.
inline Place PlaceIn(const Generation& generation, char section) {
  const auto& places = std::string_view(generation.model) == "KOV" ? PlacesOfKov : PlacesOfRug;
  const auto* found =
      std::find_if(places.begin(), places.end(), [&](const Place& p) { return p.section == section; });
  if (found == places.end()) {
    throw std::out_of_range("no place is known for section " + std::string(1, section));
  }
  Place place = *found;
  if (section == 'M' && generation.number <= 2) {
    place.base -= 22;
  }
  if (section == 'D' && generation.number <= 2) {
    place.base += 5;
  }
  if (section == 'H' && generation.number == 0) {
    place.base += 6;
  }
  if (section == 'E' && generation.number == 2) {
    place.base += 60;
  }
  return place;
}

inline std::vector<RecordedRequest> BlockRequests(int function, const Place& place) {
  std::vector<RecordedRequest> requests;
  for (int done = 0; done < place.words * place.items; done += 64) {
    requests.push_back({function, place.base + done, std::min(64, place.words * place.items - done)});
  }
  return requests;
}

inline std::vector<char> Sections(const char* order) {
  std::istringstream in(order);
  std::vector<char> sections;
  for (char section = 0; in >> section;) {
    sections.push_back(section);
  }
  return sections;
}

inline void Append(std::vector<RecordedRequest>& requests, const std::vector<RecordedRequest>& more) {
  requests.insert(requests.end(), more.begin(), more.end());
}

// All requests of a whole read.
inline std::vector<RecordedRequest> ReadRequests(const Generation& generation) {
  std::vector<RecordedRequest> requests{{4, 30001, 16}};
  for (const char section : Sections(generation.readOrder)) {
    Append(requests, BlockRequests(3, PlaceIn(generation, section)));
  }
  return requests;
}

// All requests of a whole write: the state, the identity, and each section read before it is written.
inline std::vector<RecordedRequest> WriteRequests(const Generation& generation) {
  std::vector<RecordedRequest> requests{{4, 30101, 1}, {4, 30001, 16}};
  for (const char section : Sections(generation.writeOrder)) {
    Append(requests, BlockRequests(3, PlaceIn(generation, section)));
    Append(requests, BlockRequests(16, PlaceIn(generation, section)));
  }
  return requests;
}

// Whether a list of tags ("SHOU BETU CFFL") names the tag.
inline bool In(std::string_view list, std::string_view tag) {
  std::istringstream in{std::string(list)};
  for (std::string word; in >> word;) {
    if (word == tag) {
      return true;
    }
  }
  return false;
}

} // namespace loader::test
