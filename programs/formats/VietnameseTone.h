#pragma once

namespace vemra {

// A Vietnamese vowel with a tone, as the Vietnamese code page writes it: vowel and loose tone mark.
struct VietnameseTone {
  char32_t vowel;
  char32_t mark;
};

// The parts of a letter by Unicode's canonical decomposition; both 0 for any other character.
VietnameseTone SplitVietnameseTone(char32_t c);

}  // namespace vemra
