#pragma once

#include <string>

namespace vemra::commands {

// "FILE:LINE: text", for a message about a settings file. The line is that of the key, else that of
// the section, else there is none; names are found without regard to ASCII case. path is in the
// Windows form.
std::string AtSetting(const std::string& path, const std::string& section, const std::string& key,
                      const std::string& text);

}  // namespace vemra::commands
