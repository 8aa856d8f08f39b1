#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// The blocks that one format after the other carries: IPTC, image resources, XMP and ICC profiles.
namespace ml::test {

struct IptcEntry {
  int dataset = 0;
  std::string value{};
  int record = 2;
};
/// Datasets one behind the other, without a version dataset and without padding.
std::string IptcBlock(const std::vector<IptcEntry>& entries);

struct ImageResource {
  int id = 0;
  std::string data{};
  std::string name{};
};
/// The resources with their 8BIM heads, each padded to even.
std::string ImageResources(const std::vector<ImageResource>& resources);

/// A packet with the description and whatever elements follow it.
std::string XmpPacket(std::string_view description, std::string_view elements = "");
/// Elements that tell of a shot, of each form that readers know.
std::string XmpShot();

/// A matrix profile of a monitor with the primaries of sRGB and a gamma of 2.2.
/// `size` asks for unused bytes behind the tags, where that is more than the tags need.
std::string IccProfile(std::string_view description, std::size_t size = 0);

}  // namespace ml::test
