#include "Support/definition/FileLCL.h"
#include "fuzz/SavedFiles.h"

namespace vemra::fuzz {
namespace {

void CheckRules(const CTavoFileLCL& look) {
  if (look.GetSplash().empty()) Check(look.GetDisplayTime() == 1, "the time of no splash picture");
  Check(look.GetPartAbout().empty() == look.GetAbout().empty(), "the two forms of a picture");
}

void Run(std::string_view bytes) {
  const InputFile input(bytes);
  CheckStable(input.Path(), [](const std::string& from, const std::string& to) {
    CTavoFileLCL look;
    Check(look.Load(from) != 0, "loading");
    CheckRules(look);
    Check(look.Save(to) != 0, "saving");
  });
}

}  // namespace
}  // namespace vemra::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  vemra::fuzz::Run(vemra::fuzz::ExactCopy(data, size).View());
  return 0;
}
