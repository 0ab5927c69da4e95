#pragma once

#include <string>
#include <utility>

#include "Support/Export.h"

namespace vemra {

class TavoSection;

// One part of a document's title: text of one field, up to its share of the title. Lengths are
// characters of 8-bit text.
class SUPPORT_API TavoTitleItem {
 public:
  TavoTitleItem() = default;
  // maxLength 0 makes the elastic item, which takes what the fixed items leave of the title.
  TavoTitleItem(int fieldno, int maxLength, std::string separator = {}, bool addOnce = false)
      : fieldno_(fieldno),
        maxLength_(maxLength),
        addOnce_(addOnce),
        separator_(std::move(separator)) {}

  int GetFieldno() const { return fieldno_; }
  void SetFieldno(int fieldno) { fieldno_ = fieldno; }
  int GetMaxLength() const { return maxLength_; }
  void SetMaxLength(int length) { maxLength_ = length; }
  bool IsElastic() const { return maxLength_ == 0; }
  // Whether only the first section of the field enters the title.
  bool IsAddOnce() const { return addOnce_; }
  void SetAddOnce(bool flag) { addOnce_ = flag; }
  // Stands between successive sections of the item.
  const std::string& GetSeparator() const { return separator_; }
  void SetSeparator(const std::string& separator) { separator_ = separator; }
  // The percentage of the title's width, computed when the definitions are loaded.
  int GetShare() const { return share_; }
  void SetShare(int percent) { share_ = percent; }

  const std::string& GetText() const { return text_; }
  void ClearText() { text_.clear(); }
  // Appends the section's text after the separator, as far as there is room: the item's length, or
  // titleMax for the elastic item. Returns the number of characters added, the separator included.
  int AddSection(TavoSection* section, int titleMax);

 private:
  int fieldno_ = -1;
  int maxLength_ = 0;
  bool addOnce_ = false;
  std::string separator_;
  std::string text_;
  int share_ = 0;
};

}  // namespace vemra
