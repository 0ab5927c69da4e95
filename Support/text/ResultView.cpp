#include "Support/text/ResultView.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <utility>

#include "Support/text/FindText.h"
#include "Support/text/LangPack.h"

namespace vemra {

namespace {

constexpr std::array kZoomSteps = {CTavoResultView::kSmallestZoom,
                                   33,
                                   50,
                                   67,
                                   75,
                                   80,
                                   90,
                                   100,
                                   110,
                                   125,
                                   150,
                                   175,
                                   200,
                                   250,
                                   300,
                                   400,
                                   CTavoResultView::kLargestZoom};

}  // namespace

CTavoResultView::CTavoResultView(TavoViewOwner* owner)
    : owner_(owner), pack_(TavoLangPack::GetDefault()) {}

CTavoResultView::~CTavoResultView() = default;

void CTavoResultView::ReplaceContents(TavoViewDocument document, const TavoLangPack* pack) {
  document_ = std::move(document);
  pack_ = pack != nullptr ? pack : TavoLangPack::GetDefault();
  selection_ = TavoTextRange();
  OnChange(kContentsChanged);
}

void CTavoResultView::Select(const TavoTextRange& range) {
  const auto inside = [this](std::int64_t position) {
    return static_cast<int>(std::clamp<std::int64_t>(position, 0, document_.GetLength()));
  };
  const int start = inside(range.start);
  const int end = inside(std::int64_t{range.start} + range.length);
  const TavoTextRange selection{.start = start, .length = std::max(end - start, 0)};
  if (selection == selection_) return;
  selection_ = selection;
  OnChange(kSelectionChanged);
}

int CTavoResultView::GoToHit(int hit) {
  if (hit < 0 || hit >= document_.GetHitsNumber()) return 0;
  Select(document_.GetHit(hit));
  return 1;
}

int CTavoResultView::GoToNextHit() {
  return GoToHit(document_.GetHitFrom(selection_.GetEnd()));
}

int CTavoResultView::GoToPreviousHit() {
  return GoToHit(document_.GetHitBefore(selection_.start));
}

int CTavoResultView::GetCurrentHit() const {
  const int hit = document_.GetHitAt(selection_.start);
  return hit >= 0 && document_.GetHit(hit) == selection_ ? hit : -1;
}

CTavoResultView::FindResult CTavoResultView::Find(std::string_view text, int from, int flags,
                                                  TavoTextRange& found) const {
  const auto find = flags & kFindBackward ? FindBackward : FindForward;
  const TavoLangPack* const pack = flags & kFindMatchCase ? nullptr : pack_;
  const int farEnd = flags & kFindBackward ? document_.GetLength() : 0;
  FindResult result = kFound;
  std::optional<TavoTextRange> place = find(document_.GetText(), text, from, pack);
  if (!place) {
    place = find(document_.GetText(), text, farEnd, pack);
    result = kFoundWrapped;
  }
  if (!place) return kNotFound;
  found = *place;
  return result;
}

CTavoResultView::FindResult CTavoResultView::FindNext(std::string_view text, int flags) {
  TavoTextRange found;
  const int from = flags & kFindBackward ? selection_.start : selection_.GetEnd();
  const FindResult result = Find(text, from, flags, found);
  if (result != kNotFound) Select(found);
  return result;
}

void CTavoResultView::SetZoom(int percent) {
  const int zoom = std::clamp(percent, kSmallestZoom, kLargestZoom);
  if (zoom == zoom_) return;
  zoom_ = zoom;
  OnChange(kZoomChanged);
}

int CTavoResultView::ZoomIn() {
  const auto* const step = std::upper_bound(kZoomSteps.begin(), kZoomSteps.end(), zoom_);
  if (step == kZoomSteps.end()) return 0;
  SetZoom(*step);
  return 1;
}

int CTavoResultView::ZoomOut() {
  const auto* const step = std::lower_bound(kZoomSteps.begin(), kZoomSteps.end(), zoom_);
  if (step == kZoomSteps.begin()) return 0;
  SetZoom(*(step - 1));
  return 1;
}

TavoViewLayout CTavoResultView::MakePages(int columns, int linesPerPage) const {
  return TavoViewLayout(document_, columns, linesPerPage);
}

int CTavoResultView::Press(int position) {
  const int index = document_.GetLinkAt(position);
  if (index < 0) return 0;
  // A copy: the owner may replace the document, or the view, while it reads the target.
  const std::string target = document_.GetLink(index).target;
  if (owner_ != nullptr) owner_->OnLinkPressed(*this, target);
  return 1;
}

void CTavoResultView::OnChange(Change /*change*/) {}

}  // namespace vemra
