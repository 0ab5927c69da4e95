#pragma once

#include <climits>
#include <cstdint>
#include <span>

namespace vemra::check {

// What the settings files of a definition may hold: every section and key with the kind of its
// value. In a name "%d" stands for a number without leading zeros.

inline constexpr int kMaxCount = 65536;  // the library reads no more items of a numbered name

enum class ValueKind {
  kText,           // up to 256 bytes; also the name of a file that is itself checked
  kFlag,           // YES or NO
  kNumber,         // decimal, within the rule's range
  kCount,          // of numbered names, within the rule's range
  kColor,          // decimal, 32 bits
  kTime,           // HH:MM:SS dd/mm/yyyy
  kRules,          // keywords of field rules
  kFields,         // numbers of defined fields
  kField,          // the number of a defined field
  kParentField,    // likewise, or -1
  kTagPath,        // a pattern over element paths
  kAttributeName,  // not empty
  kLanguage,       // of a language pack, or empty
  kFormat,         // of a parser
  kNewFile,        // in a folder that exists
  kPicture,        // a file that exists
  kFolder,         // a folder that exists
};

// The numbers of a numbered name: first, first + 1 and so on; up to last or, when countKey is
// given, as many as the file says there. countSection is null for the key's own section.
struct Numbers {
  int first = 1;
  int last = INT_MAX;
  const char* countSection = nullptr;
  const char* countKey = nullptr;
};

struct KeyRule {
  const char* name;
  ValueKind kind = ValueKind::kText;
  bool mayBeEmpty = false;    // else an empty value is a missing one
  const char* fallback = "";  // what a missing or wrong value is taken for
  std::int64_t low = 0;       // the range of numbers
  std::int64_t high = 0;
  // What becomes of the section, or of the numbered item, without the key; null when it need not
  // be there.
  const char* whenMissing = nullptr;
  const char* needs = nullptr;  // the key of the same section without which it is not read
  Numbers numbers = {};         // of a name with "%d"
};

struct SectionRule {
  const char* name;
  std::span<const KeyRule> keys;
  bool anyKey = false;  // whatever the programs keep there
  Numbers numbers = {};
  const char* whenMissing = nullptr;  // as for a key
};

using FileRule = std::span<const SectionRule>;

extern const FileRule kConfigurationFile;  // .cfg
extern const FileRule kFieldsFile;         // .ini
extern const FileRule kTagRulesFile;       // of a file type, usually .ftd
extern const FileRule kLookFile;           // .lcl

}  // namespace vemra::check
