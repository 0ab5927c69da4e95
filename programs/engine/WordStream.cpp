#include "programs/engine/WordStream.h"

#include <algorithm>
#include <cstring>

namespace vemra::engine {
namespace {

constexpr char kExpression = 4;
constexpr std::size_t kMostKept = std::size_t{1} << 20;  // bytes

constexpr unsigned kDigitBits = 7;
constexpr unsigned kDigitMark = 1 << kDigitBits;

char MakeDigit(std::size_t number, unsigned place) {
  return static_cast<char>(number >> (place * kDigitBits) | kDigitMark);
}

std::size_t ReadDigit(char digit, unsigned place) {
  return std::size_t{static_cast<unsigned char>(digit) & (kDigitMark - 1)} << (place * kDigitBits);
}

}  // namespace

void WordStream::Append(char marker, const char* word) {
  const std::size_t length = std::min(std::strlen(word), kMaxWord);
  const std::size_t size = size_ + kHeader + length;
  if (size >= capacity_) Reserve(size + 1);
  char* const begin = bytes_.get() + size_;
  begin[0] = marker;
  for (unsigned i = 0; i < kHeader - 1; ++i) begin[i + 1] = MakeDigit(length, i);
  std::copy_n(word, length, begin + kHeader);
  size_ = size;
}

void WordStream::Reserve(std::size_t size) {
  const std::size_t capacity = std::max(size, capacity_ * 2);
  std::unique_ptr<char[]> bytes(new char[capacity]);
  std::copy_n(bytes_.get(), size_, bytes.get());
  bytes_ = std::move(bytes);
  capacity_ = capacity;
}

const char* WordStream::Get() {
  if (capacity_ == 0) Reserve(1);
  bytes_[size_] = '\0';
  return bytes_.get();
}

void WordStream::Clear() {
  size_ = 0;
  if (capacity_ <= kMostKept) return;
  bytes_.reset();
  capacity_ = 0;
}

std::string ExpressionToken(int fieldno, std::string_view expression) {
  return kExpression + std::to_string(fieldno) + ':' + std::string(expression);
}

bool IsExpressionToken(std::string_view word) {
  return word.starts_with(kExpression);
}

bool WordStreamReader::Next() {
  const std::string_view rest = stream_.substr(end_);
  if (rest.size() < WordStream::kHeader) return false;
  samePosition_ = rest[0] == WordStream::kSamePosition;
  if (!samePosition_ && rest[0] != WordStream::kNextPosition) return false;
  const std::size_t length = ReadDigit(rest[1], 0) | ReadDigit(rest[2], 1) | ReadDigit(rest[3], 2);
  word_ = rest.substr(WordStream::kHeader, length);
  begin_ = end_;
  end_ += WordStream::kHeader + word_.size();
  return true;
}

}  // namespace vemra::engine
