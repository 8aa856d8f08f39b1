#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

namespace ml::metadata {

/// The content of a zlib stream. Nothing if the stream is damaged or cut short, or if it holds more than `limit`
/// bytes; no more than that is ever allocated.
std::optional<std::vector<std::byte>> Inflate(std::span<const std::byte> stream, std::size_t limit);

}  // namespace ml::metadata
