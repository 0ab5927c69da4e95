#include <string>

#include "Support/definition/FileDict.h"
#include "fuzz/SavedFiles.h"

namespace vemra::fuzz {
namespace {

constexpr std::size_t kRecord = CTavoFileDict::kRecordBytes;

// Every text, and some that there are not, against the bytes of the file; a whole record is written
// as it was but for what follows the end of its name.
void Run(std::string_view bytes) {
  const InputFile input(bytes);
  const SavedFile saved("texts");
  CTavoFileDict dict;
  CTavoFileDict copy;
  dict.Open(input.Path());
  copy.Open(saved.Path());
  const auto whole = static_cast<int>(bytes.size() / kRecord);
  std::string expected;
  for (int text = -1; text <= whole + 2; ++text) {
    const bool exists = text >= 1 && text <= whole;
    std::string name = "old";
    int number = 12345;
    Check((dict.GetFileName(text, name, &number) != 0) == exists, "whether a text is known");
    if (!exists) {
      Check(name == "old" && number == 12345, "what was there");
      continue;
    }
    const std::string_view record = bytes.substr((std::size_t(text) - 1) * kRecord, kRecord);
    const std::string_view plain = record.substr(3, record.substr(3).find('\0'));
    Check(name == plain, "a name");
    const int high = static_cast<signed char>(record[2]) * 256;
    Check(number == high + static_cast<unsigned char>(record[1]), "a number in the text");
    Check(dict.GetNumInText(text) == number, "that number alone");
    Check(dict.GetFileType(text) == static_cast<signed char>(record[0]), "a file type");
    Check(copy.PutFileName(dict.GetFileType(text), number, name) != 0, "writing");
    expected.append(record.substr(0, 3 + plain.size())).append(260 - plain.size(), '\0');
  }
  copy.Close();
  if (whole > 0) Check(saved.Read() == expected, "the records written again");
}

}  // namespace
}  // namespace vemra::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  vemra::fuzz::Run(vemra::fuzz::ExactCopy(data, size).View());
  return 0;
}
