#include "metadata/edit/iptc_resource.h"

#include <limits>

#include "metadata/byte_writer.h"
#include "metadata/messages.h"
#include "metadata/psd_resources.h"
#include "platform/errors.h"

namespace ml::metadata {

std::vector<std::byte> BuildIptcResource(const IptcBlock& block, const ByteSource& file, const FileRange& old) {
  const auto data = BuildIptcBlock(block, IptcCarrier::Resource);
  if (data.empty()) return {};
  if (data.size() > std::numeric_limits<std::uint32_t>::max()) throw platform::UserError(messages::kIptcTooLong);
  ByteWriter out(ByteOrder::Big);
  const auto found = ReadPsdResources(file, old, CutResource::Keep);
  if (found.empty()) {
    out.Text("8BIM");
    out.Short(psd_resource::kIptc);
    out.Short(0);  // no name
  } else {
    out.Bytes(file.Read(old.position, found.front().data.position - old.position - sizeof(std::uint32_t)));
  }
  out.Long(static_cast<std::uint32_t>(data.size()));
  out.Bytes(data);
  return out.Take();
}

}  // namespace ml::metadata
