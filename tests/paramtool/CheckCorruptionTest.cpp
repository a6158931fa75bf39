// Good files, damaged at random: what check says opens, opens, and the other way round; it never breaks; and
// a value outside of its limits is always told.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <random>

#include "companion/Check.h"
#include "core/Text.h"
#include "core/modFile.h"
#include "files/ParameterFile.h"
#include "platform/BarePlatform.h"
#include "tests/paramtool/ToolTest.h"

namespace loader::test {
namespace {

class Damage {
public:
  Damage(std::string bytes, std::uint32_t seed) : bytes_(std::move(bytes)), random_(seed) {}

  std::string Done() {
    for (int times = 1 + Below(3); times > 0; --times) {
      (this->*Kinds[static_cast<std::size_t>(Below(static_cast<int>(Kinds.size())))])();
    }
    return bytes_;
  }

private:
  int Below(int limit) { return static_cast<int>(random_() % static_cast<std::uint32_t>(limit)); }
  std::size_t Place() { return random_() % bytes_.size(); }
  std::size_t LineAt(std::size_t at) const {
    const std::size_t end = bytes_.rfind('\n', at);
    return end == std::string::npos ? 0 : end + 1;
  }
  std::size_t LineEnd(std::size_t at) const {
    const std::size_t end = bytes_.find('\n', at);
    return end == std::string::npos ? bytes_.size() : end + 1;
  }
  // Where a value begins: most of a random place's line.
  std::size_t ValueAt() {
    const std::size_t line = LineAt(Place());
    const std::size_t comma = bytes_.find(',', line);
    return comma == std::string::npos || comma + 1 >= bytes_.size() ? line : comma + 1;
  }

  void FlipBit() { bytes_[Place()] ^= static_cast<char>(1 << Below(8)); }
  void AnyByte() { bytes_[Place()] = static_cast<char>(Below(256)); }
  void CutLine() {
    const std::size_t at = Place();
    bytes_.erase(at, LineEnd(at) - at);
  }
  void CutFile() { bytes_.resize(Place() + 1); }
  void OtherDigit() {
    const std::size_t at = bytes_.find_first_of("0123456789", Place());
    if (at != std::string::npos) {
      bytes_[at] = static_cast<char>('0' + Below(10));
    }
  }
  void MoreDigits() { bytes_.insert(ValueAt(), std::to_string(Below(400))); }
  void OtherValue() {
    const std::size_t at = ValueAt();
    bytes_.replace(at, bytes_.find('\r', at) == std::string::npos ? 0 : bytes_.find('\r', at) - at,
                   std::to_string(Below(70000) - 35000));
  }
  void InsertComma() { bytes_.insert(Place(), ","); }
  void DoubleLine() {
    const std::size_t at = LineAt(Place());
    const std::string line = bytes_.substr(at, LineEnd(at) - at);
    bytes_.insert(LineAt(Place()), line);
  }
  void SwapNeighbours() {
    const std::size_t at = Place();
    if (at + 1 < bytes_.size()) {
      std::swap(bytes_[at], bytes_[at + 1]);
    }
  }
  void DeleteByte() {
    if (bytes_.size() > 1) {
      bytes_.erase(Place(), 1);
    }
  }
  void DeleteLine() {
    const std::size_t at = LineAt(Place());
    const std::size_t end = LineEnd(at);
    if (end - at < bytes_.size()) {
      bytes_.erase(at, end - at);
    }
  }

  static constexpr std::array Kinds{&Damage::FlipBit,     &Damage::AnyByte,    &Damage::CutLine,
                                    &Damage::CutFile,     &Damage::OtherDigit, &Damage::OtherDigit,
                                    &Damage::MoreDigits,  &Damage::OtherValue, &Damage::OtherValue,
                                    &Damage::InsertComma, &Damage::DoubleLine, &Damage::SwapNeighbours,
                                    &Damage::DeleteByte,  &Damage::DeleteLine};
  std::string bytes_;
  std::mt19937 random_;
};

struct Opened {
  bool opens = false;
  WholeSetUp setUp;
};

Opened OpenAs(const std::string& model, std::string_view bytes) {
  Opened opened{.setUp = InitialSetUp(model, Language::English)};
  opened.opens = WithSetUp(opened.setUp, [&] { return LoadParamBytes(bytes); });
  return opened;
}

bool Tells(const CheckedFile& checked, const ParameterRef& ref) {
  return std::ranges::any_of(checked.defects, [&](const CheckDefect& defect) { return defect.ref == ref; });
}

// How many values of the set-up lie outside their record's limits.
int ExpectBadValuesTold(const CheckedFile& checked, WholeSetUp& damaged) {
  int bad = 0;
  const SetUpInForce inForce(damaged);
  ForEachParameter([&](const ParameterRef& ref, const StoredParameter& parameter) {
    if (parameter.number != nullptr && (parameter.number->Value < parameter.number->MinValue ||
                                        parameter.number->Value > parameter.number->MaxValue)) {
      ++bad;
      EXPECT_TRUE(Tells(checked, ref)) << KeyOf(ref);
    }
  });
  return bad;
}

class DamagedFiles : public testing::TestWithParam<std::string> {
protected:
  const std::string& plant_ = PlantFile(GetParam());
  BarePlatform platform_{{.programFolder = LOADER_DATA_DIR}};
};

TEST_P(DamagedFiles, OpenOrNotAsTheCheckSays) {
  constexpr std::uint32_t Files = 1000;
  constexpr Speech English{Language::English, false};
  int opened = 0;
  int bad = 0;
  int silent = 0;
  for (std::uint32_t seed = 1; seed <= Files; ++seed) {
    SCOPED_TRACE(seed);
    const std::string bytes = Damage(plant_, seed).Done();
    const CheckedFile checked = CheckBytes(u"x", bytes, GetParam(), English);
    Opened window = OpenAs(GetParam(), bytes);
    ASSERT_EQ(checked.opens, window.opens);
    ASSERT_EQ(checked.opens, std::ranges::find(checked.defects, Severity::PreventsOpening,
                                               &CheckDefect::severity) == checked.defects.end());
    for (std::size_t i = 1; i < checked.defects.size(); ++i) {
      ASSERT_LE(checked.defects[i - 1].line, checked.defects[i].line);
    }
    if (window.opens) {
      ++opened;
      bad += ExpectBadValuesTold(checked, window.setUp);
    }
    silent += checked.defects.empty() ? 1 : 0;
  }
  // The damage is of both sorts, and is seldom such that nobody could tell (another digit within limits).
  EXPECT_GT(opened, static_cast<int>(Files / 4));
  EXPECT_LT(opened, static_cast<int>(Files * 3 / 4));
  EXPECT_GT(bad, 50);
  EXPECT_LT(silent, static_cast<int>(Files / 2));
}

// A file that is damaged may fit the other model: it is then taken for that one, which is told.
TEST_P(DamagedFiles, OpenAsTheModelTheyAreTakenFor) {
  constexpr std::uint32_t Files = 150;
  for (std::uint32_t seed = 5001; seed <= 5000 + Files; ++seed) {
    SCOPED_TRACE(seed);
    const std::string bytes = Damage(plant_, seed).Done();
    const CheckedFile checked = CheckBytes(u"x", bytes, {}, {Language::Japanese, true});
    ASSERT_EQ(checked.opens, OpenAs(checked.model, bytes).opens);
    if (checked.model != GetParam()) {
      EXPECT_FALSE(checked.defects.empty());
    }
  }
}

TEST_P(DamagedFiles, AreCheckedFast) {
  using Clock = std::chrono::steady_clock;
  auto best = Clock::duration::max();
  for (int time = 0; time < 10; ++time) {
    const auto start = Clock::now();
    const CheckedFile checked = CheckBytes(u"x", plant_, {}, {Language::Japanese, false});
    best = std::min(best, Clock::now() - start);
    EXPECT_TRUE(checked.opens);
  }
  const double milliseconds = std::chrono::duration<double, std::milli>(best).count();
  RecordProperty("milliseconds", std::to_string(milliseconds));
  EXPECT_LT(milliseconds, 50);
}

INSTANTIATE_TEST_SUITE_P(Models, DamagedFiles, testing::Values("KOV", "RUG"),
                         [](const auto& model) { return model.param; });

} // namespace
} // namespace loader::test
