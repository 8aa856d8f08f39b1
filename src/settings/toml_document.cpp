#include "settings/toml_document.h"

#include <toml++/toml.h>

#include <limits>
#include <sstream>

#include "platform/errors.h"
#include "platform/text.h"
#include "settings/messages.h"

namespace ml::settings {

namespace {

constexpr std::string_view kHexPrefix = "hex:";

std::string Encode(std::string_view bytes) {
  if (platform::IsValidUtf8(bytes) && !bytes.starts_with(kHexPrefix)) return std::string(bytes);
  return std::string(kHexPrefix) + platform::ToHex(bytes);
}

std::optional<std::string> Decode(std::string_view text) {
  if (!text.starts_with(kHexPrefix)) return std::string(text);
  std::string bytes;
  if (!platform::FromHex(text.substr(kHexPrefix.size()), bytes)) return std::nullopt;
  return bytes;
}

toml::table Parse(std::string_view content) {
  try {
    return toml::parse(content);
  } catch (const toml::parse_error& error) {
    throw platform::UserError(LineAndReason(error.source().begin.line, error.description()));
  }
}

}  // namespace

struct TomlDocument::Tree {
  toml::table root;

  const toml::table* Table(std::string_view name) const { return name.empty() ? &root : root[Encode(name)].as_table(); }
  const toml::node* Node(const SettingName& name) const {
    const auto* table = Table(name.table);
    return table == nullptr ? nullptr : table->get(Encode(name.key));
  }
  /// Makes the table, in place of a value that is none.
  toml::table& TableToWrite(std::string_view name) {
    if (name.empty()) return root;
    if (Table(name) == nullptr) root.insert_or_assign(Encode(name), toml::table{});
    return *root[Encode(name)].as_table();
  }
  template <class Value>
  bool Put(const SettingName& name, const Value& value) {
    const auto* node = Node(name);
    if (const auto* held = node == nullptr ? nullptr : node->as<Value>(); held != nullptr && held->get() == value) {
      return false;
    }
    TableToWrite(name.table).insert_or_assign(Encode(name.key), value);
    return true;
  }
};

TomlDocument::TomlDocument() : tree_(std::make_unique<Tree>()) {}
TomlDocument::TomlDocument(std::string_view content) : tree_(std::make_unique<Tree>(Tree{Parse(content)})) {}
TomlDocument::~TomlDocument() = default;

std::optional<int> TomlDocument::Integer(const SettingName& name) const {
  const auto* node = tree_->Node(name);
  const auto* value = node == nullptr ? nullptr : node->as_integer();
  if (value == nullptr || value->get() < std::numeric_limits<int>::min() ||
      value->get() > std::numeric_limits<int>::max()) {
    return std::nullopt;
  }
  return static_cast<int>(value->get());
}

std::optional<std::string> TomlDocument::Text(const SettingName& name) const {
  const auto* node = tree_->Node(name);
  const auto* value = node == nullptr ? nullptr : node->as_string();
  return value == nullptr ? std::nullopt : Decode(value->get());
}

bool TomlDocument::Has(const SettingName& name) const { return tree_->Node(name) != nullptr; }

std::vector<std::string> TomlDocument::Keys(std::string_view table) const {
  std::vector<std::string> keys;
  if (const auto* values = tree_->Table(table)) {
    for (const auto& [key, value] : *values) {
      if (auto decoded = Decode(key.str())) keys.push_back(std::move(*decoded));
    }
  }
  return keys;
}

void TomlDocument::PutInteger(const SettingName& name, int value) { changed_ |= tree_->Put<std::int64_t>(name, value); }

void TomlDocument::PutText(const SettingName& name, std::string_view value) {
  changed_ |= tree_->Put<std::string>(name, Encode(value));
}

void TomlDocument::Remove(const SettingName& name) {
  if (!Has(name)) return;
  tree_->TableToWrite(name.table).erase(Encode(name.key));
  changed_ = true;
}

std::string TomlDocument::Content() const {
  // One line a value: the other string forms of the format cannot hold every text.
  constexpr auto kForms = toml::toml_formatter::default_flags & ~toml::format_flags::allow_literal_strings &
                          ~toml::format_flags::allow_multi_line_strings;
  std::ostringstream out;
  out << toml::toml_formatter(tree_->root, kForms) << '\n';
  return std::move(out).str();
}

}  // namespace ml::settings
