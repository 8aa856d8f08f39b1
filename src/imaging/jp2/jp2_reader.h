#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "imaging/decoded_picture.h"
#include "metadata/byte_source.h"

namespace ml::imaging {

enum class Jp2Colours { Unknown, Grey, Rgb, Ycc, Cmyk };

/// One component: rows of `width` samples without padding, of `bits` bits each. It may be smaller than the picture.
struct Jp2Component {
  int width = 0;
  int height = 0;
  int bits = 8;  ///< 1..31
  bool isSigned = false;
  bool opacity = false;
  const std::int32_t* samples = nullptr;  ///< owned by the reader
};

/// The library's decoder without its types. To be called in the order of declaration. Throws LibraryError.
class Jp2Reader {
 public:
  enum class Content { BoxedFile, CodeStream };

  /// Reads the header of what stands at `offset`. Does not own the source.
  Jp2Reader(const metadata::ByteSource& source, std::uint64_t offset, Content content, int threads);
  ~Jp2Reader();
  Jp2Reader(const Jp2Reader&) = delete;
  Jp2Reader& operator=(const Jp2Reader&) = delete;

  PictureSize FullSize() const;
  /// How often the picture can be halved.
  int MaxHalvings() const;

  /// `halvings`: 0..MaxHalvings().
  void Decode(int halvings);
  Jp2Colours Colours() const;
  std::vector<Jp2Component> Components() const;
  /// Whether bytes were missing or made no sense.
  bool Damaged() const;

 private:
  struct State;
  void CheckSize(int halvings) const;
  std::unique_ptr<State> state_;
};

}  // namespace ml::imaging
