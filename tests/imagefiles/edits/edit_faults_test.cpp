#include <fcntl.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "imagefiles/edits/developed_jpegs.h"
#include "imagefiles/edits/icc_edits.h"
#include "imagefiles/edits/image_edits.h"
#include "imagefiles/edits/jpeg_thumbnail.h"
#include "platform/linked_overwrite.h"
#include "platform/paths.h"
#include "platform/temporary_name.h"
#include "support/avi_builder.h"
#include "support/bmp_builder.h"
#include "support/camera_raw.h"
#include "support/ciff_builder.h"
#include "support/colour_profiles.h"
#include "support/fault_sweep.h"
#include "support/jp2_builder.h"
#include "support/jpeg_builder.h"
#include "support/metadata_blocks.h"
#include "support/picture_tiff.h"
#include "support/png_builder.h"
#include "support/psd_builder.h"
#include "support/refusal.h"
#include "support/temp_dir.h"

namespace ml::imagefiles {
namespace {

namespace fs = std::filesystem;
using imaging::Turn;
using Edit = std::function<void(ImageFile&, const EditTools&)>;
using Files = std::map<std::string, std::string>;

struct Case {
  const char* name;
  std::string file, content;
  std::function<Edit(const test::TempDir&)> edit;
  std::string companion{}, companionContent{};  ///< one that changes as well
};

std::function<Edit(const test::TempDir&)> Plain(Edit edit) {
  return [edit = std::move(edit)](const test::TempDir&) { return edit; };
}

const auto kComment =
    Plain([](ImageFile& file, const EditTools& tools) { SetComment(file, "seen from the hill", tools); });
const auto kDate = Plain([](ImageFile& file, const EditTools& tools) { AdjustDateTime(file, 3661, tools); });
const auto kTurn = Plain([](ImageFile& file, const EditTools& tools) { Rotate(file, Turn::cw90, tools); });
const auto kIptc = Plain([](ImageFile& file, const EditTools& tools) {
  WriteIptc(file, {.items = {{2, 25, "hill"}, {2, 120, "Seen from the hill"}}}, tools);
});
const auto kThumbnail =
    Plain([](ImageFile& file, const EditTools& tools) { static_cast<void>(RegenerateThumbnail(file, tools)); });

/// Develops every file to the same grey.
class GreyDeveloper final : public DevelopLibrary {
 public:
  imaging::PixelBuffer Develop(const std::string&) override {
    auto picture = imaging::MakePixelBuffer(64, 32);
    std::ranges::fill(picture.data, std::byte{200});
    return picture;
  }
};
const auto kPreview = Plain([](ImageFile& file, const EditTools& tools) {
  GreyDeveloper developer;
  RegenerateEmbeddedJpeg(file, {.width = 16, .quality = 80}, &developer, tools);
});

std::function<Edit(const test::TempDir&)> EmbedProfile() {
  return [](const test::TempDir& dir) -> Edit {
    const auto profile = dir.Write("profile/p.icc", test::EncodeProfile({.swapped = true}));
    return [profile](ImageFile& file, const EditTools& tools) { EmbedIccProfile(file, profile, tools); };
  };
}

std::vector<Case> Cases() {
  const auto small = test::PaintPlain(12, 8, 0x3264c8);
  const auto photo = test::MakePhoto({.width = 64, .height = 48});
  const test::CameraRaw raw{.width = 64, .height = 48, .previewWidth = 64, .previewHeight = 48};
  const auto thm = test::MakeThm(raw);
  const auto crw = test::CrwHeap(raw).BuildFile(test::Endian::Little);
  const auto oldIptc = test::IptcBlock({{120, std::string(300, 'o')}});
  const auto tiff = test::PictureDirectory(small).Ascii(306, raw.dateTime);
  return {
      {"JPEG date", "a.jpg", photo, kDate},
      {"JPEG turn over many pages", "a.jpg",
       test::MakePhoto({.width = 320, .height = 240, .quality = 80, .thumbnail = false}), kTurn},
      {"JPEG turn", "a.jpg", photo, kTurn},
      {"JPEG thumbnail", "a.jpg", photo, kThumbnail},
      {"JPEG IPTC", "a.jpg", photo, kIptc},
      {"JPEG profile", "a.jpg", photo, EmbedProfile()},
      {"PNG comment", "a.png", test::EncodePng(small), kComment},
      {"PNG IPTC", "a.png", test::EncodePng(small), kIptc},
      {"PSD IPTC", "a.psd", test::EncodePsd(small), kIptc},
      {"JP2 IPTC", "a.jp2", test::EncodeJp2(small), kIptc},
      {"TIFF IPTC at the end", "a.tif", tiff.Build(), kIptc},
      {"TIFF IPTC in place", "a.tif", test::PictureDirectory(small).Undefined(33723, oldIptc).Build(), kIptc},
      {"TIFF comment", "a.tif", test::PictureDirectory(small).Ascii(270, std::string(40, ' ')).Build(), kComment},
      {"TIFF date", "a.tif", tiff.Build(), kDate},
      {"TIFF turn", "a.tif", tiff.Build(), kTurn},
      {"BMP turn", "a.bmp", test::EncodeBmp(small), kTurn},
      {"NEF orientation", "a.nef", test::NefDirectories(raw).Build(), kTurn},
      {"NEF with a new tag", "a.nef", test::NefDirectories(raw).Without(274).Build(), kTurn},
      {"NEF date", "a.nef", test::NefDirectories(raw).Build(), kDate},
      {"CRW comment", "a.crw", crw, kComment, "a.thm", thm},
      {"CRW date", "a.crw", crw, kDate, "a.thm", thm},
      {"CRW turn", "a.crw", crw, kTurn, "a.thm", thm},
      {"CRW IPTC", "a.crw", crw, kIptc, "a.thm", thm},
      {"CRW preview", "a.crw", crw, kPreview},
      {"AVI comment", "a.avi", test::EncodeAvi({small}), kComment, "a.thm", thm},
  };
}

/// Another program writes to the file once the edit has read it and begins to write.
class BusyFileSystem final : public test::FaultyFileSystem {
 public:
  BusyFileSystem(std::string path, std::string content)
      : FaultyFileSystem(test::Fault::Eio, -1), path_(std::move(path)), content_(std::move(content)) {}
  int Open(const std::string& path, int flags, mode_t mode) override {
    const bool writes = (flags & O_ACCMODE) != O_RDONLY && platform::DirectoryOf(path) == platform::DirectoryOf(path_);
    if (writes && !std::exchange(done_, true)) std::ofstream(path_, std::ios::app | std::ios::binary) << content_;
    return FaultyFileSystem::Open(path, flags, mode);
  }

 private:
  const std::string path_, content_;
  bool done_ = false;
};

class EditFaults : public testing::Test {
 protected:
  EditFaults() { options_.iptcComments = true; }

  Files Fill(const Case& c) {
    fs::remove_all(dir_ / "day");
    dir_.Write("day/" + c.file, c.content);
    if (!c.companion.empty()) dir_.Write("day/" + c.companion, c.companionContent);
    return Now();
  }
  Files Now() const {
    Files files;
    for (const auto& entry : fs::directory_iterator(dir_ / "day")) {
      files[entry.path().filename()] = *test::ReadAll(entry.path());
    }
    return files;
  }
  void Do(const std::string& path, const Edit& edit,
          platform::FileSystem& fileSystem = platform::RealFileSystem()) const {
    CompanionFinder companions(options_);
    const auto file = CreateImageFile(path, options_);
    edit(*file, {options_, companions, {.stateDirectory = dir_ / "state", .fileSystem = &fileSystem}});
  }

  /// Each file is the old or the new one, but for temporaries and for bytes behind an end that nothing points to.
  static void ExpectWhole(const Files& now, const Files& before, const Files& after, test::Outcome outcome) {
    for (const auto& [name, content] : now) {
      if (!before.contains(name)) {
        EXPECT_EQ(outcome, test::Outcome::Killed) << name << " was left";
        continue;
      }
      const bool isOld = content.starts_with(before.at(name));
      EXPECT_TRUE(content == after.at(name) || (outcome != test::Outcome::Done && isOld)) << name << " is neither";
    }
    for (const auto& [name, content] : before) EXPECT_TRUE(now.contains(name)) << name << " is lost";
  }

  const test::TempDir dir_;
  ImageFileOptions options_;
};

TEST_F(EditFaults, EveryKindOfEditLeavesTheOldOrTheNewFiles) {
  for (const auto& c : Cases()) {
    SCOPED_TRACE(c.name);
    const auto path = dir_ / ("day/" + c.file);
    const auto edit = c.edit(dir_);
    const auto before = Fill(c);
    Do(path, edit);
    const auto after = Now();
    ASSERT_NE(after, before);
    int runs = 0;
    for (const auto fault : test::kFaults) {
      runs += test::SweepFaults(
          fault, [&] { Fill(c); }, [&](platform::FileSystem& fileSystem) { Do(path, edit, fileSystem); },
          [&](test::Outcome outcome) {
            ExpectWhole(Now(), before, after, outcome);
            EXPECT_NO_THROW(Do(path, edit)) << "what was left is in the way";
            platform::RemoveStaleTemporaries(dir_ / "day");
            EXPECT_EQ(Now().size(), before.size());
          });
      if (HasFailure()) return;
    }
    EXPECT_GT(runs, 40) << "the edit does not go through the file system that fails";
  }
}

TEST_F(EditFaults, LinksSurviveEveryKindOfEdit) {
  for (const auto& c : Cases()) {
    SCOPED_TRACE(c.name);
    const auto path = dir_ / ("day/" + c.file);
    const auto edit = c.edit(dir_);
    Fill(c);
    Do(path, edit);
    const auto after = Now();
    const auto beside = c.companion.empty() ? c.file : c.companion;
    for (const bool soft : {false, true}) {
      Fill(c);
      // The file that changes lies elsewhere, under another name, or has one there.
      fs::create_directory(dir_ / "day/far");
      fs::rename(dir_ / ("day/" + beside), dir_ / ("day/far/" + beside));
      if (soft) {
        fs::create_symlink("far/" + beside, dir_ / ("day/" + beside));
      } else {
        fs::create_hard_link(dir_ / ("day/far/" + beside), dir_ / ("day/" + beside));
      }
      Do(path, edit);
      EXPECT_EQ(fs::is_symlink(dir_ / ("day/" + beside)), soft);
      EXPECT_EQ(fs::hard_link_count(dir_ / ("day/far/" + beside)), soft ? 1U : 2U);
      EXPECT_EQ(test::ReadAll(dir_ / ("day/far/" + beside)), after.at(beside));
      EXPECT_EQ(test::ReadAll(dir_ / ("day/" + beside)), after.at(beside));
    }
  }
}

TEST_F(EditFaults, HardLinkedFilesAreFinishedAfterEveryFault) {
  const auto photo = test::MakePhoto({.width = 64, .height = 48});
  const Case cases[] = {{"grows", "a.jpg", photo, kIptc}, {"in place", "a.jpg", photo, kDate}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    const auto path = dir_ / ("day/" + c.file), second = dir_ / "day/b.jpg";
    const auto edit = c.edit(dir_);
    Fill(c);
    Do(path, edit);
    const auto after = *test::ReadAll(path);
    for (const auto fault : test::kFaults) {
      test::SweepFaults(
          fault,
          [&] {
            Fill(c);
            fs::create_hard_link(path, second);
          },
          [&](platform::FileSystem& fileSystem) { Do(path, edit, fileSystem); },
          [&](test::Outcome outcome) {
            platform::FinishInterruptedOverwrites(dir_ / "state");
            const auto now = *test::ReadAll(path);
            EXPECT_TRUE(now == after || (outcome != test::Outcome::Done && now == c.content));
            EXPECT_EQ(fs::hard_link_count(path), 2U);
            EXPECT_EQ(*test::ReadAll(second), now);
          });
      if (HasFailure()) return;
    }
  }
}

TEST_F(EditFaults, WhatAnotherProgramWroteMeanwhileIsNotLost) {
  const std::string foreign = "of another program";
  for (const auto& c : Cases()) {
    SCOPED_TRACE(c.name);
    const auto path = dir_ / ("day/" + c.file);
    const auto edit = c.edit(dir_);
    auto before = Fill(c);
    Do(path, edit);
    const auto after = Now();
    for (const auto& [name, content] : before) {
      if (after.at(name) == content) continue;  // the edit does not write to it
      auto there = Fill(c);
      BusyFileSystem busy(dir_ / ("day/" + name), foreign);
      const auto said = test::Refusal([&] { Do(path, edit, busy); });
      const auto now = Now();
      there[name] += foreign;
      // A companion is read once the image is written: the change is then part of what is edited.
      const bool kept = now.at(name).ends_with(foreign);
      EXPECT_TRUE(kept) << name;
      if (name == c.file) {
        EXPECT_NE(said, "") << name;
        EXPECT_EQ(now, there);
      }
    }
  }
}

}  // namespace
}  // namespace ml::imagefiles
