// The callback's arguments, as another program or a broken management library might give them: any
// transaction, names and blocks that are there, were there or never were. What the server answers
// is held against its rules told plainly.
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Support/platform/Dde.h"
#include "Support/platform/InProcessDde.h"
#include "Support/services/Services.h"
#include "fuzz/FuzzInput.h"

namespace vemra::fuzz {
namespace {

constexpr char kTopic[] = "Manuals";
constexpr char kItem[] = "Texts";

struct Server : CDDEServer {
  ~Server() override { Shutdown(); }
  int Exec(const std::string& topic, const void* data, std::uint32_t size) override {
    command.assign(static_cast<const char*>(data), size);
    if (topic != kTopic || command.starts_with("no")) return 0;
    if (command.starts_with("throw")) throw std::string(command);
    return 1;
  }
  int AdviseData(std::uint16_t, DDEConversation, const std::string&, const std::string&,
                 const void* data, std::uint32_t size) override {
    advised.assign(static_cast<const char*>(data), data == nullptr ? 0 : size);
    return advised.empty() ? 0 : 1;
  }
  void Status(const char* format, ...) override {
    Check(format != nullptr && *format != '\0', "a status text");
  }
  std::string command;
  std::string advised;
};

// The bytes of the input, one after the other, and zeros behind them.
class Steps {
 public:
  explicit Steps(std::string_view bytes) : left_(bytes) {}
  bool AtEnd() const { return left_.empty(); }
  unsigned Next() {
    if (left_.empty()) return 0;
    const auto value = static_cast<unsigned char>(left_.front());
    left_.remove_prefix(1);
    return value;
  }
  std::string Take(std::size_t size) {
    const std::string bytes(left_.substr(0, size));
    left_.remove_prefix(bytes.size());
    return bytes;
  }

 private:
  std::string_view left_;
};

constexpr DDETransaction kTypes[] = {
    kDDEError,    kDDEAdviseData, kDDEAdviseRequest,  kDDEAdviseStart, kDDEAdviseStop,
    kDDEExecute,  kDDEConnect,    kDDEConnectConfirm, kDDEPoke,        kDDETransactionComplete,
    kDDERegister, kDDERequest,    kDDEDisconnect,     kDDEUnregister,  kDDEWildConnect};
constexpr std::uint32_t kFormats[] = {kDDEFormatText, 4, 0, 0xC000, 0xFFFFC000, 0xFFFF0001};

// A name's handle, and what it stands for; no text for one that is not alive.
struct Name {
  DDEString handle;
  std::optional<std::string> text;
};

class World {
 public:
  World() {
    platform::SetDdeManager(&dde_);
    server_ = std::make_unique<Server>();
    auto topic = std::make_unique<CDDETopic>(kTopic);
    auto item = std::make_unique<CDDEStringItem>(kItem, "512");
    item_ = item.get();
    topic->AddItem(std::move(item));
    server_->AddTopic(std::move(topic));
    Check(server_->Create("Library") == 1, "a server");
    names_ = {{DDEString::kNone, {}}, {DDEString{0xDEAD}, {}}};
    for (const char* const text : {kTopic, kItem, "System", "Topics", "Library", "Nothing"}) {
      names_.push_back({dde_.CreateStringHandle(server_->GetInstance(), text), text});
    }
  }
  ~World() {
    server_->Shutdown();
    dde_.HandleMessages(0);
    Check(dde_.GetStringCount() == 0 && dde_.GetDataCount() == 0, "nothing is left");
    server_.reset();
    platform::SetDdeManager(nullptr);
  }

  void Step(Steps& steps) {
    const unsigned kind = steps.Next();
    const std::uint32_t type = kind < 0xF0 ? kTypes[kind % std::size(kTypes)] : kind * 0x101;
    const std::uint32_t format = kFormats[steps.Next() % std::size(kFormats)];
    const DDEConversation conversation{steps.Next() % 4};
    const Name& first = names_[steps.Next() % names_.size()];
    const Name& second = names_[steps.Next() % names_.size()];
    const unsigned dataKind = steps.Next() % 4;
    const std::string bytes = steps.Take(steps.Next() % 16);
    DDEData data{dataKind == 1 ? 0xDEADU : 0U};
    if (dataKind > 1) {
      data = dde_.CreateDataHandle(server_->GetInstance(), bytes.data(),
                                   static_cast<std::uint32_t>(bytes.size()), {}, 0);
    }
    const std::string before = item_->GetData();
    const DDEData answer = CDDEServer::StdDDECallback(
        type, format, conversation, first.handle, second.handle, data, steps.Next(), steps.Next());
    CheckAnswer(type, static_cast<std::uint16_t>(format), first, second,
                dataKind > 1 ? std::optional(bytes) : std::nullopt, data, before, answer);
    dde_.FreeDataHandle(data);
    if (answer != kDDETrue && answer != kDDEAcknowledged) dde_.FreeDataHandle(answer);
  }

 private:
  static std::string UpToNul(const std::string& bytes) { return bytes.substr(0, bytes.find('\0')); }

  void CheckAnswer(std::uint32_t type, std::uint16_t format, const Name& first, const Name& second,
                   const std::optional<std::string>& bytes, DDEData data, const std::string& before,
                   DDEData answer) {
    const bool knownTopic = first.text == kTopic || first.text == "System";
    const bool ours = first.text == kTopic && second.text == kItem && format == kDDEFormatText;
    const bool none = answer == DDEData::kNone;
    if (type != kDDEPoke) Check(item_->GetData() == before, "only a poke changes the item");
    switch (type) {
      case kDDEConnect:
        Check(answer == (knownTopic ? kDDETrue : DDEData::kNone), "a topic that is there");
        break;
      case kDDERequest:
      case kDDEAdviseRequest: {
        const bool system =
            first.text == "System" && second.text == "Topics" && format == kDDEFormatText;
        Check(none == !(ours || system), "a request for what is there");
        if (!none) Check(Read(answer) == (ours ? before : "Manuals\tSystem") + '\0', "its data");
        break;
      }
      case kDDEPoke:
        Check(answer == (ours && bytes ? kDDEAcknowledged : DDEData::kNone), "a poke with data");
        Check(item_->GetData() == (none ? before : UpToNul(*bytes)), "what was poked");
        break;
      case kDDEExecute: {
        const bool may = first.text == kTopic && bytes && !bytes->starts_with("no") &&
                         !bytes->starts_with("throw");
        Check(answer == (may ? kDDEAcknowledged : DDEData::kNone), "a command");
        if (may) Check(server_->command == *bytes, "the command itself");
        break;
      }
      case kDDEAdviseStart:
        Check(answer == (ours ? kDDETrue : DDEData::kNone), "an item to watch");
        break;
      case kDDEAdviseData:
        Check(none == !(bytes && !bytes->empty()), "advise data");
        if (!none) Check(server_->advised == *bytes, "the advise data itself");
        break;
      case kDDEWildConnect: {
        const bool named = second.handle != DDEString::kNone;
        const bool any = first.handle == DDEString::kNone;
        const bool asked = (!named || second.text == "Library") && (any || knownTopic);
        Check(none == !asked, "a wild connect");
        if (asked) Check(Read(answer).size() == (any ? 3U : 2U) * sizeof(DDEStringPair), "pairs");
        break;
      }
      default:
        Check(none, "nothing to answer");
    }
    Check(!none || data == DDEData::kNone || !bytes || Read(data) == *bytes, "the data is kept");
  }
  std::string Read(DDEData data) {
    std::uint32_t size = 0;
    const std::uint8_t* const bytes = dde_.AccessData(data, &size);
    Check(bytes != nullptr, "data that can be read");
    return {reinterpret_cast<const char*>(bytes), size};
  }

  platform::InProcessDde dde_;
  std::unique_ptr<Server> server_;
  CDDEStringItem* item_ = nullptr;
  std::vector<Name> names_;
};

void Run(std::string_view bytes) {
  World world;
  for (Steps steps(bytes); !steps.AtEnd();) world.Step(steps);
}

}  // namespace
}  // namespace vemra::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  vemra::fuzz::Run(vemra::fuzz::ExactCopy(data, size).View());
  return 0;
}
