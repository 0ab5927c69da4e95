#pragma once

#include <sstream>
#include <string>
#include <utility>

#include "Support/text/IndexingWrapper.h"

namespace vemra::test {

// An index engine that writes down every call, parted by a separator. A word is WORD:FIELD, with
// "+" before it for part 1, ",FLAGS" in hexadecimal unless they are 4, and "@TEXT" unless it goes
// to the current text. Texts are numbered from 1, those of entries from 101. One engine at a time.
class RecordingEngine : public TavoIndexingWrapper {
 public:
  explicit RecordingEngine(char separator = ' ') : separator_(separator) {
    engine_ = this;
    on_AddMessage = [](const char* text, unsigned long level) {
      Log() << "!" << level << "(" << text << ")";
    };
    on_newtxtno = [](unsigned short value) {
      Log() << "new(" << value << ")";
      return ++engine_->texts_;
    };
    on_addtext_newtext = [](std::uint32_t text) { Log() << "store" << text; };
    on_fulllist_newtext = [](std::uint32_t text) { Log() << "list" << text; };
    on_doword_addword = [](const char* word, int field, std::uint32_t flags, std::uint32_t text,
                           int part) {
      std::ostream& log = Log() << (part ? "+" : "") << word << ":" << field;
      if (flags != 4) log << "," << std::hex << flags << std::dec;
      if (text != engine_->textno) log << "@" << text;
    };
    on_addhead = [](const char* text, int n, std::uint32_t number) {
      Log() << "head" << number << "(" << std::string(text, static_cast<std::size_t>(n)) << ")";
    };
    on_addtext = [](const char* text, std::uint32_t n) {
      Log() << "text(" << std::string(text, n) << ")";
    };
    on_addentry = [](unsigned char* entry) {
      Log() << "entry(" << reinterpret_cast<char*>(entry) << ")";
      return ++engine_->entries_;
    };
    on_fulllist_newparagraph = [] { Log() << "P"; };
    on_fulllist_newsentence = [] { Log() << "S"; };
    on_makesort_addkey = [](std::uint32_t text, const char* key) {
      Log() << "key" << text << "(" << key << ")";
    };
  }

  // The calls since the last time.
  std::string Take() {
    const std::string calls = std::exchange(log_, std::ostringstream()).str();
    return calls.empty() ? calls : calls.substr(1);
  }

 private:
  static std::ostream& Log() { return engine_->log_ << engine_->separator_; }
  static inline RecordingEngine* engine_ = nullptr;

  char separator_;
  std::ostringstream log_;
  std::uint32_t texts_ = 0;
  std::uint32_t entries_ = 100;
};

}  // namespace vemra::test
