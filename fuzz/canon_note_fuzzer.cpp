#include "metadata/canon/canon_note.h"

#include <iterator>

#include "fuzz_source.h"

/// The first two bytes choose the camera, the form and the byte order; the note begins behind them.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace ml::metadata;
  constexpr const char* kModels[] = {"Canon EOS D30", "Canon EOS 10D", "Canon EOS-1D", "Canon PowerShot G5",
                                     "Canon EOS Kiss X"};
  if (size < 2) return 0;
  const auto source = FuzzSource(data, size);
  ExifData record;
  record.model = kModels[data[0] % std::size(kModels)];
  const auto form = (data[1] & 1) != 0 ? MakerNoteForm::File : MakerNoteForm::Block;
  const auto order = (data[1] & 2) != 0 ? ByteOrder::Big : ByteOrder::Little;
  ReadCanonMakerNote(record, {source, order, 2, static_cast<std::uint32_t>(size), form});
  return 0;
}
