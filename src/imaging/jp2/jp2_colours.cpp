#include "imaging/jp2/jp2_colours.h"

#include <algorithm>
#include <cmath>

namespace ml::imaging {
namespace {

using Line = std::vector<int>;

/// A component's samples at the places of the picture.
class Plane {
 public:
  Plane(const Jp2Component& component, PictureSize size)
      : component_(component), height_(size.height), columns_(static_cast<std::size_t>(size.width)) {
    for (int x = 0; x < size.width; ++x) {
      const auto column = static_cast<long long>(x) * component.width / size.width;
      columns_[static_cast<std::size_t>(x)] = static_cast<std::size_t>(column);
    }
  }

  /// Fills `line`, as long as the picture is wide, with row `y` as 0..255.
  void Read(int y, Line& line) const {
    const auto row = static_cast<long long>(y) * component_.height / height_;
    const auto* samples = component_.samples + row * component_.width;
    const long long most = (1LL << component_.bits) - 1;
    const long long offset = component_.isSigned ? (most + 1) / 2 : 0;
    for (std::size_t x = 0; x < line.size(); ++x) {
      const auto sample = std::clamp(samples[columns_[x]] + offset, 0LL, most);
      line[x] = static_cast<int>(component_.bits >= 8 ? sample >> (component_.bits - 8) : sample * 255 / most);
    }
  }

 private:
  const Jp2Component& component_;
  int height_;
  std::vector<std::size_t> columns_;
};

std::byte Clamped(double sample) { return static_cast<std::byte>(std::clamp(std::lround(sample), 0L, 255L)); }

void PutYcc(int luma, int blue, int red, std::byte* out) {
  out[0] = Clamped(luma + 1.402 * (red - 128));
  out[1] = Clamped(luma - 0.344136 * (blue - 128) - 0.714136 * (red - 128));
  out[2] = Clamped(luma + 1.772 * (blue - 128));
}

void PutInks(const std::vector<Line>& lines, std::size_t x, std::byte* out) {
  for (std::size_t i = 0; i < 3; ++i) {
    out[i] = static_cast<std::byte>(Multiply255(255 - lines[i][x], 255 - lines[3][x]));
  }
}

void PutRow(const std::vector<Line>& lines, Jp2Colours colours, std::byte* out) {
  for (std::size_t x = 0; x < lines[0].size(); ++x, out += 3) {
    if (colours == Jp2Colours::Ycc) {
      PutYcc(lines[0][x], lines[1][x], lines[2][x], out);
    } else if (colours == Jp2Colours::Cmyk) {
      PutInks(lines, x, out);
    } else {
      const std::size_t step = colours == Jp2Colours::Grey ? 0 : 1;
      for (std::size_t i = 0; i < 3; ++i) out[i] = static_cast<std::byte>(lines[i * step][x]);
    }
  }
}

void BlendOverWhite(const Line& opacity, std::byte* out) {
  for (const int value : opacity) {
    for (int i = 0; i < 3; ++i, ++out) *out = static_cast<std::byte>(OverWhite(std::to_integer<int>(*out), value));
  }
}

/// What the colour components can be shown as.
Jp2Colours Decide(const std::vector<const Jp2Component*>& parts, Jp2Colours said) {
  if (parts.size() < 3) return Jp2Colours::Grey;
  if (said == Jp2Colours::Cmyk && parts.size() >= 4) return Jp2Colours::Cmyk;
  if (said == Jp2Colours::Ycc || said == Jp2Colours::Grey) return said;
  const bool smaller = parts[1]->width < parts[0]->width || parts[1]->height < parts[0]->height;
  return said == Jp2Colours::Unknown && smaller ? Jp2Colours::Ycc : Jp2Colours::Rgb;
}

}  // namespace

PixelBuffer CombineComponents(const std::vector<Jp2Component>& components, Jp2Colours colours) {
  std::vector<const Jp2Component*> parts;
  const Jp2Component* opacity = nullptr;
  PictureSize size;
  for (const auto& component : components) {
    if (component.opacity && opacity == nullptr && components.size() > 1)
      opacity = &component;
    else
      parts.push_back(&component);
    size = {std::max(size.width, component.width), std::max(size.height, component.height)};
  }
  colours = Decide(parts, colours);
  parts.resize(colours == Jp2Colours::Grey ? 1 : colours == Jp2Colours::Cmyk ? 4 : 3);
  if (opacity != nullptr) parts.push_back(opacity);

  std::vector<Plane> planes;
  for (const auto* part : parts) planes.emplace_back(*part, size);
  std::vector<Line> lines(planes.size(), Line(static_cast<std::size_t>(size.width)));
  auto pixels = MakePixelBuffer(size.width, size.height);
  for (int y = 0; y < size.height; ++y) {
    for (std::size_t i = 0; i < planes.size(); ++i) planes[i].Read(y, lines[i]);
    PutRow(lines, colours, pixels.Row(y));
    if (opacity != nullptr) BlendOverWhite(lines.back(), pixels.Row(y));
  }
  return pixels;
}

}  // namespace ml::imaging
