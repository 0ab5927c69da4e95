#include "programs/engine/EngineCallbacks.h"

#include <cstdint>
#include <cstdlib>
#include <utility>

#include "programs/engine/IndexWriter.h"

namespace vemra::engine {
namespace {

// The words of sections carry this flag; an expression is sent without it.
constexpr std::uint32_t kSectionWord = 4;
// No text has this number: words sent under it are those of an index entry.
constexpr std::uint32_t kNoText = 0;

// Apart from the messages, whose destructor would make every call for a word check whether there is
// one yet.
IndexWriter*& CurrentWriter() {
  static IndexWriter* writer = nullptr;
  return writer;
}

EngineCallbacks::MessageFunction& CurrentOnMessage() {
  static EngineCallbacks::MessageFunction onMessage;
  return onMessage;
}

// A table that outlived its object is a fault of the program.
IndexWriter& GetWriter() {
  IndexWriter* writer = CurrentWriter();
  if (writer == nullptr) std::abort();
  return *writer;
}

void AddMessage(const char* text, unsigned long level) {
  CurrentOnMessage()(text, level);
}

std::uint32_t BeginText(unsigned short) {
  return GetWriter().BeginText();
}

void AddWord(const char* word, int field, std::uint32_t flags, std::uint32_t textno, int part) {
  if (textno == kNoText) return;
  IndexWriter& writer = GetWriter();
  if ((flags & kSectionWord) == 0) {
    writer.AddExpression(field, word);
  } else if (part == 0) {
    writer.AddWord(field, word);
  } else {
    writer.AddAtSamePosition(field, word);
  }
}

void AddTitle(const char* text, int n, std::uint32_t) {
  GetWriter().SetTitle({text, static_cast<std::size_t>(n)});
}

std::uint32_t RefuseEntry(unsigned char*) {
  return kNoText;
}

void StartParagraph() {
  GetWriter().StartParagraph();
}

void StartSentence() {
  GetWriter().StartSentence();
}

void AddSortKey(std::uint32_t, const char* key) {
  GetWriter().SetSortKey(key);
}

}  // namespace

EngineCallbacks::EngineCallbacks(IndexWriter& writer, MessageFunction onMessage) {
  CurrentWriter() = &writer;
  CurrentOnMessage() = std::move(onMessage);
  table_.on_AddMessage = AddMessage;
  table_.on_newtxtno = BeginText;
  table_.on_doword_addword = AddWord;
  table_.on_addhead = AddTitle;
  table_.on_addentry = RefuseEntry;
  table_.on_fulllist_newparagraph = StartParagraph;
  table_.on_fulllist_newsentence = StartSentence;
  table_.on_makesort_addkey = AddSortKey;
}

EngineCallbacks::~EngineCallbacks() {
  CurrentWriter() = nullptr;
  CurrentOnMessage() = nullptr;
}

}  // namespace vemra::engine
