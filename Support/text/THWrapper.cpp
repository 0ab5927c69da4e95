#include "Support/text/THWrapper.h"

#include <algorithm>
#include <iterator>

#include "Support/foundation/INIWorker.h"
#include "Support/foundation/Paths.h"
#include "Support/text/LangPack.h"
#include "Support/text/ParseFile.h"
#include "Support/text/ResultView.h"
#include "Support/text/ViewOutput.h"

namespace vemra {

TavoTHWrapper::TavoTHWrapper(const std::string& configPath, int fileType)
    : fileType_(fileType),
      loaded_(configuration_.Load(configPath)),
      pack_(TavoLangPack::GetDefault()) {
  if (!loaded_) return;
  definitions_.Load(configuration_.GetFileINI().c_str());
  LoadFileTypeDefinitions();
}

void TavoTHWrapper::LoadFileTypeDefinitions() {
  INIWorker worker(configuration_.GetDatabaseID());
  configuration_.SetFileTypeSection(fileType_, worker);
  std::string name;
  if (worker.GetWholeString("FTD", name)) {
    definitions_.ReadFTD(fileType_, ConnectPaths(configuration_.GetFolder(), name), 1);
  }
  definitions_.SetCurrentFTD(fileType_);
}

TavoTHWrapper::~TavoTHWrapper() = default;

TavoParseFile* TavoTHWrapper::GetIndexingParser(TavoIndex* /*index*/) {
  return nullptr;
}

TavoParseFile* TavoTHWrapper::GetHighlightParser(TavoHighlightWrapper* /*highlight*/) {
  return nullptr;
}

TavoParseFile* TavoTHWrapper::GetFieldsParser() {
  return nullptr;
}

TavoParseFile* TavoTHWrapper::GetViewParser() {
  return nullptr;
}

TavoParseFile* TavoTHWrapper::GetExportParser() {
  return nullptr;
}

CTavoResultView* TavoTHWrapper::GetView(const std::string& documentPath) {
  auto view = std::make_unique<CTavoResultView>();
  return ReplaceViewContents(view.get(), documentPath) ? view.release() : nullptr;
}

// The view takes the document only once it is whole.
int TavoTHWrapper::ReplaceViewContents(CTavoResultView* view, const std::string& documentPath) {
  const auto giveBack = [this](TavoParseFile* parser) { FreeHighlightParser(parser); };
  const std::unique_ptr<TavoParseFile, decltype(giveBack)> parser(GetViewParser(), giveBack);
  if (view == nullptr || parser == nullptr || !parser->ParseFile(documentPath)) return 0;
  auto* const output = dynamic_cast<TavoViewOutput*>(parser->GetOutput());
  if (output == nullptr) return 0;
  view->ReplaceContents(output->TakeDocument(), GetLangPack());
  return 1;
}

void TavoTHWrapper::FreeIndexingParser(TavoParseFile* parser) {
  Free(indexingParsers_, parser);
}

void TavoTHWrapper::FreeHighlightParser(TavoParseFile* parser) {
  Free(highlightParsers_, parser);
}

void TavoTHWrapper::FreeFieldsParser(TavoParseFile* parser) {
  Free(fieldsParsers_, parser);
}

void TavoTHWrapper::SetLangPack(TavoLangPack* pack) {
  pack_ = pack != nullptr ? pack : TavoLangPack::GetDefault();
}

int TavoTHWrapper::NoMoreOwners() const {
  const bool allParsed = std::none_of(freedParsers_.begin(), freedParsers_.end(),
                                      [](const auto& parser) { return parser->IsParsing(); });
  return indexingParsers_.empty() && highlightParsers_.empty() && fieldsParsers_.empty() &&
                 allParsed
             ? 1
             : 0;
}

TavoParseFile* TavoTHWrapper::Record(ParserList& list, std::unique_ptr<TavoParseFile> parser) {
  DeleteFinishedParsers();
  list.push_back(std::move(parser));
  return list.back().get();
}

// Out of the list first: whatever the stop or the deletion leads to sees the list without it.
void TavoTHWrapper::Free(ParserList& list, const TavoParseFile* parser) {
  DeleteFinishedParsers();
  const auto found = std::find_if(list.begin(), list.end(),
                                  [parser](const auto& entry) { return entry.get() == parser; });
  if (found == list.end()) return;
  std::unique_ptr<TavoParseFile> freed = std::move(*found);
  list.erase(found);
  if (!freed->IsParsing()) return;
  freedParsers_.push_back(std::move(freed));
  freedParsers_.back()->StopParsing("The parser was given back\n");
}

void TavoTHWrapper::DeleteFinishedParsers() {
  const auto finished = std::partition(freedParsers_.begin(), freedParsers_.end(),
                                       [](const auto& parser) { return parser->IsParsing(); });
  ParserList deleted(std::make_move_iterator(finished),
                     std::make_move_iterator(freedParsers_.end()));
  freedParsers_.erase(finished, freedParsers_.end());
}

TavoParseFile* TavoTHWrapper::AddParserToIndexingList(std::unique_ptr<TavoParseFile> parser) {
  return Record(indexingParsers_, std::move(parser));
}

TavoParseFile* TavoTHWrapper::AddParserToHighlightList(std::unique_ptr<TavoParseFile> parser) {
  return Record(highlightParsers_, std::move(parser));
}

TavoParseFile* TavoTHWrapper::AddParserToFieldsList(std::unique_ptr<TavoParseFile> parser) {
  return Record(fieldsParsers_, std::move(parser));
}

}  // namespace vemra
