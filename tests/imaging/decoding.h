#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <functional>
#include <span>
#include <string>

#include "imaging/decoded_picture.h"
#include "metadata/byte_source.h"
#include "platform/errors.h"

/// What the tests of the decoders share. A decoder under test takes the bytes of a file.
namespace ml::test {

using Decoder = std::function<imaging::DecodedPicture(const metadata::ByteSource&)>;

inline imaging::DecodedPicture Decode(const Decoder& decoder, const std::string& bytes) {
  return decoder(metadata::MemorySource(std::as_bytes(std::span(bytes))));
}

/// The reason for which the decoder refuses; "decoded" if it does not.
inline std::string Refusal(const Decoder& decoder, const std::string& bytes) {
  try {
    Decode(decoder, bytes);
  } catch (const platform::LibraryError& error) {
    return error.Reason();
  }
  return "decoded";
}

/// All samples, in the form of a Picture's.
inline std::string Samples(const imaging::PixelBuffer& pixels) {
  EXPECT_EQ(pixels.stride, pixels.width);
  return {reinterpret_cast<const char*>(pixels.data.data()), pixels.data.size()};
}

/// For samples that are too many to be printed.
inline void ExpectSamples(const imaging::PixelBuffer& pixels, const std::string& expected) {
  const auto actual = Samples(pixels);
  ASSERT_EQ(actual.size(), expected.size());
  const auto at = static_cast<std::size_t>(std::ranges::mismatch(actual, expected).in1 - actual.begin());
  if (at == actual.size()) return;
  ADD_FAILURE() << "sample " << at << " of " << at / 3 % static_cast<std::size_t>(pixels.width) << " across is "
                << static_cast<int>(static_cast<unsigned char>(actual[at])) << " instead of "
                << static_cast<int>(static_cast<unsigned char>(expected[at]));
}

inline std::array<int, 3> PixelAt(const imaging::PixelBuffer& pixels, int x, int y) {
  const auto* p = pixels.Row(y) + x * 3;
  return {std::to_integer<int>(p[0]), std::to_integer<int>(p[1]), std::to_integer<int>(p[2])};
}

/// Every prefix (up to 1 KiB, then every `step`th) gives a picture that is called damaged, or a reason. Prefixes of at
/// least `whole` bytes lack nothing that counts. Gives how many of the damaged ones showed a picture.
inline int SweepPrefixes(const Decoder& decoder, const std::string& bytes, std::size_t whole, std::size_t step) {
  int shown = 0;
  for (std::size_t size = 0; size < whole; size += size < 1024 ? 1 : step) {
    try {
      EXPECT_TRUE(Decode(decoder, bytes.substr(0, size)).damaged) << size;
      ++shown;
    } catch (const platform::LibraryError& error) {
      EXPECT_STRNE(error.what(), "") << size;
    }
  }
  return shown;
}

}  // namespace ml::test
