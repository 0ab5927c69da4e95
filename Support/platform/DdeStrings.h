#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <utility>

#include "Support/services/dde/DDETypes.h"

namespace vemra::platform {

// The names that string handles stand for: one for all spellings that differ in ASCII case only,
// with the first of them as its text, alive for as long as somebody holds it.
class DdeStrings {
 public:
  static constexpr std::size_t kMaxLength = 255;

  // One holder of a name.
  class Hold {
   public:
    Hold() = default;
    Hold(DdeStrings* strings, DDEString string);  // null for a name that is not alive
    Hold(const Hold& other) : Hold(other.strings_, other.string_) {}
    Hold(Hold&& other) noexcept
        : strings_(other.strings_), string_(std::exchange(other.string_, DDEString::kNone)) {}
    Hold& operator=(Hold other) noexcept {
      std::swap(strings_, other.strings_);
      std::swap(string_, other.string_);
      return *this;
    }
    ~Hold();

    DDEString Get() const { return string_; }

   private:
    DdeStrings* strings_ = nullptr;
    DDEString string_ = DDEString::kNone;
  };

  // Null for an empty or too long text.
  Hold Create(const std::string& text);
  const std::string* Find(DDEString string) const;  // null for a name that is not alive
  std::size_t CountHolders() const;

 private:
  struct Name {
    std::string text;
    int holders = 0;
  };

  std::uintptr_t last_ = 0xC000;
  std::map<DDEString, Name> names_;
  std::map<std::string, DDEString> byFoldedText_;
};

}  // namespace vemra::platform
