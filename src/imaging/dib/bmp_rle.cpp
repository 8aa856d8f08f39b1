#include "imaging/dib/bmp_rle.h"

#include "imaging/decoded_picture.h"
#include "imaging/dib/bmp_pixels.h"
#include "imaging/messages.h"
#include "metadata/byte_view.h"

namespace ml::imaging {
namespace {

constexpr unsigned kEndOfRow = 0, kEndOfPicture = 1, kJump = 2;

class Unpacker {
 public:
  Unpacker(std::span<const std::byte> packed, const RleShape& shape)
      : packed_(packed, metadata::ByteOrder::Little), shape_(shape), rows_(shape.rowBytes * shape.height) {}

  std::vector<std::byte> Run() {
    while (y_ < shape_.height) {
      const unsigned count = packed_.readByte(at_), value = packed_.readByte(at_ + 1);
      at_ += 2;
      if (count > 0) {
        for (unsigned i = 0; i < count; ++i) Put(IndexIn(value, i));
      } else if (value == kEndOfPicture) {
        break;
      } else if (value == kEndOfRow) {
        x_ = 0;
        ++y_;
      } else if (value == kJump) {
        x_ += packed_.readByte(at_);
        y_ += packed_.readByte(at_ + 1);
        at_ += 2;
      } else {
        PutLiterally(value);
      }
    }
    return std::move(rows_);
  }

 private:
  /// The index of pixel `i` of a run or a byte: of four bits, two alternate.
  unsigned IndexIn(unsigned value, unsigned i) const {
    if (shape_.bits == 8) return value;
    return i % 2 == 0 ? value >> 4 : value & 15;
  }

  void PutLiterally(unsigned count) {
    const std::size_t size = shape_.bits == 8 ? count : (count + 1) / 2;
    for (unsigned i = 0; i < count; ++i) {
      Put(IndexIn(packed_.readByte(at_ + (shape_.bits == 8 ? i : i / 2)), i));
    }
    at_ += (size + 1) / 2 * 2;
  }

  /// What is over the right edge is dropped.
  void Put(unsigned index) {
    if (x_ >= shape_.width) return;
    auto* row = rows_.data() + y_ * shape_.rowBytes;
    if (shape_.bits == 8) {
      row[x_] = static_cast<std::byte>(index);
    } else {
      PutSmallPixel(row, x_, shape_.bits, index);
    }
    ++x_;
  }

  metadata::ByteView packed_;
  RleShape shape_;
  std::vector<std::byte> rows_;
  std::size_t at_ = 0, x_ = 0, y_ = 0;
};

}  // namespace

std::vector<std::byte> UnpackRle(std::span<const std::byte> packed, const RleShape& shape) {
  try {
    return Unpacker(packed, shape).Run();
  } catch (metadata::ExifException) {
    Refuse(messages::kBitmapCutShort);
  }
}

}  // namespace ml::imaging
