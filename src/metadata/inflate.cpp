#include "metadata/inflate.h"

#define ZLIB_CONST
#include <zlib.h>

#include <algorithm>
#include <array>
#include <limits>

namespace ml::metadata {
namespace {

/// The state of zlib, freed at the end.
class Stream {
 public:
  explicit Stream(std::span<const std::byte> input) {
    state_.next_in = reinterpret_cast<const Bytef*>(input.data());  // unsigned char may alias everything
    state_.avail_in = static_cast<uInt>(input.size());
    ready_ = inflateInit(&state_) == Z_OK;
  }
  ~Stream() {
    if (ready_) inflateEnd(&state_);
  }
  Stream(const Stream&) = delete;
  Stream& operator=(const Stream&) = delete;

  bool Ready() const { return ready_; }
  /// The state zlib reports; `count` is how many bytes it wrote to `out`.
  int Next(std::span<std::byte> out, std::size_t& count) {
    state_.next_out = reinterpret_cast<Bytef*>(out.data());
    state_.avail_out = static_cast<uInt>(out.size());
    const int result = inflate(&state_, Z_NO_FLUSH);
    count = out.size() - state_.avail_out;
    return result;
  }

 private:
  z_stream state_{};
  bool ready_ = false;
};

}  // namespace

std::optional<std::vector<std::byte>> Inflate(std::span<const std::byte> stream, std::size_t limit) {
  if (stream.size() > std::numeric_limits<uInt>::max()) return std::nullopt;
  Stream zlib(stream);
  if (!zlib.Ready()) return std::nullopt;
  std::vector<std::byte> content;
  std::array<std::byte, 16384> block{};
  while (true) {
    std::size_t count = 0;
    const int result = zlib.Next(block, count);
    if (result != Z_OK && result != Z_STREAM_END) return std::nullopt;  // damaged, or more input was needed
    if (count > limit - content.size()) return std::nullopt;
    content.insert(content.end(), block.begin(), block.begin() + static_cast<std::ptrdiff_t>(count));
    if (result == Z_STREAM_END) return content;
  }
}

}  // namespace ml::metadata
