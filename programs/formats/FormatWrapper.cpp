#include "programs/formats/FormatWrapper.h"

#include <memory>

#include "programs/formats/Html.h"
#include "programs/formats/PlainText.h"
#include "programs/formats/Purposes.h"

namespace vemra {

namespace {

const BracketStyle kDefaultStyle;

// The parser of a purpose for the format of that name, or null.
template <template <typename> class Purpose, typename... Arguments>
std::unique_ptr<TavoParseFile> MakeParser(const std::string& format, Arguments&&... arguments) {
  if (format == "Text") return std::make_unique<Purpose<PlainTextParser>>(arguments...);
  if (format == "HTML") return std::make_unique<Purpose<HtmlParser>>(arguments...);
  return nullptr;
}

}  // namespace

bool FormatWrapper::IsFormat(const std::string& name) {
  return name == "Text" || name == "HTML";
}

FormatWrapper::FormatWrapper(const std::string& configPath, int fileType, const std::string& format)
    : TavoTHWrapper(configPath, fileType),
      format_(format),
      codePage_(CodePage::OfLanguage(GetFileCFG().GetLanguage())),
      style_(&kDefaultStyle) {
  SetLangPack(GetFileCFG().GetLangPack());
}

TavoParseFile* FormatWrapper::GetIndexingParser(TavoIndex* index) {
  if (index == nullptr) return nullptr;
  auto parser = MakeParser<IndexingParser>(format_, this, codePage_, *index);
  return parser != nullptr ? AddParserToIndexingList(std::move(parser)) : nullptr;
}

TavoParseFile* FormatWrapper::GetHighlightParser(TavoHighlightWrapper* highlight) {
  auto parser = MakeParser<HighlightParser>(format_, this, codePage_, highlight, *style_);
  return parser != nullptr ? AddParserToHighlightList(std::move(parser)) : nullptr;
}

void FormatWrapper::SetHitStyle(const HitStyle* style) {
  style_ = style != nullptr ? style : &kDefaultStyle;
}

}  // namespace vemra
