#pragma once

#include <stop_token>
#include <string>
#include <vector>

#include "platform/job_host.h"
#include "rawconvert/convert_raw_file.h"

namespace ml::rawconvert {

/// A run of conversions.
struct BatchConversion {
  std::vector<std::string> files;
  std::string outputDirectory;  ///< without "/" at its end; made if it is missing
  ConversionOptions options;    ///< the resolution is brought into 25..999
  /// Whether names tell the method: "L" for linear, "C" for combined.
  bool appendMethodLetter = true;
};

enum class Converted { Yes, Skipped, Failed };

/// What became of one file.
struct ConvertedFile {
  std::string source;
  std::string output{};   ///< the name that was chosen for it, or that is taken
  std::string message{};  ///< of a failure, or why it was left out
  Converted result = Converted::Skipped;
};

/// The name that `source` is converted to.
std::string ConvertedPath(const std::string& source, Method method, const BatchConversion& batch);

/// Converts all files, one after the other; each is written while the next one is developed. Asks through the host
/// where a file is in the way, tells estimates, and at the end what failed. A file that cannot be developed does not
/// keep the others; one that cannot be written ends the run. What became of each file, as far as the run came. Does
/// not throw for a cancelled run: the files after it are missing from the result.
std::vector<ConvertedFile> RunBatchConversion(const BatchConversion& batch, RawConversionSettings& settings,
                                              RawDeveloper& developer, const platform::JobHost& host,
                                              const std::stop_token& stop);

}  // namespace ml::rawconvert
