#include <optional>
#include <string>

#include "Support/foundation/BinaryRecords.h"
#include "fuzz/FuzzInput.h"

namespace vemra::fuzz {
namespace {

std::optional<std::uint32_t> TakeBytes(std::string_view& rest, std::size_t count) {
  if (rest.size() < count) {
    rest = {};
    return std::nullopt;
  }
  std::uint32_t value = 0;
  for (std::size_t i = 0; i < count; ++i)
    value |= std::uint32_t{static_cast<unsigned char>(rest[i])} << (8 * i);
  rest.remove_prefix(count);
  return value;
}

// The format, told plainly. A short record leaves nothing.
std::optional<std::int32_t> TakeInt(std::string_view& rest) {
  auto value = TakeBytes(rest, 1);
  if (value == 0xFFU) {
    value = TakeBytes(rest, 2);
    if (value == 0xFFFFU) value = TakeBytes(rest, 4);
  }
  return value ? std::optional(static_cast<std::int32_t>(*value)) : std::nullopt;
}

std::optional<std::string> TakeString(std::string_view& rest) {
  const auto length = TakeInt(rest);
  if (!length || *length < 0) return std::nullopt;
  if (rest.size() < std::size_t(*length)) {
    rest = {};
    return std::nullopt;
  }
  std::string text(rest.substr(0, std::size_t(*length)));
  rest.remove_prefix(text.size());
  return text;
}

// Strings and integers in turn, until one cannot be read; each is written again elsewhere.
void Run(std::string_view bytes) {
  const InputFile input(bytes);
  static const test::TempFolder folder;
  TavoFile in(input.Path(), TavoFile::Access::kRead, TavoFile::Creation::kOpenExisting);
  TavoFile copy(folder.Path("copy"), TavoFile::Access::kReadWrite,
                TavoFile::Creation::kCreateTruncate);
  for (;;) {
    const auto expectedText = TakeString(bytes);
    std::string text = "before";
    Check((ReadString(in, text) != 0) == expectedText.has_value(), "whether a string is read");
    if (!expectedText) break;
    Check(text == *expectedText, "a string");
    const auto expectedNumber = TakeInt(bytes);
    std::int32_t number = -9;
    Check((ReadInt(in, number) != 0) == expectedNumber.has_value(), "whether a number is read");
    Check(number == expectedNumber.value_or(-9), "a number");
    if (!expectedNumber) break;

    const std::int64_t start = copy.Seek(0, TavoFile::Origin::kCurrent);
    Check(WriteString(copy, text) != 0 && WriteInt(copy, number) != 0, "writing");
    copy.Seek(start, TavoFile::Origin::kBegin);
    std::string textAgain;
    std::int32_t numberAgain = 0;
    Check(ReadString(copy, textAgain) != 0 && textAgain == text, "a string again");
    Check(ReadInt(copy, numberAgain) != 0 && numberAgain == number, "a number again");
  }
}

}  // namespace
}  // namespace vemra::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  vemra::fuzz::Run(vemra::fuzz::ExactCopy(data, size).View());
  return 0;
}
