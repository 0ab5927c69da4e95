#include "Support/foundation/ProfileReader.h"

#include <charconv>
#include <cstring>
#include <system_error>

#include "Support/foundation/Ascii.h"
#include "Support/foundation/LineBlock.h"

namespace vemra {
namespace {

const char* SkipSpaces(const char* text) {
  while (IsAsciiSpace(static_cast<unsigned char>(*text))) ++text;
  return text;
}

// Takes a decimal number as "%d" does. The end of what it took; null when there is no number or it
// does not fit into 32 bits.
const char* ParseInt(const char* text, std::int32_t& value) {
  text = SkipSpaces(text);
  if (*text == '+' && text[1] != '-') ++text;  // from_chars takes a minus only
  const auto [end, error] = std::from_chars(text, text + std::strlen(text), value);
  return error == std::errc() ? end : nullptr;
}

}  // namespace

CTavoProfileReader::CTavoProfileReader() {
  AllocBuffer();
}

CTavoProfileReader::CTavoProfileReader(std::FILE* stream) : CTavoProfileReader() {
  Open(stream);
}

CTavoProfileReader::CTavoProfileReader(const std::string& path) : CTavoProfileReader() {
  Open(path);
}

CTavoProfileReader::CTavoProfileReader(TavoFile& file) : CTavoProfileReader() {
  Open(file);
}

CTavoProfileReader::~CTavoProfileReader() {
  Close();
}

void CTavoProfileReader::AllocBuffer() {
  buffer_ = std::make_unique<char[]>(kLineLimit + 1);
  line_ = buffer_.get();
}

int CTavoProfileReader::Open(std::FILE* stream) {
  path_.clear();
  stream_ = stream;
  ownsStream_ = 0;
  DropBlock();
  return IsOpen();
}

int CTavoProfileReader::Open(const std::string& path) {
  Open(static_cast<std::FILE*>(nullptr));
  try {
    TavoFile file(path, TavoFile::Access::kRead, TavoFile::Creation::kOpenExisting);
    if (!Attach(file)) return 0;
  } catch (const std::system_error&) {
    return 0;
  }
  path_ = path;
  return 1;
}

int CTavoProfileReader::Open(TavoFile& file) {
  path_.clear();
  return Attach(file);
}

// The stream has a descriptor of its own, so it is the reader's to close.
int CTavoProfileReader::Attach(TavoFile& file) {
  std::FILE* const stream = file.OpenStream("rb");
  if (stream == nullptr) return 0;
  stream_ = stream;
  ownsStream_ = 1;
  std::setvbuf(stream, nullptr, _IONBF, 0);  // the block is the buffer
  DropBlock();
  block_ = std::make_unique<LineBlock>();
  return 1;
}

void CTavoProfileReader::Close() {
  if (ownsStream_) std::fclose(stream_);
  Open(static_cast<std::FILE*>(nullptr));
}

// A pending line outlives the stream that it came from.
void CTavoProfileReader::DropBlock() {
  if (line_ != buffer_.get()) std::memcpy(buffer_.get(), line_, lineLength_ + 1);
  line_ = buffer_.get();
  block_.reset();
}

int CTavoProfileReader::FillBuffer() {
  if (block_ != nullptr) {
    char* const line = block_->Next(stream_, kLineLimit, &lineLength_);
    if (line != nullptr) line_ = line;
    return line != nullptr;
  }
  // The caller's stream must not be read ahead. Once its end was seen, it stays at its end even if
  // the file grows.
  if (std::feof(stream_) || std::fgets(line_, kLineLimit + 1, stream_) == nullptr) return 0;
  lineLength_ = TrimLineEnd(line_, std::strlen(line_));
  return 1;
}

int CTavoProfileReader::ReadPhysicalLine() {
  if (!FillBuffer()) {
    GotoNextLine();
    return 0;
  }
  ++lineNumber_;
  position_ = 0;
  line_[lineLength_] = '\0';
  return 1;
}

int CTavoProfileReader::ReadNextLine() {
  if (stream_ == nullptr) return 0;
  while (line_[position_] == '\0' || line_[position_] == ';') {
    if (!ReadPhysicalLine()) return 0;
    position_ = static_cast<std::uint32_t>(SkipSpaces(line_) - line_);
  }
  position_ = lineStart_ = 0;
  return 1;
}

int CTavoProfileReader::Match(char c) {
  if (c == '\0' || line_[position_] != c) return 0;
  ++position_;
  return 1;
}

int CTavoProfileReader::Match(const char* text) {
  for (; *text != '\0'; ++text) {
    if (!Match(*text)) return 0;
  }
  return 1;
}

int CTavoProfileReader::MatchSpaces() {
  position_ = static_cast<std::uint32_t>(SkipSpaces(&line_[position_]) - line_);
  return line_[position_] == '\0';
}

int CTavoProfileReader::FailAndReset() {
  position_ = lineStart_;
  return 0;
}

int CTavoProfileReader::MatchKey(const std::string& key) {
  return Match(key.c_str()) && Match('=');
}

int CTavoProfileReader::ReadSectionTitle(const std::string& title) {
  if (!ReadNextLine()) return 0;
  if (Match('[') && Match(title.c_str()) && Match(']') && MatchSpaces()) return 1;
  return FailAndReset();
}

int CTavoProfileReader::GotoNextSection() {
  while (ReadNextLine()) {
    if (line_[0] == '[') return 1;
    GotoNextLine();
  }
  return 0;
}

int CTavoProfileReader::ReadInt(const std::string& key, std::int32_t& value) {
  if (!ReadNextLine()) return 0;
  if (!MatchKey(key)) return FailAndReset();
  std::int32_t number = 0;
  const char* const end = ParseInt(&line_[position_], number);
  if (end == nullptr) return FailAndReset();
  position_ = static_cast<std::uint32_t>(end - line_);
  if (!MatchSpaces()) return FailAndReset();
  value = number;
  return 1;
}

int CTavoProfileReader::ReadString(const std::string& key, std::string& value) {
  if (!ReadNextLine()) return 0;
  if (!MatchKey(key)) return FailAndReset();
  value.assign(&line_[position_], lineLength_ - position_);
  GotoNextLine();
  return 1;
}

int CTavoProfileReader::ReadLine(std::string& text, int wholeLine) {
  if (!ReadNextLine()) return 0;
  const std::size_t start = wholeLine ? 0 : position_;
  text.assign(&line_[start], lineLength_ - start);
  return 1;
}

void CTavoProfileReader::GotoNextLine() {
  position_ = 0;
  lineLength_ = 0;
  line_[0] = '\0';
}

}  // namespace vemra
