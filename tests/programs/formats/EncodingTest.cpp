#include <gtest/gtest.h>

#include "programs/formats/CodePage.h"
#include "programs/formats/DocumentEncoding.h"
#include "programs/formats/Utf8.h"
#include "tests/TempFolder.h"

namespace vemra {
namespace {

using namespace std::string_literals;

TEST(CodePageTest, EveryAssignedByteGoesToUtf8AndBack) {
  for (const int number : {1250, 1251, 1252, 1253, 1254, 1255, 1256, 1257, 1258, 20866, 28592}) {
    SCOPED_TRACE(number);
    const CodePage* const page = CodePage::Find(number);
    ASSERT_NE(page, nullptr);
    for (int byte = 1; byte < 256; ++byte) {
      const char32_t c = page->ToCharacter(static_cast<unsigned char>(byte));
      if (c == 0xFFFD || c == 0xA0 || c == 0xAD) continue;
      const std::string bytes(1, static_cast<char>(byte));
      EXPECT_EQ(page->FromUtf8(page->ToUtf8(bytes)), bytes) << byte;
    }
  }
  EXPECT_EQ(CodePage::Find(1249), nullptr);
}

TEST(CodePageTest, FromUtf8) {
  const struct {
    const char* label;
    std::string utf8;
    std::string bytes;
  } kRows[] = {
      {"empty", "", ""},
      {"NUL and ASCII", "a\0b"s, "a\0b"s},
      {"Latin-1", "caf\xC3\xA9", "caf\xE9"},
      {"euro and quotes", "\xE2\x82\xAC\xE2\x80\x99", "\x80\x92"},
      {"lacking", "a\xD0\x96z", "a\x81z"},
      {"beyond 16 bits", "a\xF0\x9F\x98\x80z", "a\x81z"},
      {"soft hyphen", "hy\xC2\xADphen", "hyphen"},
      {"no-break space", "10\xC2\xA0km", "10 km"},
      {"zero-width space", "a\xE2\x80\x8Bz", "a z"},
      {"joiner", "a\xE2\x80\x8Dz", "az"},
      {"no-break hyphen", "e\xE2\x80\x91mail", "e-mail"},
      {"ligature", "\xEF\xAC\x81le", "file"},
      {"control of Latin-1", "a\xC2\x80z", "a z"},
      {"bytes of 1252", "na\xEFve \x93q\x94", "na\xEFve \x93q\x94"},
      {"cut short", "a\xE2\x82", "a\xE2\x82"},
      {"overlong", "\xC0\xAF", "\xC0\xAF"},
      {"surrogate", "\xED\xBF\xBF", "\xED\xBF\xBF"},
      {"too large", "\xF4\x90\x80\x80", "\xF4\x81\x80\x80"},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.label);
    EXPECT_EQ(CodePage::Windows1252().FromUtf8(row.utf8), row.bytes);
  }
}

TEST(CodePageTest, VietnameseTonesBecomeLooseMarks) {
  const CodePage& page = *CodePage::Find(1258);
  EXPECT_EQ(page.FromUtf8("Vi\xE1\xBB\x87t h\xC3\xA0 \xC4\xA9"), "Vi\xEA\xF2t h\xE0 i\xDE");
  EXPECT_EQ(page.ToUtf8("i\xDE"), "i\xCC\x83");
  EXPECT_EQ(CodePage::Windows1252().FromUtf8("\xE1\xBB\x87"), "\x81");
}

TEST(CodePageTest, Utf8KeepsEveryLetterAndSpellsPunctuation) {
  const CodePage& page = *CodePage::Find(CodePage::kUtf8);
  const std::string letters = "\xD0\x96 \xE6\xBC\xA2\xF0\x9F\x98\x80 caf\xC3\xA9";
  EXPECT_EQ(page.FromUtf8(letters), letters);
  EXPECT_EQ(page.ToUtf8(letters), letters);
  EXPECT_EQ(page.FromUtf8("\xC2\xABz\xC2\xAD\xE2\x80\x99\xC2\xA0\xE3\x80\x82\xE9"),
            "\"z' . \xC3\xA9");
  EXPECT_EQ(page.ToUtf8("a\xC3"), "a\xEF\xBF\xBD");
  EXPECT_EQ(DecodeDocument("\xD0\x96", Declaration::kNone, page), "\xD0\x96");
  EXPECT_EQ(DecodeDocument("\xE9t\xE9", Declaration::kNone, page), "\xC3\xA9t\xC3\xA9");
}

TEST(CodePageTest, ByteWithoutMeaningPrintsAsReplacement) {
  EXPECT_EQ(CodePage::Windows1252().ToUtf8("a\x81\x80z"), "a\xEF\xBF\xBD\xE2\x82\xACz");
  // Every byte above 127 of the Arabic page is assigned; 0x98 alone is free in the Cyrillic one.
  EXPECT_EQ(CodePage::Find(1256)->FromUtf8("\xE6\xBC\xA2"), "\x1A");
  EXPECT_EQ(CodePage::Find(1251)->FromUtf8("\xE6\xBC\xA2"), "\x98");
}

TEST(CodePageTest, IsReadFromAPackFile) {
  const test::TempFolder folder;
  EXPECT_EQ(CodePage::OfPackFile(folder.Path("a.pack")).GetNumber(), 1252) << "missing";
  const std::pair<const char*, int> rows[] = {
      {"[Flags]\n65=A\n[Character Set]\nName=x\nCode Page=1251\n[Sort]\n", 1251},
      {"[Character Set]\n[Flags]\nCode Page=1251\n", 1252},
      {"[Character Set]\nCode Page=932\n", 1252},
      {"[Character Set]\nCode Page=65001\n", 65001},
      {"", 1252}};
  for (const auto& [pack, number] : rows) {
    test::WriteHostFile(folder.Host() / "a.pack", pack);
    EXPECT_EQ(CodePage::OfPackFile(folder.Path("a.pack")).GetNumber(), number) << pack;
  }
}

TEST(Utf8Test, AsciiPrefixStopsAtEveryPlace) {
  for (std::size_t length = 0; length < 20; ++length) {
    const std::string ascii(length, 'a');
    EXPECT_EQ(AsciiPrefix(ascii), length);
    EXPECT_EQ(AsciiPrefix(ascii + "\x80zzzzzzzzz"), length);
  }
}

TEST(DocumentEncodingTest, IsDetectedOrObeyed) {
  constexpr auto kMarkup = Declaration::kMarkup;
  constexpr auto kNone = Declaration::kNone;
  const std::string tail = "<p>\xC3\xA9";  // valid UTF-8, and other text in every other encoding
  const struct {
    const char* label;
    Declaration declaration;
    std::string bytes;
    std::string end;
  } kRows[] = {
      {"empty", kMarkup, "", ""},
      {"UTF-8 undeclared", kNone, tail, "<p>\xE9"},
      {"not UTF-8", kNone, "<p>\xE9t\xE9", "<p>\xE9t\xE9"},
      {"byte order mark", kMarkup, "\xEF\xBB\xBF<meta charset=latin1>" + tail, ">\xE9"},
      {"UTF-16, little end first", kNone, "\xFF\xFE<\0\xE9\0"s, "<\xE9"},
      {"UTF-16, big end first, odd length", kNone, "\xFE\xFF\0<\0\xE9\0"s, "<\xE9"},
      {"UTF-16, lone surrogate", kNone, "\xFF\xFE\x00\xD8z\0"s, "\x81z"},
      {"meta charset", kMarkup, "<META CharSet = 'Latin1' >" + tail, ">\xC3\xA9"},
      {"meta is no matter in text", kNone, "<meta charset=latin1>" + tail, ">\xE9"},
      {"http-equiv", kMarkup,
       "<meta http-equiv=Content-Type content=\"text/html; charset=iso-8859-1\">" + tail,
       ">\xC3\xA9"},
      {"second meta", kMarkup, "<meta name=a content=b><meta charset=cp1252>" + tail, ">\xC3\xA9"},
      {"UTF-8 declared, but broken", kMarkup, "<meta charset=utf-8>\xE9 " + tail, "\xE9 <p>\xE9"},
      {"ASCII declared", kMarkup, "<meta charset=us-ascii>" + tail, ">\xC3\xA9"},
      {"UTF-16 declared in ASCII", kMarkup, "<meta charset=UTF-16>" + tail, "><p>\xE9"},
      {"XML declaration", kMarkup, "<?xml version='1.0' encoding='ISO-8859-1'?>" + tail,
       "<p>\xC3\xA9"},
      {"unknown label", kMarkup, "<meta charset=klingon>" + tail, "><p>\xE9"},
      {"label without an end", kMarkup, "\xE9<meta charset=", "\xE9<meta charset="},
      {"Latin-2", kMarkup, "<meta charset=iso-8859-2>\xE1\xB9", "\xE1\x9A"},
      {"1252 normalized", kNone, "a\xA0y\xADz\xE9", "a yz\xE9"},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.label);
    const std::string text = DecodeDocument(row.bytes, row.declaration, CodePage::Windows1252());
    EXPECT_TRUE(text.ends_with(row.end)) << text;
    EXPECT_EQ(text.empty(), row.end.empty());
  }
}

}  // namespace
}  // namespace vemra
