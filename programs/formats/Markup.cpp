#include "programs/formats/Markup.h"

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
  constexpr std::string_view kSpecial = "&<>\"'";
  while (!text.empty()) {
    const std::size_t plain = text.find_first_of(kSpecial);
    out += text.substr(0, plain);
    if (plain == std::string_view::npos) break;
    out += "&#" + std::to_string(static_cast<int>(text[plain])) + ';';
    text.remove_prefix(plain + 1);
  }
}

}  // namespace vemra
