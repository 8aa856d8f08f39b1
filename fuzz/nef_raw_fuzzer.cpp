#include "fuzz_source.h"
#include "rawconvert/nef/develop_nef.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace ml::rawconvert;
  constexpr int kMostSites = 1 << 16;  // more tell nothing new and take long
  Refusable([&] {
    const auto sensor = ReadNefSensor(FuzzSource(data, size), "fuzz.nef");
    if (sensor.width * sensor.height > kMostSites) return;
    // A byte of the file chooses the settings; a D1X picture is always large.
    const int choice = data[size / 2];
    const NefSettings settings{.tone = choice % 2 == 0 ? NefTone::Normal : NefTone::Linear,
                               .whiteBalance = choice % 16 - 1,
                               .customX = choice * 97 - 4000,
                               .customY = choice * 31,
                               .saturation = choice % 3 - 1};
    DevelopNefSmall(sensor, settings);
    if (sensor.camera.index != kNefD1X) DevelopNef(sensor, settings);
  });
  return 0;
}
