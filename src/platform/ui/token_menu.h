#pragma once

#include <QString>
#include <functional>
#include <span>
#include <string>
#include <string_view>

class QLineEdit;
class QMenu;

/// Menus of the tokens that users put into texts.
namespace ml::platform::ui {

/// A token, and what it stands for in words. Both are texts that outlive the menu.
struct TokenEntry {
  std::string_view token, meaning;
};

/// What a token gives for an image at hand, as bytes; may be empty, and so may be the function.
using TokenExample = std::function<std::string(std::string_view token)>;
using TokenInserter = std::function<void(const QString& token)>;

/// Adds a part called `title`, with "&" before its mnemonic, to `menu`: the tokens with their meanings, and with
/// examples that are made each time that it opens. A chosen token goes to `insert`.
void AddTokens(QMenu& menu, const QString& title, std::span<const TokenEntry> tokens, const TokenExample& example,
               const TokenInserter& insert);

/// Puts tokens at the cursor of `line`, which must outlive it, and gives it the keyboard.
TokenInserter InserterInto(QLineEdit& line);

}  // namespace ml::platform::ui
