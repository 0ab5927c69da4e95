// Real conversations between two programs, of which only one has anything of this library.
#include <gtest/gtest.h>
#include <windows.h>

#include "tests/TempFolder.h"
#include "tests/services/dde/FrameworkClient.h"
#include "tests/services/dde/LibraryServer.h"

namespace vemra {
namespace {

constexpr std::uint32_t kLongest = 60'000;  // milliseconds that anything may take

// The plain peer, beside this program. Ended with the object.
class Peer {
 public:
  explicit Peer(const std::string& arguments) {
    SECURITY_ATTRIBUTES inherit{sizeof inherit, nullptr, TRUE};
    HANDLE write = nullptr;
    ::CreatePipe(&output_, &write, &inherit, 0);
    STARTUPINFOA start{};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESTDHANDLES;
    start.hStdOutput = write;
    start.hStdError = write;
    std::string command = '"' + Folder() + "dde_plain_peer.exe\" " + arguments;
    PROCESS_INFORMATION process{};
    if (::CreateProcessA(nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr,
                         &start, &process) != 0) {
      process_ = process.hProcess;
      ::CloseHandle(process.hThread);
    }
    ::CloseHandle(write);
  }
  ~Peer() {
    Kill();
    ::CloseHandle(process_);
    ::CloseHandle(output_);
  }
  Peer(const Peer&) = delete;
  Peer& operator=(const Peer&) = delete;

  // Handles this program's messages until the peer has said something, or ended.
  bool WaitUntilReady() const {
    return Wait([this] {
      DWORD waiting = 0;
      return ::PeekNamedPipe(output_, nullptr, 0, nullptr, &waiting, nullptr) != 0 && waiting > 0;
    });
  }
  bool WaitForEnd() const {
    return Wait([this] { return ::WaitForSingleObject(process_, 0) == WAIT_OBJECT_0; });
  }
  void Kill() const {
    ::TerminateProcess(process_, 1);
    ::WaitForSingleObject(process_, kLongest);
  }

 private:
  static std::string Folder() {
    char path[MAX_PATH] = "";
    ::GetModuleFileNameA(nullptr, path, sizeof path);
    const std::string text = path;
    return text.substr(0, text.rfind('\\') + 1);
  }
  template <typename Condition>
  static bool Wait(Condition condition) {
    for (std::uint32_t waited = 0; waited < kLongest; waited += 20) {
      if (condition()) return true;
      CDDEServer::HandleMessages(20);
    }
    return false;
  }

  HANDLE process_ = nullptr;
  HANDLE output_ = nullptr;
};

class DDEProcessTest : public testing::Test {
 protected:
  test::TestDdeManager dde_{test::TestDdeManager::kSystem};
  test::TempFolder folder_;
};

TEST_F(DDEProcessTest, TheServerServesAnotherProgram) {
  const char kScript[] = VEMRA_TEST_DATA "/dde/conversation.txt";
  const auto transcript = folder_.Host() / "transcript.txt";
  test::LibraryServer server;
  ASSERT_EQ(server.Create("Library"), 1);
  const Peer client("client \"" + std::string(kScript) + "\" \"" + transcript.string() + '"');
  ASSERT_TRUE(client.WaitForEnd());
  EXPECT_EQ(test::ReadHostFile(transcript), test::ReadHostFile(kScript));
}

TEST_F(DDEProcessTest, TheClientClassesUseAnotherProgramsServer) {
  const std::string script = test::ReadHostFile(VEMRA_TEST_DATA "/dde/client.txt");
  test::RecordingServer own;
  ASSERT_EQ(own.Create("", kDDEClientOnly), 1);
  const Peer server("serve");
  ASSERT_TRUE(server.WaitUntilReady());
  test::FrameworkClient client(dde_);
  EXPECT_EQ(test::RunScript(script, client), script);
}

TEST_F(DDEProcessTest, AClientThatDiesLeavesTheServerServing) {
  test::LibraryServer server;
  ASSERT_EQ(server.Create("Library"), 1);
  {
    const Peer dying("hold");
    ASSERT_TRUE(dying.WaitUntilReady());
    EXPECT_GE(server.GetConversations().GetCount(), 1);  // a busy system may connect twice
  }
  server.FindTopic("Manuals")->PostAdvise("Texts");
  const Peer next("hold");
  EXPECT_TRUE(next.WaitUntilReady());
  server.Shutdown();
  EXPECT_EQ(server.GetConversations().GetCount(), 0);
}

TEST_F(DDEProcessTest, AServerThatDiesFailsTheTransaction) {
  test::RecordingServer own;
  ASSERT_EQ(own.Create("", kDDEClientOnly), 1);
  const Peer server("serve");
  ASSERT_TRUE(server.WaitUntilReady());
  const DDEHolder<CDDEConv> conversation(new CDDEConv);
  ASSERT_EQ(conversation->ConnectTo("Library", "Manuals"), 1);
  std::string text;
  EXPECT_EQ(conversation->Request("Texts", text), 1);
  dde_.Settle();
  server.Kill();
  conversation->SetTimeout(500);
  EXPECT_EQ(conversation->Request("Texts", text), 0);
  EXPECT_NE(own.GetLastError(), kDDENoError);
  conversation->Terminate();
  EXPECT_EQ(own.GetConversations().GetCount(), 0);
  EXPECT_EQ(conversation->GetHandle(), DDEConversation::kNone);
}

}  // namespace
}  // namespace vemra
