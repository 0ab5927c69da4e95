#include "programs/engine/Layout.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace vemra::engine {
namespace {

constexpr unsigned kStartBits = 3;
constexpr unsigned kFieldChanges = 4;
constexpr unsigned kWordsShift = 3;

void AppendNumber(std::string& bytes, std::uint64_t number) {
  for (; number >= 128; number >>= 7) bytes += static_cast<char>(number | 128);
  bytes += static_cast<char>(number);
}

// Takes a number off the front; false when there is none, or a larger one than any text has.
bool TakeNumber(std::string_view& bytes, std::uint64_t& number) {
  number = 0;
  for (unsigned shift = 0; !bytes.empty() && shift < 42; shift += 7) {
    const auto byte = static_cast<unsigned char>(bytes.front());
    bytes.remove_prefix(1);
    number |= std::uint64_t{byte & 127U} << shift;
    if (byte < 128) return true;
  }
  return false;
}

}  // namespace

void LayoutWriter::BeginSegment(int fieldno) {
  EndSegment();
  fieldno_ = fieldno;
  segmentStarts_ = std::exchange(starts_, kNothing);
}

void LayoutWriter::EndSegment() {
  if (words_ == 0) return;
  const bool changes = fieldno_ != writtenFieldno_;
  AppendNumber(bytes_, words_ << kWordsShift | (changes ? kFieldChanges : 0) | segmentStarts_);
  if (changes) bytes_ += static_cast<char>(fieldno_);
  writtenFieldno_ = fieldno_;
  segmentStarts_ = kNothing;
  words_ = 0;
}

const std::string& LayoutWriter::GetBytes() {
  EndSegment();
  return bytes_;
}

void LayoutWriter::Clear() {
  std::string kept = std::move(bytes_);
  kept.clear();
  *this = LayoutWriter();
  bytes_ = std::move(kept);
}

bool TextLayout::Read(std::string_view bytes) {
  for (std::vector<Segment>& segments : segments_) segments.clear();
  std::size_t fieldno = 0;
  std::int64_t word = 0;
  int sentence = 0;
  int paragraph = 0;
  while (!bytes.empty()) {
    std::uint64_t header = 0;
    if (!TakeNumber(bytes, header)) return false;
    if ((header & kFieldChanges) != 0) {
      if (bytes.empty()) return false;
      fieldno = static_cast<unsigned char>(bytes.front());
      bytes.remove_prefix(1);
    }
    const auto words = static_cast<std::int64_t>(header >> kWordsShift);
    if (fieldno >= segments_.size() || words == 0 ||
        word + words > std::numeric_limits<int>::max()) {
      return false;
    }
    if ((header & kStartBits) != 0) ++sentence;
    if ((header & kStartBits) > 1) ++paragraph;
    std::vector<Segment>& segments = segments_[fieldno];
    const int position = segments.empty() ? 0 : segments.back().position + segments.back().words;
    segments.push_back(
        {position, static_cast<int>(word), static_cast<int>(words), sentence, paragraph});
    word += words;
  }
  return true;
}

const TextLayout::Segment* TextLayout::FindSegment(int fieldno, int position) const {
  const std::vector<Segment>& segments = segments_[static_cast<std::size_t>(fieldno)];
  const auto after =
      std::upper_bound(segments.begin(), segments.end(), position,
                       [](int value, const Segment& segment) { return value < segment.position; });
  if (position < 0 || after == segments.begin()) return nullptr;
  const Segment& segment = *std::prev(after);
  return position - segment.position < segment.words ? &segment : nullptr;
}

bool TextLayout::Find(int fieldno, int position, int count, Span& span) const {
  const int lastPosition = position + count - 1;
  const Segment* first = FindSegment(fieldno, position);
  const Segment* last = FindSegment(fieldno, lastPosition);
  if (first == nullptr || last == nullptr) return false;
  span.firstWord = first->word + position - first->position;
  span.lastWord = last->word + lastPosition - last->position;
  span.sentence = first->sentence == last->sentence ? first->sentence : Span::kSeveral;
  span.paragraph = first->paragraph == last->paragraph ? first->paragraph : Span::kSeveral;
  return true;
}

}  // namespace vemra::engine
