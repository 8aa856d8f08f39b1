#pragma once

#include <string>

#include "platform/progress.h"

namespace ml::rawconvert {

/// Progress of one conversion, which goes through its picture several times: what each pass tells becomes its part of
/// the whole.
class PassProgress final : public platform::Progress {
 public:
  explicit PassProgress(platform::Progress& whole) : whole_(whole) {}

  void AddPass() { ++passCount_; }
  void NextPass() { ++passIndex_; }

  void percent(int value) override;
  void text(const std::string& line) override { whole_.text(line); }
  void secondText(const std::string& line) override { whole_.secondText(line); }
  void picture(std::span<const std::byte> rgb, int width, int height) override { whole_.picture(rgb, width, height); }
  void position(int index, int count) override { whole_.position(index, count); }

 private:
  platform::Progress& whole_;
  int passIndex_ = 0, passCount_ = 1;
};

}  // namespace ml::rawconvert
