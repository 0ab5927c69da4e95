#include "programs/check/Patterns.h"

#include <algorithm>

namespace vemra::check {
namespace {

// Where in an element path a place is.
enum class Place { kUnknown, kOutside, kAtName, kInName };

// What must be different for the text between two stars to stand in a path, read on from the place.
std::string SegmentFault(std::string_view segment, Place& place) {
  for (const char c : segment) {
    switch (c) {
      case '<':
        if (place == Place::kAtName || place == Place::kInName)
          return "a \"<\" needs a \">\" after it";
        place = Place::kAtName;
        break;
      case '>':
        if (place == Place::kAtName) return "\"<>\" is no element";
        if (place == Place::kOutside) return "a \">\" needs a \"<\" before it";
        place = Place::kOutside;
        break;
      default:
        if (place == Place::kOutside) return "only elements such as \"<p>\" stand in a path";
        place = Place::kInName;
    }
  }
  return {};
}

}  // namespace

std::string TagPathFault(std::string_view pattern) {
  Place place = Place::kOutside;
  std::string_view rest = pattern;
  while (!rest.empty()) {
    const std::size_t star = rest.find('*');
    std::string fault = SegmentFault(rest.substr(0, star), place);
    if (!fault.empty()) return fault;
    if (star == std::string_view::npos) break;
    place = Place::kUnknown;
    rest.remove_prefix(star + 1);
  }
  const bool open = place == Place::kAtName || place == Place::kInName;
  return open ? "a path ends with \">\"" : std::string();
}

std::string FilterFault(std::string_view pattern) {
  if (pattern.find_first_of("\\/:") != std::string_view::npos) {
    return "patterns are compared with the name of a file without its folder";
  }
  if (pattern.starts_with(' ') || pattern.ends_with(' ')) {
    return "it begins or ends with a blank; a list has none between its patterns";
  }
  if (pattern.find('"') != std::string_view::npos) return "a quote is a part of it, and of no name";
  return {};
}

std::vector<std::string_view> SplitFilters(std::string_view filters) {
  std::vector<std::string_view> patterns;
  while (!filters.empty()) {
    const std::size_t end = std::min(filters.find_first_of(";,"), filters.size());
    if (end > 0) patterns.push_back(filters.substr(0, end));
    filters.remove_prefix(std::min(end + 1, filters.size()));
  }
  return patterns;
}

}  // namespace vemra::check
