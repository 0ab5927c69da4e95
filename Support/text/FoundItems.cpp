#include "Support/text/FoundItems.h"

#include <array>
#include <atomic>
#include <cstddef>

namespace vemra {

namespace {

struct alignas(64) Slot {
  std::atomic_flag inUse;
  FoundItems spare;
};

// Shared slots rather than a variable of each thread: those are gone before other variables of the
// thread, which may hold sections.
Slot& SlotOfThread() {
  static auto& slots = *new std::array<Slot, 16>;  // outlives every static section
  static std::atomic<std::size_t> threads;
  static thread_local const std::size_t number = threads++;
  return slots[number % slots.size()];
}

}  // namespace

void FoundItems::Swap(FoundItems& other) {
  items.swap(other.items);
  words.swap(other.words);
  parts.swap(other.parts);
  sentenceBreaks.Swap(other.sentenceBreaks);
  paragraphBreaks.Swap(other.paragraphBreaks);
}

void ExchangeForSpare(FoundItems& found) {
  Slot& slot = SlotOfThread();
  // When two threads share a slot, the one that comes second does without.
  if (slot.inUse.test_and_set(std::memory_order_acquire)) return;
  slot.spare.Swap(found);
  slot.inUse.clear(std::memory_order_release);
}

}  // namespace vemra
