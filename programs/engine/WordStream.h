#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

// The words of one field of one text, or of one phrase of a query, in one string: the form in which
// they pass through SQLite to the full-text index.
//
// A word is a marker byte, 1 for a word at the next position and 2 for a further word at the same
// position, the number of its bytes as three digits of seven bits, lowest first, the high bit set
// on each, and its bytes. So a stream holds no NUL, and is written and read without a look at the
// bytes of its words.
namespace vemra::engine {

class WordStream {
 public:
  // The bytes of a word that are kept; the full-text index itself compares no more.
  static constexpr std::size_t kMaxWord = 32768;

  // word ends with a NUL, as the words that the library hands to an engine.
  void Add(const char* word) { Append(kNextPosition, word); }
  void AddAtSamePosition(const char* word) { Append(kSamePosition, word); }
  // Keeps the memory for the next words, save what a long text has taken.
  void Clear();

  std::size_t GetSize() const { return size_; }
  // Ended by a NUL. Valid until the next change.
  const char* Get();

 private:
  friend class WordStreamReader;

  static constexpr char kNextPosition = 1;
  static constexpr char kSamePosition = 2;
  static constexpr std::size_t kHeader = 4;

  void Append(char marker, const char* word);
  void Reserve(std::size_t size);

  std::unique_ptr<char[]> bytes_;
  std::size_t size_ = 0;
  std::size_t capacity_ = 0;
};

// The word that stands for an expression of a field. No word of a document begins as it does, with
// a control character.
std::string ExpressionToken(int fieldno, std::string_view expression);
bool IsExpressionToken(std::string_view word);

// Reads a stream, up to what is none.
class WordStreamReader {
 public:
  explicit WordStreamReader(std::string_view stream) : stream_(stream) {}

  // Moves to the next word; false at the end.
  bool Next();
  std::string_view Word() const { return word_; }
  bool IsAtSamePosition() const { return samePosition_; }
  // The word's bytes in the stream, marker included.
  std::size_t Begin() const { return begin_; }
  std::size_t End() const { return end_; }

 private:
  std::string_view stream_;
  std::size_t begin_ = 0;
  std::size_t end_ = 0;
  bool samePosition_ = false;
  std::string_view word_;
};

}  // namespace vemra::engine
