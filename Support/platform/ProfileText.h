#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vemra::platform {

// One change of a profile: sets a key, removes it (no value), or removes a section (no key).
struct ProfileEdit {
  std::string section;
  std::optional<std::string> key;
  std::optional<std::string> value;
};

// A private-profile file in memory, by the rules of the system's private-profile calls.
//
// Reading: LF, CRLF and CR end a line; a line is cut at a NUL byte. White space (blank, tab, VT, FF
// and 0x1A) around lines, titles, names and values does not count. A title begins with "[" and ends
// at the last "]" of its line; a "[" without "]" is an ordinary line. Every other line is an entry:
// a name and, after the first "=", a value. A line without "=" is a name without a value, found by
// nothing but a write. A comment line is an entry too, whose name begins with ";": it is found
// under that very name, but never listed. What comes before the first title is in the section with
// the empty name. Names compare without regard to ASCII case; of several sections or entries of one
// name only the first is found.
//
// Writing: CRLF ends every line, the white space that does not count is gone, blank lines stay. A
// section with the empty name has no title. A UTF-8 byte order mark stays.
class ProfileText {
 public:
  static constexpr std::size_t kMaxSize = std::size_t{256} << 20;  // bytes; more is not a profile

  ProfileText();
  explicit ProfileText(std::string bytes);

  // The value without one pair of enclosing quotes; valid until the next edit. No value when the
  // key is missing.
  std::optional<std::string_view> Find(std::string_view section, std::string_view key) const;
  // What a caller's default becomes when it stands in for a value: it loses trailing blanks (only
  // the blank itself), and then one pair of enclosing quotes.
  static std::string_view CleanFallback(std::string_view text);
  // Without one pair of enclosing quotes, single or double.
  static std::string_view Unquote(std::string_view text);
  // Names in file order, duplicates included, comments not; keys may be empty, sections not. The
  // section's name is compared as it stands.
  std::vector<std::string_view> GetSections() const;
  std::vector<std::string_view> GetKeys(std::string_view section) const;

  // Returns whether the text changed. A new key goes to the end of its section, before the blank
  // lines there, and a new section to the end. What is removed must be named without blanks
  // around; a section's comments go with it.
  bool Apply(const ProfileEdit& edit);
  // Reads the text again if an edit gave it names or values that read otherwise than they were
  // given (line breaks, blanks at the end). Apply begins with it; call it before reading.
  void Normalize();

  std::string Serialize() const;

 private:
  struct Span {
    std::uint32_t at = 0;  // in text_
    std::uint32_t length = 0;
  };
  struct Name {
    Span span;
    std::uint32_t hash = 0;  // of the name in lower case
  };
  struct Entry {
    Name name;
    Span value;
    bool hasValue = false;

    // A blank line is not to be found under the empty name.
    bool IsBlank() const { return name.span.length == 0 && !hasValue; }
  };

  // A list in file order in which the first item of a name is found at once.
  template <class Item>
  class NamedList {
   public:
    const std::vector<Item>& Items() const { return items_; }
    Item& At(std::size_t position) { return items_[position]; }
    std::size_t Find(const ProfileText& text, std::string_view name) const;
    void Insert(const ProfileText& text, std::size_t position, const Item& item);
    void Erase(const ProfileText& text, std::size_t position);

   private:
    void Index(const ProfileText& text, std::size_t position);
    void Reindex(const ProfileText& text);

    std::vector<Item> items_;
    std::vector<std::uint32_t> slots_;  // position + 1, 0 free; empty while the list is short
  };
  struct Section {
    Name name;
    NamedList<Entry> entries;

    bool IsBlank() const { return false; }
  };

  static constexpr std::size_t kNone = SIZE_MAX;

  std::string_view View(Span span) const { return {text_.data() + span.at, span.length}; }
  Span Locate(std::string_view part) const;
  Name MakeName(Span span) const;
  Span Append(std::string_view added);
  void Parse();
  void ParseLines(std::string_view lines);
  void ParseLine(std::string_view line);
  bool Set(const ProfileEdit& edit);
  bool RemoveKey(const ProfileEdit& edit);
  bool RemoveSection(const std::string& name);

  std::string text_;  // what was read, and after it what edits added
  bool byteOrderMark_ = false;
  bool irregular_ = false;
  NamedList<Section> sections_;  // the first has the empty name
};

}  // namespace vemra::platform
