// Where the words of a section stand in their sentences and paragraphs.

#include "Support/text/Section.h"

namespace vemra {

int TavoSection::GetWordInSentenceAtEnd() const {
  const int words = GetWordsNumber();
  return found_.sentenceBreaks.IsEmpty()
             ? wordInSentence_ + words
             : words - static_cast<int>(found_.sentenceBreaks.GetLast());
}

int TavoSection::GetWordInParagraphAtEnd() const {
  const int words = GetWordsNumber();
  return found_.paragraphBreaks.IsEmpty()
             ? wordInParagraph_ + words
             : words - static_cast<int>(found_.paragraphBreaks.GetLast());
}

int TavoSection::GetSentenceInParagraphAtEnd() const {
  const int onEntry = found_.paragraphBreaks.IsEmpty() ? sentenceInParagraph_ : 0;
  return onEntry + found_.sentenceBreaks.GetCount() - sentenceBreaksAtParagraph_;
}

int TavoSection::GetWordSentence(const TavoWord* word) const {
  return sentencePosition_ + found_.sentenceBreaks.CountUpTo(word->GetNumber());
}

int TavoSection::GetWordParagraph(const TavoWord* word) const {
  return paragraphPosition_ + found_.paragraphBreaks.CountUpTo(word->GetNumber());
}

int TavoSection::CountWithin(const BreakList& breaks, const TavoWord* word,
                             int countOnEntry) const {
  const int number = word->GetNumber();
  const int opened = breaks.GetLastUpTo(number);
  return opened >= 0 ? number - opened : countOnEntry + number;
}

int TavoSection::GetWordInSentence(const TavoWord* word) const {
  return CountWithin(found_.sentenceBreaks, word, wordInSentence_);
}

int TavoSection::GetWordInParagraph(const TavoWord* word) const {
  return CountWithin(found_.paragraphBreaks, word, wordInParagraph_);
}

int TavoSection::GetSentenceInParagraph(const TavoWord* word) const {
  const int count = found_.sentenceBreaks.CountUpTo(word->GetNumber());
  const int sentenceOpened = count > 0 ? found_.sentenceBreaks.GetLastUpTo(word->GetNumber()) : 0;
  const int paragraphOpened = found_.paragraphBreaks.GetLastUpTo(sentenceOpened);
  if (paragraphOpened < 0) return sentenceInParagraph_ + count;
  return count - found_.sentenceBreaks.CountUpTo(paragraphOpened);
}

int TavoSection::WordsAfterLast(const BreakList& breaks) const {
  const int words = GetWordsNumber();
  return breaks.IsEmpty() ? words : words - static_cast<int>(breaks.GetLast()) + 1;
}

int TavoSection::EndsWith(const BreakList& breaks) const {
  return !breaks.IsEmpty() && static_cast<int>(breaks.GetLast()) == GetWordsNumber();
}

}  // namespace vemra
