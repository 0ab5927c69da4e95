#include "Support/services/dde/DDEServer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>

#include "tests/services/dde/LibraryServer.h"
#include "tests/services/dde/OtherProgram.h"

namespace vemra {
namespace {

using testing::ElementsAre;
using testing::EndsWith;

// With the in-process manager; what both managers do alike is in ConversationTest.
class DDEServerTest : public testing::Test {
 protected:
  ~DDEServerTest() override { test::ExpectNothingLeft(dde_); }

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
    int OnCreate() override { return IsCreated() ? 42 : 0; }
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
    EXPECT_EQ(server.Create("Library"), 42) << "what OnCreate gives";
  }
}

TEST_F(DDEServerTest, StatusTellsWhatHappens) {
  test::LibraryServer server;
  ASSERT_EQ(server.Create("Library"), 1);
  test::OtherProgram client(dde_);
  const struct {
    const char* command;
    const char* log;
  } kRows[] = {
      {"a connect Library Nothing", "Callback 1062H;"},
      {"a connect Library manuals", "Callback 1062H;Callback 8072H;Connect to manuals;"},
      {"a request Texts TEXT", "Callback 20B0H;Request manuals|Texts;"},
      {"a request None TEXT", "Callback 20B0H;Request manuals|None;Request manuals|None failed;"},
      {"a request Texts SYLK",
       "Callback 20B0H;Request manuals|Texts;Request manuals|Texts failed;"},
      {"a poke Texts TEXT 5", "Callback 4090H;"},
      {"a poke Texts SYLK 5", "Callback 4090H;Poke manuals|Texts failed;"},
      {"a poke None TEXT 5", "Callback 4090H;Poke manuals|None failed;"},
      {"a execute count 6", "Callback 4050H;Exec;"},
      {"a execute what 6", "Callback 4050H;Exec;Exec failed;"},
      {"a watch Texts TEXT", "Callback 1030H;"},
      {"a watch Texts SYLK", "Callback 1030H;Can't advise on manuals|Texts;"},
      {"a watch Items TEXT", "Callback 1030H;Can't advise on manuals|Items;"},
      {"a poke texts TEXT 7", "Callback 4090H;Callback 2022H;Request manuals|Texts;"},
      {"a unwatch Texts TEXT", "Callback 8040H;"},
      {"a disconnect", "Callback 80C2H;Disconnect;"},
      {"a connect Library System", "Callback 1062H;Callback 8072H;Connect to System;"},
      {"a request Topics TEXT",
       "Callback 20B0H;Request System|Topics;System topic request: Topics;"},
      {"a request Topics SYLK",
       "Callback 20B0H;Request System|Topics;System topic request: Topics;"
       "Request System|Topics failed;"},
      {"b connect Library *",
       "Callback 20E2H;Wild connect to <null>;Callback 8072H;Connect to Manuals;"},
      {"b connect * Nothing",
       "Callback 20E2H;Wild connect to Nothing;Wild connect to Nothing refused;"},
      {"b connect Nobody *", "Callback 20E2H;"},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.command);
    server.TakeLog();
    client.Run(row.command);
    EXPECT_EQ(server.TakeLog(), row.log);
  }
}

// That they are refused is among the rules that the callback's fuzz target tells.
TEST_F(DDEServerTest, StatusTellsOfNamesAndDataThatCannotBeRead) {
  test::LibraryServer server;
  ASSERT_EQ(server.Create("Library"), 1);
  const CHSZ topic(server, "Manuals");
  const CHSZ item(server, "Texts");
  const DDEString dead{0xDEAD};
  const DDEData deadData{0xDEAD};
  const struct {
    DDETransaction type;
    DDEString topic;
    DDEString item;
    DDEData data;
    const char* log;  // after the callback's own
  } kRows[] = {
      {kDDERequest, topic, dead, {}, "Request Manuals|<error>;Request Manuals|<error> failed;"},
      {kDDEAdviseRequest, topic, {}, {}, "Request Manuals|<null>;Request Manuals|<null> failed;"},
      {kDDEPoke, topic, item, deadData, "Poke Manuals|Texts failed;"},
      {kDDEExecute, topic, {}, {}, "Exec;Exec failed;"},
      {kDDEAdviseStart, dead, item, {}, "Can't advise on <error>|Texts;"},
      {kDDEAdviseData, topic, item, deadData, "AdviseData Manuals|Texts failed;"},
      {kDDEWildConnect, dead, {}, {}, "Wild connect to <error>;Wild connect to <error> refused;"},
      {kDDEWildConnect, {}, topic, {}, ""},  // another service
      {kDDEDisconnect, {}, {}, {}, "Disconnect;"},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.log);
    server.TakeLog();
    EXPECT_EQ(Call(row.type, row.topic, row.item, row.data), DDEData::kNone);
    const std::string log = server.TakeLog();
    EXPECT_EQ(log.substr(log.find(';') + 1), row.log);
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
    std::string names;
    const DDEData answer = server.DoWildConnect(topic);
    const std::string bytes = dde_.Bytes(answer);
    EXPECT_EQ(bytes.size() % 16, 0U);
    for (std::size_t at = 0; at + 16 <= bytes.size(); at += 16) {
      DDEStringPair pair;
      std::memcpy(&pair, bytes.data() + at, sizeof pair);
      names += dde_.Text(server.GetInstance(), pair.service) + '|' +
               dde_.Text(server.GetInstance(), pair.topic) + ' ';
    }
    EXPECT_TRUE(dde_->FreeDataHandle(answer));
    return names;
  };
  EXPECT_EQ(read(DDEString::kNone), "Library|Manuals Library|Archive Library|System -|- ");
  EXPECT_EQ(read(CHSZ(server, "ARCHIVE")), "Library|Archive -|- ");
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
  using Numbers = std::vector<std::uint16_t>;
  CDDETopic topic("Formats");
  const std::uint16_t own = RegisterDDEFormat("Own Format");
  EXPECT_EQ(topic.AddItem(std::make_unique<Formats>("a", Numbers{12, own, 0})), 1);
  EXPECT_EQ(topic.AddItem(std::make_unique<CDDEItem>("none")), 1);
  EXPECT_EQ(topic.AddItem(std::make_unique<Formats>("b", Numbers{13, 12, 2, 0})), 1);
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
      custom += std::to_string(type) + ' ' + std::to_string(format) + ' ' + StringFromHsz(string2);
      custom += ';';
      return type == kDDEConnect ? kDDETrue : DDEData::kNone;
    }
    std::string asked;
    std::string custom;
  };
  Last server;
  ASSERT_EQ(server.AddTopic(std::make_unique<CDDETopic>("Empty")), 1);
  ASSERT_EQ(server.AddTopic(std::make_unique<CDDETopic>("EMPTY")), 0);
  ASSERT_EQ(server.Create("Library", kDDESkipRegistrations), 1);
  test::OtherProgram client(dde_);
  const struct {
    const char* command;
    const char* answer;
  } kRows[] = {
      {"a connect Library Unknown", "done"},  // by CustomCallback
      {"a request Item TEXT", "[Unknown|Item]"},
      {"b connect Library Empty", "done"},
      {"b request Item TEXT", "[Empty|Item]"},
      {"b request Custom TEXT", "refused"},
      {"b poke Item TEXT abc", "done"},
      {"b watch Item TEXT", "refused"},
      {"b watch Item SYLK", "done"},
      {"b execute go", "refused"},
      {"b unwatch Item SYLK", "done"},
  };
  for (const auto& row : kRows) EXPECT_EQ(client.Run(row.command), row.answer) << row.command;
  EXPECT_EQ(server.asked, "Empty|Item 3");
  EXPECT_EQ(server.custom, "4194 0 Library;8368 1 Custom;4144 1 Item;16464 0 <null>;32832 4 Item;");
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
  ASSERT_EQ(client.Run("a connect Library Manuals"), "done");
  for (const char* const command : {"a request Bad TEXT", "a poke Bad TEXT x", "a watch Bad TEXT"})
    EXPECT_EQ(client.Run(command), "refused") << command;
  server.breaks = "Callback %4.4XH";
  EXPECT_EQ(client.Run("a request Texts TEXT"), "refused");
  EXPECT_EQ(client.Run("b connect Library Manuals"), "refused");
  server.breaks.clear();
  EXPECT_EQ(client.Transact('a', "request", "Texts", "TEXT", ""), std::string("512\0", 4));
}

TEST_F(DDEServerTest, ShutdownEndsOpenConversations) {
  test::LibraryServer server;
  ASSERT_EQ(server.Create("Library"), 1);
  test::OtherProgram client(dde_);
  ASSERT_EQ(client.Run("a connect Library Manuals"), "done");
  ASSERT_EQ(client.Run("a watch Texts TEXT"), "done");
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
  EXPECT_EQ(client.Run("a request Texts TEXT"), "refused");
  static_cast<CDDEStringItem*>(server.FindTopic("Manuals")->FindItem("Texts"))->SetData("later");
  EXPECT_EQ(server.FindTopic("Manuals")->PostAdvise("Texts"), 0);
}

TEST_F(DDEServerTest, AClientThatEndsIsForgotten) {
  test::LibraryServer server;
  ASSERT_EQ(server.Create("Library"), 1);
  test::OtherProgram client(dde_);
  for (const char* const command :
       {"a connect Library Manuals", "a watch Texts TEXT", "b connect Library Manuals"}) {
    ASSERT_EQ(client.Run(command), "done");
  }
  server.TakeLog();
  client.Die('a');
  EXPECT_EQ(server.TakeLog(), "Callback 80C2H;Disconnect;");
  EXPECT_EQ(server.GetConversations().GetCount(), 1);
  EXPECT_EQ(client.Run("b execute count 9"), "done");
  EXPECT_EQ(client.Run("b request Texts TEXT"), "[9]");
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
    std::uint32_t error;
  } kRows[] = {{"Nobody", "Manuals", "Failed to connect to Nobody|Manuals. Error 16394;", 16394},
               {"Library", "Nothing", "Failed to connect to Library|Nothing. Error 16394;", 16394},
               {"", "Manuals", "Failed to connect to |Manuals. Error 16390;", 16390}};
  for (const auto& row : kRows) {
    EXPECT_EQ(conversation->ConnectTo(row.service, row.topic), 0);
    EXPECT_THAT(server.TakeLog(), EndsWith(row.status));
    EXPECT_EQ(server.GetLastError(), row.error) << "asking has not reset it";
  }
}

// Both sides are this program's own: it knows of its poke, so that is not announced to it.
TEST_F(DDEServerTest, APokeToOneselfIsNotAnnounced) {
  struct Watching : test::LibraryServer {
    int AdviseData(std::uint16_t, DDEConversation conversation, const std::string& topic,
                   const std::string& item, const void* data, std::uint32_t size) override {
      EXPECT_NE(FindConversation(conversation), nullptr);
      changes.push_back(topic + '|' + item + ' ' + test::CommandOf(data, size));
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
  ASSERT_EQ(client.Run("a connect Library Manuals"), "done");
  EXPECT_EQ(client.Run("a poke Texts TEXT 2"), "done");
  server.handles = 0;
  EXPECT_EQ(client.Run("a poke Texts TEXT 3"), "done");
  EXPECT_THAT(server.changes, ElementsAre("Manuals|Texts 2", "Manuals|Texts 3"));
  EXPECT_THAT(server.TakeLog(), EndsWith(";AdviseData Manuals|Texts failed;"));
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
