#pragma once

#include <string>
#include <vector>

#include "Support/text/Section.h"

namespace vemra::test {

// The rules of cutting a section, followed one character and one merge at a time, with the built-in
// pack's classes. Slow and plain: what the library's ways of cutting are compared with.
struct PlainItem {
  std::string text;
  int start = 0;
  int number = 0;
  int itemNumber = 0;
  int type = 0;  // 0 word, 1 punctuation, 2 space, 3 compound
  std::vector<PlainItem> parts;
};

struct PlainCut {
  explicit PlainCut(const std::string& text, bool breakOnNewLine = true);

  std::vector<PlainItem> items;
  std::vector<int> words;  // indices into items
  std::vector<unsigned> sentenceBreaks;
  std::vector<unsigned> paragraphBreaks;
  // Counted from 0 on entry.
  int wordInSentence = 0;
  int wordInParagraph = 0;
  int sentenceInParagraph = 0;

 private:
  void Commit(PlainItem item, bool breakOnNewLine);
};

// Whether a section that was parsed has these items, and these numbers and counts.
bool SameItems(TavoSection& section, const PlainCut& plain);
bool Same(TavoSection& section, const PlainCut& plain);

}  // namespace vemra::test
