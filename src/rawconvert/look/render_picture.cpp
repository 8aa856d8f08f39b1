#include "rawconvert/look/render_picture.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "imaging/row_bands.h"
#include "rawconvert/look/row_filters.h"
#include "rawconvert/look/tone_curve.h"

namespace ml::rawconvert {
namespace {

constexpr float kWhite = 65535.0F;
/// Added before what is behind the point is dropped, which vectors do and std::lround does not.
constexpr float kRounding = 0.5F;
/// From here to the limit, where a pixel has lost its colours, it goes over to white.
constexpr float kBlownFrom = 0.7F * kWhite;
/// Differences well below this many steps of 65536 are taken for noise and not sharpened.
constexpr float kNoiseStep = 350.0F;
/// Of the sharpening objects very coarse .. very fine.
constexpr std::array kBlurs = {BlurWeights{0.26F, 0.22F, 0.15F}, BlurWeights{0.375F, 0.25F, 0.0625F},
                               BlurWeights{0.5F, 0.25F, 0.0F}, BlurWeights{0.6667F, 0.16665F, 0.0F},
                               BlurWeights{0.8F, 0.1F, 0.0F}};

/// One row as planes.
struct Planes {
  int y = -1;
  std::array<std::vector<float>, 4> plane;

  void Size(std::size_t samples) {
    for (auto& p : plane) p.resize(samples);
  }
};

/// What is the same for all rows.
struct Plan {
  SensorPicture picture;
  PictureLook look;
  SensorMatrix light;
  Matrix3 shown;
  std::vector<std::uint16_t> curve = {};
  float scale = 1;  ///< from the sums of the light matrix to steps of the curve, or of the result
  float blown = 0;  ///< what is added to the scale, as its share, where nothing but white is left
  BlurWeights blur{};
  bool filter = false;
  bool sharpen = false;
  int bytesPerSample = 1;
};

Plan MakePlan(const SensorPicture& picture, const RenderOrder& order) {
  const auto& look = order.look;
  Plan plan{.picture = picture,
            .look = look,
            .light = LightMatrix(order.toSrgb, look),
            .shown = ShownMatrix(look),
            .blur = kBlurs[static_cast<std::size_t>(std::clamp(look.sharpeningRadius, 1, 5) - 1)],
            .filter = look.falseColourFilter && picture.colours == 3,
            .sharpen = look.sharpening > 0 && !look.linear,
            .bytesPerSample = order.bytesPerSample};
  const auto exposure = static_cast<float>(std::exp2(look.exposureTenths / 10.0));
  plan.scale = exposure;
  if (!look.linear) {
    plan.curve = MakeToneCurve(look.contrast);
    plan.scale = exposure * order.gain;
    plan.blown = std::max(0.0F, 1 / order.gain - 1);
  }
  return plan;
}

/// Makes rows of the result one after the other; keeps those around, which filters look at.
class RowMaker {
 public:
  explicit RowMaker(const Plan& plan)
      : plan_(plan), width_(static_cast<std::size_t>(plan.picture.shownWidth)), wide_(width_ + 2 * kRowMargin) {
    for (auto& row : sources_) row.Size(wide_);
    for (auto& row : shown_) row.Size(wide_);
    mixed_.Size(width_);
    sorted_.resize(3 * wide_);
    blurred_.resize(width_);
    steps_.resize(3 * width_);
  }

  void Make(int y, std::byte* out) {
    const auto& row = Shown(y);
    if (plan_.sharpen) Sharpen(y, row);
    if (plan_.bytesPerSample == 2) {
      Store<std::uint16_t>(row, out);
    } else {
      Store<std::uint8_t>(row, out);
    }
  }

 private:
  /// Sensor colours; with the filter, green and the differences of red and blue from it.
  const Planes& Source(int y);
  /// Red, green, blue and, where it is to be sharpened, luma, as they are shown.
  const Planes& Shown(int y);
  const Planes& Filtered(int y);
  void Light(const Planes& source, std::size_t margin);
  void Show(Planes& row);
  void AddLuma(Planes& row) const;
  void Sharpen(int y, const Planes& row);
  template <class T>
  void Store(const Planes& row, std::byte* out);

  const Plan& plan_;
  std::size_t width_, wide_;
  std::array<Planes, 3> sources_;
  std::array<Planes, 5> shown_;
  Planes mixed_;
  std::vector<float> sorted_, blurred_;
  std::vector<std::int32_t> steps_;  ///< of the curve, a row for each colour
};

const Planes& RowMaker::Source(int y) {
  const auto& picture = plan_.picture;
  y = std::clamp(y, 0, picture.height - 1);
  auto& row = sources_[static_cast<std::size_t>(y) % sources_.size()];
  if (row.y == y) return row;
  row.y = y;
  auto& [red, green, blue, fourth] = row.plane;
  for (std::size_t x = 0; x < wide_; ++x) {
    const int at = std::clamp(picture.left + static_cast<int>(x) - static_cast<int>(kRowMargin), 0, picture.width - 1);
    const auto* pixel = picture.Pixel(at, y);
    red[x] = pixel[0];
    green[x] = pixel[1];
    blue[x] = pixel[2];
    fourth[x] = picture.colours > 3 ? static_cast<float>(pixel[3]) : 0;
  }
  if (plan_.filter) {
    for (std::size_t x = 0; x < wide_; ++x) {
      red[x] -= green[x];
      blue[x] -= green[x];
    }
  }
  return row;
}

const Planes& RowMaker::Filtered(int y) {
  const auto& above = Source(y - 1);
  const auto& here = Source(y);
  const auto& below = Source(y + 1);
  auto& [red, green, blue, fourth] = mixed_.plane;
  MedianOfNine({above.plane[0].data(), here.plane[0].data(), below.plane[0].data()}, sorted_, red);
  MedianOfNine({above.plane[2].data(), here.plane[2].data(), below.plane[2].data()}, sorted_, blue);
  for (std::size_t x = 0; x < width_; ++x) {
    green[x] = here.plane[1][x + kRowMargin];
    red[x] = std::max(0.0F, red[x] + green[x]);
    blue[x] = std::max(0.0F, blue[x] + green[x]);
  }
  return mixed_;
}

void RowMaker::Light(const Planes& source, std::size_t margin) {
  const auto& m = plan_.light;
  const float* red = source.plane[0].data() + margin;
  const float* green = source.plane[1].data() + margin;
  const float* blue = source.plane[2].data() + margin;
  const float* fourth = source.plane[3].data() + margin;
  const float scale = plan_.scale, blown = plan_.blown * scale;
  std::int32_t* out = steps_.data();
  for (std::size_t x = 0; x < width_; ++x) {
    const float least = std::min(std::min(red[x], green[x]), blue[x]);
    const float white = std::max(0.0F, (least - kBlownFrom) / (kWhite - kBlownFrom));
    const float factor = scale + blown * white * white;
    for (std::size_t c = 0; c < 3; ++c) {
      const float sum = m[c][0] * red[x] + m[c][1] * green[x] + m[c][2] * blue[x] + m[c][3] * fourth[x];
      out[c * width_ + x] = static_cast<std::int32_t>(std::clamp(sum * factor, 0.0F, kWhite) + kRounding);
    }
  }
}

void RowMaker::Show(Planes& row) {
  const auto& n = plan_.shown;
  float* red = row.plane[0].data() + kRowMargin;
  float* green = row.plane[1].data() + kRowMargin;
  float* blue = row.plane[2].data() + kRowMargin;
  const std::int32_t* steps = steps_.data();
  if (plan_.look.linear) {
    for (std::size_t x = 0; x < width_; ++x) {
      red[x] = static_cast<float>(steps[x]);
      green[x] = static_cast<float>(steps[width_ + x]);
      blue[x] = static_cast<float>(steps[2 * width_ + x]);
    }
    return;
  }
  const std::uint16_t* curve = plan_.curve.data();
  for (std::size_t x = 0; x < width_; ++x) {
    red[x] = curve[steps[x]];
    green[x] = curve[steps[width_ + x]];
    blue[x] = curve[steps[2 * width_ + x]];
  }
  for (std::size_t x = 0; x < width_; ++x) {
    const float r = red[x], g = green[x], b = blue[x];
    red[x] = std::clamp(n[0][0] * r + n[0][1] * g + n[0][2] * b, 0.0F, kWhite);
    green[x] = std::clamp(n[1][0] * r + n[1][1] * g + n[1][2] * b, 0.0F, kWhite);
    blue[x] = std::clamp(n[2][0] * r + n[2][1] * g + n[2][2] * b, 0.0F, kWhite);
  }
}

void RowMaker::AddLuma(Planes& row) const {
  const auto& [red, green, blue, unused] = row.plane;
  auto& luma = row.plane[3];
  for (std::size_t x = kRowMargin; x < width_ + kRowMargin; ++x) {
    luma[x] = 0.299F * red[x] + 0.587F * green[x] + 0.114F * blue[x];
  }
  for (std::size_t i = 0; i < kRowMargin; ++i) {
    luma[i] = luma[kRowMargin];
    luma[width_ + kRowMargin + i] = luma[width_ + kRowMargin - 1];
  }
}

const Planes& RowMaker::Shown(int y) {
  y = std::clamp(y, 0, plan_.picture.shownHeight - 1);
  auto& row = shown_[static_cast<std::size_t>(y) % shown_.size()];
  if (row.y == y) return row;
  row.y = y;
  const int source = plan_.picture.top + y;
  if (plan_.filter) {
    Light(Filtered(source), 0);
  } else {
    Light(Source(source), kRowMargin);
  }
  Show(row);
  if (plan_.sharpen) AddLuma(row);
  return row;
}

/// Leaves in blurred_ what is to be added to each pixel of the row.
void RowMaker::Sharpen(int y, const Planes& row) {
  std::array<const float*, 5> rows{};
  for (int i = 0; i < 5; ++i) rows[static_cast<std::size_t>(i)] = Shown(y + i - 2).plane[3].data();
  BlurFive(rows, plan_.blur, std::span(sorted_).first(wide_), blurred_);
  const auto amount = static_cast<float>(plan_.look.sharpening);
  const float* luma = row.plane[3].data() + kRowMargin;
  for (std::size_t x = 0; x < width_; ++x) {
    const float difference = luma[x] - blurred_[x], square = difference * difference;
    blurred_[x] = amount * difference * square / (square + kNoiseStep * kNoiseStep);
  }
}

template <class T>
void RowMaker::Store(const Planes& row, std::byte* out) {
  const float* red = row.plane[0].data() + kRowMargin;
  const float* green = row.plane[1].data() + kRowMargin;
  const float* blue = row.plane[2].data() + kRowMargin;
  // The high byte of 16 bits, as everyone who reduces a picture later takes it.
  const auto sample = [](float value) {
    const auto wide = static_cast<std::int32_t>(std::clamp(value, 0.0F, kWhite) + kRounding);
    return static_cast<T>(sizeof(T) == 2 ? wide : wide >> 8);
  };
  for (std::size_t x = 0; x < width_; ++x) {
    const float more = plan_.sharpen ? blurred_[x] : 0;
    const std::array<T, 3> pixel = {sample(red[x] + more), sample(green[x] + more), sample(blue[x] + more)};
    std::memcpy(out + x * sizeof(pixel), pixel.data(), sizeof(pixel));
  }
}

}  // namespace

imaging::PixelBuffer RenderPicture(const SensorPicture& picture, const RenderOrder& order,
                                   const std::stop_token& stop) {
  const auto plan = MakePlan(picture, order);
  auto result =
      imaging::MakePixelBuffer(picture.shownWidth, picture.shownHeight, imaging::PixelOrder::Rgb, order.bytesPerSample);
  imaging::ForRowBands(
      picture.shownHeight,
      [&](int first, int end) {
        RowMaker maker(plan);
        for (int y = first; y < end; ++y) maker.Make(y, result.Row(y));
      },
      stop);
  return result;
}

}  // namespace ml::rawconvert
