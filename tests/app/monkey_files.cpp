#include "app/monkey_files.h"

#include <sys/stat.h>

#include <filesystem>
#include <fstream>
#include <stdexcept>

#include "support/demo_files.h"
#include "support/jpeg_builder.h"
#include "support/sample_photo.h"
#include "support/temp_dir.h"

namespace ml::test {
namespace {

namespace fs = std::filesystem;

constexpr int kWholePhotos = 30, kFewPhotos = 5;

std::string DateOf(int number) {
  const auto two = [](int n) { return std::string(n < 10 ? "0" : "") + std::to_string(n); };
  return "2003:10:04 " + two(8 + number / 60 % 12) + ":" + two(number % 60) + ":00";
}

std::string Photo(int number) {
  return MakePhoto({.width = 320 + number % 3 * 200,
                    .height = 240,
                    .seed = static_cast<unsigned>(number),
                    .thumbnail = number % 4 != 0,
                    .orientation = number % 9,
                    .dateTime = DateOf(number)});
}

}  // namespace

MonkeyFiles::MonkeyFiles(std::string root)
    : root_(std::move(root)), directories_{root_ + "/shots/day", root_ + "/shots/few", root_ + "/shots/none"} {
  for (const auto& directory : directories_) fs::create_directories(directory);
  for (int i = 1; i <= kWholePhotos; ++i) Put(directories_[0] + "/IMG_" + std::to_string(i) + ".JPG", Photo(i));
  for (int i = 1; i <= kFewPhotos; ++i) Put(directories_[1] + "/few " + std::to_string(i) + ".jpg", Photo(100 + i));
  for (const auto& file : OtherKinds(kWholePhotos + 1, DateOf)) Put(directories_[0] + "/" + file.name, file.content);
  MakeDamaged();
}

void MonkeyFiles::MakeDamaged() {
  const auto& day = directories_[0];
  const auto whole = files_;
  int number = 0;
  for (const auto& [path, content] : whole) {
    if (path.starts_with(day) && path.find(".JPG") == std::string::npos) {
      const auto place = fs::path(path);
      const auto half = content.bytes.substr(0, content.bytes.size() / 2);
      Put(day + "/half " + std::to_string(++number) + place.extension().string(), half);
    }
  }
  const auto photo = Photo(7);
  Put(day + "/pixel.jpg", EncodeJpeg(PaintPlain(1, 1, 0x808080)));
  Put(day + "/huge.jpg", WithClaimedSize(photo, 30'000, 20'000));
  Put(day + "/empty.jpg", "");
  Put(day + "/text.jpg", "not a picture\n");
  auto scratched = photo;
  for (std::size_t i = 600; i < scratched.size(); i += 97) scratched[i] = static_cast<char>(scratched[i] ^ 0x55);
  Put(day + "/scratched.jpg", scratched);
  fs::create_directory(day + "/directory.jpg");
  fs::create_symlink(day + "/nowhere", day + "/dangling.jpg");
  if (::mkfifo((day + "/pipe.jpg").c_str(), 0600) != 0) throw std::runtime_error("mkfifo failed");
}

void MonkeyFiles::Put(const std::string& path, const std::string& bytes) {
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  out << bytes;
  if (!out.flush()) throw std::runtime_error("cannot write " + path);
  files_[path] = {bytes};
}

std::string MonkeyFiles::AnyFile(std::mt19937& random) const {
  if (files_.empty()) return {};
  return std::next(files_.begin(), static_cast<long>(random() % files_.size()))->first;
}

std::string MonkeyFiles::MoveDirectory() {
  const auto& day = directories_[0];
  if (movedAway_) fs::remove_all(day);  // a program may have made a file there meanwhile
  movedAway_ ? fs::rename(day + " away", day) : fs::rename(day, day + " away");
  movedAway_ = !movedAway_;
  return movedAway_ ? "directory away" : "directory back";
}

std::string MonkeyFiles::ChangeSomething(std::mt19937& random) {
  const auto what = random() % 16;
  if (movedAway_ || what == 0) return MoveDirectory();
  const auto path = AnyFile(random);
  if (what < 5 || path.empty()) {
    const auto added = directories_[random() % 2] + "/added " + std::to_string(++added_) + ".jpg";
    Put(added, Photo(static_cast<int>(random() % 500)));
    return "add " + added;
  }
  auto& content = files_.at(path);
  if (what < 9) {
    fs::remove(path);
    files_.erase(path);
    return "remove " + path;
  }
  if (what < 12 && content.readable) {
    auto bytes = content.bytes;
    bytes.resize(bytes.size() * (random() % 8) / 8);
    Put(path, bytes);
    return "cut " + path;
  }
  if (what < 14) {
    content.readable = !content.readable;
    fs::permissions(path, content.readable ? fs::perms::owner_read | fs::perms::owner_write : fs::perms::none);
    return (content.readable ? "readable " : "unreadable ") + path;
  }
  const auto renamed = directories_[0] + "/renamed " + std::to_string(++added_) + fs::path(path).extension().string();
  fs::rename(path, renamed);
  auto node = files_.extract(path);
  node.key() = renamed;
  files_.insert(std::move(node));
  return "rename " + path;
}

std::vector<std::string> MonkeyFiles::ChangedByOthers() const {
  std::vector<std::string> changed;
  const auto& day = directories_[0];
  for (const auto& [path, content] : files_) {
    const auto now = movedAway_ && path.starts_with(day + "/") ? day + " away" + path.substr(day.size()) : path;
    const auto bytes = ReadAll(now);
    // Without the right to read nothing can be told.
    if (content.readable ? bytes != content.bytes : bytes && *bytes != content.bytes) changed.push_back(path);
  }
  return changed;
}

}  // namespace ml::test
