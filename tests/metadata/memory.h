#pragma once

#include <string>

#include "metadata/byte_source.h"

namespace ml::metadata {

/// The text as a file. Does not own it.
inline MemorySource SourceOf(const std::string& text) { return MemorySource(std::as_bytes(std::span(text))); }
MemorySource SourceOf(std::string&&) = delete;

inline std::string TextOf(const std::vector<std::byte>& bytes) {
  return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

}  // namespace ml::metadata
