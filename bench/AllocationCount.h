#pragma once

#include <cstdint>

// How often the thread has asked for memory with new.
std::int64_t AllocationCount();
