#pragma once

#include <cstdint>
#include <functional>
#include <stop_token>
#include <string>

namespace ml::catalogue {

/// What a directory holds, with all below it.
struct DirectoryFacts {
  std::uint64_t files = 0, directories = 0;  ///< the directory itself not counted
  std::uint64_t bytes = 0;                   ///< of the files
  std::uint64_t unreadable = 0;              ///< directories that could not be looked into
};

/// Counts what lies below `directory` on its file system; links are counted and not followed. `news` is told of the
/// numbers so far after each directory. Ends early with what it has when `stop` wants it. Throws nothing of its own.
DirectoryFacts MeasureDirectory(const std::string& directory, const std::stop_token& stop,
                                const std::function<void(const DirectoryFacts&)>& news);

}  // namespace ml::catalogue
