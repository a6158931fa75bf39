// Words for several files, by the rules of Windows; what the system's shells leave of that to the program is
// in the file of each system.
#include "paramtool/Wildcards.h"

#include "core/Text.h"
#include "tests/paramtool/ToolTest.h"

namespace loader::test {
namespace {

using paramtool::FilesByWildcards;
using paramtool::MatchesWildcards;

struct Case {
  std::u16string_view pattern, name;
  bool matches;
};

TEST(Wildcards, MeanNamesByTheRulesOfWindows) {
  constexpr auto Cases = std::to_array<Case>({
      {u"*.RUG", u"a.RUG", true},
      {u"*.RUG", u".RUG", true},
      {u"*.RUG", u"a.b.RUG", true},
      {u"*.RUG", u"a.RUG.old", false},
      {u"*.RUG", u"a.RUG2", false}, // what a short name of the system's would match
      {u"*.RUG", u"aRUG", false},
      {u"*.RUG", u"RUG", false},
      {u"*", u"a.RUG", true},
      {u"*", u"a", true},
      {u"*.*", u"a.RUG", true},
      {u"*.*", u"a", true},
      {u"a.*", u"a", true},
      {u"a.*", u"ab", false},
      {u"*.", u"a", true},
      {u"*.", u"a.RUG", false},
      {u"a?.RUG", u"ab.RUG", true},
      {u"a?.RUG", u"a.RUG", true}, // none in front of a dot
      {u"a?.RUG", u"abc.RUG", false},
      {u"a??", u"a", true}, // none at the end
      {u"a??", u"abcd", false},
      {u"?", u"a.b", false}, // no dot
      {u"line?.RUG", u"line炉.RUG", true},
      {u"炉*号.KOV", u"炉 12 号.KOV", true},
      {u"炉*号.KOV", u"炉 12 号機.KOV", false},
      {u"*a*b*c", u"xaxbxbxc", true},
      {u"*a*b*c", u"xaxcxbx", false},
      {u"*aab", u"aaab", true}, // the first a is not the one that counts
      {u"**.K*V", u"a.KOV", true},
      {u"a", u"a", true},
      {u"a", u"A", false}, // FileKey's matter
      {u"a", u"", false},
      {u"", u"a", false},
      {u"[ab].RUG", u"a.RUG", false}, // no wildcards of Windows
      {u"[ab].RUG", u"[ab].RUG", true},
  });
  for (const Case& each : Cases) {
    EXPECT_EQ(MatchesWildcards(each.pattern, each.name), each.matches)
        << ToUtf8(each.pattern) << " and " << ToUtf8(each.name);
  }
}

class WildcardFiles : public ToolTest {
protected:
  // With the test's folder as "FOLDER".
  [[nodiscard]] std::vector<std::string> Meant(const std::string& word) const {
    std::vector<std::string> files;
    for (const QString& file : FilesByWildcards(QString::fromStdString(File(word)))) {
      files.push_back(WithoutFolder(file.toStdString()));
    }
    return files;
  }
};
using Words = std::vector<std::string>;

TEST_F(WildcardFiles, StandInASteadyOrderEachWithTheFolderOfTheWord) {
  for (const char* name :
       {"b.RUG", "a 2.RUG", "炉 2.RUG", "炉 1.RUG", "a.KOV", "c.RUG2", "10.RUG", "9.RUG"}) {
    Write(name, "");
  }
  EXPECT_EQ(Meant("*.RUG"), (Words{"FOLDER/10.RUG", "FOLDER/9.RUG", "FOLDER/a 2.RUG", "FOLDER/b.RUG",
                                   "FOLDER/炉 1.RUG", "FOLDER/炉 2.RUG"}));
  EXPECT_EQ(Meant("炉 ?.RUG"), (Words{"FOLDER/炉 1.RUG", "FOLDER/炉 2.RUG"}));
}

TEST_F(WildcardFiles, AreNoFolders) {
  std::filesystem::create_directory(File("a.RUG"));
  Write("b.RUG", "");
  EXPECT_EQ(Meant("*.RUG"), (Words{"FOLDER/b.RUG"}));
}

TEST_F(WildcardFiles, AWordThatMeansNoneStaysAsItIs) {
  std::filesystem::create_directory(File("folder"));
  Write("folder/a.RUG", "");
  Write("a.RUG", "");
  for (const char* word : {"*.KOV", "a.RUG", "absent.RUG", "absent/*.RUG", "fold*/a.RUG", "fold*/*.RUG"}) {
    EXPECT_EQ(Meant(word), (Words{std::string("FOLDER/") + word}));
  }
  for (const char* word : {"", "-", "tcp:*", "default:K*", "serial:COM?"}) {
    EXPECT_EQ(FilesByWildcards(QString::fromLatin1(word)), QStringList{QString::fromLatin1(word)});
  }
}

} // namespace
} // namespace loader::test
