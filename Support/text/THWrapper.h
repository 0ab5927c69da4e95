#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "Support/Export.h"
#include "Support/definition/FileCFG.h"
#include "Support/definition/FileINI.h"
#include "Support/services/PropertyArray.h"

namespace vemra {

class CTavoResultView;
class TavoHighlightWrapper;
class TavoIndex;
class TavoLangPack;
class TavoParseFile;

// The parsers of one file type of one database, with the definitions that they read by. Which
// parsers there are is a subclass's business: it overrides the operations that make them, records
// each with Add...Parser..., and publishes the settings of its format as properties.
// Used by one thread at a time.
class SUPPORT_API TavoTHWrapper : public TavoPropertyArray {
 public:
  // Loads the configuration, the field definitions that it names, and the definitions of the file
  // type (counted from 0) from the file that the key "FTD" of its section names, relative to the
  // folder of the configuration. What is missing takes its defaults: see IsLoaded.
  TavoTHWrapper(const std::string& configPath, int fileType);
  TavoTHWrapper(const TavoTHWrapper&) = delete;
  TavoTHWrapper& operator=(const TavoTHWrapper&) = delete;
  // Deletes the parsers that have not been given back.
  ~TavoTHWrapper() override;

  // A new parser for one purpose, owned by the wrapper until it is given back; null when the file
  // type has none, which is the default. The sink and the request are loans for the parser's life.
  virtual TavoParseFile* GetIndexingParser(TavoIndex* index);
  virtual TavoParseFile* GetHighlightParser(TavoHighlightWrapper* highlight);
  virtual TavoParseFile* GetFieldsParser();
  virtual TavoParseFile* GetViewParser();
  virtual TavoParseFile* GetExportParser();
  // A new view that shows a document, owned by the caller; null when it cannot be shown. And
  // another document in an existing one: 0, with the view as it was, when it cannot be shown. The
  // view parser reads the document; its output is to be a TavoViewOutput. The view takes the
  // wrapper's language pack.
  virtual CTavoResultView* GetView(const std::string& documentPath);
  virtual int ReplaceViewContents(CTavoResultView* view, const std::string& documentPath);
  // Give a parser back: it is deleted. One that is not in the list is left alone. One that is
  // parsing, which may give itself back, is stopped, and deleted once its parse has ended: when the
  // next parser is handed out or given back, or with the wrapper. View parsers are
  // recorded in the highlight list and given back to it, export parsers in whichever list their
  // subclass chose.
  virtual void FreeIndexingParser(TavoParseFile* parser);
  virtual void FreeHighlightParser(TavoParseFile* parser);
  virtual void FreeFieldsParser(TavoParseFile* parser);

  // Whether the configuration could be loaded and names the database.
  int IsLoaded() const { return loaded_; }
  CTavoFileCFG& GetFileCFG() { return configuration_; }
  CTavoFileINI& GetFileINI() { return definitions_; }
  int GetFileType() const { return fileType_; }
  // The built-in pack until another is set; a loan. Null sets the built-in one again.
  TavoLangPack* GetLangPack() const { return pack_; }
  void SetLangPack(TavoLangPack* pack);
  // The strings of a filter, empty at first; the subclass that uses a filter fills it.
  std::vector<std::string>& GetFiltersArray(const std::string& name) { return filters_[name]; }

  // No parser is out, or given back but parsing still, so that the wrapper can be destroyed.
  int NoMoreOwners() const;

 protected:
  // Record a parser that is handed out. Returns it.
  TavoParseFile* AddParserToIndexingList(std::unique_ptr<TavoParseFile> parser);
  TavoParseFile* AddParserToHighlightList(std::unique_ptr<TavoParseFile> parser);
  TavoParseFile* AddParserToFieldsList(std::unique_ptr<TavoParseFile> parser);

 private:
  using ParserList = std::vector<std::unique_ptr<TavoParseFile>>;

  void LoadFileTypeDefinitions();
  TavoParseFile* Record(ParserList& list, std::unique_ptr<TavoParseFile> parser);
  void Free(ParserList& list, const TavoParseFile* parser);
  void DeleteFinishedParsers();

  std::map<std::string, std::vector<std::string>> filters_;
  CTavoFileCFG configuration_;
  CTavoFileINI definitions_;
  int fileType_;
  int loaded_;
  TavoLangPack* pack_;
  // Last, so that parsers go before what they lean on.
  ParserList indexingParsers_;
  ParserList highlightParsers_;
  ParserList fieldsParsers_;
  ParserList freedParsers_;  // that were parsing when they were given back
};

}  // namespace vemra
