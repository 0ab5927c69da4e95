// Where the words of a section stand in their sentences and paragraphs.

#include "Support/text/Section.h"

namespace vemra {

int TavoSection::GetWordInSentenceAtEnd() const {
  const int words = GetWordsNumber();
  return sentenceBreaks_.IsEmpty() ? wordInSentence_ + words
                                   : words - static_cast<int>(sentenceBreaks_.GetLast());
}

int TavoSection::GetWordInParagraphAtEnd() const {
  const int words = GetWordsNumber();
  return paragraphBreaks_.IsEmpty() ? wordInParagraph_ + words
                                    : words - static_cast<int>(paragraphBreaks_.GetLast());
}

int TavoSection::GetSentenceInParagraphAtEnd() const {
  const int onEntry = paragraphBreaks_.IsEmpty() ? sentenceInParagraph_ : 0;
  return onEntry + sentenceBreaks_.GetCount() - sentenceBreaksAtParagraph_;
}

int TavoSection::GetWordSentence(const TavoWord* word) const {
  return sentencePosition_ + sentenceBreaks_.CountUpTo(word->GetNumber());
}

int TavoSection::GetWordParagraph(const TavoWord* word) const {
  return paragraphPosition_ + paragraphBreaks_.CountUpTo(word->GetNumber());
}

int TavoSection::CountWithin(const BreakList& breaks, const TavoWord* word,
                             int countOnEntry) const {
  const int number = word->GetNumber();
  const int opened = breaks.GetLastUpTo(number);
  return opened >= 0 ? number - opened : countOnEntry + number;
}

int TavoSection::GetWordInSentence(const TavoWord* word) const {
  return CountWithin(sentenceBreaks_, word, wordInSentence_);
}

int TavoSection::GetWordInParagraph(const TavoWord* word) const {
  return CountWithin(paragraphBreaks_, word, wordInParagraph_);
}

int TavoSection::GetSentenceInParagraph(const TavoWord* word) const {
  const int count = sentenceBreaks_.CountUpTo(word->GetNumber());
  const int sentenceOpened = count > 0 ? sentenceBreaks_.GetLastUpTo(word->GetNumber()) : 0;
  const int paragraphOpened = paragraphBreaks_.GetLastUpTo(sentenceOpened);
  if (paragraphOpened < 0) return sentenceInParagraph_ + count;
  return count - sentenceBreaks_.CountUpTo(paragraphOpened);
}

int TavoSection::WordsAfterLast(const BreakList& breaks) const {
  const int words = GetWordsNumber();
  return breaks.IsEmpty() ? words : words - static_cast<int>(breaks.GetLast()) + 1;
}

int TavoSection::EndsWith(const BreakList& breaks) const {
  return !breaks.IsEmpty() && static_cast<int>(breaks.GetLast()) == GetWordsNumber();
}

}  // namespace vemra
