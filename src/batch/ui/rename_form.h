#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "batch/rename_style.h"

namespace ml::batch::ui {

/// A style of the user's own.
struct CustomStyle {
  std::string name, format;
  int firstNumber = 1;
  friend bool operator==(const CustomStyle&, const CustomStyle&) = default;
};

/// What is remembered between two batches.
struct RenameChoices {
  int row = 0;  ///< of the list of styles: the built-in ones, then the custom ones
  RenameSort sort = RenameSort::Number;
  int digits = 4;
  catalogue::CaseMode caseMode = catalogue::CaseMode::Unchanged;
  bool continuous = true;  ///< numbering goes on where the last batch ended
  int firstNumber = 1;     ///< to go on with in the built-in styles
  std::array<CustomStyle, kCustomStyles> custom;
  friend bool operator==(const RenameChoices&, const RenameChoices&) = default;
};

/// How a field shows.
enum class FieldUse { Edit, ReadOnly, Off };
struct NumberField {
  FieldUse use = FieldUse::Edit;
  std::int64_t value = 1;
  std::string_view reason = {};  ///< why it cannot be edited; empty if it can
};

/// What the user chooses in the dialog, with the rules by which one choice changes another.
class RenameForm {
 public:
  /// Values that cannot be are brought into their range.
  explicit RenameForm(RenameChoices choices);

  void ChooseRow(int row);
  /// For a custom row only, like the next.
  void SetFormat(const std::string& format);
  void SetName(const std::string& name);
  /// A number outside 1..kMostDigits is passed over.
  void SetDigits(int digits);
  void SetFirstNumber(std::int64_t number);
  void SetContinuous(bool continuous);
  void SetSort(RenameSort sort) { choices_.sort = sort; }
  void SetCase(catalogue::CaseMode caseMode) { choices_.caseMode = caseMode; }

  const RenameChoices& Choices() const { return choices_; }
  bool IsCustom() const { return choices_.row >= FirstCustomRow(); }
  std::string Name() const;
  std::string Format() const;
  NumberField Digits() const;
  NumberField FirstNumber() const;
  RenameStyle Style() const;

  /// What to remember after a batch that ended before number `nextCounter`. Kept: the counter of the built-in styles
  /// follows in every row, also in a custom one.
  RenameChoices Accepted(std::int64_t nextCounter) const;

  static int FirstCustomRow() { return static_cast<int>(BuiltInStyles().size()); }
  static int RowCount() { return FirstCustomRow() + static_cast<int>(kCustomStyles); }

 private:
  CustomStyle& Custom() { return choices_.custom[static_cast<std::size_t>(choices_.row - FirstCustomRow())]; }
  const CustomStyle& Custom() const { return const_cast<RenameForm*>(this)->Custom(); }
  void TakeDigits();
  void TakeCounter();

  RenameChoices choices_;
  std::int64_t counter_ = 1;  ///< the first number in force
};

}  // namespace ml::batch::ui
