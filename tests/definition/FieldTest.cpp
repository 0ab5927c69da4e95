#include "Support/definition/Field.h"

#include <gtest/gtest.h>

#include <vector>

#include "Support/foundation/INIWorker.h"
#include "tests/TempFolder.h"

namespace vemra {
namespace {

TEST(TagTest, MatchesWithoutBacktracking) {
  const struct {
    const char* pattern;
    std::vector<const char*> matching;
    std::vector<const char*> others;
  } kRows[] = {
      {"", {""}, {"<a>"}},
      {"*", {"", "<a><b>"}, {}},
      {"*<p>", {"<body><p>"}, {"<body><p><b>"}},
      {"<html>*", {"<html>", "<html><body>"}, {"<HTML>"}},
      {"a**b", {"axxb", "ab"}, {}},
      {"a*b*c", {"a1b2c"}, {"a1c2b"}},
      // The first occurrence after a star counts, even where a later one would fit.
      {"*ab", {"xab"}, {"xabab"}},
      {"*ab*", {"xabab"}, {}},
      {"ab", {"ab"}, {"a", "abc"}},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.pattern);
    for (const char* path : row.matching) EXPECT_EQ(CTavoTag(row.pattern).CheckPath(path), 1);
    for (const char* path : row.others) EXPECT_EQ(CTavoTag(row.pattern).CheckPath(path), 0);
  }
}

TEST(TagTest, IgnoringParentFieldsLooksAtTheParentWithoutItsLastByte) {
  const CTavoTag inside("*<p>*", 1);
  EXPECT_EQ(inside.IsTagOn("<body><p>"), 1);
  EXPECT_EQ(inside.IsTagOn("<body><p><b>"), 1);
  const CTavoTag itself("*<p*", 1);
  EXPECT_EQ(itself.IsTagOn("<body><p>"), 1);
  EXPECT_EQ(itself.IsTagOn("<body><p><b>"), 0);
  EXPECT_EQ(CTavoTag("*", 1).IsTagOn("<a>"), 0);
  EXPECT_EQ(CTavoTag("*", 1).IsTagOn("no element"), 1);
  EXPECT_EQ(CTavoTag("<a>", 1).IsTagOn("<b>"), 0);
}

TEST(FieldTest, ReadsRulesAndLists) {
  using Rows = std::vector<std::pair<const char*, const char*>>;
  CTavoField field;
  for (const auto& [rules, written] :
       Rows{{"NOINDEX , WILDCARD,Foo", "WILDCARD,NOINDEX"},
            {"wildcard,Wildcard,ID", "ID"},
            {", ,", ""},
            {"IndexOnce Status,Hidden EXPRESSIONS DICTIONARY NOINDEX NOTEXT AddToGeneral DATE ID "
             "Link Entry TAG ATTRIBUTE BREAKWORDS NUMFIELD PROXIMITY AltSort WILDCARD",
             "WILDCARD,AltSort,PROXIMITY,NUMFIELD,BREAKWORDS,ATTRIBUTE,TAG,Entry,Link,ID,DATE,"
             "AddToGeneral,NOTEXT,NOINDEX,DICTIONARY,EXPRESSIONS,Hidden,Status,IndexOnce"}}) {
    field.ReadFieldRule(rules);
    EXPECT_EQ(field.WriteFieldRule(), written);
  }
  for (const auto& [list, written] : Rows{{"3, 200, x, 7", "3,7"},
                                          {"124,125,-1,0", "0,124"},
                                          {"", ""},
                                          {"7x,+5,\t6,+-4", "5,6,7"},
                                          {"99999999999,1 , ,2,1", "1,2"}}) {
    field.ReadFieldList(list);
    EXPECT_EQ(field.WriteFieldList(), written) << list;
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
