#include "Support/services/dde/DDEServer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>

#include "tests/services/dde/LibraryServer.h"
#include "tests/services/dde/OtherProgram.h"

namespace vemra {
namespace {

using testing::ElementsAre;

// With the in-process manager; what both managers do alike is in ConversationTest.
class DDEServerTest : public testing::Test {
 protected:
  ~DDEServerTest() override {
    dde_.Settle();
    EXPECT_EQ(CDDEServer::GetServer(), nullptr);
    EXPECT_EQ(dde_.InProcess().GetStringCount(), 0U);
    EXPECT_EQ(dde_.InProcess().GetDataCount(), 0U);
    EXPECT_EQ(dde_.InProcess().GetConversationCount(), 0U);
  }

  // A transaction straight to the callback, whose names need not be alive.
  static DDEData Call(DDETransaction type, DDEString topic, DDEString item = {}, DDEData data = {},
                      std::uint32_t format = kDDEFormatText) {
    return CDDEServer::StdDDECallback(type, format, DDEConversation{7}, topic, item, data, 0, 0);
  }

  test::TestDdeManager dde_{test::TestDdeManager::kInProcess};
};

TEST_F(DDEServerTest, OneServerUntilItIsShutDown) {
  test::RecordingServer first;
  CDDEServer second;
  std::uint32_t instance = 0;
  EXPECT_EQ(first.Create("Library", 0, &instance), 1);
  EXPECT_EQ(instance, first.GetInstance());
  EXPECT_TRUE(first.IsCreated());
  EXPECT_EQ(CDDEServer::GetServer(), &first);
  EXPECT_EQ(second.Create("Other"), 0);
  EXPECT_EQ(first.Create("Again"), 0);
  second.Shutdown();
  EXPECT_EQ(CDDEServer::GetServer(), &first) << "not the server's to shut down";
  first.Shutdown();
  EXPECT_FALSE(first.IsCreated());
  EXPECT_EQ(first.GetInstance(), 0U);
  EXPECT_EQ(second.Create("Other"), 1);
  second.Shutdown();
  EXPECT_EQ(first.Create("Again"), 1) << "its system topic is there already";
  EXPECT_EQ(first.GetTopics().GetCount(), 1);
}

TEST_F(DDEServerTest, ACreateThatFailsLeavesNothing) {
  struct Choosy : CDDEServer {
    int AddTopic(std::unique_ptr<CDDETopic> topic) override {
      return topic->GetName() == refused ? 0 : CDDEServer::AddTopic(std::move(topic));
    }
    std::string refused;
  };
  const struct {
    const char* label;
    std::string name;
    std::uint32_t flags;
    std::string refused;
    std::uint32_t error;
  } kRows[] = {
      {"name refused", "Library", kDDEClientOnly, "", kDDEErrorUsage},
      {"name too long", std::string(256, 'x'), 0, "", kDDEErrorInvalidParameter},
      {"system topic refused", "Library", 0, "System", kDDENoError},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.label);
    Choosy server;
    server.refused = row.refused;
    EXPECT_EQ(server.Create(row.name, row.flags), 0);
    EXPECT_FALSE(server.IsCreated());
    EXPECT_EQ(CDDEServer::GetServer(), nullptr);
    EXPECT_EQ(server.GetLastError(), row.error);
    EXPECT_EQ(server.GetLastError(), row.error) << "it is kept";
    server.refused.clear();
    EXPECT_EQ(server.Create("Library"), 1);
  }
}

TEST_F(DDEServerTest, CreateGivesWhatOnCreateGives) {
  struct Unwilling : CDDEServer {
    int OnCreate() override { return IsCreated() ? 42 : 0; }
  };
  Unwilling server;
  EXPECT_EQ(server.Create("Library"), 42);
}

TEST_F(DDEServerTest, ANameThatAnotherProgramHasIsSharedWithIt) {
  std::uint32_t other = 0;
  const auto refuse = [](std::uint32_t, std::uint32_t, DDEConversation, DDEString, DDEString,
                         DDEData, std::uintptr_t, std::uintptr_t) { return DDEData::kNone; };
  ASSERT_EQ(dde_->Initialize(&other, refuse, 0), kDDENoError);
  ASSERT_TRUE(dde_->RegisterName(other, dde_->CreateStringHandle(other, "library")));
  {
    test::LibraryServer server;
    EXPECT_EQ(server.Create("Library"), 1);
    EXPECT_EQ(server.GetLastError(), kDDENoError);
    test::OtherProgram client(dde_);
    EXPECT_TRUE(client.Connect('a', "Library", "Manuals"));
  }
  dde_->Uninitialize(other);
}

TEST_F(DDEServerTest, StatusTellsWhatHappens) {
  test::LibraryServer server;
  ASSERT_EQ(server.Create("Library"), 1);
  test::OtherProgram client(dde_);
  const struct {
    const char* command;
    std::vector<std::string> log;
  } kRows[] = {
      {"a connect Library Nothing", {"Callback 1062H"}},
      {"a connect Library manuals", {"Callback 1062H", "Callback 8072H", "Connect to manuals"}},
      {"a request Texts TEXT", {"Callback 20B0H", "Request manuals|Texts"}},
      {"a request None TEXT",
       {"Callback 20B0H", "Request manuals|None", "Request manuals|None failed"}},
      {"a request Texts SYLK",
       {"Callback 20B0H", "Request manuals|Texts", "Request manuals|Texts failed"}},
      {"a poke Texts TEXT 5", {"Callback 4090H"}},
      {"a poke Texts SYLK 5", {"Callback 4090H", "Poke manuals|Texts failed"}},
      {"a poke None TEXT 5", {"Callback 4090H", "Poke manuals|None failed"}},
      {"a execute count 6", {"Callback 4050H", "Exec"}},
      {"a execute what 6", {"Callback 4050H", "Exec", "Exec failed"}},
      {"a watch Texts TEXT", {"Callback 1030H"}},
      {"a watch Texts SYLK", {"Callback 1030H", "Can't advise on manuals|Texts"}},
      {"a watch Items TEXT", {"Callback 1030H", "Can't advise on manuals|Items"}},
      {"a poke texts TEXT 7", {"Callback 4090H", "Callback 2022H", "Request manuals|Texts"}},
      {"a unwatch Texts TEXT", {"Callback 8040H"}},
      {"a disconnect", {"Callback 80C2H", "Disconnect"}},
      {"a connect Library System", {"Callback 1062H", "Callback 8072H", "Connect to System"}},
      {"a request Topics TEXT",
       {"Callback 20B0H", "Request System|Topics", "System topic request: Topics"}},
      {"a request Topics SYLK",
       {"Callback 20B0H", "Request System|Topics", "System topic request: Topics",
        "Request System|Topics failed"}},
      {"b connect Library *",
       {"Callback 20E2H", "Wild connect to <null>", "Callback 8072H", "Connect to Manuals"}},
      {"b connect * Nothing",
       {"Callback 20E2H", "Wild connect to Nothing", "Wild connect to Nothing refused"}},
      {"b connect Nobody *", {"Callback 20E2H"}},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.command);
    server.TakeLog();
    test::RunCommand(row.command, client);
    EXPECT_EQ(server.TakeLog(), row.log);
  }
}

TEST_F(DDEServerTest, NamesAndDataThatCannotBeReadAreRefused) {
  test::LibraryServer server;
  ASSERT_EQ(server.Create("Library"), 1);
  const CHSZ topic(server, "Manuals");
  const CHSZ item(server, "Texts");
  const DDEString dead{0xDEAD};
  const struct {
    const char* label;
    DDETransaction type;
    DDEString topic;
    DDEString item;
    DDEData data;
    std::vector<std::string> log;
  } kRows[] = {
      {"no topic", kDDEConnect, dead, item, {}, {}},
      {"null topic", kDDEConnect, {}, item, {}, {}},
      {"dead item",
       kDDERequest,
       topic,
       dead,
       {},
       {"Request Manuals|<error>", "Request Manuals|<error> failed"}},
      {"null item",
       kDDEAdviseRequest,
       topic,
       {},
       {},
       {"Request Manuals|<null>", "Request Manuals|<null> failed"}},
      {"dead data", kDDEPoke, topic, item, DDEData{0xDEAD}, {"Poke Manuals|Texts failed"}},
      {"no data", kDDEPoke, topic, item, {}, {"Poke Manuals|Texts failed"}},
      {"no command", kDDEExecute, topic, {}, {}, {"Exec", "Exec failed"}},
      {"dead topic", kDDEAdviseStart, dead, item, {}, {"Can't advise on <error>|Texts"}},
      {"dead advise data",
       kDDEAdviseData,
       topic,
       item,
       DDEData{0xDEAD},
       {"AdviseData Manuals|Texts failed"}},
      {"dead wild topic",
       kDDEWildConnect,
       dead,
       {},
       {},
       {"Wild connect to <error>", "Wild connect to <error> refused"}},
      {"wild connect to another", kDDEWildConnect, {}, topic, {}, {}},
      {"wild connect to the dead", kDDEWildConnect, {}, dead, {}, {}},
      {"no conversation", kDDEDisconnect, {}, {}, {}, {"Disconnect"}},
      {"nothing known", static_cast<DDETransaction>(0x1234), topic, item, {}, {}},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.label);
    server.TakeLog();
    EXPECT_EQ(Call(row.type, row.topic, row.item, row.data), DDEData::kNone);
    auto log = server.TakeLog();
    ASSERT_FALSE(log.empty());
    log.erase(log.begin());
    EXPECT_EQ(log, row.log);
  }
}

TEST_F(DDEServerTest, ABlockIsReadWithinItsSize) {
  test::LibraryServer server;
  ASSERT_EQ(server.Create("Library"), 1);
  const CHSZ topic(server, "Manuals");
  const CHSZ item(server, "Texts");
  auto* const texts = static_cast<CDDEStringItem*>(server.FindTopic("Manuals")->FindItem("texts"));
  const struct {
    const char* label;
    std::string bytes;
    const char* text;
  } kRows[] = {{"text and NUL", std::string("ab\0", 3), "ab"},
               {"no NUL", "abc", "abc"},
               {"more behind", std::string("a\0bc", 4), "a"},
               {"only NUL", std::string(1, '\0'), ""},
               {"nothing", "", ""}};
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.label);
    texts->SetData("before");
    const DDEData block =
        dde_->CreateDataHandle(server.GetInstance(), row.bytes.data(),
                               static_cast<std::uint32_t>(row.bytes.size()), item, kDDEFormatText);
    EXPECT_EQ(Call(kDDEPoke, topic, item, block, 0xFFFF0001), kDDEAcknowledged);
    EXPECT_EQ(texts->GetData(), row.text);
    dde_->FreeDataHandle(block);
  }
  texts->SetData(std::string("cut\0here", 8));
  EXPECT_EQ(texts->GetData(), "cut");
}

// The answer to a wild connect: 16 bytes a pair, and one pair of null handles.
TEST_F(DDEServerTest, WildConnectsNameEveryTopic) {
  test::LibraryServer server;
  ASSERT_EQ(server.Create("Library"), 1);
  const auto read = [&](DDEString topic) {
    std::vector<std::string> names;
    const DDEData answer = server.DoWildConnect(topic);
    const std::string bytes = dde_.Bytes(answer);
    EXPECT_EQ(bytes.size() % 16, 0U);
    for (std::size_t at = 0; at + 16 <= bytes.size(); at += 16) {
      DDEStringPair pair;
      std::memcpy(&pair, bytes.data() + at, sizeof pair);
      names.push_back(dde_.Text(server.GetInstance(), pair.service) + '|' +
                      dde_.Text(server.GetInstance(), pair.topic));
    }
    EXPECT_TRUE(dde_->FreeDataHandle(answer));
    return names;
  };
  EXPECT_THAT(read(DDEString::kNone),
              ElementsAre("Library|Manuals", "Library|Archive", "Library|System", "-|-"));
  EXPECT_THAT(read(CHSZ(server, "ARCHIVE")), ElementsAre("Library|Archive", "-|-"));
  const std::size_t strings = dde_.InProcess().GetStringCount();
  for (int i = 0; i < 3; ++i) read(DDEString::kNone);
  EXPECT_EQ(dde_.InProcess().GetStringCount(), strings) << "each answer frees the one before";
  EXPECT_EQ(server.DoWildConnect(CHSZ(server, "None")), DDEData::kNone);
}

TEST_F(DDEServerTest, FormatsAreNamedOnceInTheOrderMet) {
  struct Formats : CDDEItem {
    Formats(const std::string& name, std::vector<std::uint16_t> formats)
        : CDDEItem(name), formats_(std::move(formats)) {}
    const std::uint16_t* GetFormatList() const override { return formats_.data(); }
    std::vector<std::uint16_t> formats_;
  };
  CDDETopic topic("Formats");
  const std::uint16_t own = RegisterDDEFormat("Own Format");
  EXPECT_EQ(topic.AddItem(std::make_unique<Formats>("a", std::vector<std::uint16_t>{12, own, 0})),
            1);
  EXPECT_EQ(topic.AddItem(std::make_unique<CDDEItem>("none")), 1);
  EXPECT_EQ(topic.AddItem(std::make_unique<Formats>("b", std::vector<std::uint16_t>{13, 12, 2, 0})),
            1);
  EXPECT_EQ(topic.AddItem(std::make_unique<CDDESystemItem_FormatList>("c")), 1);
  EXPECT_EQ(topic.AddItem(std::make_unique<CDDEItem>("A")), 0) << "the name is there";
  EXPECT_EQ(topic.AddItem(std::make_unique<CDDEItem>()), 0) << "no name";
  const void* data = nullptr;
  std::uint32_t size = 0;
  ASSERT_EQ(topic.Request(kDDEFormatText, "C", data, size), 1);
  const std::string expected = "WAVE\tOwn Format\t\tBITMAP\tTEXT";
  EXPECT_EQ(std::string(static_cast<const char*>(data), size), expected + '\0');
  EXPECT_EQ(topic.FindItem("c")->Create("d"), 0) << "items of a topic keep their names";
}

// An item first, then the server, then what is left.
TEST_F(DDEServerTest, WhatNobodyHandlesGoesOnToTheNext) {
  struct Last : test::RecordingServer {
    int Request(std::uint16_t, const std::string& topic, const std::string& item, const void*& data,
                std::uint32_t& size) override {
      if (item == "Custom") return 0;
      asked = topic + '|' + item;
      data = asked.c_str();
      size = static_cast<std::uint32_t>(asked.size());
      return 1;
    }
    int Poke(std::uint16_t, const std::string& topic, const std::string& item, const void*,
             std::uint32_t size) override {
      asked = topic + '|' + item + ' ' + std::to_string(size);
      return 1;
    }
    int CanAdvise(std::uint16_t format, const std::string&, const std::string&) override {
      return format == 4 ? 1 : 0;
    }
    DDEData CustomCallback(std::uint32_t type, std::uint16_t format, DDEConversation, DDEString,
                           DDEString string2, DDEData, std::uintptr_t, std::uintptr_t) override {
      custom.push_back(std::to_string(type) + ' ' + std::to_string(format) + ' ' +
                       StringFromHsz(string2));
      return type == kDDEConnect ? kDDETrue : DDEData::kNone;
    }
    std::string asked;
    std::vector<std::string> custom;
  };
  Last server;
  ASSERT_EQ(server.AddTopic(std::make_unique<CDDETopic>("Empty")), 1);
  ASSERT_EQ(server.AddTopic(std::make_unique<CDDETopic>("EMPTY")), 0);
  ASSERT_EQ(server.Create("Library", kDDESkipRegistrations), 1);
  test::OtherProgram client(dde_);
  EXPECT_TRUE(client.Connect('a', "Library", "Unknown")) << "by CustomCallback";
  EXPECT_EQ(client.Request('a', "Item", "TEXT"), "Unknown|Item");
  EXPECT_TRUE(client.Connect('b', "Library", "Empty"));
  EXPECT_EQ(client.Request('b', "Item", "TEXT"), "Empty|Item");
  EXPECT_EQ(client.Request('b', "Custom", "TEXT"), std::nullopt);
  EXPECT_TRUE(client.Poke('b', "Item", "TEXT", "abc"));
  EXPECT_EQ(server.asked, "Empty|Item 3");
  EXPECT_FALSE(client.Watch('b', "Item", "TEXT"));
  EXPECT_TRUE(client.Watch('b', "Item", "SYLK"));
  EXPECT_FALSE(client.Execute('b', "go"));
  EXPECT_TRUE(client.Unwatch('b', "Item", "SYLK"));
  EXPECT_THAT(server.custom, ElementsAre("4194 0 Library", "8368 1 Custom", "4144 1 Item",
                                         "16464 0 <null>", "32832 4 Item"));
}

TEST_F(DDEServerTest, NothingThrownLeavesTheCallback) {
  struct Throwing : CDDEItem {
    Throwing() : CDDEItem("Bad") {}
    int IsAsked() const { throw std::runtime_error("no"); }
    int Request(std::uint16_t, const void*&, std::uint32_t&) override { return IsAsked(); }
    int Poke(std::uint16_t, const void*, std::uint32_t) override { throw 7; }
    int CanAdvise(std::uint16_t) override { return IsAsked(); }
  };
  struct Fragile : test::LibraryServer {
    void Status(const char* format, ...) override {
      if (std::string(format) == breaks) throw std::runtime_error("no");
    }
    std::string breaks;
  };
  Fragile server;
  server.FindTopic("Manuals")->AddItem(std::make_unique<Throwing>());
  ASSERT_EQ(server.Create("Library"), 1);
  test::OtherProgram client(dde_);
  ASSERT_TRUE(client.Connect('a', "Library", "Manuals"));
  EXPECT_EQ(client.Request('a', "Bad", "TEXT"), std::nullopt);
  EXPECT_FALSE(client.Poke('a', "Bad", "TEXT", "x"));
  EXPECT_FALSE(client.Watch('a', "Bad", "TEXT"));
  server.breaks = "Callback %4.4XH";
  EXPECT_EQ(client.Request('a', "Texts", "TEXT"), std::nullopt);
  EXPECT_FALSE(client.Connect('b', "Library", "Manuals"));
  server.breaks.clear();
  EXPECT_EQ(client.Request('a', "Texts", "TEXT"), std::string("512\0", 4));
}

TEST_F(DDEServerTest, ShutdownEndsOpenConversations) {
  test::LibraryServer server;
  ASSERT_EQ(server.Create("Library"), 1);
  test::OtherProgram client(dde_);
  ASSERT_TRUE(client.Connect('a', "Library", "Manuals"));
  ASSERT_TRUE(client.Watch('a', "Texts", "TEXT"));
  struct Ended : CDDEConv {
    int Terminate() override {
      ++times;
      return CDDEConv::Terminate();
    }
    int times = 0;
  };
  const DDEHolder<Ended> own(new Ended);
  ASSERT_EQ(own->ConnectTo("Library", "Archive"), 1);
  EXPECT_EQ(own->ConnectTo("Library", "Archive"), 0) << "it is open";
  EXPECT_EQ(server.GetConversations().GetCount(), 3);
  server.Shutdown();
  EXPECT_EQ(server.GetConversations().GetCount(), 0);
  EXPECT_EQ(own->GetHandle(), DDEConversation::kNone);
  EXPECT_EQ(own->times, 1);
  std::string text;
  EXPECT_EQ(own->Request("Texts", text), 0);
  EXPECT_EQ(own->Terminate(), 0);
  EXPECT_EQ(own->ConnectTo("Library", "Archive"), 0) << "there is no server";
  EXPECT_EQ(client.Request('a', "Texts", "TEXT"), std::nullopt);
  static_cast<CDDEStringItem*>(server.FindTopic("Manuals")->FindItem("Texts"))->SetData("later");
  EXPECT_EQ(server.FindTopic("Manuals")->PostAdvise("Texts"), 0);
}

TEST_F(DDEServerTest, AClientThatEndsIsForgotten) {
  test::LibraryServer server;
  ASSERT_EQ(server.Create("Library"), 1);
  test::OtherProgram client(dde_);
  ASSERT_TRUE(client.Connect('a', "Library", "Manuals"));
  ASSERT_TRUE(client.Watch('a', "Texts", "TEXT"));
  ASSERT_TRUE(client.Connect('b', "Library", "Manuals"));
  server.TakeLog();
  client.Die('a');
  EXPECT_THAT(server.TakeLog(), ElementsAre("Callback 80C2H", "Disconnect"));
  EXPECT_EQ(server.GetConversations().GetCount(), 1);
  EXPECT_TRUE(client.Execute('b', "count 9"));
  EXPECT_EQ(client.Request('b', "Texts", "TEXT"), std::string("9\0", 2));
}

TEST_F(DDEServerTest, ConnectingFailsWithItsReason) {
  test::LibraryServer server;
  const DDEHolder<CDDEConv> conversation(new CDDEConv);
  EXPECT_EQ(conversation->ConnectTo("Library", "Manuals"), 0);
  ASSERT_EQ(server.Create("Library"), 1);
  const struct {
    const char* service;
    const char* topic;
    const char* status;
  } kRows[] = {{"Nobody", "Manuals", "Failed to connect to Nobody|Manuals. Error 16394"},
               {"Library", "Nothing", "Failed to connect to Library|Nothing. Error 16394"},
               {"", "Manuals", "Failed to connect to |Manuals. Error 16390"}};
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.status);
    server.TakeLog();
    EXPECT_EQ(conversation->ConnectTo(row.service, row.topic), 0);
    EXPECT_EQ(server.TakeLog().back(), row.status);
    EXPECT_TRUE(std::string(row.status).ends_with(std::to_string(server.GetLastError())))
        << "asking has not reset it";
  }
}

// Both sides are this program's own: it knows of its poke, so that is not announced to it.
TEST_F(DDEServerTest, APokeToOneselfIsNotAnnounced) {
  struct Watching : test::LibraryServer {
    int AdviseData(std::uint16_t, DDEConversation conversation, const std::string& topic,
                   const std::string& item, const void* data, std::uint32_t size) override {
      EXPECT_NE(FindConversation(conversation), nullptr);
      changes.push_back(topic + '|' + item + ' ' +
                        std::string(static_cast<const char*>(data), size).c_str());
      return handles;
    }
    std::vector<std::string> changes;
    int handles = 1;
  };
  Watching server;
  ASSERT_EQ(server.Create("Library"), 1);
  const DDEHolder<CDDEConv> own(new CDDEConv);
  ASSERT_EQ(own->ConnectTo("Library", "Manuals"), 1);
  ASSERT_EQ(own->Advise(kDDEFormatText, "Texts"), 1);
  EXPECT_EQ(own->Poke("Texts", "1"), 1);
  dde_.Settle();
  EXPECT_TRUE(server.changes.empty());
  test::OtherProgram client(dde_);
  ASSERT_TRUE(client.Connect('a', "Library", "Manuals"));
  EXPECT_TRUE(client.Poke('a', "Texts", "TEXT", "2"));
  server.handles = 0;
  server.TakeLog();
  EXPECT_TRUE(client.Poke('a', "Texts", "TEXT", "3"));
  EXPECT_THAT(server.changes, ElementsAre("Manuals|Texts 2", "Manuals|Texts 3"));
  EXPECT_EQ(server.TakeLog().back(), "AdviseData Manuals|Texts failed");
  server.handles = 1;
  const CHSZ item(server, "Texts");
  EXPECT_EQ(Call(kDDEAdviseData, item, item, DDEData{0xDEAD}), DDEData::kNone) << "dead data";
}

TEST_F(DDEServerTest, TheEndOfAConversationReachesItsObject) {
  test::LibraryServer server;
  ASSERT_EQ(server.Create("Library"), 1);
  const DDEHolder<CDDEConv> own(new CDDEConv);
  ASSERT_EQ(own->ConnectTo("Library", "Manuals"), 1);
  POSITION position = server.GetConversations().GetHeadPosition();
  CDDEConv* const other = server.GetConversations().GetNext(position);
  ASSERT_NE(other, own.Get());
  EXPECT_EQ(server.GetConversations().GetNext(position), own.Get());
  EXPECT_EQ(position, POSITION{0});
  EXPECT_EQ(server.GetConversations().GetNext(position), nullptr);
  EXPECT_EQ(other->Terminate(), 1);
  EXPECT_EQ(server.FindConversation(own->GetHandle()), own.Get()) << "it has not been told yet";
  std::string text;
  EXPECT_EQ(own->Request("Texts", text), 0);
  EXPECT_EQ(server.GetLastError(), kDDEErrorNoConversation);
  CDDEServer::HandleMessages(0);
  EXPECT_EQ(own->GetHandle(), DDEConversation::kNone);
  EXPECT_EQ(server.GetConversations().GetCount(), 0);
  EXPECT_EQ(own->ConnectTo("Library", "Manuals"), 1) << "once more";
}

// Whatever a callback does to conversations, those who wait in one are safe.
TEST_F(DDEServerTest, AConversationMayEndWhileItWaits) {
  struct Ending : test::LibraryServer {
    int Exec(const std::string&, const void*, std::uint32_t) override {
      Shutdown();
      return 1;
    }
  };
  Ending server;
  ASSERT_EQ(server.Create("Library"), 1);
  auto* const own = new CDDEConv;  // held by the server alone
  ASSERT_EQ(own->ConnectTo("Library", "Manuals"), 1);
  EXPECT_EQ(own->Exec("end"), 0);
  EXPECT_EQ(CDDEServer::GetServer(), nullptr);
}

}  // namespace
}  // namespace vemra
