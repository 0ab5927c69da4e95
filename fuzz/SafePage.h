#pragma once

#include <algorithm>
#include <iterator>
#include <string_view>
#include <vector>

#include "fuzz/FuzzInput.h"

// Reads a page that shows a document, strictly, as it is written: any tag that this does not know
// is a finding.
namespace vemra::fuzz {

class SafePage {
 public:
  explicit SafePage(std::string_view page) : rest_(page) {}

  void Check() {
    while (!rest_.empty()) {
      const std::size_t tag = rest_.find_first_of("<>");
      if (tag == std::string_view::npos) break;
      fuzz::Check(rest_[tag] == '<', "a > stands outside of tags");
      rest_.remove_prefix(tag + 1);
      Take("/") ? TakeEndTag() : TakeStartTag();
    }
    fuzz::Check(open_.empty(), "every tag is closed");
  }

 private:
  bool Take(std::string_view text) {
    if (!rest_.starts_with(text)) return false;
    rest_.remove_prefix(text.size());
    return true;
  }

  std::string_view TakeUpTo(std::string_view ends) {
    const std::string_view text = rest_.substr(0, rest_.find_first_of(ends));
    rest_.remove_prefix(text.size());
    return text;
  }

  void TakeEndTag() {
    const std::string_view name = TakeUpTo("> ");
    fuzz::Check(Take(">") && !open_.empty() && open_.back() == name, "tags are well nested");
    open_.pop_back();
  }

  void TakeStartTag() {
    const std::string_view name = TakeUpTo("> ");
    constexpr std::string_view kNever[] = {"script", "style", "iframe", "object", "embed", "img",
                                           "link",   "meta",  "base",   "form",   "input", "svg"};
    fuzz::Check(std::find(std::begin(kNever), std::end(kNever), name) == std::end(kNever),
                "nothing that runs or loads");
    while (Take(" ")) TakeAttribute();
    fuzz::Check(Take(">"), "the tag ends");
    constexpr std::string_view kVoid[] = {"br", "hr", "wbr", "col"};
    const bool isVoid = std::find(std::begin(kVoid), std::end(kVoid), name) != std::end(kVoid);
    fuzz::Check(name != "a" || std::find(open_.begin(), open_.end(), "a") == open_.end(),
                "links do not nest");
    if (!isVoid) open_.push_back(name);
  }

  void TakeAttribute() {
    const std::string_view name = TakeUpTo("= >");
    fuzz::Check(!name.starts_with("on") && name != "style" && name != "src", "no live attribute");
    fuzz::Check(Take("=\""), "values are quoted");
    const std::string_view value = TakeUpTo("\"<>");
    fuzz::Check(Take("\""), "quotes are closed");
    if (name == "href") CheckLink(value);
    if (name == "id") fuzz::Check(value.starts_with("doc-") || value.starts_with("hit"), "names");
  }

  static void CheckLink(std::string_view value) {
    const std::string_view scheme = value.substr(0, value.find_first_of("/?#"));
    if (scheme.find(':') == std::string_view::npos) return;
    const auto begins = [scheme](std::string_view wanted) {
      return scheme.size() > wanted.size() && scheme[wanted.size()] == ':' &&
             std::equal(wanted.begin(), wanted.end(), scheme.begin(),
                        [](char a, char b) { return a == (b | 0x20); });
    };
    fuzz::Check(begins("http") || begins("https") || begins("ftp") || begins("mailto"),
                "links only lead somewhere");
  }

  std::string_view rest_;
  std::vector<std::string_view> open_;
};

}  // namespace vemra::fuzz
