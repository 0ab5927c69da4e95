// Acts on an access file as one program and prints what comes of it, so that two builds can share a
// file. Usage: access_actor FILE OPERATION... with a host path; the operations are search, index
// (both for 600 seconds), release-search, release-index. After each a line is printed:
// OPERATION RESULT STATUS ERROR; and at the end the holders' names.
#include <cstdio>
#include <string>

#include "Support/foundation/HostPath.h"
#include "Support/services/DBAccess.h"

namespace vemra::test {
namespace {

int Run(TavoDBAccess& access, const std::string& operation) {
  constexpr TimeSpan kTerm(600);
  if (operation == "search") return access.GetSearchAccess(kTerm);
  if (operation == "index") return access.GetIndexingAccess(kTerm);
  if (operation == "release-search") return access.ReleaseSearchAccess();
  if (operation == "release-index") return access.ReleaseIndexingAccess();
  return -1;
}

}  // namespace
}  // namespace vemra::test

int main(int count, char** arguments) {
  if (count < 2) return 2;
  vemra::TavoDBAccess access(vemra::FromHostPath(arguments[1]));
  for (int i = 2; i < count; ++i) {
    const int result = vemra::test::Run(access, arguments[i]);
    std::printf("%s %d %d %s\n", arguments[i], result, access.GetIndexingStatus(),
                access.GetErrorText().c_str());
  }
  for (const vemra::AccessEntry& holder : access.GetHolders()) {
    std::printf("%s\n", holder.IsIndexer() ? holder.name.c_str() : "searcher");
  }
  return 0;
}
