#pragma once

#include <cstdint>
#include <string>

#include "Support/services/Services.h"

namespace dde_state {

// The state of one database, a topic under the database's name, with the items
//
//   Status      new, ready, updating, failed (the last update), missing
//   Texts       how many texts its file dictionary has
//   LastUpdate  when the last good update ended, month first; never
//
// and the lists TopicItemList and Formats. They are read from the database's files by Refresh and
// by the command [refresh]; whoever watches an item is told of its changes. Nobody can set them.
class DatabaseTopic : public vemra::CDDETopic {
 public:
  // The configuration's path, in the library's form. Without a name when it cannot be loaded: then
  // no server takes the topic.
  explicit DatabaseTopic(const std::string& configurationPath);

  void Refresh();
  int Exec(const void* data, std::uint32_t size) override;

 private:
  vemra::CDDEStringItem& AddState(const std::string& name);

  std::string path_;
  vemra::CDDEStringItem& status_;
  vemra::CDDEStringItem& texts_;
  vemra::CDDEStringItem& lastUpdate_;
};

}  // namespace dde_state
