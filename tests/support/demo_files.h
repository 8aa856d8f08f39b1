#pragma once

#include <functional>
#include <string>
#include <vector>

namespace ml::test {

struct DemoFile {
  std::string name, content;
};

/// A block of IPTC data as an agency would want it, on every page of a sheet.
std::string DemoTexts(const std::string& title);

/// One or two files of every kind but JPEG, named as cameras and people name them, companions beside those that
/// have some. Numbers of pictures go on from `first`; `dateOf` tells when each was taken, in EXIF's form.
std::vector<DemoFile> OtherKinds(int first, const std::function<std::string(int number)>& dateOf);

}  // namespace ml::test
