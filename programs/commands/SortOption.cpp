#include "programs/commands/SortOption.h"

#include "Support/text/LangPack.h"
#include "programs/commands/CommandError.h"

namespace vemra::commands {
namespace {

std::vector<const CTavoField*> SortFields(const CTavoFileINI& definitions) {
  std::vector<const CTavoField*> fields;
  POSITION position = definitions.GetStartPosition();
  while (position != 0) {
    const CTavoField* field = definitions.GetNextField(position);
    if (field->HasFieldRule(fieldrule::kAltSort)) fields.push_back(field);
  }
  return fields;
}

[[noreturn]] void Refuse(const std::string& name, Database& database) {
  std::string names;
  for (const CTavoField* field : SortFields(database.GetFields())) {
    names += (names.empty() ? " " : ", ") + database.GetCodePage().ToUtf8(field->GetName());
  }
  throw CommandError("texts cannot be sorted by " + name + "; " +
                     (names.empty() ? "no field asks for a sort key" : "they can by" + names));
}

}  // namespace

engine::SortOrder ReadSortOption(const std::string& option, Database& database) {
  engine::SortOrder order;
  order.isDescending = option.starts_with('-');
  order.pack = database.GetPack();
  const std::string shown = option.substr(order.isDescending ? 1 : 0);
  const std::string name = database.GetCodePage().FromUtf8(shown);
  for (const CTavoField* field : SortFields(database.GetFields())) {
    if (order.pack->CompareNoCase(field->GetName(), name) == 0) continue;
    order.fieldno = field->GetFieldno();
    order.isNumber = field->HasFieldRule(fieldrule::kNumField);
    return order;
  }
  Refuse(shown, database);
}

}  // namespace vemra::commands
