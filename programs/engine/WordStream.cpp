#include "programs/engine/WordStream.h"

#include <algorithm>

namespace vemra::engine {
namespace {

constexpr char kNextPosition = 1;
constexpr char kSamePosition = 2;
constexpr char kEscape = 3;
constexpr char kEscapedOffset = 64;
constexpr char kExpression = 4;

bool NeedsEscape(char c) {
  return static_cast<unsigned char>(c) <= kEscape;
}
bool IsMarker(char c) {
  return c == kNextPosition || c == kSamePosition;
}

void Append(std::string& stream, char marker, std::string_view word) {
  stream += marker;
  if (std::none_of(word.begin(), word.end(), NeedsEscape)) {
    stream += word;
    return;
  }
  for (const char c : word) {
    if (NeedsEscape(c)) {
      stream += kEscape;
      stream += static_cast<char>(c + kEscapedOffset);
    } else {
      stream += c;
    }
  }
}

std::string Unescape(std::string_view bytes) {
  std::string word;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    const bool escaped = bytes[i] == kEscape && i + 1 < bytes.size();
    word += escaped ? static_cast<char>(bytes[++i] - kEscapedOffset) : bytes[i];
  }
  return word;
}

}  // namespace

void AppendWord(std::string& stream, std::string_view word) {
  Append(stream, kNextPosition, word);
}

void AppendAtSamePosition(std::string& stream, std::string_view word) {
  Append(stream, kSamePosition, word);
}

std::string ExpressionToken(int fieldno, std::string_view expression) {
  return kExpression + std::to_string(fieldno) + ':' + std::string(expression);
}

bool IsExpressionToken(std::string_view word) {
  return word.starts_with(kExpression);
}

WordStreamReader::WordStreamReader(std::string_view stream) : stream_(stream) {
  while (cursor_ < stream_.size() && !IsMarker(stream_[cursor_])) ++cursor_;
}

bool WordStreamReader::Next() {
  if (cursor_ >= stream_.size()) return false;
  begin_ = cursor_;
  samePosition_ = stream_[cursor_++] == kSamePosition;
  const std::size_t start = cursor_;
  bool escaped = false;
  for (; cursor_ < stream_.size(); ++cursor_) {
    if (!NeedsEscape(stream_[cursor_])) continue;
    if (IsMarker(stream_[cursor_])) break;
    escaped = true;
  }
  word_ = stream_.substr(start, cursor_ - start);
  if (escaped) {
    unescaped_ = Unescape(word_);
    word_ = unescaped_;
  }
  return true;
}

}  // namespace vemra::engine
