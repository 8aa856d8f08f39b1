#pragma once

#include <initializer_list>

namespace ml::app {

/// What has to be done at once so that a changed setting shows.
enum class Effect : unsigned {
  RemakeThumbnails,  ///< from the files
  ResizeThumbnails,  ///< cells, and what is in them if the size is another one now
  RedrawThumbnails,  ///< with the same contents
  ReloadDirectory,   ///< other files may belong to it
  ReloadPicture,     ///< the image on show
  RedrawHistogram
};

/// A set of them.
class Effects {
 public:
  constexpr Effects() = default;
  constexpr Effects(std::initializer_list<Effect> effects) {
    for (const auto effect : effects) bits_ |= Bit(effect);
  }

  constexpr bool Has(Effect effect) const { return (bits_ & Bit(effect)) != 0; }
  constexpr Effects& operator|=(Effects other) {
    bits_ |= other.bits_;
    return *this;
  }
  friend constexpr bool operator==(Effects, Effects) = default;

 private:
  static constexpr unsigned Bit(Effect effect) { return 1U << static_cast<unsigned>(effect); }
  unsigned bits_ = 0;
};

}  // namespace ml::app
