#include "Support/services/URL.h"

#include <algorithm>
#include <charconv>
#include <string_view>
#include <system_error>
#include <vector>

#include "Support/foundation/Ascii.h"

namespace vemra {

namespace {

bool IsSchemeCharacter(unsigned char c) {
  return IsAsciiAlpha(c) || IsAsciiDigit(c) || c == '+' || c == '-' || c == '.';
}

// Cuts text before the first mark and returns what followed it, nothing when there is none.
std::string TakeAfter(std::string& text, char mark) {
  const std::size_t at = text.find(mark);
  if (at == std::string::npos) return {};
  std::string after(text, at + 1);
  text.resize(at);
  return after;
}

bool ReadPort(std::string_view text, std::uint16_t* port) {
  std::uint16_t number = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number);
  if (error != std::errc{} || stop != end || number == 0) return false;
  *port = number;
  return true;
}

int HexDigit(unsigned char c) {
  if (IsAsciiDigit(c)) return c - '0';
  const unsigned char lower = ToAsciiLower(c);
  return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

// The byte that the two characters at digits stand for; 0 for none.
int DecodedByte(const char* digits) {
  const int high = HexDigit(static_cast<unsigned char>(digits[0]));
  const int low = HexDigit(static_cast<unsigned char>(digits[1]));
  return high < 0 || low < 0 ? 0 : high * 16 + low;
}

std::string NormalizedPath(std::string_view path) {
  std::vector<std::string_view> kept;
  bool endsInFolder = false;
  for (std::size_t at = 0; at <= path.size();) {
    const std::size_t end = std::min(path.find('/', at), path.size());
    const std::string_view segment = path.substr(at, end - at);
    endsInFolder = segment.empty() || segment == "." || segment == "..";
    if (segment == ".." && !kept.empty() && kept.back() != "..") {
      kept.pop_back();
    } else if (segment == ".." || !endsInFolder) {
      kept.push_back(segment);
    }
    at = end + 1;
  }
  std::string normalized;
  normalized.reserve(path.size() + 1);
  for (const std::string_view segment : kept) normalized.append("/").append(segment);
  if (kept.empty() || endsInFolder) normalized += '/';
  return normalized;
}

}  // namespace

int TavoURL::Parse(std::string text) {
  for (std::string* part :
       {&scheme_, &server_, &path_, &query_, &params_, &fragment_, &username_, &password_})
    part->clear();
  port_ = kDefaultPort;
  fragment_ = TakeAfter(text, '#');
  const bool hasScheme = TakeScheme(text);
  if (text.starts_with("//") && TakeServer(text) == 0) return 0;
  query_ = TakeAfter(text, '?');  // first, so that a ";" inside the query stays there
  params_ = TakeAfter(text, ';');
  path_ = text.empty() && hasScheme ? "/" : std::move(text);
  CleanPath(path_);
  return 1;
}

bool TavoURL::TakeScheme(std::string& rest) {
  const auto end = std::find_if_not(rest.begin(), rest.end(), IsSchemeCharacter);
  if (end == rest.begin() || end == rest.end() || *end != ':') return false;
  scheme_.assign(rest.begin(), end);
  for (char& c : scheme_) c = static_cast<char>(ToAsciiLower(static_cast<unsigned char>(c)));
  rest.erase(rest.begin(), end + 1);
  return true;
}

// Returns 0 for a bad port.
int TavoURL::TakeServer(std::string& rest) {
  constexpr std::size_t kMark = 2;  // of "//"
  const std::size_t end = std::min(rest.find('/', kMark), rest.size());
  server_.assign(rest, kMark, end - kMark);
  rest.erase(0, end);
  const std::size_t at = server_.find('@');
  if (at != std::string::npos) {
    username_.assign(server_, 0, at);
    password_ = TakeAfter(username_, ':');
    server_.erase(0, at + 1);
  }
  if (server_.find(':') == std::string::npos) return 1;
  return ReadPort(TakeAfter(server_, ':'), &port_) ? 1 : 0;
}

int TavoURL::ParseAbsolute(const std::string& text) {
  const std::string onServer = "http://" + text;  // taken before Parse: text may be our own part
  if (Parse(text) != 0 && IsAbsolute() != 0) return 1;
  return Parse(onServer) != 0 && IsAbsolute() != 0 ? 1 : 0;
}

void TavoURL::MakeAbsolute(const TavoURL& base) {
  if (!scheme_.empty()) return;
  scheme_ = base.scheme_;
  if (!server_.empty()) return;
  server_ = base.server_;
  port_ = base.port_;
  if (path_.empty()) {
    TakePathFrom(base);
  } else if (IsAbsolute() == 0) {
    path_ = base.path_.substr(0, base.path_.rfind('/') + 1) + path_;
  }
  if (!path_.empty()) path_ = NormalizedPath(path_);
}

// The query belongs to the params that it came with.
void TavoURL::TakePathFrom(const TavoURL& base) {
  path_ = base.path_;
  if (!params_.empty()) return;
  params_ = base.params_;
  if (query_.empty()) query_ = base.query_;
}

std::string TavoURL::GetURL() const {
  std::string url = scheme_;
  if (!url.empty()) url += ':';
  const std::string server = GetServerNameWithPort();
  if (!server.empty()) url.append("//").append(server);
  return url + GetObject();
}

std::string TavoURL::GetObject() const {
  std::string object = path_;
  if (!params_.empty()) object.append(";").append(params_);
  if (!query_.empty()) object.append("?").append(query_);
  return object;
}

std::string TavoURL::GetServerNameWithPort() const {
  return port_ == kDefaultPort ? server_ : server_ + ":" + std::to_string(port_);
}

void TavoURL::CleanPath(std::string& path) {
  std::size_t read = path.find('%');
  if (read == std::string::npos) return;
  std::size_t write = read;
  while (read < path.size()) {
    const char c = path[read];
    const int decoded = c == '%' && path.size() - read > 2 ? DecodedByte(&path[read + 1]) : 0;
    path[write++] = decoded > 0 ? static_cast<char>(decoded) : c;
    read += decoded > 0 ? 3 : 1;
  }
  path.resize(write);
}

}  // namespace vemra
