#include "Support/platform/ProfileText.h"

#include <algorithm>
#include <utility>

#include "Support/foundation/Ascii.h"

namespace vemra::platform {

namespace {

constexpr std::string_view kByteOrderMark = "\xef\xbb\xbf";
// Up to here comparing hashes one by one is faster than an index.
constexpr std::size_t kShortList = 8;

bool IsSpace(char c) {
  return IsAsciiSpace(static_cast<unsigned char>(c)) || c == '\x1a';
}

// Loops, as the searches of string_view call a function for every character.
std::string_view TrimLeft(std::string_view text) {
  while (!text.empty() && IsSpace(text.front())) text.remove_prefix(1);
  return text;
}

std::string_view TrimRight(std::string_view text) {
  while (!text.empty() && IsSpace(text.back())) text.remove_suffix(1);
  return text;
}

std::string_view Trim(std::string_view text) {
  return TrimRight(TrimLeft(text));
}

// FNV-1a
std::uint32_t Hash(std::string_view name) {
  std::uint32_t hash = 2166136261U;
  for (const char c : name) hash = (hash ^ ToAsciiLower(static_cast<unsigned char>(c))) * 16777619U;
  return hash;
}

bool SameName(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](unsigned char x, unsigned char y) {
    return ToAsciiLower(x) == ToAsciiLower(y);
  });
}

bool HasLineBreak(std::string_view text) {
  return std::any_of(text.begin(), text.end(),
                     [](char c) { return c == '\r' || c == '\n' || c == '\0'; });
}

// Whether what is written here reads back as it was given.
bool IsRegular(std::string_view section, std::string_view key, std::string_view value) {
  return !HasLineBreak(section) && !HasLineBreak(key) && !HasLineBreak(value) &&
         TrimRight(section).size() == section.size() && TrimRight(key).size() == key.size() &&
         TrimRight(value).size() == value.size() && key.find('=') == std::string_view::npos &&
         !key.starts_with('[');
}

}  // namespace

template <class Item>
std::size_t ProfileText::NamedList<Item>::Find(const ProfileText& text,
                                               std::string_view name) const {
  const std::uint32_t hash = Hash(name);
  const auto matches = [&](const Item& item) {
    return item.name.hash == hash && !item.IsBlank() && SameName(text.View(item.name.span), name);
  };
  if (slots_.empty()) {
    const auto found = std::find_if(items_.begin(), items_.end(), matches);
    return found == items_.end() ? kNone : std::size_t(found - items_.begin());
  }
  const std::size_t mask = slots_.size() - 1;
  for (std::size_t slot = hash & mask; slots_[slot] != 0; slot = (slot + 1) & mask) {
    if (matches(items_[slots_[slot] - 1])) return slots_[slot] - 1;
  }
  return kNone;
}

// Puts an item into the index unless an earlier one has its name.
template <class Item>
void ProfileText::NamedList<Item>::Index(const ProfileText& text, std::size_t position) {
  const Item& item = items_[position];
  if (item.IsBlank()) return;
  const std::size_t mask = slots_.size() - 1;
  std::size_t slot = item.name.hash & mask;
  for (; slots_[slot] != 0; slot = (slot + 1) & mask) {
    const Name& other = items_[slots_[slot] - 1].name;
    if (other.hash == item.name.hash && SameName(text.View(other.span), text.View(item.name.span)))
      return;
  }
  slots_[slot] = std::uint32_t(position + 1);
}

template <class Item>
void ProfileText::NamedList<Item>::Reindex(const ProfileText& text) {
  std::size_t size = 0;
  if (items_.size() > kShortList) {
    size = 4 * kShortList;
    while (size < 2 * items_.size()) size *= 2;
  }
  slots_.assign(size, 0);
  if (size == 0) return;
  for (std::size_t i = 0; i < items_.size(); i++) Index(text, i);
}

// Only blank lines may follow position, so no indexed item moves.
template <class Item>
void ProfileText::NamedList<Item>::Insert(const ProfileText& text, std::size_t position,
                                          const Item& item) {
  items_.insert(items_.begin() + std::ptrdiff_t(position), item);
  const bool full = slots_.size() < 2 * items_.size();
  if (items_.size() <= kShortList) return;
  if (full) {
    Reindex(text);
  } else {
    Index(text, position);
  }
}

template <class Item>
void ProfileText::NamedList<Item>::Erase(const ProfileText& text, std::size_t position) {
  items_.erase(items_.begin() + std::ptrdiff_t(position));
  Reindex(text);
}

ProfileText::ProfileText() : ProfileText(std::string()) {}

ProfileText::ProfileText(std::string bytes) : text_(std::move(bytes)) {
  Parse();
}

// part lies in text_.
ProfileText::Span ProfileText::Locate(std::string_view part) const {
  return {std::uint32_t(part.data() - text_.data()), std::uint32_t(part.size())};
}

ProfileText::Name ProfileText::MakeName(Span span) const {
  return {span, Hash(View(span))};
}

ProfileText::Span ProfileText::Append(std::string_view added) {
  const Span span = {std::uint32_t(text_.size()), std::uint32_t(added.size())};
  text_ += added;
  return span;
}

void ProfileText::Parse() {
  Section untitled;
  untitled.name = MakeName({0, 0});
  sections_.Insert(*this, 0, untitled);

  std::string_view rest = text_;
  byteOrderMark_ = rest.starts_with(kByteOrderMark);
  if (byteOrderMark_) rest.remove_prefix(kByteOrderMark.size());
  while (!rest.empty()) {
    const std::size_t feed = std::min(rest.find('\n'), rest.size());
    ParseLines(rest.substr(0, feed));
    rest.remove_prefix(std::min(feed + 1, rest.size()));
  }
}

// What stands before a line feed: one line, or several that carriage returns end.
void ProfileText::ParseLines(std::string_view lines) {
  for (;;) {
    const std::size_t end = lines.find('\r');
    ParseLine(lines.substr(0, end));
    if (end == std::string_view::npos || end + 1 == lines.size()) return;
    lines.remove_prefix(end + 1);
  }
}

void ProfileText::ParseLine(std::string_view line) {
  line = Trim(line.substr(0, line.find('\0')));
  if (line.starts_with('[')) {
    if (const std::size_t end = line.rfind(']'); end != std::string_view::npos) {
      Section section;
      section.name = MakeName(Locate(Trim(line.substr(1, end - 1))));
      sections_.Insert(*this, sections_.Items().size(), section);
      return;
    }
  }
  Entry entry;
  const std::size_t equals = line.find('=');
  entry.hasValue = equals != std::string_view::npos;
  entry.name = MakeName(Locate(TrimRight(line.substr(0, equals))));
  if (entry.hasValue) entry.value = Locate(TrimLeft(line.substr(equals + 1)));
  auto& entries = sections_.At(sections_.Items().size() - 1).entries;
  entries.Insert(*this, entries.Items().size(), entry);
}

std::optional<std::string_view> ProfileText::Find(std::string_view section,
                                                  std::string_view key) const {
  const std::size_t place = sections_.Find(*this, Trim(section));
  if (place == kNone) return std::nullopt;
  const auto& entries = sections_.Items()[place].entries;
  const std::size_t found = entries.Find(*this, Trim(key));
  if (found == kNone || !entries.Items()[found].hasValue) return std::nullopt;
  return Unquote(View(entries.Items()[found].value));
}

std::string_view ProfileText::Unquote(std::string_view text) {
  const bool quoted = text.size() >= 2 && (text.front() == '"' || text.front() == '\'') &&
                      text.front() == text.back();
  return quoted ? text.substr(1, text.size() - 2) : text;
}

std::string_view ProfileText::CleanFallback(std::string_view text) {
  return Unquote(text.substr(0, text.find_last_not_of(' ') + 1));
}

std::vector<std::string_view> ProfileText::GetSections() const {
  std::vector<std::string_view> names;
  for (const Section& section : sections_.Items()) {
    if (section.name.span.length != 0) names.push_back(View(section.name.span));
  }
  return names;
}

std::vector<std::string_view> ProfileText::GetKeys(std::string_view section) const {
  std::vector<std::string_view> names;
  const std::size_t place = sections_.Find(*this, section);
  if (place == kNone) return names;
  for (const Entry& entry : sections_.Items()[place].entries.Items()) {
    const std::string_view name = View(entry.name.span);
    if (entry.hasValue && !name.starts_with(';')) names.push_back(name);
  }
  return names;
}

bool ProfileText::Apply(const ProfileEdit& edit) {
  Normalize();
  if (!edit.key) return RemoveSection(edit.section);
  return edit.value ? Set(edit) : RemoveKey(edit);
}

void ProfileText::Normalize() {
  if (irregular_) *this = ProfileText(Serialize());
}

bool ProfileText::Set(const ProfileEdit& edit) {
  const std::string_view sectionName = TrimLeft(edit.section);
  const std::string_view key = TrimLeft(*edit.key);
  const std::string_view value = TrimLeft(*edit.value);

  std::size_t place = sections_.Find(*this, TrimRight(sectionName));
  const bool newSection = place == kNone;
  if (newSection) {
    Section section;
    section.name = MakeName(Append(sectionName));
    place = sections_.Items().size();
    sections_.Insert(*this, place, section);
  }
  auto& entries = sections_.At(place).entries;
  std::size_t found = entries.Find(*this, TrimRight(key));
  if (found == kNone) {
    found = entries.Items().size();
    while (found > 0 && entries.Items()[found - 1].IsBlank()) found--;
    Entry entry;
    entry.name = MakeName(Append(key));
    entry.hasValue = true;
    entries.Insert(*this, found, entry);
  } else if (entries.Items()[found].hasValue && View(entries.Items()[found].value) == value) {
    return false;
  }
  irregular_ = !IsRegular(sectionName, key, value);
  entries.At(found).hasValue = true;
  entries.At(found).value = Append(value);
  return true;
}

bool ProfileText::RemoveKey(const ProfileEdit& edit) {
  const std::size_t place = sections_.Find(*this, edit.section);
  if (place == kNone) return false;
  auto& entries = sections_.At(place).entries;
  const std::size_t found = entries.Find(*this, *edit.key);
  if (found == kNone) return false;
  entries.Erase(*this, found);
  return true;
}

bool ProfileText::RemoveSection(const std::string& name) {
  const std::size_t place = sections_.Find(*this, name);
  if (place == kNone) return false;
  if (place != 0) {
    sections_.Erase(*this, place);
    return true;
  }
  // The first section stays, so that what has no title always has a place.
  const bool changed = !sections_.At(0).entries.Items().empty();
  sections_.At(0).entries = {};
  return changed;
}

std::string ProfileText::Serialize() const {
  std::string bytes;
  bytes.reserve(text_.size() + text_.size() / 16 + 64);
  for (const Section& section : sections_.Items()) {
    if (section.name.span.length != 0) {
      bytes.append("[").append(View(section.name.span)).append("]\r\n");
    }
    for (const Entry& entry : section.entries.Items()) {
      bytes += View(entry.name.span);
      if (entry.hasValue) bytes.append("=").append(View(entry.value));
      bytes += "\r\n";
    }
  }
  // A first line that begins like a mark, as the removal of those before it leaves it, is read as
  // text only behind one.
  if (byteOrderMark_ || bytes.starts_with(kByteOrderMark)) bytes.insert(0, kByteOrderMark);
  return bytes;
}

}  // namespace vemra::platform
