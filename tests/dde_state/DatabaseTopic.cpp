#include "tests/dde_state/DatabaseTopic.h"

#include <filesystem>
#include <memory>
#include <string_view>
#include <system_error>

#include "Support/definition/Definition.h"
#include "Support/foundation/Foundation.h"

namespace dde_state {
namespace {

using vemra::CTavoFileCFG;

// A text that other programs may ask for and watch, but not set.
class StateItem : public vemra::CDDEStringItem {
 public:
  using CDDEStringItem::CDDEStringItem;
  int Poke(std::uint16_t, const void*, std::uint32_t) override { return 0; }
};

std::string StatusOf(const CTavoFileCFG& database) {
  if (database.IsLoadable()) return "ready";
  if (!database.IsLastUpdateOK()) return "failed";
  return database.GetLastUpdateTime() == vemra::DateTime() ? "new" : "updating";
}

std::string TextsOf(const CTavoFileCFG& database) {
  std::error_code error;
  const auto bytes = std::filesystem::file_size(vemra::ToHostPath(database.GetFileFIN()), error);
  return error ? "0" : std::to_string(bytes / vemra::CTavoFileDict::kRecordBytes);
}

std::string LastUpdateOf(const CTavoFileCFG& database) {
  if (database.GetLastUpdateTime() == vemra::DateTime()) return "never";
  std::string text;
  vemra::GetDateTimeString(database.GetLastUpdateTime(), text);
  return text;
}

// Only changes are announced.
void Set(vemra::CDDEStringItem& item, const std::string& text) {
  if (item.GetData() != text) item.SetData(text);
}

}  // namespace

DatabaseTopic::DatabaseTopic(const std::string& configurationPath)
    : path_(configurationPath),
      status_(AddState("Status")),
      texts_(AddState("Texts")),
      lastUpdate_(AddState("LastUpdate")) {
  AddItem(std::make_unique<vemra::CDDESystemItem_ItemList>("TopicItemList"));
  AddItem(std::make_unique<vemra::CDDESystemItem_FormatList>("Formats"));
  CTavoFileCFG database;
  if (database.Load(path_) != 0) Create(database.GetIndexName());
  Refresh();
}

vemra::CDDEStringItem& DatabaseTopic::AddState(const std::string& name) {
  auto item = std::make_unique<StateItem>(name);
  StateItem& added = *item;
  AddItem(std::move(item));
  return added;
}

void DatabaseTopic::Refresh() {
  CTavoFileCFG database;
  const bool found = database.Load(path_) != 0;
  Set(status_, found ? StatusOf(database) : "missing");
  if (!found) return;  // what was known last stays
  Set(texts_, TextsOf(database));
  Set(lastUpdate_, LastUpdateOf(database));
}

int DatabaseTopic::Exec(const void* data, std::uint32_t size) {
  // Another program's bytes: with or without a NUL, and possibly with more behind it.
  std::string_view command(static_cast<const char*>(data), size);
  command = command.substr(0, command.find('\0'));
  if (command != "[refresh]") return CDDETopic::Exec(data, size);
  Refresh();
  return 1;
}

}  // namespace dde_state
