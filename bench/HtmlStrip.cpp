#include "bench/HtmlStrip.h"

#include <strings.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>

namespace vemra::bench {

namespace {

struct NamedCharacter {
  std::string_view name;
  std::uint32_t code;
};
constexpr NamedCharacter kNamed[] = {
    {"amp", '&'},       {"lt", '<'},       {"gt", '>'},       {"quot", '"'},     {"apos", '\''},
    {"nbsp", ' '},      {"copy", 0xA9},    {"reg", 0xAE},     {"mdash", 0x2014}, {"ndash", 0x2013},
    {"hellip", 0x2026}, {"rarr", 0x2192},  {"laquo", 0xAB},   {"raquo", 0xBB},   {"sect", 0xA7},
    {"middot", 0xB7},   {"times", 0xD7},   {"le", 0x2264},    {"ge", 0x2265},    {"lsquo", 0x2018},
    {"rsquo", 0x2019},  {"ldquo", 0x201C}, {"rdquo", 0x201D}, {"bull", 0x2022},  {"eacute", 0xE9},
};
constexpr std::string_view kBlocks[] = {
    "p",  "div", "br", "li", "ul", "ol", "dl", "dt",  "dd",    "tr",    "td",      "th",
    "h1", "h2",  "h3", "h4", "h5", "h6", "hr", "pre", "table", "title", "section", "body"};

bool SameName(std::string_view a, std::string_view b) {
  return a.size() == b.size() && strncasecmp(a.data(), b.data(), a.size()) == 0;
}

void AppendUtf8(std::string& out, std::uint32_t c) {
  if (c < 0x80) {
    out += char(c);
  } else if (c < 0x800) {
    out += {char(0xC0 | c >> 6), char(0x80 | (c & 63))};
  } else if (c < 0x10000) {
    out += {char(0xE0 | c >> 12), char(0x80 | (c >> 6 & 63)), char(0x80 | (c & 63))};
  } else {
    out += {char(0xF0 | c >> 18), char(0x80 | (c >> 12 & 63)), char(0x80 | (c >> 6 & 63)),
            char(0x80 | (c & 63))};
  }
}

// The code of the reference between '&' and ';', 0 when it is none.
std::uint32_t CodeOf(std::string_view name) {
  if (name.size() > 1 && name[0] == '#') {
    const bool hex = (name[1] | 32) == 'x';
    name.remove_prefix(hex ? 2 : 1);
    std::uint32_t code = 0;
    auto [end, error] =
        std::from_chars(name.data(), name.data() + name.size(), code, hex ? 16 : 10);
    return error == std::errc() && end == name.data() + name.size() && code < 0x110000 ? code : 0;
  }
  for (const NamedCharacter& known : kNamed) {
    if (known.name == name) return known.code;
  }
  return 0;
}

class Stripper {
 public:
  Stripper(std::string_view page, StrippedPage& out) : rest_(page), out_(out) {}

  void Run() {
    while (!rest_.empty()) {
      Text(rest_.substr(0, rest_.find('<')));
      if (!rest_.empty()) Markup();
    }
  }

 private:
  void Text(std::string_view text) {
    std::string& target = inTitle_ ? out_.title : out_.body;
    for (std::size_t i = 0; i < text.size(); ++i) {
      if (text[i] == '&') {
        const std::size_t end = text.substr(i, 10).find(';');
        if (end != std::string_view::npos) {
          if (const std::uint32_t code = CodeOf(text.substr(i + 1, end - 1))) {
            AppendUtf8(target, code);
            i += end;
            continue;
          }
        }
      }
      target += text[i];
    }
    rest_.remove_prefix(text.size());
  }

  void Markup() {
    if (rest_.starts_with("<!--")) return SkipPast("-->");
    const bool closing = rest_.starts_with("</");
    const std::size_t start = closing ? 2 : 1;
    std::size_t end = start;
    while (end < rest_.size() && std::isalnum(static_cast<unsigned char>(rest_[end]))) ++end;
    const std::string_view name = rest_.substr(start, end - start);
    SkipPast(">");
    if (SameName(name, "title")) inTitle_ = !closing;
    if (!closing && SameName(name, "script")) return SkipPast("</script>");
    if (!closing && SameName(name, "style")) return SkipPast("</style>");
    if (std::any_of(std::begin(kBlocks), std::end(kBlocks),
                    [&](std::string_view block) { return SameName(block, name); })) {
      out_.body += '\n';
    }
  }

  void SkipPast(std::string_view end) {
    const std::size_t at = rest_.find(end);
    rest_.remove_prefix(at == std::string_view::npos ? rest_.size() : at + end.size());
  }

  std::string_view rest_;
  StrippedPage& out_;
  bool inTitle_ = false;
};

}  // namespace

void StripHtml(std::string_view page, StrippedPage& out) {
  out.title.clear();
  out.body.clear();
  Stripper(page, out).Run();
}

}  // namespace vemra::bench
