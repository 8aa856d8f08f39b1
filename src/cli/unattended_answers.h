#pragma once

#include "platform/interaction.h"

namespace ml::cli {

/// Where nobody is there to be asked: nothing is shown, and the answers are those that change nothing. Commands derive
/// from it what their options say.
class UnattendedAnswers : public platform::Interaction {
 public:
  void message(const platform::MessageBox&) override {}
  platform::Button ask(const platform::MessageBox&) override { return platform::Button::Cancel; }
  CheckedAnswer askCheck(const platform::MessageBox&, const std::string&) override { return {}; }
  std::optional<std::string> saveAs(const SaveAsQuestion&) override { return std::nullopt; }
  platform::FileExistsAnswer fileExists(const std::string&) override { return platform::FileExistsAnswer::Skip; }
};

}  // namespace ml::cli
