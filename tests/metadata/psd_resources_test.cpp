#include "metadata/psd_resources.h"

#include <gtest/gtest.h>

#include "memory.h"
#include "support/metadata_blocks.h"
#include "support/psd_builder.h"

namespace ml::metadata {
namespace {

const std::string kResources = test::ImageResources(
    {{.id = 1005, .data = "odd"}, {.id = 1028, .data = "iptc", .name = "ab"}, {.id = 1039, .data = ""}});

std::string Psd() { return test::EncodePsd(test::PaintPlain(6, 4, 0x123456), {.bits = 16, .resources = kResources}); }

std::vector<PsdResource> Resources(const std::string& area) {
  return ReadPsdResources(SourceOf(area), {0, area.size()});
}

TEST(PsdFileTest, TellsSizeAndSections) {
  const auto bytes = Psd();
  const auto file = ReadPsdFile(SourceOf(bytes));
  ASSERT_TRUE(file);
  EXPECT_EQ(std::tuple(file->width, file->height, file->channels, file->depth, file->mode),
            std::tuple(6, 4, 3, 16, PsdMode::Rgb));
  EXPECT_EQ(bytes.size() - file->mergedImage, 2U + 6 * 4 * 3 * 2);
  ASSERT_EQ(file->resources.size(), 3U);
  const auto* iptc = FindPsdResource(file->resources, psd_resource::kIptc);
  ASSERT_NE(iptc, nullptr);
  EXPECT_EQ(bytes.substr(iptc->data.position, iptc->data.size), "iptc");
  EXPECT_EQ(bytes.substr(iptc->position, 4), "8BIM");
}

TEST(PsdFileTest, OtherVersionsAndFilesAreRefused) {
  for (const auto& [at, byte] : {std::pair{0, 'X'}, {5, '\2'}, {14, '\x80'}}) {
    auto bytes = Psd();
    bytes[static_cast<std::size_t>(at)] = byte;
    EXPECT_FALSE(ReadPsdFile(SourceOf(bytes))) << at;
  }
}

TEST(PsdResourcesTest, WalkEndsAtDamage) {
  EXPECT_EQ(Resources(kResources).size(), 3U);
  const auto second = kResources.find("8BIM", 4);
  auto other = kResources, lying = kResources;
  other[second] = '9';
  EXPECT_EQ(Resources(other).size(), 1U);
  lying.replace(kResources.find("iptc") - 4, 4, "\xff\xff\xff\xff");
  EXPECT_EQ(Resources(lying).size(), 1U);
  // The last pad byte may be missing, and the area ends before the file does.
  const auto odd = test::ImageResources({{.id = 1, .data = "abc"}});
  EXPECT_EQ(Resources(odd.substr(0, odd.size() - 1)).size(), 1U);
  EXPECT_EQ(Resources(odd.substr(0, odd.size() - 2)).size(), 0U);
  EXPECT_EQ(ReadPsdResources(SourceOf(kResources), {0, second}).size(), 1U);
}

}  // namespace
}  // namespace ml::metadata
