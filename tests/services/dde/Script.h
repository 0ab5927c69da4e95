#pragma once

#include <optional>
#include <sstream>
#include <string>

namespace vemra::test {

// A client's part of a conversation, whatever calls it is made with. who: each letter is a client
// with a conversation of its own. format: TEXT, SYLK
// or the name of a registered one.
class ScriptClient {
 public:
  virtual ~ScriptClient() = default;
  // "*" stands for any.
  virtual bool Connect(char who, const std::string& service, const std::string& topic) = 0;
  virtual bool Disconnect(char who) = 0;
  virtual std::optional<std::string> Request(char who, const std::string& item,
                                             const std::string& format) = 0;
  virtual bool Poke(char who, const std::string& item, const std::string& format,
                    const std::string& text) = 0;
  virtual bool Execute(char who, const std::string& command) = 0;
  virtual bool Watch(char who, const std::string& item, const std::string& format) = 0;
  virtual bool Unwatch(char who, const std::string& item, const std::string& format) = 0;
  // The advise data that came since it was last asked: "item text", each followed by a semicolon.
  virtual std::string TakeChanges(char who) = 0;
};

// The bytes that a transaction brought, to be read: NUL as \0, tab as \t. Blocks may be larger than
// what was stored in them, so zeros at the end are left out.
inline std::string Readable(const std::string& bytes) {
  std::string text;
  const std::size_t end = bytes.find_last_not_of('\0');
  for (std::size_t i = 0; i <= end && end != std::string::npos; ++i) {
    if (bytes[i] == '\0') {
      text += "\\0";
    } else if (bytes[i] == '\t') {
      text += "\\t";
    } else {
      text += bytes[i];
    }
  }
  return text;
}

inline std::string RunCommand(const std::string& line, ScriptClient& client) {
  std::istringstream words(line);
  std::string who;
  std::string verb;
  std::string a;
  std::string b;
  words >> who >> verb >> a >> b;
  std::string rest;
  std::getline(words >> std::ws, rest);
  const auto said = [](bool done) { return std::string(done ? "done" : "refused"); };
  if (verb == "connect") return said(client.Connect(who[0], a, b));
  if (verb == "disconnect") return said(client.Disconnect(who[0]));
  if (verb == "request") {
    const auto data = client.Request(who[0], a, b);
    return data ? '[' + Readable(*data) + ']' : "refused";
  }
  if (verb == "poke") return said(client.Poke(who[0], a, b, rest));
  if (verb == "execute") return said(client.Execute(who[0], b.empty() ? a : a + ' ' + b));
  if (verb == "watch") return said(client.Watch(who[0], a, b));
  if (verb == "unwatch") return said(client.Unwatch(who[0], a, b));
  if (verb == "changes") return '{' + client.TakeChanges(who[0]) + '}';
  return "unknown command";
}

// Runs the commands of a script, its lines "> WHO COMMAND", and returns the script with the answers
// that came: it is what was given when they are as expected.
inline std::string RunScript(const std::string& script, ScriptClient& client) {
  std::istringstream lines(script);
  std::string transcript;
  for (std::string line; std::getline(lines, line);) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    if (line.starts_with("> ")) {
      transcript += line + "\n  " + RunCommand(line.substr(2), client) + '\n';
    } else if (!line.starts_with("  ")) {
      transcript += line + '\n';
    }
  }
  return transcript;
}

}  // namespace vemra::test
