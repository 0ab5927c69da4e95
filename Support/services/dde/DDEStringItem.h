#pragma once

#include "Support/services/dde/DDEItem.h"

namespace vemra {

// An item that holds a text, to be had, set and watched as TEXT.
class SUPPORT_API CDDEStringItem : public CDDEItem {
 public:
  CDDEStringItem() = default;
  explicit CDDEStringItem(const std::string& name, const std::string& text = {});

  static const DDEClass& Class();
  const DDEClass& GetRuntimeClass() const override { return Class(); }

  // Sets the text, up to its first NUL, and tells those who watch it.
  virtual void SetData(const std::string& text);
  const std::string& GetData() const { return text_; }

  const std::uint16_t* GetFormatList() const override;  // TEXT
  int Request(std::uint16_t format, const void*& data, std::uint32_t& size) override;
  // The text up to its NUL, or all bytes when it has none.
  int Poke(std::uint16_t format, const void* data, std::uint32_t size) override;

 private:
  std::string text_;
};

}  // namespace vemra
