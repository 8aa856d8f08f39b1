#include "support/jpeg_builder.h"

#include <cstdint>
#include <vector>

namespace ml::test {
namespace {

struct Field {
  int tag, type;
  std::uint32_t count;
  std::uint32_t number = 0;  ///< if there is no data
  std::string data;          ///< goes behind the directory
};

class Tiff {
 public:
  explicit Tiff(bool bigEndian) : big_(bigEndian) { bytes_ = big_ ? std::string("MM\0*", 4) : std::string("II*\0", 4); }

  std::string Number(std::uint32_t value, int width) const {
    std::string out;
    for (int i = 0; i < width; ++i) out += static_cast<char>(value >> 8 * (big_ ? width - 1 - i : i) & 0xff);
    return out;
  }
  void Put(std::string_view text) { bytes_ += text; }
  std::size_t Size() const { return bytes_.size(); }
  std::string Take() { return std::move(bytes_); }

  void Directory(const std::vector<Field>& fields, bool more) {
    std::size_t data = Size() + 2 + 12 * fields.size() + 4;
    std::string tail;
    Put(Number(static_cast<std::uint32_t>(fields.size()), 2));
    for (const auto& field : fields) {
      Put(Number(static_cast<std::uint32_t>(field.tag), 2) + Number(static_cast<std::uint32_t>(field.type), 2) +
          Number(field.count, 4));
      const auto place = static_cast<std::uint32_t>(data + tail.size());
      const bool single = field.type == 3;
      if (!field.data.empty()) {
        Put(Number(place, 4));
        tail += field.data;
      } else {
        Put(single ? Number(field.number, 2) + std::string(2, '\0') : Number(field.number, 4));
      }
    }
    Put(Number(more ? static_cast<std::uint32_t>(data + tail.size()) : 0, 4));
    Put(tail);
  }

 private:
  bool big_;
  std::string bytes_;
};

Field Ascii(int tag, const std::string& text) {
  return {tag, 2, static_cast<std::uint32_t>(text.size() + 1), 0, text + '\0'};
}

}  // namespace

std::string TiffBlock(const ExifFields& fields) {
  Tiff tiff(fields.bigEndian);
  tiff.Put(tiff.Number(8, 4));
  std::vector<Field> first;
  if (!fields.make.empty()) first.push_back(Ascii(271, fields.make));
  if (!fields.model.empty()) first.push_back(Ascii(272, fields.model));
  if (fields.orientation != 0) first.push_back({274, 3, 1, static_cast<std::uint32_t>(fields.orientation), {}});
  if (!fields.dateTime.empty()) {
    first.push_back(Ascii(306, fields.dateTime));
    // The EXIF directory rides as the data of its own pointer.
    std::string exif = tiff.Number(1, 2) + tiff.Number(36867, 2) + tiff.Number(2, 2);
    std::size_t at = tiff.Size() + 2 + 12 * (first.size() + 1) + 4;
    for (const auto& field : first) at += field.data.size();
    exif += tiff.Number(static_cast<std::uint32_t>(fields.dateTime.size() + 1), 4);
    exif += tiff.Number(static_cast<std::uint32_t>(at + 18), 4) + tiff.Number(0, 4) + fields.dateTime + '\0';
    first.push_back({34665, 4, 1, 0, exif});
  }
  const bool second = !fields.thumbnail.empty();
  tiff.Directory(first, second);
  if (second) {
    const auto place = static_cast<std::uint32_t>(tiff.Size() + 2 + 3 * 12 + 4);
    tiff.Directory({{259, 3, 1, 6, {}},
                    {513, 4, 1, place, {}},
                    {514, 4, 1, static_cast<std::uint32_t>(fields.thumbnail.size()), {}}},
                   false);
    tiff.Put(fields.thumbnail);
  }
  return tiff.Take();
}

std::string ExifPayload(const ExifFields& fields) { return std::string("Exif\0\0", 6) + TiffBlock(fields); }

std::string JpegSegment(int marker, std::string_view payload) {
  const auto length = payload.size() + 2;
  std::string out{'\xff', static_cast<char>(marker), static_cast<char>(length >> 8), static_cast<char>(length & 0xff)};
  return out.append(payload);
}

std::string InsertSegments(std::string_view jpeg, std::string_view segments) {
  return std::string(jpeg.substr(0, 2)).append(segments).append(jpeg.substr(2));
}

std::string WithExif(std::string_view jpeg, const ExifFields& fields) {
  return InsertSegments(jpeg, JpegSegment(0xe1, ExifPayload(fields)));
}

std::string WithClaimedSize(std::string jpeg, int width, int height) {
  const auto byte = [&](std::size_t at) { return static_cast<unsigned char>(jpeg[at]); };
  std::size_t at = 2;
  while (byte(at + 1) != 0xc0 && byte(at + 1) != 0xc2) at += 2U + byte(at + 2) * 256U + byte(at + 3);
  jpeg[at + 5] = static_cast<char>(height >> 8), jpeg[at + 6] = static_cast<char>(height & 0xff);
  jpeg[at + 7] = static_cast<char>(width >> 8), jpeg[at + 8] = static_cast<char>(width & 0xff);
  return jpeg;
}

}  // namespace ml::test
