#pragma once

#include <bit>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "Support/text/ByteClasses.h"
#include "Support/text/Word.h"

namespace vemra {

// Gives where the maximal runs of characters of one class start, one after the other. A branch at
// the end of every run would be mispredicted more often than not, so the ends are found ahead, in
// whole blocks: as bits, where the type of a character is not that of the one before it.
class RunScanner {
 public:
  struct Run {
    int start;
    TavoWord::WordType type;  // kUnknown at the end of the text
  };

  // Both are loans for the life of the scanner.
  RunScanner(std::string_view text, const ByteClasses& classes)
      : text_(text.data()), size_(static_cast<int>(text.size())), classes_(classes) {}

  // The next run, which is where the one before it ends. Behind the last comes one at the end.
  Run Next() {
    while (next_ == found_) {
      if (scanned_ >= size_) return {size_, TavoWord::kUnknown};
      FindRuns();
    }
    return *next_++;
  }

  // The ByteClass bits that are set in a character of the run from start to before end.
  int SeenWithin(int start, int end) const {
    int seen = ClassAt(start);
    for (int i = start + 1; i < end; ++i) seen |= ClassAt(i);
    return seen;
  }

 private:
  static constexpr int kBlock = ByteClasses::kBlock;
  static constexpr int kBlocksAhead = 8;
  static constexpr int kStep = 4;  // runs that are written without a branch between

  // Never part of Next, which then would not be part of its callers' loops.
  [[gnu::noinline]] void FindRuns() {
    next_ = found_ = runs_;
    for (int i = 0; i < kBlocksAhead && scanned_ < size_; ++i) FindRunsOfBlock();
  }

  void FindRunsOfBlock() {
    const std::uint64_t lowBefore = types_.low >> (kBlock - 1);
    const std::uint64_t highBefore = types_.high >> (kBlock - 1);
    types_ = GetTypes();
    std::uint64_t starts = (types_.low ^ (types_.low << 1 | lowBefore)) |
                           (types_.high ^ (types_.high << 1 | highBefore));
    Run* const end = found_ + std::popcount(starts);
    for (; found_ < end; found_ += kStep) {
      for (int i = 0; i < kStep; ++i) {
        found_[i] = RunAt(std::countr_zero(starts) % kBlock);
        starts &= starts - 1;
      }
    }
    found_ = end;
    scanned_ += kBlock;
  }

  std::uint8_t ClassAt(int i) const { return classes_[static_cast<unsigned char>(text_[i])]; }

  Run RunAt(int i) const {
    const auto type = (types_.low >> i & 1) | (types_.high >> i & 1) << 1;
    return {static_cast<int>(scanned_ + i), static_cast<TavoWord::WordType>(type)};
  }

  // Where the text ends within the block, NULs follow, whose type begins a run of its own.
  BlockTypes GetTypes() const {
    const std::int64_t left = size_ - scanned_;
    if (left >= kBlock) return classes_.GetTypes(text_ + scanned_);
    char last[kBlock] = {};
    std::memcpy(last, text_ + scanned_, static_cast<std::size_t>(left));
    return classes_.GetTypes(last);
  }

  const char* text_;
  int size_;
  const ByteClasses& classes_;
  std::int64_t scanned_ = 0;  // characters, in whole blocks: up to a block beyond the text
  BlockTypes types_{~std::uint64_t{0}, ~std::uint64_t{0}};  // no character of a text has this type
  Run runs_[kBlocksAhead * kBlock + kStep];
  Run* found_ = runs_;  // behind the last
  const Run* next_ = runs_;
};

}  // namespace vemra
