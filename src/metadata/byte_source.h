#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "metadata/byte_view.h"
#include "platform/readable_file.h"

namespace ml::metadata {

/// Bytes that can be fetched by position: a file of any size or a buffer. Readers which need a few ranges of a
/// large file take this; what they fetched they parse through a ByteView. Not for use by two threads at once.
class ByteSource {
 public:
  virtual ~ByteSource() = default;
  ByteSource(const ByteSource&) = delete;
  ByteSource& operator=(const ByteSource&) = delete;

  virtual std::uint64_t Size() const = 0;
  /// Fetches as much of `out` as there is from `offset` on and gives the number of bytes. Throws UserError if
  /// the file cannot be read.
  virtual std::size_t ReadSome(std::uint64_t offset, std::span<std::byte> out) const = 0;

  /// Fills `out`. Throws ExifException::OutOfBounds if a byte is missing.
  void ReadExactly(std::uint64_t offset, std::span<std::byte> out) const {
    if (ReadSome(offset, out) != out.size()) throw ExifException::OutOfBounds;
  }
  /// The `length` bytes at `offset`; nothing is allocated for a range that is not there.
  std::vector<std::byte> Read(std::uint64_t offset, std::size_t length) const;
  /// As many of them as there are; for a file that may become shorter meanwhile.
  std::vector<std::byte> ReadUpTo(std::uint64_t offset, std::size_t length) const;
  /// `width` (1, 2 or 4) bytes as a number.
  std::uint32_t ReadNumber(std::uint64_t offset, std::size_t width, ByteOrder order) const;

 protected:
  ByteSource() = default;
};

/// Does not own the bytes.
class MemorySource final : public ByteSource {
 public:
  explicit MemorySource(std::span<const std::byte> bytes) : bytes_(bytes) {}
  std::uint64_t Size() const override { return bytes_.size(); }
  std::size_t ReadSome(std::uint64_t offset, std::span<std::byte> out) const override;

 private:
  std::span<const std::byte> bytes_;
};

/// Reads through a small window, so that walking headers costs few calls. Does not own the file.
class FileSource final : public ByteSource {
 public:
  explicit FileSource(const platform::ReadableFile& file) : file_(file) {}
  std::uint64_t Size() const override { return file_.Size(); }
  std::size_t ReadSome(std::uint64_t offset, std::span<std::byte> out) const override;

 private:
  const platform::ReadableFile& file_;
  mutable std::array<std::byte, 4096> window_{};
  mutable std::uint64_t windowOffset_ = 0;
  mutable std::size_t windowSize_ = 0;
};

}  // namespace ml::metadata
