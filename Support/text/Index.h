#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "Support/Export.h"
#include "Support/definition/FieldList.h"
#include "Support/text/FoldedText.h"

namespace vemra {

class CTavoField;
class CTavoFileINI;
class TavoLangPack;
class TavoOutput;
class TavoSection;
class TavoTHWrapper;
class TavoWord;
struct TavoIndexingWrapper;

// The indexing sink: decides what of each section goes to the engine, and calls it. An indexing
// parser's section handler gives the section to CTavoFileINI::AddToTitle for each of its fields and
// then to IndexSection. Errors in the data of a document are reported through AddMessage with level
// 3, and the document is still indexed. Used by one thread at a time.
class SUPPORT_API TavoIndex {
 public:
  // Bytes of a sort key, unless set otherwise: enough to tell titles apart, and small in the index.
  static constexpr int kDefaultMaxSortKeySize = 128;

  // The definitions and the engine's callbacks are loans for the life of the object.
  TavoIndex(TavoTHWrapper& wrapper, TavoIndexingWrapper& engine);
  TavoIndex(CTavoFileINI& definitions, TavoIndexingWrapper& engine);
  TavoIndex(const TavoIndex&) = delete;
  TavoIndex& operator=(const TavoIndex&) = delete;
  ~TavoIndex();

  // Digits of a numeric sort key and the most bytes of any other, per field.
  int GetMaxSortKeySize() const { return maxSortKeySize_; }
  void SetMaxSortKeySize(int size) { maxSortKeySize_ = size > 0 ? size : 0; }
  // Whether the engine stores the text of documents; off at first.
  bool StoresText() const { return storesText_; }
  void SetStoreText(bool store) { storesText_ = store; }

  // Begins a document: forgets what an earlier one has left, opens the text with newtxtno(0) and
  // announces it. The document's name has no use yet.
  void OnDocumentStart(const std::string& name);
  // Ends it: sort key, entries, title, and the stored text, which is what output's buffer holds.
  // output is null when nothing was written.
  void OnDocumentEnd(TavoOutput* output, const TavoLangPack* pack);

  // Indexes a section for the fields of the list, none for an empty one: sort keys and entries for
  // every field that asks for them, words to the first field only, expressions to each field that
  // asks for them. A section without text counts like any other, so a format does not deliver white
  // space alone. The two integers have no meaning yet; pass 0.
  void IndexSection(TavoSection* section, const CTavoFieldList& fields, int reserved1 = 0,
                    int reserved2 = 0);
  void IndexWord(const char* word, int field, std::uint32_t flags, int part);
  void IndexWord(std::uint32_t textno, const char* word, int field, std::uint32_t flags, int part);

  // Adds to the field's sort key. The first value of a numeric field wins: a decimal number up to
  // 4294967295 with what surrounds it as for strtoul; any other is reported and leaves no key.
  void AddToSort(int field, const CTavoField* definition, const std::string& text);

  // Index entries: words, "@", and what they refer to by field names ("name:value;").
  void AddEntryString(int field, const std::string& text);
  // The entry's text; empty, with *field unchanged, when there is no such entry.
  std::string GetEntryString(int i, int* field) const;
  int GetEntriesCount() const { return static_cast<int>(entries_.size()); }
  void ClearEntriesArray() { entries_.clear(); }
  // Gives the entries to the engine, with their words, and forgets them.
  void TreatEntries(TavoOutput* output, const TavoLangPack* pack);

  // Texts begun since the last reset.
  int GetTextCounter() const { return textCounter_; }
  void ResetTextCounter() { textCounter_ = 0; }
  // Started in the current document.
  int GetParagraphCount() const { return paragraphCount_; }
  int GetSentenceCount() const { return sentenceCount_; }

 private:
  std::uint32_t GetRules(int field) const;
  CTavoFieldList FieldsWith(const CTavoFieldList& fields, std::uint32_t rules) const;
  void AddSortKeysAndEntries(TavoSection& section, const CTavoFieldList& fields);
  void IndexWords(TavoSection& section, int field);
  void StartWord(const TavoSection& section, const TavoWord& word);
  void IndexFolded(const TavoWord& word, int field, int part);
  void IndexParts(const TavoWord& compound, int field);
  void IndexExpression(TavoSection& section, const CTavoFieldList& fields);
  void AddNumberToSort(std::string& key, const CTavoField& definition, const std::string& text);
  void SendSortKey();
  void TreatEntry(int i, TavoOutput* output, const TavoLangPack* pack);
  void IndexEntryWords(const std::string& words, int field, std::uint32_t textno,
                       TavoOutput* output, const TavoLangPack* pack);
  void SendText(TavoOutput& output);
  void ReportDataError(const std::string& message) const;

  CTavoFileINI& definitions_;
  TavoIndexingWrapper& engine_;
  int paragraphCount_ = 0;
  int sentenceCount_ = 0;
  std::map<int, std::string> sortKeys_;  // by field number
  int sortFieldEnd_ = 0;                 // the highest field with a sort key, plus 1
  int maxSortKeySize_ = kDefaultMaxSortKeySize;
  std::vector<std::string> entries_;
  int textCounter_ = 0;
  bool storesText_ = false;
  FoldedText folded_;  // the section being indexed
};

}  // namespace vemra
