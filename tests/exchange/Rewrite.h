#pragma once

#include <string>

namespace vemra::test {

// Reads a file of a database definition and writes what was read to another file, by its
// extension: .bits .cfg .fin .ftd .idx .ini .lcl. The fields of an .ftd are those of the fields.ini
// in its folder. Returns false when it cannot be read or written, or is of no such format.
bool RewriteDefinition(const std::string& from, const std::string& to);

}  // namespace vemra::test
