#pragma once

#include <cstdint>

#include "Support/platform/Dde.h"

namespace vemra {

// The bytes of a block of the management library, while this lives.
class DDEDataView {
 public:
  explicit DDEDataView(DDEData data)
      : data_(data), bytes_(platform::GetDdeManager().AccessData(data, &size_)) {}
  ~DDEDataView() {
    if (IsValid()) platform::GetDdeManager().UnaccessData(data_);
  }
  DDEDataView(const DDEDataView&) = delete;
  DDEDataView& operator=(const DDEDataView&) = delete;

  bool IsValid() const { return bytes_ != nullptr; }
  const void* GetBytes() const { return bytes_; }
  std::uint32_t GetSize() const { return IsValid() ? size_ : 0; }

 private:
  DDEData data_;
  std::uint32_t size_ = 0;
  const std::uint8_t* bytes_;
};

}  // namespace vemra
