#include "Support/text/LangPack.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "Support/foundation/Registry.h"
#include "Support/text/LangPackReader.h"
#include "tests/TestRegistry.h"

namespace vemra {
namespace {

class CollectingReader : public LangPackReader {
 public:
  std::vector<std::string> bad;

 protected:
  void OnBadLine(const std::string& line, std::uint32_t number) override {
    bad.push_back(std::to_string(number) + ": " + line);
  }
};

class LangPack : public testing::Test {
 protected:
  LangPack() { TavoLangPack::ReleaseAll(); }
  ~LangPack() override { TavoLangPack::ReleaseAll(); }

  void Register(const std::string& language, const std::string& path) {
    ASSERT_TRUE(SetTavoValue("Languages\\" + language, "Path", path));
  }
  std::string Write(const std::string& name, const std::string& text) {
    test::WriteHostFile(folder_.Host() / name, text);
    return folder_.Path(name);
  }
  // What a file of one section makes of the tables; the bad lines in bad.
  LangPackTables Read(const std::string& section, const std::string& lines,
                      std::vector<std::string>* bad = nullptr) {
    LangPackTables tables;
    CollectingReader reader;
    EXPECT_EQ(reader.Read(Write("one.pack", "[" + section + "]\n" + lines), tables), 1);
    if (bad != nullptr) *bad = reader.bad;
    return tables;
  }

  test::TestRegistry registry_;
  test::TempFolder folder_;
};

TEST_F(LangPack, ReadsFlags) {
  const std::vector<std::pair<std::string, std::vector<std::pair<int, int>>>> rows = {
      {"65-90=A\n65=", {{64, 0}, {65, 0}, {66, 3}, {90, 3}, {91, 0}}},
      {"'0'-'9'=D", {{'0', 4}, {'9', 4}}},
      {"'a'=AD", {{'a', 7}}},
      {"'a'=xAy", {{'a', 3}}},
      {"'a'=DD", {{'a', 8}}},
      {"'''=A\n'='=A\n'-'-'/'=A", {{'\'', 3}, {'=', 3}, {'-', 3}, {'.', 3}, {'/', 3}}},
      {"';'=A\n; 66=A\n'\xE9'=A", {{';', 3}, {66, 0}, {0xE9, 3}}},
      {" +65=A\n250-255=A", {{65, 3}, {255, 3}}},
      {"70-65=A\n68=D", {{65, 0}, {68, 4}, {70, 0}}},
  };
  for (const auto& [lines, flags] : rows) {
    SCOPED_TRACE(lines);
    std::vector<std::string> bad;
    const LangPackTables tables = Read("Flags", lines, &bad);
    EXPECT_TRUE(bad.empty()) << bad.front();
    for (const auto& [byte, value] : flags) {
      EXPECT_EQ(tables.flags[static_cast<std::size_t>(byte)], value) << byte;
    }
  }
}

TEST_F(LangPack, ReadsSortWeights) {
  const std::vector<std::pair<std::string, std::vector<std::pair<int, int>>>> rows = {
      {"", {{0, 0}, {65, 65}, {255, 255}}},
      {"65=-5", {{65, -5}}},
      {"65-66= +7rest", {{65, 7}, {66, 7}}},
      {"65-66+=10\n66-=1", {{65, 75}, {66, 75}}},
      {"65-=5", {{65, 60}}},
      {"'A'-'Z'~=300", {{'A', 235}, {'Z', 210}}},
      {"65=32767\n65+=1\n66=40000", {{65, -32768}, {66, -25536}}},
  };
  for (const auto& [lines, weights] : rows) {
    SCOPED_TRACE(lines);
    std::vector<std::string> bad;
    const LangPackTables tables = Read("Sort", lines, &bad);
    EXPECT_TRUE(bad.empty()) << bad.front();
    for (const auto& [byte, weight] : weights) {
      EXPECT_EQ(tables.sort[static_cast<std::size_t>(byte)], weight) << byte;
    }
  }
}

TEST_F(LangPack, ReadsIndex) {
  const LangPackTables tables = Read("Index", "'a'-'z'='A'-'Z'\n200='x'\n'q'='r'");
  EXPECT_EQ(tables.toIndex['a'], 'A');
  EXPECT_EQ(tables.toIndex['z'], 'Z');
  EXPECT_EQ(tables.toIndex['q'], 'r');
  EXPECT_EQ(tables.toIndex[200], 'x');
  EXPECT_EQ(tables.toIndex['Z'], 'Z');
}

TEST_F(LangPack, SkipsBadLinesWhole) {
  const std::pair<const char*, const char*> rows[] = {
      {"Flags", "0=A"},
      {"Flags", "256=A"},
      {"Flags", "-65=A"},
      {"Flags", "65 =A"},
      {"Flags", "65"},
      {"Flags", "''=A"},
      {"Flags", "'ab'=A"},
      {"Flags", "65-=A"},
      {"Flags", "65-x=A"},
      {"Flags", "x=A"},
      {"Flags", "65 -70=A"},
      {"Flags", "4294967361=A"},
      {"Sort", "65="},
      {"Sort", "65=x"},
      {"Sort", "65*=1"},
      {"Sort", "65+ =1"},
      {"Sort", "65=- 1"},
      {"Index", "'a'-'z'='A'-'Y'"},
      {"Index", "90-65=122-97"},
      {"Index", "65=97 "},
      {"Index", "65-66=97"},
      {"Index", "65=0"},
      {"Index", "65-67=254-256"},
      {"Query Language", "And"},
      {"Query Language", "and=x"},
  };
  const LangPackTables untouched;
  for (const auto& [section, line] : rows) {
    SCOPED_TRACE(line);
    std::vector<std::string> bad;
    const LangPackTables tables = Read(section, std::string(line) + "\n", &bad);
    EXPECT_EQ(bad, std::vector<std::string>{std::string("2: ") + line});
    EXPECT_EQ(tables.flags, untouched.flags);
    EXPECT_EQ(tables.sort, untouched.sort);
    EXPECT_EQ(tables.toIndex, untouched.toIndex);
  }
}

TEST_F(LangPack, AppliesSectionsInFileOrder) {
  LangPackTables tables;
  const std::string path = Write("all.pack",
                                 "65=A\n[Flags]\n66=A\n\n[Other]\n67=A\nAnd=X\n[Flags\n68=A\n"
                                 "[Query Language]\nOr=ODER\nRest=1\nAnd=UND\n"
                                 "[Flags]\r\n66=D\r\n69=A");
  CollectingReader reader;
  ASSERT_EQ(reader.Read(path, tables), 1);
  EXPECT_EQ(reader.bad, std::vector<std::string>{"12: Rest=1"});
  for (const auto& [byte, flags] : {std::pair{65, 0}, {66, 4}, {67, 0}, {68, 0}, {69, 3}}) {
    EXPECT_EQ(tables.flags[static_cast<std::size_t>(byte)], flags) << byte;
  }
  EXPECT_EQ(tables.andWord, "UND");
  EXPECT_EQ(tables.orWord, "ODER");
  EXPECT_EQ(tables.notWord, "NOT");
  EXPECT_EQ(reader.Read(folder_.Path("missing.pack"), tables), 0);
}

TEST_F(LangPack, TheCacheLoadsEachLanguageOnce) {
  TavoLangPack::LoadStatus status;
  EXPECT_EQ(TavoLangPack::Get("Klingon", &status), nullptr);
  EXPECT_EQ(status.code, TavoLangPack::LoadStatus::kUnknownLanguage);
  EXPECT_EQ(status.path, "");

  const std::string path = folder_.Path("late.pack");
  Register("Late", path);
  EXPECT_EQ(TavoLangPack::Get("Late", &status), nullptr);
  EXPECT_EQ(status.code, TavoLangPack::LoadStatus::kNotLoaded);
  EXPECT_EQ(status.path, path);
  Write("late.pack", "[Query Language]\nAnd=et\n");
  TavoLangPack* pack = TavoLangPack::Get("Late", &status);
  ASSERT_NE(pack, nullptr);
  EXPECT_EQ(status.code, TavoLangPack::LoadStatus::kSuccess);
  EXPECT_EQ(pack->GetName(), "Late");
  EXPECT_EQ(pack->GetAndWord(), "et");
  EXPECT_FALSE(pack->IsAlnum('a'));
  EXPECT_FALSE(pack->IsAndWord("ET"));  // nothing folds
  EXPECT_TRUE(pack->IsSpecialWord("OR"));

  // A changed file counts only after the pack was released.
  Write("late.pack", "[Flags]\n'a'=A\n");
  EXPECT_EQ(TavoLangPack::Get("Late"), pack);
  EXPECT_FALSE(pack->IsAlnum('a'));
  TavoLangPack::Release(pack);
  EXPECT_TRUE(TavoLangPack::Get("Late")->IsAlnum('a'));
}

TEST_F(LangPack, TheBuiltInPackFollowsAscii) {
  TavoLangPack* pack = TavoLangPack::Get("");
  ASSERT_EQ(pack, TavoLangPack::GetDefault());
  EXPECT_EQ(pack->GetName(), "Default");
  EXPECT_FALSE(pack->IsAlnum(0xE9));
  std::string text = "AbZ\xC9[1";
  EXPECT_EQ(pack->ToIndex(text), "abz\xC9[1");
  EXPECT_EQ(pack->Compare("ab", "abc"), -1);
  EXPECT_EQ(pack->Compare("c", "a"), 1);
  EXPECT_EQ(pack->Compare("\xC9", "a"), 1);
  EXPECT_EQ(pack->Compare("", ""), 0);
  EXPECT_TRUE(pack->IsNotWord("nOt"));
  EXPECT_FALSE(pack->CompareNoCase("not", "nota"));

  Register("Plain", "");
  EXPECT_EQ(TavoLangPack::Get("Plain"), pack);
  EXPECT_EQ(pack->GetName(), "Plain");
  TavoLangPack::ReleaseAll();
  EXPECT_EQ(TavoLangPack::GetDefault()->GetName(), "Default");
}

TEST_F(LangPack, ALoadedPackComparesByWeights) {
  Register("Weights", Write("w.pack", "[Sort]\n'a'=65\n'b'=-9\n"));
  const TavoLangPack* pack = TavoLangPack::Get("Weights");
  ASSERT_NE(pack, nullptr);
  EXPECT_EQ(pack->Compare("a", "A"), 0);
  EXPECT_EQ(pack->Compare("b", "A"), -74);
  EXPECT_EQ(pack->Compare("ab", "abc"), -1);
  EXPECT_EQ(pack->Compare("abc", "ab"), 1);
  EXPECT_EQ(pack->Compare("", "b"), -1);
  EXPECT_EQ(pack->Compare("a", ""), 1);
  EXPECT_EQ(pack->Compare("", ""), 0);
}

TEST_F(LangPack, TheWesternPacksFoldAndSortTheirLanguages) {
  for (const std::string name : {"Western", "Western-NoAccents"}) {
    SCOPED_TRACE(name);
    const std::string file =
        test::ReadHostFile(std::string(VEMRA_TEST_DATA "/../../packs/") + name + ".pack");
    Register(name, Write(name + ".pack", file));
    CollectingReader reader;
    LangPackTables tables;
    reader.Read(folder_.Path(name + ".pack"), tables);
    EXPECT_TRUE(reader.bad.empty());

    const TavoLangPack* pack = TavoLangPack::Get(name);
    ASSERT_NE(pack, nullptr);
    std::string text = "\xC9t\xE9 \x8C\xD1\x9F 1";  // Été ŒÑŸ 1
    pack->ToIndex(text);
    EXPECT_EQ(text, name == "Western" ? "\xE9t\xE9 \x9C\xF1\xFF 1" : "ete \x9Cny 1");
    for (const char c : std::string("aZ5\xE9\x8C\xDF")) EXPECT_TRUE(pack->IsAlnum(c)) << c;
    for (const char c : std::string("-_'\xA0\xD7\xF7\x80\x99")) EXPECT_FALSE(pack->IsAlnum(c)) << c;

    std::vector<std::string> words = {"z", "f", "\xE9t\xE9", "ete", "E", "e", "a", "1", "-", " "};
    std::sort(words.begin(), words.end(), [pack](const std::string& a, const std::string& b) {
      return pack->Compare(a.c_str(), b.c_str()) < 0;
    });
    EXPECT_EQ(words, (std::vector<std::string>{" ", "-", "1", "a", "e", "ete", "E", "\xE9t\xE9",
                                               "f", "z"}));
  }
}

}  // namespace
}  // namespace vemra
