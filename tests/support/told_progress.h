#pragma once

#include <string>
#include <utility>
#include <vector>

#include "platform/progress.h"

namespace ml::test {

/// Remembers what it is told.
class ToldProgress final : public platform::NoProgress {
 public:
  std::vector<int> percents;
  std::vector<std::string> texts, secondTexts;
  std::vector<std::pair<int, int>> positions;  ///< index from 1, and count

  void percent(int value) override { percents.push_back(value); }
  void text(const std::string& line) override { texts.push_back(line); }
  void secondText(const std::string& line) override { secondTexts.push_back(line); }
  void position(int index, int count) override { positions.emplace_back(index, count); }
};

}  // namespace ml::test
