#include "Support/text/Entity.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace vemra {
namespace {

TEST(Entity, KnowsNamesAndNumbers) {
  const std::pair<std::string, std::string> rows[] = {
      {"amp", "&"},    {"nbsp", " "},    {"apos", "'"},    {"eacute", "233"},    {"iexcl", "161"},
      {"yuml", "255"}, {"times", "215"}, {"AElig", "198"}, {"aelig", "230"},     {"#x41", "A"},
      {"#65", "A"},    {"#xe9", "\xE9"}, {"#xE9", "\xE9"}, {"#233", "\xE9"},     {"#321", "A"},
      {"#0", ""},      {"#256", ""},     {"#", ""},        {"#x", ""},           {"#X41", ""},
      {"#6a", ""},     {"#x4g", ""},     {"#-65", ""},     {"#4294967361", "A"}, {"AMP", ""},
      {"", ""},        {"eacut", ""},    {"# 65", ""},
  };
  const CTavoEntity entity;
  for (const auto& [name, meaning] : rows) {
    SCOPED_TRACE(name);
    EXPECT_EQ(entity.IsEntity(name), meaning);
  }
}

TEST(Entity, TranslatesOneCharacter) {
  const std::pair<char, const char*> rows[] = {{'<', "&lt;"},   {'a', "&#97;"},
                                               {' ', "&nbsp;"}, {'\xE9', "&#-23;"},
                                               {'\0', "&#0;"},  {'\'', "&apos;"}};
  const CTavoEntity entity;
  for (const auto& [character, text] : rows) EXPECT_EQ(entity.TranslateEntity(character), text);
}

TEST(Entity, TranslatesWholeTexts) {
  struct Row {
    std::string text, named, numbered;
  };
  const Row rows[] = {
      {"", "", ""},
      {"plain\xE9", "plain\xE9", "plain\xE9"},
      {"\"", "&quot;", "&#34;"},
      {"\"&", "&amp;quot;&amp;", "&#38;#34;&#38;"},
      {"<a b='c'>", "&lt;a&nbsp;b=&apos;c&apos;&gt;", "&#60;a&#32;b=&#39;c&#39;&#62;"},
      {"&amp;", "&amp;amp;", "&#38;amp;"},
      {std::string("\0<\0", 3), std::string("\0&lt;\0", 6), std::string("\0&#60;\0", 7)},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.text);
    CTavoEntity entity;
    std::string named = row.text;
    entity.TranslateAllEntities(named);
    EXPECT_EQ(named, row.named);
    std::string numbered = row.text;
    entity.TranslateAllEscEntities(numbered);
    EXPECT_EQ(numbered, row.numbered);
  }
}

}  // namespace
}  // namespace vemra
