#include "Support/definition/FieldRule.h"

#include "Support/definition/Tokens.h"

namespace vemra {
namespace {

struct Keyword {
  const char* text;
  std::uint32_t rule;
};

// In the order of stored files.
constexpr Keyword kKeywords[] = {
    {"WILDCARD", fieldrule::kWildcard},
    {"AltSort", fieldrule::kAltSort},
    {"PROXIMITY", fieldrule::kProximity},
    {"NUMFIELD", fieldrule::kNumField},
    {"BREAKWORDS", fieldrule::kBreakWords},
    {"ATTRIBUTE", fieldrule::kAttribute},
    {"TAG", fieldrule::kTag},
    {"Entry", fieldrule::kEntry},
    {"Link", fieldrule::kLink},
    {"ID", fieldrule::kId},
    {"DATE", fieldrule::kDate},
    {"AddToGeneral", fieldrule::kAddToGeneral},
    {"NOTEXT", fieldrule::kNoText},
    {"NOINDEX", fieldrule::kNoIndex},
    {"DICTIONARY", fieldrule::kDictionary},
    {"EXPRESSIONS", fieldrule::kExpressions},
    {"Hidden", fieldrule::kHidden},
    {"Status", fieldrule::kStatus},
    {"IndexOnce", fieldrule::kIndexOnce},
};

}  // namespace

std::uint32_t ParseFieldRules(std::string_view text) {
  std::uint32_t rules = 0;
  for (std::string_view word = NextToken(text); !word.empty(); word = NextToken(text)) {
    for (const Keyword& keyword : kKeywords) {
      if (word == keyword.text) rules |= keyword.rule;
    }
  }
  return rules;
}

std::string FormatFieldRules(std::uint32_t rules) {
  std::string text;
  for (const Keyword& keyword : kKeywords) {
    if ((rules & keyword.rule) == 0) continue;
    if (!text.empty()) text += ',';
    text += keyword.text;
  }
  return text;
}

}  // namespace vemra
