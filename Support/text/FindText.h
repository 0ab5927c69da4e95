#pragma once

#include <optional>
#include <string_view>

#include "Support/Export.h"
#include "Support/text/TextRange.h"

namespace vemra {

class TavoLangPack;

// Where what stands in text: forward, its first place that starts at or after from; backward, its
// last place that ends at or before it. None for an empty what. from is taken as the nearer end of
// the text when it is outside. With a pack, the two are compared as folded for its index, which is
// how it compares without case; without, byte by byte. Takes time linear in text and what, whatever
// they hold. text has at most 2^31 - 1 bytes.
SUPPORT_API std::optional<TavoTextRange> FindForward(std::string_view text, std::string_view what,
                                                     int from, const TavoLangPack* pack);
SUPPORT_API std::optional<TavoTextRange> FindBackward(std::string_view text, std::string_view what,
                                                      int from, const TavoLangPack* pack);

}  // namespace vemra
