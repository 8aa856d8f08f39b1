#include "support/small_files.h"

#include "support/avi_builder.h"
#include "support/bmp_builder.h"
#include "support/camera_raw.h"
#include "support/canon_builder.h"
#include "support/ciff_builder.h"
#include "support/gif_builder.h"
#include "support/jp2_builder.h"
#include "support/jpeg_builder.h"
#include "support/maker_notes.h"
#include "support/metadata_blocks.h"
#include "support/picture_tiff.h"
#include "support/png_builder.h"
#include "support/psd_builder.h"

namespace ml::test {
namespace {

CameraRaw SmallRaw(Endian order) {
  return {.width = 32, .height = 24, .previewWidth = 16, .previewHeight = 12, .orientation = 6, .order = order};
}
Picture SmallPicture() { return PaintLandscape(24, 18, 1); }

std::string Iptc() { return IptcBlock({{0, std::string("\0\2", 2)}, {25, "one"}, {25, "two"}, {120, "A caption"}}); }

std::string SmallJpeg(Endian order) {
  const auto exif = RafDirectories(SmallRaw(order));
  const auto resources = ImageResources({{1005, "odd"}, {1028, Iptc(), "named"}});
  return InsertSegments(EncodeJpeg(SmallPicture()), ExifSegment(exif) +
                                                        XmpSegment(XmpPacket("A description", XmpShot())) +
                                                        IccSegments(IccProfile("Sample RGB"), 2) +
                                                        ResourceSegment(resources) + CommentSegment("A comment"));
}

std::string SmallTiff(const TiffEncoding& encoding) {
  auto tiff = PictureDirectory(SmallPicture(), encoding);
  tiff.Ascii(270, "A description").Ascii(271, "Tarnwick").Ascii(306, "2003:05:17 10:11:12");
  tiff.Bytes(700, XmpPacket("A description", XmpShot()))
      .Bytes(33723, Iptc())
      .Bytes(34377, ImageResources({{1028, Iptc()}}));
  tiff.Undefined(34675, IccProfile("Sample RGB"));
  return tiff.Directory(34665, TiffBuilder().Rational(33434, 1, 125).Ascii(36867, "2003:05:17 10:11:12")).Build();
}

TiffBuilder WithCanonNote(TiffBuilder tiff, Endian order) {
  const auto exif = TiffBuilder(order).Rational(37386, 35).Note(37500, "", CanonNote()).Long(40962, 24);
  return tiff.Ascii(271, "Canon").Ascii(272, "Canon EOS 10D").Directory(34665, exif);
}

void AddCanon(std::vector<SmallFile>& files) {
  const auto exif = ExifSegment(WithCanonNote(TiffBuilder(), Endian::Little));
  files.push_back({"JpegCanon", "a.jpg", InsertSegments(EncodeJpeg(SmallPicture()), exif)});
  const auto tiff = PictureDirectory(SmallPicture(), {.order = Endian::Big});
  files.push_back({"TiffCanon", "a.tif", WithCanonNote(tiff, Endian::Big).Build()});
}

void AddRaws(std::vector<SmallFile>& files, const std::string& suffix, const CameraRaw& raw) {
  files.push_back({"Nef" + suffix, "a.nef", NefDirectories(raw).Build()});
  files.push_back({"Eos1D" + suffix, "a.tif", Eos1DDirectories(raw).Build()});
  files.push_back({"Orf" + suffix, "a.orf", OrfDirectories(raw).Build()});
  files.push_back({"Pef" + suffix, "a.pef", PefDirectories(raw).Build()});
  files.push_back({"Raf" + suffix, "a.raf", RafFile(raw, RafDirectories(raw))});
  files.push_back({"Crw" + suffix, "a.crw", CrwHeap(raw).BuildFile(raw.order)});
}

void AddPngs(std::vector<SmallFile>& files) {
  const auto before = PngProfile("Sample", IccProfile("Sample RGB")) + PngText("Author", "Tarnwick");
  const auto after = PngCompressedText("Description", "A description") +
                     PngInternationalText("Comment", "A comment", Compression::Deflate) +
                     PngText("IPTC", "2:25:3:one\n2:120:9:A caption\n");
  files.push_back({"Png", "a.png", EncodePng(SmallPicture(), {.before = before, .after = after, .dataChunks = 2})});
  files.push_back({"PngPalette", "a.png", EncodePng(SmallPicture(), {.colours = PngColours::Palette})});
  files.push_back({"PngDeep", "a.png", EncodePng(SmallPicture(), {.colours = PngColours::RgbWithAlpha, .bits = 16})});
}

void AddPsds(std::vector<SmallFile>& files) {
  const auto resources = ImageResources({{1028, Iptc(), "named"}, {1039, IccProfile("Sample RGB")}});
  files.push_back({"Psd", "a.psd", EncodePsd(SmallPicture(), {.packBits = true, .resources = resources})});
  files.push_back({"PsdIndexed", "a.psd", EncodePsd(SmallPicture(), {.colours = PsdColours::Indexed})});
  files.push_back({"PsdDeepCmyk", "a.psd", EncodePsd(SmallPicture(), {.colours = PsdColours::Cmyk, .bits = 16})});
}

void AddJp2s(std::vector<SmallFile>& files) {
  const auto boxes = Jp2IptcBox(Iptc()) + Jp2XmpBox(XmpPacket("A description", XmpShot()));
  const auto profile = IccProfile("Sample RGB");
  files.push_back({"Jp2", "a.jp2", EncodeJp2(SmallPicture(), {.profile = profile, .after = boxes})});
  files.push_back({"Jp2OpenEnd", "a.jp2", EncodeJp2(SmallPicture(), {.before = boxes, .length = BoxLength::ToEnd})});
  files.push_back({"Jp2LongBox", "a.jp2", EncodeJp2(SmallPicture(), {.grey = true, .length = BoxLength::Long})});
}

std::vector<SmallFile> MakeFiles() {
  std::vector<SmallFile> files;
  files.push_back({"Jpeg", "a.jpg", SmallJpeg(Endian::Little)});
  files.push_back({"JpegBigEndian", "a.jpg", SmallJpeg(Endian::Big)});
  files.push_back({"Tiff", "a.tif", SmallTiff({.rowsPerStrip = 5})});
  files.push_back({"TiffDeepPlanar", "a.tif", SmallTiff({.order = Endian::Big, .bits = 16, .planar = true})});
  AddCanon(files);
  AddRaws(files, "", SmallRaw(Endian::Little));
  AddRaws(files, "BigEndian", SmallRaw(Endian::Big));
  const auto mrw = SmallRaw(Endian::Big);
  files.push_back({"Mrw", "a.mrw", MrwFile(mrw, MrwDirectories(mrw))});
  AddPngs(files);
  AddPsds(files);
  AddJp2s(files);
  const std::vector<Picture> movie{SmallPicture(), PaintLandscape(24, 18, 2)};
  files.push_back({"Avi", "a.avi", EncodeAvi(movie, {.sound = true})});
  files.push_back({"AviPlain", "a.avi", EncodeAvi(movie, {.frames = AviFrames::Dib})});
  files.push_back({"Gif", "a.gif", EncodeGif(movie)});
  files.push_back({"Bmp", "a.bmp", EncodeBmp(SmallPicture())});
  files.push_back({"BmpPalette", "a.bmp", EncodeBmp(SmallPicture(), {BmpColours::Palette, RowOrder::TopDown})});
  return files;
}

std::vector<SmallFile> MakeMakerNoteFiles() {
  std::vector<SmallFile> files;
  const auto jpeg = [](const TiffBuilder& tiff) {
    return InsertSegments(EncodeJpeg(SmallPicture()), ExifSegment(tiff));
  };
  for (const auto order : {Endian::Little, Endian::Big}) {
    const std::string suffix = order == Endian::Big ? "BigEndian" : "";
    const auto headed = WithNikonNote(NikonNoteDirectory(order)), bare = WithBareNikonNote(NikonNoteDirectory(order));
    files.push_back({"JpegNikon" + suffix, "a.jpg", jpeg(headed)});
    files.push_back({"JpegNikonBare" + suffix, "a.jpg", jpeg(bare)});
    files.push_back({"NefNikon" + suffix, "a.nef", headed.Build()});
    files.push_back({"NefNikonBare" + suffix, "a.nef", bare.Build()});
  }
  files.push_back({"JpegOlympus", "a.jpg", jpeg(WithOlympusNote(OlympusNoteDirectory()))});
  files.push_back({"JpegFuji", "a.jpg", jpeg(WithFujiNote(FujiNoteDirectory()))});
  files.push_back({"JpegCasio", "a.jpg", jpeg(WithCasioNote(CasioNoteDirectory()))});
  return files;
}

}  // namespace

const std::vector<SmallFile>& SmallFiles() {
  static const auto files = MakeFiles();
  return files;
}

const std::vector<SmallFile>& MakerNoteFiles() {
  static const auto files = MakeMakerNoteFiles();
  return files;
}

}  // namespace ml::test
