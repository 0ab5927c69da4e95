#include "programs/formats/RunMarkup.h"

#include <algorithm>

namespace vemra {

void RunMarkup::Start(const OpenLink& link) {
  markup_.link = link;
  markup_.tags.clear();
}

void RunMarkup::Add(std::size_t offset, std::vector<MarkupTag> tags) {
  for (MarkupTag& tag : tags) markup_.tags.push_back({offset, std::move(tag)});
}

SectionMarkup RunMarkup::TakeFirst(std::size_t bytes) {
  const auto end = std::find_if(markup_.tags.begin(), markup_.tags.end(),
                                [bytes](const auto& place) { return place.offset >= bytes; });
  SectionMarkup first{markup_.link, {markup_.tags.begin(), end}};
  markup_.tags.erase(markup_.tags.begin(), end);
  for (const SectionMarkup::Place& place : first.tags) markup_.link.Follow(place.tag);
  for (SectionMarkup::Place& place : markup_.tags) place.offset -= bytes;
  return first;
}

}  // namespace vemra
