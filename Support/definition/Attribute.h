#pragma once

#include <string>
#include <string_view>

#include "Support/definition/Tag.h"

namespace vemra {

// An attribute of the elements whose path the pattern matches. The tag's own two flags are never
// stored for it and stay 0.
class SUPPORT_API CTavoAttribute : public CTavoTag {
 public:
  CTavoAttribute() = default;
  CTavoAttribute(std::string path, std::string name, int addToAttributeField = 0)
      : CTavoTag(std::move(path)),
        name_(std::move(name)),
        addToAttributeField_(addToAttributeField) {}
  CTavoAttribute(const CTavoAttribute&) = default;
  CTavoAttribute(CTavoAttribute&&) = default;
  CTavoAttribute& operator=(const CTavoAttribute&) = default;
  CTavoAttribute& operator=(CTavoAttribute&&) = default;
  ~CTavoAttribute() override;

  int Save(INIWorker& writer, int item) const override;
  int Load(INIWorker& reader, int item) override;

  const std::string& GetAttributeName() const { return name_; }
  void SetAttributeName(const std::string& name) { name_ = name; }
  int GetAddToAttributeField() const { return addToAttributeField_; }
  void SetAddToAttributeField(int flag) { addToAttributeField_ = flag; }

  // 1 when IsTagOn(path) and the name is exactly the stored one.
  int IsAttributeOn(std::string_view path, std::string_view name) const;

 private:
  std::string name_;
  int addToAttributeField_ = 0;
};

}  // namespace vemra
