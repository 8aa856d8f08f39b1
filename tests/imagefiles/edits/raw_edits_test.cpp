#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <string>

#include "imagefiles/edits/developed_jpegs.h"
#include "imagefiles/edits/image_edits.h"
#include "imagefiles/messages.h"
#include "metadata/ciff.h"
#include "metadata/crw_file.h"
#include "metadata/edit/ciff_file.h"
#include "metadata/exif_block.h"
#include "metadata/tiff_facts.h"
#include "metadata/tiff_raw.h"
#include "platform/paths.h"
#include "support/avi_builder.h"
#include "support/camera_raw.h"
#include "support/ciff_builder.h"
#include "support/picture_tiff.h"
#include "support/refusal.h"
#include "support/temp_dir.h"

namespace ml::imagefiles {
namespace {

using imaging::Turn;
using test::CameraRaw;
using test::Endian;
using test::TiffBuilder;

CameraRaw Camera(Endian order = Endian::Big) {
  CameraRaw raw{.width = 64, .height = 48, .previewWidth = 64, .previewHeight = 48};
  raw.order = order;
  return raw;
}

/// A directory of files and the edits in it.
class Edits : public testing::Test {
 protected:
  std::string Write(const std::string& name, const std::string& content) { return dir_.Write(name, content); }
  std::string Content(const std::string& path) { return *test::ReadAll(path); }

  /// What was said against it; empty if it was done.
  std::string Do(const std::string& path, const std::function<void(ImageFile&, const EditTools&)>& act) {
    CompanionFinder companions(options_);
    const EditTools tools{options_, companions, {.stateDirectory = dir_ / "state"}};
    return test::Refusal([&] { act(*CreateImageFile(path, options_), tools); });
  }
  std::string Turn90(const std::string& path) {
    return Do(path, [](ImageFile& file, const EditTools& tools) { Rotate(file, Turn::cw90, tools); });
  }
  std::string Comment(const std::string& path, const std::string& text) {
    return Do(path, [&](ImageFile& file, const EditTools& tools) { SetComment(file, text, tools); });
  }
  std::string Adjust(const std::string& path, std::int64_t seconds) {
    return Do(path, [&](ImageFile& file, const EditTools& tools) { AdjustDateTime(file, seconds, tools); });
  }
  metadata::ExifData Read(const std::string& path) { return metadata::ExifData(path, options_.ForExif()); }
  std::string CommentOf(const std::string& path) { return CreateImageFile(path, options_)->GetComment(); }
  std::optional<int> JpegDegrees(const std::string& path) {
    const platform::ReadableFile file(path);
    return metadata::ReadOrientationFromExif(metadata::FileSource(file));
  }

  test::TempDir dir_;
  ImageFileOptions options_;
};

/// An EOS-1D raw file by its size too.
std::string Eos1D(TiffBuilder tiff) {
  return tiff.Without(274).Pieces(50000, 50001, {std::string(1'700'000, 'x')}).Build();
}

TEST_F(Edits, RawFilesTurnByTheirTagAlone) {
  struct Case {
    const char* name;
    std::string (*make)(const CameraRaw& raw, bool tag);
    bool makesTag;
  };
  const auto with = [](TiffBuilder tiff, bool tag) { return tag ? tiff : tiff.Without(274); };
  static const auto pick = with;
  const Case cases[] = {
      {"a.nef", [](const CameraRaw& r, bool tag) { return pick(test::NefDirectories(r), tag).Build(); }, true},
      {"a.orf", [](const CameraRaw& r, bool tag) { return pick(test::OrfDirectories(r), tag).Build(); }, true},
      {"a.raf", [](const CameraRaw& r, bool tag) { return test::RafFile(r, pick(test::RafDirectories(r), tag)); },
       false},
      {"b.raf", [](const CameraRaw& r, bool tag) { return test::RafFile(r, pick(test::RafDirectories(r), tag), 160); },
       false},
  };
  for (const auto order : {Endian::Little, Endian::Big}) {
    for (const auto& c : cases) {
      SCOPED_TRACE(c.name);
      const auto before = c.make(Camera(order), true);
      const auto path = Write(c.name, before);
      for (const int expected : {6, 3, 8, 1}) {
        EXPECT_EQ(Turn90(path), "");
        EXPECT_EQ(Read(path).orientation, expected);
      }
      EXPECT_EQ(Content(path), before);
      const auto bare = c.make(Camera(order), false);
      Write(c.name, bare);
      EXPECT_EQ(Turn90(path), "");
      EXPECT_EQ(Read(path).orientation, c.makesTag ? 6 : 0);
      EXPECT_EQ(Content(path).size() > bare.size(), c.makesTag);
    }
  }
  EXPECT_EQ(Turn90(Write("bad.nef", "a file of another kind")), "Invalid NEF");
  EXPECT_EQ(Turn90(Write("bad.orf", "a file of another kind")), "Invalid ORF");
  EXPECT_EQ(Turn90(Write("bad.raf", "a file of another kind")), "Invalid RAF");
}

TEST_F(Edits, DatesMoveInEveryFormatThatHasSome) {
  const auto raw = Camera();
  const auto thm = test::MakeThm(raw);
  const std::pair<const char*, std::string> files[] = {
      {"a.nef", test::NefDirectories(raw).Build()},
      {"a.orf", test::OrfDirectories(raw).Build()},
      {"a.pef", test::PefDirectories(raw).Build()},
      {"a.mrw", test::MrwFile(raw, test::MrwDirectories(raw))},
      {"a.raf", test::RafFile(raw, test::RafDirectories(raw))},
      {"b.raf", test::RafFile(raw, test::RafDirectories(raw), 160)},
      {"a.tif", test::PictureDirectory(test::PaintPlain(9, 9, 0)).Ascii(306, raw.dateTime).Build()},
      {"a.crw", test::CrwHeap(raw).BuildFile(Endian::Little)},
      {"b.crw", test::CrwHeap(raw).BuildFile(Endian::Big)},
      {"e1d.tif", Eos1D(test::Eos1DDirectories(raw))},
      {"c.avi", "no movie, but nobody looks"},
  };
  Write("c.thm", thm);
  Write("b.thm", thm);
  Write("e1d.jpg", thm);
  for (const auto& [name, content] : files) {
    SCOPED_TRACE(name);
    const auto path = Write(name, content);
    EXPECT_EQ(Adjust(path, -24 * 3600 + 5), "");
    EXPECT_EQ(Read(path).dateTime, "2003:05:16 10:11:17");
    EXPECT_EQ(Content(path).size(), content.size());
  }
  EXPECT_EQ(Read(dir_ / "b.thm").dateTime, "2003:05:16 10:11:17");
  EXPECT_EQ(Read(dir_ / "e1d.jpg").dateTime, "2003:05:16 10:11:17");
  const platform::ReadableFile crw(dir_ / "b.crw");
  const auto time = metadata::ReadCrwBasics(metadata::FileSource(crw)).time->seconds;
  EXPECT_EQ(time % 86400, 10U * 3600 + 11 * 60 + 17) << "the companion's date is not the file's own";
}

TEST_F(Edits, TiffCommentsGoToTheFieldTheCaptionOrNowhere) {
  struct Case {
    const char* name;
    bool field, caption;  ///< there is a field; "IPTCcomments" is on
    std::string said;
    std::string comment, iptc;
  };
  const Case cases[] = {
      {"Field", true, false, "", "new text", ""},
      {"Both", true, true, "", "new text", "new text"},
      {"CaptionAlone", false, true, "", "", "new text"},
      {"Neither", false, false, "TIFF file does not contain an EXIF UserComment field", "", ""},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    options_.iptcComments = c.caption;
    auto tiff = test::PictureDirectory(test::PaintLandscape(20, 10, 1));
    if (c.field) tiff.Directory(34665, TiffBuilder().Undefined(37510, "ASCII" + std::string(60, '\0')));
    const auto path = Write("a.tif", tiff.Build());
    EXPECT_EQ(Comment(path, "new text"), c.said);
    const auto read = Read(path);
    EXPECT_EQ(read.comment, c.comment);
    EXPECT_EQ(read.iptc.empty() ? "" : read.iptc.front().value, c.iptc);
  }
  options_.iptcComments = false;
  const auto nef = Write("a.nef", test::NefDirectories(Camera()).Build());
  EXPECT_EQ(Comment(nef, "into the caption"), "");
  EXPECT_EQ(CommentOf(nef), "into the caption");
  EXPECT_EQ(Comment(Write("b.nef", "no raw file"), "text"), "Error writing comment in IPTC caption\nInvalid NEF");
}

TEST_F(Edits, ViewingJpegsFollowTheirRawFile) {
  const auto tif = Write("e1d.tif", Eos1D(test::Eos1DDirectories(Camera())));
  const auto jpg = Write("e1d.jpg", test::MakeThm(Camera()));
  ASSERT_EQ(CreateImageFile(tif, options_)->Row().format, Format::Eos1DRaw);
  EXPECT_EQ(Turn90(tif), "");
  EXPECT_EQ(Turn90(tif), "");
  EXPECT_EQ(Read(tif).orientation, 3);
  EXPECT_EQ(JpegDegrees(jpg), 180);
  const metadata::IptcBlock block{.items = {{2, 25, "keyword"}}};
  EXPECT_EQ(Do(tif, [&](ImageFile& file, const EditTools& tools) { WriteIptc(file, block, tools); }), "");
  EXPECT_EQ(Read(tif).iptc, block.items);
  EXPECT_EQ(Read(jpg).iptc, block.items);
  options_.bindJpegToEos1DRaw = false;
  EXPECT_EQ(Turn90(tif), "");
  EXPECT_EQ(JpegDegrees(jpg), 180) << "a JPEG that is not bound is a picture of its own";
}

TEST_F(Edits, TiffPicturesTurnButFilesThatOnlyLookLikeOnesGetATag) {
  const auto path = Write("a.tif", test::PictureDirectory(test::PaintLandscape(30, 20, 1)).Short(274, 6).Build());
  EXPECT_EQ(Turn90(path), "");
  const platform::ReadableFile file(path);
  const auto facts = metadata::ReadTiffFacts(metadata::FileSource(file));
  EXPECT_EQ(facts->width, 20U);
  EXPECT_EQ(facts->height, 30U);
  EXPECT_EQ(Read(path).orientation, 1);
  EXPECT_TRUE(Turn90(Write("bad.tif", std::string("II*\0 no directory", 17)))
                  .starts_with("Unable to read TIFF file\nReason: "));
  const auto full = test::PictureDirectory(test::PaintLandscape(30, 20, 1)).Without(284).FillTo(70).Build();
  EXPECT_TRUE(Turn90(Write("full.tif", full)).ends_with("more entries than are read"));
  EXPECT_EQ(Content(dir_ / "full.tif"), full);

  const auto raw = test::PictureDirectory(test::PaintLandscape(30, 20, 1))
                       .Ascii(271, "A maker")
                       .Pieces(50000, 50001, {std::string(4'000'000, 'x')})
                       .Build();
  const auto thumbnail = Write("raw.tif", raw);
  ASSERT_TRUE(Read(thumbnail).tiffThumbnailOnly);
  EXPECT_EQ(Turn90(thumbnail), "");
  EXPECT_EQ(Read(thumbnail).orientation, 6);
  EXPECT_EQ(Content(thumbnail).substr(8, raw.size() - 8), raw.substr(8));
}

TEST_F(Edits, CrwFilesAndMoviesChangeTogetherWithTheirCompanion) {
  const auto crw = Write("a.crw", test::CrwHeap(Camera()).BuildFile(Endian::Little));
  EXPECT_EQ(Turn90(crw), "");
  EXPECT_EQ(Comment(crw, "in its record"), "");
  EXPECT_EQ(CommentOf(crw), "in its record");
  EXPECT_EQ(Comment(crw, std::string(256, 'x')), messages::NoCrwComment(crw));
  const auto thm = Write("a.thm", test::MakeThm(Camera()));
  EXPECT_EQ(Turn90(crw), "");
  const platform::ReadableFile file(crw);
  EXPECT_EQ(metadata::ReadCrwBasics(metadata::FileSource(file)).rotation, 180);
  EXPECT_EQ(JpegDegrees(thm), 180) << "the companion gets the rotation of the file, not one turn more";

  const auto bare = Write("bare.crw", test::CiffBuilder().Data(0x2005, "raw").BuildFile(Endian::Little));
  EXPECT_EQ(Turn90(bare), messages::NoRotationRecord(bare));
  const auto avi = Write("b.avi", "no movie, but nobody looks");
  EXPECT_EQ(Comment(avi, "text"), messages::NoThm(avi));
}

TEST_F(Edits, MakerNotesAndPicturesOfRealFilesStay) {
  const auto samples = test::SamplesDir();
  if (!samples) GTEST_SKIP() << "no sample files";
  options_.iptcComments = true;
  const auto noteOf = [&](const std::string& path) {
    const auto data = Read(path);
    const platform::ReadableFile file(path);
    const auto format = FindFormat(path)->format;
    const auto base = format == Format::Raf   ? metadata::FindRafTiffBase(metadata::FileSource(file))
                      : format == Format::Mrw ? metadata::kMrwTiffBase
                                              : 0;
    return Content(path).substr(base + data.makerNoteOffset, data.makerNoteCount);
  };
  for (const auto* name :
       {"nef/nikon-d1.nef", "nef/nikon-d70-stripped.nef", "tiff-raw/canon-eos-350d-head.tif",
        "tiff-raw/canon-eos-400d-16bit.tif", "tiff-raw/nikon-d70s-8bit.tif", "tiff/iptc-canon-digital-rebel.tif",
        "mrw-orf-raf-pef/minolta-dimage-a2-stripped.mrw", "mrw-orf-raf-pef/fujifilm-finepix-s5pro-stripped.raf"}) {
    SCOPED_TRACE(name);
    const auto path = Write(std::string(platform::FileName(name)), *test::ReadAll(*samples + "/" + name));
    const auto before = Read(path);
    const auto note = noteOf(path);
    const auto& row = CreateImageFile(path, options_)->Row();
    EXPECT_EQ(Adjust(path, 61), "");
    if (row.commentRefusal.empty()) {
      EXPECT_EQ(Comment(path, "A comment for the file"), "");
    }
    if (row.format == Format::Nef || row.format == Format::Raf) {
      EXPECT_EQ(Turn90(path), "");
    }
    const auto after = Read(path);
    EXPECT_EQ(after.shootingTime, before.shootingTime + 61);
    EXPECT_EQ(noteOf(path), note);
    EXPECT_EQ(after.makerNoteOffset, before.makerNoteOffset) << "offsets in the note may count from the file's start";
    EXPECT_EQ(after.focusPoint + after.imageQuality + after.whiteBalance + after.firmware,
              before.focusPoint + before.imageQuality + before.whiteBalance + before.firmware);
    EXPECT_EQ(CommentOf(path), row.commentRefusal.empty() ? "A comment for the file" : "");
  }
}

/// Gives a picture of one colour, and counts.
class FakeDeveloper final : public DevelopLibrary {
 public:
  imaging::PixelBuffer Develop(const std::string&) override {
    ++calls;
    auto picture = imaging::MakePixelBuffer(64, 32);
    std::ranges::fill(picture.data, std::byte{200});
    return picture;
  }
  int calls = 0;
};

TEST_F(Edits, PreviewsAreDevelopedAnewAndRawDataStay) {
  FakeDeveloper developer;
  const auto before = test::CrwHeap(Camera()).BuildFile(Endian::Little);
  const auto regenerate = [&](DevelopLibrary* library) {
    return [&, library](ImageFile& file, const EditTools& tools) {
      RegenerateEmbeddedJpeg(file, {.width = 16, .quality = 80}, library, tools);
    };
  };
  const auto crw = Write("a.crw", before);
  EXPECT_EQ(Do(crw, regenerate(nullptr)), messages::NoDevelopment(crw));
  EXPECT_EQ(Content(crw), before);
  EXPECT_EQ(Do(crw, regenerate(&developer)), "");
  const auto picture = CreateImageFile(crw, options_)->GetPixels();
  EXPECT_EQ(picture.width, 16);
  EXPECT_EQ(picture.height, 8);
  EXPECT_NEAR(std::to_integer<int>(picture.data[0]), 200, 3);
  EXPECT_NE(Content(crw).find(std::string(64, '\x55')), std::string::npos);
  EXPECT_EQ(Read(crw).dateTime, Camera().dateTime);

  developer.calls = 0;
  const auto big = Write("big.crw", test::CrwHeap(Camera()).BuildFile(Endian::Big));
  EXPECT_EQ(Do(big, regenerate(&developer)), "Invalid CRW: not II aligned");
  EXPECT_EQ(Do(Write("a.nef", before), regenerate(&developer)), messages::NotDevelopable(dir_ / "a.nef"));
  EXPECT_EQ(developer.calls, 0);
}

TEST_F(Edits, ViewingJpegsAreMadeWithShootingDataAndTurn) {
  FakeDeveloper developer;
  const auto tif = Write("e1d.tif", Eos1D(test::Eos1DDirectories(Camera())));
  EXPECT_EQ(Turn90(tif), "");
  const auto make = [&](DevelopLibrary* library) {
    return Do(tif, [&, library](ImageFile&, const EditTools& tools) {
      MakeViewingJpeg(tif, {.quality = 90}, library, tools);
    });
  };
  EXPECT_EQ(make(nullptr), messages::NoDevelopment(tif));
  EXPECT_FALSE(test::ReadAll(dir_ / "e1d.jpg"));
  EXPECT_EQ(make(&developer), "");
  const auto jpg = Read(dir_ / "e1d.jpg");
  EXPECT_EQ(jpg.dateTimeOriginal, Camera().dateTime);
  EXPECT_EQ(jpg.model, "Canon EOS-1D");
  EXPECT_EQ(jpg.orientation, 6);
  EXPECT_EQ(jpg.imageWidth, 64);
  const auto content = Content(dir_ / "e1d.jpg");
  EXPECT_NE(make(&developer), "") << "a file that is there already was replaced";
  EXPECT_EQ(Content(dir_ / "e1d.jpg"), content);
}

}  // namespace
}  // namespace ml::imagefiles
