#pragma once

#include <string>
#include <string_view>

namespace vemra::platform {

// The computer name of a host of this name; empty when it has none. See ComputerName.h.
std::string ComputerNameOf(std::string_view host);

}  // namespace vemra::platform
