#include <algorithm>
#include <cstdio>

#include "programs/registry/RegistryFile.h"
#include "programs/registry/RegistryFileNames.h"
#include "programs/registry/Utf16.h"

namespace vemra {
namespace {

constexpr std::size_t kMaxLine = 78;  // characters before the backslash that continues a line

bool IsControl(char c) {
  return static_cast<unsigned char>(c) < ' ';
}

std::string Quote(std::string_view text) {
  std::string quoted = "\"";
  for (const char c : text) {
    switch (c) {
      case '\\':
      case '"':
        quoted += '\\';
        quoted += c;
        break;
      case '\n':
        quoted += "\\n";
        break;
      case '\r':
        quoted += "\\r";
        break;
      default:
        quoted += c;
    }
  }
  return quoted + '"';
}

// PREFIX and the bytes, broken into lines as the editor breaks them.
std::string WrapBytes(const std::string& prefix, std::string_view bytes) {
  std::string text = prefix;
  std::size_t column = prefix.size();
  for (std::size_t i = 0; i < bytes.size(); i++) {
    const bool isLast = i + 1 == bytes.size();
    if (column + (isLast ? 2 : 3) > kMaxLine && i > 0) {
      text += "\\\r\n  ";
      column = 2;
    }
    text += FormatHexBytes(bytes.substr(i, 1));
    if (!isLast) text += ',';
    column += 3;
  }
  return text;
}

// Whether quotes can hold the string: it ends with its only NUL, and every editor reads it alike.
bool IsPlain(const RegistryValue& value) {
  return value.type == RegistryType::kString && !value.data.empty() && value.data.back() == '\0' &&
         std::none_of(value.data.begin(), value.data.end() - 1, IsControl);
}

bool IsNumber(const RegistryValue& value) {
  return value.type == RegistryType::kNumber && value.data.size() == 4;
}

std::string FormatNumber(const RegistryValue& value) {
  std::string digits;
  for (auto byte = value.data.rbegin(); byte != value.data.rend(); ++byte)
    digits += FormatHexBytes({&*byte, 1});
  return "dword:" + digits;
}

std::string HexPrefix(RegistryType type) {
  if (type == RegistryType::kBinary) return "hex:";
  char prefix[16];
  std::snprintf(prefix, sizeof prefix, "hex(%x):", static_cast<unsigned>(type));
  return prefix;
}

std::string ToUtf16(const std::string& text, const std::string& what) {
  if (auto bytes = Utf8ToUtf16(text)) return *std::move(bytes);
  throw RegistryFileError(0, what + " is no UTF-8, which only the ANSI form can say");
}

class Formatter {
 public:
  explicit Formatter(RegistryForm form) : form_(form) {}

  std::string Format(const std::vector<RegistryChange>& changes) const {
    const bool isUnicode = form_ == RegistryForm::kUnicode;
    std::string bytes(isUnicode ? kUtf16Mark : "");
    bytes += Encode(std::string(isUnicode ? kUnicodeHeader : kAnsiHeader) + "\r\n", "");
    for (const RegistryChange& change : changes) AppendKey(change, bytes);
    return bytes;
  }

 private:
  std::string Encode(const std::string& text, const std::string& what) const {
    return form_ == RegistryForm::kUnicode ? ToUtf16(text, what) : text;
  }

  void AppendKey(const RegistryChange& change, std::string& bytes) const {
    if (std::any_of(change.key.begin(), change.key.end(), IsControl))
      throw RegistryFileError(0, "the name of the key " + change.key + " holds a line end");
    std::string name = RegistryRootName();
    if (!change.key.empty()) name += '\\' + change.key;
    bytes += Encode("\r\n[" + std::string(change.isDeleted ? "-" : "") + name + "]\r\n",
                    "the name of the key " + name);
    for (const RegistryValueChange& item : change.values) {
      const std::string what = "the value \"" + item.value.name + "\" of the key " + name;
      bytes += Encode(FormatItem(item, what) + "\r\n", what);
    }
  }

  std::string FormatItem(const RegistryValueChange& item, const std::string& what) const {
    const RegistryValue& value = item.value;
    const std::string title = (value.name.empty() ? "@" : Quote(value.name)) + '=';
    if (item.isDeleted) return title + '-';
    if (IsPlain(value)) return title + Quote({value.data.data(), value.data.size() - 1});
    if (IsNumber(value)) return title + FormatNumber(value);
    return WrapBytes(title + HexPrefix(value.type),
                     HoldsText(value.type) ? Encode(value.data, what) : value.data);
  }

  RegistryForm form_;
};

}  // namespace

std::string FormatHexBytes(std::string_view bytes) {
  static constexpr char kDigits[] = "0123456789abcdef";
  std::string text;
  text.reserve(3 * bytes.size());
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    if (!text.empty()) text += ',';
    text += kDigits[byte >> 4];
    text += kDigits[byte & 0xf];
  }
  return text;
}

std::string FormatRegistryFile(const std::vector<RegistryChange>& changes, RegistryForm form) {
  return Formatter(form).Format(changes);
}

}  // namespace vemra
