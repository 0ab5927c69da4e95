#pragma once

#include <memory>
#include <string>

#include "Support/definition/FileCFG.h"
#include "Support/definition/FileIDX.h"
#include "Support/definition/FileINI.h"
#include "programs/formats/CodePage.h"
#include "programs/formats/FormatWrapper.h"

namespace vemra::commands {

// A database as every command opens it: configuration, field definitions, language. Throws
// CommandError, naming file and line, when one is missing or wrong.
class Database {
 public:
  // hostPath: the .cfg file as a person named it.
  explicit Database(const std::string& hostPath);
  Database(const Database&) = delete;
  Database& operator=(const Database&) = delete;

  // The index list with its file types; further errors of the configuration show here.
  void LoadIndexList();

  const std::string& GetPath() const { return path_; }  // the .cfg file, in the Windows form
  CTavoFileCFG& GetConfiguration() { return configuration_; }
  CTavoFileINI& GetFields() { return fields_; }
  CTavoFileIDX& GetIndexList() { return list_; }
  TavoLangPack* GetPack() const { return pack_; }  // never null; a loan of the cache
  const CodePage& GetCodePage() const { return *codePage_; }
  std::string GetIndexFolder() const;  // in the Windows form
  std::string GetIndexPath() const;

  // The parsers of a file type, counted from 0; it loads the definitions anew.
  std::unique_ptr<FormatWrapper> MakeFormatWrapper(int fileType) const;

 private:
  void LoadPack();
  void LoadFields();

  std::string path_;
  CTavoFileIDX list_;  // before its user
  CTavoFileCFG configuration_;
  CTavoFileINI fields_;
  TavoLangPack* pack_ = nullptr;
  const CodePage* codePage_ = nullptr;
};

}  // namespace vemra::commands
