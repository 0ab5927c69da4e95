#include "programs/formats/FormatParser.h"

#include <climits>
#include <utility>

#include "Support/text/HighlightWrapper.h"
#include "Support/text/Output.h"
#include "programs/formats/WhiteSpace.h"

namespace vemra {

namespace {

void Consume(TavoInput& input, std::size_t n) {
  for (; n > INT_MAX; n -= INT_MAX) input.MoveOn(INT_MAX);
  input.MoveOn(static_cast<int>(n));
}

}  // namespace

// Only text that was pushed in front of the given text makes two pieces.
RestOfInput::RestOfInput(TavoInput& input) : unread_(input), text_(unread_.GetUnread()) {
  Consume(input, text_.size());
  if (input.AtEOF()) return;
  const std::string_view given = input.GetUnread();
  joined_.append(text_).append(given);
  Consume(input, given.size());
  text_ = joined_;
}

FormatParser::FormatParser(TavoTHWrapper* wrapper, const CodePage& codePage)
    : TavoParseFile(wrapper), codePage_(codePage) {}

int FormatParser::ParseFile(const std::string& path) {
  std::string bytes;
  return ReadDocument(path, bytes) ? ParseDocument(std::move(bytes)) : 0;
}

int FormatParser::ParseDocument(std::string bytes) {
  const std::unique_ptr<TavoInput> input = CreateInput();
  input->SetString(DecodeDocument(std::move(bytes), GetDeclaration(), codePage_));
  return Parse(input.get());
}

void FormatParser::Deliver(std::string_view text) {
  while (!text.empty()) {
    std::string& run = TakeRun(text);
    BlankControls(run);
    OnContents(run);
  }
}

void FormatParser::DeliverClean(std::string_view text, SectionMarkup markup) {
  markup_ = std::move(markup);
  while (!text.empty()) OnContents(TakeRun(text));
}

// Cuts the next run off text.
std::string& FormatParser::TakeRun(std::string_view& text) {
  const std::size_t length = FindCut(text, kMaxRun);
  run_ = text.substr(0, length);
  text.remove_prefix(length);
  return run_;
}

void FormatParser::WriteMarkup(std::string_view markup) {
  if (!markup.empty() && WritesMarkup()) GetOutput()->Write(std::string(markup));
}

void FormatParser::WriteLayout(std::string_view text) {
  if (!text.empty() && IsWrite()) GetOutput()->Write(std::string(text));
}

}  // namespace vemra
