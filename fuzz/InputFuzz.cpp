#include <algorithm>
#include <string>

#include "Support/foundation/Ascii.h"
#include "Support/text/Input.h"
#include "fuzz/FuzzInput.h"

namespace vemra::fuzz {
namespace {

std::string Lower(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(),
                 [](unsigned char c) { return static_cast<char>(ToAsciiLower(c)); });
  return text;
}

// Words and the white space between them are the text.
void CheckWords(const std::string& text) {
  TavoInput input;
  input.SetString(text);
  std::string again;
  while (!input.AtEOF()) {
    input.EatWhiteSpace();
    again += input.GetWhiteSpaceCut();
    const std::string first = input.GetFirstWord();
    const std::string word = input.CutWord();
    Check(word == first, "looking at a word does not change it");
    Check(!word.empty() || input.AtEOF(), "every step takes something");
    again += word + input.GetWhiteSpaceCut();
  }
  Check(again == text, "words and white space are the text");
}

// The given text and the expanded one, each told plainly, for what reaches across the seam.
void CheckUpTo(const std::string& given, const std::string& expanded, char terminator) {
  for (const bool consume : {false, true}) {
    TavoInput input;
    input.SetString(given);
    input.AddExpandedString(expanded);
    const std::string whole = expanded + given;
    const std::size_t end = std::min(whole.find(terminator), whole.size());
    Check(input.GetUpTo(terminator, consume ? 1 : 0) == whole.substr(0, end), "up to a character");
    std::string rest;
    while (!input.AtEOF()) {
      rest += input.GetFirstChar();
      input.MoveOn(1);
    }
    Check(rest == whole.substr(std::min(end + (consume ? 1 : 0), whole.size())), "what is left");
  }
}

// Any calls in any order end, and take what they hand out.
void Walk(TavoInput& input, std::string_view steps) {
  std::string text;
  for (const char step : steps) {
    const auto number = static_cast<unsigned char>(step);
    switch (number % 8) {
      case 0:
        input.EatWhiteSpace();
        break;
      case 1:
        text = input.CutWord();
        break;
      case 2:
        text = input.GetUpTo(std::string("ab").substr(0, number / 8 % 3), number / 64);
        break;
      case 3:
        input.MoveOn(number / 8);
        break;
      case 4:
        if (input.GetQuotedStringOrWord(text, number / 8 % 2) != 0 && number / 8 % 2 != 0)
          Check(text.size() >= 2 && text.front() == text.back(), "a quoted string");
        break;
      case 5:
        input.AddExpandedString(text.substr(0, 9) + "'x y");
        break;
      case 6:
        input.SetLowerCase(number / 8 % 2);
        break;
      default:
        text = input.GetContext(number / 8);
        Check(text.size() <= std::max(number / 8U, 3U), "a context within its limit");
    }
  }
}

void Run(std::string_view bytes) {
  if (bytes.size() < 2) return;
  const char terminator = bytes[0];
  const std::size_t cut = static_cast<unsigned char>(bytes[1]);
  const std::string text(bytes.substr(2));
  const std::string expanded = text.substr(0, cut);
  const std::string given = text.substr(std::min(cut, text.size()));
  CheckWords(text);
  CheckUpTo(given, expanded, terminator);
  TavoInput input;
  input.SetString(given);
  input.SetLowerCase(1);
  Check(input.GetUpTo('\0', 0) == Lower(given.substr(0, given.find('\0'))), "lower case");
  input.SetString(given);
  input.AddExpandedString(expanded);
  Walk(input, text);
}

}  // namespace
}  // namespace vemra::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  vemra::fuzz::Run(vemra::fuzz::ExactCopy(data, size).View());
  return 0;
}
