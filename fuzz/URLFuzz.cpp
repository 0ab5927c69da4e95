#include <algorithm>
#include <cctype>
#include <string>
#include <vector>

#include "Support/services/URL.h"
#include "fuzz/FuzzInput.h"

namespace vemra::fuzz {
namespace {

// The rules of a URL, told plainly.
struct PlainURL {
  std::string scheme, server, path, query, params, fragment, username, password;
  unsigned long port = 80;
  bool isGood = true;
};

std::string Before(const std::string& text, const std::string& mark) {
  return text.substr(0, text.find(mark));
}
std::string After(const std::string& text, const std::string& mark) {
  const std::size_t at = text.find(mark);
  return at == std::string::npos ? "" : text.substr(at + mark.size());
}
bool Has(const std::string& text, const std::string& mark) {
  return text.find(mark) != std::string::npos;
}
bool AllOf(const std::string& text, const std::string& set) {
  return text.find_first_not_of(set) == std::string::npos;
}

constexpr char kDigits[] = "0123456789";
constexpr char kHexDigits[] = "0123456789abcdefABCDEF";
constexpr char kSchemeCharacters[] =
    "0123456789+-.abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ";

std::string PlainDecoded(const std::string& path) {
  std::string out;
  for (std::size_t i = 0; i < path.size(); ++i) {
    const std::string code = path.substr(i + 1, 2);
    const bool isCode = path[i] == '%' && code.size() == 2 && AllOf(code, kHexDigits);
    if (isCode && code != "00") {
      out += static_cast<char>(std::stoi(code, nullptr, 16));
      i += 2;
    } else {
      out += path[i];
    }
  }
  return out;
}

bool IsGoodPort(const std::string& text, unsigned long* port) {
  if (text.empty() || !AllOf(text, kDigits)) return false;
  const std::string digits = text.substr(std::min(text.find_first_not_of('0'), text.size()));
  if (digits.empty() || digits.size() > 5 || std::stoul(digits) > 65535) return false;
  *port = std::stoul(digits);
  return true;
}

PlainURL PlainParse(std::string text) {
  PlainURL url;
  url.fragment = After(text, "#");
  text = Before(text, "#");
  const std::string scheme = Before(text, ":");
  if (Has(text, ":") && !scheme.empty() && AllOf(scheme, kSchemeCharacters)) {
    for (const char c : scheme) url.scheme += static_cast<char>(std::tolower(c));
    text = After(text, ":");
  }
  if (text.substr(0, 2) == "//") {
    text = text.substr(2);
    url.server = Before(text, "/");
    text = text.substr(url.server.size());
    if (Has(url.server, "@")) {
      const std::string user = Before(url.server, "@");
      url.username = Before(user, ":");
      url.password = After(user, ":");
      url.server = After(url.server, "@");
    }
    if (Has(url.server, ":")) url.isGood = IsGoodPort(After(url.server, ":"), &url.port);
    url.server = Before(url.server, ":");
  }
  if (!url.isGood) return url;
  url.query = After(text, "?");
  text = Before(text, "?");
  url.params = After(text, ";");
  text = Before(text, ";");
  url.path = PlainDecoded(text.empty() && !url.scheme.empty() ? "/" : text);
  return url;
}

// Repeatedly, the first segment of a name before "..", every "." and every empty one goes.
std::string PlainNormalized(const std::string& path) {
  std::vector<std::string> segments(1);
  for (const char c : path) {
    if (c == '/') {
      segments.emplace_back();
    } else {
      segments.back() += c;
    }
  }
  const std::string last = segments.back();
  std::erase(segments, "");
  std::erase(segments, ".");
  for (std::size_t i = 1; i < segments.size(); ++i) {
    if (segments[i] != ".." || segments[i - 1] == "..") continue;
    segments.erase(segments.begin() + std::ptrdiff_t(i) - 1,
                   segments.begin() + std::ptrdiff_t(i) + 1);
    i = 0;
  }
  std::string out;
  for (const std::string& segment : segments) out += "/" + segment;
  const bool isFolder = last.empty() || last == "." || last == "..";
  return out.empty() || isFolder ? out + "/" : out;
}

PlainURL PlainAbsolute(PlainURL url, const PlainURL& base) {
  if (!url.scheme.empty()) return url;
  url.scheme = base.scheme;
  if (!url.server.empty()) return url;
  url.server = base.server;
  url.port = base.port;
  if (url.path.empty()) {
    url.path = base.path;
    if (url.params.empty()) {
      url.params = base.params;
      if (url.query.empty()) url.query = base.query;
    }
  } else if (url.path[0] != '/' && Has(base.path, "/")) {
    url.path = base.path.substr(0, base.path.rfind('/') + 1) + url.path;
  }
  if (!url.path.empty()) url.path = PlainNormalized(url.path);
  return url;
}

void CheckParts(const TavoURL& url, const PlainURL& plain) {
  Check(url.GetScheme() == plain.scheme, "the scheme");
  Check(url.GetServer() == plain.server, "the server");
  Check(url.GetPort() == plain.port, "the port");
  Check(url.GetPath() == plain.path, "the path");
  Check(url.GetParams() == plain.params, "the params");
  Check(url.GetQuery() == plain.query, "the query");
  Check(url.GetFragment() == plain.fragment, "the fragment");
  Check(url.GetUsername() == plain.username, "the username");
  Check(url.GetPassword() == plain.password, "the password");
}

void CheckWritten(const TavoURL& url, const PlainURL& plain) {
  std::string object = plain.path;
  if (!plain.params.empty()) object += ";" + plain.params;
  if (!plain.query.empty()) object += "?" + plain.query;
  Check(url.GetObject() == object, "the object");
  std::string server = plain.server;
  if (plain.port != 80) server += ":" + std::to_string(plain.port);
  Check(url.GetServerNameWithPort() == server, "the server with its port");
  if (!server.empty()) server = "//" + server;
  const std::string scheme = plain.scheme.empty() ? "" : plain.scheme + ":";
  Check(url.GetURL() == scheme + server + object, "the whole");
}

void CheckBoth(const TavoURL& url, const PlainURL& plain) {
  CheckParts(url, plain);
  CheckWritten(url, plain);
}

bool PlainParseAbsolute(const std::string& text, PlainURL* plain) {
  *plain = PlainParse(text);
  if (plain->isGood && plain->path.substr(0, 1) == "/") return true;
  *plain = PlainParse("http://" + text);
  return plain->isGood && plain->path.substr(0, 1) == "/";
}

// The first line is a URL, the second the base that it is resolved against.
void Run(std::string_view bytes) {
  const std::string lines(bytes);
  const std::string text = Before(lines, "\n");
  const std::string baseText = After(lines, "\n");
  TavoURL url;
  PlainURL plain = PlainParse(text);
  Check((url.Parse(text) == 1) == plain.isGood, "whether the port is good");
  CheckBoth(url, plain);

  const PlainURL plainBase = PlainParse(baseText);
  url.MakeAbsolute(TavoURL(baseText));
  plain = PlainAbsolute(plain, plainBase);
  CheckBoth(url, plain);

  Check((url.ParseAbsolute(text) == 1) == PlainParseAbsolute(text, &plain), "an absolute path");
  CheckBoth(url, plain);
}

}  // namespace
}  // namespace vemra::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  vemra::fuzz::Run(vemra::fuzz::ExactCopy(data, size).View());
  return 0;
}
