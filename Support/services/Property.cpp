#include "Support/services/Property.h"

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <string_view>
#include <tuple>

namespace vemra {

namespace {

constexpr int kDefaultNumber = 10;

// Reads a decimal number as the C library does, held within an int; moves text past it. False, with
// text unmoved, when there is none.
bool ReadNumber(const char*& text, int& number) {
  char* end = nullptr;
  const long long value = std::strtoll(text, &end, 10);
  if (end == text) return false;
  text = end;
  number = static_cast<int>(std::clamp<long long>(value, std::numeric_limits<int>::min(),
                                                  std::numeric_limits<int>::max()));
  return true;
}

int ToNumber(const std::string& text) {
  const char* cursor = text.c_str();
  int number = 0;
  ReadNumber(cursor, number);
  return number;
}

}  // namespace

TavoProperty::TavoProperty() = default;

TavoProperty::TavoProperty(PropertyType type, const std::string& name, std::uint32_t order,
                           std::uint32_t group, int locked)
    : type_(type), order_(order), group_(group), name_(name), locked_(locked) {}

TavoProperty::TavoProperty(const std::string& name, const CWebAction& action, std::uint32_t order)
    : TavoProperty(PropWebAction, name, order, 0, 0) {
  webAction_ = action;
}

TavoProperty::TavoProperty(const std::string& name, int value, int min, int max,
                           std::uint32_t order, std::uint32_t group, int locked)
    : TavoProperty(PropInteger, name, order, group, locked) {
  number_ = value;
  min_ = min;
  max_ = max;
}

TavoProperty::TavoProperty(const std::string& name, const std::string& text, PropertyType type,
                           std::uint32_t order, std::uint32_t group, int locked)
    : TavoProperty(type, name, order, group, locked) {
  text_ = text;
}

TavoProperty::TavoProperty(const std::string& name, int number, const std::string& text,
                           PropertyType type, std::uint32_t order, std::uint32_t group, int locked)
    : TavoProperty(name, text, type, order, group, locked) {
  number_ = number;
}

TavoProperty::TavoProperty(const std::string& name, const std::string& path,
                           const std::string& fileFilter, int flag, std::uint32_t order,
                           std::uint32_t group, int locked)
    : TavoProperty(name, path, PropFile, order, group, locked) {
  values_.push_back(fileFilter);
  number_ = flag != 0 ? 1 : 0;
}

TavoProperty::TavoProperty(const std::string& name, int number, std::uint32_t order,
                           std::uint32_t group, int locked)
    : TavoProperty(PropYesNo, name, order, group, locked) {
  number_ = number == 1 ? 1 : 0;
}

TavoProperty::TavoProperty(const std::string& name, std::uint32_t color, std::uint32_t order,
                           std::uint32_t group, int locked)
    : TavoProperty(PropColor, name, order, group, locked) {
  number_ = static_cast<int>(color);
}

TavoProperty::TavoProperty(const std::string& name, const std::vector<std::string>& values,
                           PropertyType type, std::uint32_t order, std::uint32_t group, int locked)
    : TavoProperty(type, name, order, group, locked) {
  values_ = values;
}

TavoProperty::TavoProperty(const std::string& name, int index,
                           const std::vector<std::string>& values, std::uint32_t order,
                           std::uint32_t group, int locked)
    : TavoProperty(name, values, PropChoice, order, group, locked) {
  number_ = index;
}

TavoProperty::TavoProperty(const std::string& name, const ScriptTable& scripts, std::uint32_t order,
                           std::uint32_t group, int locked)
    : TavoProperty(PropScriptTable, name, order, group, locked) {
  scripts_ = scripts;
}

void* TavoProperty::GetValue() {
  switch (type_) {
    case PropInteger:
    case PropYesNo:
    case PropColor:
    case PropChoice:
      return &number_;
    case PropString:
    case PropText:
    case PropFile:
    case PropFont:
    case PropTextComma:
      return &text_;
    case PropList:
    case PropScript:
      return &values_;
    case PropScriptTable:
      return &scripts_;
    case PropWebAction:
      return &webAction_;
    case PropUndefined:
      break;
  }
  return nullptr;
}

void TavoProperty::SetValue(const void* value) {
  void* const held = GetValue();
  if (held == nullptr) return;
  if (held == &number_) {
    number_ = *static_cast<const int*>(value);
  } else if (held == &text_) {
    text_ = *static_cast<const std::string*>(value);
  } else if (held == &values_) {
    values_ = *static_cast<const std::vector<std::string>*>(value);
  } else if (held == &scripts_) {
    scripts_ = *static_cast<const ScriptTable*>(value);
  } else {
    webAction_ = *static_cast<const CWebAction*>(value);
  }
}

void TavoProperty::SetTypeValue(PropertyType type, const void* value) {
  SetType(type);
  SetValue(value);
}

void TavoProperty::SetValue(int number, const std::string& text) {
  number_ = number;
  text_ = text;
}

void TavoProperty::SetValue(int index, const std::vector<std::string>& values) {
  number_ = index;
  values_ = values;
}

void TavoProperty::SetValue(const std::string& text, int flag) {
  text_ = text;
  number_ = flag != 0 ? 1 : 0;
}

int TavoProperty::RemoveValue(int index) {
  if (index < 0 || index >= GetValuesNumber()) return 0;
  values_.erase(values_.begin() + index);
  return 1;
}

std::string TavoProperty::GetFileFilter() const {
  return values_.empty() ? "" : values_[0];
}

std::string TavoProperty::GetStringValue() const {
  switch (type_) {
    case PropInteger:
      return std::to_string(number_);
    case PropWebAction:
      return "Web Action";
    case PropString:
    case PropText:
    case PropFile:
      return text_;
    case PropFont:
    case PropTextComma:
      return text_ + " " + std::to_string(number_);
    case PropYesNo:
      return number_ == 1 ? "Yes" : "No";
    case PropColor: {
      const auto part = [this](int shift) {
        return std::to_string(static_cast<std::uint32_t>(number_) >> shift & 0xFF);
      };
      return "(" + part(0) + "," + part(8) + "," + part(16) + ")";
    }
    case PropChoice:
      return number_ >= 0 && number_ < GetValuesNumber()
                 ? values_[static_cast<std::size_t>(number_)]
                 : "";
    case PropScript:
      return "<Script>";
    case PropList:
    case PropScriptTable:
    case PropUndefined:
      break;
  }
  return {};
}

std::string TavoProperty::GetStringValueNoEmpty() const {
  std::string text = GetStringValue();
  return text.empty() ? " " : text;
}

int TavoProperty::SetStringValue(const std::string& text) {
  switch (type_) {
    case PropInteger:
      number_ = ToNumber(text);
      return 1;
    case PropString:
    case PropText:
    case PropFile:
      text_ = text;
      return 1;
    case PropFont:
      return ReadTextAndNumber(text, text.rfind(' '));
    case PropTextComma:
      return ReadTextAndNumber(text, text.find(','));
    case PropYesNo:
      return ReadYesNo(text);
    case PropColor:
      return ReadColor(text);
    case PropList:
    case PropScript:
      return ReadList(text);
    case PropChoice:
      ReadChoice(text);
      return 0;
    case PropWebAction:
    case PropScriptTable:
    case PropUndefined:
      break;
  }
  return 0;
}

int TavoProperty::ReadTextAndNumber(const std::string& text, std::size_t separator) {
  if (separator == std::string::npos) {
    SetValue(kDefaultNumber, text);
    return 0;
  }
  SetValue(ToNumber(text.substr(separator + 1)), text.substr(0, separator));
  return 1;
}

int TavoProperty::ReadYesNo(const std::string& text) {
  if (text != "Yes" && text != "No") return 0;
  number_ = text == "Yes" ? 1 : 0;
  return 1;
}

// As scanf reads "(%d,%d,%d)": blanks may stand before a number, and what follows the third one is
// not looked at.
int TavoProperty::ReadColor(const std::string& text) {
  const char* cursor = text.c_str();
  int color = 0;
  for (int shift = 0; shift <= 16; shift += 8) {
    int part = 0;
    if (*cursor != (shift == 0 ? '(' : ',')) return 0;
    ++cursor;
    if (!ReadNumber(cursor, part) || part < 0 || part > 255) return 0;
    color |= part << shift;
  }
  number_ = color;
  return 1;
}

int TavoProperty::ReadList(const std::string& text) {
  values_.clear();
  std::string_view rest(text);
  while (!rest.empty() && rest.front() == '{') {
    const std::size_t close = rest.find('}');
    if (close == std::string_view::npos) return 0;
    values_.emplace_back(rest.substr(1, close - 1));
    rest.remove_prefix(close + 1);
  }
  return 1;
}

void TavoProperty::ReadChoice(const std::string& text) {
  const auto found = std::find(values_.begin(), values_.end(), text);
  if (found != values_.end()) number_ = static_cast<int>(found - values_.begin());
}

void TavoProperty::CopyValue(const TavoProperty& other) {
  number_ = other.number_;
  text_ = other.text_;
  values_ = other.values_;
  scripts_ = other.scripts_;
  webAction_ = other.webAction_;
}

std::strong_ordering TavoProperty::operator<=>(const TavoProperty& other) const {
  return std::tie(group_, order_) <=> std::tie(other.group_, other.order_);
}

}  // namespace vemra
