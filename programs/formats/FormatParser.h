#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "Support/text/Input.h"
#include "Support/text/ParseFile.h"
#include "programs/formats/CodePage.h"
#include "programs/formats/DocumentEncoding.h"
#include "programs/formats/Markup.h"

namespace vemra {

// All that an input has not read yet, as one text, taken from it without copying when it is in one
// piece.
class RestOfInput {
 public:
  explicit RestOfInput(TavoInput& input);
  RestOfInput(const RestOfInput&) = delete;
  RestOfInput& operator=(const RestOfInput&) = delete;

  std::string_view GetText() const { return text_; }  // valid as long as this object

 private:
  TavoInput unread_;  // a copy that stays where input was, so that the text stays valid
  std::string joined_;
  std::string_view text_;
};

// What the document formats share: reading a document in whatever encoding it has, and handing over
// text in runs of bounded length. The Parse operations take text in the database's code page.
class FormatParser : public TavoParseFile {
 public:
  // The most bytes of a run; longer text is cut after white space, and within a word only when
  // that alone is longer.
  static constexpr std::size_t kMaxRun = 64 * 1024;

  // Both are loans for the life of the parser.
  FormatParser(TavoTHWrapper* wrapper, const CodePage& codePage);

  // path in the Windows form; any bytes, NUL included. 0 when the file cannot be read in full.
  int ParseFile(const std::string& path) override;
  // A document in memory, as it is in its file.
  int ParseDocument(std::string bytes);
  // Whether a document that is written keeps its markup, as far as that is safe. It does not unless
  // this is called.
  void KeepMarkup(bool keep) { keepsMarkup_ = keep; }

 protected:
  // Where the format may declare its encoding.
  virtual Declaration GetDeclaration() const = 0;

  const CodePage& GetCodePage() const { return codePage_; }
  // Hands over text with the current field list, control characters made blanks.
  void Deliver(std::string_view text);
  // Text that holds none but white space, with the markup within it; of text beyond kMaxRun that is
  // the markup of the first run.
  void DeliverClean(std::string_view text, SectionMarkup markup);
  // That of the section which is being created.
  SectionMarkup TakeSectionMarkup() { return std::exchange(markup_, {}); }

  // Whether markup goes to the output, be the text around it printable or not.
  bool WritesMarkup() const { return keepsMarkup_ && WritesDocument(GetHighlightWrapper()); }
  void WriteMarkup(std::string_view markup);
  // Text that is not the document's, such as the line ends between blocks: goes to the output when
  // text is written.
  void WriteLayout(std::string_view text);

 private:
  std::string& TakeRun(std::string_view& text);

  const CodePage& codePage_;
  bool keepsMarkup_ = false;
  SectionMarkup markup_;
  std::string run_;  // kept for its capacity
};

}  // namespace vemra
