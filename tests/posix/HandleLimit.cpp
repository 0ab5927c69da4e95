#include "tests/HandleLimit.h"

#include <sys/resource.h>
#include <unistd.h>

#include <fcntl.h>

namespace vemra::test {
namespace {

rlimit Get() {
  rlimit limit{};
  getrlimit(RLIMIT_NOFILE, &limit);
  return limit;
}

void Set(rlim_t handles) {
  rlimit limit = Get();
  limit.rlim_cur = handles;
  setrlimit(RLIMIT_NOFILE, &limit);
}

}  // namespace

// The lowest free number is the next one that is given out.
HandleLimit::HandleLimit(int more) : before_(Get().rlim_cur) {
  const int next = open("/", O_RDONLY | O_CLOEXEC);
  close(next);
  Set(static_cast<rlim_t>(next + more));
}

HandleLimit::~HandleLimit() {
  Set(before_);
}

bool HandleLimit::Works() {
  return true;
}

}  // namespace vemra::test
