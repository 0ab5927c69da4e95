#include "Support/text/ViewSection.h"

#include <typeinfo>
#include <utility>

#include "Support/text/MarkedRanges.h"
#include "Support/text/ViewMarks.h"

namespace vemra {

TavoViewSection::TavoViewSection(TavoOutput* output, std::string contents, const TavoLangPack* pack)
    : TavoSection(output, std::move(contents), pack) {
  CutsAsPlain(typeid(TavoViewSection));
}

void TavoViewSection::MarkContents() {
  const std::vector<TavoTextRange> hits = GetMarkedRanges(*this);
  std::string marked;
  int copied = 0;
  const auto copyUpTo = [&](int end) {
    marked.append(GetContents(), static_cast<std::size_t>(copied),
                  static_cast<std::size_t>(end - copied));
    copied = end;
  };
  for (const TavoTextRange& hit : hits) {
    copyUpTo(hit.start);
    marked += viewmarks::Make(viewmarks::kHitStart);
    copyUpTo(hit.GetEnd());
    marked += viewmarks::Make(viewmarks::kHitEnd);
  }
  copyUpTo(GetContentsLength());
  SetInitialHighlightCount(GetCurrentHighlightCount() + static_cast<int>(hits.size()));
  SetMarkedContents(std::move(marked));
}

}  // namespace vemra
