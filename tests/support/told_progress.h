#pragma once

#include <vector>

#include "platform/progress.h"

namespace ml::test {

/// Remembers the percentages told.
class ToldProgress final : public platform::Progress {
 public:
  const std::vector<int>& Percentages() const { return percentages_; }

  void percent(int value) override { percentages_.push_back(value); }
  void text(const std::string&) override {}
  void secondText(const std::string&) override {}
  void picture(std::span<const std::byte>, int, int) override {}
  void position(int, int) override {}

 private:
  std::vector<int> percentages_;
};

}  // namespace ml::test
