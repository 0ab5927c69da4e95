#include <string>

#include "Support/text/Entity.h"
#include "fuzz/FuzzInput.h"

namespace vemra::fuzz {
namespace {

constexpr char kNamed[] = "\"&'<> ";
constexpr const char* kNames[] = {"quot", "amp", "apos", "lt", "gt", "nbsp"};

std::string ReplaceAll(const std::string& text, char from, const std::string& to) {
  std::string out;
  for (const char c : text) out += c == from ? to : std::string(1, c);
  return out;
}

// One character after the other, each only where the text held it at first.
std::string Plain(const std::string& text, bool byNumber) {
  std::string out = text;
  for (int i = 0; i < 6; ++i) {
    if (text.find(kNamed[i]) == std::string::npos) continue;
    const std::string name = byNumber ? "#" + std::to_string(int{kNamed[i]}) : kNames[i];
    out = ReplaceAll(out, kNamed[i], "&" + name + ";");
  }
  return out;
}

void Run(std::string_view bytes) {
  const std::string text(bytes);
  CTavoEntity entity;
  std::string translated = text;
  entity.TranslateAllEntities(translated);
  Check(translated == Plain(text, false), "names");
  translated = text;
  entity.TranslateAllEscEntities(translated);
  Check(translated == Plain(text, true), "numbers");

  const std::string meaning = entity.IsEntity(bytes);
  Check(meaning.size() <= 3, "an entity is a character or the code of one");
  for (const char c : text) {
    const std::string one = entity.TranslateEntity(c);
    Check(one.front() == '&' && one.back() == ';', "the form of an entity");
    const std::string name = one.substr(1, one.size() - 2);
    const bool isNegative = static_cast<signed char>(c) < 0;  // such a number is not read
    if (c != '\0' && !isNegative)
      Check(entity.IsEntity(name) == std::string(1, c), "an entity reads back");
  }
}

}  // namespace
}  // namespace vemra::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  vemra::fuzz::Run(vemra::fuzz::ExactCopy(data, size).View());
  return 0;
}
