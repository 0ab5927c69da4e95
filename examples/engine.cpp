// Indexes two documents with an engine of a few lines, and prints the index.

#include <cstdio>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "examples/Notes.h"

namespace {

// The callbacks are plain functions, so that an engine keeps its state itself.
struct Engine {
  struct Place {
    std::uint32_t text;
    int position;
  };
  std::map<std::string, std::vector<Place>> places;
  std::uint32_t texts = 0;
  int position = 0;  // of the last word of the current text
} engine;

vemra::TavoIndexingWrapper MakeCallbacks() {
  vemra::TavoIndexingWrapper callbacks;
  callbacks.on_AddMessage = [](const char* text, unsigned long) { std::fputs(text, stderr); };
  callbacks.on_newtxtno = [](unsigned short) { return ++engine.texts; };
  callbacks.on_fulllist_newtext = [](std::uint32_t) { engine.position = 0; };
  callbacks.on_doword_addword = [](const char* word, int, std::uint32_t, std::uint32_t text,
                                   int part) {
    if (!part) ++engine.position;  // a part of a compound stands where the compound does
    engine.places[word].push_back({text, engine.position});
  };
  return callbacks;
}

class NotesIndexer : public notes::NotesParser {
 public:
  NotesIndexer(vemra::TavoTHWrapper* wrapper, vemra::TavoIndex& index)
      : NotesParser(wrapper), index_(index) {
    SetIndexing(1);
    EnableWrite(index.StoresText());
  }

 protected:
  void HandleSection(vemra::TavoSection* section) override {
    const std::unique_ptr<vemra::TavoSection> owned(section);
    vemra::CTavoFileINI& definitions = GetWrapper()->GetFileINI();
    for (vemra::POSITION at = GetFieldList().GetStartPosition(); at != 0;) {
      definitions.AddToTitle(GetFieldList().GetNextFieldno(at), section);
    }
    index_.IndexSection(section, GetFieldList());
  }

 private:
  vemra::TavoIndex& index_;
};

}  // namespace

int main() {
  notes::NotesWrapper wrapper;
  vemra::TavoIndexingWrapper callbacks = MakeCallbacks();
  vemra::TavoIndex index(wrapper, callbacks);
  NotesIndexer indexer(&wrapper, index);
  for (const char* document :
       {"= Tea\nFreshly-boiled water.\n", "= Coffee\nWater, not boiled.\n"}) {
    index.OnDocumentStart("note");
    indexer.Parse(document);
    index.OnDocumentEnd(indexer.GetOutput(), wrapper.GetLangPack());
  }
  for (const auto& [word, places] : engine.places) {
    std::printf("%s:", word.c_str());
    for (const Engine::Place& place : places) std::printf(" %u/%d", place.text, place.position);
    std::printf("\n");
  }
  return 0;
}
