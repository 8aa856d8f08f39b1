#include "imagefiles/edits/icc_edits.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

#include "metadata/icc_carriers.h"
#include "platform/text.h"
#include "support/colour_profiles.h"
#include "support/jpeg_builder.h"
#include "support/refusal.h"
#include "support/sample_photo.h"
#include "support/temp_dir.h"

namespace ml::imagefiles {
namespace {

class ProfileFiles : public testing::Test {
 protected:
  bool Embed(const std::string& profile, const std::string& name = "a.jpg") const {
    const ImageFileOptions options;
    CompanionFinder companions(options);
    return EmbedIccProfile(*CreateImageFile(dir_ / name, options), profile,
                           {.options = options, .companions = companions, .edit = {.stateDirectory = dir_ / "state"}});
  }
  std::string Refusal(const std::string& profile, const std::string& name = "a.jpg") const {
    return test::Refusal([&] { Embed(profile, name); });
  }
  test::TempDir dir_;
};

TEST_F(ProfileFiles, AProfileIsReadBackFromAProtectedFile) {
  const auto photo = test::MakePhoto({.width = 64, .height = 48, .orientation = 6});
  const auto path = dir_.Write("a.jpg", photo);
  chmod(path.c_str(), 0444);
  const auto bytes = test::EncodeProfile({.swapped = true});
  const auto profile = dir_.Write("p.icc", bytes);
  EXPECT_TRUE(Embed(profile));
  const auto read = metadata::GetIccProfileData(path);
  ASSERT_TRUE(read);
  EXPECT_TRUE(std::ranges::equal(*read, platform::AsBytes(bytes)));
  EXPECT_EQ(test::ReadAll(path)->size(), photo.size() + bytes.size() + 18);
  EXPECT_EQ(metadata::ExifData(path).orientation, 6);
  struct stat status {};
  stat(path.c_str(), &status);
  EXPECT_EQ(status.st_mode & 0777, 0444U);
}

TEST_F(ProfileFiles, WhatCannotBeIsRefusedWithItsSentence) {
  const auto photo = test::MakePhoto({.width = 64, .height = 48});
  dir_.Write("a.jpg", photo);
  dir_.Write("text.jpg", "no JPEG");
  dir_.Write("bare.jpg", "\xff\xd8\xff\xd9");
  dir_.Write("b.png", "no matter");
  const auto good = dir_.Write("p.icc", test::EncodeProfile({})), bad = dir_.Write("bad.icc", "no profile");
  std::filesystem::create_directory(dir_ / "folder");
  EXPECT_EQ(Refusal(""), "No color profile specified");
  EXPECT_EQ(Refusal(dir_ / "missing.icc"), "Color profile file does not exist");
  EXPECT_EQ(Refusal(dir_ / "folder"), "Can't read color profile");
  EXPECT_EQ(Refusal(bad), "File is not an ICC color profile:\n" + bad);
  EXPECT_EQ(Refusal(dir_.Write("empty.icc", "")), "File is not an ICC color profile:\n" + (dir_ / "empty.icc"));
  EXPECT_EQ(Refusal(good, "text.jpg"), "Can't read JPEG");
  EXPECT_EQ(Refusal(good, "b.png"), "Can't read JPEG");
  EXPECT_FALSE(Embed(good, "bare.jpg"));
  EXPECT_EQ(test::ReadAll(dir_ / "a.jpg"), photo);
  EXPECT_EQ(test::ReadAll(dir_ / "text.jpg"), "no JPEG");
}

}  // namespace
}  // namespace ml::imagefiles
