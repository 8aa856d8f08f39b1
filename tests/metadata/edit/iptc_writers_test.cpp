#include <gtest/gtest.h>

#include <random>

#include "../memory.h"
#include "metadata/edit/edited_file.h"
#include "metadata/edit/image_data.h"
#include "metadata/edit/iptc_jp2.h"
#include "metadata/edit/iptc_jpeg.h"
#include "metadata/edit/iptc_png.h"
#include "metadata/edit/iptc_psd.h"
#include "metadata/exif_data.h"
#include "metadata/jpeg_segments.h"
#include "metadata/messages.h"
#include "metadata/png_chunks.h"
#include "metadata/psd_resources.h"
#include "support/jp2_builder.h"
#include "support/jpeg_builder.h"
#include "support/metadata_blocks.h"
#include "support/png_builder.h"
#include "support/psd_builder.h"
#include "support/refusal.h"
#include "support/temp_dir.h"

namespace ml::metadata {
namespace {

using Items = std::vector<IptcItem>;
using test::BoxLength;

const test::IptcEntry kEncoding{.dataset = 90, .value = "\x1b%G", .record = 1};
const std::string kOld = test::IptcBlock({kEncoding, {25, "old"}, {120, "An old caption"}});
const IptcBlock kNew{{{2, 25, "one"}, {2, 25, "two"}, {2, 80, "Zo\xc3\xab"}, {2, 120, "A new caption"}, {2, 200, "x"}},
                     {.otherRecords = test::IptcBlock({kEncoding}), .tail = ""}};

using Edit = std::function<void(EditedFile&)>;
/// What the file becomes; its picture is looked at.
std::string After(const std::string& file, ImageDataFinder picture, const Edit& edit) {
  const auto source = SourceOf(file);
  EditedFile edited(source);
  edit(edited);
  RequireSameImageData(edited, picture);
  return TextOf(edited);
}

/// The sentence of the refusal, after which nothing may have been touched; empty if there was none.
std::string Refusal(const std::string& file, const Edit& edit) {
  const auto source = SourceOf(file);
  EditedFile edited(source);
  const auto said = test::Refusal([&] { edit(edited); });
  EXPECT_TRUE(said.empty() || !edited.Touched());
  return said;
}

ExifData Read(const std::string& name, const std::string& content) {
  const test::TempDir dir;
  return ExifData(dir.Write(name, content));
}

Edit Jpeg(const IptcBlock& block) {
  return [block](EditedFile& file) { WriteJpegIptc(file, block); };
}
Edit Png(const IptcBlock& block, CaptionIsComment caption = CaptionIsComment::No) {
  return [=](EditedFile& file) { WritePngIptc(file, block, caption); };
}
Edit Psd(const IptcBlock& block) {
  return [block](EditedFile& file) { WritePsdIptc(file, block); };
}
Edit Jp2(const IptcBlock& block) {
  return [block](EditedFile& file) { WriteJp2Iptc(file, block); };
}

const auto kPicture = test::PaintPlain(8, 8, 0);
std::string JpegWith(const std::string& segments) { return test::InsertSegments(test::EncodeJpeg(kPicture), segments); }
std::string Resource(int id, const std::string& data) { return test::ImageResources({{id, data}}); }
std::string Built(const IptcBlock& block, IptcCarrier carrier) { return TextOf(BuildIptcBlock(block, carrier)); }
const std::string kNewResource = Resource(1028, Built(kNew, IptcCarrier::Resource));

TEST(WriteJpegIptc, ChangesItsResourceAndNothingElse) {
  const auto odd = Resource(1005, "odd"), digest = Resource(1061, std::string(16, 'd')), old = Resource(1028, kOld);
  const auto exif = test::ExifSegment(test::ExifDirectories({.make = "Maker"})), xmp = test::XmpSegment("packet");
  const auto app0 = test::JpegSegment(0xe0, std::string("JFIF\0\1\2\0\0\1\0\1\0\0", 14));
  const auto marked = [](const std::string& resources) { return test::ResourceSegment(resources); };
  const auto colour = test::JpegSegment(0xed, "Adobe_CM");
  const auto comment = test::CommentSegment("text");
  struct Case {
    const char* what;
    std::string before, after;
    std::string emptied;  ///< what clearing leaves
  };
  const auto fresh = marked(kNewResource);
  const Case cases[] = {
      {"none", exif + xmp + comment, exif + xmp + fresh + comment, exif + xmp + comment},
      {"replaced in place", app0 + marked(odd + old + digest) + xmp, app0 + marked(odd + kNewResource + digest) + xmp,
       app0 + marked(odd + digest) + xmp},
      {"added in front", comment + marked(odd + digest), comment + marked(kNewResource + odd + digest),
       comment + marked(odd + digest)},
      {"no resources", marked("") + comment, fresh + comment, marked("") + comment},
      {"the only one", xmp + marked(old), xmp + fresh, xmp},
      {"no mark", test::JpegSegment(0xed, odd + old), marked(odd + kNewResource), marked(odd)},
      {"datasets", test::JpegSegment(0xed, kOld), fresh, ""},
      {"something else", colour + comment, fresh + colour + comment, colour + comment},
      {"garbage behind", marked(old + "garbage"), marked(kNewResource + "garbage"), marked("garbage")},
      {"two segments", marked(odd) + marked(old), marked(kNewResource + odd) + marked(old), marked(odd) + marked(old)},
  };
  for (const auto& c : cases) {
    const auto before = JpegWith(c.before);
    EXPECT_EQ(After(before, JpegImageData, Jpeg(kNew)), JpegWith(c.after)) << c.what;
    EXPECT_EQ(After(before, JpegImageData, Jpeg({})), JpegWith(c.emptied)) << c.what;
    EXPECT_EQ(Read("a.jpg", JpegWith(c.after)).iptc.size(), kNew.items.size() + 1) << c.what;
  }
}

TEST(WriteJpegIptc, FollowsAResourceOverSegmentsAndKeepsTheirOthers) {
  const std::string caption(1000, 'c');
  const auto whole = Resource(1005, "odd") +
                     Resource(1028, test::IptcBlock({{25, "one"}, {120, caption}, {105, "odd"}})) +
                     Resource(1061, "digest");
  for (const std::size_t cut : {40U, 300U, 1000U, 1050U}) {
    const auto segments = [&](const std::string& first, const std::string& second, const std::string& third) {
      auto text = test::ResourceSegment(first) + test::ResourceSegment(second);
      if (!third.empty()) text += test::ResourceSegment(third);
      return JpegWith(text + test::CommentSegment("text"));
    };
    const auto half = (whole.size() - cut) / 2;
    const auto file = segments(whole.substr(0, cut), whole.substr(cut, half), whole.substr(cut + half));
    EXPECT_EQ(Read("a.jpg", file).iptc, (Items{{2, 25, "one"}, {2, 120, caption}, {2, 105, "odd"}})) << cut;
    const auto after = After(file, JpegImageData, Jpeg(kNew));
    EXPECT_EQ(Read("a.jpg", after).iptc.size(), kNew.items.size() + 1) << cut;
    EXPECT_EQ(after.find(caption.substr(0, 20)), std::string::npos) << "nothing of the old one stays, " << cut;
    std::string joined;
    const auto source = SourceOf(after);
    JpegSegments walk(source);
    while (const auto segment = walk.Next()) {
      if (segment->marker == jpeg_marker::kApp13)
        joined += after.substr(segment->payload + 14, segment->payloadSize - 14);
    }
    EXPECT_EQ(joined, Resource(1005, "odd") + kNewResource + Resource(1061, "digest")) << cut;
  }
}

TEST(WriteJpegIptc, HoldsWhatASegmentHoldsAndRefusesMore) {
  // Mark, head and the longest block of an even size fill the segment but for one byte.
  constexpr std::size_t most = 65'532 - 14 - 12, version = 7, head = 5;
  const auto block = [&](std::size_t size) {
    IptcBlock built;
    for (auto left = size - version; left > 0;) {
      auto value = std::min<std::size_t>(left - head, 10'000);
      if (left - head - value > 0 && left - head - value <= head) value -= head;
      built.items.push_back({2, 120, std::string(value, 'c')});
      left -= value + head;
    }
    return built;
  };
  const auto plain = JpegWith("");
  const auto crowded = JpegWith(test::ResourceSegment(Resource(1005, "five") + Resource(1028, kOld)));
  const auto full = After(plain, JpegImageData, Jpeg(block(most)));
  EXPECT_EQ(full.size(), plain.size() + 65'532 + 4);
  EXPECT_EQ(After(crowded, JpegImageData, Jpeg(block(most))),
            JpegWith(test::ResourceSegment(Resource(1028, Built(block(most), IptcCarrier::Resource))) +
                     test::ResourceSegment(Resource(1005, "five"))))
      << "the others do not stand in the way";
  for (const auto& file : {plain, crowded, full})
    EXPECT_EQ(Refusal(file, Jpeg(block(most + 1))), messages::kIptcTooLong);
}

TEST(WritePngIptc, WritesItsTextsAndLeavesThoseOfOthers) {
  const auto author = test::PngText("Author", "Somebody"), software = test::PngCompressedText("Software", "A program");
  const auto file = test::EncodePng(
      kPicture,
      {.before = author + software, .after = test::PngCompressedText("IPTC", "2:25:3:old\n"), .dataChunks = 3});
  const auto texts = [](const std::string& content, const char* key) {
    const auto source = SourceOf(content);
    std::string all;
    const auto info = ReadPngInfo(source).value();
    for (const auto& text : info.texts) all += text.key == key ? text.value + "|" : "";
    return all;
  };
  const auto written = After(file, PngImageData, Png(kNew, CaptionIsComment::Yes));
  EXPECT_EQ(Read("a.png", written).iptc, kNew.items);
  EXPECT_EQ(texts(written, "Author"), "Zo\xc3\xab|");
  EXPECT_NE(written.find("iTXtAuthor"), std::string::npos) << "marked as UTF-8";
  EXPECT_EQ(texts(written, "Description"), "A new caption|");
  EXPECT_EQ(texts(written, "Software"), "A program|");
  EXPECT_EQ(texts(After(file, PngImageData, Png(kNew)), "Description"), "") << "the caption is no comment";
  EXPECT_EQ(texts(After(file, PngImageData, Png({})), "Author"), "Somebody|") << "not made from a value";
  const auto raw = test::EncodePng(kPicture, {.before = test::PngCompressedText("Raw profile type iptc", "old")});
  EXPECT_EQ(texts(After(raw, PngImageData, Png({.items = {{2, 25, "ab"}}})), "Raw profile type iptc"),
            "\niptc\n      26\n3842494d040400000000000e1c0200000200021c021900026162\n|");
  const auto cleared = After(written, PngImageData, Png({}, CaptionIsComment::Yes));
  for (const auto* key : {"IPTC", "Author", "Description"}) EXPECT_EQ(texts(cleared, key), "") << key;
  EXPECT_EQ(texts(cleared, "Software"), "A program|");
}

TEST(WritePsdIptc, ChangesTheSectionOfResources) {
  const auto psd = [](const std::string& resources) { return test::EncodePsd(kPicture, {.resources = resources}); };
  const auto odd = Resource(1005, "odd"), digest = Resource(1061, "digest"), foreign = std::string("MeSaforeign");
  const std::pair<std::string, std::string> cases[] = {
      {psd(""), psd(kNewResource)},
      {psd(odd + digest), psd(kNewResource + odd + digest)},
      {psd(odd + Resource(1028, kOld) + digest + foreign), psd(odd + kNewResource + digest + foreign)},
  };
  for (const auto& [before, after] : cases) {
    EXPECT_EQ(After(before, PsdImageData, Psd(kNew)), after);
    EXPECT_EQ(Read("a.psd", after).iptc.size(), kNew.items.size() + 1);
  }
  EXPECT_EQ(After(cases[1].second, PsdImageData, Psd({})), cases[1].first);
}

TEST(WriteJp2Iptc, PutsItsBoxWhereNoOtherMoves) {
  const auto file = [](const std::string& after, BoxLength length) {
    return test::EncodeJp2(kPicture, {.before = test::Jp2XmpBox("packet"), .after = after, .length = length});
  };
  const auto box = test::Jp2IptcBox(Built(kNew, IptcCarrier::Bare)), old = test::Jp2IptcBox(kOld);
  const auto other = test::Jp2Box("free", "x", BoxLength::Long), open = test::Jp2Box("free", "y", BoxLength::ToEnd);
  const auto closed = test::Jp2Box("free", "y");
  const std::pair<std::string, std::string> cases[] = {
      {file("", BoxLength::Short), file(box, BoxLength::Short)},
      {file(other, BoxLength::Long), file(other + box, BoxLength::Long)},
      {file("", BoxLength::ToEnd), file(box, BoxLength::Short)},
      {file(open, BoxLength::Short), file(closed + box, BoxLength::Short)},
      {file(old + other, BoxLength::Long), file(box + other, BoxLength::Long)},
  };
  for (const auto& [before, after] : cases) {
    EXPECT_EQ(After(before, Jp2ImageData, Jp2(kNew)), after);
    EXPECT_EQ(Read("a.jp2", after).iptc.size(), kNew.items.size() + 1);
  }
  EXPECT_EQ(After(cases[1].second, Jp2ImageData, Jp2({})), cases[1].first);
}

TEST(IptcWriters, RefuseWhatIsNotWhole) {
  const auto png = test::EncodePng(kPicture);
  const auto psd = test::EncodePsd(kPicture, {.resources = kNewResource});
  const auto jp2 = test::EncodeJp2(kPicture);
  const std::pair<std::string, Edit> cases[] = {
      {"", Jpeg(kNew)},
      {"no picture", Jpeg(kNew)},
      {JpegWith(test::ResourceSegment(kNewResource)).substr(0, 60), Jpeg(kNew)},
      {png.substr(0, 40), Png(kNew)},
      {png.substr(0, png.size() - 20), Png(kNew)},
      {psd.substr(0, 60), Psd(kNew)},
      {psd.substr(0, 20), Psd(kNew)},
      {jp2.substr(0, jp2.size() - 10), Jp2(kNew)},
      {test::EncodeCodeStream(kPicture, {}), Jp2(kNew)},
  };
  for (const auto& [file, edit] : cases) EXPECT_EQ(Refusal(file, edit), messages::kDamagedForEdit) << file.size();
}

TEST(IptcWriters, NeverFailOtherwiseOnDamagedFiles) {
  const std::pair<std::string, Edit> files[] = {
      {JpegWith(test::ResourceSegment(Resource(1005, "odd") + Resource(1028, kOld).substr(0, 30)) +
                test::ResourceSegment(kOld)),
       Jpeg(kNew)},
      {test::EncodePng(kPicture, {.before = test::PngText("IPTC", "2:25:3:old\n")}), Png(kNew, CaptionIsComment::Yes)},
      {test::EncodePsd(kPicture, {.resources = Resource(1005, "odd") + Resource(1028, kOld)}), Psd(kNew)},
      {test::EncodeJp2(kPicture, {.before = test::Jp2IptcBox(kOld), .length = BoxLength::Long}), Jp2(kNew)},
  };
  std::mt19937 random(11);
  for (const auto& [file, edit] : files) {
    for (int round = 0; round < 3000; ++round) {
      auto damaged = file;
      for (int i = 0; i < 3; ++i)
        damaged[random() % std::min<std::size_t>(damaged.size(), 400)] = static_cast<char>(random());
      if (round % 3 == 0) damaged.resize(random() % damaged.size());
      Refusal(damaged, edit);
    }
  }
}

}  // namespace
}  // namespace ml::metadata
