#include "programs/formats/Html.h"

#include <algorithm>
#include <utility>

#include "Support/definition/FileINI.h"
#include "Support/text/THWrapper.h"
#include "programs/formats/CharacterReference.h"
#include "programs/formats/WhiteSpace.h"

namespace vemra {

namespace {

// The attribute names that the definitions of the current file type hold.
std::vector<std::string> CollectAttributeNames(const CTavoFileINI& definitions) {
  std::vector<std::string> names;
  const int fileType = definitions.GetCurrentFTD();
  for (POSITION position = definitions.GetStartPosition(); position != 0;) {
    const CTavoField& field = *definitions.GetNextField(position);
    for (int i = 0; i < field.GetNumberOfAttributes(fileType); ++i) {
      std::string path;
      std::string name;
      field.GetAttribPathAndName(fileType, i, path, name);
      const bool isKnown = std::find(names.begin(), names.end(), name) != names.end();
      if (!name.empty() && !isKnown) names.push_back(name);
    }
  }
  return names;
}

// Tells most names apart that are not the same.
std::uint64_t LengthBit(std::string_view name) {
  return std::uint64_t{1} << std::min<std::size_t>(name.size(), 63);
}

// The value of the first attribute of that name.
std::string_view FindValue(const std::vector<HtmlAttribute>& attributes, std::string_view name) {
  const auto found =
      std::find_if(attributes.begin(), attributes.end(),
                   [name](const HtmlAttribute& a) { return EqualsNoCase(a.name, name); });
  return found == attributes.end() ? std::string_view() : found->value;
}

// "author" gives "Author: ". name is not empty.
std::string MakeLabel(std::string_view name) {
  std::string label(name);
  if (IsAsciiAlpha(name[0])) label[0] = static_cast<char>(name[0] & ~0x20);
  return label + ": ";
}

std::string_view GapText(HtmlBoundary boundary) {
  switch (boundary) {
    case HtmlBoundary::kInline:
    case HtmlBoundary::kCut:
      return "";
    case HtmlBoundary::kCell:
      return "\t";
    case HtmlBoundary::kLineBreak:
    case HtmlBoundary::kLine:
      return "\n";
    case HtmlBoundary::kBlock:
      break;
  }
  return "\n\n";
}

// What stands before the text of an element; pages have bullets of their own.
std::string_view LabelOf(const HtmlElement& element, bool isPage) {
  if ((element.group & kGroupItem) != 0) return isPage ? "" : "* ";
  return element.name == "title" ? "Title: " : "";
}

}  // namespace

HtmlParser::HtmlParser(TavoTHWrapper* wrapper, const CodePage& codePage)
    : FormatParser(wrapper, codePage), pathFields_(wrapper->GetFileINI()) {}

int HtmlParser::ParseInput(TavoInput* input) {
  const RestOfInput document(*input);
  OnStart();
  Reset();
  HtmlTokenizer tokenizer(document.GetText());
  while (!DoStopParsing()) {
    const HtmlToken token = tokenizer.Next();
    if (token.kind == HtmlToken::kEnd) break;
    HandleToken(tokenizer, token);
  }
  if (!DoStopParsing()) EndRun(HtmlBoundary::kBlock);
  path_.Clear();
  if (WritesMarkup()) WritePendingMarkup();
  return OnEnd();
}

// An earlier parse may have been given up half way.
void HtmlParser::Reset() {
  path_.Clear();
  markup_.Take();
  pathChanged_ = true;
  wantedAttributes_ = CollectAttributeNames(GetWrapper()->GetFileINI());
  wantedLengths_ = 0;
  for (const std::string& name : wantedAttributes_) wantedLengths_ |= LengthBit(name);
  run_.Clear();
  runMarkup_.Start({});
  skipLineEnd_ = false;
  atLineStart_ = true;
  gap_ = HtmlBoundary::kInline;
  hasWritten_ = false;
  label_ = {};
}

void HtmlParser::HandleToken(HtmlTokenizer& tokenizer, const HtmlToken& token) {
  if (token.kind == HtmlToken::kText) {
    HandleText(token.text);
    return;
  }
  skipLineEnd_ = false;
  pathChanged_ = true;
  if (token.kind == HtmlToken::kStartTag) {
    HandleStartTag(tokenizer, token);
  } else {
    HandleEndTag(token);
  }
  if (WritesMarkup()) WritePendingMarkup();
}

void HtmlParser::HandleStartTag(HtmlTokenizer& tokenizer, const HtmlToken& tag) {
  const HtmlElement& element = FindHtmlElement(tag.text, tag.nameHash);
  Break(element.boundary);
  if ((element.group & kGroupRoot) != 0 && path_.IsOpen(element)) return;
  path_.EndImplied(element);
  if (element.name == "a") path_.Close(element, tag.nameHash);  // links do not nest
  if (!path_.Open(element, tag.text, tag.nameHash)) return;
  if (WritesMarkup()) OpenMarkup(element, tokenizer.GetAttributes());

  if (const std::string_view label = LabelOf(element, WritesMarkup()); !label.empty())
    label_ = label;
  HandleAttributes(tokenizer.GetAttributes(), element.name);
  if (element.content == HtmlContent::kNothing || tag.isEmptyElement) {
    path_.CloseLast();
  } else {
    HandleContent(tokenizer, element);
  }
}

// Whatever is written of the element itself: its start tag may have ended others, whose end tags go
// before its attributes' text.
void HtmlParser::OpenMarkup(const HtmlElement& element,
                            const std::vector<HtmlAttribute>& attributes) {
  MarkupTag tag;
  if (!NameInPage(element).empty()) tag = MakeTag(element, WrittenAttributes(element, attributes));
  markup_.Open(std::move(tag));
  WritePendingMarkup();
}

std::vector<PlainAttribute> HtmlParser::WrittenAttributes(
    const HtmlElement& element, const std::vector<HtmlAttribute>& attributes) const {
  std::vector<PlainAttribute> written;
  for (const HtmlAttribute& attribute : attributes) {
    if (!IsWrittenInPage(element, attribute.name)) continue;
    written.push_back({attribute.name, DecodeValue(attribute.value)});
  }
  return written;
}

// Within a run the tags go with its text.
void HtmlParser::WritePendingMarkup() {
  std::vector<MarkupTag> tags = markup_.Take();
  if (tags.empty()) return;
  if (!run_.IsEmpty()) {
    runMarkup_.Add(run_.Get().size() + (run_.HasSpace() ? 1 : 0), std::move(tags));
    return;
  }
  for (const MarkupTag& tag : tags) WriteMarkup(tag.text);
}

// What follows the start tag of an element that holds no ordinary markup.
void HtmlParser::HandleContent(HtmlTokenizer& tokenizer, const HtmlElement& element) {
  if (element.content == HtmlContent::kVerbatim) {
    skipLineEnd_ = true;
  } else if (element.content == HtmlContent::kText) {
    HandleText(tokenizer.TakeContent(element.name));
  } else if (element.content == HtmlContent::kNoText) {
    // Without an end tag the rest of the page is script or style.
    if (tokenizer.TakeContent(element.name).data() == nullptr) tokenizer.TakeRest();
  }
}

// An end tag without its start tag still parts what stands before and after it.
void HtmlParser::HandleEndTag(const HtmlToken& tag) {
  const HtmlElement& element = FindHtmlElement(tag.text, tag.nameHash);
  Break(element.boundary);
  if (element.boundary >= HtmlBoundary::kLine) label_ = {};
  if ((element.group & kGroupRoot) == 0) path_.Close(element, tag.nameHash);
}

void HtmlParser::HandleText(std::string_view text) {
  if (skipLineEnd_) {
    skipLineEnd_ = false;
    if (text.starts_with("\r\n")) text.remove_prefix(1);
    if (text.starts_with('\n')) text.remove_prefix(1);
  }
  // White space takes no part in the choice of fields: it goes on with the run before it.
  const bool isBlank = TrimStart(text).empty();
  if (isBlank && !path_.IsVerbatim()) {
    if (!text.empty()) run_.NoteSpace();
    return;
  }
  if (!isBlank || run_.IsEmpty()) StartText();
  while (!text.empty()) {
    AppendPiece(text);
    LimitRun();
  }
}

void HtmlParser::StartText() {
  if (pathChanged_) {
    const CTavoFieldList& fields = pathFields_.Find(path_);
    if (!run_.IsEmpty() && !(fields == runFields_)) EndRun(HtmlBoundary::kCut);
    runFields_ = fields;
    runIsVerbatim_ = path_.IsVerbatim();
    pathChanged_ = false;
  }
  if (run_.IsEmpty()) runMarkup_.Start(markup_.GetOpenLink());
}

// Moves text's first character reference, or what stands before it, to the run.
void HtmlParser::AppendPiece(std::string_view& text) {
  const auto append = [this](std::string_view piece) {
    runIsVerbatim_ ? run_.AppendVerbatim(piece) : run_.AppendCollapsed(piece);
  };
  const std::string_view piece = text.substr(0, kMaxRun);
  const std::size_t plain = std::min(piece.find('&'), piece.size());
  if (plain > 0) {
    append(piece.substr(0, plain));
    text.remove_prefix(plain);
  } else {
    reference_.clear();
    TakeReference(text, ReferencePlace::kText, reference_);
    append(reference_);
  }
}

// Takes the reference that text begins with, or the ampersand when it is none.
void HtmlParser::TakeReference(std::string_view& text, ReferencePlace place,
                               std::string& out) const {
  const CharacterReference reference = ReadCharacterReference(text, place);
  if (reference.length > 0) {
    GetCodePage().AppendCharacter(reference.code, out);
    text.remove_prefix(reference.length);
  } else {
    out += '&';
    text.remove_prefix(1);
  }
}

void HtmlParser::LimitRun() {
  while (run_.Get().size() > kMaxRun) {
    const std::size_t cut = FindCut(run_.Get(), kMaxRun);
    HandOver(std::string_view(run_.Get()).substr(0, cut), runMarkup_.TakeFirst(cut));
    run_.DropFirst(cut);
  }
}

void HtmlParser::HandleAttributes(const std::vector<HtmlAttribute>& attributes,
                                  std::string_view element) {
  if (wantedAttributes_.empty()) return;
  if (element == "meta") HandleMeta(attributes);
  for (const HtmlAttribute& attribute : attributes) {
    const std::string* const name = FindWantedAttribute(attribute.name);
    if (name != nullptr) HandleValue(*name, attribute.value, "[", "]");
  }
}

void HtmlParser::HandleMeta(const std::vector<HtmlAttribute>& attributes) {
  const std::string* const name = FindWantedAttribute(FindValue(attributes, "name"));
  if (name == nullptr) return;
  const std::string_view content = FindValue(attributes, "content");
  if (WritesMarkup()) {
    HandleMetaInPage(*name, content);
  } else {
    HandleValue(*name, content, MakeLabel(*name), "");
  }
  Break(HtmlBoundary::kLine);
}

void HtmlParser::HandleMetaInPage(const std::string& name, std::string_view content) {
  std::string label;
  AppendEscaped(MakeLabel(name), label);
  EndRun(HtmlBoundary::kLine);
  const std::size_t depth = markup_.GetDepth();
  markup_.Open(MakeTag(FindHtmlElement("div", HashName("div")), {}));
  WritePendingMarkup();
  HandleValue(name, content, label, "");
  markup_.CutTo(depth);
}

const std::string* HtmlParser::FindWantedAttribute(std::string_view name) const {
  if ((wantedLengths_ & LengthBit(name)) == 0) return nullptr;
  const auto found =
      std::find_if(wantedAttributes_.begin(), wantedAttributes_.end(),
                   [name](const std::string& wanted) { return EqualsNoCase(name, wanted); });
  return found == wantedAttributes_.end() ? nullptr : &*found;
}

void HtmlParser::HandleValue(std::string_view name, std::string_view value, std::string_view before,
                             std::string_view after) {
  CTavoFieldList fields;
  GetWrapper()->GetFileINI().CheckFields(fields, path_.GetText(), name);
  if (fields.IsEmpty()) return;
  const std::string text = DecodeValue(value);
  if (text.empty()) return;
  EndRun(HtmlBoundary::kCut);
  SetFieldList(fields);
  SetBreakOnNewLine(0);
  WriteGap(run_.TakeSpace());
  WriteLayout(before);
  DeliverClean(text, {markup_.GetOpenLink(), {}});
  WriteLayout(after);
  atLineStart_ = false;
}

std::string HtmlParser::DecodeValue(std::string_view value) const {
  RunText text;
  std::string reference;
  while (!value.empty()) {
    const std::size_t plain = std::min(value.find('&'), value.size());
    text.AppendCollapsed(value.substr(0, plain));
    value.remove_prefix(plain);
    if (value.empty()) break;
    reference.clear();
    TakeReference(value, ReferencePlace::kAttribute, reference);
    text.AppendCollapsed(reference);
  }
  return text.Get();
}

void HtmlParser::Break(HtmlBoundary boundary) {
  if (boundary == HtmlBoundary::kInline) return;
  EndRun(boundary);
  if (boundary == HtmlBoundary::kLineBreak && atLineStart_) boundary = HtmlBoundary::kBlock;
  if (boundary >= HtmlBoundary::kLineBreak) {
    run_.DropSpace();
    atLineStart_ = true;
  }
  if (boundary >= HtmlBoundary::kCell) SetNewParagraph();
  gap_ = std::max(gap_, boundary);
}

void HtmlParser::EndRun(HtmlBoundary boundary) {
  std::string_view text = run_.Get();
  if (boundary >= HtmlBoundary::kLineBreak) text = TrimEnd(text);
  if (!text.empty()) HandOver(text, runMarkup_.TakeFirst(text.size()));
  WriteTrailingTags();
  run_.Restart();
}

// Those behind the last word of a run, and the white space that stands among them.
void HtmlParser::WriteTrailingTags() {
  if (!WritesMarkup()) return;
  for (const SectionMarkup::Place& place : runMarkup_.TakeAll().tags) {
    if (place.offset > 0 && run_.TakeSpace()) WriteLayout(" ");
    WriteMarkup(place.tag.text);
  }
}

// Blanks alone, which only verbatim text gives, are layout: a section without words could not end
// the paragraph.
void HtmlParser::HandOver(std::string_view text, SectionMarkup markup) {
  SetFieldList(runFields_);
  SetBreakOnNewLine(runIsVerbatim_ ? 1 : 0);
  WriteGap(run_.HasSpaceBefore());
  if (!IsWrite()) WriteTags(std::exchange(markup, {}));
  if (!TrimStart(text).empty()) {
    DeliverClean(text, std::move(markup));
    atLineStart_ = false;
    return;
  }
  if (text.find_first_of("\r\n") != std::string_view::npos) SetNewParagraph();
  WriteLayout(text);
  WriteTags(markup);
}

void HtmlParser::WriteTags(const SectionMarkup& markup) {
  for (const SectionMarkup::Place& place : markup.tags) WriteMarkup(place.tag.text);
}

// What parts the text that follows from what is written already.
void HtmlParser::WriteGap(bool space) {
  if (!IsWrite()) return;
  const std::string_view gap = WritesMarkup() ? std::string_view() : GapText(gap_);
  if (hasWritten_) WriteLayout(gap.empty() && space ? " " : gap);
  WriteLayout(label_);
  label_ = {};
  gap_ = HtmlBoundary::kInline;
  hasWritten_ = true;
}

}  // namespace vemra
