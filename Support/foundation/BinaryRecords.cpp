#include "Support/foundation/BinaryRecords.h"

#include <algorithm>
#include <exception>
#include <limits>

namespace vemra {
namespace {

constexpr unsigned kMoreFollows8 = 0xFF;
constexpr unsigned kMoreFollows16 = 0xFFFF;

// Runs what may raise an exception of the file; 1 when it succeeds.
template <typename Operation>
int Attempt(Operation operation) {
  try {
    return operation() ? 1 : 0;
  } catch (const std::exception&) {
    return 0;
  }
}

// Bytes of an integer while it is put together, low byte first.
struct Record {
  unsigned char bytes[7];
  std::size_t size = 0;

  void Add(std::uint32_t value, int width) {
    for (int i = 0; i < width; ++i) bytes[size++] = static_cast<unsigned char>(value >> (8 * i));
  }
};

Record EncodeInt(std::int32_t value) {
  const auto bits = static_cast<std::uint32_t>(value);
  Record record;
  if (bits < kMoreFollows8) {
    record.Add(bits, 1);
    return record;
  }
  record.Add(kMoreFollows8, 1);
  if (bits < kMoreFollows16) {
    record.Add(bits, 2);
  } else {
    record.Add(kMoreFollows16, 2);
    record.Add(bits, 4);
  }
  return record;
}

bool ReadLittleEndian(TavoFile& file, int width, std::uint32_t& value) {
  unsigned char bytes[4];
  const auto size = static_cast<std::size_t>(width);
  if (file.Read(bytes, size) != size) return false;
  value = 0;
  for (int i = 0; i < width; ++i) value |= std::uint32_t{bytes[i]} << (8 * i);
  return true;
}

bool DecodeInt(TavoFile& file, std::int32_t& value) {
  std::uint32_t bits = 0;
  if (!ReadLittleEndian(file, 1, bits)) return false;
  if (bits == kMoreFollows8) {
    if (!ReadLittleEndian(file, 2, bits)) return false;
    if (bits == kMoreFollows16 && !ReadLittleEndian(file, 4, bits)) return false;
  }
  value = static_cast<std::int32_t>(bits);
  return true;
}

// Reads in blocks, so that a length that lies costs no more memory than the file has bytes.
bool ReadBytes(TavoFile& file, std::size_t length, std::string& text) {
  constexpr std::size_t kBlock = 64 * 1024;
  while (text.size() < length) {
    const std::size_t start = text.size();
    const std::size_t size = std::min(kBlock, length - start);
    text.resize(start + size);
    if (file.Read(text.data() + start, size) != size) return false;
  }
  return true;
}

}  // namespace

int WriteInt(TavoFile& file, std::int32_t value) {
  const Record record = EncodeInt(value);
  return Attempt([&] {
    file.Write(record.bytes, record.size);
    return true;
  });
}

int ReadInt(TavoFile& file, std::int32_t& value) {
  return Attempt([&] { return DecodeInt(file, value); });
}

int WriteString(TavoFile& file, const std::string& text) {
  if (text.size() > std::numeric_limits<std::int32_t>::max()) return 0;
  if (!WriteInt(file, static_cast<std::int32_t>(text.size()))) return 0;
  return Attempt([&] {
    file.Write(text.data(), text.size());
    return true;
  });
}

int ReadString(TavoFile& file, std::string& text) {
  std::int32_t length = 0;
  if (!ReadInt(file, length) || length < 0) return 0;
  text.clear();
  const int result =
      Attempt([&] { return ReadBytes(file, static_cast<std::size_t>(length), text); });
  if (!result) text.clear();
  return result;
}

int ReadByte(TavoFile& file, unsigned char& value) {
  return Attempt([&] { return file.Read(&value, 1) == 1; });
}

}  // namespace vemra
