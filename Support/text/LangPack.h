#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "Support/Export.h"
#include "Support/text/ByteClasses.h"

namespace vemra {

// What a language pack says of the 256 byte values and of the query language.
struct LangPackTables {
  // Bits of flags. A byte is a word character when any of the three low bits is set.
  static constexpr int kLetter = 3;
  static constexpr int kDigit = 4;
  static constexpr int kWordCharacter = 7;

  // A pack that says nothing: no word character, every byte sorts by its value and indexes to
  // itself.
  SUPPORT_API LangPackTables();

  std::array<std::uint8_t, 256> flags{};
  std::array<std::int16_t, 256> sort;     // weights
  std::array<std::uint8_t, 256> toIndex;  // folding for the index and for comparing without case
  std::string andWord = "AND";
  std::string orWord = "OR";
  std::string notWord = "NOT";
};

// What one language makes of the 256 byte values: word characters, folding, sort order, and its
// words for AND, OR and NOT. Packs live in one process-wide cache keyed by language name and come
// from it alone.
//
// The cache takes no lock: Get, GetDefault, Release and ReleaseAll must be serialised by the
// caller. A pack that was loaded is read-only and serves any number of threads. There is no
// reference count: a release destroys the pack for every holder.
class SUPPORT_API TavoLangPack {
 public:
  struct LoadStatus {
    static constexpr int kSuccess = 0;
    static constexpr int kNotLoaded = 1;        // registered, but its file cannot be read
    static constexpr int kUnknownLanguage = 2;  // not registered

    int code = kSuccess;
    std::string path;  // what the registry gave; untouched for an unknown language
  };

  // The pack of a language, or null; status, when given, says why. An empty name gives the
  // built-in pack. So does a language that is registered with an empty path, and from then on the
  // built-in pack reports that language's name: its users see the name they asked for. A language
  // that could not be loaded is tried again at the next call.
  static TavoLangPack* Get(const std::string& name, LoadStatus* status = nullptr);
  // The built-in pack, named "Default": fixed ASCII rules whatever the process locale.
  static TavoLangPack* GetDefault();
  // Destroys the cached pack of that name; an unknown name does nothing.
  static void Release(const std::string& name);
  static void Release(const TavoLangPack* pack);
  // Destroys every pack, the built-in one too; the next GetDefault makes a new one.
  static void ReleaseAll();

  // Non-zero for a word character.
  int IsAlnum(unsigned char c) const { return tables_->flags[c] & LangPackTables::kWordCharacter; }
  std::int16_t GetSortOrder(unsigned char c) const { return tables_->sort[c]; }
  unsigned char ToIndex(unsigned char c) const { return tables_->toIndex[c]; }
  // Folds text into out, which has room for it; nothing ends it there.
  void ToIndex(std::string_view text, char* out) const {
    const auto& table = tables_->toIndex;
    for (const char c : text) *out++ = static_cast<char>(table[static_cast<unsigned char>(c)]);
  }
  // Folds in place and returns text.
  std::string& ToIndex(std::string& text) const;
  // For loops over text: IsAlnum, white space and the sentence and line ends in one look-up.
  const ByteClasses& GetByteClasses() const { return *classes_; }

  // The order of two NUL-terminated strings: negative, 0 or positive. A loaded pack compares the
  // weights byte by byte and returns their first difference, and -1 or 1 where one string is the
  // start of the other; bytes of equal weight are equal. The built-in pack compares the bytes and
  // returns -1, 0 or 1.
  int Compare(const char* a, const char* b) const;
  int Compare(const unsigned char* a, const unsigned char* b) const;
  // Whether two strings are equal once folded: 1 or 0.
  int CompareNoCase(std::string_view a, std::string_view b) const {
    return a.size() == b.size() && IsFoldedEqual(a, b) ? 1 : 0;
  }

  std::string GetAndWord() const { return tables_->andWord; }
  std::string GetOrWord() const { return tables_->orWord; }
  std::string GetNotWord() const { return tables_->notWord; }
  int IsAndWord(std::string_view word) const { return CompareNoCase(word, tables_->andWord); }
  int IsOrWord(std::string_view word) const { return CompareNoCase(word, tables_->orWord); }
  int IsNotWord(std::string_view word) const { return CompareNoCase(word, tables_->notWord); }
  int IsSpecialWord(std::string_view word) const {
    return IsAndWord(word) || IsOrWord(word) || IsNotWord(word);
  }
  std::string GetName() const { return name_; }

  // Adds what a pack file says to this pack. Returns 1 when the file could be opened, whatever it
  // holds (a bad line is skipped without a word), else 0. The built-in pack takes nothing from a
  // file.
  int Load(const std::string& path);

 private:
  struct Cache;
  struct Deleter {
    void operator()(TavoLangPack* pack) const { delete pack; }
  };

  TavoLangPack(std::string name, bool builtIn);
  ~TavoLangPack() = default;
  // A copy shares the tables.
  TavoLangPack(const TavoLangPack&) = default;
  TavoLangPack& operator=(const TavoLangPack&) = default;

  static Cache& GetCache();
  bool IsFoldedEqual(std::string_view a, std::string_view b) const;  // of one length
  void SetTables(LangPackTables tables);

  bool builtIn_;
  std::shared_ptr<const LangPackTables> tables_;
  std::shared_ptr<const ByteClasses> classes_;
  std::string name_;
};

}  // namespace vemra
