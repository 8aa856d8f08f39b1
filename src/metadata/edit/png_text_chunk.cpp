#include "metadata/edit/png_text_chunk.h"

#define ZLIB_CONST
#include <zlib.h>

#include <algorithm>
#include <ranges>

#include "metadata/byte_writer.h"
#include "metadata/edit/image_data.h"
#include "metadata/messages.h"
#include "metadata/png_chunks.h"
#include "platform/errors.h"
#include "platform/text.h"

namespace ml::metadata {
namespace {

constexpr std::size_t kFraming = 12;  ///< bytes of a chunk beside its data: length, type, checksum

bool IsAscii(std::string_view text) {
  return std::ranges::all_of(text, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

std::vector<std::byte> BuildChunk(std::string_view type, std::string_view data) {
  ByteWriter out(ByteOrder::Big);
  out.Long(static_cast<std::uint32_t>(data.size()));
  out.Text(type);
  out.Text(data);
  const auto summed = std::span(out.View()).subspan(4);
  const auto* start = reinterpret_cast<const Bytef*>(summed.data());  // unsigned char may alias everything
  out.Long(static_cast<std::uint32_t>(::crc32_z(0, start, summed.size())));
  return out.Take();
}

bool HasKey(const ByteSource& file, const PngChunk& chunk, std::string_view key) {
  if (chunk.type != "tEXt" && chunk.type != "zTXt" && chunk.type != "iTXt") return false;
  const auto wanted = std::string(key) + '\0';
  const auto start = file.ReadUpTo(chunk.data.position, std::min<std::uint64_t>(wanted.size(), chunk.data.size));
  return ByteView(start, ByteOrder::Big).StartsWith(wanted);
}

FileRange Whole(const PngChunk& chunk) { return {chunk.position, chunk.data.size + kFraming}; }

struct Places {
  std::vector<FileRange> texts;  ///< the chunks with the key
  std::uint64_t pixels = 0;      ///< where the first chunk of them begins
};

Places FindPlaces(const ByteSource& file, std::string_view key) {
  Places places;
  PngChunks chunks(file);
  while (const auto chunk = chunks.Next()) {
    if (HasKey(file, *chunk, key)) places.texts.push_back(Whole(*chunk));
    if (chunk->type == "IDAT" && places.pixels == 0) places.pixels = chunk->position;
  }
  return places;
}

}  // namespace

std::vector<std::byte> BuildPngText(std::string_view key, std::string_view text, PngTextForm form) {
  const bool isUtf8 = form == PngTextForm::Text && !IsAscii(text) && platform::IsValidUtf8(text);
  auto data = std::string(key) + '\0';
  if (isUtf8) data.append(4, '\0');  // not packed, by no method, in no language, and the key in it
  data.append(text);
  if (data.size() > kMaxPngText) throw platform::UserError(messages::kPngTextTooLong);
  return BuildChunk(isUtf8 ? "iTXt" : "tEXt", data);
}

void SetPngText(EditedFile& file, std::string_view key, std::string_view text, PngTextForm form) {
  PngImageData(file);
  const auto places = FindPlaces(file, key);
  if (text.empty()) {
    for (const auto& range : std::views::reverse(places.texts)) file.Remove(range);
    return;
  }
  const auto chunk = BuildPngText(key, text, form);
  const auto place = places.texts.empty() ? FileRange{places.pixels, 0} : places.texts.front();
  file.Replace(place, chunk);
}

}  // namespace ml::metadata
