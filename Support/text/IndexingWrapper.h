#pragma once

#include <cstdint>

#include "Support/Export.h"

namespace vemra {

// The whole interface to an indexing engine: plain functions that the engine supplies, and the
// number of the current text. The function on_NAME is called by the member NAME; one that is null
// is skipped. The order of the members is fixed. Texts and words are loans for the call.
struct SUPPORT_API TavoIndexingWrapper {
  // A line for the indexing log; level 3 is a data error.
  void (*on_AddMessage)(const char* text, unsigned long level) = nullptr;
  // Opens a new text and returns its number.
  std::uint32_t (*on_newtxtno)(unsigned short value) = nullptr;
  // Announce a new text to the text store and to the full word list.
  void (*on_addtext_newtext)(std::uint32_t textno) = nullptr;
  void (*on_fulllist_newtext)(std::uint32_t textno) = nullptr;
  // One occurrence of a word: NUL-terminated, folded, in the code page of the text. part is 1 for a
  // piece of a compound, which stands where its whole, just before it, stands, and for an
  // expression; else 0.
  void (*on_doword_addword)(const char* word, int field, std::uint32_t flags, std::uint32_t textno,
                            int part) = nullptr;
  // The title of the text: n bytes.
  void (*on_addhead)(const char* text, int n, std::uint32_t textno) = nullptr;
  // The stored text of the current text: n bytes.
  void (*on_addtext)(const char* text, std::uint32_t n) = nullptr;
  // Adds an index entry, NUL-terminated: its words, "@", and field numbers with values. Returns the
  // number of the text that the entry's words are added to.
  std::uint32_t (*on_addentry)(unsigned char* entry) = nullptr;
  // The next word starts a paragraph (and with it a sentence), or a sentence.
  void (*on_fulllist_newparagraph)() = nullptr;
  void (*on_fulllist_newsentence)() = nullptr;
  // The sort key of the text: for each field from 0 on its key, then the byte 19.
  void (*on_makesort_addkey)(std::uint32_t textno, const char* key) = nullptr;
  // Never called by this library; for the engine's own use.
  void (*on_reserved1)() = nullptr;
  void (*on_reserved2)() = nullptr;
  std::uint32_t textno = 0;

  void AddMessage(const char* text, unsigned long level) const;
  // Stores the number as that of the current text. Without a callback the number stays.
  std::uint32_t newtxtno(unsigned short value);
  void addtext_newtext() const;
  void fulllist_newtext() const;
  void fulllist_newtext(std::uint32_t text) const;
  void doword_addword(const char* word, int field, std::uint32_t flags, int part) const {
    doword_addword(textno, word, field, flags, part);
  }
  void doword_addword(std::uint32_t text, const char* word, int field, std::uint32_t flags,
                      int part) const {
    if (on_doword_addword != nullptr) on_doword_addword(word, field, flags, text, part);
  }
  void addhead(const char* text, int n) const;
  void addtext(const char* text, std::uint32_t n) const;
  std::uint32_t addentry(unsigned char* entry) const;  // 0 without a callback
  void fulllist_newparagraph() const;
  void fulllist_newsentence() const;
  void makesort_addkey(const char* key) const;
};

}  // namespace vemra
