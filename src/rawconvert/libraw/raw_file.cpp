#include "rawconvert/libraw/raw_file.h"

#include <libraw/libraw.h>

#include <algorithm>
#include <cstring>
#include <optional>
#include <string_view>
#include <vector>

#include "platform/errors.h"
#include "platform/readable_file.h"
#include "rawconvert/develop_error.h"
#include "rawconvert/libraw/crw_preview_balance.h"
#include "rawconvert/libraw/sensor_samples.h"
#include "rawconvert/look/render_picture.h"

namespace ml::rawconvert {
namespace {

constexpr unsigned kMaxRawMemoryMiB = 512;
constexpr std::uint64_t kMaxFile = std::uint64_t{768} << 20;
/// The closest packing has more than a bit a pixel. A file far below was cut off.
constexpr long long kMaxPixelsPerByte = 32;
constexpr std::uint32_t kNoMemory = 3;
/// The interpolation by which pixels get their missing colours: adaptive by homogeneity.
constexpr int kAdaptive = 3;
/// Percentage at which our own steps begin.
constexpr int kRenderFrom = 85;

struct StageRow {
  LibRaw_progress stage;
  int from, to;  ///< percent
};
constexpr StageRow kStages[] = {{LIBRAW_PROGRESS_LOAD_RAW, 0, 15},
                                {LIBRAW_PROGRESS_SCALE_COLORS, 20, 25},
                                {LIBRAW_PROGRESS_PRE_INTERPOLATE, 25, 30},
                                {LIBRAW_PROGRESS_INTERPOLATE, 30, kRenderFrom}};

/// Where sensors saturate below what their samples could hold, and the library does not know it. Without it what is
/// blown would not be white.
struct LimitRow {
  std::string_view model;
  unsigned limit;
};
constexpr LimitRow kLimits[] = {{"EOS D30", 3790}};

std::uint32_t CodeOf(int result, bool known) {
  switch (result) {
    case LIBRAW_FILE_UNSUPPORTED:
      return known ? develop_code::kUnsupported : develop_code::kInvalid;
    case LIBRAW_NOT_IMPLEMENTED:
      return develop_code::kUnsupported;
    case LIBRAW_UNSUFFICIENT_MEMORY:
    case LIBRAW_TOO_BIG:
    case LIBRAW_MEMPOOL_OVERFLOW:
      return kNoMemory;
    case LIBRAW_DATA_ERROR:
      return develop_code::kCorrupt;
    default:
      return develop_code::kInvalid;
  }
}

}  // namespace

/// The library's object, with the rows of its colour step left to ours; 766 KB, so never on the stack.
class RawFile::Decoder final : public LibRaw {
 public:
  explicit Decoder(std::vector<std::byte> file) : file_(std::move(file)) {
    set_dataerror_handler([](void*, const char*, auto) {}, nullptr);  // the usual ones print
    set_memerror_handler([](void*, const char*, const char*) {}, nullptr);
    set_progress_handler(OnProgress, this);
    Reopen();
  }

  imaging::PictureSize Size() const { return {shown_.width, shown_.height}; }
  void Prepare(const DevelopWatch& watch);
  RawResult Develop(const RawOrder& order, const DevelopWatch& watch);

 private:
  /// Lets a caller watch for as long as it lives.
  struct Watching {
    Decoder& decoder;
    Watching(Decoder& self, const DevelopWatch& watch) : decoder(self) { decoder.watch_ = &watch; }
    ~Watching() { decoder.watch_ = nullptr; }
    Watching(const Watching&) = delete;
    Watching& operator=(const Watching&) = delete;
  };
  /// Where the picture lies in what the library takes for it.
  struct Shown {
    int left = 0, top = 0, width = 0, height = 0;
  };

  void convert_to_rgb_loop(float out_cam[3][4]) override {
    for (std::size_t row = 0; row < 3; ++row) {
      for (std::size_t column = 0; column < 4; ++column) toSrgb_[row][column] = out_cam[row][column];
    }
  }

  /// What the pixels that the library holds were made with.
  struct Interpolated {
    bool small = false;
    WhiteBalanceCoefficients asked;  ///< not known where the library chose
    WhiteBalanceCoefficients taken;
  };

  static int OnProgress(void* self, LibRaw_progress stage, int done, int all);
  void Check(int result);
  void Reopen();
  void Unpack();
  void FindShown();
  WhiteBalanceFacts Facts() const;
  SensorSamples Samples() const;
  std::optional<WhiteBalanceCoefficients> Measured(const WhiteBalanceChoice& choice) const;
  void SetParameters(const RawOrder& order);
  /// Makes pixels of the samples as the parameters say, unless they are there.
  void Interpolate();
  SensorPicture Picture(bool small) const;

  std::vector<std::byte> file_;
  bool opened_ = false, unpacked_ = false;
  std::optional<Interpolated> interpolated_;
  Shown shown_;
  SensorMatrix toSrgb_{};
  const DevelopWatch* watch_ = nullptr;
};

int RawFile::Decoder::OnProgress(void* self, LibRaw_progress stage, int done, int all) {
  const auto* watch = static_cast<Decoder*>(self)->watch_;
  if (watch == nullptr) return 0;
  if (watch->stop.stop_requested()) return 1;
  for (const auto& row : kStages) {
    if (row.stage != stage || watch->progress == nullptr || all <= 0) continue;
    watch->progress->percent(row.from + (row.to - row.from) * std::clamp(done, 0, all) / all);
  }
  return 0;
}

void RawFile::Decoder::Check(int result) {
  if (result == LIBRAW_SUCCESS) return;
  const bool known = imgdata.idata.model[0] != 0;
  opened_ = unpacked_ = false;  // the library has let go of the file
  if (result == LIBRAW_CANCELLED_BY_CALLBACK || (watch_ != nullptr && watch_->stop.stop_requested())) {
    throw platform::Cancelled();
  }
  throw DevelopError(CodeOf(result, known));
}

void RawFile::Decoder::Reopen() {
  recycle();
  clearCancelFlag();
  Check(open_buffer(file_.data(), file_.size()));
  opened_ = true;
  const auto& sizes = imgdata.sizes;
  const auto pixels = static_cast<long long>(sizes.raw_width) * sizes.raw_height;
  if (pixels > imaging::kMaxPixelsWhole) throw DevelopError(kNoMemory);
  if (pixels <= 0 || static_cast<long long>(file_.size()) * kMaxPixelsPerByte < pixels || imgdata.idata.colors < 3) {
    throw DevelopError(develop_code::kInvalid);
  }
  FindShown();
}

void RawFile::Decoder::FindShown() {
  const auto& sizes = imgdata.sizes;
  const auto& sensor = imgdata.makernotes.canon;
  shown_ = {0, 0, sizes.width, sizes.height};
  const int left = sensor.SensorLeftBorder - sizes.left_margin, top = sensor.SensorTopBorder - sizes.top_margin;
  const int width = sensor.SensorRightBorder - sensor.SensorLeftBorder + 1;
  const int height = sensor.SensorBottomBorder - sensor.SensorTopBorder + 1;
  // The camera's own picture, which is what the shooting data tell the size of.
  const bool inside = left >= 0 && top >= 0 && left + width <= sizes.width && top + height <= sizes.height;
  if (inside && width > 16 && height > 16) shown_ = {left, top, width, height};
}

void RawFile::Decoder::Unpack() {
  if (!opened_) Reopen();
  if (unpacked_) return;
  const std::stop_callback cancel(watch_->stop, [this] { setCancelFlag(); });
  Check(unpack());
  if (error_count() > 0) throw DevelopError(develop_code::kCorrupt);
  for (const auto& row : kLimits) {
    if (row.model == imgdata.idata.model) imgdata.rawdata.color.maximum = row.limit;
  }
  unpacked_ = true;
}

WhiteBalanceFacts RawFile::Decoder::Facts() const {
  const auto& colour = imgdata.rawdata.color;
  WhiteBalanceFacts facts;
  facts.colours = std::clamp(imgdata.rawdata.iparams.colors, 3, 4);
  if (colour.cam_mul[0] > 0 && colour.cam_mul[1] > 0 && colour.cam_mul[2] > 0) {
    std::copy_n(colour.cam_mul, 4, facts.asShot.multipliers.begin());
  }
  for (std::size_t i = 0; i < facts.presets.size(); ++i) {
    const auto* preset = colour.WB_Coeffs[i];
    if (preset[0] <= 0 || preset[1] <= 0 || preset[2] <= 0) continue;
    for (std::size_t c = 0; c < 4; ++c) facts.presets[i].multipliers[c] = static_cast<float>(preset[c]);
  }
  for (std::size_t row = 0; row < 4; ++row) {
    for (std::size_t column = 0; column < 3; ++column) {
      facts.sensorOfXyz[row][column] = static_cast<double>(colour.cam_xyz[row][column]);
    }
  }
  return facts;
}

SensorSamples RawFile::Decoder::Samples() const {
  const auto& raw = imgdata.rawdata;
  SensorSamples samples;
  samples.pitch = raw.sizes.raw_pitch / sizeof(std::uint16_t);
  samples.first = raw.raw_image + static_cast<std::size_t>(raw.sizes.top_margin + shown_.top) * samples.pitch +
                  static_cast<std::size_t>(raw.sizes.left_margin + shown_.left);
  samples.width = shown_.width;
  samples.height = shown_.height;
  // The pattern starts at the corner of what the library takes for the picture.
  samples.oddRow = shown_.top & 7;
  samples.oddColumn = shown_.left & 1;
  samples.pattern = raw.iparams.filters;
  for (std::size_t c = 0; c < 4; ++c) samples.black[c] = static_cast<double>(raw.color.black) + raw.color.cblack[c];
  samples.white = std::max(1.0, static_cast<double>(raw.color.maximum) - raw.color.black);
  return samples;
}

std::optional<WhiteBalanceCoefficients> RawFile::Decoder::Measured(const WhiteBalanceChoice& choice) const {
  constexpr unsigned leastPattern = 1000;  // below are sensors with other patterns than two columns
  if (imgdata.rawdata.raw_image == nullptr || imgdata.rawdata.iparams.filters < leastPattern) return std::nullopt;
  if (choice.code == -1) return MakeGrey(Samples(), choice.point);
  if (choice.code == 0 || imgdata.rawdata.iparams.colors != 3) return std::nullopt;
  SensorMatrix toSrgb{};
  for (std::size_t row = 0; row < 3; ++row) std::copy_n(imgdata.rawdata.color.rgb_cam[row], 4, toSrgb[row].begin());
  return BalanceOfCrwPreview(file_, Samples(), toSrgb);
}

void RawFile::Decoder::SetParameters(const RawOrder& order) {
  auto& params = imgdata.params;
  params.half_size = order.small ? 1 : 0;
  params.user_qual = kAdaptive;
  params.no_auto_bright = 1;
  params.adjust_maximum_thr = 0;  // white is the sensor's limit, not what a picture happens to hold
  params.user_flip = 0;
  params.output_color = 1;
  params.max_raw_memory_mb = kMaxRawMemoryMiB;
  params.use_camera_wb = 0;
  auto multipliers = MultipliersFor(order.whiteBalance, Facts());
  if (!multipliers) multipliers = Measured(order.whiteBalance);
  params.use_auto_wb = multipliers ? 0 : 1;
  std::fill_n(params.user_mul, 4, 0.0F);
  if (multipliers) std::copy_n(multipliers->multipliers.begin(), 4, params.user_mul);
}

void RawFile::Decoder::Interpolate() {
  WhiteBalanceCoefficients asked;
  std::copy_n(imgdata.params.user_mul, 4, asked.multipliers.begin());
  const bool small = imgdata.params.half_size != 0;
  // The second render of a picture and previews with another look only differ in what is ours.
  if (interpolated_ && interpolated_->small == small &&
      (interpolated_->asked == asked || interpolated_->taken == asked)) {
    return;
  }
  interpolated_.reset();
  free_image();
  const std::stop_callback cancel(watch_->stop, [this] { setCancelFlag(); });
  Check(dcraw_process());
  WhiteBalanceCoefficients taken;
  std::copy_n(imgdata.color.pre_mul, 4, taken.multipliers.begin());
  if (taken.multipliers[3] <= 0) taken.multipliers[3] = taken.multipliers[1];
  interpolated_ = {small, asked, taken};
}

SensorPicture RawFile::Decoder::Picture(bool small) const {
  const int part = small ? 2 : 1;
  SensorPicture picture{.samples = imgdata.image[0],
                        .width = imgdata.sizes.iwidth,
                        .height = imgdata.sizes.iheight,
                        .colours = imgdata.rawdata.iparams.colors,
                        .left = shown_.left / part,
                        .top = shown_.top / part};
  picture.shownWidth = std::min(shown_.width / part, picture.width - picture.left);
  picture.shownHeight = std::min(shown_.height / part, picture.height - picture.top);
  return picture;
}

void RawFile::Decoder::Prepare(const DevelopWatch& watch) {
  const Watching watching(*this, watch);
  Unpack();
}

RawResult RawFile::Decoder::Develop(const RawOrder& order, const DevelopWatch& watch) {
  const Watching watching(*this, watch);
  if (watch.stop.stop_requested()) throw platform::Cancelled();
  Unpack();
  SetParameters(order);
  Interpolate();
  RawResult result{.pixels = {}, .coefficients = interpolated_->taken};
  auto look = order.look;
  if (order.small) look.sharpening = 0;
  result.pixels = RenderPicture(Picture(order.small),
                                {.look = look,
                                 .toSrgb = toSrgb_,
                                 .gain = CameraGain(imgdata.idata.model),
                                 .bytesPerSample = order.bytesPerSample},
                                watch.stop);
  if (watch.progress != nullptr) watch.progress->percent(100);
  return result;
}

RawFile::RawFile(std::unique_ptr<Decoder> decoder) : decoder_(std::move(decoder)) {}
RawFile::~RawFile() = default;

std::unique_ptr<RawFile> RawFile::Open(const std::string& path) {
  const auto file = platform::OpenIfReadable(path);
  if (!file) return nullptr;
  if (file->Size() > kMaxFile) throw DevelopError(kNoMemory);
  if (file->Size() == 0) throw DevelopError(develop_code::kInvalid);
  return std::unique_ptr<RawFile>(new RawFile(std::make_unique<Decoder>(file->Range(0, file->Size()))));
}

void RawFile::Prepare(const std::stop_token& stop) { decoder_->Prepare({.progress = nullptr, .stop = stop}); }

imaging::PictureSize RawFile::Size() const { return decoder_->Size(); }

RawResult RawFile::Develop(const RawOrder& order, const DevelopWatch& watch) { return decoder_->Develop(order, watch); }

}  // namespace ml::rawconvert
