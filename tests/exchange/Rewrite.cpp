#include "tests/exchange/Rewrite.h"

#include <map>

#include "Support/definition/Definition.h"
#include "Support/foundation/File.h"

namespace vemra::test {
namespace {

bool RewriteBits(const std::string& from, const std::string& to) {
  TavoFile input(from, TavoFile::Access::kRead, TavoFile::Creation::kOpenExisting);
  CTavoBitArray bits;
  if (bits.Load(&input) == 0) return false;
  bits.SetSize(bits.GetSize());  // makes its byte length right
  TavoFile output(to, TavoFile::Access::kWrite, TavoFile::Creation::kCreateTruncate);
  return bits.Save(&output) != 0;
}

bool RewriteCFG(const std::string& from, const std::string& to) {
  CTavoFileCFG configuration;
  configuration.SetIDX(new CTavoFileIDX, 1);
  return configuration.Load(from) != 0 && configuration.SaveAs(to) != 0;
}

bool RewriteDict(const std::string& from, const std::string& to) {
  CTavoFileDict input;
  CTavoFileDict output;
  input.Open(from);
  output.Open(to);
  std::string name;
  int number = 0;
  for (int text = 1; input.GetFileName(text, name, &number) != 0; ++text) {
    if (output.PutFileName(input.GetFileType(text), number, name) == 0) return false;
  }
  return true;
}

bool RewriteFTD(const std::string& from, const std::string& to) {
  const std::string folder = from.substr(0, from.rfind('\\') + 1);
  CTavoFileINI definitions;
  definitions.Load((folder + "fields.ini").c_str());
  return definitions.ReadFTD(1, from, 0) != 0 && definitions.SaveFTD(1, to) != 0;
}

bool RewriteIDX(const std::string& from, const std::string& to) {
  CTavoFileIDX list;
  return list.Load(from) != 0 && list.Save(to) != 0;
}

bool RewriteINI(const std::string& from, const std::string& to) {
  CTavoFileINI definitions;
  return definitions.Load(from.c_str()) != 0 && definitions.Save(to.c_str()) != 0;
}

bool RewriteLCL(const std::string& from, const std::string& to) {
  CTavoFileLCL look;
  return look.Load(from) != 0 && look.Save(to) != 0;
}

}  // namespace

bool RewriteDefinition(const std::string& from, const std::string& to) {
  static const std::map<std::string, bool (*)(const std::string&, const std::string&)> kFormats = {
      {".bits", RewriteBits}, {".cfg", RewriteCFG}, {".fin", RewriteDict}, {".ftd", RewriteFTD},
      {".idx", RewriteIDX},   {".ini", RewriteINI}, {".lcl", RewriteLCL}};
  const std::size_t dot = from.rfind('.');
  if (dot == std::string::npos) return false;
  const auto format = kFormats.find(from.substr(dot));
  return format != kFormats.end() && format->second(from, to);
}

}  // namespace vemra::test
