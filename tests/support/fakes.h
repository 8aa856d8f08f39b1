#pragma once

#include <deque>
#include <string>
#include <utility>
#include <vector>

#include "platform/clock.h"
#include "platform/interaction.h"

namespace ml::test {

/// Answers from a script and remembers what was shown. Without a scripted answer every question is cancelled.
class ScriptedInteraction final : public platform::Interaction {
 public:
  std::vector<platform::MessageBox> shown;
  std::deque<platform::Button> buttons;
  std::deque<platform::FileExistsAnswer> fileAnswers;
  std::deque<std::optional<std::string>> saveNames;
  bool checked = false;

  void message(const platform::MessageBox& box) override { shown.push_back(box); }
  platform::Button ask(const platform::MessageBox& box) override {
    shown.push_back(box);
    return Next(buttons, platform::Button::Cancel);
  }
  CheckedAnswer askCheck(const platform::MessageBox& box, const std::string&) override {
    shown.push_back(box);
    return {Next(buttons, platform::Button::Cancel), checked};
  }
  std::optional<std::string> saveAs(const SaveAsQuestion&) override {
    return Next(saveNames, std::optional<std::string>());
  }
  platform::FileExistsAnswer fileExists(const std::string&) override {
    return Next(fileAnswers, platform::FileExistsAnswer::Cancel);
  }

 private:
  template <class T>
  static T Next(std::deque<T>& script, T otherwise) {
    if (script.empty()) return otherwise;
    T answer = std::move(script.front());
    script.pop_front();
    return answer;
  }
};

class FakeClock final : public platform::Clock {
 public:
  std::time_t time = 1'000'000'000;
  std::time_t now() const override { return time; }
};

}  // namespace ml::test
