#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <system_error>

#include "Support/definition/Definition.h"
#include "Support/foundation/Foundation.h"
#include "Support/services/Services.h"

namespace dde_state {

// A text that other programs may ask for and watch, but not set.
class StateItem : public vemra::CDDEStringItem {
 public:
  using CDDEStringItem::CDDEStringItem;

  int Poke(std::uint16_t, const void*, std::uint32_t) override { return 0; }
  // Only a change is announced.
  void Update(const std::string& text) {
    if (text != GetData()) SetData(text);
  }
};

// The state of one database, a topic under the database's name, with the items
//
//   Status      new, ready, updating, failed (the last update), missing
//   Texts       how many texts its file dictionary has
//   LastUpdate  when the last good update ended, month first; never
//
// and the lists TopicItemList and Formats. They are read from the database's files by Refresh and
// by the command [refresh].
class DatabaseTopic : public vemra::CDDETopic {
 public:
  // The configuration's path, in the library's form. Without a name when it cannot be loaded: then
  // no server takes the topic.
  explicit DatabaseTopic(const std::string& configurationPath)
      : path_(configurationPath),
        status_(AddState("Status")),
        texts_(AddState("Texts")),
        lastUpdate_(AddState("LastUpdate")) {
    AddItem(std::make_unique<vemra::CDDESystemItem_ItemList>("TopicItemList"));
    AddItem(std::make_unique<vemra::CDDESystemItem_FormatList>("Formats"));
    vemra::CTavoFileCFG database;
    if (database.Load(path_) != 0) Create(database.GetIndexName());
    Refresh();
  }

  void Refresh() {
    vemra::CTavoFileCFG database;
    const bool found = database.Load(path_) != 0;
    status_.Update(found ? StatusOf(database) : "missing");
    if (!found) return;  // what was known last stays
    texts_.Update(TextsOf(database));
    lastUpdate_.Update(LastUpdateOf(database));
  }

  int Exec(const void* data, std::uint32_t size) override {
    // Another program's bytes: with or without a NUL, and possibly with more behind it.
    std::string_view command(static_cast<const char*>(data), size);
    command = command.substr(0, command.find('\0'));
    if (command != "[refresh]") return CDDETopic::Exec(data, size);
    Refresh();
    return 1;
  }

 private:
  StateItem& AddState(const std::string& name) {
    auto item = std::make_unique<StateItem>(name);
    StateItem& added = *item;
    AddItem(std::move(item));
    return added;
  }
  static std::string StatusOf(const vemra::CTavoFileCFG& database) {
    if (database.IsLoadable()) return "ready";
    if (!database.IsLastUpdateOK()) return "failed";
    return database.GetLastUpdateTime() == vemra::DateTime() ? "new" : "updating";
  }
  static std::string TextsOf(const vemra::CTavoFileCFG& database) {
    std::error_code error;
    const auto bytes = std::filesystem::file_size(vemra::ToHostPath(database.GetFileFIN()), error);
    return error ? "0" : std::to_string(bytes / vemra::CTavoFileDict::kRecordBytes);
  }
  static std::string LastUpdateOf(const vemra::CTavoFileCFG& database) {
    if (database.GetLastUpdateTime() == vemra::DateTime()) return "never";
    std::string text;
    vemra::GetDateTimeString(database.GetLastUpdateTime(), text);
    return text;
  }

  std::string path_;
  StateItem& status_;
  StateItem& texts_;
  StateItem& lastUpdate_;
};

}  // namespace dde_state
