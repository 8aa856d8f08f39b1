#include "metadata/edit/iptc_psd.h"

#include <algorithm>
#include <limits>

#include "metadata/byte_writer.h"
#include "metadata/edit/image_data.h"
#include "metadata/edit/iptc_resource.h"
#include "metadata/messages.h"
#include "metadata/psd_resources.h"
#include "platform/errors.h"

namespace ml::metadata {
namespace {

/// With its pad byte, which the last one may lack; nothing at the front of the area if there is none.
FileRange OldResource(const PsdFile& psd) {
  const auto* iptc = FindPsdResource(psd.resources, psd_resource::kIptc);
  if (iptc == nullptr) return {psd.resourceArea.position, 0};
  const auto end = std::min(iptc->data.End() + (iptc->data.size & 1), psd.resourceArea.End());
  return {iptc->position, end - iptc->position};
}

}  // namespace

void WritePsdIptc(EditedFile& file, const IptcBlock& block) {
  PsdImageData(file);
  const auto psd = ReadPsdFile(file);
  const auto old = OldResource(*psd);
  const auto resource = BuildIptcResource(block, file, old);
  const auto size = psd->resourceArea.size - old.size + resource.size();
  if (size > std::numeric_limits<std::uint32_t>::max()) throw platform::UserError(messages::kIptcTooLong);
  if (resource.empty() && old.size == 0) return;
  file.Replace(old, resource);
  ByteWriter length(ByteOrder::Big);
  length.Long(static_cast<std::uint32_t>(size));
  file.Overwrite(psd->resourceArea.position - length.Size(), length.View());
}

}  // namespace ml::metadata
