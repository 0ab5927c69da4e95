#include "programs/commands/StopSignal.h"

#include <csignal>

namespace vemra::commands {
namespace {

constexpr int kSignals[] = {SIGINT, SIGTERM};

volatile std::sig_atomic_t stopRequested = 0;

extern "C" void RequestStop(int signal) {
  stopRequested = 1;
  std::signal(signal, SIG_DFL);
}

}  // namespace

StopSignal::StopSignal() {
  stopRequested = 0;
  for (const int signal : kSignals) std::signal(signal, RequestStop);
}

StopSignal::~StopSignal() {
  for (const int signal : kSignals) std::signal(signal, SIG_DFL);
}

bool StopSignal::IsSet() const {
  return stopRequested != 0;
}

}  // namespace vemra::commands
