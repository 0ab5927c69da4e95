#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "Support/Export.h"

namespace vemra {

// Reads a text word by word or stretch by stretch: queries, commands, documents. Expanded text can
// be pushed in front of what is unread; while any is left, the scanner works on it alone (expanded
// mode), then goes on in the given text. Used by one thread.
//
// Every byte is ordinary, NUL included. At the end of the text everything is empty. No operation
// reports an error otherwise than by its result.
class SUPPORT_API TavoInput {
 public:
  TavoInput();
  // A copy shares the given text and reads it on its own.
  TavoInput(const TavoInput& other) = default;
  TavoInput& operator=(const TavoInput& other) = default;

  virtual ~TavoInput();
  // The character sets: " \n\r\t", " \n\r\t()|?*,+" and "()|?*,+" here. A character of the second
  // that is in neither of the others would stop CutWord for ever.
  virtual const char* GetWhiteSpace() const;
  virtual const char* GetBreakWordAt() const;  // a word ends before these
  virtual const char* GetBreakIsWord() const;  // each of these is a word by itself

  // Starts afresh on text; expanded text is dropped.
  void SetString(std::string text);
  // Pushes text in front of everything unread.
  void AddExpandedString(const std::string& text);
  // When set, every word, string and stretch handed out is lower-cased (ASCII letters).
  void SetLowerCase(int lowerCase) { lowerCase_ = lowerCase; }

  // Skips white space in the current mode, which does not reach from the expanded text into the
  // given text, and remembers it.
  void EatWhiteSpace();
  // What the last EatWhiteSpace skipped; forgets it.
  std::string GetWhiteSpaceCut();

  // The next word: one operator character, or everything up to the next break character; empty
  // when white space is next. Eats the white space that follows, which for a word that ended the
  // expanded text is that of the given text.
  std::string CutWord();
  // The same without consuming anything.
  std::string GetFirstWord() const;
  // The next character, not consumed; NUL at the end.
  char GetFirstChar() const;
  // Whether all is read.
  int AtEOF() const { return IsExpanded() == 0 && cursor_ == given_->size(); }
  // Consumes n characters, of the expanded text and then of the given text, at most all.
  void MoveOn(int n);

  // The text up to the next terminator, which is itself consumed when consume is set; the rest of
  // the input when there is none. Reaches from the expanded text into the given text; a string as
  // terminator is only found within one of them, and an empty one at once.
  std::string GetUpTo(char terminator, int consume);
  std::string GetUpTo(const std::string& terminator, int consume);

  // A quoted string, in single or double quotes and including them: result 1, and blanks after it
  // stay. Without its closing quote: result 0, out unchanged, nothing consumed, save that a quote
  // which began in expanded text consumes that. When no quote is next: with quotedOnly result 0,
  // else out is CutWord() and the result 1.
  int GetQuotedStringOrWord(std::string& out, int quotedOnly);

  // For messages: the unread given text, cut to maxLength characters with "..." for its last three.
  std::string GetContext(int maxLength) const;

  // For readers of large documents: what is unread in the current mode, without copying it. Valid
  // until text is set, pushed or consumed.
  std::string_view GetUnread() const;

 private:
  int IsExpanded() const { return expandedCursor_ < expanded_.size(); }
  std::string_view UnreadGiven() const { return std::string_view(*given_).substr(cursor_); }
  void Consume(std::size_t n);  // at most the unread text of the current mode
  std::size_t FirstWordLength() const;
  std::string Cased(std::string text) const;
  template <typename Terminator>
  std::string TakeUpTo(const Terminator& terminator, std::size_t length, int consume);

  std::shared_ptr<const std::string> given_;
  std::size_t cursor_ = 0;
  std::string expanded_;
  std::size_t expandedCursor_ = 0;
  int lowerCase_ = 0;
  std::string lastWhiteSpace_;
};

}  // namespace vemra
