#pragma once

namespace vemra::platform {

// Whether the system reports itself as Windows of the NT family.
bool IsNTFamily();

}  // namespace vemra::platform
