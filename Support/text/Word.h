#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "Support/Export.h"

namespace vemra {

// One item of a section's text: a word, a run of punctuation or of white space, or a compound of
// adjacent words and punctuation.
//
// An item of a section looks at the section's contents and costs nothing of its own; it is valid
// until the section is parsed again, edited, assigned to or destroyed. A copy owns its text.
class SUPPORT_API TavoWord {
 public:
  enum WordType : std::uint8_t {
    kWord = 0,         // a run of word characters
    kPunctuation = 1,  // a run of characters that are neither word characters nor white space
    kSpace = 2,        // a run of white space
    kCompound = 3,     // words and punctuation without white space between them
    kUnknown = 3,      // the class of NUL, and of a class not yet known
  };

  TavoWord() = default;                            // an empty word
  TavoWord(std::string_view text, WordType type);  // owns a copy of text
  // A word that looks at text, which must outlive it.
  static TavoWord View(std::string_view text, WordType type);

  // For sections and their containers: an item that looks at text.
  class Key {
    friend class TavoSection;
    friend class TavoWord;
    Key() = default;
  };
  TavoWord(Key /*key*/, const char* text, int start, int length, int number, int itemNumber,
           WordType type)
      : text_(text),
        start_(start),
        length_(length),
        number_(number),
        itemNumber_(itemNumber),
        type_(type) {}

  TavoWord(const TavoWord& other);
  TavoWord& operator=(const TavoWord& other);
  TavoWord(TavoWord&&) noexcept = default;
  TavoWord& operator=(TavoWord&&) noexcept = default;
  ~TavoWord() = default;

  std::string_view GetText() const {
    return std::string_view(text_, static_cast<std::size_t>(length_));
  }
  // Offsets in the section's contents; GetEnd is that of the last character.
  int GetStart() const { return start_; }
  int GetLength() const { return length_; }
  int GetEnd() const { return start_ + length_ - 1; }
  // The index among the section's real words; for any other item that of the last real word before
  // it, -1 before any. For a part, its index in the compound.
  int GetNumber() const { return number_; }
  // The index among the section's items; for a part, its index in the compound.
  int GetItemNumber() const { return itemNumber_; }
  WordType GetType() const { return type_; }
  int IsRealWord() const { return type_ == kWord || type_ == kCompound; }

  // A mark asks for highlighting. IsMarked is also true when a part, at any depth, is marked.
  void Mark() { marked_ = 1; }
  void UnMark() { marked_ = 0; }
  int IsWholeMarked() const { return marked_; }
  int IsMarked() const { return marked_ || (partCount_ > 0 && IsPartMarked()); }

  // The text without leading and trailing punctuation: of a compound, from its first part that is
  // a word to its last; of any other item, all of it. The second form looks at the word's text.
  std::string GetStriptWord() const { return std::string(GetStriptView()); }
  std::string_view GetStriptView() const {
    return type_ == kCompound ? GetStriptCompound() : GetText();
  }

  // The parts of a compound, in order; null at the end, or when there is none.
  TavoWord* GetFirstWord() { return partCount_ > 0 ? parts_ : nullptr; }
  const TavoWord* GetFirstWord() const { return partCount_ > 0 ? parts_ : nullptr; }
  TavoWord* GetNextWord(const TavoWord* after) { return GetPart(after->itemNumber_ + 1); }
  const TavoWord* GetNextWord(const TavoWord* after) const {
    return GetPart(after->itemNumber_ + 1);
  }
  TavoWord* GetLastWord() { return GetPart(partCount_ - 1); }
  const TavoWord* GetLastWord() const { return GetPart(partCount_ - 1); }
  int GetWordsNumber() const { return partCount_; }
  void RemoveWords();

  // Joins next, which follows this word without a gap, to it. Two simple words of one type become
  // one; otherwise the result is a compound of the parts of both, in which the two parts at the
  // seam are joined when they have one type. A mark on either side stays on what it marked.
  void Merge(TavoWord&& next);

 private:
  friend class TavoSection;

  // What a word that does not look at a section's memory keeps.
  struct Owned {
    std::string text;
    std::vector<TavoWord> parts;
  };

  int IsPartMarked() const;
  std::string_view GetStriptCompound() const;
  TavoWord* GetPart(int index) const {
    return index >= 0 && index < partCount_ ? parts_ + index : nullptr;
  }
  // A copy with its own parts that still looks at this word's text.
  TavoWord CopyLooking() const;
  // Looks at text, which begins at offset start; the parts follow.
  void Place(const char* text, int start);
  // A compound's parts, or the word itself as the only one; the word is then without parts.
  std::vector<TavoWord> TakeParts();
  void SetParts(std::vector<TavoWord>&& parts);
  void SetParts(TavoWord* parts, int count) {
    parts_ = parts;
    partCount_ = count;
  }
  void JoinParts(TavoWord&& next);

  const char* text_ = "";
  int start_ = 0;
  int length_ = 0;
  int number_ = 0;
  int itemNumber_ = 0;
  std::uint8_t marked_ = 0;
  WordType type_ = kWord;
  int partCount_ = 0;
  TavoWord* parts_ = nullptr;  // in owned_ or in the section's store
  std::unique_ptr<Owned> owned_;
};

}  // namespace vemra
