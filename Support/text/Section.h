#pragma once

#include <optional>
#include <string>
#include <typeinfo>
#include <vector>

#include "Support/Export.h"
#include "Support/text/FoundItems.h"
#include "Support/text/LangPack.h"
#include "Support/text/Word.h"

namespace vemra {

class RunScanner;
class TavoOutput;

// Joins the words of an expression: the key of several words in the dictionary always holds one.
inline constexpr char DICTIONARY_NOBREAKSPACE = static_cast<char>(160);

// One run of a document's text that belongs to one field, cut into items, with the numbers of its
// words, sentences and paragraphs within the document. Used by one thread at a time.
//
// How text is cut: a maximal run without white space is one item when all of it is word characters
// or all of it punctuation, two items when it has two such runs (a word with its full stop), and
// one compound when it has three or more (well-known, e.g., don't). White-space runs are the items
// between. Real words are words and compounds.
//
// A sentence ends at a punctuation item, or a compound that ends in punctuation, that holds a ".",
// "!" or "?". A white-space item that holds a line feed or carriage return ends sentence and
// paragraph, unless break-on-new-line is off.
//
// A section is parsed by the first walk over it or the first request for its words. Parsing costs
// linear time and, for a section that is not overridden, no allocation for a single item.
class SUPPORT_API TavoSection {
 public:
  using WordType = TavoWord::WordType;

  // How much CopySection and CreateCopyWord copy.
  enum CopyMode {
    kCopyText = 0,   // contents, numbering and settings; the copy is not parsed
    kCopyItems = 1,  // the items with their marks as well
  };

  // A NUL ends contents. pack null stands for the built-in pack; pack and output are loans.
  // Contents hold at most 2^31 - 1 characters; what is beyond is dropped.
  TavoSection();
  TavoSection(TavoOutput* output, std::string contents, const TavoLangPack* pack = nullptr);
  TavoSection(TavoOutput* output, const char* contents, const TavoLangPack* pack = nullptr);
  TavoSection(const TavoSection& other);  // with the items; not locked
  TavoSection& operator=(const TavoSection& other);

  virtual ~TavoSection();

  // Cuts the contents into items, numbers them and finds the breaks, starting from the counts on
  // entry. What an earlier parse left is dropped, marks included.
  virtual void ParseContents();
  // Prepares what the output prints in place of the contents. Here: the contents themselves, the
  // section being one highlight.
  virtual void MarkContents();
  // The contents, as they stand, from the start of one real word to the end of another. Indices
  // outside the section are taken as its first and last word.
  virtual std::string GetPartMarkContents(int firstWord, int lastWord);
  // Before the parse the first maxLength characters of the contents; after it the items joined by
  // single blanks, MakeWordFromContents(-1, maxLength). A negative maxLength is no limit.
  virtual std::string GetTextContents(int maxLength);
  // The last lock is gone: the output prints what it can. A section without an output deletes
  // itself.
  virtual void OnFree();
  // The class of a byte; NUL is kUnknown. Overridden together with or instead of CreateWord.
  virtual WordType CharType(unsigned char c);
  // The next item of the contents, or none at their end. On entry type is the class at the cursor,
  // kUnknown at the start; on return the class where the item ended. The item's text is what the
  // cursor moved over, whatever text the item itself came with; an item without characters ends
  // the parse. The section joins what it is given: an override need not return maximal runs, and
  // may return a compound.
  virtual std::optional<TavoWord> CreateWord(const char*& cursor, WordType& type);
  // Makes this section a copy; mode is a CopyMode. The lock count stays this section's own.
  virtual void CopySection(const TavoSection& other, int mode);
  // Copies one item: appends its characters to text and returns the item that stands for them, or
  // none and appends nothing to leave it out. The section points the copy at what was appended.
  virtual std::optional<TavoWord> CreateCopyWord(const TavoWord* word, std::string& text, int mode);

  // New contents, not parsed. The memory of the old items is used again.
  void SetContents(std::string contents);
  const std::string& GetContents() const { return contents_; }
  int GetContentsLength() const { return static_cast<int>(contents_.size()); }
  int IsContentsEmpty() const { return contents_.empty(); }
  // Whether there is nothing to index: no contents or, once parsed, no real word.
  int IsEmpty() const { return contents_.empty() || (parsed_ && found_.words.empty()); }
  int IsParsed() const { return parsed_; }
  void SetParsed(int parsed) { parsed_ = parsed; }  // 0: the next request parses again
  // What MarkContents made; empty before it and after a parse.
  const std::string& GetMarkedContents() const { return markedContents_; }

  TavoOutput* GetOutput() const { return output_; }
  void SetOutput(TavoOutput* output) { output_ = output; }
  const TavoLangPack* GetLangPack() const { return pack_; }

  // The numbers, within the document, of the section's first word, sentence and paragraph.
  void SetWordPosition(int position) { wordPosition_ = position; }
  void SetSentencePosition(int position) { sentencePosition_ = position; }
  void SetParagraphPosition(int position) { paragraphPosition_ = position; }
  int GetWordPosition() const { return wordPosition_; }
  int GetSentencePosition() const { return sentencePosition_; }
  int GetParagraphPosition() const { return paragraphPosition_; }
  // The counts on entry: how far into its sentence and paragraph the preceding text had come. The
  // questions about a word start from them; a parse leaves them as they are.
  void SetWordInSentencePosition(int count) { wordInSentence_ = count; }
  void SetWordInParagraphPosition(int count) { wordInParagraph_ = count; }
  void SetSentenceInParagraphPosition(int count) { sentenceInParagraph_ = count; }
  int GetWordInSentencePosition() const { return wordInSentence_; }
  int GetWordInParagraphPosition() const { return wordInParagraph_; }
  int GetSentenceInParagraphPosition() const { return sentenceInParagraph_; }
  // The same counts at the section's end, for a following section to start from; on a section
  // that is not parsed they equal those on entry.
  int GetWordInSentenceAtEnd() const;
  int GetWordInParagraphAtEnd() const;
  int GetSentenceInParagraphAtEnd() const;

  void SetBreakOnNewLine(int on);  // a parsed section finds its breaks anew
  int GetBreakOnNewLine() const { return breakOnNewLine_; }
  // The section's own mark, cleared by a parse.
  void SetMarked(int marked) { marked_ = marked; }
  int IsMarked() const { return marked_; }
  // The highlights printed before this section; MarkContents adds its own.
  void SetInitialHighlightCount(int count) { highlightCount_ = count; }
  int GetCurrentHighlightCount() const { return highlightCount_; }

  // Walking the real words and all items. Null at the end. GetFirstWord and GetFirstItem parse
  // when need be; the others see what a parse left. GetNextWord takes any item of the section.
  // GetWordAt and GetItemAt expect valid indices.
  TavoWord* GetFirstWord() {
    ParseIfNeeded();
    return found_.words.empty() ? nullptr : GetWordAt(0);
  }
  TavoWord* GetNextWord(const TavoWord* word) {
    const int next = word->number_ + 1;
    return next < GetWordsNumber() ? GetWordAt(next) : nullptr;
  }
  TavoWord* GetLastWord();
  TavoWord* GetWordAt(int index) {
    return &found_.items[static_cast<std::size_t>(found_.words[index])];
  }
  int GetWordsNumber() const { return static_cast<int>(found_.words.size()); }
  TavoWord* GetFirstItem() {
    ParseIfNeeded();
    return found_.items.empty() ? nullptr : &found_.items.front();
  }
  TavoWord* GetNextItem(const TavoWord* item) {
    const int next = item->itemNumber_ + 1;
    return next < GetItemsNumber() ? GetItemAt(next) : nullptr;
  }
  TavoWord* GetLastItem();
  TavoWord* GetItemAt(int index) { return &found_.items[static_cast<std::size_t>(index)]; }
  int GetItemsNumber() const { return static_cast<int>(found_.items.size()); }

  // The numbering of a real word of this section. Asked word after word these take constant time.
  int GetWordNumber(const TavoWord* word) const { return word->GetNumber(); }  // in the section
  int GetWordSentence(const TavoWord* word) const;                             // in the document
  int GetWordParagraph(const TavoWord* word) const;                            // in the document
  int GetWordInSentence(const TavoWord* word) const;
  int GetWordInParagraph(const TavoWord* word) const;
  int GetSentenceInParagraph(const TavoWord* word) const;
  int IsWordStartingSentence(const TavoWord* word) const {
    return StartsAfter(found_.sentenceBreaks, word, wordInSentence_);
  }
  int IsWordStartingParagraph(const TavoWord* word) const {
    return StartsAfter(found_.paragraphBreaks, word, wordInParagraph_);
  }
  // Of the section's end, in the document: the position of the first plus the words less one, and
  // plus the breaks.
  int GetLastWordNumber() const { return wordPosition_ + GetWordsNumber() - 1; }
  int GetLastSentenceNumber() const { return sentencePosition_ + found_.sentenceBreaks.GetCount(); }
  int GetLastParagraphNumber() const {
    return paragraphPosition_ + found_.paragraphBreaks.GetCount();
  }
  // The words after the last break plus one; without any break all words of the section.
  int GetWordsInLastSentence() const { return WordsAfterLast(found_.sentenceBreaks); }
  int GetWordsInLastParagraph() const { return WordsAfterLast(found_.paragraphBreaks); }
  // Whether the section ends a sentence, a paragraph.
  int IsLastWordBreaksSentence() const { return EndsWith(found_.sentenceBreaks); }
  int IsLastWordBreaksParagraph() const { return EndsWith(found_.paragraphBreaks); }
  const BreakList& GetSentenceBreaks() const { return found_.sentenceBreaks; }
  const BreakList& GetParagraphBreaks() const { return found_.paragraphBreaks; }

  // Marks every real word and the section.
  void MarkAllWords();
  // The index of the first real word that is marked or has a marked part, or -1.
  int GetFirstMarked();

  // The items joined by single blanks where white space was: at most maxWords real words and fewer
  // than maxLength characters (negative: no limit), save that a first item too long for maxLength
  // is cut to exactly maxLength. wordsTaken receives the real words taken, a cut one included.
  std::string MakeWordFromContents(int maxWords, int maxLength, int* wordsTaken = nullptr);
  // The dictionary's key of the section as one expression: up to 16 words and 255 characters,
  // folded, with DICTIONARY_NOBREAKSPACE for every blank and at the end when there is none.
  std::string MakeExpression(int* wordsTaken = nullptr);

  // Drops the items; the contents stay and the section is not parsed.
  void Clear();

  // Editing. After any edit the section equals one that is parsed afresh from its contents with
  // its positions and counts on entry, save that marks stay (for a section that overrides
  // CreateWord: as far as its items do not depend on what stood before them).
  //
  // CutStart drops the first n real words and CutEnd the last n. The seam lies at white space: a
  // word that stays keeps the punctuation that adjoins it, and everything beyond that goes. When
  // every word is dropped nothing stays. n below 1 changes nothing. After CutStart the positions
  // and the counts on entry are those of the first word that stays, so that every word keeps its
  // numbers in the document.
  void CutStart(int n);
  void CutEnd(int n);
  // Appends other's text and items. With separate, one blank is put between the two where neither
  // side has white space; without it what meets at the seam is joined as if it had always stood
  // together. Takes time linear in other; other is parsed when need be.
  void AddSection(TavoSection& other, int separate);

  // While locked, a section is not printed. UnLock of the last lock calls OnFree, which may delete
  // the section: a section without an output must then have been made by new.
  void Lock() { ++lockCount_; }
  void UnLock();
  int IsLocked() const { return lockCount_ > 0; }

 protected:
  // For the constructor of a subclass that overrides neither CharType nor CreateWord: its sections
  // are cut by table like plain ones. Does not extend to classes derived from it.
  // Usage: CutsAsPlain(typeid(MySection)).
  void CutsAsPlain(const std::type_info& type) { plainType_ = &type; }
  // For an override of MarkContents: what the output prints in place of the contents.
  void SetMarkedContents(std::string marked) { markedContents_ = std::move(marked); }

 private:
  void ParseIfNeeded() {
    if (!parsed_) ParseContents();
  }
  void DropItems();

  // The two ways of cutting.
  void CutByCreateWord();
  void CutByTable();
  void ReserveItems(int cut);
  // Always part of the loop that calls them: a call for each item adds a third to the parse.
  [[gnu::always_inline]] inline void AppendPart(int start, int end, WordType type, int index);
  [[gnu::always_inline]] inline void AppendCut(int start, int end, WordType type, int itemNumber);
  [[gnu::always_inline]] inline void CountBreaksAfter(const RunScanner& scanner, int start, int end,
                                                      WordType type);

  // Joining items one by one.
  void Combine(std::optional<TavoWord>& pending, TavoWord&& item);
  void Commit(std::optional<TavoWord>& pending);
  void AppendItem(TavoWord&& item);
  std::vector<TavoWord> CopyItems(const TavoSection& other, int mode);
  std::vector<TavoWord> TakeBackTail(int seam);

  // Numbers and breaks.
  void CountItem(std::size_t index, bool endsSentence, bool endsParagraph);
  void CountBreaks(bool endsSentence, bool endsParagraph);
  void UncountLastItem();
  void Recount(std::size_t itemCount);
  bool EndsParagraph(const TavoWord& item) const;
  int WordsAfterLast(const BreakList& breaks) const;
  int EndsWith(const BreakList& breaks) const;
  static int StartsAfter(const BreakList& breaks, const TavoWord* word, int countOnEntry) {
    const int number = word->GetNumber();
    if (number < 1 && countOnEntry == 0) return 1;
    return breaks.GetLastUpTo(number) == number;
  }
  int CountWithin(const BreakList& breaks, const TavoWord* word, int countOnEntry) const;

  // Pointing items at the contents, and compounds at their parts.
  void PlaceItems();
  void LinkParts(std::size_t firstItem);
  void KeepItems(std::size_t first, std::size_t last);

  TavoOutput* output_ = nullptr;
  const TavoLangPack* pack_;
  std::string contents_;
  std::string markedContents_;
  int lockCount_ = 0;
  int wordPosition_ = 0;
  int sentencePosition_ = 0;
  int paragraphPosition_ = 0;
  int wordInSentence_ = 0;  // the counts on entry
  int wordInParagraph_ = 0;
  int sentenceInParagraph_ = 0;
  int sentenceBreaksAtParagraph_ = 0;  // how many there were at the last paragraph break
  FoundItems found_;
  int parsed_ = 0;
  int marked_ = 0;
  int breakOnNewLine_ = 1;
  int highlightCount_ = 0;
  const std::type_info* plainType_;
};

}  // namespace vemra
