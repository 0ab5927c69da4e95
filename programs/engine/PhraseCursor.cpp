#include "programs/engine/PhraseCursor.h"

#include <limits>

namespace vemra::engine {
namespace {

// Up to here it takes less time to pass over texts than to look a text up.
constexpr std::int64_t kSmallStep = 16;
constexpr std::int64_t kAtEnd = std::numeric_limits<std::int64_t>::max();

}  // namespace

PhraseCursor::PhraseCursor(Connection& connection, std::string expression)
    : expression_(std::move(expression)),
      texts_(connection,
             "SELECT rowid, phrase_places(words) FROM words WHERE words MATCH ? AND rowid >= ?"
             " ORDER BY rowid") {}

const std::vector<PhrasePlace>& PhraseCursor::FindPlaces(std::int64_t number) {
  if (!isOpen_ || number < number_ || number - number_ > kSmallStep) Seek(number);
  while (number_ < number) Step();
  places_.clear();
  if (number_ == number) places_ = ReadPhrasePlaces(texts_.Bytes(1));
  return places_;
}

void PhraseCursor::Release() {
  texts_.Reset();
  isOpen_ = false;
}

void PhraseCursor::Seek(std::int64_t number) {
  texts_.Reset();
  texts_.BindText(1, expression_);
  texts_.Bind(2, number);
  isOpen_ = true;
  Step();
}

void PhraseCursor::Step() {
  number_ = texts_.Step() ? texts_.Number(0) : kAtEnd;
}

}  // namespace vemra::engine
