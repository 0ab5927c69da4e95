#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vemra {

struct CodePageTable;

// The encoding of a database's text, and its conversions from and to UTF-8: a single-byte code page
// or, as number 65001, UTF-8 itself. Read-only: any thread may use it.
//
// What text becomes, chosen for what a searcher types:
// - Soft hyphens, joiners and marks without width go, so that a word broken by them is found whole.
// - A no-break space, other spaces and the zero-width space, which stands between words, become a
//   blank; a line or paragraph separator becomes a line feed.
// - Hyphens, dashes, quotes, primes and ligatures that the code page lacks are spelt with what it
//   has.
// - A Vietnamese vowel with a tone becomes vowel and tone mark where the code page has that mark.
// - Any other character that it lacks becomes one byte to which the code page assigns nothing (0x81
//   in most), which is neither word, white space nor sentence end, and reads back as U+FFFD.
// UTF-8 lacks none, but a language pack takes each of its bytes for a letter; so quotes, dashes and
// stops beyond ASCII are spelt in ASCII there too.
class CodePage {
 public:
  static constexpr int kUtf8 = 65001;

  // Null when there is no table for the number: see CodePageTables.h.
  static const CodePage* Find(int number);
  static const CodePage& Windows1252();
  // The code page of a language, which its pack file names: windows-1252 for a language without a
  // pack file.
  static const CodePage& OfLanguage(const std::string& language);
  // Key "Code Page" in the section "[Character Set]"; windows-1252 when the file, at a path in the
  // Windows form, names none or one without a table.
  static const CodePage& OfPackFile(const std::string& path);

  explicit CodePage(const CodePageTable& table);

  int GetNumber() const { return number_; }

  // Bytes that are no UTF-8 are taken as windows-1252, so that a page of mixed origin keeps its
  // text.
  std::string FromUtf8(std::string_view utf8) const;
  // Every byte becomes a character; one without a meaning becomes U+FFFD.
  std::string ToUtf8(std::string_view bytes) const;
  // Text that is in this code page already, with what FromUtf8 does to soft hyphens and no-break
  // spaces.
  std::string Normalize(std::string bytes) const;

  // Appends what one character becomes. c is any value.
  void AppendCharacter(char32_t c, std::string& out) const;
  // The character of a byte; U+FFFD when it has none, as any byte above 127 in UTF-8.
  char32_t ToCharacter(unsigned char byte) const;

 private:
  using Block = std::array<char, 256>;  // bytes by the low half of a character; 0 for none

  char FindByte(char32_t c) const;
  void AppendSubstitute(char32_t c, std::string& out) const;

  int number_;
  const CodePageTable& table_;
  char missing_;
  std::array<std::uint8_t, 256> blockOf_{};  // by the high half; block 0 is empty
  std::vector<Block> blocks_;
};

}  // namespace vemra
