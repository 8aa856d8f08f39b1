#include <cstdio>
#include <exception>
#include <filesystem>
#include <string>

#include "platform/dates.h"
#include "support/demo_files.h"
#include "support/jpeg_builder.h"
#include "support/metadata_blocks.h"
#include "support/sample_photo.h"
#include "write_file.h"

/// Fills a directory with made-up photographs, for trying the program where there are no real ones:
///   marrowlantern-samples DIRECTORY [COUNT [WIDTH HEIGHT]]
/// Without a COUNT a few files of every other kind stand among the JPEG files.
namespace ml::test {
namespace {

/// A day's pictures, one every seven minutes.
std::string DateOf(int number) {
  const auto morning = platform::ParseDateTime("2003:10:04 08:00:00");
  return platform::ExifDateText(*platform::ToTime(*morning) + number * 7L * 60L);
}

/// Every fifth is a portrait that its tag alone turns, every sixth has no embedded thumbnail.
SamplePhoto PhotoOfTheDay(int number, int width, int height) {
  SamplePhoto photo;
  photo.width = width;
  photo.height = height;
  photo.seed = static_cast<unsigned>(number);
  photo.orientation = number % 5 == 0 ? 6 : 1;
  photo.thumbnail = number % 6 != 0;
  photo.dateTime = DateOf(number);
  return photo;
}

enum class Kinds { JpegOnly, All };

void MakeDirectory(const std::filesystem::path& directory, int count, int width, int height, Kinds kinds) {
  // Made beside its place and renamed, so that a directory that is there is a whole one.
  const auto unfinished = directory.string() + ".part";
  std::filesystem::remove_all(unfinished);
  std::filesystem::create_directories(unfinished);
  for (int number = 1; number <= count; ++number) {
    std::string name = std::to_string(number);
    name = "IMG_" + std::string(4 - std::min<std::size_t>(4, name.size()), '0') + name;
    const auto photo =
        InsertSegments(MakePhoto(PhotoOfTheDay(number, width, height)),
                       ResourceSegment(ImageResources({{1028, DemoTexts("Hills " + std::to_string(number)), ""}})));
    WriteFile(std::filesystem::path(unfinished) / (name + ".JPG"), photo);
    if (number % 9 == 0) WriteFile(std::filesystem::path(unfinished) / (name + ".wav"), "RIFF");
  }
  if (kinds == Kinds::All) {
    for (const auto& [name, content] : OtherKinds(count + 1, DateOf)) {
      WriteFile(std::filesystem::path(unfinished) / name, content);
    }
  }
  std::filesystem::rename(unfinished, directory);
}

}  // namespace
}  // namespace ml::test

int main(int argc, char** argv) {
  if (argc != 2 && argc != 3 && argc != 5) {
    std::fputs("usage: marrowlantern-samples DIRECTORY [COUNT [WIDTH HEIGHT]]\n", stderr);
    return 2;
  }
  try {
    const int count = argc > 2 ? std::stoi(argv[2]) : 24;
    const int width = argc > 3 ? std::stoi(argv[3]) : 1536;
    const int height = argc > 3 ? std::stoi(argv[4]) : 1024;
    ml::test::MakeDirectory(argv[1], count, width, height, argc > 2 ? ml::test::Kinds::JpegOnly : ml::test::Kinds::All);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "marrowlantern-samples: %s\n", error.what());
    return 1;
  }
  return 0;
}
