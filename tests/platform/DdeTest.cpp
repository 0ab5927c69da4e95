#include "Support/platform/Dde.h"

#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <map>

#include "tests/DdeManagers.h"

namespace vemra::platform {
namespace {

using test::TestDdeManager;

// What the two callbacks were asked, and what they answer. A callback has no object to go by.
struct Party {
  std::uint32_t instance = 0;
  bool logsNames = false;  // that come and go
  std::string log;         // each call with a semicolon behind it
  std::function<DDEData(std::uint32_t type, std::uint32_t format, DDEString item, DDEData data)>
      answer;
};
Party server;
Party client;
TestDdeManager* dde = nullptr;

const std::map<std::uint32_t, std::string> kNames = {
    {kDDEConnect, "connect"},
    {kDDEConnectConfirm, "confirm"},
    {kDDEWildConnect, "wild"},
    {kDDERequest, "request"},
    {kDDEPoke, "poke"},
    {kDDEExecute, "execute"},
    {kDDEAdviseStart, "start"},
    {kDDEAdviseStop, "stop"},
    {kDDEAdviseRequest, "need"},
    {kDDEAdviseData, "changed"},
    {kDDEDisconnect, "disconnect"},
    {kDDERegister, "register"},
    {kDDEUnregister, "unregister"},
};

template <Party& party>
DDEData Callback(std::uint32_t type, std::uint32_t format, DDEConversation /*conversation*/,
                 DDEString a, DDEString b, DDEData data, std::uintptr_t /*value1*/,
                 std::uintptr_t sameInstance) {
  if (!party.logsNames && (type == kDDERegister || type == kDDEUnregister)) return DDEData::kNone;
  party.log += kNames.at(type);
  if (type != kDDEDisconnect) {
    party.log += ' ' + dde->Text(party.instance, a) + '|' + dde->Text(party.instance, b);
    if (format != 0) party.log += ' ' + std::to_string(format & 0xFFFF);
  }
  if (sameInstance != 0) party.log += " self";
  if (data != DDEData::kNone) party.log += ' ' + std::string(dde->Bytes(data).c_str());
  party.log += ';';
  return party.answer ? party.answer(type, format, b, data) : DDEData::kNone;
}

class DdeTest : public testing::TestWithParam<TestDdeManager::Kind> {
 protected:
  DdeTest() : dde_(GetParam()) {
    dde = &dde_;
    server = {};
    client = {};
    Begin(0, kDDEClientOnly);
    server.answer = [this](auto... asked) { return Serve(asked...); };
  }
  ~DdeTest() override {
    End();
    dde_.Settle();
    if (dde_.IsInProcess()) {
      EXPECT_EQ(dde_.InProcess().GetStringCount(), 0U);
      EXPECT_EQ(dde_.InProcess().GetDataCount(), 0U);
      EXPECT_EQ(dde_.InProcess().GetConversationCount(), 0U);
    }
  }

  void Begin(std::uint32_t serverFlags, std::uint32_t clientFlags) {
    EXPECT_EQ(dde_->Initialize(&server.instance, Callback<server>, serverFlags), kDDENoError);
    EXPECT_EQ(dde_->Initialize(&client.instance, Callback<client>, clientFlags), kDDENoError);
    service_ = dde_->CreateStringHandle(server.instance, "Library");
    topic_ = dde_->CreateStringHandle(client.instance, "Manuals");
    item_ = dde_->CreateStringHandle(client.instance, "Texts");
  }
  void End() {
    dde_->Uninitialize(client.instance);
    dde_->Uninitialize(server.instance);
  }
  // The server: one text, which can be had as format 1, poked and set by a command.
  DDEData Serve(std::uint32_t type, std::uint32_t format, DDEString item, DDEData data) {
    switch (type) {
      case kDDEConnect:
        return kDDETrue;
      case kDDERequest:
      case kDDEAdviseRequest:
        return format != 1
                   ? DDEData::kNone
                   : dde_->CreateDataHandle(server.instance, text_.c_str(),
                                            static_cast<std::uint32_t>(text_.size() + 1), item, 1);
      case kDDEPoke:
      case kDDEExecute:
        text_ = dde_.Bytes(data).c_str();
        return kDDEAcknowledged;
      case kDDEAdviseStart:
        return format == 1 ? kDDETrue : DDEData::kNone;
      case kDDEWildConnect: {
        const DDEStringPair pairs[] = {{service_, topic_}, {}};
        return dde_->CreateDataHandle(server.instance, pairs, sizeof pairs, DDEString::kNone, 0);
      }
      default:
        return DDEData::kNone;
    }
  }
  DDEConversation Connect() {
    EXPECT_TRUE(dde_->RegisterName(server.instance, service_));
    dde_.Settle();
    return Connect(service_, topic_);
  }
  DDEConversation Connect(DDEString service, DDEString topic) {
    const DDEConversation conversation = dde_->Connect(client.instance, service, topic);
    dde_.Settle();
    return conversation;
  }
  // The answer of a transaction, the error's number when there is none.
  std::string Do(DDEConversation conversation, DDETransaction type, const char* bytes = "",
                 std::uint16_t format = 1) {
    const bool executes = type == kDDEExecute;
    const DDEData answer = dde_->ClientTransaction(
        bytes, static_cast<std::uint32_t>(std::strlen(bytes) + 1), conversation,
        executes ? DDEString::kNone : item_, executes ? 0 : format, type, 5000);
    const std::uint32_t error = dde_->GetLastError(client.instance);
    std::string result = answer == DDEData::kNone ? std::to_string(error) : "done";
    if (answer != DDEData::kNone && type == kDDERequest) {
      result = dde_.Bytes(answer).c_str();
      dde_->FreeDataHandle(answer);
    }
    dde_.Settle();
    return result;
  }

  TestDdeManager dde_;
  DDEString service_{};
  DDEString topic_{};
  DDEString item_{};
  std::string text_ = "512";
};

INSTANTIATE_TEST_SUITE_P(Managers, DdeTest, test::EveryDdeManager());

const std::string kNotProcessed = std::to_string(kDDEErrorNotProcessed);

TEST_P(DdeTest, NamesAreEqualWithoutRegardToCase) {
  const std::pair<std::string, std::string> kRows[] = {
      {"LIBRARY", "Library"},
      {"Librarx", "Librarx"},
      {std::string(255, 'x'), std::string(255, 'x')}};
  for (const auto& [given, read] : kRows) {
    const DDEString string = dde_->CreateStringHandle(client.instance, given);
    EXPECT_EQ(dde_.Text(server.instance, string), read);
    EXPECT_EQ(dde_->CompareStringHandles(string, service_) == 0, read == "Library");
    EXPECT_TRUE(dde_->FreeStringHandle(client.instance, string));
  }
  for (const std::string& refused : {std::string(), std::string(256, 'x')}) {
    EXPECT_EQ(dde_->CreateStringHandle(client.instance, refused), DDEString::kNone);
  }
  std::string text;
  EXPECT_FALSE(dde_->QueryString(client.instance, DDEString::kNone, &text));
}

TEST_P(DdeTest, AServiceNameIsTakenOnceByAnInstance) {
  const DDEString own = dde_->CreateStringHandle(client.instance, "library");
  EXPECT_TRUE(dde_->RegisterName(server.instance, service_));
  EXPECT_FALSE(dde_->RegisterName(server.instance, service_));
  if (dde_.IsInProcess()) {  // not refused under Wine
    EXPECT_FALSE(dde_->RegisterName(client.instance, own));
    EXPECT_EQ(dde_->GetLastError(client.instance), kDDEErrorUsage);
    EXPECT_EQ(dde_->GetLastError(client.instance), kDDENoError);
  }
  std::uint32_t other = 0;
  ASSERT_EQ(dde_->Initialize(&other, Callback<client>, 0), kDDENoError);
  EXPECT_TRUE(dde_->RegisterName(other, own)) << "servers may have a name in common";
  EXPECT_TRUE(dde_->Uninitialize(other));
  EXPECT_TRUE(dde_->UnregisterName(server.instance, service_));
  dde_.Settle();
  EXPECT_EQ(Connect(service_, topic_), DDEConversation::kNone);
  EXPECT_EQ(dde_->GetLastError(client.instance), kDDEErrorNoConversation);
}

TEST_P(DdeTest, AConversation) {
  const DDEConversation conversation = Connect();
  ASSERT_NE(conversation, DDEConversation::kNone);
  EXPECT_EQ(Do(conversation, kDDERequest), "512");
  EXPECT_EQ(Do(conversation, kDDERequest, "", 2), kNotProcessed);
  EXPECT_EQ(Do(conversation, kDDEPoke, "513"), "done");
  EXPECT_EQ(Do(conversation, kDDERequest), "513");
  EXPECT_EQ(Do(conversation, kDDEExecute, "514"), "done");
  EXPECT_EQ(Do(conversation, kDDEAdviseStart, "", 0xC123), kNotProcessed);
  EXPECT_EQ(Do(conversation, kDDEAdviseStart), "done");
  for (const char* const text : {"515", "516"}) {
    text_ = text;
    EXPECT_TRUE(dde_->PostAdvise(server.instance, topic_, item_));
    dde_.Settle();
  }
  EXPECT_TRUE(dde_->PostAdvise(server.instance, item_, topic_)) << "nobody watches it";
  EXPECT_EQ(Do(conversation, kDDEAdviseStop), "done");
  EXPECT_TRUE(dde_->PostAdvise(server.instance, topic_, item_));
  EXPECT_TRUE(dde_->Disconnect(conversation));
  dde_.Settle();
  EXPECT_NE(Do(conversation, kDDERequest), "516");
  EXPECT_EQ(server.log,
            "connect Manuals|Library;confirm Manuals|Library;request Manuals|Texts 1;"
            "request Manuals|Texts 2;poke Manuals|Texts 1 513;request Manuals|Texts 1;"
            "execute Manuals|- 514;start Manuals|Texts 49443;start Manuals|Texts 1;"
            "need Manuals|Texts 1;need Manuals|Texts 1;stop Manuals|Texts 1;disconnect;");
  EXPECT_EQ(client.log, "changed Manuals|Texts 1 515;changed Manuals|Texts 1 516;");
}

TEST_P(DdeTest, WildConnectsTakeTheFirstPair) {
  Connect();
  const struct {
    DDEString service;
    DDEString topic;
    std::string asked;
  } kRows[] = {{DDEString::kNone, DDEString::kNone, "wild -|-"},
               {service_, DDEString::kNone, "wild -|Library"},
               {DDEString::kNone, topic_, "wild Manuals|-"}};
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.asked);
    server.log.clear();
    const DDEConversation conversation = Connect(row.service, row.topic);
    EXPECT_EQ(server.log, row.asked + ";confirm Manuals|Library;");
    EXPECT_EQ(Do(conversation, kDDERequest), "512");
    EXPECT_TRUE(dde_->Disconnect(conversation));
    dde_.Settle();
  }
}

TEST_P(DdeTest, TheTwoSidesOfOneInstanceKnowIt) {
  const DDEConversation other = Connect();
  server.log.clear();
  const DDEConversation self = dde_->Connect(server.instance, service_, topic_);
  dde_.Settle();
  DdeConversationState state;
  ASSERT_TRUE(dde_->QueryConversation(self, &state));
  EXPECT_TRUE(state.connected);
  EXPECT_TRUE(state.sameInstance);
  EXPECT_EQ(server.log, "connect Manuals|Library self;confirm Manuals|Library self;");
  ASSERT_TRUE(dde_->QueryConversation(other, &state));
  EXPECT_FALSE(state.sameInstance);
}

TEST_P(DdeTest, FormatsHaveANumberForEachName) {
  const std::uint16_t number = dde_->RegisterFormat("Vemra Test Format");
  EXPECT_GE(number, 0xC000);
  EXPECT_EQ(dde_->RegisterFormat("vemra test FORMAT"), number);
  EXPECT_NE(dde_->RegisterFormat("Vemra Other Format"), number);
  EXPECT_EQ(dde_->GetFormatName(number), "Vemra Test Format");
  EXPECT_EQ(dde_->GetFormatName(1), "");
  EXPECT_EQ(dde_->RegisterFormat(""), 0);
}

// What follows is the documented behaviour, where Wine's differs.
class InProcessDdeTest : public DdeTest {};
INSTANTIATE_TEST_SUITE_P(Manager, InProcessDdeTest, testing::Values(TestDdeManager::kInProcess));

TEST_P(InProcessDdeTest, FlagsKeepTransactionsAway) {
  const struct {
    DDEFlags flag;
    DDETransaction type;
    const char* asked;
  } kRows[] = {{kDDEFailRequests, kDDERequest, "request Manuals|Texts 1;"},
               {kDDEFailPokes, kDDEPoke, "poke Manuals|Texts 1 x;"},
               {kDDEFailExecutes, kDDEExecute, "execute Manuals|- x;"},
               {kDDEFailAdvises, kDDEAdviseStart, "start Manuals|Texts 1;"}};
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.asked);
    for (const bool flagged : {true, false}) {
      End();
      Begin(flagged ? std::uint32_t{row.flag} : 0, 0);
      const DDEConversation conversation = Connect();
      EXPECT_EQ(Do(conversation, row.type, "x") == kNotProcessed, flagged);
      EXPECT_EQ(server.log.ends_with(row.asked), !flagged);
    }
  }
  End();
  Begin(kDDEFailConnections | kDDESkipRegistrations, 0);
  EXPECT_EQ(Connect(), DDEConversation::kNone);
  EXPECT_EQ(Connect(DDEString::kNone, topic_), DDEConversation::kNone);
}

TEST_P(InProcessDdeTest, BothSidesAreToldOfTheEnd) {
  const DDEConversation first = Connect();
  const DDEConversation second = Connect(service_, topic_);
  server.log.clear();
  EXPECT_TRUE(dde_->Disconnect(first));
  EXPECT_TRUE(dde_->Uninitialize(server.instance));
  EXPECT_EQ(Do(second, kDDERequest), std::to_string(kDDEErrorNoConversation));
  EXPECT_EQ(client.log, "disconnect;");
  EXPECT_EQ(server.log, "") << "it is gone";
  EXPECT_FALSE(dde_->Disconnect(second)) << "it ended with the telling";
}

TEST_P(InProcessDdeTest, AChangeGoesToEachLoopOnce) {
  const DDEConversation first = Connect();
  const DDEString other = dde_->CreateStringHandle(client.instance, "Archive");
  const DDEConversation second = Connect(service_, other);
  for (const DDEConversation conversation : {first, first, second})
    EXPECT_EQ(Do(conversation, kDDEAdviseStart), "done");
  const struct {
    DDEString topic;
    DDEString item;
    const char* log;
  } kRows[] = {{topic_, item_, "changed Manuals|Texts 1 512;"},
               {other, {}, "changed Archive|Texts 1 512;"},
               {{}, {}, "changed Manuals|Texts 1 512;changed Archive|Texts 1 512;"},
               {topic_, topic_, ""}};
  for (const auto& row : kRows) {
    client.log.clear();
    EXPECT_TRUE(dde_->PostAdvise(server.instance, row.topic, row.item));
    EXPECT_TRUE(client.log.empty()) << "it waits for the messages";
    dde_.Settle();
    EXPECT_EQ(client.log, row.log);
  }
  EXPECT_EQ(Do(second, kDDEAdviseStop), "done");
  EXPECT_EQ(Do(second, kDDEAdviseStop), kNotProcessed) << "there is none";
  EXPECT_TRUE(dde_->Disconnect(first));
  server.log.clear();
  EXPECT_TRUE(dde_->PostAdvise(server.instance, {}, {}));
  EXPECT_TRUE(server.log.empty()) << "nobody watches";
}

TEST_P(InProcessDdeTest, EverybodyIsToldOfServiceNames) {
  client.logsNames = true;
  EXPECT_TRUE(dde_->RegisterName(server.instance, service_));
  EXPECT_TRUE(dde_->UnregisterName(server.instance, service_));
  EXPECT_TRUE(dde_->RegisterName(server.instance, service_));
  EXPECT_TRUE(dde_->Uninitialize(server.instance));
  dde_.Settle();
  EXPECT_EQ(client.log,
            "register Library|Library;unregister Library|Library;"
            "register Library|Library;unregister Library|Library;");
}

TEST_P(InProcessDdeTest, AWildAnswerIsReadWithinItsSize) {
  Connect();
  for (const std::uint32_t size : {0U, 8U, 15U, 16U, 40U}) {
    server.answer = [&](std::uint32_t type, std::uint32_t, DDEString, DDEData) {
      const DDEStringPair pairs[] = {{service_, topic_}, {service_, item_}, {}};
      return type != kDDEWildConnect
                 ? DDEData::kNone
                 : dde_->CreateDataHandle(server.instance, pairs, size, DDEString::kNone, 0);
    };
    EXPECT_EQ(Connect(service_, DDEString::kNone) != DDEConversation::kNone, size >= 16) << size;
  }
}

TEST_P(InProcessDdeTest, OneTransactionAtATime) {
  const DDEConversation conversation = Connect();
  std::string inner;
  server.answer = [&](auto...) {
    inner = Do(conversation, kDDERequest);
    return kDDEBusy;
  };
  EXPECT_EQ(Do(conversation, kDDEExecute, "x"), std::to_string(kDDEErrorBusy));
  EXPECT_EQ(inner, std::to_string(kDDEErrorReentrancy));
}

// Every handle of a callback may be gone when it returns.
TEST_P(InProcessDdeTest, ACallbackMayEndEverything) {
  const DDETransaction kTypes[] = {kDDEConnect,     kDDEConnectConfirm, kDDEWildConnect,
                                   kDDERequest,     kDDEPoke,           kDDEExecute,
                                   kDDEAdviseStart, kDDEAdviseRequest};
  for (const DDETransaction ending : kTypes) {
    for (Party* const ended : {&server, &client}) {
      SCOPED_TRACE(kNames.at(ending) + (ended == &server ? " server" : " client"));
      End();
      Begin(0, 0);
      server.answer = [&](std::uint32_t type, auto... asked) {
        const DDEData answer = Serve(type, asked...);
        if (type == ending) {
          EXPECT_TRUE(dde_->Uninitialize(ended->instance));
        }
        return answer;
      };
      const DDEConversation conversation = Connect();
      Connect(service_, DDEString::kNone);
      for (const DDETransaction type : {kDDERequest, kDDEPoke, kDDEExecute, kDDEAdviseStart})
        Do(conversation, type, "x");
      dde_->PostAdvise(server.instance, topic_, item_);
      dde_.Settle();
      EXPECT_FALSE(dde_->Uninitialize(ended->instance)) << "it was asked";
    }
  }
}

}  // namespace
}  // namespace vemra::platform
