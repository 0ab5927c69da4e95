#include "programs/commands/Definition.h"

#include <algorithm>
#include <filesystem>
#include <memory>

#include "Support/definition/FileCFG.h"
#include "Support/definition/FileIDX.h"
#include "Support/definition/FileINI.h"
#include "Support/foundation/HostPath.h"
#include "Support/foundation/INIException.h"
#include "programs/commands/CommandError.h"
#include "programs/commands/HostPaths.h"

namespace vemra::commands {
namespace {

enum Field {
  kGeneral,
  kTitle,
  kAuthor,
  kKeywords,
  kDescription,
  kLink,
  kHeading,
  kImageText,
};

struct FieldRow {
  const char* name;
  int number;
  std::uint32_t rules;
};

constexpr std::uint32_t kSearchable = fieldrule::kWildcard | fieldrule::kProximity;

constexpr FieldRow kFields[] = {
    {"General", kGeneral, kSearchable},
    {"Title", kTitle,
     kSearchable | fieldrule::kAddToGeneral | fieldrule::kAltSort | fieldrule::kExpressions},
    {"Author", kAuthor,
     kSearchable | fieldrule::kAddToGeneral | fieldrule::kDictionary | fieldrule::kExpressions},
    {"Keywords", kKeywords, kSearchable | fieldrule::kAddToGeneral | fieldrule::kDictionary},
    {"Description", kDescription, kSearchable | fieldrule::kAddToGeneral},
    {"Link", kLink, kSearchable | fieldrule::kAddToGeneral | fieldrule::kLink},
    {"Heading", kHeading, kSearchable | fieldrule::kAddToGeneral},
    {"Image text", kImageText, kSearchable | fieldrule::kAddToGeneral},
};

struct TagRow {
  int field;
  const char* path;
};

struct AttributeRow {
  int field;
  const char* path;
  const char* name;
};

// The element that the text of a page is in, and the attributes that hold text. A meta element's
// content counts as an attribute of the name that the element gives it.
constexpr TagRow kHtmlTags[] = {
    {kTitle, "*<title>"}, {kHeading, "*<h1>*"}, {kHeading, "*<h2>*"}, {kHeading, "*<h3>*"},
    {kHeading, "*<h4>*"}, {kHeading, "*<h5>*"}, {kHeading, "*<h6>*"}, {kLink, "*<a>*"},
};
constexpr AttributeRow kHtmlAttributes[] = {
    {kAuthor, "*<meta>", "author"},
    {kKeywords, "*<meta>", "keywords"},
    {kDescription, "*<meta>", "description"},
    {kImageText, "*<img>", "alt"},
};

struct FormatRow {
  const char* name;
  const char* definitions;  // follows the database's name
  const char* filters;
  const char* extensions[4];
};

// A pattern without one of HTML's extensions is a pattern of text files.
constexpr FormatRow kHtml = {
    "HTML", "_html.ftd", "*.html;*.htm;*.xhtml", {".html", ".htm", ".xhtml", ".shtml"}};
constexpr FormatRow kText = {"Text", "_text.ftd", "*.txt", {}};
constexpr const FormatRow* kFormats[] = {&kHtml, &kText};

std::string Stem(const std::string& path) {
  return path.substr(0, path.rfind('.'));
}
std::string FileName(const std::string& path) {
  return path.substr(path.rfind('\\') + 1);
}
std::string FolderOf(const std::string& path) {
  return path.substr(0, path.rfind('\\'));
}

std::string DefinitionsFile(const std::string& path, const FormatRow& format) {
  return Stem(path) + format.definitions;
}

bool IsHtmlPattern(const std::string& pattern) {
  std::string lower = pattern;
  std::transform(lower.begin(), lower.end(), lower.begin(),
                 [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
  return std::any_of(std::begin(kHtml.extensions), std::end(kHtml.extensions),
                     [&](const char* extension) { return lower.ends_with(extension); });
}

// Empty when the request leaves nothing for the format.
std::string FiltersOf(const FormatRow& format, const std::vector<std::string>& patterns) {
  if (patterns.empty()) return format.filters;
  std::string filters;
  for (const std::string& pattern : patterns) {
    if (IsHtmlPattern(pattern) != (&format == &kHtml)) continue;
    if (!filters.empty()) filters += ';';
    filters += pattern;
  }
  return filters;
}

void AddFields(CTavoFileINI& fields) {
  CTavoFieldList general;
  general.Set(kGeneral);
  for (const FieldRow& row : kFields) {
    auto field = std::make_unique<CTavoField>();
    field->SetFieldno(row.number);
    field->SetName(row.name);
    field->SetTitle(row.name);
    field->AddFieldRule(row.rules);
    if (row.number != kGeneral) field->SetFieldList(general);
    fields.AddField(std::move(field));
  }
  fields.AddTitleItem(std::make_unique<TavoTitleItem>(kTitle, 0, " ", /*addOnce=*/true));
}

void AddMarkup(CTavoFileINI& fields, int fileType) {
  for (const TagRow& row : kHtmlTags) fields.GetField(row.field)->AddTag(fileType, row.path);
  for (const AttributeRow& row : kHtmlAttributes) {
    fields.GetField(row.field)->AddAttribute(fileType, row.path, row.name);
  }
}

void AddFileTypes(CTavoFileIDX& list, const DefinitionRequest& request) {
  for (const FormatRow* format : kFormats) {
    const std::string filters = FiltersOf(*format, request.filters);
    if (filters.empty()) continue;
    auto fileType = std::make_unique<CTavoFileType>(format->name, filters);
    fileType->SetFormat(format->name);
    fileType->SetLanguage(request.language);
    fileType->SetFTDfileName(FileName(DefinitionsFile(request.path, *format)));
    for (const std::string& folder : request.folders) {
      fileType->AddIDXitem(CTavoFileIDXitem::kFolder, folder, request.subfolders ? 1 : 0);
    }
    list.AddFileType(std::move(fileType));
  }
}

void RequireWritten(int result, const std::string& path) {
  if (result == 0) throw CommandError(PathForPerson(path) + ": cannot be written");
}

// Only reading it back tells whether the file holds the fields.
void SaveFields(CTavoFileINI& fields, const std::string& path) {
  fields.Save(path.c_str());
  CTavoFileINI written;
  written.Load(path.c_str());
  RequireWritten(written.GetDefinedFields() == fields.GetDefinedFields() ? 1 : 0, path);
}

void SaveMarkup(CTavoFileINI& fields, const CTavoFileIDX& list, const std::string& folder) {
  for (int i = 0; i < list.GetNumOfFileTypes(); ++i) {
    const CTavoFileType& fileType = *list.GetFileType(i);
    if (fileType.GetFormat() == kHtml.name) AddMarkup(fields, i);
    const std::string path = folder + '\\' + fileType.GetFTDfileName();
    RequireWritten(fields.SaveFTD(i, path), path);
  }
}

}  // namespace

std::vector<std::string> DefinitionFiles(const std::string& path) {
  std::vector<std::string> files{path, Stem(path) + ".ini", Stem(path) + ".idx"};
  for (const FormatRow* format : kFormats) files.push_back(DefinitionsFile(path, *format));
  return files;
}

void WriteDefinition(const DefinitionRequest& request) try {
  for (const std::string& file : DefinitionFiles(request.path)) {
    std::error_code ignored;
    std::filesystem::remove(ToHostPath(file), ignored);
  }
  const std::string folder = FolderOf(request.path);
  CTavoFileIDX list;
  AddFileTypes(list, request);
  if (list.GetNumOfFileTypes() == 0) throw CommandError("the filters hold no pattern");

  CTavoFileCFG configuration;
  configuration.SetFileName(request.path);
  configuration.SetLanguage(request.language);
  configuration.SetToolbarSize("80");  // what a definition without the key has
  configuration.Create(FileName(Stem(request.path)), folder, /*dynamic=*/0);
  configuration.SetIDX(&list, /*owner=*/0);
  configuration.Save();

  CTavoFileINI fields;
  AddFields(fields);
  SaveFields(fields, configuration.GetFileINI());
  RequireWritten(list.Save(configuration.GetFileIDX()), configuration.GetFileIDX());
  SaveMarkup(fields, list, folder);
} catch (const TavoINIException& error) {
  throw CommandError(PathForPerson(request.path) + ": cannot be written: " + error.message);
}

}  // namespace vemra::commands
