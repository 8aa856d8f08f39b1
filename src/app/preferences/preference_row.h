#pragma once

#include <span>
#include <string_view>
#include <variant>

#include "app/preferences/effects.h"

/// What the Preferences window offers, as data: a page is a list of rows, a row is one setting. A new setting
/// for the user is one row; window, search, defaults and effects follow from it.
namespace ml::app {

struct CheckField {};

/// Whole numbers from `smallest` to `largest`, both included.
struct NumberField {
  int smallest, largest;
  std::string_view unit;  ///< with the blank before it; empty for none
};

/// `value` is the stored value as text. `others` are further stored values that mean the same, parted by blanks.
struct Choice {
  std::string_view value, text;
  std::string_view others = {};
};
/// A stored value that is none of the choices means the choice at `otherwise`.
struct ChoiceField {
  std::span<const Choice> choices;
  std::size_t otherwise = 0;
};

/// A program with its arguments.
struct CommandLineField {};
/// The path of a colour profile; empty for none.
struct ProfileField {};

/// Where a text with tokens is shown: as one line, with the image's place in the list, or as several.
enum class TextForm { Line, Lines };
/// A text with tokens such as "@iso@".
struct FormatField {
  TextForm form;
};

using PreferenceField = std::variant<CheckField, NumberField, ChoiceField, CommandLineField, ProfileField, FormatField>;

/// A row that counts only while the flag `key` is on, or off; `reason` says so while it does not. An empty key: it
/// always counts.
struct Need {
  std::string_view key;
  bool on = true;
  std::string_view reason;
};

/// A small picture below a row of what is chosen.
enum class Example { None, ThumbnailScheme };

struct PreferenceRow {
  std::string_view key;          ///< of the settings table
  std::string_view heading;      ///< rows under the same heading follow each other
  std::string_view label;        ///< with "&" before the mnemonic
  std::string_view explanation;  ///< sentences
  PreferenceField field;
  Effects effects = {};
  Need need = {};
  std::string_view note = {};  ///< stands below the field
  Example example = Example::None;
};

struct PreferencePage {
  std::string_view title;
  std::span<const PreferenceRow> rows;
};

}  // namespace ml::app
