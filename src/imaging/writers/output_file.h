#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "imaging/writers/pixel_rows.h"
#include "imaging/writers/write_image.h"
#include "platform/errors.h"

namespace ml::imaging {

/// How a writer words its refusals.
struct Refusal {
  const char* sentence;        ///< ends in a line break; the path follows, then the cause
  const char* onWriting = "";  ///< a line between path and cause once there is a file
};

/// What the writers share: the new file, which nobody sees before it is whole, and the way to report and to be
/// cancelled. What goes wrong becomes a UserError in the writer's words.
class OutputFile {
 public:
  /// Does not own the options.
  OutputFile(const std::string& path, const Refusal& refusal, const WriteOptions& options);

  /// Appends; small pieces are gathered.
  void Write(std::span<const std::byte> bytes);
  /// Tells that `done` of `all` rows, or other parts of the work, are behind us. Throws Cancelled.
  void Done(int done, int all);
  /// The last call.
  void Commit();

 private:
  void Flush();
  void Put(std::span<const std::byte> bytes);
  platform::UserError Broken(const std::string& cause) const;

  const WriteOptions& options_;
  std::string path_;
  Refusal refusal_;
  int percent_ = -1;
  std::vector<std::byte> gathered_;
  std::unique_ptr<platform::AtomicFile> file_;  ///< never null
};

/// `sentence`, the path, and the cause on a line of its own; a cause that names the path is cut to what follows it.
std::string RefusalOf(const char* sentence, const std::string& path, const std::string& cause);

/// What `step` gives; what it refuses is worded like all else. For what is made ready before there is a file.
template <class Step>
auto Prepared(const char* sentence, const std::string& path, Step&& step) {
  try {
    return step();
  } catch (const platform::UserError& error) {
    throw platform::UserError(RefusalOf(sentence, path, error.what()));
  }
}

/// The row as bytes in the order red, green, blue: its own, or made in `scratch`.
const std::byte* RgbRow(const PixelRows& pixels, int y, std::vector<std::byte>& scratch);

}  // namespace ml::imaging
