#include <memory>

#include "Support/definition/FileCFG.h"
#include "Support/definition/FileIDX.h"
#include "Support/foundation/INIWorker.h"
#include "Support/platform/Clock.h"
#include "fuzz/SavedFiles.h"

namespace vemra::fuzz {
namespace {

// With an extension a longer one is cut at 256 characters when it is read again.
constexpr std::size_t kLongestName = 252;
constexpr std::int64_t kNow = 1711846800;  // where many clocks change

void CheckSchedule(const CTavoFileCFG& configuration) {
  const platform::SetClock clock(kNow);
  const DateTime next = configuration.GetNextUpdateTime();
  if (configuration.GetSchedule() == SCHEDULE::kWeekly && next != DateTime()) {
    const TimeSpan ahead = next - DateTime(kNow);
    Check(ahead > TimeSpan(-1, 0, 0, 0) && ahead <= TimeSpan(9, 0, 0, 0), "a weekly schedule");
  }
}

void Run(std::string_view bytes) {
  const InputFile input(bytes);
  CTavoFileCFG configuration;
  configuration.SetIDX(new CTavoFileIDX, 1);
  if (configuration.Load(input.Path()) == 0) {
    Check(configuration.GetIndexName().empty(), "a configuration without a name");
    return;
  }
  CheckSchedule(configuration);
  if (configuration.GetIndexName().size() > kLongestName) return;
  CheckStable(input.Path(), [&](const std::string& from, const std::string& to) {
    Check(configuration.Load(from) != 0, "loading");
    Check(configuration.SaveAs(to) != 0, "saving");
  });
  Check(CTavoFileCFG::UpdateCFGFile(input.Path(), "D:\\new") != 0, "moving");
  Check(configuration.Load(input.Path()) != 0, "loading what was moved");
  Check(configuration.GetIndexFolder() == "D:\\new", "the new folder");
  Check(configuration.GetFileINI().starts_with("D:\\new"), "the new path");
}

}  // namespace
}  // namespace vemra::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  vemra::fuzz::Run(vemra::fuzz::ExactCopy(data, size).View());
  return 0;
}
