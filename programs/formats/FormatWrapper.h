#pragma once

#include <string>

#include "Support/text/THWrapper.h"
#include "programs/formats/CodePage.h"
#include "programs/formats/HitStyle.h"

namespace vemra {

// The parsers of one file type whose format is "Text" or "HTML". It takes the language pack and the
// code page of the configured language, the built-in ones when there is none.
class FormatWrapper : public TavoTHWrapper {
 public:
  // Exact, case-sensitive.
  static bool IsFormat(const std::string& name);

  // fileType is counted from 0; format is the file type's, see CTavoFileType::GetFormat. With one
  // that is not known, no parser is handed out.
  FormatWrapper(const std::string& configPath, int fileType, const std::string& format);

  // Parsers are FormatParsers, each given back by the operation of its purpose. Null without an
  // index, and for an unknown format.
  TavoParseFile* GetIndexingParser(TavoIndex* index) override;
  TavoParseFile* GetHighlightParser(TavoHighlightWrapper* highlight) override;

  // The style of the highlight parsers made from now on; a loan for their lives. BracketStyle
  // until another is set, and again after null.
  void SetHitStyle(const HitStyle* style);
  const CodePage& GetCodePage() const { return codePage_; }

 private:
  std::string format_;
  const CodePage& codePage_;
  const HitStyle* style_;
};

}  // namespace vemra
