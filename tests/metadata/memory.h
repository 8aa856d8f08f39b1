#pragma once

#include <string>

#include "metadata/byte_source.h"
#include "platform/text.h"

namespace ml::metadata {

/// The text as a file. Does not own it.
inline MemorySource SourceOf(const std::string& text) { return MemorySource(platform::AsBytes(text)); }
MemorySource SourceOf(std::string&&) = delete;

inline std::string TextOf(const std::vector<std::byte>& bytes) { return std::string(platform::AsText(bytes)); }
inline std::string TextOf(const ByteSource& source) { return TextOf(source.ReadUpTo(0, source.Size())); }

}  // namespace ml::metadata
