#pragma once

#include <string>
#include <vector>

namespace vemra::commands {

// What a person asks of a new database. Paths in the Windows form.
struct DefinitionRequest {
  std::string path;  // of the .cfg file, in an existing folder
  std::vector<std::string> folders;
  std::vector<std::string> filters;  // file name patterns; empty: those usual for each format
  std::string language;              // empty: the built-in one
  bool subfolders = true;
};

// The files of the definition, in the Windows form: the .cfg first.
std::vector<std::string> DefinitionFiles(const std::string& path);

// Writes a working definition: the configuration, the fields with the composition of titles, the
// index list with one file type a format, and the markup of each format. What the files held before
// is gone. Throws CommandError when one cannot be written.
void WriteDefinition(const DefinitionRequest& request);

}  // namespace vemra::commands
