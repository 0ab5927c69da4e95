#pragma once

#include <optional>
#include <sstream>
#include <string>

namespace vemra::test {

// A client's part of a conversation, whatever calls it is made with. who: each letter is a client
// with a conversation of its own.
class ScriptClient {
 public:
  virtual ~ScriptClient() = default;
  // "*" stands for any.
  virtual bool Connect(char who, const std::string& service, const std::string& topic) = 0;
  virtual bool Disconnect(char who) = 0;
  // verb: request, poke, execute (of the data, with no item and format), watch, unwatch. format:
  // TEXT, SYLK or the name of a registered one. Gives the bytes that came back, nothing when it was
  // refused.
  virtual std::optional<std::string> Transact(char who, const std::string& verb,
                                              const std::string& item, const std::string& format,
                                              const std::string& data) = 0;
  // The advise data that came since it was last asked: "item text", each followed by a semicolon.
  virtual std::string TakeChanges(char who) = 0;

  // A command "WHO VERB ARGUMENTS", and its answer.
  std::string Run(const std::string& command);
};

// The bytes that a transaction brought, to be read: NUL as \0, tab as \t. Blocks may be larger than
// what was stored in them, so zeros at the end are left out.
inline std::string Readable(const std::string& bytes) {
  std::string text;
  for (const char c : bytes.substr(0, bytes.find_last_not_of('\0') + 1)) {
    text += c == '\0' ? "\\0" : c == '\t' ? "\\t" : std::string(1, c);
  }
  return text;
}

inline std::string ScriptClient::Run(const std::string& command) {
  std::istringstream words(command);
  char who = 0;
  std::string verb;
  words >> who >> verb >> std::ws;
  const auto said = [](bool done) { return std::string(done ? "done" : "refused"); };
  if (verb == "disconnect") return said(Disconnect(who));
  if (verb == "changes") return '{' + TakeChanges(who) + '}';
  std::string a;
  std::string b;
  std::string data;
  if (verb != "execute") words >> a >> b >> std::ws;
  std::getline(words, data);
  if (verb == "connect") return said(Connect(who, a, b));
  const auto answer = Transact(who, verb, a, b, data);
  return answer && verb == "request" ? '[' + Readable(*answer) + ']' : said(answer.has_value());
}

// Runs the commands of a script, its lines "> WHO COMMAND", and returns the script with the answers
// that came: it is what was given when they are as expected.
inline std::string RunScript(const std::string& script, ScriptClient& client) {
  std::istringstream lines(script);
  std::string transcript;
  for (std::string line; std::getline(lines, line);) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    if (line.starts_with("  ")) continue;
    transcript += line + '\n';
    if (line.starts_with("> ")) transcript += "  " + client.Run(line.substr(2)) + '\n';
  }
  return transcript;
}

}  // namespace vemra::test
