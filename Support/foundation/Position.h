#pragma once

#include <cstdint>

namespace vemra {

// An opaque place in an iteration. 0 is the end; what any other value means is known only to the
// object that handed it out.
using POSITION = std::uintptr_t;

}  // namespace vemra
