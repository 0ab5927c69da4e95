#pragma once

// A document format for the examples. A line that begins with "= " is a heading; blank lines part
// paragraphs; lines end with a line feed.

#include <string>

#include "Support/text/Text.h"

namespace notes {

constexpr int kGeneral = 0;
constexpr int kHeading = 1;

class NotesParser : public vemra::TavoParseFile {
 public:
  using TavoParseFile::TavoParseFile;

 protected:
  int ParseInput(vemra::TavoInput* input) override {
    OnStart();
    while (!input->AtEOF() && !DoStopParsing()) TakeLine(input->GetUpTo('\n', 1));
    return OnEnd();
  }

 private:
  void TakeLine(std::string line) {
    const bool heading = line.starts_with("= ");
    if (heading) line.erase(0, 2);
    if (heading || line.empty()) SetNewParagraph();
    vemra::CTavoFieldList fields;
    fields.Set(heading ? kHeading : kGeneral);
    SetFieldList(fields);
    OnContents(line);
    if (heading) SetNewParagraph();
    if (IsWrite()) GetOutput()->Write("\n");
  }
};

// The fields of notes. A real database has them in its files, which the wrapper reads.
class NotesWrapper : public vemra::TavoTHWrapper {
 public:
  NotesWrapper() : TavoTHWrapper("", 0) {
    AddField(kGeneral, "General");
    AddField(kHeading, "Heading");
  }

 private:
  void AddField(int number, const char* name) {
    vemra::CTavoField field;
    field.SetFieldno(number);
    field.SetName(name);
    GetFileINI().AddField(field);
  }
};

}  // namespace notes
