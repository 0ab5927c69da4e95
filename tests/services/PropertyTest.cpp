#include "Support/services/Property.h"

#include <gtest/gtest.h>

#include "Support/services/PropertyArray.h"
#include "Support/services/PropertyHolder.h"

namespace vemra {
namespace {

using Texts = std::vector<std::string>;

TavoProperty OfType(PropertyType type) {
  TavoProperty property("p", 7, Texts{"one", "two", "One"}, 0, 0, 0);
  property.SetType(type);
  property.SetValue(7, "before");
  return property;
}

TEST(PropertyTest, ReadsTextForms) {
  const struct {
    PropertyType type;
    const char* text;
    int result;
    int number;
    const char* held;
    const char* shown;
  } kRows[] = {
      {PropInteger, "-12", 1, -12, "before", "-12"},
      {PropInteger, "12x", 1, 12, "before", "12"},
      {PropInteger, "x", 1, 0, "before", "0"},
      {PropInteger, "99999999999", 1, 2147483647, "before", "2147483647"},
      {PropWebAction, "Search", 0, 7, "before", "Web Action"},
      {PropString, "", 1, 7, "", ""},
      {PropText, "a\nb", 1, 7, "a\nb", "a\nb"},
      {PropFile, "c:\\x", 1, 7, "c:\\x", "c:\\x"},
      {PropFont, "Times New 12", 1, 12, "Times New", "Times New 12"},
      {PropFont, "Courier", 0, 10, "Courier", "Courier 10"},
      {PropFont, "Courier ", 1, 0, "Courier", "Courier 0"},
      {PropTextComma, "a,5,6", 1, 5, "a", "a 5"},
      {PropTextComma, "a 5", 0, 10, "a 5", "a 5 10"},
      {PropYesNo, "Yes", 1, 1, "before", "Yes"},
      {PropYesNo, "No", 1, 0, "before", "No"},
      {PropYesNo, "yes", 0, 7, "before", "No"},
      {PropColor, "(1,2,3)", 1, 1 + 2 * 256 + 3 * 65536, "before", "(1,2,3)"},
      {PropColor, "( 255, 0, 255 and more", 1, 0xFF00FF, "before", "(255,0,255)"},
      {PropColor, "(256,0,0)", 0, 7, "before", "(7,0,0)"},
      {PropColor, "(0,0,-1)", 0, 7, "before", "(7,0,0)"},
      {PropColor, "(4294967297,2,3)", 0, 7, "before", "(7,0,0)"},
      {PropColor, "(1,2)", 0, 7, "before", "(7,0,0)"},
      {PropColor, "1,2,3", 0, 7, "before", "(7,0,0)"},
      {PropColor, "", 0, 7, "before", "(7,0,0)"},
      {PropChoice, "One", 0, 2, "before", "One"},
      {PropChoice, "none of them", 0, 7, "before", ""},
      {PropScriptTable, "{a}", 0, 7, "before", ""},
      {PropUndefined, "a", 0, 7, "before", ""},
      {static_cast<PropertyType>(14), "a", 0, 7, "before", ""},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(std::to_string(row.type) + " <" + row.text + ">");
    TavoProperty property = OfType(row.type);
    EXPECT_EQ(property.SetStringValue(row.text), row.result);
    EXPECT_EQ(property.GetNumValue(), row.number);
    EXPECT_EQ(property.GetStringValue(), row.shown);
    property.SetType(PropString);
    EXPECT_EQ(property.GetStringValue(), row.held);
    EXPECT_EQ(property.GetValuesNumber(), 3);
  }
}

TEST(PropertyTest, ReadsLists) {
  const struct {
    const char* text;
    int result;
    Texts items;
  } kRows[] = {
      {"{a}{b}", 1, {"a", "b"}},
      {"{a}{b", 0, {"a"}},
      {"{", 0, {}},
      {"", 1, {}},
      {"no brace {a}", 1, {}},
      {"{}{{a}}{b}", 1, {"", "{a"}},
      {"{a} {b}", 1, {"a"}},
      {"{x,y}{\xE9}", 1, {"x,y", "\xE9"}},
  };
  for (const auto& row : kRows) {
    for (const PropertyType type : {PropList, PropScript}) {
      SCOPED_TRACE(row.text);
      TavoProperty property = OfType(type);
      EXPECT_EQ(property.SetStringValue(row.text), row.result);
      EXPECT_EQ(property.GetValues(), row.items);
      EXPECT_EQ(property.GetStringValue(), type == PropList ? "" : "<Script>");
    }
  }
}

TEST(PropertyTest, ConstructorsSetTheKind) {
  const TavoProperty file("f", "c:\\a.txt", "*.txt", 5, 3, 2, 1);
  EXPECT_EQ(file.GetType(), PropFile);
  EXPECT_EQ(file.GetNumValue(), 1);
  EXPECT_EQ(file.GetFileFilter(), "*.txt");
  EXPECT_EQ(file.GetOrder(), 3U);
  EXPECT_EQ(file.GetGroup(), 2U);
  EXPECT_EQ(file.IsLocked(), 1);
  EXPECT_EQ(TavoProperty("y", 2, 0U, 0U, 0).GetNumValue(), 0);
  EXPECT_EQ(TavoProperty("y", 1, 0U, 0U, 0).GetStringValue(), "Yes");
  EXPECT_EQ(TavoProperty("c", 0xFF030201U, 0U, 0U, 0).GetStringValue(), "(1,2,3)");
  const TavoProperty number("n", 4, 1, 9, 0, 0, 0);
  EXPECT_EQ(number.GetType(), PropInteger);
  EXPECT_EQ(number.GetMaxValue(), 9);
  EXPECT_EQ(TavoProperty("w", CWebAction(CWebAction::SEARCH), 4).GetMinValue(), -1);
  EXPECT_EQ(TavoProperty("p", "", PropString, 0, 0, 0).GetStringValueNoEmpty(), " ");
  EXPECT_EQ(TavoProperty("p", "x", PropString, 0, 0, 0).GetStringValueNoEmpty(), "x");
}

TEST(PropertyTest, CopiesEveryValueAndNothingElse) {
  const Texts list{"a"};
  const ScriptTable table{{"r", "1"}, {}};
  const int number = -3;
  const CWebAction action(CWebAction::SEARCH);
  TavoProperty from("from", 3, "text", PropUndefined, 1, 2, 1);
  EXPECT_EQ(from.GetValue(), nullptr);
  from.SetValue(&number);  // nothing of that type
  EXPECT_EQ(from.GetNumValue(), 3);
  from.SetTypeValue(PropScript, &list);
  from.SetTypeValue(PropScriptTable, &table);
  from.SetTypeValue(PropWebAction, &action);
  from.SetTypeValue(PropChoice, &number);
  EXPECT_EQ(*static_cast<int*>(from.GetValue()), number);

  TavoProperty to("to", "old", PropString, 8, 9, 0);
  to.CopyValue(from);
  EXPECT_EQ(to.GetNumValue(), number);
  EXPECT_EQ(to.GetStringValue(), "text");
  EXPECT_EQ(to.GetValues(), list);
  EXPECT_EQ(to.GetScripts(), table);
  EXPECT_TRUE(to.GetWebActionValue().IsSearchAction());
  EXPECT_EQ(to.GetType(), PropString);
  EXPECT_EQ(to.GetName() + std::to_string(to.GetOrder()) + std::to_string(to.GetGroup()), "to89");
  EXPECT_EQ(to.IsLocked(), 0);
  to.PutScripts({});
  EXPECT_TRUE(to.GetScripts().empty());
}

TavoProperty Keyed(const char* name, std::uint32_t group, std::uint32_t order) {
  return {name, std::string("t"), PropString, order, group, 0};
}

std::string Names(const TavoPropertyArray& array) {
  std::string names;
  for (int i = 0; i < array.GetSize(); ++i) names += array.GetAt(i)->GetName();
  return names;
}

TEST(PropertyArrayTest, KeepsTwoOrders) {
  TavoPropertyArray array;
  EXPECT_EQ(array.Add(Keyed("a", 2, 5)), 1);
  EXPECT_EQ(array.Add(Keyed("b", 1, 9)), 1);
  EXPECT_EQ(array.Add(Keyed("c", 2, 1)), 1);
  EXPECT_EQ(array.Add(Keyed("d", 2, 5)), 0);
  EXPECT_EQ(array.Add(Keyed("e", 1, 3)), 1);
  EXPECT_EQ(Names(array), "ebca");
  EXPECT_EQ(array.GetByName("d"), nullptr);
  EXPECT_EQ(array.GetAt(5U)->GetName(), "a");
  EXPECT_EQ(array.GetAt(2U, 1U)->GetName(), "c");
  EXPECT_EQ(array.GetAt(2U, 1)->GetName(), "a");
  EXPECT_EQ(array.GetAt(1U, 2), nullptr);
  EXPECT_EQ(array.GetAt(4), nullptr);
  EXPECT_EQ(array.GetAt(-1), nullptr);

  const TavoPropertyArray copy(array);
  EXPECT_EQ(array.Remove(Keyed("", 2, 5)), 1);
  EXPECT_EQ(array.Remove(Keyed("", 2, 5)), 0);
  EXPECT_EQ(array.GetAt(5U)->GetName(), "d") << "the refused one is in the order list only";
  EXPECT_EQ(Names(array), "ebc");
  EXPECT_EQ(TavoPropertyArray(array).GetSize(), 3) << "copying does not let it in";
  EXPECT_EQ(Names(copy), "ebca");
}

TEST(PropertyArrayTest, ReplacesInPlaceAndGoesBroad) {
  TavoPropertyArray array;
  array.Add(Keyed("a", 1, 2));
  array.Add(Keyed("b", 2, 1));
  EXPECT_EQ(array.Replace(Keyed("A", 1, 2)), 1);
  EXPECT_EQ(array.Replace(Keyed("x", 3, 2)), 0);
  EXPECT_EQ(Names(array), "Ab");
  array.SetBroadType(7);
  EXPECT_EQ(Names(array), "bA");
  EXPECT_EQ(array.Add(Keyed("c", 9, 2)), 0);
  EXPECT_EQ(array.GetAt(7U, 2U)->GetName(), "A");

  array.SetID(std::make_unique<TavoProperty>(Keyed("id", 0, 0)));
  TavoPropertyArray copy;
  copy = array;
  ASSERT_NE(copy.GetID(), nullptr);
  EXPECT_NE(copy.GetID(), array.GetID());
  EXPECT_EQ(copy.GetID()->GetName(), "id");
  EXPECT_EQ(copy.Add(Keyed("d", 9, 8)), 1);
  EXPECT_NE(copy.GetAt(7U, 8U), nullptr) << "a copy is broad, too";
}

TEST(PropertyHolderTest, AssigningCopiesTheArray) {
  TavoPropertyHolder one;
  TavoPropertyHolder other;
  one.GetProperties().Add(Keyed("a", 0, 0));
  other = one;
  one.Initialize();
  EXPECT_EQ(one.GetProperties().GetSize(), 0);
  EXPECT_EQ(Names(other.GetProperties()), "a");
  EXPECT_EQ(other.OnPropertyChange(TavoProperty()), 1);
}

TEST(WebActionTest, ComparesActionAndTargetWithoutCase) {
  const CWebAction action(CWebAction::OPEN_URL, "Page.htm", 10, 20, "main");
  EXPECT_EQ(action, CWebAction("open url", "PAGE.HTM", 10, 20, "main"));
  EXPECT_FALSE(CWebAction("open url").IsOpenUrlAction());
  EXPECT_NE(action, CWebAction("Open URL", "Page.htm", 10, 20, "Main"));
  EXPECT_NE(action, CWebAction("Open URL", "Page.htm", 10, 21, "main"));
  EXPECT_NE(action, CWebAction("Open URL", "Page.html", 10, 20, "main"));
}

}  // namespace
}  // namespace vemra
