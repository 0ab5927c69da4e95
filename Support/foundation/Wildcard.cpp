#include "Support/foundation/Wildcard.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <vector>

#include "Support/foundation/WildcardMatcher.h"

namespace vemra {
namespace {

constexpr std::size_t kStarLimit = 1000;
constexpr std::size_t kNowhere = std::string_view::npos;

// A piece is a stretch of a pattern without a star. text is at least as long.
bool MatchesPiece(std::string_view piece, const char* text) {
  for (std::size_t i = 0; i < piece.size(); ++i) {
    if (piece[i] != text[i] && piece[i] != '?') return false;
  }
  return true;
}

// The first place in name where piece matches.
std::size_t FindPiece(std::string_view piece, std::string_view name) {
  if (piece.empty()) return 0;
  const bool startsWithLiteral = piece[0] != '?';
  for (std::size_t at = 0; at + piece.size() <= name.size(); ++at) {
    if (startsWithLiteral) {
      const std::size_t starts = name.size() - piece.size() + 1;
      const void* const found = std::memchr(name.data() + at, piece[0], starts - at);
      if (found == nullptr) return kNowhere;
      at = static_cast<std::size_t>(static_cast<const char*>(found) - name.data());
    }
    if (MatchesPiece(piece, name.data() + at)) return at;
  }
  return kNowhere;
}

// A name that is no longer than the limit cannot exceed it. Without a limit, the first place is as
// good as any other for every piece between two stars.
bool MatchWithoutLimit(std::string_view pattern, std::string_view name) {
  const std::size_t firstStar = pattern.find('*');
  if (firstStar == kNowhere) {
    return pattern.size() == name.size() && MatchesPiece(pattern, name.data());
  }
  const std::size_t lastStar = pattern.rfind('*');
  const std::string_view head = pattern.substr(0, firstStar);
  const std::string_view tail = pattern.substr(lastStar + 1);
  if (head.size() + tail.size() > name.size()) return false;
  if (!MatchesPiece(tail, name.data() + name.size() - tail.size())) return false;
  if (!MatchesPiece(head, name.data())) return false;
  name = name.substr(head.size(), name.size() - head.size() - tail.size());
  std::string_view middle = pattern.substr(firstStar, lastStar - firstStar);
  while (!middle.empty()) {
    middle.remove_prefix(1);  // the star
    const std::string_view piece = middle.substr(0, middle.find('*'));
    const std::size_t at = FindPiece(piece, name);
    if (at == kNowhere) return false;
    name.remove_prefix(at + piece.size());
    middle.remove_prefix(piece.size());
  }
  return true;
}

// A set of places in a name, from 0 to its length, one bit each.
class Places {
 public:
  explicit Places(std::size_t nameLength) : last_(nameLength), words_(nameLength / 64 + 1) {}

  void Add(std::size_t place) { words_[place / 64] |= std::uint64_t{1} << (place % 64); }
  bool HasLast() const { return (words_[last_ / 64] >> (last_ % 64) & 1) != 0; }

  // Moves every place on by one; those that leave the name are lost. False only when none is left.
  bool Advance() {
    return AdvanceWhere([](std::size_t) { return ~std::uint64_t{0}; });
  }
  // The same for the places in allowed; the others are lost.
  bool AdvanceFrom(const Places& allowed) {
    return AdvanceWhere([&allowed](std::size_t i) { return allowed.words_[i]; });
  }

  // Adds every place that is up to distance after one of the set.
  void Spread(std::size_t distance) {
    for (std::size_t covered = 0; covered < std::min(distance, last_);) {
      const std::size_t step = std::min(covered + 1, distance - covered);
      AddShifted(step);
      covered += step;
    }
    DropBeyondLast();
  }

 private:
  template <typename Mask>
  bool AdvanceWhere(Mask mask) {
    std::uint64_t carry = 0;
    std::uint64_t any = 0;
    for (std::size_t i = 0; i < words_.size(); ++i) {
      const std::uint64_t word = words_[i] & mask(i);
      words_[i] = word << 1 | carry;
      carry = word >> 63;
      any |= words_[i];
    }
    DropBeyondLast();
    return any != 0;
  }

  // From the end, so that every word is read before it is changed.
  void AddShifted(std::size_t step) {
    const std::size_t wholeWords = step / 64;
    const std::size_t bits = step % 64;
    for (std::size_t i = words_.size(); i-- > wholeWords;) {
      std::uint64_t moved = words_[i - wholeWords] << bits;
      if (bits != 0 && i > wholeWords) moved |= words_[i - wholeWords - 1] >> (64 - bits);
      words_[i] |= moved;
    }
  }

  void DropBeyondLast() { words_.back() &= ~std::uint64_t{0} >> (63 - last_ % 64); }

  std::size_t last_;
  std::vector<std::uint64_t> words_;
};

// The places of each character of a name, found when they are first asked for.
class PlacesByCharacter {
 public:
  explicit PlacesByCharacter(std::string_view name) : name_(name) {}

  const Places& Of(char c) {
    std::vector<Places>& slot = slots_[static_cast<unsigned char>(c)];
    if (slot.empty()) {
      Places& places = slot.emplace_back(name_.size());
      for (std::size_t i = 0; i < name_.size(); ++i) {
        if (name_[i] == c) places.Add(i);
      }
    }
    return slot.front();
  }

 private:
  std::string_view name_;
  std::array<std::vector<Places>, 256> slots_;  // empty or one
};

// Goes through the pattern once with the set of all the places that the name may have been matched
// up to, since with a limit no single choice is best.
bool MatchWithLimit(std::string_view pattern, std::string_view name, std::size_t starLimit) {
  PlacesByCharacter occurrences(name);
  Places reached(name.size());
  reached.Add(0);
  bool starPends = false;
  for (const char c : pattern) {
    if (c == '*') {
      starPends = true;
    } else if (c == '?') {
      if (!reached.Advance()) return false;
    } else {
      if (starPends) reached.Spread(starLimit);
      starPends = false;
      if (!reached.AdvanceFrom(occurrences.Of(c))) return false;
    }
  }
  if (starPends) reached.Spread(starLimit);
  return reached.HasLast();
}

}  // namespace

bool MatchWildcardWithin(std::string_view pattern, std::string_view name, std::size_t starLimit) {
  return name.size() <= starLimit ? MatchWithoutLimit(pattern, name)
                                  : MatchWithLimit(pattern, name, starLimit);
}

int MatchWildcard(std::string_view pattern, std::string_view name) {
  return MatchWildcardWithin(pattern, name, kStarLimit) ? 1 : 0;
}

}  // namespace vemra
