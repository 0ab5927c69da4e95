#include "programs/formats/PathFields.h"

#include <gtest/gtest.h>

#include <random>

#include "Support/definition/FileINI.h"
#include "tests/programs/formats/Recording.h"

namespace vemra {
namespace {

// Far more paths than are remembered at a time, reached by opening, closing and crossing tags, some
// of unknown elements; the definitions change now and then.
TEST(PathFields, AreThoseOfTheDefinitions) {
  const std::string names[] = {"div", "p", "a", "title", "b", "i", "td", "table", "x-one", "x-two"};
  std::mt19937 random(11);
  test::PageWrapper wrapper;
  CTavoFileINI& definitions = wrapper.GetFileINI();
  ElementPath path;
  PathFields known(definitions);
  for (int step = 0; step < 20000; ++step) {
    const std::string& name = names[random() % std::size(names)];
    const HtmlElement& element = FindHtmlElement(name, HashName(name));
    if (random() % 2 == 0) {
      path.EndImplied(element);
      path.Open(element, name, HashName(name));
    } else {
      path.Close(element, HashName(name));
    }
    if (step % 1000 == 499) definitions.GetField(4)->AddTag(0, "*<" + name + ">");
    if (step % 1000 == 999) definitions.SetCurrentFTD(1 - definitions.GetCurrentFTD());
    CTavoFieldList expected;
    definitions.CheckFields(expected, path.GetText());
    if (expected.IsEmpty()) expected.Set(0);
    ASSERT_EQ(known.Find(path), expected) << path.GetText();
  }
}

}  // namespace
}  // namespace vemra
