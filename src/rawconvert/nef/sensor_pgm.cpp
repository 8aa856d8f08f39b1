#include "rawconvert/nef/sensor_pgm.h"

#include <string>

namespace ml::rawconvert {

std::vector<std::byte> EncodePgm(const NefSensor& sensor) {
  const auto head = "P5\n" + std::to_string(sensor.width) + ' ' + std::to_string(sensor.height) + "\n65535\n";
  std::vector<std::byte> file(head.size() + sensor.samples.size() * 2);
  auto out = file.begin();
  for (const char c : head) *out++ = static_cast<std::byte>(c);
  for (const auto sample : sensor.samples) {
    *out++ = static_cast<std::byte>(sample >> 8);
    *out++ = static_cast<std::byte>(sample & 0xff);
  }
  return file;
}

}  // namespace ml::rawconvert
