#include "imagefiles/tools/copy_exif.h"

#include <sys/stat.h>

#include <filesystem>

#include "imagefiles/tools/tool_test.h"
#include "metadata/edit/tiff_exif.h"
#include "metadata/edit/tiff_image_data.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "support/camera_raw.h"
#include "support/ciff_builder.h"
#include "support/jp2_builder.h"
#include "support/jpeg_builder.h"
#include "support/metadata_blocks.h"
#include "support/picture_tiff.h"
#include "support/png_builder.h"
#include "support/truncation_sweep.h"

namespace ml::imagefiles {
namespace {

using test::CameraRaw;
using test::Endian;
using test::TiffBuilder;

const std::string kDate = "2003:05:17 10:11:12";

/// A shot with a position and a note that counts from its own start.
TiffBuilder Shot(Endian order) {
  TiffBuilder first(order), exif(order), position(order);
  exif.Rational(33434, 1, 250).Rational(33437, 28, 10).Ascii(36867, kDate).Short(40961, 1).Long(40962, 4000);
  exif.Undefined(37500, "FUJIFILM\x0c" + std::string(3, '\0') + std::string(2, '\0'));
  position.Ascii(1, "N").Rational(2, {{51, 1}, {30, 1}, {0, 1}});
  return first.Ascii(271, "Tarnwick")
      .Ascii(272, "Sample")
      .Short(274, 6)
      .Ascii(306, kDate)
      .Ascii(305, "Camera 1.0")
      .Directory(34665, exif)
      .Directory(34853, position);
}
std::string ShotJpeg(Endian order = Endian::Big) {
  const auto iptc =
      test::ImageResources({{.id = 1028, .data = test::IptcBlock({{.dataset = 120, .value = "Harbour"}})}});
  return test::InsertSegments(test::EncodeJpeg(test::PaintLandscape(64, 48, 1)),
                              test::ExifSegment(Shot(order)) + test::ResourceSegment(iptc));
}
/// A picture that an editor made, with a description, a profile and a page behind it.
std::string EditedTiff(Endian order) {
  const auto picture = test::PaintLandscape(32, 24, 2);
  auto page = test::PictureDirectory(picture, {.order = order, .rowsPerStrip = 5});
  return test::PictureDirectory(picture, {.order = order, .rowsPerStrip = 7})
      .Short(274, 3)
      .Ascii(305, "Editor")
      .Ascii(270, "My caption")
      .Undefined(34675, std::string(200, 'p'))
      .Next(page)
      .Build();
}

class CopyExifTest : public ToolTest {
 protected:
  std::string Copy(const std::string& source, const std::string& destination) {
    return Refusal([&] { last_ = CopyExif(source, destination, tools_, ask_); });
  }
  static std::string ImageData(const std::string& tiff) {
    const metadata::MemorySource source(platform::AsBytes(tiff));
    std::string data;
    for (const auto& range : metadata::TiffImageData(source, 0, metadata::TiffMagic::Required)) {
      data += tiff.substr(range.position, range.size) + std::to_string(range.position);
    }
    return data;
  }
  CopyExifResult last_ = CopyExifResult::Copied;
};

TEST_F(CopyExifTest, TriesTheToldNamesInTheirOrder) {
  struct Case {
    const char* source;
    std::vector<std::string> files, found;
    CopyTargets targets = CopyTargets::JpegsAndTiffs;
  };
  const Case cases[] = {
      {"a.jpg",
       {"a.tiff", "a.TIF", "A.Jpe", "a.jpeg", "a.JPG", "ab.jpg"},
       {"a.JPG", "A.Jpe", "a.jpeg", "a.TIF", "a.tiff"}},
      {"a.jpg", {"a_std.jpg", "al.jpg", "aC.tif"}, {}},
      {"a.crw",
       {"aC.tif", "aL.tif", "ac.jpg", "al.JPG", "a_STD.jpg"},
       {"a_STD.jpg", "al.JPG", "ac.jpg", "aL.tif", "aC.tif"}},
      {"a.crw", {"a.tif", "a.jpg", "aL.tif"}, {"a.jpg"}, CopyTargets::JpegsOnly},
      {"a.b.nef", {"a.jpg", "a.b.jpg", "a.b_std.jpg"}, {"a.b.jpg", "a.b_std.jpg"}},
      {"a.crw", {"a.jpg/x"}, {}},
  };
  int number = 0;
  for (const auto& one : cases) {
    const auto folder = "out" + std::to_string(number++);
    Write(folder + "/other.txt", "");
    for (const auto& file : one.files) Write(std::string(folder).append("/").append(file), "");
    platform::DirIndex index(dir_ / folder);
    std::vector<std::string> names;
    for (const auto& path : FindCopyTargets(dir_ / one.source, index, one.targets)) {
      names.push_back(path.substr((dir_ / folder).size() + 1));
    }
    EXPECT_EQ(names, one.found) << one.source << " " << number;
  }
}

TEST_F(CopyExifTest, PutsTheShotIntoTiffsOfEitherOrderAndLeavesTheRest) {
  for (const auto from : {Endian::Big, Endian::Little}) {
    for (const auto to : {Endian::Big, Endian::Little}) {
      const auto source = Write("s/a.jpg", ShotJpeg(from)), before = EditedTiff(to), path = Write("d/a.tif", before);
      ASSERT_EQ(Copy(source, path), "");
      const auto exif = Read(path);
      EXPECT_EQ(exif.make + " " + exif.model + " " + exif.shutterSpeed + " " + exif.aperture,
                "Tarnwick Sample 1/250 2.8");
      EXPECT_EQ(exif.dateTime, kDate);
      EXPECT_EQ(exif.imageDescription, "My caption");
      EXPECT_EQ(exif.software, "Editor");
      EXPECT_EQ(exif.orientation, 3);
      EXPECT_EQ(exif.imageWidth, 32);
      EXPECT_TRUE(exif.hasIccProfile);
      ASSERT_EQ(exif.iptc.size(), 1U);
      EXPECT_EQ(exif.makerNoteCount, 14U);
      const auto after = Content(path);
      EXPECT_TRUE(ImageData(after) == ImageData(before));
      EXPECT_TRUE(after.substr(8, before.size() - 8) == before.substr(8)) << "something moved or was overwritten";
      // Again: now every entry has its place.
      ASSERT_EQ(Copy(source, path), "");
      EXPECT_EQ(Read(path).shutterSpeed, "1/250");
      EXPECT_TRUE(ImageData(Content(path)) == ImageData(before));
    }
  }
}

TEST_F(CopyExifTest, TakesTheShotFromEachKindOfFile) {
  const CameraRaw raw{.width = 64, .height = 48, .previewWidth = 64, .previewHeight = 48, .orientation = 6};
  Write("s/crw.thm", test::MakeThm(raw));
  const auto shot = Shot(Endian::Little).Build();
  const auto picture = test::PaintLandscape(40, 30, 3);
  const auto jp2 = test::EncodeJp2(picture, {.before = test::Jp2UuidBox("JpgTiffExif->JP2", shot)});
  const struct {
    std::string name, content;
    std::string note{};  ///< which stands in a block that is copied as it is
  } sources[] = {
      {"jpg.jpg", ShotJpeg(), "FUJIFILM"},
      {"png.png", test::EncodePng(picture, {.before = test::PngChunk("eXIf", shot)}), "FUJIFILM"},
      {"jp2.jp2", jp2, "FUJIFILM"},
      {"nef.nef", test::NefDirectories(raw).Build()},
      {"orf.orf", test::OrfDirectories(raw).Build()},
      {"mrw.mrw", test::MrwFile(raw, test::MrwDirectories(raw))},
      {"raf.raf", test::RafFile(raw, test::RafDirectories(raw))},
      {"crw.crw", test::CrwHeap(raw).BuildFile(Endian::Little)},
      {"bare.crw", test::CrwHeap(raw).BuildFile(Endian::Little)},
      {"tif.tif", shot},
  };
  const auto jpeg = test::WithExif(test::EncodeJpeg(picture), {.model = "Old", .orientation = 8});
  for (const auto& [name, content, note] : sources) {
    const auto source = Write("s/" + name, content);
    const auto from = Read(source);
    for (const auto& target :
         {Write("d/" + name + ".jpg", jpeg), Write("d/" + name + ".tif", EditedTiff(Endian::Big))}) {
      ASSERT_EQ(Copy(source, target), "") << target;
      const auto to = Read(target);
      EXPECT_EQ(to.model, from.model) << target;
      EXPECT_EQ(to.dateTime, kDate) << target;
      EXPECT_EQ(to.shutterSpeed, from.shutterSpeed) << target;
      EXPECT_NE(test::ReadAll(target).value().find(note), std::string::npos) << target;
      EXPECT_EQ(to.orientation, target.ends_with("jpg") ? 8 : 3) << target;
    }
  }
}

TEST_F(CopyExifTest, RefusesAndLeavesTheFileAlone) {
  const auto shot = Write("shot.jpg", ShotJpeg()),
             bare = Write("bare.jpg", test::EncodeJpeg(test::PaintPlain(8, 8, 0)));
  const auto tiff = Write("b.tif", EditedTiff(Endian::Little)), broken = Write("x.tif", "II*");
  const auto raw = Write("raw.tif", test::Eos1DDirectories({}).Build()), png = Write("a.png", "");
  const auto crw = Write("lone.crw", "");
  const auto linked = dir_ / "linked.jpg";
  std::filesystem::create_hard_link(shot, linked);
  struct Case {
    std::string source, destination, sentence;
  };
  const Case cases[] = {
      {dir_ / "none.jpg", tiff, "Error copy EXIF data: source file does not exist:\n" + (dir_ / "none.jpg")},
      {shot, dir_ / "none.jpg", "Error copy EXIF data: destination file does not exist:\n" + (dir_ / "none.jpg")},
      {shot, linked, "Error copying EXIF data\nSource and destination files are the same:\n" + linked},
      {shot, raw, "Copying EXIF data to Canon EOS 1D/1Ds raw files\nis not supported in this version"},
      {shot, png, "EXIF data cannot be copied to a file of this format:\n" + png},
      {shot, crw, "There is no .thm file beside this one:\n" + crw},
      {bare, tiff, "There are no EXIF data to copy in:\n" + bare},
      {shot, broken, "Error copying EXIF data to:\n" + broken + "\nInvalid TIFF"},
  };
  for (const auto& one : cases) {
    const auto before = Content(one.destination);
    EXPECT_EQ(Copy(one.source, one.destination), one.sentence);
    EXPECT_TRUE(Content(one.destination) == before) << one.sentence;
  }
}

TEST_F(CopyExifTest, AsksBeforeItWritesToAReadOnlyFile) {
  const auto shot = Write("shot.jpg", ShotJpeg()), tiff = Write("b.tif", EditedTiff(Endian::Little));
  const auto before = Content(tiff);
  ::chmod(tiff.c_str(), 0444);
  ask_.buttons = {platform::Button::No, platform::Button::Yes};
  EXPECT_EQ(Copy(shot, tiff), "");
  EXPECT_EQ(last_, CopyExifResult::Declined);
  EXPECT_TRUE(Content(tiff) == before);
  EXPECT_EQ(Copy(shot, tiff), "");
  EXPECT_EQ(last_, CopyExifResult::Copied);
  EXPECT_EQ(Read(tiff).model, "Sample");
  ASSERT_EQ(ask_.shown.size(), 2U);
  EXPECT_EQ(ask_.shown[0].text, tiff + "\nis read-only do you wish to copy EXIF data to it?");
}

TEST_F(CopyExifTest, ABatchSkipsWhatHasNoTargetAndStopsAtAFailure) {
  const auto a = Write("s/a.jpg", ShotJpeg()), b = Write("s/b.jpg", ShotJpeg()), c = Write("s/c.jpg", ShotJpeg());
  Write("d/a.jpg", ShotJpeg());
  Write("d/a.tif", EditedTiff(Endian::Big));
  const auto broken = Write("d/c.jpg", "no JPEG");
  CopyExifJob job{.sources = {a, b, c, a}, .directory = dir_ / "d"};
  EXPECT_EQ(Letters(CopyExifBatch(job, tools_, Run(OnFailure::GoOn))), "DDSFDD");
  ToolReport told;
  auto run = Run();
  run.told = [&](const ToolItem& item) { told.push_back(item); };
  EXPECT_TRUE(Refusal([&] { CopyExifBatch(job, tools_, run); }).starts_with("Error copying EXIF data to:\n" + broken));
  EXPECT_EQ(Letters(told), "DDSF");

  // In the sources' own directory a source is no target of its own, and with no other file it is an error.
  const auto tiff = Write("s/a.tif", EditedTiff(Endian::Big));
  job = {.sources = {a}, .directory = dir_ / "s"};
  const auto report = CopyExifBatch(job, tools_, Run());
  ASSERT_EQ(Letters(report), "D");
  EXPECT_EQ(report[0].output, tiff);
  job.sources = {b};
  EXPECT_TRUE(Refusal([&] { CopyExifBatch(job, tools_, Run()); }).starts_with("Error copying EXIF data\nSource and"));

  job.directory = a;
  EXPECT_EQ(Refusal([&] { CopyExifBatch(job, tools_, Run()); }), a + "\nis not a directory");
  job.directory = dir_ / "x";
  EXPECT_EQ(Refusal([&] { CopyExifBatch(job, tools_, Run()); }), "No such directory:\n" + (dir_ / "x"));
}

TEST_F(CopyExifTest, EndsCleanlyWhateverTheDirectoriesHold) {
  const auto target = EditedTiff(Endian::Little), source = Shot(Endian::Big).Build();
  const auto copy = [](std::span<const char> to, std::span<const char> from) {
    const metadata::MemorySource tiff(std::as_bytes(to)), origin(std::as_bytes(from));
    metadata::EditedFile edited(tiff);
    try {
      metadata::WriteTiffExif(edited, {origin});
    } catch (metadata::ExifException) {
      EXPECT_FALSE(edited.Touched());
    }
  };
  test::SweepPrefixes(target, test::kCoarse, [&](const auto& prefix) { copy(prefix, source); });
  test::SweepPrefixes(source, 1, [&](const auto& prefix) { copy(target, prefix); });
  for (std::size_t i = 0; i < source.size(); ++i) {
    auto changed = source;
    changed[i] = static_cast<char>(0xff);
    copy(target, changed);
  }
}

}  // namespace
}  // namespace ml::imagefiles
