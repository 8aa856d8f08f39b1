#pragma once

#include <cstddef>
#include <span>
#include <string>

namespace ml::platform {

/// Where a job reports how far it is. Called on the job's thread; must return at once.
class Progress {
 public:
  virtual ~Progress() = default;
  /// 0..100 of the current step.
  virtual void percent(int value) = 0;
  virtual void text(const std::string& line) = 0;
  virtual void secondText(const std::string& line) = 0;
  /// A small picture of what is being worked on: `width` x `height` pixels, red, green, blue, no padding.
  virtual void picture(std::span<const std::byte> rgb, int width, int height) = 0;
  /// File `index` (from 1) of `count`.
  virtual void position(int index, int count) = 0;
};

/// For work that nobody watches, and for those to derive from who look at little of it.
class NoProgress : public Progress {
 public:
  void percent(int) override {}
  void text(const std::string&) override {}
  void secondText(const std::string&) override {}
  void picture(std::span<const std::byte>, int, int) override {}
  void position(int, int) override {}
};

}  // namespace ml::platform
