#include "Support/text/HighlightWrapper.h"

#include "Support/text/HighlightSearch.h"
#include "Support/text/LangPack.h"
#include "Support/text/Section.h"

namespace vemra {

TavoHighlightWrapper::TavoHighlightWrapper(Mode mode, TavoHighlightSearch* search, int maxWords,
                                           const TavoLangPack* pack)
    : mode_(mode),
      search_(search),
      summary_(std::make_unique<TavoSection>(nullptr, "", pack)),
      maxWords_(maxWords) {}

TavoHighlightWrapper::~TavoHighlightWrapper() = default;

int TavoHighlightWrapper::AddSection(TavoSection* section, int mayQueue) {
  std::unique_ptr<TavoSection> owned(section);
  const int enough = IsEnoughWith(*section);
  if (mayQueue && (section->IsLocked() || !queue_.empty())) {
    queue_.push_back(std::move(owned));
  } else {
    AddToSection(*section);
    enough_ = enough;
  }
  return enough;
}

int TavoHighlightWrapper::IsEnoughWith(TavoSection& section) const {
  if (mode_ == kAroundFirstHit) return section.GetFirstMarked() >= 0 ? 1 : 0;
  return summary_->GetWordsNumber() + section.GetWordsNumber() >= maxWords_ ? 1 : 0;
}

// A blank at the seam keeps the words of two sections apart.
void TavoHighlightWrapper::AddToSection(TavoSection& section) {
  summary_->AddSection(section, 1);
}

void TavoHighlightWrapper::StopHighlight() {
  if (mode_ != kFirstWords && search_ != nullptr) search_->Finish();
  if (mode_ == kAroundFirstHit) {
    AddQueued();
    TruncateSection();
  }
  queue_.clear();
  enough_ = 0;
}

void TavoHighlightWrapper::AddQueued() {
  for (; !queue_.empty() && !enough_; queue_.pop_front()) {
    AddSection(queue_.front().release(), 0);
  }
}

void TavoHighlightWrapper::TruncateSection() {
  if (mode_ == kAroundFirstHit) {
    const int firstMarked = summary_->GetFirstMarked();
    if (firstMarked < 0) return;
    if (firstMarked > maxWords_ / 2) summary_->CutStart(firstMarked - maxWords_ / 2);
  }
  if (summary_->GetWordsNumber() > maxWords_) {
    summary_->CutEnd(summary_->GetWordsNumber() - maxWords_);
  }
}

void TavoHighlightWrapper::ClearSummary() {
  summary_->SetContents("");
}

}  // namespace vemra
