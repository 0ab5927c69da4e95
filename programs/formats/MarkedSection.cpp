#include "programs/formats/MarkedSection.h"

#include <typeinfo>
#include <utility>

#include "Support/text/MarkedRanges.h"
#include "programs/formats/HitStyle.h"

namespace vemra {

namespace {

// Copies contents from left to right, with the markup and the hits that it is told of on the way.
class Marker {
 public:
  Marker(const std::string& contents, const SectionMarkup& markup, const HitStyle& style, int hits)
      : contents_(contents),
        style_(style),
        hits_(hits),
        link_(markup.link),
        tag_(markup.tags.begin()),
        tagsEnd_(markup.tags.end()) {
    out_.reserve(contents.size() + contents.size() / 8);
  }

  // The hit has links of its own, which must not stand within one of the document.
  void AddHit(const TavoTextRange& range) {
    const auto start = static_cast<std::size_t>(range.start);
    CopyUpTo(start);
    WriteOutsideLink([this] { style_.AppendOpening(++hits_, out_); });
    CopyWithinHit(start + static_cast<std::size_t>(range.length));
    WriteOutsideLink([this] { style_.AppendClosing(hits_, out_); });
  }

  std::string Finish() {
    CopyUpTo(contents_.size());
    return std::move(out_);
  }
  int GetHits() const { return hits_; }

 private:
  template <typename Write>
  void WriteOutsideLink(Write write) {
    link_.AppendEnd(out_);
    write();
    link_.AppendAgain(out_);
  }

  // With the tags that stand at the end.
  void CopyUpTo(std::size_t end) {
    for (; tag_ != tagsEnd_ && tag_->offset <= end; ++tag_) CopyTag();
    CopyText(end);
  }

  // Without the tags that stand at the end: they follow the hit.
  void CopyWithinHit(std::size_t end) {
    while (tag_ != tagsEnd_ && tag_->offset < end) {
      const std::size_t offset = tag_->offset;
      CopyText(offset);
      WriteOutsideLink([this] { style_.AppendPause(out_); });
      for (; tag_ != tagsEnd_ && tag_->offset == offset; ++tag_) CopyTag();
      WriteOutsideLink([this] { style_.AppendResume(out_); });
    }
    CopyText(end);
  }

  void CopyTag() {
    CopyText(tag_->offset);
    out_ += tag_->tag.text;
    link_.Follow(tag_->tag);
  }

  void CopyText(std::size_t end) {
    style_.AppendText(std::string_view(contents_).substr(copied_, end - copied_), out_);
    copied_ = end;
  }

  const std::string& contents_;
  const HitStyle& style_;
  int hits_;
  OpenLink link_;
  std::vector<SectionMarkup::Place>::const_iterator tag_;
  std::vector<SectionMarkup::Place>::const_iterator tagsEnd_;
  std::size_t copied_ = 0;
  std::string out_;
};

}  // namespace

MarkedSection::MarkedSection(TavoOutput* output, const std::string& contents,
                             const TavoLangPack* pack, const HitStyle& style)
    : TavoSection(output, contents, pack), style_(style) {
  CutsAsPlain(typeid(MarkedSection));
}

MarkedSection::MarkedSection(const TavoSection& section, const HitStyle& style)
    : TavoSection(section), style_(style) {
  CutsAsPlain(typeid(MarkedSection));
}

void MarkedSection::MarkContents() {
  Marker marker(GetContents(), markup_, style_, GetCurrentHighlightCount());
  for (const TavoTextRange& range : GetMarkedRanges(*this)) marker.AddHit(range);
  SetInitialHighlightCount(marker.GetHits());
  SetMarkedContents(marker.Finish());
}

}  // namespace vemra
