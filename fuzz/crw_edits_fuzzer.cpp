#include "metadata/edit/ciff_file.h"
#include "metadata/edit/crw_writer.h"

#include "fuzz_source.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace ml::metadata;
  const auto source = FuzzSource(data, size);
  EditedFile file(source);
  Refusable([&] { TurnCrw(file, 90); });
  Refusable([&] { AdjustCrwTime(file, 3600); });
  Refusable([&] { WriteCrwComment(file, "a comment"); });
  Refusable([&] {
    const CiffFile ciff(source);
    const auto settings = ciff.CollectSettings();
    EditedFile anew(source);
    ciff.Write(anew, {.settings = &settings});
    CiffFile(anew).CollectSettings();
  });
  return 0;
}
