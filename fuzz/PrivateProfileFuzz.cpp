#include <optional>
#include <string>
#include <vector>

#include "Support/platform/PrivateProfile.h"
#include "fuzz/FuzzInput.h"

namespace vemra::fuzz {
namespace {

using platform::ProfileEdit;
using platform::ProfileText;

// The input is a section, a key and a value, each up to an FF byte, and after them the profile.
std::string TakePart(std::string_view& bytes) {
  const std::size_t end = std::min(bytes.find('\xFF'), bytes.size());
  std::string part(bytes.substr(0, end));
  bytes.remove_prefix(std::min(end + 1, bytes.size()));
  return part;
}

std::vector<std::string> Copy(const std::vector<std::string_view>& names) {
  return {names.begin(), names.end()};
}

void CheckStable(const ProfileText& text) {
  const std::string bytes = text.Serialize();
  const ProfileText again(bytes);
  Check(again.Serialize() == bytes, "what is written reads back alike");
  Check(Copy(again.GetSections()) == Copy(text.GetSections()), "the sections read back");
}

// Whether a text comes back from a profile as it was given.
bool IsPlain(const std::string& text) {
  return !text.empty() && text.front() > ' ' && text.back() > ' ' &&
         text.find_first_of(std::string("\r\n\0[]=;'\"\x1a", 10)) == std::string::npos;
}

void CheckEdits(ProfileText text, const std::string& section, const std::string& key,
                const std::string& value) {
  text.Apply({section, key, value});
  text.Normalize();
  CheckStable(text);
  if (IsPlain(section) && IsPlain(key) && IsPlain(value)) {
    Check(text.Find(section, key) == std::optional<std::string_view>(value), "what was set");
    Check(!text.Apply({section, key, value}), "setting it again changes nothing");
  }
  const std::size_t before = text.Serialize().size();
  if (text.Apply({section, key, std::nullopt}))
    Check(text.Serialize().size() < before, "a removed key leaves the text");
  CheckStable(text);
  text.Apply({section, std::nullopt, std::nullopt});
  CheckStable(text);
}

// The call with a buffer of every small size answers with a part of the whole answer.
void CheckQueries(const std::string& section, const std::string& key, std::string_view profile) {
  const InputFile file(profile);
  const std::string whole =
      platform::ReadProfileString(section, key, "", platform::kNoLimit, file.Path());
  for (std::uint32_t size = 1; size <= 8; ++size) {
    const std::unique_ptr<char[]> buffer(new char[size]);
    const std::uint32_t length =
        platform::QueryProfile(section.c_str(), key.c_str(), "", buffer.get(), size, file.Path());
    Check(length < size && buffer[length] == '\0', "an answer fits");
    Check(whole.compare(0, length, buffer.get(), length) == 0, "a cut answer");
    platform::QueryProfile(nullptr, nullptr, "", buffer.get(), size, file.Path());
    platform::QueryProfile(section.c_str(), nullptr, "", buffer.get(), size, file.Path());
  }
}

void Run(std::string_view bytes) {
  const std::string section = TakePart(bytes);
  const std::string key = TakePart(bytes);
  const std::string value = TakePart(bytes);
  const ProfileText text{std::string(bytes)};
  CheckStable(text);
  CheckEdits(text, section, key, value);
  CheckQueries(section, key, bytes);
}

}  // namespace
}  // namespace vemra::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  vemra::fuzz::Run(vemra::fuzz::ExactCopy(data, size).View());
  return 0;
}
