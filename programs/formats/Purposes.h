#pragma once

#include <memory>
#include <string>

#include "Support/definition/FileINI.h"
#include "Support/text/HighlightWrapper.h"
#include "Support/text/Index.h"
#include "Support/text/Output.h"
#include "Support/text/Section.h"
#include "Support/text/THWrapper.h"
#include "programs/formats/CodePage.h"
#include "programs/formats/HitStyle.h"
#include "programs/formats/MarkedSection.h"

// What a document is parsed for: each purpose is a class over a format, which is a FormatParser.
namespace vemra {

// Hands the sections to the indexing sink, and writes the document's text when the index stores it.
template <typename Format>
class IndexingParser : public Format {
 public:
  // All are loans for the life of the parser.
  IndexingParser(TavoTHWrapper* wrapper, const CodePage& codePage, TavoIndex& index)
      : Format(wrapper, codePage), index_(index) {
    this->SetIndexing(1);
    this->EnableWrite(index.StoresText());
  }

 protected:
  void HandleSection(TavoSection* section) override {
    std::unique_ptr<TavoSection> owned(section);
    CTavoFileINI& definitions = this->GetWrapper()->GetFileINI();
    const CTavoFieldList& fields = this->GetFieldList();
    for (POSITION position = fields.GetStartPosition(); position != 0;) {
      definitions.AddToTitle(fields.GetNextFieldno(position), section);
    }
    index_.IndexSection(section, fields);
    if (this->IsWrite()) this->GetOutput()->Write(owned.release(), 1);
  }

 private:
  TavoIndex& index_;
};

// Highlights the document for a request: prints it, or collects its summary.
template <typename Format>
class HighlightParser : public Format {
 public:
  // All are loans for the life of the parser.
  HighlightParser(TavoTHWrapper* wrapper, const CodePage& codePage, TavoHighlightWrapper* highlight,
                  const HitStyle& style)
      : Format(wrapper, codePage), style_(style) {
    this->SetHighlightWrapper(highlight);
    this->KeepMarkup(style.KeepsMarkup());
  }

 protected:
  void HandleSection(TavoSection* section) override { this->HighlightSection(section, 1); }

  std::unique_ptr<TavoSection> CreateSection(const std::string& text) override {
    auto section = std::make_unique<MarkedSection>(this->GetOutput(), text,
                                                   this->GetWrapper()->GetLangPack(), style_);
    section->SetMarkup(this->TakeSectionMarkup());
    return section;
  }

 private:
  const HitStyle& style_;
};

}  // namespace vemra
