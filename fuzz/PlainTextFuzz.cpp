#include "programs/formats/PlainText.h"

#include "fuzz/FormatFuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  vemra::fuzz::RunFormat<vemra::PlainTextParser>(vemra::fuzz::ExactCopy(data, size).View());
  return 0;
}
