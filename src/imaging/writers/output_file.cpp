#include "imaging/writers/output_file.h"

#include <cstring>
#include <utility>

#include "platform/errors.h"

namespace ml::imaging {
namespace {

constexpr std::size_t kPiece = std::size_t{1} << 20;

/// What follows the path, where the cause names it.
std::string ReasonOf(const std::string& cause, const std::string& path) {
  const auto named = path + '\n';
  const auto place = cause.find(named);
  return place == std::string::npos ? cause : cause.substr(place + named.size());
}

}  // namespace

std::string RefusalOf(const char* sentence, const std::string& path, const std::string& cause) {
  const auto reason = ReasonOf(cause, path);
  return sentence + path + (reason.empty() ? "" : "\n" + reason);
}

OutputFile::OutputFile(const std::string& path, const Refusal& refusal, const WriteOptions& options)
    : options_(options), path_(path), refusal_(refusal) {
  if (options.stop.stop_requested()) throw platform::Cancelled();
  try {
    file_ = std::make_unique<platform::AtomicFile>(path, options.file);
  } catch (const platform::UserError& error) {
    throw platform::UserError(RefusalOf(refusal_.sentence, path_, error.what()));
  }
}

void OutputFile::Put(std::span<const std::byte> bytes) {
  try {
    file_->Write(bytes);
  } catch (const platform::UserError& error) {
    throw Broken(error.what());
  }
}

void OutputFile::Flush() {
  if (!gathered_.empty()) Put(gathered_);
  gathered_.clear();
}

void OutputFile::Write(std::span<const std::byte> bytes) {
  if (gathered_.size() + bytes.size() >= kPiece) Flush();
  if (bytes.size() >= kPiece) return Put(bytes);
  gathered_.insert(gathered_.end(), bytes.begin(), bytes.end());
}

void OutputFile::Done(int done, int all) {
  if (options_.stop.stop_requested()) throw platform::Cancelled();
  const int percent = static_cast<int>(done * 100LL / all);
  if (options_.progress != nullptr && percent != percent_) options_.progress->percent(percent);
  percent_ = percent;
}

void OutputFile::Commit() {
  Flush();
  if (options_.stop.stop_requested()) throw platform::Cancelled();
  try {
    file_->Commit();
  } catch (const platform::UserError& error) {
    throw Broken(error.what());
  }
}

platform::UserError OutputFile::Broken(const std::string& cause) const {
  const std::string line = refusal_.onWriting;
  const auto reason = line.empty() ? "" : line + '\n';
  return platform::UserError(RefusalOf(refusal_.sentence, path_, reason + ReasonOf(cause, path_)));
}

const std::byte* RgbRow(const PixelRows& pixels, int y, std::vector<std::byte>& scratch) {
  const auto* row = pixels.Row(y);
  if (pixels.channels != 3 || pixels.order == PixelOrder::Rgb) return row;
  const auto sample = static_cast<std::size_t>(pixels.bytesPerSample);
  scratch.resize(pixels.RowBytes());
  for (std::size_t at = 0; at < scratch.size(); at += 3 * sample) {
    for (std::size_t channel = 0; channel < 3; ++channel) {
      std::memcpy(scratch.data() + at + channel * sample, row + at + (2 - channel) * sample, sample);
    }
  }
  return scratch.data();
}

}  // namespace ml::imaging
