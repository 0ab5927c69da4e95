// The other program: its DDE is the system's own calls and nothing else.
//
//   dde_plain_peer client SCRIPT TRANSCRIPT   runs the script and writes what came of it
//   dde_plain_peer hold                       opens a conversation and stays
//   dde_plain_peer serve                      serves "Library|Manuals" and "Library|Archive"
//
// A peer that stays says "ready" on its standard output and ends after a minute, if nobody ends it
// before.
#include <windows.h>
// The management library's header builds on the one above.
#include <ddeml.h>

#include <cstdio>
#include <fstream>
#include <map>
#include <string>
#include <utility>

#include "tests/services/dde/Script.h"

namespace {

using vemra::test::Readable;

constexpr DWORD kTimeout = 5000;
constexpr DWORD kSettle = 250;  // what the system needs after a transaction
constexpr DWORD kStay = 60'000;

void HandleMessages(DWORD milliseconds) {
  const ULONGLONG end = ::GetTickCount64() + milliseconds;
  while (::GetTickCount64() < end) {
    MSG message;
    while (::PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE) != 0) ::DispatchMessageA(&message);
    ::MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
  }
}

UINT NumberOf(const std::string& format) {
  if (format == "TEXT") return CF_TEXT;
  return format == "SYLK" ? CF_SYLK : ::RegisterClipboardFormatA(format.c_str());
}

std::string TextOf(DWORD instance, HSZ string) {
  char text[256] = "";
  ::DdeQueryStringA(instance, string, text, sizeof text, CP_WINANSI);
  return text;
}

std::string BytesOf(HDDEDATA data) {
  DWORD size = 0;
  const BYTE* const first = ::DdeAccessData(data, &size);
  std::string bytes(reinterpret_cast<const char*>(first), first == nullptr ? 0 : size);
  ::DdeUnaccessData(data);
  return bytes;
}

struct Client {
  DWORD instance = 0;
  HCONV conversation = nullptr;
  std::string changes;
};
std::map<char, Client> clients;

HDDEDATA CALLBACK TakeAdviseData(UINT type, UINT, HCONV conversation, HSZ, HSZ item, HDDEDATA data,
                                 ULONG_PTR, ULONG_PTR) {
  if (type != XTYP_ADVDATA) return nullptr;
  for (auto& [who, client] : clients) {
    if (client.conversation != conversation) continue;
    client.changes += TextOf(client.instance, item) + ' ' + Readable(BytesOf(data)) + ';';
  }
  return reinterpret_cast<HDDEDATA>(static_cast<ULONG_PTR>(DDE_FACK));
}

class PlainClient : public vemra::test::ScriptClient {
 public:
  bool Connect(char who, const std::string& service, const std::string& topic) override {
    Client& client = clients[who];
    if (client.instance == 0) {
      ::DdeInitializeA(&client.instance, TakeAdviseData, APPCMD_CLIENTONLY, 0);
    }
    client.conversation =
        ::DdeConnect(client.instance, Name(client, service), Name(client, topic), nullptr);
    HandleMessages(kSettle);
    return client.conversation != nullptr;
  }
  bool Disconnect(char who) override {
    const bool done = ::DdeDisconnect(clients[who].conversation) != 0;
    HandleMessages(kSettle);
    return done;
  }
  // What is sent has a NUL at its end.
  std::optional<std::string> Transact(char who, const std::string& verb, const std::string& item,
                                      const std::string& format, const std::string& data) override {
    static const std::map<std::string, UINT> kTypes = {{"request", XTYP_REQUEST},
                                                       {"poke", XTYP_POKE},
                                                       {"execute", XTYP_EXECUTE},
                                                       {"watch", XTYP_ADVSTART},
                                                       {"unwatch", XTYP_ADVSTOP}};
    const Client& client = clients[who];
    const bool isSent = verb == "poke" || verb == "execute";
    auto* const bytes = reinterpret_cast<BYTE*>(const_cast<char*>(data.c_str()));
    const HDDEDATA answer = ::DdeClientTransaction(
        isSent ? bytes : nullptr, isSent ? static_cast<DWORD>(data.size() + 1) : 0,
        client.conversation, Name(client, item), format.empty() ? 0 : NumberOf(format),
        kTypes.at(verb), kTimeout, nullptr);
    HandleMessages(kSettle);
    if (answer == nullptr) return std::nullopt;
    if (verb != "request") return "";
    const std::string answered = BytesOf(answer);
    ::DdeFreeDataHandle(answer);
    return answered;
  }
  std::string TakeChanges(char who) override { return std::exchange(clients[who].changes, {}); }

 private:
  static HSZ Name(const Client& client, const std::string& name) {
    if (name.empty() || name == "*") return nullptr;
    return ::DdeCreateStringHandleA(client.instance, name.c_str(), CP_WINANSI);
  }
};

DWORD server = 0;
std::map<std::string, std::string> served;  // by KeyOf

std::string KeyOf(const std::string& topic, const std::string& item, UINT format) {
  return topic + '|' + item + '|' + std::to_string(static_cast<WORD>(format));
}

// "count N" sets the texts of "Manuals", "archive N" those of "Archive".
bool Execute(const std::string& command) {
  const bool count = command.starts_with("count ");
  if (!count && !command.starts_with("archive ")) return false;
  const std::string topic = count ? "Manuals" : "Archive";
  served[KeyOf(topic, "Texts", CF_TEXT)] = command.substr(command.find(' ') + 1).c_str();
  ::DdePostAdvise(server, ::DdeCreateStringHandleA(server, topic.c_str(), CP_WINANSI),
                  ::DdeCreateStringHandleA(server, "Texts", CP_WINANSI));
  return true;
}

HDDEDATA CALLBACK Serve(UINT type, UINT format, HCONV, HSZ string1, HSZ string2, HDDEDATA data,
                        ULONG_PTR, ULONG_PTR) {
  const auto answer = [](ULONG_PTR value) { return reinterpret_cast<HDDEDATA>(value); };
  const std::string topic = TextOf(server, string1);
  const std::string key = KeyOf(topic, TextOf(server, string2), format);
  switch (type) {
    case XTYP_CONNECT:
      return answer(topic == "Manuals" || topic == "Archive" ? 1 : 0);
    case XTYP_REQUEST:
    case XTYP_ADVREQ: {
      if (!served.contains(key)) return nullptr;
      std::string bytes = served[key] + '\0';
      return ::DdeCreateDataHandle(server, reinterpret_cast<BYTE*>(bytes.data()),
                                   static_cast<DWORD>(bytes.size()), 0, string2, format, 0);
    }
    case XTYP_ADVSTART:
      return answer(served.contains(key) ? 1 : 0);
    case XTYP_POKE:
      served[key] = BytesOf(data).c_str();
      return answer(DDE_FACK);
    case XTYP_EXECUTE:
      return answer(Execute(BytesOf(data)) ? DDE_FACK : 0);
    default:
      return nullptr;
  }
}

void Stay() {
  std::puts("ready");
  std::fflush(stdout);
  HandleMessages(kStay);
}

int RunClient(const char* scriptPath, const char* transcriptPath) {
  std::ifstream file(scriptPath, std::ios::binary);
  const std::string script{std::istreambuf_iterator<char>(file), {}};
  PlainClient client;
  std::ofstream(transcriptPath, std::ios::binary) << vemra::test::RunScript(script, client);
  return 0;
}

int Hold() {
  PlainClient client;
  if (!client.Connect('a', "Library", "Manuals")) return 1;
  Stay();
  return 0;
}

int RunServer() {
  served = {{KeyOf("Manuals", "Texts", CF_TEXT), "512"},
            {KeyOf("Archive", "Texts", CF_TEXT), "0"},
            {KeyOf("Manuals", "Table", CF_SYLK), "ID;"},
            {KeyOf("Manuals", "Table", NumberOf("VemraRow")), std::string("1\0002", 3)}};
  ::DdeInitializeA(&server, Serve, APPCLASS_STANDARD, 0);
  const HSZ service = ::DdeCreateStringHandleA(server, "Library", CP_WINANSI);
  ::DdeNameService(server, service, nullptr, DNS_REGISTER);
  Stay();
  ::DdeUninitialize(server);
  return 0;
}

}  // namespace

int main(int count, char** arguments) {
  const std::string mode = count > 1 ? arguments[1] : "";
  if (mode == "client" && count == 4) return RunClient(arguments[2], arguments[3]);
  if (mode == "hold") return Hold();
  if (mode == "serve") return RunServer();
  return 2;
}
