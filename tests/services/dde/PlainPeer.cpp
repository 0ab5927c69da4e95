// The other program: its DDE is the system's own calls and nothing else.
//
//   dde_plain_peer client SCRIPT TRANSCRIPT   runs the script and writes what came of it
//   dde_plain_peer hold                       opens a conversation and stays
//   dde_plain_peer serve                      serves the topic "Library|Manuals"
//
// A peer that stays says "ready" on its standard output and ends after a minute, if nobody ends it
// before.
#include <windows.h>
// The management library's header builds on the one above.
#include <ddeml.h>

#include <cstdio>
#include <cstring>
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
    if (client.conversation == conversation)
      client.changes += TextOf(client.instance, item) + ' ' + Readable(BytesOf(data)) + ';';
  }
  return reinterpret_cast<HDDEDATA>(static_cast<ULONG_PTR>(DDE_FACK));
}

class PlainClient : public vemra::test::ScriptClient {
 public:
  bool Connect(char who, const std::string& service, const std::string& topic) override {
    Client& client = clients[who];
    if (client.instance == 0)
      ::DdeInitializeA(&client.instance, TakeAdviseData, APPCMD_CLIENTONLY, 0);
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
  std::optional<std::string> Request(char who, const std::string& item,
                                     const std::string& format) override {
    const HDDEDATA data = Transact(who, XTYP_REQUEST, item, NumberOf(format), nullptr);
    if (data == nullptr) return std::nullopt;
    const std::string bytes = BytesOf(data);
    ::DdeFreeDataHandle(data);
    return bytes;
  }
  bool Poke(char who, const std::string& item, const std::string& format,
            const std::string& text) override {
    return Transact(who, XTYP_POKE, item, NumberOf(format), &text) != nullptr;
  }
  bool Execute(char who, const std::string& command) override {
    return Transact(who, XTYP_EXECUTE, "*", 0, &command) != nullptr;
  }
  bool Watch(char who, const std::string& item, const std::string& format) override {
    return Transact(who, XTYP_ADVSTART, item, NumberOf(format), nullptr) != nullptr;
  }
  bool Unwatch(char who, const std::string& item, const std::string& format) override {
    return Transact(who, XTYP_ADVSTOP, item, NumberOf(format), nullptr) != nullptr;
  }
  std::string TakeChanges(char who) override { return std::exchange(clients[who].changes, {}); }

 private:
  static HSZ Name(const Client& client, const std::string& name) {
    return name == "*" ? nullptr
                       : ::DdeCreateStringHandleA(client.instance, name.c_str(), CP_WINANSI);
  }
  static HDDEDATA Transact(char who, UINT type, const std::string& item, UINT format,
                           const std::string* text) {
    const Client& client = clients[who];
    auto* const bytes =
        text == nullptr ? nullptr : reinterpret_cast<BYTE*>(const_cast<char*>(text->c_str()));
    const DWORD size = text == nullptr ? 0 : static_cast<DWORD>(text->size() + 1);
    const HDDEDATA result = ::DdeClientTransaction(
        bytes, size, client.conversation, Name(client, item), format, type, kTimeout, nullptr);
    HandleMessages(kSettle);
    return result;
  }
};

DWORD server = 0;
std::map<std::string, std::string> texts = {{"Manuals", "512"}, {"Archive", "0"}};
std::string row = std::string("1\0002", 3);

HDDEDATA DataOf(const std::string& topic, const std::string& item, UINT format, HSZ name) {
  std::string bytes;
  if (item == "Texts" && format == CF_TEXT) {
    bytes = texts[topic] + '\0';
  } else if (item == "Table" && format == CF_SYLK) {
    bytes = "ID;";
  } else if (item == "Table" && static_cast<WORD>(format) == NumberOf("VemraRow")) {
    bytes = row;
  } else {
    return nullptr;
  }
  return ::DdeCreateDataHandle(server, reinterpret_cast<BYTE*>(bytes.data()),
                               static_cast<DWORD>(bytes.size()), 0, name, format, 0);
}

HDDEDATA Answer(bool done) {
  return reinterpret_cast<HDDEDATA>(static_cast<ULONG_PTR>(done ? DDE_FACK : 0));
}

bool Take(const std::string& topic, const std::string& item, const std::string& bytes) {
  if (item == "Texts") {
    texts[topic] = bytes.c_str();
  } else {
    row = bytes.substr(0, 2);
  }
  return true;
}

// "count N" sets the texts of "Manuals", "archive N" those of "Archive".
bool Execute(const std::string& command) {
  const bool count = command.starts_with("count ");
  if (!count && !command.starts_with("archive ")) return false;
  const std::string topic = count ? "Manuals" : "Archive";
  texts[topic] = command.substr(command.find(' ') + 1).c_str();
  ::DdePostAdvise(server, ::DdeCreateStringHandleA(server, topic.c_str(), CP_WINANSI),
                  ::DdeCreateStringHandleA(server, "Texts", CP_WINANSI));
  return true;
}

HDDEDATA CALLBACK Serve(UINT type, UINT format, HCONV, HSZ string1, HSZ string2, HDDEDATA data,
                        ULONG_PTR, ULONG_PTR) {
  const std::string topic = TextOf(server, string1);
  const std::string item = TextOf(server, string2);
  switch (type) {
    case XTYP_CONNECT:
      return reinterpret_cast<HDDEDATA>(static_cast<ULONG_PTR>(texts.contains(topic)));
    case XTYP_REQUEST:
    case XTYP_ADVREQ:
      return DataOf(topic, item, format, string2);
    case XTYP_ADVSTART:
      return reinterpret_cast<HDDEDATA>(
          static_cast<ULONG_PTR>(item == "Texts" && format == CF_TEXT));
    case XTYP_POKE:
      return Answer(Take(topic, item, BytesOf(data)));
    case XTYP_EXECUTE:
      return Answer(Execute(BytesOf(data)));
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
