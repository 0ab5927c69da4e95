#include <string>

#include "Support/definition/FileINI.h"
#include "Support/foundation/INIWorker.h"
#include "fuzz/SavedFiles.h"

namespace vemra::fuzz {
namespace {

// Whether a field lost a special role to a later one, so that it is saved with other rules.
bool RolesWereLost(const CTavoFileINI& definitions, const std::string& path) {
  INIWorker reader(path);
  const INIWorker::Batch snapshot(reader);
  for (POSITION position = definitions.GetStartPosition(); position != 0;) {
    const CTavoField& field = *definitions.GetNextField(position);
    std::string rules;
    reader.GetWholeString("FIELD" + std::to_string(field.GetFieldno()), "FIELDRULES", rules);
    if (((ParseFieldRules(rules) ^ field.GetFieldRule()) & ~fieldrule::kGeneral) != 0) return true;
  }
  return false;
}

void CheckFieldTable(const CTavoFileINI& definitions) {
  int count = 0;
  for (POSITION position = definitions.GetStartPosition(); position != 0; ++count) {
    const CTavoField* field = definitions.GetNextField(position);
    Check(definitions.GetField(field->GetFieldno()) == field, "the place of a field");
    Check(definitions.GetField(field->GetName().c_str()) != nullptr, "a field by its name");
    Check(definitions.HasAltSort(field->GetFieldno()) ==
              (field->HasFieldRule(fieldrule::kAltSort) ? 1 : 0),
          "an alternative sort");
  }
  Check(definitions.GetNumOfFields() == count, "the number of fields");
}

// A path's fields are those that say so themselves, also when the path was seen before.
void CheckPaths(CTavoFileINI& definitions) {
  for (const char* path : {"<a>", "<html><body><p>", "", "<a>"}) {
    CTavoFieldList fields;
    definitions.CheckFields(fields, path);
    for (int fieldno = 0; fieldno < kMaxFields; ++fieldno) {
      const CTavoField* field = definitions.GetField(fieldno);
      const bool isOn = field != nullptr && field->IsFieldOn(0, path) != 0;
      Check((fields.IsSet(fieldno) != 0) == isOn, "a field of a path");
    }
  }
}

// The same file as the definitions of a file type: the titles of the sections compare alike.
void CheckFileType(CTavoFileINI& definitions, const std::string& path) {
  CheckStable(path, [&](const std::string& from, const std::string& to) {
    definitions.ReadFTD(0, from, 1);
    CheckPaths(definitions);
    Check(definitions.SaveFTD(0, to) != 0, "saving a file type");
  });
}

void Run(std::string_view bytes) {
  const InputFile input(bytes);
  CTavoFileINI definitions;
  definitions.Load(input.Path().c_str());
  CheckFieldTable(definitions);
  std::vector<std::string> parts;
  definitions.SplitTitle(std::string(bytes.substr(0, 100)), parts);
  std::string errors;
  definitions.MapFieldsToFieldno(std::string(bytes.substr(0, 100)), errors);
  if (definitions.GetNumOfFields() > 0) CheckFileType(definitions, input.Path());
  if (RolesWereLost(definitions, input.Path())) return;
  CheckStable(input.Path(), [&](const std::string& from, const std::string& to) {
    definitions.Load(from.c_str());
    Check(definitions.Save(to.c_str()) != 0, "saving");
  });
}

}  // namespace
}  // namespace vemra::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  vemra::fuzz::Run(vemra::fuzz::ExactCopy(data, size).View());
  return 0;
}
