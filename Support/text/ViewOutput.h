#pragma once

#include <string>
#include <string_view>

#include "Support/Export.h"
#include "Support/text/Output.h"
#include "Support/text/ViewDocument.h"

namespace vemra {

// The output of a view's parser: what is printed becomes a document for a CTavoResultView. Text and
// sections are written as to any output, by Write; text may hold the marks of ViewMarks.h. A parser
// whose search marks words makes its sections TavoViewSections. The layout of the page is text too:
// line feeds end paragraphs, form feeds pages. Nothing goes to the buffer or to a file.
class SUPPORT_API TavoViewOutput : public TavoOutput {
 public:
  explicit TavoViewOutput(int maxLength = TavoViewDocument::kLongestText);
  ~TavoViewOutput() override;

  int IsEmpty() const override;
  void ResetOutput() override;
  int PrintString(const std::string& s) override;

  // Put into the current target in the order of the text. What stands between is the link, see
  // TavoViewDocument; a NUL ends target.
  void BeginLink(std::string_view target);
  void EndLink();

  // Prints what can be printed and takes the document. The output is empty after it; what still
  // waited is deleted.
  TavoViewDocument TakeDocument();

 private:
  std::string_view TakeMark(std::string_view text);

  TavoViewDocument document_;
};

}  // namespace vemra
