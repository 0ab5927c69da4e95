// Prints where each word of a document stands: what a parser makes of its text.

#include <cstdio>
#include <memory>

#include "examples/Notes.h"

namespace {

class WordLister : public notes::NotesParser {
 public:
  using NotesParser::NotesParser;

 protected:
  void HandleSection(vemra::TavoSection* section) override {
    const std::unique_ptr<vemra::TavoSection> owned(section);
    vemra::POSITION first = GetFieldList().GetStartPosition();
    const int field = GetFieldList().GetNextFieldno(first);
    for (const vemra::TavoWord* word = section->GetFirstWord(); word != nullptr;
         word = section->GetNextWord(word)) {
      std::printf("field %d, word %d, sentence %d, paragraph %d: %s\n", field,
                  section->GetWordPosition() + word->GetNumber(), section->GetWordSentence(word),
                  section->GetWordParagraph(word), word->GetStriptWord().c_str());
    }
  }
};

}  // namespace

int main() {
  notes::NotesWrapper wrapper;
  WordLister lister(&wrapper);
  const int parsed = lister.Parse(
      "= Tea\n"
      "Boil fresh water. Wait\n"
      "a minute.\n"
      "\n"
      "Pour.\n");
  return parsed ? 0 : 1;
}
