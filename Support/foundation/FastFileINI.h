#pragma once

#include <map>
#include <string>

#include "Support/Export.h"

namespace vemra {

// A settings file held in memory: read once, answered from memory, and written back on destruction
// after a change. Names compare exactly. Used by one thread at a time.
//
// How lines are read: the first of ";", "[" and "=" in a line makes it a comment, a section title
// or a key line; any other line is ignored. A title runs to the first "]" after its "[", or to the
// end of the line. A title that follows another with no key line between is joined to it, so that
// "[A]" and "[B]" give the section "AB": kept, existing files rely on it. A key loses its leading
// blanks and keeps those before the "="; a value loses its leading blanks and keeps the trailing
// ones. A repeated key replaces the earlier value. Key lines before the first title are in the
// section with the empty name.
class SUPPORT_API CTavoFastFileINI {
 public:
  CTavoFastFileINI() = default;
  // Saves after a change; a failure is not reported.
  ~CTavoFastFileINI();
  CTavoFastFileINI(const CTavoFastFileINI&) = delete;
  CTavoFastFileINI& operator=(const CTavoFastFileINI&) = delete;

  // path in the Windows form. Loads the file with other writers denied. A file that cannot be
  // opened loads nothing and reports nothing. Sections already in memory stay, unless the file has
  // one of the same name, which replaces the old one whole.
  void Open(const std::string& path);

  // The value's leading decimal number, as atoi reads it.
  unsigned GetInt(const std::string& section, const std::string& key, unsigned fallback) const;
  std::string GetString(const std::string& section, const std::string& key,
                        const std::string& fallback) const;
  // Replace an existing value, and mark the object as changed in any case. Nothing is ever added.
  void SetInt(const std::string& section, const std::string& key, int value);
  void SetString(const std::string& section, const std::string& key, const std::string& value);

  // Appends every section, sorted by name, after what the file already holds: kept, the file is a
  // journal of its states and the last one read wins. A file that is missing or cannot be written
  // stays as it is, without a report, and the object stays changed.
  void Save();

 private:
  using KeyMap = std::map<std::string, std::string>;

  const std::string* Find(const std::string& section, const std::string& key) const;

  std::string path_;
  std::map<std::string, KeyMap> sections_;
  int modified_ = 0;
};

}  // namespace vemra
