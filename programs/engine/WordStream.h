#pragma once

#include <cstddef>
#include <string>
#include <string_view>

// The words of one field of one text, or of one phrase of a query, in one string: the form in which
// they pass through SQLite to the full-text index.
//
// A word is a marker byte, 1 for a word at the next position and 2 for a further word at the same
// position, followed by its bytes. Bytes 0 to 3 of a word are written as the byte 3 and the byte
// plus 64, so that a stream holds no NUL whatever its words hold.
namespace vemra::engine {

void AppendWord(std::string& stream, std::string_view word);
void AppendAtSamePosition(std::string& stream, std::string_view word);

// The word that stands for an expression of a field. No word of a document begins as it does, with
// a control character.
std::string ExpressionToken(int fieldno, std::string_view expression);
bool IsExpressionToken(std::string_view word);

// Reads a stream. Bytes before the first marker belong to no word and are passed over.
class WordStreamReader {
 public:
  explicit WordStreamReader(std::string_view stream);

  // Moves to the next word; false at the end.
  bool Next();
  // Valid until the next call of Next.
  std::string_view Word() const { return word_; }
  bool IsAtSamePosition() const { return samePosition_; }
  // The word's bytes in the stream, marker included.
  std::size_t Begin() const { return begin_; }
  std::size_t End() const { return cursor_; }

 private:
  std::string_view stream_;
  std::size_t begin_ = 0;
  std::size_t cursor_ = 0;
  bool samePosition_ = false;
  std::string_view word_;
  std::string unescaped_;
};

}  // namespace vemra::engine
