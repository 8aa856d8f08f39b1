#include "support/jp2_builder.h"

#include <openjpeg.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <stdexcept>
#include <vector>

#include "support/byte_string.h"

namespace ml::test {
namespace {

/// What the library writes to; it goes back to mend what it wrote before.
struct Sink {
  std::string bytes;
  std::size_t place = 0;
};
OPJ_SIZE_T Write(void* buffer, OPJ_SIZE_T size, void* user) {
  auto& sink = *static_cast<Sink*>(user);
  sink.bytes.resize(std::max(sink.bytes.size(), sink.place + size));
  std::memcpy(sink.bytes.data() + sink.place, buffer, size);
  sink.place += size;
  return size;
}
OPJ_BOOL Seek(OPJ_OFF_T place, void* user) {
  static_cast<Sink*>(user)->place = static_cast<std::size_t>(place);
  return OPJ_TRUE;
}
OPJ_OFF_T Skip(OPJ_OFF_T size, void* user) {
  static_cast<Sink*>(user)->place += static_cast<std::size_t>(size);
  return size;
}

using Image = std::unique_ptr<opj_image_t, decltype(&opj_image_destroy)>;
using Codec = std::unique_ptr<opj_codec_t, decltype(&opj_destroy_codec)>;
using Stream = std::unique_ptr<opj_stream_t, decltype(&opj_stream_destroy)>;

Image MakeImage(const Picture& picture, const Jp2Encoding& encoding) {
  const std::size_t channels = encoding.grey ? 1 : 3;
  std::vector<opj_image_cmptparm_t> components(channels);
  for (auto& component : components) {
    component.dx = component.dy = 1;
    component.w = static_cast<OPJ_UINT32>(picture.width);
    component.h = static_cast<OPJ_UINT32>(picture.height);
    component.prec = static_cast<OPJ_UINT32>(encoding.bits);
  }
  Image image(opj_image_create(static_cast<OPJ_UINT32>(channels), components.data(),
                               encoding.grey ? OPJ_CLRSPC_GRAY : OPJ_CLRSPC_SRGB),
              opj_image_destroy);
  image->x1 = components[0].w;
  image->y1 = components[0].h;
  for (std::size_t channel = 0; channel < channels; ++channel) {
    auto* out = image->comps[channel].data;
    for (std::size_t at = encoding.grey ? 1 : channel; at < picture.rgb.size(); at += 3) {
      *out++ = static_cast<unsigned char>(picture.rgb[at]) * (encoding.bits == 16 ? 257 : 1);
    }
  }
  return image;
}

/// No more halvings than the shorter side bears.
int Resolutions(const Picture& picture) {
  int count = 1;
  while (count < 6 && std::min(picture.width, picture.height) >> count > 0) ++count;
  return count;
}

std::string HeaderBoxes(const Picture& picture, const Jp2Encoding& encoding) {
  constexpr int kWavelet = 7, kSrgb = 16, kGrey = 17, kByNumber = 1, kByProfile = 2;
  ByteString header(Endian::Big), colour(Endian::Big);
  header.Long(static_cast<std::uint64_t>(picture.height)).Long(static_cast<std::uint64_t>(picture.width));
  header.Short(encoding.grey ? 1 : 3).Byte(static_cast<std::uint64_t>(encoding.bits - 1)).Byte(kWavelet).Zeros(2);
  if (encoding.profile.empty()) {
    colour.Byte(kByNumber).Zeros(2).Long(encoding.grey ? kGrey : kSrgb);
  } else {
    colour.Byte(kByProfile).Zeros(2).Text(encoding.profile);
  }
  return Jp2Box("ihdr", header.Bytes()) + Jp2Box("colr", colour.Bytes());
}

}  // namespace

std::string Jp2Box(std::string_view type, std::string_view content, BoxLength length) {
  ByteString out(Endian::Big);
  switch (length) {
    case BoxLength::Short:
      out.Long(content.size() + 8).Text(type);
      break;
    case BoxLength::Long:
      out.Long(1).Text(type).Number(content.size() + 16, 8);
      break;
    case BoxLength::ToEnd:
      out.Long(0).Text(type);
      break;
  }
  return out.Text(content).Take();
}
std::string Jp2UuidBox(std::string_view uuid, std::string_view content) {
  return Jp2Box("uuid", std::string(uuid).append(content));
}
std::string Jp2IptcBox(std::string_view iptc) {
  return Jp2UuidBox("\x33\xc7\xa4\xd2\xb8\x1d\x47\x23\xa0\xba\xf1\xa3\xe0\x97\xad\x38", iptc);
}
std::string Jp2XmpBox(std::string_view packet) {
  return Jp2UuidBox("\xbe\x7a\xcf\xcb\x97\xa9\x42\xe8\x9c\x71\x99\x94\x91\xe3\xaf\xac", packet);
}

std::string EncodeCodeStream(const Picture& picture, const Jp2Encoding& encoding) {
  opj_cparameters_t parameters;
  opj_set_default_encoder_parameters(&parameters);
  parameters.tcp_numlayers = 1;
  parameters.cp_disto_alloc = 1;
  parameters.tcp_rates[0] = encoding.rate > 1 ? static_cast<float>(encoding.rate) : 0;
  parameters.numresolution = Resolutions(picture);
  parameters.tcp_mct = encoding.grey ? 0 : 1;
  const auto image = MakeImage(picture, encoding);
  const Codec codec(opj_create_compress(OPJ_CODEC_J2K), opj_destroy_codec);
  const Stream stream(opj_stream_default_create(OPJ_FALSE), opj_stream_destroy);
  Sink sink;
  opj_stream_set_user_data(stream.get(), &sink, nullptr);
  opj_stream_set_write_function(stream.get(), Write);
  opj_stream_set_seek_function(stream.get(), Seek);
  opj_stream_set_skip_function(stream.get(), Skip);
  if (!opj_setup_encoder(codec.get(), &parameters, image.get()) ||
      !opj_start_compress(codec.get(), image.get(), stream.get()) || !opj_encode(codec.get(), stream.get()) ||
      !opj_end_compress(codec.get(), stream.get())) {
    throw std::runtime_error("opj_encode");
  }
  return sink.bytes;
}

std::string EncodeJp2(const Picture& picture, const Jp2Encoding& encoding) {
  std::string out = Jp2Box("jP  ", "\r\n\x87\n");
  out += Jp2Box("ftyp", std::string("jp2 \0\0\0\0jp2 ", 12));
  out += Jp2Box("jp2h", HeaderBoxes(picture, encoding)) + encoding.before;
  return out + Jp2Box("jp2c", EncodeCodeStream(picture, encoding), encoding.length) + encoding.after;
}

}  // namespace ml::test
