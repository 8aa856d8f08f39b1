#pragma once

#include <cstddef>
#include <cstdint>

#include "metadata/byte_source.h"
#include "platform/errors.h"

/// The input as the readers take it.
inline ml::metadata::MemorySource FuzzSource(const std::uint8_t* data, std::size_t size) {
  return ml::metadata::MemorySource(std::as_bytes(std::span(data, size)));
}

/// Readers may refuse with a sentence; whatever else leaves them is a fault.
template <class Read>
void Refusable(Read&& read) {
  try {
    read();
  } catch (const ml::platform::UserError&) {
    return;
  }
}

/// For decoders, which refuse with the reason of a library. Gives what a target returns.
template <class Decode>
int EndsCleanly(Decode&& decode) {
  try {
    decode();
  } catch (const ml::platform::LibraryError&) {
    return 0;
  }
  return 0;
}
