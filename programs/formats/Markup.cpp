#include "programs/formats/Markup.h"

#include "Support/text/ByteSet.h"

namespace vemra {

void OpenLink::Follow(const MarkupTag& tag) {
  if (tag.kind == MarkupTag::kStart && (tag.isLink || !tags_.empty())) {
    tags_.push_back({tag.again, tag.end});
  } else if (tag.kind == MarkupTag::kEnd && !tags_.empty()) {
    tags_.pop_back();
  }
}

void OpenLink::AppendEnd(std::string& out) const {
  for (auto tag = tags_.rbegin(); tag != tags_.rend(); ++tag) out += tag->end;
}

void OpenLink::AppendAgain(std::string& out) const {
  for (const Tag& tag : tags_) out += tag.again;
}

void AppendEscaped(std::string_view text, std::string& out) {
  static const ByteSet special("&<>\"'");
  for (std::size_t copied = 0; copied < text.size();) {
    const std::size_t found = special.FindIn(text, copied);
    out.append(text, copied, found - copied);
    if (found == text.size()) break;
    out += "&#" + std::to_string(static_cast<int>(text[found])) + ';';
    copied = found + 1;
  }
}

}  // namespace vemra
