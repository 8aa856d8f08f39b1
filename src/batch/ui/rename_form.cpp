#include "batch/ui/rename_form.h"

#include <algorithm>

#include "batch/ui/messages.h"

namespace ml::batch::ui {

RenameForm::RenameForm(RenameChoices choices) : choices_(std::move(choices)) {
  choices_.row = std::clamp(choices_.row, 0, RowCount() - 1);
  choices_.digits = std::clamp(choices_.digits, 1, static_cast<int>(kMostDigits));
  TakeDigits();
  if (choices_.continuous) TakeCounter();
}

void RenameForm::TakeDigits() {
  if (IsCustom()) return;
  if (const auto digits = BuiltInStyles()[static_cast<std::size_t>(choices_.row)].digits) {
    choices_.digits = static_cast<int>(*digits);
  }
}

void RenameForm::TakeCounter() { counter_ = std::max(IsCustom() ? Custom().firstNumber : choices_.firstNumber, 0); }

void RenameForm::ChooseRow(int row) {
  if (row < 0 || row >= RowCount()) return;
  choices_.row = row;
  TakeDigits();
  if (choices_.continuous) TakeCounter();
}

void RenameForm::SetFormat(const std::string& format) {
  if (IsCustom()) Custom().format = format;
}

void RenameForm::SetName(const std::string& name) {
  if (IsCustom()) Custom().name = name;
}

void RenameForm::SetDigits(int digits) {
  if (digits >= 1 && digits <= static_cast<int>(kMostDigits)) choices_.digits = digits;
}

void RenameForm::SetFirstNumber(std::int64_t number) { counter_ = std::clamp<std::int64_t>(number, 0, kLastNumber); }

void RenameForm::SetContinuous(bool continuous) {
  choices_.continuous = continuous;
  if (continuous) TakeCounter();
}

std::string RenameForm::Name() const {
  return IsCustom() ? Custom().name : std::string(BuiltInStyles()[static_cast<std::size_t>(choices_.row)].name);
}

std::string RenameForm::Format() const {
  return IsCustom() ? Custom().format : std::string(BuiltInStyles()[static_cast<std::size_t>(choices_.row)].format);
}

NumberField RenameForm::Digits() const {
  if (!UsesDigits(Format())) return {FieldUse::Off, 1, kNoNumberInStyle};
  if (!IsCustom()) return {FieldUse::ReadOnly, choices_.digits, kDigitsOfStyle};
  return {FieldUse::Edit, choices_.digits};
}

NumberField RenameForm::FirstNumber() const {
  if (!UsesNumber(Format())) return {FieldUse::Off, 1, kNoCounterInStyle};
  if (choices_.continuous) return {FieldUse::ReadOnly, counter_, kCounterGoesOn};
  return {FieldUse::Edit, counter_};
}

RenameStyle RenameForm::Style() const {
  return {.format = Format(),
          .digits = static_cast<std::size_t>(choices_.digits),
          .firstNumber = counter_,
          .sort = choices_.sort,
          .caseMode = choices_.caseMode};
}

RenameChoices RenameForm::Accepted(std::int64_t nextCounter) const {
  RenameForm after(*this);
  const int next = static_cast<int>(nextCounter);
  if (after.IsCustom()) after.Custom().firstNumber = next;
  after.choices_.firstNumber = next;
  return after.choices_;
}

}  // namespace ml::batch::ui
