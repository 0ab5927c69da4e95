#pragma once

#include <cstdlib>
#include <sstream>
#include <string>
#include <vector>

#include "programs/commands/Program.h"
#include "tests/TempFolder.h"

namespace vemra::commands {

struct Outcome {
  int exitCode;
  std::string out;
  std::string err;
};

// Runs the program in this process.
inline Outcome RunVemra(std::vector<std::string> arguments) {
  std::ostringstream out;
  std::ostringstream err;
  Console console{out, err};
  const int exitCode = RunProgram(std::move(arguments), console);
  return {exitCode, out.str(), err.str()};
}

// Gives this process a registry store of its own. It is opened once per process, so the tests that
// run in one share it.
inline void UseOwnRegistry() {
  static const test::TempFolder folder;
  setenv("VEMRA_REGISTRY", (folder.Host() / "registry.db").c_str(), 1);
}

}  // namespace vemra::commands
