// Field names in queries.

#include <string>
#include <string_view>

#include "Support/definition/FileINI.h"

namespace vemra {
namespace {

std::string Trim(std::string_view text) {
  const std::size_t first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  return std::string(text.substr(first, text.find_last_not_of(' ') - first + 1));
}

}  // namespace

std::string CTavoFileINI::MapFieldsToFieldno(const std::string& query, std::string& errors) {
  errors.clear();
  if (query.find(':') == std::string::npos) return query;

  std::string result;
  std::string unknown;
  std::string_view rest = query;
  while (!rest.empty()) {
    const std::size_t end = rest.find(';');
    const std::string_view segment = rest.substr(0, end);
    rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
    const std::size_t colon = segment.find(':');
    if (colon == std::string_view::npos) {
      result.clear();
      break;
    }
    const std::string name = Trim(segment.substr(0, colon));
    if (const CTavoField* field = GetField(name.c_str())) {
      result += std::to_string(field->GetFieldno()) + ':' + Trim(segment.substr(colon + 1)) + ';';
    } else {
      result.clear();
      unknown += "\n   fieldname " + name + " is invalid";
    }
  }
  if (!unknown.empty()) errors = query + unknown;
  return result;
}

}  // namespace vemra
