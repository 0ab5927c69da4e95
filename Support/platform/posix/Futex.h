#pragma once

#include <atomic>
#include <cstdint>

#include "Support/platform/Deadline.h"

// Sleeping on a word of this process's memory.
namespace vemra::platform {

// Sleeps while the word holds the value, until it is woken, or the deadline has come, or for no
// reason at all: the caller looks at the word again.
void FutexWait(const std::atomic<std::uint32_t>& word, std::uint32_t value,
               const Deadline& deadline);
// The address alone counts: the word may be gone already.
void FutexWakeOne(const std::atomic<std::uint32_t>* word);
void FutexWakeAll(const std::atomic<std::uint32_t>* word);

}  // namespace vemra::platform
