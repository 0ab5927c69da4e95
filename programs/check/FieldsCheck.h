#pragma once

#include <string>
#include <utility>
#include <vector>

#include "Support/definition/FileINI.h"
#include "programs/check/Report.h"
#include "programs/check/SettingsText.h"

namespace vemra::check {

// A settings file under check and where its findings go.
struct SettingsFile {
  SettingsFile(FileReport& findings, std::string bytes)
      : report(findings), text(std::move(bytes)) {}

  FileReport& report;
  SettingsText text;
};

// The rules of one file type: what file they are in, and its number, by which fields knows them.
struct TagRules {
  int fileType;
  const SettingsFile* file;
};

// Reports what the fields of a definition say about each other that does not hold: two of one name
// or role, rules for fields that do not exist, and fields that nothing refers to. fields is what
// was loaded from file and from every file of tag rules.
void CheckFields(const CTavoFileINI& fields, const SettingsFile& file,
                 const std::vector<TagRules>& rules);

}  // namespace vemra::check
