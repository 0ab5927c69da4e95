#include "programs/commands/RegistryCommand.h"

#include <CLI/CLI.hpp>
#include <charconv>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <nlohmann/json.hpp>
#include <ostream>

#include "Support/foundation/Registry.h"
#include "programs/commands/CommandError.h"
#include "programs/commands/ExitCode.h"
#include "programs/commands/RegistryTransfer.h"

namespace vemra::commands {
namespace {

namespace fs = std::filesystem;
using Json = nlohmann::ordered_json;

constexpr std::uintmax_t kMaxFile = std::uintmax_t{64} << 20;  // bytes of an import

const char* TypeName(RegistryType type) {
  switch (type) {
    case RegistryType::kString:
      return "string";
    case RegistryType::kNumber:
      return "number";
    default:
      return "binary";
  }
}

std::uint32_t NumberOf(const std::string& data) {
  std::uint32_t number = 0;
  for (std::size_t i = 0; i < data.size() && i < sizeof number; i++)
    number |= std::uint32_t{static_cast<unsigned char>(data[i])} << 8 * i;
  return number;
}

// What people read of a value.
std::string DataText(const RegistryValue& value) {
  switch (value.type) {
    case RegistryType::kString:
      return value.data.substr(0, value.data.find('\0'));
    case RegistryType::kNumber:
      return std::to_string(NumberOf(value.data));
    default:
      return FormatHexBytes(value.data);
  }
}

std::uint32_t ParseNumber(const std::string& text) {
  const bool isHex = text.starts_with("0x") || text.starts_with("0X");
  const char* const begin = text.data() + (isHex ? 2 : 0);
  const char* const end = text.data() + text.size();
  std::uint32_t number = 0;
  const auto read = std::from_chars(begin, end, number, isHex ? 16 : 10);
  if (read.ec != std::errc() || read.ptr != end)
    throw CommandError(text + ": a number is from 0 to 4294967295, or 0x and hexadecimal digits");
  return number;
}

// Pairs of hexadecimal digits; commas and blanks may stand between them.
std::string ParseBytes(const std::string& text) {
  std::string bytes;
  for (std::size_t at = 0; at < text.size();) {
    if (text[at] == ',' || text[at] == ' ') {
      at++;
      continue;
    }
    unsigned byte = 0;
    const char* const begin = text.data() + at;
    const char* const end = begin + std::min<std::size_t>(2, text.size() - at);
    const auto read = std::from_chars(begin, end, byte, 16);
    if (read.ptr != begin + 2) throw CommandError(text + ": bytes are pairs of hexadecimal digits");
    bytes += char(byte);
    at += 2;
  }
  return bytes;
}

int SetValue(const RegistrySetOptions& options) {
  if (options.type == "number")
    return SetTavoValue(options.key, options.name, ParseNumber(options.value));
  if (options.type == "string") return SetTavoValue(options.key, options.name, options.value);
  const std::string bytes = ParseBytes(options.value);
  return SetTavoValue(options.key, options.name, bytes.data(), std::uint32_t(bytes.size()));
}

Json JsonOf(const RegistryChange& change) {
  Json values = Json::array();
  for (const RegistryValueChange& item : change.values) {
    const RegistryValue& value = item.value;
    Json data = DataText(value);
    if (value.type == RegistryType::kNumber) data = NumberOf(value.data);
    values.push_back(
        {{"name", value.name}, {"type", TypeName(value.type)}, {"data", std::move(data)}});
  }
  return {{"key", change.key}, {"values", std::move(values)}};
}

void PrintKey(const RegistryChange& change, Console& console) {
  console.out << (change.key.empty() ? "(root)" : change.key) << '\n';
  for (const RegistryValueChange& item : change.values) {
    const std::string& name = item.value.name;
    console.out << "  " << (name.empty() ? "(default)" : name) << " = " << DataText(item.value);
    if (item.value.type != RegistryType::kString)
      console.out << "  (" << TypeName(item.value.type) << ')';
    console.out << '\n';
  }
}

bool IsKey(const std::string& key) {
  return GetTavoKey(key, RegistryAccess::kRead) != nullptr;
}

int NoSuchKey(const std::string& key, Console& console) {
  console.err << "vemra: there is no key " << RegistryPlace(key) << '\n';
  return kNothingFound;
}

int NoSuchValue(const std::string& key, const std::string& name, Console& console) {
  console.err << "vemra: there is no value \"" << name << "\" of " << RegistryPlace(key) << '\n';
  return kNothingFound;
}

std::string ReadWholeFile(const std::string& file) {
  std::error_code error;
  const std::uintmax_t size = fs::file_size(file, error);
  std::ifstream stream(file, std::ios::binary);
  if (error || !stream) throw CommandError(file + ": cannot be read");
  if (size > kMaxFile) throw CommandError(file + ": is too large for a registry file");
  return {std::istreambuf_iterator<char>(stream), {}};
}

// One subcommand whose options live as long as it.
template <class Options, class Run>
CLI::App* AddCommand(CLI::App& parent, const char* name, const char* help,
                     const std::shared_ptr<Options>& options, Run run, Console& console,
                     int& exitCode) {
  CLI::App* command = parent.add_subcommand(name, help);
  command->callback([options, run, &console, &exitCode] { exitCode = run(*options, console); });
  return command;
}

}  // namespace

int RunRegistryGet(const RegistryGetOptions& options, Console& console) {
  const auto key = GetTavoKey(options.key, RegistryAccess::kRead);
  if (!key) return NoSuchKey(options.key, console);
  RegistryValue value;
  if (key->GetValue(options.name, value) == 0)
    return NoSuchValue(options.key, options.name, console);
  console.out << DataText(value) << '\n';
  return kDone;
}

int RunRegistrySet(const RegistrySetOptions& options, Console& console) {
  static_cast<void>(console);
  if (SetValue(options) == 0) {
    throw CommandError("the value \"" + options.name + "\" of " + RegistryPlace(options.key) +
                       " cannot be written");
  }
  return kDone;
}

int RunRegistryList(const RegistryListOptions& options, Console& console) {
  if (!IsKey(options.key)) return NoSuchKey(options.key, console);
  Json list = Json::array();
  for (const RegistryChange& change : ReadRegistryTree(options.key)) {
    if (options.json) {
      list.push_back(JsonOf(change));
    } else {
      PrintKey(change, console);
    }
  }
  if (options.json) console.out << list.dump(2, ' ', false, Json::error_handler_t::replace) << '\n';
  return kDone;
}

int RunRegistryDelete(const RegistryDeleteOptions& options, Console& console) {
  const auto key = GetTavoKey(options.key, RegistryAccess::kReadWrite);
  if (!key) return NoSuchKey(options.key, console);
  if (!options.hasName) {
    std::vector<std::string> children;
    if (!options.all && (key->GetChildren(children) == 0 || !children.empty()))
      throw CommandError(RegistryPlace(options.key) + " has keys below it; --all deletes them too");
    DeleteRegistryTree(options.key);
    return kDone;
  }
  RegistryValue value;
  if (key->GetValue(options.name, value) == 0)
    return NoSuchValue(options.key, options.name, console);
  if (key->DeleteValue(options.name) == 0) {
    throw CommandError("the value \"" + options.name + "\" of " + RegistryPlace(options.key) +
                       " cannot be deleted");
  }
  return kDone;
}

int RunRegistryExport(const RegistryExportOptions& options, Console& console) {
  if (!IsKey(options.key)) return NoSuchKey(options.key, console);
  try {
    const std::string bytes = FormatRegistryFile(
        ReadRegistryTree(options.key), options.ansi ? RegistryForm::kAnsi : RegistryForm::kUnicode);
    std::ofstream stream(options.file, std::ios::binary | std::ios::trunc);
    if (!stream.write(bytes.data(), std::streamsize(bytes.size())).flush())
      throw CommandError(options.file + ": cannot be written");
  } catch (const RegistryFileError& error) {
    throw CommandError(std::string(error.what()) + "; --ansi copies bytes as they are");
  }
  return kDone;
}

int RunRegistryImport(const std::string& file, Console& console) {
  static_cast<void>(console);
  try {
    ApplyRegistryChanges(ParseRegistryFile(ReadWholeFile(file)));
  } catch (const RegistryFileError& error) {
    throw CommandError(file + ':' + std::to_string(error.GetLine()) + ": " + error.what());
  }
  return kDone;
}

void AddRegistryCommand(CLI::App& program, Console& console, int& exitCode) {
  CLI::App* registry =
      program.add_subcommand("registry", "Show and edit the machine-wide settings");
  registry->require_subcommand(1);
  registry->footer("KEY is below SOFTWARE\\TAVO, such as \"Vemra Server\\Databases\".");

  const auto get = std::make_shared<RegistryGetOptions>();
  CLI::App* command =
      AddCommand(*registry, "get", "Print one value", get, RunRegistryGet, console, exitCode);
  command->add_option("KEY", get->key)->required();
  command->add_option("NAME", get->name);

  const auto set = std::make_shared<RegistrySetOptions>();
  command = AddCommand(*registry, "set", "Store one value, making its key where it is missing", set,
                       RunRegistrySet, console, exitCode);
  command->add_option("KEY", set->key)->required();
  command->add_option("NAME", set->name)->required();
  command->add_option("VALUE", set->value)->required();
  command->add_option("--type", set->type, "string (the default), number or binary")
      ->check(CLI::IsMember({"string", "number", "binary"}));

  const auto list = std::make_shared<RegistryListOptions>();
  command = AddCommand(*registry, "list", "Print a key and all below it", list, RunRegistryList,
                       console, exitCode);
  command->add_option("KEY", list->key, "The default: everything");
  command->add_flag("--json", list->json, "Print one JSON document");

  const auto remove = std::make_shared<RegistryDeleteOptions>();
  command = AddCommand(*registry, "delete", "Delete one value or, without NAME, a key", remove,
                       RunRegistryDelete, console, exitCode);
  command->add_option("KEY", remove->key)->required();
  command->add_option_function<std::string>("NAME", [remove](const std::string& name) {
    remove->name = name;
    remove->hasName = true;
  });
  command->add_flag("--all", remove->all, "Delete a key with all below it");

  const auto write = std::make_shared<RegistryExportOptions>();
  command = AddCommand(*registry, "export", "Write a key and all below it to a registry file",
                       write, RunRegistryExport, console, exitCode);
  command->add_option("FILE", write->file)->required();
  command->add_option("KEY", write->key, "The default: everything");
  command->add_flag("--ansi", write->ansi, "Write 8-bit text, byte for byte, instead of UTF-16");

  const auto file = std::make_shared<std::string>();
  command = AddCommand(*registry, "import", "Make the changes of a registry file", file,
                       RunRegistryImport, console, exitCode);
  command->add_option("FILE", *file)->required();
}

}  // namespace vemra::commands
