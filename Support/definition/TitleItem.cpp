#include "Support/definition/TitleItem.h"

#include "Support/text/Section.h"

namespace vemra {

int TavoTitleItem::AddSection(TavoSection* section, int titleMax) {
  if (addOnce_ && !text_.empty()) return 0;
  const std::size_t before = text_.size();
  const std::size_t joint = text_.empty() ? 0 : separator_.size();
  const std::int64_t room =
      std::int64_t{IsElastic() ? titleMax : maxLength_} - static_cast<std::int64_t>(before + joint);
  if (room < 1) return 0;
  const std::string added = section->MakeWordFromContents(-1, static_cast<int>(room), nullptr);
  if (before != 0) text_ += separator_;
  text_ += added;
  return static_cast<int>(text_.size() - before);
}

}  // namespace vemra
