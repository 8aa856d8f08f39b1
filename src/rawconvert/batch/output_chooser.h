#pragma once

#include <cstdint>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <unordered_set>
#include <utility>

#include "platform/job_host.h"

namespace ml::rawconvert {

/// A file that is about to be made from another one.
struct OutputPlan {
  const std::string& source;
  const std::string& destination;
  std::string_view fileFilter;  ///< of the dialog that asks for another name
};

/// Decides for each file of a run under which name it is written, and asks where one is in the way: a source of the
/// run, which nothing may take the place of, or a file that exists. Answers for all are remembered, but none of them
/// lets a file take the place of another one of the same run.
class OutputChooser {
 public:
  /// `sources` are all of the run, and outlive this.
  OutputChooser(const platform::JobHost& host, std::span<const std::string> sources) : host_(host), sources_(sources) {}

  /// The name, or nothing if the file is to be left out. Throws Cancelled.
  std::optional<std::string> Choose(const OutputPlan& plan);
  /// Whether the path, maybe by a link, is one of the sources.
  bool IsSource(const std::string& path);
  /// Seconds that questions have stood open so far.
  std::time_t Waited() const { return waited_; }

 private:
  enum class Standing { None, OverwriteAll, SkipAll };

  std::optional<std::string> Decide(const OutputPlan& plan);
  bool IsAnySource(const OutputPlan& plan, const std::string& path);
  std::optional<std::string> ChooseApartFromSource(const OutputPlan& plan);
  std::optional<std::string> AskSaveAs(const OutputPlan& plan, const char* refusal);
  std::optional<std::string> AskExisting(const OutputPlan& plan);

  const platform::JobHost& host_;
  std::span<const std::string> sources_;
  std::set<std::pair<std::uint64_t, std::uint64_t>> known_;  ///< devices and inodes of them, once they are needed
  Standing standing_ = Standing::None;
  std::unordered_set<std::string> chosen_;
  std::time_t waited_ = 0;
};

}  // namespace ml::rawconvert
