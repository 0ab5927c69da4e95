#pragma once

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <vector>

#include "programs/commands/ExitCode.h"
#include "programs/commands/Program.h"
#include "tests/TempFolder.h"
#include "tests/posix/Processes.h"

namespace vemra::commands {

using Arguments = std::vector<std::string>;
using Json = nlohmann::json;

struct Outcome {
  int exitCode;
  std::string out;
  std::string err;
};

// Runs the program in this process.
inline Outcome RunVemra(Arguments arguments, const Arguments& more = {}) {
  arguments.insert(arguments.end(), more.begin(), more.end());
  std::ostringstream out;
  std::ostringstream err;
  Console console{out, err};
  const int exitCode = RunProgram(std::move(arguments), console);
  return {exitCode, out.str(), err.str()};
}

// Indexes a database in a process of its own, without a word.
inline pid_t StartIndexing(const std::string& definition) {
  return test::Start([&] {
    std::freopen("/dev/null", "w", stdout);
    std::freopen("/dev/null", "w", stderr);
    ::execl(VEMRA_PROGRAM, "vemra", "index", definition.c_str(), nullptr);
  });
}

// A folder of the test's own, where it may make a database of the documents in docs.
class VemraTest : public ::testing::Test {
 protected:
  // The registry store is opened once per process, so the tests that run in one share it.
  static void SetUpTestSuite() {
    static const test::TempFolder registry;
    setenv("VEMRA_REGISTRY", (registry.Host() / "registry.db").c_str(), 1);
  }

  std::string File(const std::string& name) const { return (folder_.Host() / name).string(); }
  std::string Definition() const { return File(name_ + ".cfg"); }
  std::string Read(const std::string& name) const { return test::ReadHostFile(File(name)); }
  void Write(const std::string& name, const std::string& bytes) const {
    std::filesystem::create_directories(std::filesystem::path(File(name)).parent_path());
    test::WriteHostFile(File(name), bytes);
  }
  // Puts text in the place of another, once; returns where. No text stands at the end of the file.
  std::size_t Replace(const std::string& name, const std::string& from,
                      const std::string& to) const {
    std::string bytes = Read(name);
    const std::size_t place = from.empty() ? bytes.size() : bytes.find(from);
    if (place == std::string::npos) {
      ADD_FAILURE() << name << " has no " << from;
      return 0;
    }
    Write(name, bytes.replace(place, from.size(), to));
    return place;
  }

  void Create(const Arguments& more = {}) const {
    std::filesystem::create_directories(File("docs"));
    const Outcome run = RunVemra({"create", Definition(), "--folder", File("docs")}, more);
    ASSERT_EQ(run.exitCode, kDone) << run.err;
  }
  void CreateAndIndex(const Arguments& more = {}) const {
    Create(more);
    const Outcome run = Vemra({"index"});
    ASSERT_EQ(run.exitCode, kDone) << run.err;
  }
  // Runs a command on the database.
  Outcome Vemra(Arguments arguments, const Arguments& more = {}) const {
    arguments.insert(arguments.begin() + 1, Definition());
    return RunVemra(arguments, more);
  }

  test::TempFolder folder_;
  std::string name_ = "db";  // the database's
};

}  // namespace vemra::commands
