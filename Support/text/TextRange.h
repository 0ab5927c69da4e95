#pragma once

namespace vemra {

// A stretch of a text, in bytes.
struct TavoTextRange {
  int start = 0;
  int length = 0;

  int GetEnd() const { return start + length; }  // of the first byte behind it
  bool operator==(const TavoTextRange&) const = default;
};

}  // namespace vemra
