#pragma once

#include <compare>
#include <cstdint>
#include <string>
#include <vector>

#include "Support/Export.h"
#include "Support/services/WebAction.h"

namespace vemra {

// The kind of a property; stored as its number.
enum PropertyType : int {
  PropUndefined = 0,
  PropInteger = 1,
  PropWebAction = 2,
  PropString = 3,
  PropFile = 4,  // a path; its first list item is the file filter
  PropFont = 5,  // name and size
  PropTextComma = 6,
  PropYesNo = 7,
  PropColor = 8,  // red + green * 256 + blue * 65536
  PropText = 9,
  PropList = 10,
  PropChoice = 11,  // index into the list, -1 for none
  PropScript = 12,
  PropScriptTable = 13,
};

// Rows of texts; what the texts of a row mean is up to the component that publishes the property.
using ScriptTable = std::vector<std::vector<std::string>>;

// One named, typed setting of a component, as an editor shows it. A value object: copies are deep.
class SUPPORT_API TavoProperty {
 public:
  TavoProperty();  // undefined, with the name "Undefined"
  // A web action.
  TavoProperty(const std::string& name, const CWebAction& action, std::uint32_t order);
  // A number. -1 for min or max is no limit; the limits are for the editor and never enforced here.
  TavoProperty(const std::string& name, int value, int min, int max, std::uint32_t order,
               std::uint32_t group, int locked);
  // A text: PropString or PropText.
  TavoProperty(const std::string& name, const std::string& text, PropertyType type,
               std::uint32_t order, std::uint32_t group, int locked);
  // A text with a number: PropFont or PropTextComma.
  TavoProperty(const std::string& name, int number, const std::string& text, PropertyType type,
               std::uint32_t order, std::uint32_t group, int locked);
  // A file.
  TavoProperty(const std::string& name, const std::string& path, const std::string& fileFilter,
               int flag, std::uint32_t order, std::uint32_t group, int locked);
  // Yes when number is 1, else no.
  TavoProperty(const std::string& name, int number, std::uint32_t order, std::uint32_t group,
               int locked);
  // A colour.
  TavoProperty(const std::string& name, std::uint32_t color, std::uint32_t order,
               std::uint32_t group, int locked);
  // A list: PropList or PropScript.
  TavoProperty(const std::string& name, const std::vector<std::string>& values, PropertyType type,
               std::uint32_t order, std::uint32_t group, int locked);
  // A choice.
  TavoProperty(const std::string& name, int index, const std::vector<std::string>& values,
               std::uint32_t order, std::uint32_t group, int locked);
  // A script table.
  TavoProperty(const std::string& name, const ScriptTable& scripts, std::uint32_t order,
               std::uint32_t group, int locked);

  PropertyType GetType() const { return type_; }
  void SetType(PropertyType type) { type_ = type; }
  std::uint32_t GetOrder() const { return order_; }
  void SetOrder(std::uint32_t order) { order_ = order; }
  std::uint32_t GetGroup() const { return group_; }
  void SetGroup(std::uint32_t group) { group_ = group; }
  const std::string& GetName() const { return name_; }
  void SetName(const std::string& name) { name_ = name; }
  int IsLocked() const { return locked_; }  // read-only in the editor
  void SetLocked(int locked) { locked_ = locked; }
  int GetMinValue() const { return min_; }
  void SetMinValue(int min) { min_ = min; }
  int GetMaxValue() const { return max_; }
  void SetMaxValue(int max) { max_ = max; }

  // The value, untyped: int for numbers, yes/no, colours and choices; std::string for texts, files
  // and fonts; std::vector<std::string> for lists and scripts; CWebAction; ScriptTable. Setting
  // copies from such an object; an undefined property has no value: null, and setting does nothing.
  void* GetValue();
  void SetValue(const void* value);
  void SetTypeValue(PropertyType type, const void* value);
  // The number and the text; the index and the list that it chooses from; the path and the flag of
  // a file. The type stays.
  void SetValue(int number, const std::string& text);
  void SetValue(int index, const std::vector<std::string>& values);
  void SetValue(const std::string& text, int flag);

  int GetNumValue() const { return number_; }
  const std::vector<std::string>& GetValues() const { return values_; }
  int GetValuesNumber() const { return static_cast<int>(values_.size()); }
  void SetValues(const std::vector<std::string>& values) { values_ = values; }
  int RemoveValue(int index);  // 0 out of range
  // A file's; it must have one to be changed.
  std::string GetFileFilter() const;  // empty when there is none
  void SetFileFilter(const std::string& filter) { values_[0] = filter; }
  const CWebAction& GetWebActionValue() const { return webAction_; }
  void SetWebActionValue(const CWebAction& action) { webAction_ = action; }
  const ScriptTable& GetScripts() const { return scripts_; }
  void PutScripts(const ScriptTable& scripts) { scripts_ = scripts; }
  void DeleteScripts() { scripts_.clear(); }

  // The value as text; empty for lists, script tables and undefined properties.
  std::string GetStringValue() const;
  // The same, with one blank in place of an empty text, for stores that take an empty value for a
  // missing one.
  std::string GetStringValueNoEmpty() const;
  // Reads a text of that form. Returns 0 when the text is refused or only partly read:
  // - a web action, a script table and an undefined property take no text;
  // - a font without a blank, or a text-with-number without a comma, takes the whole text and 10;
  // - a list takes its items "{a}{b}" up to a "{" that is not closed; one that does not begin with
  //   "{" is empty, with result 1;
  // - a choice takes the index of an item of its list, but the result is always 0 (kept: editors
  //   read it as "nothing more to store"); another text leaves the index.
  int SetStringValue(const std::string& text);
  // Copies the value (number, text, list, scripts, web action), not the type or the keys.
  void CopyValue(const TavoProperty& other);

  // By group, then order; nothing else plays a part.
  bool operator==(const TavoProperty& other) const { return std::is_eq(*this <=> other); }
  std::strong_ordering operator<=>(const TavoProperty& other) const;

 private:
  TavoProperty(PropertyType type, const std::string& name, std::uint32_t order, std::uint32_t group,
               int locked);

  int ReadTextAndNumber(const std::string& text, std::size_t separator);
  int ReadYesNo(const std::string& text);
  int ReadColor(const std::string& text);
  int ReadList(const std::string& text);
  void ReadChoice(const std::string& text);

  PropertyType type_ = PropUndefined;
  std::uint32_t order_ = 0;
  std::uint32_t group_ = 0;
  std::string name_ = "Undefined";
  int number_ = 0;
  std::string text_;
  std::vector<std::string> values_;
  int locked_ = 0;
  int min_ = -1;
  int max_ = -1;
  ScriptTable scripts_;
  CWebAction webAction_;
};

}  // namespace vemra
