#include <algorithm>
#include <set>
#include <string>
#include <vector>

#include "Support/definition/FileIDX.h"
#include "Support/foundation/Ascii.h"
#include "fuzz/SavedFiles.h"

namespace vemra::fuzz {
namespace {

// What the form of the list can say: it escapes no quotes, a line that begins like a comment or a
// title is one, and blanks at the end of a line or a title may go.
bool IsSayable(const std::string& text) {
  const auto isOdd = [](unsigned char c) {
    return c == '"' || c == '[' || c == ']' || c == ';' || c < ' ' || IsAsciiSpace(c);
  };
  return std::none_of(text.begin(), text.end(), isOdd);
}

// Commas before the filters, and an "S" that looks like the flag, are taken for something else.
bool AreSayableFilters(const std::string& filters) {
  const auto isControl = [](unsigned char c) { return c < ' '; };
  return !filters.starts_with(',') && !filters.starts_with("S") &&
         std::none_of(filters.begin(), filters.end(), isControl);
}

// The texts of the list; nothing when they cannot all be kept.
std::vector<std::string> TextsOf(const CTavoFileIDX& list, bool& sayable) {
  std::vector<std::string> texts;
  std::set<std::string> names;
  for (int i = 0; i < list.GetNumOfFileTypes(); ++i) {
    const CTavoFileType& fileType = *list.GetFileType(i);
    sayable &= IsSayable(fileType.GetName()) && AreSayableFilters(fileType.GetDefaultFilters());
    Check(!fileType.GetName().empty() && names.insert(fileType.GetName()).second, "a name");
    texts.push_back(fileType.GetName());
    texts.push_back(fileType.GetDefaultFilters());
    for (int j = 0; j < fileType.GetNumOfIDXitems(); ++j) {
      const CTavoFileIDXitem& item = *fileType.GetIDXitem(j);
      sayable &= IsSayable(item.GetName()) && AreSayableFilters(item.GetFilters());
      texts.push_back(item.GetName());
      texts.push_back(std::to_string(item.IsFolder() * 2 + item.GetIncludeSubfolders()));
      texts.push_back(item.GetFilters());
    }
  }
  return texts;
}

void Run(std::string_view bytes) {
  const InputFile input(bytes);
  const SavedFile first("first");
  const SavedFile second("second");
  bool sayable = true;
  CTavoFileIDX list;
  Check(list.Load(input.Path()) != 0 && list.Save(first.Path()) != 0, "a list");
  CTavoFileIDX again;
  Check(again.Load(first.Path()) != 0 && again.Save(second.Path()) != 0, "a saved list");
  const auto texts = TextsOf(list, sayable);
  if (!sayable) return;
  Check(TextsOf(again, sayable) == texts, "the list loaded again");
  Check(first.Read() == second.Read(), "a list saved, loaded and saved again");
}

}  // namespace
}  // namespace vemra::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  vemra::fuzz::Run(vemra::fuzz::ExactCopy(data, size).View());
  return 0;
}
