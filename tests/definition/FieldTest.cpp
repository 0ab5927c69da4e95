#include "Support/definition/Field.h"

#include <gtest/gtest.h>

#include "Support/foundation/INIWorker.h"
#include "tests/TempFolder.h"

namespace vemra {
namespace {

TEST(TagTest, MatchesWithoutBacktracking) {
  const struct {
    const char* pattern;
    const char* path;
    int matches;
  } kRows[] = {
      {"", "", 1},
      {"", "<a>", 0},
      {"*", "", 1},
      {"*<p>", "<body><p>", 1},
      {"*<p>", "<body><p><b>", 0},
      {"<html>*", "<html>", 1},
      {"<html>*", "<HTML>", 0},
      {"a**b", "axxb", 1},
      {"a**b", "ab", 1},
      {"a*b*c", "a1b2c", 1},
      {"a*b*c", "a1c2b", 0},
      // The first occurrence after a star counts, even where a later one would fit.
      {"*ab", "xabab", 0},
      {"*ab", "xab", 1},
      {"*ab*", "xabab", 1},
      {"abc", "ab", 0},
      {"ab", "abc", 0},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(std::string(row.pattern) + " on " + row.path);
    EXPECT_EQ(CTavoTag(row.pattern).CheckPath(row.path), row.matches);
  }
}

TEST(TagTest, IgnoringParentFieldsLooksAtTheParentWithoutItsLastByte) {
  const struct {
    const char* pattern;
    const char* path;
    int on;
  } kRows[] = {
      {"*<p>*", "<body><p>", 1}, {"*<p>*", "<body><p><b>", 1},
      {"*<p*", "<body><p>", 1},  {"*<p*", "<body><p><b>", 0},
      {"*", "<a>", 0},           {"*", "no element", 1},
      {"<a>", "<b>", 0},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(std::string(row.pattern) + " on " + row.path);
    EXPECT_EQ(CTavoTag(row.pattern, 1).IsTagOn(row.path), row.on);
  }
}

TEST(FieldTest, ReadsRulesAndLists) {
  const struct {
    const char* rules;
    const char* written;
  } kRules[] = {
      {"NOINDEX , WILDCARD,Foo", "WILDCARD,NOINDEX"},
      {"wildcard,Wildcard,ID", "ID"},
      {", ,", ""},
      {"IndexOnce Status,Hidden EXPRESSIONS DICTIONARY NOINDEX NOTEXT AddToGeneral DATE ID Link "
       "Entry TAG ATTRIBUTE BREAKWORDS NUMFIELD PROXIMITY AltSort WILDCARD",
       "WILDCARD,AltSort,PROXIMITY,NUMFIELD,BREAKWORDS,ATTRIBUTE,TAG,Entry,Link,ID,DATE,"
       "AddToGeneral,NOTEXT,NOINDEX,DICTIONARY,EXPRESSIONS,Hidden,Status,IndexOnce"},
  };
  CTavoField field;
  for (const auto& row : kRules) {
    field.ReadFieldRule(row.rules);
    EXPECT_EQ(field.WriteFieldRule(), row.written);
  }
  const struct {
    const char* list;
    const char* written;
  } kLists[] = {
      {"3, 200, x, 7", "3,7"},    {"124,125,-1,0", "0,124"},       {"", ""},
      {"7x,+5,\t6,+-4", "5,6,7"}, {"99999999999,1 , ,2,1", "1,2"},
  };
  for (const auto& row : kLists) {
    field.ReadFieldList(row.list);
    EXPECT_EQ(field.WriteFieldList(), row.written) << row.list;
  }
}

TEST(FieldTest, KeepsDefinitionsByFileType) {
  CTavoField field;
  EXPECT_EQ(field.AddTag(0, "zero"), 1);
  EXPECT_EQ(field.AddTag(2, "two", 1, 1), 1);
  EXPECT_EQ(field.AddAttribute(1, "*<meta>", "name", 1), 1);
  EXPECT_EQ(field.InsertTagAt(2, 2, "beyond"), 0);
  EXPECT_EQ(field.InsertTagAt(2, 0, "first"), 1);
  EXPECT_EQ(field.AddTag(-1, "x"), 0);
  EXPECT_EQ(field.GetTag(2, 1), "two");
  EXPECT_EQ(field.IfIgnoreParentFields(2, 1), 1);
  EXPECT_EQ(field.IfAddToTagField(2, 7), 0);
  EXPECT_EQ(field.IsFieldOn(1, "<head><meta>", "name"), 1);
  EXPECT_EQ(field.IsFieldOn(1, "<head><meta>", "Name"), 0);
  EXPECT_EQ(field.IsFieldOn(1, "<head><meta>"), 0);
  EXPECT_EQ(field.IsFieldOn(9, "<head><meta>"), 0);

  field.DeleteFTD(1);
  EXPECT_EQ(field.GetTag(1, 1), "two") << "higher file types move down";
  EXPECT_EQ(field.GetNumberOfAttributes(1), 0);
  field.DeleteTagsAndAttrs(0);
  EXPECT_EQ(field.GetNumberOfTags(0), 0);
  EXPECT_EQ(field.GetNumberOfTags(1), 2);
  EXPECT_EQ(CTavoField(field).GetNumberOfTags(1), 0) << "a copy has no definitions";
}

TEST(FieldTest, ReadsItsDefinitions) {
  CTavoField field;
  field.SetFieldno(1);
  test::TempFolder folder;
  test::WriteHostFile(folder.Host() / "html.ftd",
                      test::ReadHostFile(VEMRA_TEST_DATA "/definition/html.ftd"));
  INIWorker reader(folder.Path("html.ftd"));
  ASSERT_EQ(field.LoadFTD(reader, 1), 1);
  EXPECT_EQ(field.GetNumberOfTags(1), 2);
  EXPECT_EQ(field.GetTag(1, 1), "<html>*<h1>*");
  EXPECT_EQ(field.IfIgnoreParentFields(1, 1), 1);
  EXPECT_EQ(field.IfAddToTagField(1, 0), 1);
  EXPECT_EQ(field.IfAddToAttributeField(1, 0), 1);
  field.SetFieldno(8);
  EXPECT_EQ(field.LoadFTD(reader, 1), 0) << "no section, no definitions";
}

}  // namespace
}  // namespace vemra
