// Offers the state of databases over DDE, as a server program would.
//
//   example_dde SERVICE DATABASE.cfg...           serves until it is interrupted
//   example_dde --print SERVICE DATABASE.cfg...   asks itself, prints the answers and ends
#include <csignal>
#include <cstdio>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "examples/DatabaseTopic.h"

namespace dde_state {
namespace {

constexpr std::uint32_t kPause = 1000;  // milliseconds between two looks at the files
// Milliseconds; under Wine an answer is over only a moment after it has come.
constexpr std::uint32_t kSettle = 150;

volatile std::sig_atomic_t interrupted = 0;

class StateServer : public vemra::CDDEServer {
 public:
  ~StateServer() override { Shutdown(); }

  // 0 when the database cannot be loaded, or its name is there already.
  int AddDatabase(const std::string& path) {
    auto topic = std::make_unique<DatabaseTopic>(path);
    DatabaseTopic* const added = topic.get();
    if (AddTopic(std::move(topic)) == 0) return 0;
    databases_.push_back(added);
    return 1;
  }
  void Serve() {
    while (interrupted == 0) {
      HandleMessages(kPause);
      for (DatabaseTopic* const database : databases_) database->Refresh();
    }
  }

 private:
  std::vector<DatabaseTopic*> databases_;  // the topic list's
};

std::string Ask(const std::string& service, const std::string& topic, const std::string& item) {
  const vemra::DDEHolder<vemra::CDDEConv> conversation(new vemra::CDDEConv);
  std::string answer;
  if (conversation->ConnectTo(service, topic) != 0) conversation->Request(item, answer);
  vemra::CDDEServer::HandleMessages(kSettle);
  conversation->Terminate();
  vemra::CDDEServer::HandleMessages(0);
  return answer;
}

void Print(const std::string& service) {
  std::istringstream topics(Ask(service, "System", "Topics"));
  for (std::string topic; std::getline(topics, topic, '\t');) {
    std::printf("%s\n", topic.c_str());
    if (topic == "System") continue;
    for (const char* const item : {"Status", "Texts", "LastUpdate"})
      std::printf("  %s: %s\n", item, Ask(service, topic, item).c_str());
  }
}

int Run(bool print, const std::string& service, const std::vector<std::string>& paths) {
  StateServer server;
  for (const std::string& path : paths) {
    if (server.AddDatabase(vemra::FromHostPath(path)) == 0) {
      std::fprintf(stderr, "%s: there is no such database, or its name is taken\n", path.c_str());
      return 2;
    }
  }
  if (server.Create(service) == 0) {
    std::fprintf(stderr, "%s: cannot be served (error %u)\n", service.c_str(),
                 server.GetLastError());
    return 2;
  }
  if (print) {
    Print(service);
  } else {
    server.Serve();
  }
  return 0;
}

}  // namespace
}  // namespace dde_state

int main(int count, char** arguments) {
  std::vector<std::string> words(arguments + 1, arguments + count);
  const bool print = !words.empty() && words.front() == "--print";
  if (print) words.erase(words.begin());
  if (words.size() < 2) {
    std::fputs("usage: example_dde [--print] SERVICE DATABASE.cfg...\n", stderr);
    return 2;
  }
  std::signal(SIGINT, [](int) { dde_state::interrupted = 1; });
  std::signal(SIGTERM, [](int) { dde_state::interrupted = 1; });
  return dde_state::Run(print, words.front(), {words.begin() + 1, words.end()});
}
