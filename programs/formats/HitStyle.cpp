#include "programs/formats/HitStyle.h"

#include "programs/formats/Markup.h"

namespace vemra {

void BracketStyle::AppendOpening(int hit, std::string& out) const {
  out += '[';
  out += std::to_string(hit);
  out += ']';
}

void BracketStyle::AppendClosing(int /*hit*/, std::string& /*out*/) const {}

void BracketStyle::AppendText(std::string_view text, std::string& out) const {
  out += text;
}

void BracketStyle::AppendEnd(int /*hits*/, std::string& /*out*/) const {}

void AnsiStyle::AppendOpening(int /*hit*/, std::string& out) const {
  out += "\x1B[1;31m";
}

void AnsiStyle::AppendClosing(int /*hit*/, std::string& out) const {
  out += "\x1B[0m";
}

// Control characters never come this far: parsers make blanks of them.
void AnsiStyle::AppendText(std::string_view text, std::string& out) const {
  out += text;
}

void AnsiStyle::AppendEnd(int /*hits*/, std::string& /*out*/) const {}

void HtmlStyle::AppendOpening(int hit, std::string& out) const {
  out += "<mark id=\"hit" + std::to_string(hit) + "\">";
  if (hit > 1) out += "<a href=\"#hit" + std::to_string(hit - 1) + "\">&lsaquo;</a>";
}

void HtmlStyle::AppendClosing(int hit, std::string& out) const {
  out += "<a href=\"#hit" + std::to_string(hit + 1) + "\">&rsaquo;</a></mark>";
}

void HtmlStyle::AppendText(std::string_view text, std::string& out) const {
  AppendEscaped(text, out);
}

void HtmlStyle::AppendPause(std::string& out) const {
  out += "</mark>";
}

void HtmlStyle::AppendResume(std::string& out) const {
  out += "<mark>";
}

void HtmlStyle::AppendEnd(int hits, std::string& out) const {
  if (hits > 0) out += "<span id=\"hit" + std::to_string(hits + 1) + "\"></span>";
}

}  // namespace vemra
