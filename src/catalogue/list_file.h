#pragma once

#include <string>
#include <string_view>

namespace ml::catalogue {

enum class ReadState { Read, Missing, Unreadable };

struct ListFileText {
  ReadState state = ReadState::Missing;
  std::string text;  ///< empty unless read
};

/// The bytes of an order or tag file. A directory, FIFO or device of that name, a file above 64 MiB and a link
/// that leads nowhere are unreadable.
ListFileText ReadListFile(const std::string& path);

enum class WriteState { Written, Unchanged, Failed };

/// Makes `text` the content of `path`. A file that holds just that already is not touched, so that its time
/// stays and a read-only medium gives no failure. A failed write leaves the old file.
WriteState WriteIfChanged(const std::string& path, std::string_view text);

}  // namespace ml::catalogue
