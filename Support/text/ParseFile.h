#pragma once

#include <memory>
#include <string>

#include "Support/Export.h"
#include "Support/definition/FieldList.h"

namespace vemra {

class TavoHighlightWrapper;
class TavoInput;
class TavoNotification;
class TavoOutput;
class TavoSection;
class TavoTHWrapper;

// The base of every document parser. A format derives from it and reads the document in ParseInput,
// calling OnContents for each run of text that belongs to one set of fields; a purpose (indexing,
// highlighting, a summary) derives from the format and uses the finished sections in HandleSection.
// The driver numbers words, sentences and paragraphs through the document, so that a text gets the
// same numbers however the format cuts it into runs at white space, as long as each run has a word.
// Kept: the sentence in its paragraph may differ, where a mark that ends a sentence stands before
// the first word of the paragraph.
// Belongs to one thread at a time. A parser takes any number of documents, also after one whose
// parse has thrown.
class SUPPORT_API TavoParseFile {
 public:
  // wrapper is a loan for the life of the parser.
  explicit TavoParseFile(TavoTHWrapper* wrapper);
  TavoParseFile(const TavoParseFile&) = delete;
  TavoParseFile& operator=(const TavoParseFile&) = delete;
  virtual ~TavoParseFile();

  // Parse a document. The result is the format's: 1, or 0 when the document cannot be parsed. At
  // the end of the input, also when the format throws, the highlighting is stopped.
  virtual int Parse(const char* text);
  virtual int Parse(TavoInput* input);
  // 0, with nothing parsed and nothing changed, when the file cannot be read in full. The text ends
  // at the first NUL; a format whose files may hold one overrides this and uses ReadDocument.
  virtual int ParseFile(const std::string& path);
  // Asks the format to stop at its next opportunity and notifies of the reason. Holds until the
  // next text starts.
  virtual void StopParsing(const std::string& reason);
  virtual void DeleteOutput();

 protected:
  virtual std::unique_ptr<TavoOutput> CreateOutput();
  virtual std::unique_ptr<TavoInput> CreateInput();

 public:
  // The format calls them where a document ends and starts. Both return 1.
  virtual int OnEnd();
  virtual int OnStart();

 protected:
  // Uses a section that OnContents has parsed and numbered, and takes it over. GetFieldList gives
  // its fields.
  virtual void HandleSection(TavoSection* section) = 0;

 public:
  // A run of text, in the database's code page, with the current field list. The driver makes a
  // section of it and hands that on. A NUL ends the text.
  virtual void OnContents(std::string& text);

 protected:
  virtual void Notify(const char* message);
  // Reads a document: calls OnStart, then SetFieldList and OnContents for each run of text, and
  // OnEnd; stops soon after DoStopParsing turns true. Markup goes to the output when IsWrite holds.
  virtual int ParseInput(TavoInput* input) = 0;

 public:
  // The fields of the text that follows. Text is printable unless one of them has the rule
  // "NOTEXT".
  virtual void SetFieldList(const CTavoFieldList& fields);

 protected:
  virtual std::unique_ptr<TavoSection> CreateSection(const std::string& text);

 public:
  // A new text begins: empties the output, numbers from the start, and text is printable.
  virtual void OnTextStart();

  TavoTHWrapper* GetWrapper() const { return wrapper_; }
  const CTavoFieldList& GetFieldList() const { return fields_; }  // not expanded
  TavoOutput* GetOutput();                                        // created on demand, a loan
  // A loan until another is set; null for none.
  void SetNotification(TavoNotification* notification) { notification_ = notification; }
  // A loan until another is set; null for none. Text is written only without one, or in its mode 0.
  void SetHighlightWrapper(TavoHighlightWrapper* wrapper);
  TavoHighlightWrapper* GetHighlightWrapper() const { return highlight_; }

  int IsIndexing() const { return indexing_; }
  void SetIndexing(int indexing) { indexing_ = indexing; }
  // Whether text and markup go to the output now.
  int IsWrite() const { return enableWrite_ != 0 && printable_ != 0 ? 1 : 0; }
  void EnableWrite(int enable = 1) { enableWrite_ = enable; }
  // While sections are disabled, text given to OnContents is dropped.
  int AreSectionsEnabled() const { return sectionsEnabled_; }
  void EnableSections(int enable) { sectionsEnabled_ = enable; }
  // The next section with words starts a paragraph.
  void SetNewParagraph() { counters_.newParagraph = 1; }
  // Whether a line feed or carriage return ends a paragraph; 0 at the start of every text.
  void SetBreakOnNewLine(int breakOnNewLine) { counters_.breakOnNewLine = breakOnNewLine; }
  int DoStopParsing() const { return stop_; }
  // Whether a Parse operation is under way.
  int IsParsing() const { return parsing_ > 0 ? 1 : 0; }
  const std::string& GetStopReason() const { return reason_; }  // empty unless stopped

  // Numbered so far in the current text.
  int GetLastWordNumber() const { return counters_.lastWord; }
  int GetSentenceNumber() const { return counters_.sentence; }
  int GetParagraphNumber() const { return counters_.paragraph; }

  // Take the section over. HighlightSection has the search mark its words, except in mode 1, and
  // then prints it or, without print, deletes it. PrintHighlightedSection writes it to the output
  // when IsWrite holds, or in modes 1 and 2 adds it to the summary, and stops the parse when that
  // has enough. A section that is not used but is still locked by the search goes when unlocked.
  void HighlightSection(TavoSection* section, int print);
  void PrintHighlightedSection(TavoHighlightWrapper* wrapper, TavoSection* section);

 protected:
  // The whole file, byte for byte; 0 when it cannot be read in full.
  static int ReadDocument(const std::string& path, std::string& bytes);
  // Whether the document itself is written, not a summary of it.
  static bool WritesDocument(const TavoHighlightWrapper* wrapper);

 private:
  // The place of the next section in the current text. Words are numbered from 1.
  struct Counters {
    int lastWord = 0;
    int sentence = 0;
    int paragraph = 0;
    int wordInSentence = 0;
    int wordInParagraph = 0;
    int sentenceInParagraph = 0;
    int breakOnNewLine = 0;
    int newParagraph = 0;
    int endedSentence = 0;
    int endedParagraph = 0;
  };

  void PlaceSection(TavoSection& section) const;
  void CountSection(TavoSection& section);
  void MarkWords(TavoSection& section);
  void StopHighlighting();

  TavoTHWrapper* wrapper_;
  int printable_ = 1;
  int indexing_ = 0;
  std::unique_ptr<TavoOutput> output_;
  std::string reason_;
  TavoNotification* notification_ = nullptr;
  TavoHighlightWrapper* highlight_ = nullptr;
  int sectionsEnabled_ = 1;
  Counters counters_;
  CTavoFieldList fields_;
  int stop_ = 0;
  int parsing_ = 0;  // parses under way, one within the other
  int enableWrite_ = 1;
};

}  // namespace vemra
