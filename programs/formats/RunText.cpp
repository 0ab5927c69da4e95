#include "programs/formats/RunText.h"

#include "programs/formats/WhiteSpace.h"

namespace vemra {

namespace {

// The end of the text that can be copied as it stands: single blanks inside it are what they
// should be.
std::size_t EndOfPlain(std::string_view text, std::size_t from) {
  while (from < text.size()) {
    if (!IsBlank(text[from])) {
      ++from;
    } else if (text[from] == ' ' && from + 1 < text.size() && !IsBlank(text[from + 1])) {
      from += 2;
    } else {
      break;
    }
  }
  return from;
}

}  // namespace

void RunText::AppendCollapsed(std::string_view text) {
  for (std::size_t i = 0; i < text.size();) {
    if (IsBlank(text[i])) {
      space_ = true;
      ++i;
      continue;
    }
    if (text_.empty()) {
      spaceBefore_ = space_;
    } else if (space_) {
      text_ += ' ';
    }
    space_ = false;
    const std::size_t end = EndOfPlain(text, i);
    text_.append(text, i, end - i);
    i = end;
  }
}

void RunText::AppendVerbatim(std::string_view text) {
  const std::size_t end = text_.size();
  text_ += text;
  BlankControls(text_, end);
}

void RunText::Restart() {
  text_.clear();
  spaceBefore_ = false;
}

void RunText::DropFirst(std::size_t bytes) {
  text_.erase(0, bytes);
  spaceBefore_ = false;
}

void RunText::Clear() {
  Restart();
  DropSpace();
}

}  // namespace vemra
