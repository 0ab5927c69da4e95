#pragma once

#include <cstdint>
#include <string>
#include <utility>

#include "Support/Export.h"

// <windows.h> makes GetObject a macro. It is set aside here, and the class also answers to the
// names that the macro stands for, so that clients may include <windows.h> before or after.
#pragma push_macro("GetObject")
#undef GetObject

namespace vemra {

// A URL taken apart into its parts, resolved against another, and put together again. The rules are
// in docs/urls.md. They are wider than those of the standards: any bytes are taken, nothing but a
// bad port is refused, and only the path is decoded.
//
// A plain value, used by one thread at a time.
class SUPPORT_API TavoURL {
 public:
  TavoURL() = default;
  // What Parse makes of the text, whatever its result.
  explicit TavoURL(std::string text) { Parse(std::move(text)); }

  // Takes text apart, replacing every part. Returns 1, or 0 when there is a port that is not a
  // decimal number from 1 to 65535, digits only; the port is 80 then, and path, params and query
  // are empty.
  int Parse(std::string text);
  // The same for a text that has to lead to an absolute path: one that does not is read once more
  // with "http://" before it, so that "host/folder/page" is a server and a path. Returns 1, or 0
  // when neither reading gives an absolute path.
  int ParseAbsolute(const std::string& text);

  // Resolves a URL without a scheme against the base and normalises its path; one with a scheme is
  // left as it is. One with a server of its own takes the scheme only. Username, password and
  // fragment are never taken.
  void MakeAbsolute(const TavoURL& base);

  // 1 when the path begins with "/", else 0.
  int IsAbsolute() const { return path_.starts_with('/') ? 1 : 0; }

  // Scheme, server, port, path, params and query as one text. The username, the password and the
  // fragment are left out on purpose, so that the text can be shown and sent; the path stays
  // decoded.
  std::string GetURL() const;
  // Path, params and query.
  std::string GetObject() const;
  std::string GetObjectA() const { return GetObject(); }
  std::string GetObjectW() const { return GetObject(); }
  // The server, with ":" and the port unless that is 80, whatever the scheme.
  std::string GetServerNameWithPort() const;

  // Replaces each "%" and two hexadecimal digits by the byte of that value, from 1 to 255. What was
  // decoded is not decoded again; "%00" and a "%" before anything else stay.
  static void CleanPath(std::string& path);

  const std::string& GetScheme() const { return scheme_; }  // in lower case
  const std::string& GetServer() const { return server_; }
  std::uint16_t GetPort() const { return port_; }
  const std::string& GetPath() const { return path_; }  // decoded
  const std::string& GetParams() const { return params_; }
  const std::string& GetQuery() const { return query_; }
  const std::string& GetFragment() const { return fragment_; }
  const std::string& GetUsername() const { return username_; }
  const std::string& GetPassword() const { return password_; }
  void SetUsername(const std::string& username) { username_ = username; }
  void SetPassword(const std::string& password) { password_ = password; }

 private:
  bool TakeScheme(std::string& rest);
  int TakeServer(std::string& rest);
  void TakePathFrom(const TavoURL& base);

  static constexpr std::uint16_t kDefaultPort = 80;

  std::string scheme_;
  std::string server_;
  std::string path_;
  std::string query_;
  std::string params_;
  std::string fragment_;
  std::uint16_t port_ = kDefaultPort;
  std::string username_;
  std::string password_;
};

}  // namespace vemra

#pragma pop_macro("GetObject")
