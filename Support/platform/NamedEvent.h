#pragma once

#include <cstdint>
#include <string>
#include <utility>

namespace vemra::platform {

// A flag that one process creates under a name and watches, and that others open and set. It stays
// set. The name is any text without a backslash, at most 240 bytes; its case counts.
//
// While one creator lives, another one of the same name shares its flag. On Windows the flag lives
// as long as anybody has it open. On Linux it lives as long as a creator, however that one ends: a
// new creator's flag is never set by what was meant for a dead one.
//
// Used by one thread at a time.
class NamedEvent {
 public:
  NamedEvent() = default;
  ~NamedEvent() { Close(); }
  NamedEvent(const NamedEvent&) = delete;
  NamedEvent& operator=(const NamedEvent&) = delete;

  bool Create(const std::string& name);
  // To set it only. kFileNotFound when nobody has created it.
  bool Open(const std::string& name);
  void Close();

  bool Set();
  // False also when it was opened to be set only.
  bool IsSet() const;

 private:
  static constexpr std::intptr_t kNone = -1;

  std::intptr_t handle_ = kNone;  // a descriptor on Linux, a HANDLE on Windows
  bool created_ = false;
  std::string path_;  // on Linux, of the creator's file
};

}  // namespace vemra::platform
