#include "Support/definition/FileINI.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <random>

#include "Support/definition/FieldPathCache.h"
#include "Support/text/Section.h"
#include "tests/TempFolder.h"

namespace vemra {
namespace {

using ::testing::ElementsAre;

CTavoField* Add(CTavoFileINI& definitions, const char* name, int fieldno, const char* rules = "") {
  auto field = std::make_unique<CTavoField>();
  field->SetName(name);
  field->SetTitle(name);
  field->SetFieldno(fieldno);
  field->ReadFieldRule(rules);
  return definitions.AddField(std::move(field));
}

class FileINITest : public ::testing::Test {
 protected:
  void Load(const std::string& text) {
    test::WriteHostFile(folder_.Host() / "db.ini", text);
    ASSERT_EQ(definitions_.Load(folder_.Path("db.ini").c_str()), 1);
  }
  CTavoField* Special(SpecialField slot) const { return definitions_.GetSpecialField(slot); }

  test::TempFolder folder_;
  CTavoFileINI definitions_;
};

TEST_F(FileINITest, ReadsTheGoldenFile) {
  Load(test::ReadHostFile(VEMRA_TEST_DATA "/definition/fields.ini"));
  EXPECT_EQ(definitions_.GetNumOfFields(), 5);
  EXPECT_EQ(definitions_.GetHighestFieldno(), 124);
  EXPECT_EQ(definitions_.GetField("Author"), definitions_.GetField(2));
  EXPECT_EQ(definitions_.GetField("author"), nullptr);
  EXPECT_EQ(definitions_.GetField(1)->GetTitle(), "Title of the text");
  EXPECT_EQ(definitions_.GetField(2)->GetTitle(), "Author") << "the name by default";
  EXPECT_EQ(definitions_.GetField(2)->GetParentField(), 1);
  EXPECT_EQ(definitions_.GetNumOfAltSortFields(), 1);
  EXPECT_EQ(definitions_.GetStatusPicture(0), "new.gif");
  EXPECT_EQ(definitions_.GetTitleItem(0)->GetShare(), 40);
  EXPECT_EQ(definitions_.GetTitleItem(1)->GetShare(), 60) << "the elastic item";
}

TEST_F(FileINITest, KeepsTextsThatReadingWouldCut) {
  for (const char* text : {" - ", "'x'", "\"", "\"x\"", "\t", "a \"b\"", "\"\"", "x;y=z]"}) {
    SCOPED_TRACE(text);
    definitions_.Reset();
    Add(definitions_, text, 7, "Status")->AddTag(0, text);
    definitions_.SetSeparator(text);
    definitions_.AddTitleItem(std::make_unique<TavoTitleItem>(7, 0, text));
    definitions_.AddStatus(text, text, text);
    const std::string path = folder_.Path("db.ini");
    ASSERT_EQ(definitions_.Save(path.c_str()), 1);
    ASSERT_EQ(definitions_.SaveFTD(0, folder_.Path("db.ftd")), 1);
    const std::string bytes = test::ReadHostFile(folder_.Host() / "db.ini");
    ASSERT_EQ(definitions_.Load(path.c_str()), 1);
    ASSERT_NE(definitions_.GetField(text), nullptr);
    EXPECT_EQ(definitions_.GetTitleItem(0)->GetSeparator(), text);
    EXPECT_EQ(definitions_.GetStatusByString(text), 0);
    EXPECT_EQ(definitions_.ReadFTD(0, folder_.Path("db.ftd"), 1), 1);
    EXPECT_EQ(definitions_.GetField(7)->GetTag(0, 0), text);
    ASSERT_EQ(definitions_.Save(path.c_str()), 1);
    EXPECT_EQ(test::ReadHostFile(folder_.Host() / "db.ini"), bytes);
  }
}

TEST_F(FileINITest, LoadTakesDefaults) {
  Load("");
  EXPECT_EQ(definitions_.GetMaxTitleLength(), 256);
  EXPECT_EQ(definitions_.GetSeparator(), "@");
  EXPECT_EQ(definitions_.GetStartPosition(), 0U);
  EXPECT_EQ(definitions_.GetField("x"), nullptr);

  Load(
      "[FIELD3]\nNAME=\n[FIELD4]\nNAME=a\nTITLE=\n[Titles]\nMax. Length=0\nSeparator=\n"
      "Items=4\n[Title Item 1]\nField=4\nMax. Length=40\n[Title Item 2]\nField=4\n"
      "[Title Item 3]\nField=4\nMax. Length=0\n[Title Item 4]\nField=4\nMax. Length=0\n"
      "[Status]\nNumber=1\n[Status 0]\nName=unread\n");
  EXPECT_FALSE(definitions_.FieldExists(3)) << "an empty name is a missing one";
  EXPECT_EQ(definitions_.GetField(4)->GetTitle(), "");
  EXPECT_EQ(definitions_.GetField(4)->GetCharset(), 0x04090409U);
  EXPECT_EQ(definitions_.GetMaxTitleLength(), 256);
  EXPECT_EQ(definitions_.GetNumOfTitleItems(), 2) << "one without a length, one elastic too many";
  EXPECT_EQ(definitions_.GetStatusesNumber(), 0) << "no status field";

  Load("[FIELD4]\nNAME=a\nFIELDRULES=Status\n[Status]\nNumber=2\n[Status 0]\nName=read\n");
  EXPECT_EQ(definitions_.GetStatusesNumber(), 2);
  EXPECT_EQ(definitions_.GetStatusByString(""), 1) << "a loaded one is found by no text too";
  EXPECT_EQ(definitions_.GetStatusByName("read"), 0);
}

TEST_F(FileINITest, RolesGoToTheLastComer) {
  Load(
      "[FIELD0]\nNAME=x\n[FIELD2]\nNAME=a\nFIELDRULES=ATTRIBUTE\n[FIELD5]\nNAME=b\n"
      "FIELDRULES=ATTRIBUTE\n[FIELD7]\nNAME=t\nFIELDRULES=ID,TAG\n");
  EXPECT_TRUE(definitions_.IsGeneralField(definitions_.GetField(0)));
  EXPECT_EQ(Special(SpecialField::kTag)->GetFieldno(), 7) << "TAG comes before ID";
  EXPECT_EQ(Special(SpecialField::kId), nullptr);
  EXPECT_EQ(definitions_.GetFieldRule(7), fieldrule::kTag | fieldrule::kId);
  EXPECT_EQ(Special(SpecialField::kAttribute)->GetFieldno(), 5);
  EXPECT_EQ(definitions_.GetFieldRule(2), 0U);

  definitions_.SetLinkField(definitions_.GetField(5));
  EXPECT_EQ(definitions_.RemoveField(5), 1);
  EXPECT_EQ(Special(SpecialField::kAttribute), nullptr);
  EXPECT_EQ(Special(SpecialField::kLink), nullptr);
}

TEST_F(FileINITest, ALostRoleOrFieldLeavesTheTitle) {
  CTavoField* link = Add(definitions_, "a", 1, "Link");
  Add(definitions_, "b", 2);
  for (const int fieldno : {1, 2, 1}) {
    definitions_.AddTitleItem(std::make_unique<TavoTitleItem>(fieldno, 10));
  }
  definitions_.SetLinkField(definitions_.GetField(2));
  EXPECT_FALSE(link->HasFieldRule(fieldrule::kLink));
  EXPECT_EQ(definitions_.GetTitlePos(1), 1) << "its first item is gone";
  EXPECT_EQ(definitions_.RemoveField(2), 1);
  EXPECT_EQ(definitions_.GetTitlePos(2), -1);
  EXPECT_EQ(definitions_.GetNumOfTitleItems(), 1);
}

TEST_F(FileINITest, HandsOutFreeNumbers) {
  for (int expected = 1; expected < kMaxFields; ++expected) {
    ASSERT_EQ(Add(definitions_, "f", -1)->GetFieldno(), expected);
  }
  EXPECT_EQ(Add(definitions_, "f", -1), nullptr) << "number 0 is not handed out";
  EXPECT_FALSE(definitions_.CanAddField());
  EXPECT_EQ(Add(definitions_, "f", 5), nullptr);
  EXPECT_EQ(Add(definitions_, "f", 125), nullptr);
  EXPECT_EQ(definitions_.RemoveField(9), 1);
  EXPECT_EQ(definitions_.RemoveField(5), 1);
  EXPECT_EQ(definitions_.RemoveField(5), 0);
  EXPECT_EQ(definitions_.FindNextFreeFieldno(), 5);
  Add(definitions_, "f", -1);
  EXPECT_EQ(definitions_.FindNextFreeFieldno(), 9);
}

TEST_F(FileINITest, SaveMovesTheGeneralFieldToNumberZero) {
  CTavoField* plain = Add(definitions_, "plain", 3, "AltSort");
  CTavoField* general = Add(definitions_, "general", 6);
  definitions_.SetGeneralField(general);
  definitions_.AddTitleItem(std::make_unique<TavoTitleItem>(3, 10));
  ASSERT_EQ(definitions_.Save(folder_.Path("a.ini").c_str()), 1);
  EXPECT_EQ(general->GetFieldno(), 0);
  EXPECT_EQ(definitions_.FindNextFreeFieldno(), 1);

  definitions_.ChangeFieldno(plain, 0);
  EXPECT_EQ(general->GetFieldno(), 3) << "the two swap";
  EXPECT_EQ(definitions_.GetField(0), plain);
  EXPECT_EQ(definitions_.HasAltSort(0), 1);
  EXPECT_EQ(definitions_.HasAltSort(3), 0);
  ASSERT_EQ(definitions_.Save(folder_.Path("b.ini").c_str()), 1);
  EXPECT_EQ(test::ReadHostFile(folder_.Host() / "a.ini"),
            test::ReadHostFile(folder_.Host() / "b.ini"));
  EXPECT_EQ(definitions_.Save(folder_.Path("missing\\b.ini").c_str()), 1);
  definitions_.SetStatusField(plain);
  EXPECT_EQ(definitions_.Save(folder_.Path("missing\\b.ini").c_str()), 0) << "its statuses";
  definitions_.ChangeFieldno(plain, 99);
  EXPECT_EQ(definitions_.GetHighestFieldno(), 6) << "nothing was added above";
  definitions_.SetGeneralField(nullptr);
  ASSERT_EQ(definitions_.Save(folder_.Path("a.ini").c_str()), 1);
  EXPECT_FALSE(definitions_.FieldExists(0)) << "it is the general field's";
}

TEST_F(FileINITest, LooksUpTheFieldsOfAPathAsTheyAreNow) {
  std::mt19937 random(4);
  const auto randomText = [&](const char* letters, unsigned length) {
    std::string text;
    for (unsigned i = random() % length; i > 0; --i) text += letters[random() % 4];
    return text;
  };
  for (int fieldno = 1; fieldno < 20; ++fieldno) Add(definitions_, "f", fieldno);
  for (int round = 0; round < 5000; ++round) {
    const auto fieldno = static_cast<int>(random() % 20);
    CTavoField* field = definitions_.GetField(fieldno);
    const auto fileType = static_cast<int>(random() % 3);
    const std::function<void()> kChanges[] = {
        [&] { Add(definitions_, "f", fieldno); },
        [&] { definitions_.RemoveField(fieldno); },
        [&] { definitions_.DeleteFileTypeInfo(fileType); },
        [&] { definitions_.SetCurrentFTD(fileType); },
        [&] { definitions_.ChangeFieldno(field, 1 + round % 19); },
        [&] { field->RemoveTag(fileType, 0); },
        [&] { field->SetTagAt(fileType, 0, randomText("<a*>", 4)); },
        [&] { field->AddTag(fileType, randomText("<a*>", 5)); },
        [&] { field->AddTag(fileType, randomText("<a*>", 5)); },
        [&] { field->AddAttribute(fileType, "*", randomText("abcd", 2)); }};
    const std::size_t change = random() % 40;  // mostly none
    if (change < (field == nullptr ? 4 : std::size(kChanges))) kChanges[change]();
    const std::string path = randomText("<a<>", 5);
    const std::string attribute = randomText("abcd", 2);
    CTavoFieldList tags;
    CTavoFieldList attributes;
    for (POSITION position = definitions_.GetStartPosition(); position != 0;) {
      const CTavoField* each = definitions_.GetNextField(position);
      const int current = definitions_.GetCurrentFTD();
      if (each->IsFieldOn(current, path) != 0) tags.Set(each->GetFieldno());
      if (each->IsFieldOn(current, path, attribute) != 0) attributes.Set(each->GetFieldno());
    }
    CTavoFieldList found;
    ASSERT_EQ(definitions_.CheckFields(found, path), tags) << round << ' ' << path;
    ASSERT_EQ(definitions_.CheckFields(found, path, attribute), attributes) << round;
  }
}

TEST(FieldPathCacheTest, IsBounded) {
  FieldPathCache cache;
  const std::string longPath(600000, 'x');
  const auto key = [](std::string_view path) { return FieldPathCache::Key{0, false, path, {}}; };
  cache.Add(key("first"), {});
  cache.Add(key(longPath), {});
  EXPECT_NE(cache.Find(key("first"), 0), nullptr);
  cache.Add(key(longPath.substr(1)), {});
  EXPECT_EQ(cache.Find(key("first"), 0), nullptr) << "too much text";
  cache.Add(key("first"), {});
  for (int i = 0; i < 4096; ++i) cache.Add(key("<" + std::to_string(i)), {});
  EXPECT_EQ(cache.Find(key("first"), 0), nullptr) << "too many paths";
  EXPECT_NE(cache.Find(key("<4095"), 0), nullptr);
}

TEST_F(FileINITest, AnswersForLists) {
  Add(definitions_, "general", 0);
  Add(definitions_, "a", 1, "WILDCARD")->ReadFieldList("2");
  Add(definitions_, "b", 2, "WILDCARD NOINDEX")->ReadFieldList("0");
  CTavoFieldList list;
  EXPECT_EQ(definitions_.IsFieldRuleSet(list, ~0U), 0) << "an empty list";
  list.Set(1);
  CTavoFieldList expanded = list;
  expanded.Set(2);
  EXPECT_EQ(definitions_.ExpandFieldList(list), expanded) << "one level only";
  list.Set(2);
  EXPECT_EQ(definitions_.IsFieldRuleSet(list, fieldrule::kWildcard), 1);
  EXPECT_EQ(definitions_.IsFieldRuleSet(list, fieldrule::kNoIndex), 0);
  EXPECT_EQ(definitions_.FindFirstField(list, fieldrule::kNoIndex), 2);
  EXPECT_EQ(definitions_.FindFirstField(list, fieldrule::kTag), -1);
}

TEST_F(FileINITest, MapsFieldNamesInQueries) {
  Add(definitions_, "Author", 2);
  Add(definitions_, "Title", 1);
  const struct {
    const char* query;
    const char* result;
    const char* errors;  // below the query
  } kRows[] = {
      {"just words", "just words", ""},
      {"", "", ""},
      {" Author :editors ; Title: a:b ;", "2:editors;1:a:b;", ""},
      {"Author: editors; Nope: x", "", "\n   fieldname Nope is invalid"},
      {"Nope: x; author: y; Title: z;", "1:z;",
       "\n   fieldname Nope is invalid\n   fieldname author is invalid"},
      {"Author: editors; loose; Title: x", "", ""},
      {"Author:", "2:;", ""},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.query);
    std::string errors = "old";
    EXPECT_EQ(definitions_.MapFieldsToFieldno(row.query, errors), row.result);
    EXPECT_EQ(errors, *row.errors == '\0' ? "" : std::string(row.query) + row.errors);
  }
}

TEST_F(FileINITest, ComposesTitles) {
  definitions_.AddTitleItem(std::make_unique<TavoTitleItem>(1, 12, "/"));
  definitions_.AddTitleItem(std::make_unique<TavoTitleItem>(2, 0, " "));
  definitions_.AddTitleItem(std::make_unique<TavoTitleItem>(3, 5, "", true));
  definitions_.SetMaxTitleLength(30);
  const auto add = [&](int fieldno, const char* text) {
    TavoSection section(nullptr, text);
    definitions_.AddToTitle(fieldno, &section);
  };
  EXPECT_EQ(definitions_.MakeTitle(), "@@");
  add(1, "one  two");
  add(1, "   ");
  add(1, "x");
  add(1, "yz");
  add(2, "elastic text that is too long for it");
  add(3, "abc");
  add(3, "def");
  add(9, "no such item");
  EXPECT_EQ(definitions_.MakeTitle(), "one two//x/y@elastic text @abc") << "30 - 2 - 15 = 13 left";
  definitions_.ClearTitles();
  add(3, "abcdefgh");
  EXPECT_EQ(definitions_.MakeTitle(), "@@abcde");
}

TEST_F(FileINITest, SplitsTitles) {
  for (const int length : {3, 0, 0, 0}) {
    definitions_.AddTitleItem(std::make_unique<TavoTitleItem>(1, length));
  }
  std::vector<std::string> parts;
  EXPECT_EQ(definitions_.SplitTitle("", parts), 1);
  EXPECT_THAT(parts, ElementsAre("", "", ""));
  EXPECT_EQ(definitions_.SplitTitle("a@b@c@d@e", parts), 1);
  EXPECT_THAT(parts, ElementsAre("a", "b", "c", "d@e"));
  EXPECT_EQ(definitions_.SplitTitle("long@b", parts), 0);
  definitions_.SetSeparator("");
  EXPECT_EQ(definitions_.SplitTitle("a@b", parts), 0);
}

TEST_F(FileINITest, EditsStatusesWithTheirMaps) {
  definitions_.AddStatus("New", "n", "n.gif");
  definitions_.AddStatus("Read", "r", "");
  definitions_.AddStatus("", "", "");
  EXPECT_EQ(definitions_.GetStatusByString(""), -1);
  definitions_.ReplaceStatuses(0, 1);
  EXPECT_EQ(definitions_.GetStatusByString("r"), 0);
  EXPECT_EQ(definitions_.GetStatusName(1), "New");
  definitions_.SetStatus(0, "Done", "d", "d.gif");
  EXPECT_EQ(definitions_.GetStatusByString("r"), -1);
  EXPECT_EQ(definitions_.GetStatusByString("d"), 0);
  EXPECT_EQ(definitions_.GetStatusString(0), "r") << "the new texts go to the end";
  EXPECT_EQ(definitions_.GetStatusString(3), "d");
  EXPECT_EQ(definitions_.GetStatusesNumber(), 3);
  definitions_.RemoveStatus(0);
  EXPECT_EQ(definitions_.GetStatusName(0), "New");
  EXPECT_EQ(definitions_.GetStatusByString("n"), 1) << "the maps stay";
}

}  // namespace
}  // namespace vemra
