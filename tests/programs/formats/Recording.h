#pragma once

#include <memory>
#include <string>
#include <vector>

#include "Support/definition/FileINI.h"
#include "Support/text/HighlightWrapper.h"
#include "Support/text/Output.h"
#include "Support/text/Section.h"
#include "Support/text/THWrapper.h"
#include "programs/formats/CodePage.h"

namespace vemra::test {

// A wrapper without files, with the fields of a page: 0 General, 1 Title, 2 Link, 3 Author, 4
// Image.
class PageWrapper : public TavoTHWrapper {
 public:
  PageWrapper() : TavoTHWrapper("", 0) {
    AddField("General");
    AddField("Title")->AddTag(0, "*<title>");
    AddField("Link")->AddTag(0, "*<a>*");
    AddField("Author")->AddAttribute(0, "*<meta>", "author");
    AddField("Image")->AddAttribute(0, "*<img>", "alt");
    GetFileINI().SetCurrentFTD(0);
  }

 private:
  CTavoField* AddField(const char* name) {
    CTavoField field;
    field.SetName(name);
    field.SetFieldno(nextField_++);
    return GetFileINI().AddField(field);
  }

  int nextField_ = 0;
};

// A purpose that notes each run as "fields:text", with "/" before one that starts a paragraph, and
// writes it to the output.
template <typename Format>
class Recorder : public Format {
 public:
  explicit Recorder(TavoTHWrapper& wrapper) : Format(&wrapper, CodePage::Windows1252()) {}

  std::vector<std::string> runs;
  std::vector<std::string> texts;

 protected:
  void HandleSection(TavoSection* section) override {
    std::unique_ptr<TavoSection> owned(section);
    std::string run;
    const TavoWord* const first = section->GetFirstWord();
    if (first != nullptr && section->GetWordPosition() > 1 &&
        section->IsWordStartingParagraph(first)) {
      run = "/";
    }
    const CTavoFieldList& fields = this->GetFieldList();
    for (POSITION position = fields.GetStartPosition(); position != 0;) {
      run += std::to_string(fields.GetNextFieldno(position));
    }
    runs.push_back(run + ":" + section->GetContents());
    texts.push_back(section->GetContents());
    if (this->IsWrite()) this->GetOutput()->Write(owned.release(), 1);
  }
};

template <typename Format>
std::vector<std::string> RunsOf(const std::string& text) {
  PageWrapper wrapper;
  Recorder<Format> recorder(wrapper);
  EXPECT_EQ(recorder.ParseDocument(text), 1);
  return recorder.runs;
}

template <typename Format>
std::string LayoutOf(const std::string& text) {
  PageWrapper wrapper;
  Recorder<Format> recorder(wrapper);
  EXPECT_EQ(recorder.ParseDocument(text), 1);
  return recorder.GetOutput()->GetOutputBuffer();
}

}  // namespace vemra::test
