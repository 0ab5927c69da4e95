#include <string>
#include <vector>

#include "Support/foundation/Strings.h"
#include "fuzz/FuzzInput.h"

namespace vemra::fuzz {
namespace {

// The rules of an item, told plainly; position stays where an open quote is.
std::string PlainItem(const std::string& list, std::size_t& position) {
  std::string item;
  if (position < list.size() && list[position] == '"') {
    const std::size_t quote = list.find('"', position + 1);
    if (quote == std::string::npos) return item;
    item = list.substr(position + 1, quote - position - 1);
    position = quote + 1;
  } else {
    const std::size_t comma = list.find(',', position);
    item = list.substr(position, comma == std::string::npos ? comma : comma - position);
    position = comma == std::string::npos ? list.size() : comma + 1;
  }
  if (position < list.size() && list[position] == ',') ++position;
  return item;
}

// Items that are written as a list are read as the same items.
void CheckWritten(const std::vector<std::string>& items) {
  std::string list;
  for (const std::string& item : items) list += QuoteString(item, " ,") + ",";
  const char* at = list.c_str();
  for (const std::string& item : items) Check(ReadFileName(at) == item, "a written item");
  Check(*at == '\0', "the end of a written list");
}

void Run(std::string_view bytes) {
  const std::string list(bytes.substr(0, bytes.find('\0')));
  // Exactly as long as the text and its terminator.
  const ExactCopy exact(reinterpret_cast<const std::uint8_t*>(list.c_str()), list.size() + 1);
  const char* const start = exact.View().data();
  const char* at = start;
  std::size_t position = 0;
  std::vector<std::string> items;
  while (*at != '\0') {
    const char* const before = at;
    const std::string item = ReadFileName(at);
    Check(item == PlainItem(list, position), "an item");
    Check(std::size_t(at - start) == position, "the place after an item");
    if (at == before) break;  // an open quote
    if (!item.empty() && item.find('"') == std::string::npos) items.push_back(item);
  }
  CheckWritten(items);
}

}  // namespace
}  // namespace vemra::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  vemra::fuzz::Run(vemra::fuzz::ExactCopy(data, size).View());
  return 0;
}
