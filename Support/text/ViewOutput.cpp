#include "Support/text/ViewOutput.h"

#include <algorithm>
#include <utility>

#include "Support/text/ViewMarks.h"

namespace vemra {

TavoViewOutput::TavoViewOutput(int maxLength) : document_(maxLength) {}

TavoViewOutput::~TavoViewOutput() = default;

int TavoViewOutput::IsEmpty() const {
  return TavoOutput::IsEmpty() && document_.GetLength() == 0 ? 1 : 0;
}

void TavoViewOutput::ResetOutput() {
  TavoOutput::ResetOutput();
  document_.Clear();
}

int TavoViewOutput::PrintString(const std::string& s) {
  std::string_view rest = s;
  while (!rest.empty()) {
    const std::size_t plain = std::min(rest.find(viewmarks::kIntroducer), rest.size());
    document_.AppendText(rest.substr(0, plain));
    rest = TakeMark(rest.substr(plain));
  }
  return 1;
}

// Takes the mark that text begins with, if any; a letter that is none is left out. Returns the
// rest.
std::string_view TavoViewOutput::TakeMark(std::string_view text) {
  if (text.size() < 2) return {};
  const char letter = text[1];
  text.remove_prefix(2);
  switch (letter) {
    case viewmarks::kLinkStart: {
      const std::size_t length = std::min(text.find(viewmarks::kIntroducer), text.size());
      document_.BeginLink(std::string(text.substr(0, length)));
      return text.substr(std::min(length + 1, text.size()));
    }
    case viewmarks::kLinkEnd:
      document_.EndLink();
      break;
    case viewmarks::kHitStart:
      document_.BeginHit();
      break;
    case viewmarks::kHitEnd:
      document_.EndHit();
      break;
    default:
      break;
  }
  return text;
}

void TavoViewOutput::BeginLink(std::string_view target) {
  Write(viewmarks::MakeLinkStart(target));
}

void TavoViewOutput::EndLink() {
  Write(viewmarks::Make(viewmarks::kLinkEnd));
}

TavoViewDocument TavoViewOutput::TakeDocument() {
  TryPrintAll();
  TavoViewDocument document(document_.GetMaxLength());
  std::swap(document, document_);
  ResetOutput();
  return document;
}

}  // namespace vemra
