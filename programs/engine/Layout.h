#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "Support/definition/FieldList.h"

// The layout of a text: how the words of its fields follow each other in the document, and where
// sentences and paragraphs begin. The full-text index counts the words of each field on their own;
// the layout leads from there to places in the document, which the operators between words compare.
//
// It is stored as segments, in document order: consecutive words of one field within one sentence.
// A segment is a number, seven bits a byte, lowest first, the high bit set on all but the last:
// its words times 8, plus 4 when its field is not that of the segment before, plus what it begins
// (0 nothing, 1 a sentence, 2 a paragraph and with it a sentence). The field follows as one byte
// when it has changed; before the first segment it is 0.
namespace vemra::engine {

class LayoutWriter {
 public:
  // The next word begins a sentence, a paragraph.
  void StartSentence() { starts_ = starts_ == kParagraph ? kParagraph : kSentence; }
  void StartParagraph() { starts_ = kParagraph; }
  void AddWord(int fieldno) {
    if (fieldno != fieldno_ || starts_ != kNothing) BeginSegment(fieldno);
    ++words_;
  }
  // The layout of the words so far; more may follow.
  const std::string& GetBytes();
  // For the next text.
  void Clear();

 private:
  enum Start : std::uint8_t { kNothing, kSentence, kParagraph };

  void BeginSegment(int fieldno);
  void EndSegment();

  std::string bytes_;
  int writtenFieldno_ = 0;  // of the last segment in bytes_
  int fieldno_ = 0;         // of the open segment
  Start segmentStarts_ = kNothing;
  std::uint64_t words_ = 0;  // of the open segment
  Start starts_ = kNothing;  // what the next word begins
};

// Where some words of a text stand in its document; words, sentences and paragraphs are counted
// from 0 across all fields.
struct Span {
  static constexpr int kSeveral = -1;

  int firstWord = 0;
  int lastWord = 0;
  int sentence = 0;   // kSeveral when the words are of more than one
  int paragraph = 0;  // likewise
};

class TextLayout {
 public:
  // Takes the place of what was read before. False when bytes are no layout.
  bool Read(std::string_view bytes);
  // The position-th word of a field, from 0, and those that follow it in the field; count is at
  // least 1. False when the field has no such words.
  bool Find(int fieldno, int position, int count, Span& span) const;

 private:
  struct Segment {
    int position;  // of its first word, in its field
    int word;      // the same in the document
    int words;
    int sentence;
    int paragraph;
  };

  const Segment* FindSegment(int fieldno, int position) const;

  std::array<std::vector<Segment>, kMaxFields> segments_{};  // by field
};

}  // namespace vemra::engine
