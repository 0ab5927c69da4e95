#include "Support/definition/FileIDX.h"

#include <cstdint>
#include <string_view>
#include <system_error>
#include <utility>

#include "Support/definition/StoredCount.h"
#include "Support/definition/StoredText.h"
#include "Support/foundation/File.h"
#include "Support/foundation/INIWorker.h"
#include "Support/foundation/ProfileReader.h"
#include "Support/foundation/Strings.h"

namespace vemra {
namespace {

constexpr char kFileTypeList[] = "File Type List";
constexpr char kFilesToIndex[] = "Files to Index";
constexpr char kFileTypes[] = "File Types";

bool FindSection(CTavoProfileReader& reader, const char* title) {
  while (reader.GotoNextSection() != 0) {
    if (reader.ReadSectionTitle(title) != 0) return true;
    reader.GotoNextLine();
  }
  return false;
}

bool IsTitle(const std::string& line) {
  return line.starts_with('[');
}

// The text between the brackets of a title line; empty when it is malformed.
std::string_view TitleIn(std::string_view line) {
  const std::size_t last = line.find_last_not_of(" \t\n\v\f\r");
  if (last == std::string_view::npos || last == 0 || line[last] != ']') return {};
  return line.substr(1, last - 1);
}

// A name with a blank anywhere is enclosed in quotes, which reading takes away.
std::string QuoteBlanks(const std::string& name) {
  const std::string quoted = QuoteString(name, " ");
  return quoted == name ? ProtectText(name) : quoted;
}

}  // namespace

int CTavoFileIDX::Load(CTavoProfileReader& reader) {
  if (reader.IsOpen() == 0) return 0;
  ReadFileTypeLines(reader);
  ReadItems(reader);
  if (current_ == nullptr) SetCurrentFileType(0);
  return 1;
}

int CTavoFileIDX::Load(const std::string& path) {
  CTavoProfileReader types(path);
  if (types.IsOpen() == 0) return 0;
  ReadFileTypeLines(types);
  CTavoProfileReader items(path);
  ReadItems(items);
  if (current_ == nullptr) SetCurrentFileType(0);
  return 1;
}

void CTavoFileIDX::ReadFileTypeLines(CTavoProfileReader& reader) {
  if (!FindSection(reader, kFileTypeList)) return;
  std::string line;
  std::int32_t count = 0;
  while (reader.ReadInt(kFileTypes, count) == 0) {
    if (reader.ReadLine(line, 1) == 0 || IsTitle(line)) return;
    reader.GotoNextLine();
  }
  FileTypesByName known = GetFileTypesByName();
  for (; count > 0 && reader.ReadLine(line, 1) != 0 && !IsTitle(line); --count) {
    reader.GotoNextLine();
    const char* cursor = line.c_str();
    const std::string name = ReadFileName(cursor);
    if (name.empty()) return;
    if (const auto found = known.find(name); found != known.end()) {
      found->second->SetDefaultFilters(cursor);
    } else {
      CTavoFileType* added =
          GetFileType(AddFileType(std::make_unique<CTavoFileType>(name, cursor)));
      known.emplace(added->GetName(), added);
    }
  }
}

// Of several with one name the first counts.
CTavoFileIDX::FileTypesByName CTavoFileIDX::GetFileTypesByName() const {
  FileTypesByName byName;
  for (const auto& fileType : fileTypes_) byName.emplace(fileType->GetName(), fileType.get());
  return byName;
}

void CTavoFileIDX::ReadItems(CTavoProfileReader& reader) {
  if (!FindSection(reader, kFilesToIndex)) return;
  FileTypesByName expected = GetFileTypesByName();  // those whose section has not been met
  CTavoFileType* target = nullptr;
  std::string line;
  for (; reader.ReadLine(line, 1) != 0; reader.GotoNextLine()) {
    if (IsTitle(line)) {
      const auto found = expected.find(TitleIn(line));
      target = found == expected.end() ? nullptr : found->second;
      if (target != nullptr) expected.erase(found);
    } else if (target != nullptr) {
      auto item = std::make_unique<CTavoFileIDXitem>();
      if (item->Read(line) != 0) target->AddIDXitem(std::move(item));
    }
  }
}

int CTavoFileIDX::Save(std::FILE* stream) const {
  if (stream == nullptr) return 0;
  std::fprintf(stream, "\n[%s]\n%s=%d\n", kFileTypeList, kFileTypes, GetNumOfFileTypes());
  for (const auto& fileType : fileTypes_) {
    std::fputs(QuoteString(fileType->GetName(), " ,").c_str(), stream);
    const std::string& filters = fileType->GetDefaultFilters();
    if (!filters.empty()) std::fprintf(stream, ",%s", filters.c_str());
    std::fputc('\n', stream);
  }
  std::fprintf(stream, "\n[%s]\n", kFilesToIndex);
  std::string line;
  for (const auto& fileType : fileTypes_) {
    std::fprintf(stream, "\n[%s]\n", fileType->GetName().c_str());
    for (int i = 0; i < fileType->GetNumOfIDXitems(); ++i) {
      fileType->GetIDXitem(i)->Write(line);
      std::fprintf(stream, "%s\n", line.c_str());
    }
    std::fputc('\n', stream);
  }
  return std::fflush(stream) == 0 && std::ferror(stream) == 0 ? 1 : 0;
}

int CTavoFileIDX::Save(const std::string& path) const {
  try {
    TavoFile file(path, TavoFile::Access::kWrite, TavoFile::Creation::kCreateTruncate);
    std::FILE* stream = file.OpenStream("wb");
    const int saved = Save(stream);
    return stream != nullptr && std::fclose(stream) == 0 ? saved : 0;
  } catch (const std::system_error&) {
    return 0;
  }
}

int CTavoFileIDX::LoadFileTypes(INIWorker& reader) {
  Reset();
  const std::string section = reader.section;
  const int count = ReadStoredCount(reader, kFileTypes);
  for (int i = 1; i <= count; ++i) {
    reader.SetSection("FileType" + std::to_string(i));
    auto fileType = std::make_unique<CTavoFileType>();
    std::string text;
    reader.GetStringWithDefault("Name", text, "");
    fileType->SetName(text);
    reader.GetStringWithDefault("FTD", text, "");
    fileType->SetFTDfileName(text);
    reader.GetStringWithDefault("Format", text, "");
    fileType->SetFormat(text);
    reader.GetStringWithDefault("Language", text, "");
    fileType->SetLanguage(text);
    AddFileType(std::move(fileType));
  }
  reader.SetSection(section);
  return 1;
}

int CTavoFileIDX::SaveFileTypes(INIWorker& writer) const {
  const std::string section = writer.section;
  bool saved = writer.PutNum(kFileTypes, GetNumOfFileTypes()) != 0;
  for (int i = 0; saved && i < GetNumOfFileTypes(); ++i) {
    const CTavoFileType& fileType = *GetFileType(i);
    writer.SetSection("FileType" + std::to_string(i + 1));
    saved = writer.PutString("Name", QuoteBlanks(fileType.GetName())) != 0 &&
            writer.PutString("FTD", QuoteBlanks(fileType.GetFTDfileName())) != 0 &&
            PutText(writer, "Format", fileType.GetFormat()) != 0 &&
            PutText(writer, "Language", fileType.GetLanguage()) != 0;
  }
  writer.SetSection(section);
  return saved ? 1 : 0;
}

int CTavoFileIDX::AddFileType(std::unique_ptr<CTavoFileType> fileType) {
  fileTypes_.push_back(std::move(fileType));
  const int index = GetNumOfFileTypes() - 1;
  if (current_ == nullptr) SetCurrentFileType(index);
  return index;
}

int CTavoFileIDX::RemoveFileType(int index) {
  const CTavoFileType* removed = GetFileType(index);
  if (removed == nullptr) return 0;
  if (removed == current_) {
    Init();
  } else if (index < currentIndex_) {
    --currentIndex_;
  }
  fileTypes_.erase(fileTypes_.begin() + index);
  return 1;
}

int CTavoFileIDX::FindFileType(const std::string& name) const {
  for (int i = 0; i < GetNumOfFileTypes(); ++i) {
    if (GetFileType(i)->GetName() == name) return i;
  }
  return -1;
}

CTavoFileType* CTavoFileIDX::GetFileType(int index) const {
  return index >= 0 && index < GetNumOfFileTypes()
             ? fileTypes_[static_cast<std::size_t>(index)].get()
             : nullptr;
}

void CTavoFileIDX::SetCurrentFileType(int index) {
  current_ = GetFileType(index);
  currentIndex_ = current_ == nullptr ? -1 : index;
}

std::string CTavoFileIDX::GetFilters() const {
  return current_ == nullptr ? std::string() : current_->GetDefaultFilters();
}

void CTavoFileIDX::SetFilters(const std::string& filters) {
  if (current_ != nullptr) current_->SetDefaultFilters(filters);
}

std::string CTavoFileIDX::GetFTDfileName() const {
  return current_ == nullptr ? std::string() : current_->GetFTDfileName();
}

void CTavoFileIDX::SetFTDfileName(const std::string& name) {
  if (current_ != nullptr) current_->SetFTDfileName(name);
}

int CTavoFileIDX::GetNumOfIDXitems() const {
  return current_ == nullptr ? 0 : current_->GetNumOfIDXitems();
}

CTavoFileIDXitem* CTavoFileIDX::GetIDXitem(int index) const {
  return current_ == nullptr ? nullptr : current_->GetIDXitem(index);
}

void CTavoFileIDX::AddIDXitem(std::unique_ptr<CTavoFileIDXitem> item) {
  if (current_ != nullptr) current_->AddIDXitem(std::move(item));
}

int CTavoFileIDX::DeleteIDXitem(int index) {
  return current_ == nullptr ? 0 : current_->DeleteIDXitem(index);
}

void CTavoFileIDX::DeleteAllIDXitems() {
  if (current_ != nullptr) current_->DeleteAllIDXitems();
}

void CTavoFileIDX::Reset() {
  Cleanup();
  Init();
}

void CTavoFileIDX::Init() {
  current_ = nullptr;
  currentIndex_ = -1;
}

void CTavoFileIDX::Cleanup() {
  Init();
  fileTypes_.clear();
}

}  // namespace vemra
