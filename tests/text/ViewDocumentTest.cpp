#include "Support/text/ViewDocument.h"

#include <gtest/gtest.h>

#include <random>

namespace vemra {
namespace {

// "a|b|" for each paragraph, "^" behind one that ends its page.
std::string Paragraphs(const TavoViewDocument& document) {
  std::string all;
  for (int i = 0; i < document.GetParagraphsNumber(); ++i) {
    all.append(document.GetText(document.GetParagraph(i)));
    all += document.EndsPage(i) ? "^|" : "|";
  }
  return all;
}

TEST(ViewDocumentTest, CutsParagraphs) {
  const struct {
    const char* text;
    const char* paragraphs;
  } kRows[] = {
      {"", ""},
      {"a", "a|"},
      {"a\n", "a|"},
      {"\n", "|"},
      {"a\n\nb", "a||b|"},
      {"a\r\nb\rc\n\rd", "a|b|c||d|"},
      {"\r\r\n\n", "|||"},
      {"a\fb\n\fc\f", "a^|b|^|c^|"},
      {" a \n b ", " a | b |"},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.text);
    TavoViewDocument whole;
    whole.AppendText(row.text);
    EXPECT_EQ(Paragraphs(whole), row.paragraphs);
    TavoViewDocument byByte;
    for (const char c : std::string(row.text)) byByte.AppendText({&c, 1});
    EXPECT_EQ(Paragraphs(byByte), row.paragraphs);
    for (int position = 0; position < whole.GetLength(); ++position) {
      const int at = whole.GetParagraphAt(position);
      EXPECT_LE(whole.GetParagraph(at).start, position);
      if (at + 1 < whole.GetParagraphsNumber()) {
        EXPECT_GT(whole.GetParagraph(at + 1).start, position);
      }
    }
  }
  TavoViewDocument document;
  EXPECT_EQ(document.GetParagraphAt(0), -1);
  document.AppendText("a\n");
  EXPECT_EQ(document.GetParagraphAt(99), 0);
}

TEST(ViewDocumentTest, KeepsLinksAndHitsWithText) {
  TavoViewDocument document;
  document.EndLink();
  document.BeginLink("dropped");
  document.EndLink();
  document.BeginLink("first");
  document.AppendText("ab");
  document.BeginHit();
  document.AppendText("cd");
  document.EndLink();
  document.AppendText("ef");
  document.BeginHit();
  document.AppendText("");
  document.BeginHit();
  document.EndHit();
  document.BeginLink("replaced");
  document.BeginLink("second");
  document.AppendText("gh");
  document.AppendText("ij");
  ASSERT_EQ(document.GetLinksNumber(), 2);
  EXPECT_EQ(document.GetLink(0).target, "first");
  EXPECT_EQ(document.GetText(document.GetLink(0).range), "abcd");
  EXPECT_EQ(document.GetLink(1).target, "second");
  EXPECT_EQ(document.GetText(document.GetLink(1).range), "ghij");
  ASSERT_EQ(document.GetHitsNumber(), 1);
  EXPECT_EQ(document.GetText(document.GetHit(0)), "cdef");
  document.Clear();
  document.AppendText("x");
  EXPECT_EQ(document.GetLinksNumber() + document.GetHitsNumber(), 0) << "nothing is left open";
}

// Every question about a place, against a walk over all ranges.
TEST(ViewDocumentTest, FindsRangesByPosition) {
  std::mt19937 random(7);
  for (int round = 0; round < 300; ++round) {
    SCOPED_TRACE(round);
    TavoViewDocument document;
    for (std::size_t i = random() % 12; i > 0; --i) {
      const std::string text(random() % 4, 'x');
      document.BeginHit();
      document.BeginLink("l");
      document.AppendText(text);
      document.EndHit();
      document.EndLink();
      document.AppendText(text.substr(text.size() / 2));
    }
    for (int position = -2; position < document.GetLength() + 3; ++position) {
      int at = -1;
      int from = -1;
      int before = -1;
      for (int i = 0; i < document.GetHitsNumber(); ++i) {
        const TavoTextRange& hit = document.GetHit(i);
        if (hit.start <= position && position < hit.GetEnd()) at = i;
        if (from < 0 && hit.start >= position) from = i;
        if (hit.GetEnd() <= position) before = i;
      }
      ASSERT_EQ(document.GetHitAt(position), at) << position;
      ASSERT_EQ(document.GetLinkAt(position), at) << position;
      ASSERT_EQ(document.GetHitFrom(position), from) << position;
      ASSERT_EQ(document.GetHitBefore(position), before) << position;
    }
  }
}

TEST(ViewDocumentTest, DropsWhatIsTooLong) {
  TavoViewDocument document(5);
  document.AppendText("abc");
  EXPECT_EQ(document.IsCut(), 0);
  document.BeginHit();
  document.AppendText("def");
  document.BeginLink("no room");
  document.AppendText("g");
  EXPECT_EQ(document.IsCut(), 1);
  EXPECT_EQ(document.GetText(), "abcde");
  EXPECT_EQ(document.GetText(document.GetHit(0)), "de");
  EXPECT_EQ(document.GetLinksNumber(), 0);
  document.Clear();
  document.AppendText("123456");
  EXPECT_EQ(document.GetText(), "12345");
}

}  // namespace
}  // namespace vemra
