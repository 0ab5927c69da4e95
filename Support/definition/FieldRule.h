#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "Support/Export.h"

namespace vemra {

// The rules of a field: one 32-bit word of these flags. All but kGeneral have a keyword in the
// field definitions file.
namespace fieldrule {

inline constexpr std::uint32_t kAddToGeneral = 0x1;
inline constexpr std::uint32_t kWildcard = 0x2;
inline constexpr std::uint32_t kProximity = 0x4;
inline constexpr std::uint32_t kNumField = 0x8;
inline constexpr std::uint32_t kNoText = 0x10;
inline constexpr std::uint32_t kNoIndex = 0x20;
inline constexpr std::uint32_t kBreakWords = 0x40;
inline constexpr std::uint32_t kDictionary = 0x80;
inline constexpr std::uint32_t kExpressions = 0x100;
inline constexpr std::uint32_t kGeneral = 0x10000;
inline constexpr std::uint32_t kAttribute = 0x20000;
inline constexpr std::uint32_t kTag = 0x40000;
inline constexpr std::uint32_t kDate = 0x80000;
inline constexpr std::uint32_t kAltSort = 0x100000;
inline constexpr std::uint32_t kId = 0x200000;
inline constexpr std::uint32_t kLink = 0x400000;
inline constexpr std::uint32_t kEntry = 0x800000;
inline constexpr std::uint32_t kHidden = 0x1000000;
inline constexpr std::uint32_t kStatus = 0x2000000;
inline constexpr std::uint32_t kIndexOnce = 0x4000000;

}  // namespace fieldrule

// Reads keywords separated by any run of commas and blanks, matched exactly; others are ignored.
SUPPORT_API std::uint32_t ParseFieldRules(std::string_view text);
// The keywords of the rules joined by commas, in the order that stored files use.
SUPPORT_API std::string FormatFieldRules(std::uint32_t rules);

}  // namespace vemra
