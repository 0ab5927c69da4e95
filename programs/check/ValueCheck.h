#pragma once

#include <string>
#include <string_view>

#include "Support/definition/FieldList.h"
#include "programs/check/KeyTable.h"
#include "programs/check/Report.h"

namespace vemra::check {

// What the values of a file refer to.
struct Surroundings {
  std::string folder;                      // that relative paths are under, in the Windows form
  const CTavoFieldList* fields = nullptr;  // those defined; null: numbers are not looked up
};

// Reports what is wrong with the value of a key: what does not parse, with what is expected, and
// what refers to nothing. value is as INIWorker gives it; an empty one is as good as none.
void CheckValue(const KeyRule& rule, std::string_view key, std::string_view value,
                const Surroundings& surroundings, int line, FileReport& report);

// Reports a path that no host file can have, such as one on a drive that is mapped nowhere. Whether
// it did. subject says whose path it is.
bool ReportUnmapped(const std::string& subject, const std::string& path, int line,
                    FileReport& report);

}  // namespace vemra::check
