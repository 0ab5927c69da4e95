#include "programs/engine/HitSearch.h"

#include <algorithm>
#include <tuple>

#include "Support/text/ParseFile.h"
#include "Support/text/Section.h"

namespace vemra::engine {
namespace {

bool IsAmong(const TavoWord& word, const std::vector<std::string>& words,
             const TavoLangPack& pack) {
  std::string folded = word.GetStriptWord();
  pack.ToIndex(folded);
  return std::find(words.begin(), words.end(), folded) != words.end();
}

}  // namespace

void HitSearch::MarkWords(TavoSection& section, const CTavoFieldList& fields) {
  const CTavoFieldList& own = parser_ != nullptr ? parser_->GetFieldList() : fields;
  POSITION position = own.GetStartPosition();
  if (position == 0) return;
  const int fieldno = own.GetNextFieldno(position);
  int& seen = wordsSeen_[static_cast<std::size_t>(fieldno)];
  const int first = seen;
  seen += section.GetWordsNumber();

  auto hit = std::lower_bound(
      hits_.begin(), hits_.end(), std::tie(fieldno, first),
      [](const Hit& a, const auto& place) { return std::tie(a.fieldno, a.position) < place; });
  for (; hit != hits_.end() && hit->fieldno == fieldno && hit->position < seen; ++hit) {
    if (hit->sectionWords > 0) {
      MarkFirst(section, hit->sectionWords);
    } else {
      Mark(*section.GetWordAt(hit->position - first), *hit->words, *section.GetLangPack());
    }
  }
}

void HitSearch::MarkFirst(TavoSection& section, int words) {
  for (int i = 0; i < std::min(words, section.GetWordsNumber()); ++i) section.GetWordAt(i)->Mark();
}

void HitSearch::Mark(TavoWord& word, const std::vector<std::string>& words,
                     const TavoLangPack& pack) {
  if (word.GetType() != TavoWord::kCompound || IsAmong(word, words, pack)) {
    word.Mark();
    return;
  }
  for (TavoWord* part = word.GetFirstWord(); part != nullptr; part = word.GetNextWord(part)) {
    if (part->IsRealWord() != 0 && IsAmong(*part, words, pack)) part->Mark();
  }
}

}  // namespace vemra::engine
