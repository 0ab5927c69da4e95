#include "Support/foundation/Scramble.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <mutex>
#include <string_view>

#include "Support/foundation/Ascii.h"

namespace vemra {
namespace {

constexpr std::string_view kBuiltInKey = "tormaquelvinade";
constexpr std::size_t kBlockSize = 2048;  // bytes
constexpr unsigned kLetters = 26;

// What is added to a buffer, up to size bytes: the key twice, again and again. An even number of
// bytes before it repeats, whatever the key's length, which is why the key is taken twice.
class Stream {
 public:
  Stream(std::string_view key, unsigned a, unsigned b, std::size_t size) {
    const auto modifier = static_cast<unsigned char>(a * b);
    bytes_.reserve(size + 2 * key.size());
    for (const char c : key) bytes_ += Derive(c, modifier);
    bytes_ += bytes_;
    period_ = bytes_.size();
    while (period_ != 0 && bytes_.size() < size) bytes_.append(bytes_, 0, period_);
  }

  void AddTo(unsigned char* buffer, std::size_t length) const {
    if (period_ == 0) return;
    const std::size_t stretch = bytes_.size() / period_ * period_;
    for (std::size_t done = 0; done < length; done += stretch)
      AddWords(buffer + done, std::min(stretch, length - done));
  }

 private:
  // Never 0, so that no byte of the stream leaves the data as it is.
  static char Derive(char c, unsigned char modifier) {
    const auto derived = static_cast<char>(static_cast<unsigned char>(c) ^ modifier);
    return derived == 0 ? c : derived;
  }

  void AddWords(unsigned char* buffer, std::size_t length) const {
    std::size_t at = 0;
    for (; at + 8 <= length; at += 8) {
      std::uint64_t word = 0;
      std::uint64_t mask = 0;
      std::memcpy(&word, buffer + at, 8);
      std::memcpy(&mask, bytes_.data() + at, 8);
      word ^= mask;
      std::memcpy(buffer + at, &word, 8);
    }
    for (; at < length; ++at) buffer[at] ^= static_cast<unsigned char>(bytes_[at]);
  }

  std::string bytes_;  // whole periods
  std::size_t period_ = 0;
};

struct FileNameKey {
  std::mutex mutex;
  std::string text{kBuiltInKey};
};

FileNameKey& GetFileNameKey() {
  static FileNameKey key;
  return key;
}

unsigned LowBits(char c) {
  return static_cast<unsigned char>(c) & 31U;
}

// Gives every letter after the colon the number that shift makes of its own and of the key's.
template <typename Shift>
void ReplaceLetters(std::string& name, Shift shift) {
  FileNameKey& key = GetFileNameKey();
  const std::lock_guard lock(key.mutex);
  const std::size_t colon = name.find(':');
  if (colon == std::string::npos || key.text.empty()) return;
  std::size_t next = 0;
  for (std::size_t i = colon + 1; i < name.size(); ++i) {
    if (!IsAsciiAlpha(static_cast<unsigned char>(name[i]))) continue;
    name[i] = static_cast<char>('A' + shift(LowBits(key.text[next]), LowBits(name[i])) % kLetters);
    next = (next + 1) % key.text.size();
  }
}

}  // namespace

void encrypt(void* buffer, std::uint16_t a, std::uint16_t b, std::uint16_t length) {
  const std::size_t words = length & ~std::size_t{1};
  Stream(kBuiltInKey, a, b, std::min(words, kBlockSize))
      .AddTo(static_cast<unsigned char*>(buffer), words);
}

void OldEncrypt(void* buffer, std::uint16_t a, std::uint16_t b, std::uint16_t blockCount,
                const char* key) {
  const std::string_view text = key == nullptr ? kBuiltInKey : std::string_view(key);
  auto* block = static_cast<unsigned char*>(buffer);
  for (unsigned j = 0; j < blockCount; ++j, block += kBlockSize) {
    const auto number = static_cast<std::uint16_t>(b + j);
    if (number != 0) Stream(text, a, number, kBlockSize).AddTo(block, kBlockSize);
  }
}

void encrypt_filename(std::string& name) {
  ReplaceLetters(name, [](unsigned k, unsigned c) { return k + c; });
}

void encrypt_unfilename(std::string& name) {
  // The letter numbered k + c comes from c - 1 places after "A"; 2 * kLetters keeps it positive.
  ReplaceLetters(name, [](unsigned k, unsigned c) { return c + 2 * kLetters - 2 - k; });
}

void SetFileNameKey(const std::string& key) {
  FileNameKey& held = GetFileNameKey();
  const std::lock_guard lock(held.mutex);
  held.text = key;
}

}  // namespace vemra
