#include <optional>
#include <string>

#include "Support/definition/BitArray.h"
#include "Support/foundation/File.h"
#include "fuzz/SavedFiles.h"

namespace vemra::fuzz {
namespace {

std::int32_t IntAt(std::string_view bytes, std::size_t at) {
  std::int32_t value = 0;
  std::memcpy(&value, bytes.data() + at, sizeof value);
  return value;
}

// The bits of a record, told plainly; nothing when it is damaged.
std::optional<std::string_view> PlainBits(std::string_view bytes) {
  if (bytes.size() < 8 || IntAt(bytes, 0) < 0 || IntAt(bytes, 4) < 0) return std::nullopt;
  const auto length = static_cast<std::size_t>(IntAt(bytes, 4));
  if (length > bytes.size() - 8) return std::nullopt;
  return bytes.substr(8, length);
}

bool PlainBit(std::string_view bits, std::int64_t index) {
  const auto byte = static_cast<std::size_t>(index / 8);
  return byte < bits.size() && (bits[byte] >> index % 8 & 1) != 0;
}

void CheckBits(const CTavoBitArray& array, std::string_view bits) {
  std::int32_t next = array.GetFirst();
  std::int32_t count = 0;
  for (std::int32_t i = 0; i < array.GetSize(); ++i) {
    Check((array.GetAt(i) != 0) == PlainBit(bits, i), "a bit");
    if (!PlainBit(bits, i)) continue;
    Check(next == i, "the next bit");
    next = array.GetNext(i);
    ++count;
  }
  Check(next == -1 && array.GetTrueCount() == count, "the end of the bits");
}

// What the array is used for must stay within its storage, whatever the record said.
void Use(CTavoBitArray array) {
  CTavoBitArray other(77, nullptr);
  other.SetAll();
  array |= other;
  array.InsertAt(3, 1);
  array.SetAt(5, other);
  array.FreeExtra();
  array.Reverse();
  array.RemoveAt(0, 9);
  Check(array.GetLast() < array.GetSize(), "the last bit");
}

void Run(std::string_view bytes) {
  const InputFile input(bytes);
  TavoFile file(input.Path(), TavoFile::Access::kRead, TavoFile::Creation::kOpenExisting);
  CTavoBitArray array(40, "\x55\xAA\x55\xAA\x55");
  const CTavoBitArray before(array);
  const auto bits = PlainBits(bytes);
  Check((array.Load(&file) != 0) == bits.has_value(), "whether a record is read");
  if (!bits) {
    Check(array.GetSize() == 40 && (array - before).GetFirst() == -1, "what was there");
    return;
  }
  Check(array.GetSize() == IntAt(bytes, 0), "the size");
  if (array.GetSize() > 1 << 20) return;  // may be many more than there are bits
  Use(array);
  array.SetSize(array.GetSize());
  if (bits->size() != (static_cast<std::size_t>(array.GetSize()) + 7) / 8) return;
  CheckBits(array, *bits);

  const SavedFile saved("bits");
  TavoFile out(saved.Path(), TavoFile::Access::kWrite, TavoFile::Creation::kCreateTruncate);
  Check(array.Save(&out) != 0, "saving");
  out.Close();
  CheckBits(array, saved.Read().substr(8));
}

}  // namespace
}  // namespace vemra::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  vemra::fuzz::Run(vemra::fuzz::ExactCopy(data, size).View());
  return 0;
}
