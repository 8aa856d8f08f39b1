#pragma once

#include <string_view>

namespace ml::cli {

/// "12 of 200 NAME" on one line of a terminal, written over at each step and wiped at the end. Silent where
/// standard error is no terminal.
class ProgressLine {
 public:
  explicit ProgressLine(int count);
  ~ProgressLine();
  ProgressLine(const ProgressLine&) = delete;
  ProgressLine& operator=(const ProgressLine&) = delete;
  /// One more file, called before the work on it.
  void Next(std::string_view name);
  /// Wipes the line, so that something else can be printed.
  void Clear();

 private:
  int count_;
  int done_ = 0;
  bool terminal_;
};

}  // namespace ml::cli
