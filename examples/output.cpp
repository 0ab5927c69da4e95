// Shows a document with its hits, and a summary around the first of them.

#include <cstdio>
#include <memory>
#include <string>

#include "examples/Notes.h"

namespace {

// Finds one word, whatever its case.
class WordSearch : public vemra::TavoHighlightSearch {
 public:
  explicit WordSearch(std::string word) : word_(std::move(word)) {}

  void MarkWords(vemra::TavoSection& section, const vemra::CTavoFieldList&) override {
    for (vemra::TavoWord* word = section.GetFirstWord(); word != nullptr;
         word = section.GetNextWord(word)) {
      if (section.GetLangPack()->CompareNoCase(word->GetStriptView(), word_)) word->Mark();
    }
  }
  void Finish() override {}

 private:
  std::string word_;
};

// Prints each hit as "[number]word".
class NumberedSection : public vemra::TavoSection {
 public:
  using TavoSection::TavoSection;

  void MarkContents() override {
    std::string marked = GetContents();
    int hits = 0;
    for (const vemra::TavoTextRange& hit : vemra::GetMarkedRanges(*this)) {
      const std::string number = "[" + std::to_string(GetCurrentHighlightCount() + ++hits) + "]";
      const std::size_t added = marked.size() - GetContents().size();
      marked.insert(static_cast<std::size_t>(hit.start) + added, number);
    }
    SetInitialHighlightCount(GetCurrentHighlightCount() + hits);
    SetMarkedContents(marked);
  }
};

class NotesHighlighter : public notes::NotesParser {
 public:
  NotesHighlighter(vemra::TavoTHWrapper* wrapper, vemra::TavoHighlightWrapper* request)
      : NotesParser(wrapper) {
    SetHighlightWrapper(request);
  }

 protected:
  void HandleSection(vemra::TavoSection* section) override { HighlightSection(section, 1); }
  std::unique_ptr<vemra::TavoSection> CreateSection(const std::string& text) override {
    return std::make_unique<NumberedSection>(GetOutput(), text, GetWrapper()->GetLangPack());
  }
};

}  // namespace

int main() {
  const char* const document =
      "= Tea\n"
      "Boil fresh water. Pour the water over the leaves\n"
      "and wait.\n";
  notes::NotesWrapper wrapper;
  WordSearch search("water");

  vemra::TavoHighlightWrapper whole(vemra::TavoHighlightWrapper::kWholeDocument, &search);
  NotesHighlighter shown(&wrapper, &whole);
  shown.Parse(document);
  std::printf("%s", shown.GetOutput()->GetOutputBuffer().c_str());

  vemra::TavoHighlightWrapper summary(vemra::TavoHighlightWrapper::kAroundFirstHit, &search, 4);
  NotesHighlighter summarised(&wrapper, &summary);
  summarised.Parse(document);
  std::printf("...%s...\n", summary.GetSummary()->GetContents().c_str());
  return 0;
}
