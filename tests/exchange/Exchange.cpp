// Writes a definition, one file of each format, or reads one and writes it again elsewhere, so that
// two builds can exchange their files. Usage: exchange write FOLDER | exchange rewrite FROM TO
// with existing folders as host paths.
#include <cstdio>
#include <exception>
#include <filesystem>
#include <memory>
#include <string>

#include "Support/definition/Definition.h"
#include "Support/foundation/File.h"
#include "Support/foundation/HostPath.h"
#include "tests/exchange/Rewrite.h"

namespace vemra::test {
namespace {

// Texts of every kind of byte that one line can hold.
std::string Text(int number) {
  static const char* const kTexts[] = {
      "plain",      "two words",    " blanks ", "\"quoted\"", "'quoted'",  "a;b=c]",   "[title]",
      "gr\xF6\xDF", "\x80\x95\xFF", "\"",       "a \"b\"",    "tab\there", "*.htm;*.x"};
  return kTexts[static_cast<std::size_t>(number) % std::size(kTexts)];
}

std::string Name(int number) {
  return Text(number) + std::to_string(number);
}

std::unique_ptr<CTavoField> MakeField(int number) {
  auto field = std::make_unique<CTavoField>();
  field->SetFieldno(number);
  field->SetName(Name(number));
  field->SetTitle(number % 3 == 0 ? Text(number) : field->GetName());
  // Every rule; each role to one field only, since the last one would take it.
  field->AddFieldRule(1U << number % 9);
  if (number >= 16 && number < 27) field->AddFieldRule(1U << number);
  field->SetCharset(static_cast<std::uint32_t>(number) * 0x9E3779B9U);
  if (number % 4 == 0) field->SetParentField(number / 2);
  CTavoFieldList list;
  for (int other = number; other < kMaxFields && number % 5 != 0; other += number) list.Set(other);
  field->SetFieldList(list);
  return field;
}

bool WriteFields(const std::string& folder) {
  CTavoFileINI definitions;
  for (int number = 0; number < kMaxFields; ++number) {
    CTavoField* field = definitions.AddField(MakeField(number));
    for (int i = 0; i < number % 4; ++i) field->AddTag(1, "*<" + Text(i + number) + ">", i, number);
    for (int i = 0; i < number % 3; ++i) field->AddAttribute(1, "<a>*", Name(i + number), i);
  }
  definitions.SetSeparator(" | ");
  for (int i = 0; i < 20; ++i) {
    definitions.AddTitleItem(std::make_unique<TavoTitleItem>(i, i * 7 % 20, Text(i), i % 2 != 0));
    definitions.AddStatus(Name(i), Text(i), Text(i + 1));
  }
  return definitions.Save((folder + "fields.ini").c_str()) != 0 &&
         definitions.SaveFTD(1, folder + "all.ftd") != 0;
}

std::unique_ptr<CTavoFileType> MakeFileType(int number) {
  auto fileType = std::make_unique<CTavoFileType>("Type, " + std::to_string(number), "*.x;*.y");
  fileType->SetFTDfileName("my " + std::to_string(number) + ".ftd");
  fileType->SetFormat(Text(number));
  fileType->SetLanguage(Name(number));
  for (int i = 0; i < number; ++i) {
    fileType->AddIDXitem(CTavoFileIDXitem::kFolder, "c:\\d, " + Text(2 * i), i % 2,
                         i % 3 == 0 ? "" : "*.b");
    fileType->AddIDXitem(CTavoFileIDXitem::kFile, "c:\\gr\xF6\xDF\\" + std::to_string(i));
  }
  return fileType;
}

bool WriteConfiguration(const std::string& folder) {
  CTavoFileIDX list;
  for (int i = 0; i < 5; ++i) list.AddFileType(MakeFileType(i));
  CTavoFileCFG configuration;
  configuration.SetIDX(&list, 0);
  configuration.SetFileName(folder + "db.cfg");
  configuration.Create("db", "C:\\index", 1);
  configuration.SetLanguage(Text(2));
  configuration.SetTempFolder("C:\\tmp");  // the system's own would differ
  configuration.SetSchedule(SCHEDULE::kMonthly);
  configuration.SetScheduleMask(0x8001);
  configuration.SetScheduleTime(TimeSpan(15, 6, 7, 8));
  for (int i = 0; i < 20; ++i) configuration.GetPath2URL().Add(Name(i), Text(i));
  return list.Save(folder + "db.idx") != 0 && configuration.Save() != 0;
}

bool WriteLook(const std::string& folder) {
  CTavoFileLCL look;
  look.SetBackground("C:\\pics\\back.gif");
  look.SetTitle(Text(2));
  look.SetPrintHeader(Text(3));
  look.SetLimitation(Text(7));
  look.SetPersonalProfileOn(1);
  look.SetPersonalProfileColor(0xFFFFFFFE);
  look.SetRegistryString(Text(8));
  return look.Save(folder + "look.lcl") != 0;
}

bool WriteBinaries(const std::string& folder) {
  CTavoFileDict dict;
  dict.Open(folder + "texts.fin");
  for (int i = 0; i < 300; ++i) {
    if (dict.PutFileName(i, i * 300, Name(i) + std::string(static_cast<std::size_t>(i), 'x')) == 0)
      return false;
  }
  CTavoBitArray bits(1001, nullptr);
  for (int i = 0; i < 1001; i += 1 + i / 7) bits.SetAt(i, 1);
  TavoFile file(folder + "some.bits", TavoFile::Access::kWrite,
                TavoFile::Creation::kCreateTruncate);
  return bits.Save(&file) != 0;
}

bool Write(const std::string& folder) {
  return WriteFields(folder) && WriteConfiguration(folder) && WriteLook(folder) &&
         WriteBinaries(folder);
}

bool Rewrite(const std::string& from, const std::string& to) {
  int files = 0;
  for (const auto& entry : std::filesystem::directory_iterator(from)) {
    const std::string name = entry.path().filename().string();
    if (!RewriteDefinition(FromHostPath(from) + '\\' + name, FromHostPath(to) + '\\' + name)) {
      std::fprintf(stderr, "%s cannot be written again\n", name.c_str());
      return false;
    }
    ++files;
  }
  return files > 0;
}

int Run(int count, char** arguments) {
  const std::string command = count > 1 ? arguments[1] : "";
  if (command == "write" && count == 3) return Write(FromHostPath(arguments[2]) + '\\') ? 0 : 1;
  if (command == "rewrite" && count == 4) return Rewrite(arguments[2], arguments[3]) ? 0 : 1;
  std::fputs("usage: exchange write FOLDER | exchange rewrite FROM TO\n", stderr);
  return 2;
}

}  // namespace
}  // namespace vemra::test

int main(int count, char** arguments) {
  try {
    return vemra::test::Run(count, arguments);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
  }
}
