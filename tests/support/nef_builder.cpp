#include "support/nef_builder.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <stdexcept>
#include <string_view>

#include "support/tiff_builder.h"

namespace ml::test {
namespace {

using Samples = std::vector<std::uint16_t>;

constexpr int kCurveEntries = 683, kSplitPoints = 65;
constexpr std::size_t kOldHead = 2110, kSplitAt = 562;
constexpr int kPredictors[2][2] = {{100, 120}, {140, 160}};

/// A code and what stands for it: bits of difference and, of those, how many are left out.
struct CodeRow {
  std::string_view code;
  int bits, dropped;
};
constexpr CodeRow kLossy[] = {{"00", 5, 0},         {"010", 4, 0},     {"011", 3, 0},       {"100", 6, 0},
                              {"101", 2, 0},        {"110", 7, 0},     {"1110", 1, 0},      {"11110", 0, 0},
                              {"111110", 8, 0},     {"1111110", 9, 0}, {"11111110", 11, 0}, {"111111110", 10, 0},
                              {"1111111110", 12, 0}};
constexpr CodeRow kAfterSplit[] = {{"00", 9, 3},         {"010", 10, 5},    {"011", 8, 3},      {"100", 7, 2},
                                   {"101", 6, 1},        {"110", 5, 0},     {"1110", 4, 0},     {"11110", 3, 0},
                                   {"111110", 2, 0},     {"1111110", 1, 0}, {"11111110", 0, 0}, {"111111110", 11, 0},
                                   {"1111111110", 12, 0}};
constexpr CodeRow kLossless[] = {{"00", 5, 0},      {"010", 4, 0},   {"011", 6, 0},     {"100", 3, 0},
                                 {"101", 7, 0},     {"1100", 2, 0},  {"1101", 8, 0},    {"11100", 1, 0},
                                 {"11101", 9, 0},   {"11110", 0, 0}, {"111110", 10, 0}, {"1111110", 11, 0},
                                 {"1111111", 12, 0}};

/// Bits, the first one highest.
class Bits {
 public:
  void Put(int value, int count) {
    for (int i = count - 1; i >= 0; --i) Bit((value >> i & 1) != 0);
  }
  void Put(std::string_view code) {
    for (const char c : code) Bit(c == '1');
  }
  std::string Take() {
    while (used_ != 0) Bit(false);
    return std::move(bytes_);
  }

 private:
  void Bit(bool one) {
    byte_ = byte_ * 2 + (one ? 1 : 0);
    if (++used_ < 8) return;
    bytes_ += static_cast<char>(byte_);
    byte_ = used_ = 0;
  }

  std::string bytes_;
  int byte_ = 0, used_ = 0;
};

/// The written bits of a difference and what a reader makes of them.
struct Coded {
  const CodeRow* row = nullptr;
  int bits = 0, decoded = 0;
};

Coded CodeWith(const CodeRow& row, int difference) {
  const int half = row.bits == 0 ? 0 : 1 << (row.bits - 1), whole = 1 << row.bits, exact = row.dropped == 0 ? 1 : 0;
  if (row.bits == 0) return {&row, 0, 0};
  const int stored =
      difference > 0 ? std::clamp(difference, half, whole - 1) : std::clamp(difference + whole - exact, 0, half - 1);
  const int bits = stored >> row.dropped;
  const int middle = (bits << row.dropped) + (row.dropped > 0 ? 1 << (row.dropped - 1) : 0);
  return {&row, bits, middle >= half ? middle : middle - whole + exact};
}

/// By the row that comes closest.
template <std::size_t N>
Coded Code(const CodeRow (&rows)[N], int difference) {
  Coded best;
  int error = std::numeric_limits<int>::max();
  for (const auto& row : rows) {
    const auto coded = CodeWith(row, difference);
    if (std::abs(coded.decoded - difference) >= error) continue;
    best = coded;
    error = std::abs(coded.decoded - difference);
  }
  return best;
}

/// Samples that the curve's coded values stand for; they lie further apart the brighter they are.
Samples CurveOf(NefStorage storage) {
  Samples curve(storage == NefStorage::Lossy ? kCurveEntries : 4096);
  if (storage == NefStorage::LossyWithSplit) {  // straight lines between points 64 apart
    const auto point = [](std::size_t i) { return i * i * 4032 / 4096 / 64 * 64 + i; };
    for (std::size_t i = 0; i < curve.size(); ++i) {
      const std::size_t p = i / 64, part = i % 64;
      curve[i] = static_cast<std::uint16_t>((point(p) * (64 - part) + point(p + 1) * part) / 64);
    }
    return curve;
  }
  const double top = static_cast<double>(curve.size() - 1);
  for (std::size_t i = 0; i < curve.size(); ++i) {
    const double part = static_cast<double>(i) / top;
    curve[i] = static_cast<std::uint16_t>(storage == NefStorage::Lossless ? static_cast<double>(i)
                                                                          : 4095 * (0.3 * part + 0.7 * part * part));
  }
  return curve;
}

class Coder {
 public:
  Coder(const NefFile& nef, const Samples& samples) : nef_(nef), samples_(samples), curve_(CurveOf(nef.storage)) {}

  std::string Run(Samples& decoded) {
    decoded.clear();
    for (int row = 0; row < nef_.height; ++row) {
      int before[2] = {};
      for (int column = 0; column < nef_.width; ++column) {
        int& start = column < 2 ? above_[row & 1][column] : before[column & 1];
        start = std::clamp(start + Put(row, Wanted(row, column) - start), 0, Last());
        before[column & 1] = start;
        decoded.push_back(curve_[static_cast<std::size_t>(start)]);
      }
    }
    return bits_.Take();
  }

 private:
  int Last() const { return static_cast<int>(curve_.size()) - 1; }
  int Wanted(int row, int column) const {
    const auto sample = samples_[static_cast<std::size_t>(row * nef_.width + column)];
    const auto place = std::ranges::lower_bound(curve_, sample) - curve_.begin();
    return std::min(static_cast<int>(place), Last());
  }
  int Put(int row, int difference) {
    const bool lower = nef_.storage == NefStorage::LossyWithSplit && row >= nef_.height / 2;
    const auto coded = nef_.storage == NefStorage::Lossless ? Code(kLossless, difference)
                       : lower                              ? Code(kAfterSplit, difference)
                                                            : Code(kLossy, difference);
    bits_.Put(coded.row->code);
    bits_.Put(coded.bits, coded.row->bits - coded.row->dropped);
    return coded.decoded;
  }

  const NefFile& nef_;
  const Samples& samples_;
  const Samples curve_;
  int above_[2][2] = {{kPredictors[0][0], kPredictors[0][1]}, {kPredictors[1][0], kPredictors[1][1]}};
  Bits bits_;
};

/// E5700 files hold the even rows and then the odd ones.
std::string Pack(const NefFile& nef, const Samples& samples) {
  Bits bits;
  const int fields = nef.model == "E5700" ? 2 : 1;
  for (int field = 0; field < fields; ++field) {
    for (int row = field; row < nef.height; row += fields) {
      for (int column = 0; column < nef.width; ++column) {
        bits.Put(samples[static_cast<std::size_t>(row * nef.width + column)], 12);
        if (nef.storage == NefStorage::PackedTens && column % 10 == 9) bits.Put(0, 8);
      }
    }
  }
  return bits.Take();
}

/// The predictors and the curve or its points.
std::string CurveBlock(const NefFile& nef, Endian order) {
  ByteString out(order);
  for (const auto& row : kPredictors) out.Short(static_cast<unsigned>(row[0])).Short(static_cast<unsigned>(row[1]));
  auto curve = CurveOf(nef.storage);
  if (nef.storage == NefStorage::LossyWithSplit) {
    Samples points;
    for (std::size_t i = 0; i < kSplitPoints - 1; ++i) points.push_back(curve[i * 64]);
    points.push_back(static_cast<std::uint16_t>(64 * 64 * 4032 / 4096 / 64 * 64 + 64));
    curve = points;
  }
  if (nef.storage == NefStorage::Lossless) curve.resize(1);
  out.Short(curve.size());
  for (const auto value : curve) out.Short(value);
  return out.Take();
}

/// The same behind its version.
std::string VersionedBlock(const NefFile& nef, Endian order) {
  ByteString out(order);
  if (nef.place == NefCurvePlace::BareNote) {
    out.Text("I1").Zeros(kOldHead).Text(CurveBlock(nef, order));
    return out.Take();
  }
  const bool split = nef.storage == NefStorage::LossyWithSplit;
  out.Text(nef.storage == NefStorage::Lossless ? "F0" : split ? "D " : "D\x10").Text(CurveBlock(nef, order));
  if (!split) return out.Take();
  auto bytes = out.Zeros(kSplitAt).Take();
  const auto row = ByteString(order).Short(static_cast<unsigned>(nef.height / 2)).Take();
  return bytes.replace(kSplitAt, row.size(), row);
}

TiffBuilder ExifOf(const NefFile& nef) {
  TiffBuilder exif(nef.order);
  exif.Rational(33434, 1, 125);
  if (nef.place == NefCurvePlace::BareNote) {
    exif.Note(37500, "", TiffBuilder(nef.order).Short(1, 200).Undefined(0x8C, VersionedBlock(nef, nef.order)));
  }
  if (nef.place == NefCurvePlace::HeadedNote) {
    const auto note =
        TiffBuilder(nef.order).Undefined(1, "0210").Undefined(0x96, VersionedBlock(nef, nef.order)).Build();
    exif.Undefined(37500, std::string("Nikon\0\2\x10\0\0", 10) + note);
  }
  return exif;
}

/// Room that takes in the places at which curves may stand.
constexpr std::size_t kRoom = 0x3000;
constexpr char kRoomByte = '\x55';

std::string PutFixedCurve(std::string file, const NefFile& nef) {
  const std::size_t at = nef.model == "NIKON D100" ? 0x1756 : 0xDA0;
  const auto block = CurveBlock(nef, nef.order);
  if (file.compare(at, block.size(), std::string(block.size(), kRoomByte)) != 0) {
    throw std::logic_error("no room for the curve");
  }
  return file.replace(at, block.size(), block);
}

std::vector<std::string> Cut(const std::string& data, int pieces) {
  std::vector<std::string> cut;
  const std::size_t length = (data.size() + static_cast<std::size_t>(pieces) - 1) / static_cast<std::size_t>(pieces);
  for (std::size_t at = 0; at < data.size(); at += length) cut.push_back(data.substr(at, length));
  return cut;
}

/// Red 0, green 1, blue 2 of a cell.
std::string FilterPattern(std::string_view model) {
  if (model == "NIKON D100") return {"\1\0\2\1", 4};
  return model == "NIKON D2H" ? std::string("\1\2\0\1", 4) : std::string("\2\1\1\0", 4);
}

void AddSensor(TiffBuilder& tiff, const NefFile& nef, const std::string& data) {
  const bool coded = nef.storage >= NefStorage::Lossy || nef.storage == NefStorage::PackedTens;
  const int width = nef.statedWidth == 0 ? nef.width : nef.statedWidth;
  tiff.Long(254, 0).Long(256, static_cast<unsigned>(width)).Long(257, static_cast<unsigned>(nef.height));
  tiff.Short(258, static_cast<unsigned>(nef.bitsPerSample)).Short(259, coded ? 0x8799 : 1).Short(262, 32803);
  tiff.Pieces(273, 279, Cut(data, nef.strips)).Short(277, 1).Short(33421, {2, 2});
  tiff.Long(278, static_cast<unsigned>((nef.height + nef.strips - 1) / nef.strips));
  if (nef.model != "E5700") tiff.Bytes(33422, FilterPattern(nef.model));
}

constexpr int kSkipped = 3;

void DropColumns(BuiltNef& built, int count) {
  const auto width = static_cast<std::size_t>(built.width), kept = width - static_cast<std::size_t>(count);
  Samples samples;
  for (std::size_t at = 0; at < built.samples.size(); at += width) {
    samples.insert(samples.end(), built.samples.begin() + static_cast<std::ptrdiff_t>(at),
                   built.samples.begin() + static_cast<std::ptrdiff_t>(at + kept));
  }
  built.samples = std::move(samples);
  built.width -= count;
}

}  // namespace

BuiltNef BuildNef(const NefFile& nef, const Samples& samples) {
  BuiltNef built{{}, samples, nef.width};
  const bool coded = nef.storage >= NefStorage::Lossy;
  const auto data = coded ? Coder(nef, samples).Run(built.samples) : Pack(nef, samples);
  TiffBuilder tiff(nef.order);
  tiff.Ascii(271, "NIKON").Ascii(272, nef.model + " ").Undefined(50000, std::string(kRoom, kRoomByte));
  if (nef.inFirstDirectory) {
    AddSensor(tiff, nef, data);
  } else {
    TiffBuilder sensor(nef.order);
    AddSensor(sensor, nef, data);
    const auto jpeg = TiffBuilder(nef.order).Long(254, 1).Short(259, 6).Long(513, 8).Long(514, 4);
    tiff.Short(258, {8, 8, 8}).SubDirectories({jpeg, sensor});
  }
  built.file = tiff.Directory(34665, ExifOf(nef)).Build();
  if (nef.storage == NefStorage::PackedTens) DropColumns(built, kSkipped);
  if (coded && nef.place == NefCurvePlace::Fixed) built.file = PutFixedCurve(built.file, nef);
  return built;
}

Samples NefScene(int width, int height, unsigned seed) {
  Samples samples;
  std::uint32_t noise = seed * 2654435761U + 1;
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      noise = noise * 1664525U + 1013904223U;
      const double waves = 1500 + 1200 * std::sin(x * 0.11) * std::cos(y * 0.07);
      const bool box = (x / 23 + y / 17) % 3 == 0;
      const int value = static_cast<int>(waves) + (box ? 1100 : 0) + static_cast<int>(noise >> 26) - 32;
      samples.push_back(static_cast<std::uint16_t>(std::clamp(value, 0, 4095)));
    }
  }
  return samples;
}

}  // namespace ml::test
