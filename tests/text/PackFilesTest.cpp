#include <gtest/gtest.h>
#include <iconv.h>
#include <wctype.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "Support/text/LangPackReader.h"
#include "tests/TempFolder.h"

namespace vemra {
namespace {

const std::filesystem::path kPacks =
    std::filesystem::path(VEMRA_TEST_DATA).parent_path().parent_path() / "packs";

// What the C library knows of characters, to which the packs owe nothing.
class CLibrary {
 public:
  explicit CLibrary(const std::string& codePage)
      : fromPage_(iconv_open("UTF-32LE", codePage.c_str())),
        toPage_(iconv_open(codePage.c_str(), "UTF-32LE")),
        fromUtf8_(iconv_open(codePage.c_str(), "UTF-8")),
        locale_(newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr)) {}
  ~CLibrary() {
    for (iconv_t conversion : {fromPage_, toPage_, fromUtf8_}) iconv_close(conversion);
    freelocale(locale_);
  }
  CLibrary(const CLibrary&) = delete;
  CLibrary& operator=(const CLibrary&) = delete;

  // 0 when the code page has no such byte.
  char32_t Character(int byte) const {
    const std::string bytes = Convert(fromPage_, std::string(1, static_cast<char>(byte)));
    char32_t c = 0;
    if (bytes.size() == sizeof c) bytes.copy(reinterpret_cast<char*>(&c), sizeof c);
    return c;
  }
  bool IsAlpha(char32_t c) const { return iswalpha_l(wint_t(c), locale_) != 0; }
  bool IsDigit(char32_t c) const { return c >= '0' && c <= '9'; }
  // The byte of the small letter; 0 when the code page has none.
  int LowerByte(char32_t c) const {
    const auto lower = char32_t(towlower_l(wint_t(c), locale_));
    const std::string byte =
        Convert(toPage_, std::string(reinterpret_cast<const char*>(&lower), sizeof lower));
    return byte.size() == 1 ? static_cast<unsigned char>(byte[0]) : 0;
  }
  std::string FromUtf8(const std::string& text) const { return Convert(fromUtf8_, text); }

 private:
  static std::string Convert(iconv_t conversion, std::string text) {
    char out[200];
    char* to = out;
    std::size_t room = sizeof out;
    char* from = text.data();
    std::size_t left = text.size();
    const bool failed = iconv(conversion, &from, &left, &to, &room) == std::size_t(-1);
    iconv(conversion, nullptr, nullptr, &to, &room);  // a base letter waits for its mark
    return failed ? std::string() : std::string(out, sizeof out - room);
  }

  iconv_t fromPage_;
  iconv_t toPage_;
  iconv_t fromUtf8_;
  locale_t locale_;
};

class CollectingReader : public LangPackReader {
 public:
  std::vector<std::string> bad;

 protected:
  void OnBadLine(const std::string& line, std::uint32_t) override { bad.push_back(line); }
};

struct PackFile {
  std::string name;
  std::string codePage;
  LangPackTables tables;
};

// A copy in a folder of the test's own, since the reader wants the library's path form.
PackFile ReadPack(const std::string& name) {
  const test::TempFolder folder;
  PackFile pack;
  pack.name = name;
  const std::string text = test::ReadHostFile(kPacks / (name + ".pack"));
  test::WriteHostFile(folder.Host() / "x.pack", text);
  const std::size_t at = text.find("Code Page=") + 10;
  pack.codePage = "CP" + text.substr(at, text.find('\n', at) - at);
  CollectingReader reader;
  EXPECT_EQ(reader.Read(folder.Path("x.pack"), pack.tables), 1) << name;
  EXPECT_TRUE(reader.bad.empty()) << name << ": " << reader.bad.front();
  return pack;
}

std::vector<std::string> PackNames() {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(kPacks)) {
    if (entry.path().extension() == ".pack") names.push_back(entry.path().stem().string());
  }
  return names;
}

bool IsWordByte(const PackFile& pack, int byte) {
  return (pack.tables.flags[std::size_t(byte)] & LangPackTables::kWordCharacter) != 0;
}

// The C library takes these loose accents for letters and these marks within words for none.
const std::set<char32_t> kLooseAccents = {0x02C6, 0x02C7};
const std::set<char32_t> kMarksInWords = {0x0300, 0x0301, 0x0303, 0x0309, 0x0323, 0x0640,
                                          0x05BD, 0x05BF, 0x064B, 0x064C, 0x064D, 0x064E,
                                          0x064F, 0x0650, 0x0651, 0x0652};

TEST(PackFilesTest, TheCLibraryAgreesOnLettersAndCase) {
  const std::map<char32_t, char32_t> kOwnFolding = {{0x03C2, 0x03C3}, {0x00B5, 0x03BC}};
  for (const std::string& name : PackNames()) {
    SCOPED_TRACE(name);
    const PackFile pack = ReadPack(name);
    if (pack.codePage == "CP65001") continue;
    const CLibrary library(pack.codePage);
    const bool foldsAccents = name.ends_with("-NoAccents");
    for (int byte = 1; byte < 256; ++byte) {
      SCOPED_TRACE(byte);
      const char32_t c = library.Character(byte);
      const bool isWord = IsWordByte(pack, byte);
      if (c == 0) {
        EXPECT_FALSE(isWord);
        continue;
      }
      const bool expected = kMarksInWords.count(c) != 0 || library.IsDigit(c) ||
                            (library.IsAlpha(c) && kLooseAccents.count(c) == 0);
      EXPECT_EQ(isWord, expected) << std::hex << std::uint32_t(c);
      if (foldsAccents || kOwnFolding.count(c) != 0 || !isWord) continue;
      int lower = library.LowerByte(c);
      if (pack.codePage == "CP1254" && c == 'I') lower = 0xFD;  // the dotless i
      EXPECT_EQ(pack.tables.toIndex[std::size_t(byte)], lower == 0 ? byte : lower);
    }
  }
}

TEST(PackFilesTest, FoldingAndOrderAreConsistent) {
  for (const std::string& name : PackNames()) {
    SCOPED_TRACE(name);
    const PackFile pack = ReadPack(name);
    const auto& tables = pack.tables;
    std::set<int> weights;
    for (int byte = 1; byte < 256; ++byte) {
      SCOPED_TRACE(byte);
      const int folded = tables.toIndex[std::size_t(byte)];
      EXPECT_EQ(tables.toIndex[std::size_t(folded)], folded);
      EXPECT_EQ(tables.flags[std::size_t(folded)], tables.flags[std::size_t(byte)]);
      EXPECT_TRUE(IsWordByte(pack, byte) || folded == byte);
      weights.insert(tables.sort[std::size_t(byte)]);
    }
    EXPECT_EQ(weights.size(), 255U);
    EXPECT_EQ(*weights.begin(), 1);
    EXPECT_EQ(*weights.rbegin(), 255);
    EXPECT_EQ(tables.toIndex['Q'], 'q');
  }
}

TEST(PackFilesTest, WordsStandInTheOrderOfTheLanguage) {
  const struct {
    const char* pack;
    const char* order;  // UTF-8
    const char* andWord;
  } kRows[] = {
      {"Central-European", "a á ą Ą b c ć č Č d ď z ź ž", "and"},
      {"Cyrillic", "z а А б г ґ д ђ е Ё ж з ѕ и й к л љ о п с т ћ ќ у ў ф я", "и"},
      {"Western", "- 1 a A á æ b e é f o ö œ p s ß t z", "and"},
      {"Greek", "z α ά β ε έ σ Σ ς τ ω ώ", "και"},
      {"Turkish", "c C ç d g ğ h H ı I i İ j o ö p s ş t u ü v", "ve"},
      {"Hebrew", "z א ב י כ ך ל מ ם נ ן ת", "וגם"},
      {"Arabic", "z ء ا آ أ ب پ ت ج چ ر ز ژ ك ک گ ل ه و ى ي", "و"},
      {"Baltic", "a ą c č e ė z ž", "and"},
      {"Vietnamese", "a à ă â b d đ e ê o ô ơ u ư y", "và"},
      {"Croatian", "c č ć d đ e s š t z ž", "i"},
      {"Czech", "a á b c č d ď e h i r ř s š z ž", "a"},
      {"Hungarian", "a á b o ó ö ő p u ú ü ű v", "és"},
      {"Polish", "a ą b c ć e ę l ł n ń o ó s ś z ź ż", "i"},
      {"Romanian", "a ă â b i î j s ş t ţ u", "şi"},
      {"Ukrainian", "г ґ д е є ж и і ї й к ь ю я", "і"},
      {"Danish", "a z æ Æ ø å", "og"},
      {"Finnish", "a z å ä ö", "ja"},
      {"German", "a ä b o ö p s ß t u ü v", "und"},
      {"Spanish", "a á b n ñ o", "y"},
      {"Swedish", "a z å ä ö", "och"},
      {"Estonian", "s š z ž t u v w õ ä ö ü x y", "ja"},
      {"Latvian", "a ā b c č e ē g ģ k ķ l ļ n ņ u ū", "un"},
      {"Lithuanian", "a ą c č e ę ė f i į y j u ų ū v z ž", "ir"},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.pack);
    const PackFile pack = ReadPack(row.pack);
    const CLibrary library(pack.codePage);
    const auto weights = [&](const std::string& letters) {
      std::vector<int> list;
      for (const char c : library.FromUtf8(letters))
        list.push_back(pack.tables.sort[static_cast<unsigned char>(c)]);
      return list;
    };
    const std::string order = row.order;
    std::string before;
    for (std::size_t at = 0; at < order.size();) {
      const std::size_t end = std::min(order.find(' ', at), order.size());
      const std::string letter = order.substr(at, end - at);
      EXPECT_FALSE(weights(letter).empty()) << letter;
      EXPECT_LT(weights(before), weights(letter)) << before << " before " << letter;
      before = letter;
      at = end + 1;
    }
    std::string word = pack.tables.andWord;
    for (char& c : word) c = static_cast<char>(pack.tables.toIndex[static_cast<unsigned char>(c)]);
    EXPECT_EQ(word, library.FromUtf8(row.andWord));
  }
}

TEST(PackFilesTest, AccentsFoldButLettersOfTheirOwnStay) {
  const struct {
    const char* pack;
    const char* text;
    const char* folded;
  } kRows[] = {
      {"Central-European", "Łódź Čapek őŐß", "lodz capek ooß"},
      {"Cyrillic", "Ёлка Йод Ґ Ќ", "елка йод ґ ќ"},
      {"Western", "Été Ñ ŸÞ", "ete n yþ"},
      {"Greek", "Άλφα ΐ Ώς", "αλφα ι ωσ"},
      {"Turkish", "ÇIĞİŞ ı", "cigis i"},
      {"Arabic", "آأإا ؤ ئ é", "اااا و ي e"},
      {"Baltic", "Ąžuolas Õ", "azuolas o"},
      {"Vietnamese", "Đường Ă", "duong a"},
  };
  for (const auto& row : kRows) {
    const PackFile pack = ReadPack(std::string(row.pack) + "-NoAccents");
    const CLibrary library(pack.codePage);
    std::string text = library.FromUtf8(row.text);
    ASSERT_FALSE(text.empty()) << row.pack;
    for (char& c : text) c = static_cast<char>(pack.tables.toIndex[static_cast<unsigned char>(c)]);
    // A Vietnamese tone stays as the loose mark that the code page has for it.
    if (pack.codePage == "CP1258") std::erase(text, '\xCC');
    EXPECT_EQ(text, library.FromUtf8(row.folded)) << row.pack;
  }
}

}  // namespace
}  // namespace vemra
