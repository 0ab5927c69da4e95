#include "Support/text/ParseFile.h"

#include <new>
#include <stdexcept>
#include <system_error>

#include "Support/definition/FieldRule.h"
#include "Support/definition/FileINI.h"
#include "Support/foundation/File.h"
#include "Support/text/HighlightSearch.h"
#include "Support/text/HighlightWrapper.h"
#include "Support/text/Input.h"
#include "Support/text/Notification.h"
#include "Support/text/Output.h"
#include "Support/text/Section.h"
#include "Support/text/THWrapper.h"

namespace vemra {

namespace {

// Deletes a section that is of no more use. The search may still hold it: then it is cut off from
// the output, which makes it delete itself when it is unlocked.
struct DropSection {
  void operator()(TavoSection* section) const {
    if (section->IsLocked()) {
      section->SetOutput(nullptr);
    } else {
      delete section;
    }
  }
};
using OwnedSection = std::unique_ptr<TavoSection, DropSection>;

// Counts a parse for as long as it lasts, also when it throws.
class CountParse {
 public:
  explicit CountParse(int& count) : count_(count) { ++count_; }
  CountParse(const CountParse&) = delete;
  CountParse& operator=(const CountParse&) = delete;
  ~CountParse() { --count_; }

 private:
  int& count_;
};

}  // namespace

TavoParseFile::TavoParseFile(TavoTHWrapper* wrapper) : wrapper_(wrapper) {}

TavoParseFile::~TavoParseFile() = default;

int TavoParseFile::Parse(const char* text) {
  const std::unique_ptr<TavoInput> input = CreateInput();
  input->SetString(text);
  return Parse(input.get());
}

int TavoParseFile::Parse(TavoInput* input) {
  const CountParse parse(parsing_);
  int result = 0;
  try {
    result = ParseInput(input);
  } catch (...) {
    StopHighlighting();
    throw;
  }
  StopHighlighting();
  return result;
}

void TavoParseFile::StopHighlighting() {
  if (highlight_ == nullptr) return;
  highlight_->StopHighlight();
  highlight_->SetPageno(GetOutput()->GetPageCount());
}

int TavoParseFile::ParseFile(const std::string& path) {
  std::string bytes;
  return ReadDocument(path, bytes) ? Parse(bytes.c_str()) : 0;
}

int TavoParseFile::ReadDocument(const std::string& path, std::string& bytes) {
  try {
    TavoFile file(path, TavoFile::Access::kRead, TavoFile::Creation::kOpenExisting);
    bytes.resize(static_cast<std::size_t>(file.GetLength()));
    return file.Read(bytes.data(), bytes.size()) == bytes.size() ? 1 : 0;
  } catch (const std::system_error&) {
    return 0;
  } catch (const std::bad_alloc&) {
    return 0;
  } catch (const std::length_error&) {
    return 0;
  }
}

void TavoParseFile::StopParsing(const std::string& reason) {
  stop_ = 1;
  reason_ = reason;
  Notify(("Stopping parsing because: " + reason).c_str());
}

void TavoParseFile::DeleteOutput() {
  output_.reset();
}

std::unique_ptr<TavoOutput> TavoParseFile::CreateOutput() {
  return std::make_unique<TavoOutput>();
}

std::unique_ptr<TavoInput> TavoParseFile::CreateInput() {
  return std::make_unique<TavoInput>();
}

int TavoParseFile::OnEnd() {
  return 1;
}

int TavoParseFile::OnStart() {
  OnTextStart();
  return 1;
}

void TavoParseFile::OnContents(std::string& text) {
  if (!sectionsEnabled_) return;
  std::unique_ptr<TavoSection> section = CreateSection(text);
  PlaceSection(*section);
  section->ParseContents();
  CountSection(*section);
  HandleSection(section.release());
}

void TavoParseFile::PlaceSection(TavoSection& section) const {
  Counters place = counters_;
  if (place.newParagraph) {
    if (!place.endedSentence) ++place.sentence;
    if (!place.endedParagraph) ++place.paragraph;
    place.wordInSentence = place.wordInParagraph = place.sentenceInParagraph = 0;
  }
  section.SetWordPosition(place.lastWord + 1);
  section.SetSentencePosition(place.sentence);
  section.SetParagraphPosition(place.paragraph);
  section.SetWordInSentencePosition(place.wordInSentence);
  section.SetWordInParagraphPosition(place.wordInParagraph);
  section.SetSentenceInParagraphPosition(place.sentenceInParagraph);
  section.SetBreakOnNewLine(place.breakOnNewLine);
}

// A section without words changes nothing, so that a request for a paragraph waits for the next one
// with words. The counts are those at the section's end, not its last word's, so that numbering
// does not depend on where a text is cut into sections.
void TavoParseFile::CountSection(TavoSection& section) {
  if (section.GetWordsNumber() == 0) return;
  counters_.newParagraph = 0;
  counters_.lastWord = section.GetLastWordNumber();
  counters_.sentence = section.GetLastSentenceNumber();
  counters_.paragraph = section.GetLastParagraphNumber();
  counters_.endedSentence = section.IsLastWordBreaksSentence();
  counters_.endedParagraph = section.IsLastWordBreaksParagraph();
  counters_.wordInSentence = section.GetWordInSentenceAtEnd();
  counters_.wordInParagraph = section.GetWordInParagraphAtEnd();
  counters_.sentenceInParagraph = section.GetSentenceInParagraphAtEnd();
}

void TavoParseFile::Notify(const char* message) {
  if (notification_ != nullptr) notification_->Notify(message, 1);
}

void TavoParseFile::SetFieldList(const CTavoFieldList& fields) {
  fields_ = fields;
  printable_ = wrapper_->GetFileINI().FindFirstField(fields, fieldrule::kNoText) < 0 ? 1 : 0;
}

std::unique_ptr<TavoSection> TavoParseFile::CreateSection(const std::string& text) {
  return std::make_unique<TavoSection>(GetOutput(), text, wrapper_->GetLangPack());
}

void TavoParseFile::OnTextStart() {
  if (output_ != nullptr) {
    output_->ResetOutput();
    output_->SetCurrentField(-1);
  }
  counters_ = Counters();
  printable_ = 1;
  stop_ = 0;
  reason_.clear();
}

TavoOutput* TavoParseFile::GetOutput() {
  if (output_ == nullptr) output_ = CreateOutput();
  return output_.get();
}

void TavoParseFile::SetHighlightWrapper(TavoHighlightWrapper* wrapper) {
  highlight_ = wrapper;
  enableWrite_ = WritesDocument(wrapper) ? 1 : 0;
}

bool TavoParseFile::WritesDocument(const TavoHighlightWrapper* wrapper) {
  return wrapper == nullptr || wrapper->GetMode() == TavoHighlightWrapper::kWholeDocument;
}

void TavoParseFile::HighlightSection(TavoSection* section, int print) {
  OwnedSection owned(section);
  if (section->GetFirstWord() != nullptr) MarkWords(*section);
  if (print) PrintHighlightedSection(highlight_, owned.release());
}

void TavoParseFile::MarkWords(TavoSection& section) {
  if (highlight_ == nullptr || highlight_->GetMode() == TavoHighlightWrapper::kFirstWords) return;
  TavoHighlightSearch* const search = highlight_->GetSearch();
  if (search == nullptr) return;
  search->MarkWords(section, wrapper_->GetFileINI().ExpandFieldList(fields_));
}

void TavoParseFile::PrintHighlightedSection(TavoHighlightWrapper* wrapper, TavoSection* section) {
  OwnedSection owned(section);
  if (WritesDocument(wrapper)) {
    if (output_ != nullptr && IsWrite()) output_->Write(owned.release(), 1);
  } else if (wrapper->AddSection(owned.release(), 1)) {
    StopParsing("Put in enough words\n");
  }
}

}  // namespace vemra
