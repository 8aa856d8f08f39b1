#include "app/preferences/preference_search.h"

#include <algorithm>
#include <sstream>

#include "app/preferences/preference_pages.h"
#include "platform/text.h"
#include "platform/unicode_fold.h"

namespace ml::app {
namespace {

std::string Folded(std::string_view text) {
  std::string result;
  for (std::size_t at = 0; at < text.size();) {
    const auto character = platform::DecodeUtf8(text, at);
    platform::AppendUtf8(result, platform::FoldCodePoint(character.value));
    at += character.length;
  }
  return result;
}

std::string SearchedText(const PreferencePage& page, const PreferenceRow& row) {
  std::string text = PlainLabel(row.label);
  for (const auto part : {page.title, row.heading, row.explanation, row.note, row.key}) {
    text += '\n';
    text += part;
  }
  if (const auto* field = std::get_if<ChoiceField>(&row.field)) {
    for (const auto& choice : field->choices) text += '\n' + std::string(choice.text);
  }
  return Folded(text);
}

std::vector<std::string> Words(std::string_view query) {
  std::istringstream stream(Folded(query));
  std::vector<std::string> words;
  for (std::string word; stream >> word;) words.push_back(word);
  return words;
}

}  // namespace

std::vector<FoundPreference> FindPreferences(std::string_view query) {
  std::vector<FoundPreference> found;
  const auto words = Words(query);
  if (words.empty()) return found;
  const auto pages = PreferencePages();
  for (std::size_t page = 0; page < pages.size(); ++page) {
    for (std::size_t row = 0; row < pages[page].rows.size(); ++row) {
      const auto text = SearchedText(pages[page], pages[page].rows[row]);
      const auto occurs = [&](const auto& word) { return text.find(word) != std::string::npos; };
      if (std::ranges::all_of(words, occurs)) found.push_back({page, row});
    }
  }
  return found;
}

std::string PlainLabel(std::string_view label) {
  auto text = platform::ReplaceAll(label, "&", "");
  if (text.ends_with(':')) text.pop_back();
  return text;
}

}  // namespace ml::app
