#include "support/metadata_blocks.h"

#include <array>
#include <utility>

#include "support/byte_string.h"

namespace ml::test {
namespace {

/// 15.16 fixed point, as the format stores X, Y and Z.
std::string XyzTag(double x, double y, double z) {
  ByteString out(Endian::Big);
  out.Text("XYZ ").Long(0);
  for (const double value : {x, y, z}) out.Long(static_cast<std::uint64_t>(value * 65536 + 0.5));
  return out.Take();
}

std::string DescriptionTag(std::string_view text) {
  ByteString out(Endian::Big);
  out.Text("desc").Long(0).Long(text.size() + 1).Text(text).Byte(0);
  // No Unicode and no script text, which keeps its fixed 67 bytes.
  out.Long(0).Long(0).Short(0).Byte(0).Zeros(67);
  return out.Take();
}

std::string GammaTag() { return ByteString(Endian::Big).Text("curv").Long(0).Long(1).Short(0x0233).Take(); }

std::string ProfileHeader(std::size_t size) {
  ByteString out(Endian::Big);
  out.Long(size).Zeros(4).Long(0x02100000).Text("mntrRGB XYZ ");
  for (const int part : {2003, 5, 17, 10, 11, 12}) out.Short(static_cast<std::uint64_t>(part));
  out.Text("acsp").Zeros(28).Text(std::string_view(XyzTag(0.9642, 1, 0.8249)).substr(8));
  return out.Align(128).Take();
}

}  // namespace

std::string IptcBlock(const std::vector<IptcEntry>& entries) {
  ByteString out(Endian::Big);
  for (const auto& [dataset, value, record] : entries) {
    out.Byte(0x1c).Byte(static_cast<std::uint64_t>(record)).Byte(static_cast<std::uint64_t>(dataset));
    out.Short(value.size()).Text(value);
  }
  return out.Take();
}

std::string ImageResources(const std::vector<ImageResource>& resources) {
  ByteString out(Endian::Big);
  for (const auto& [id, data, name] : resources) {
    out.Text("8BIM").Short(static_cast<std::uint64_t>(id)).Byte(name.size()).Text(name).Align(2);
    out.Long(data.size()).Text(data).Align(2);
  }
  return out.Take();
}

std::string XmpPacket(std::string_view description, std::string_view elements) {
  std::string out = "<?xpacket begin='\xef\xbb\xbf' id='W5M0MpCehiHzreSzNTczkc9d'?>\n";
  out += "<x:xmpmeta xmlns:x=\"adobe:ns:meta/\"><rdf:RDF xmlns:rdf=\"http://www.w3.org/1999/02/22-rdf-syntax-ns#\">";
  out += "<rdf:Description rdf:about=\"\" xmlns:dc=\"http://purl.org/dc/elements/1.1/\"><dc:description><rdf:Alt>";
  out += "<rdf:li xml:lang=\"x-default\">";
  out += description;
  out += "</rdf:li></rdf:Alt></dc:description>";
  out += elements;
  out += "</rdf:Description></rdf:RDF></x:xmpmeta>\n<?xpacket end='w'?>";
  return out;
}

std::string XmpShot() {
  return "<tiff:Make>Tarnwick</tiff:Make><tiff:Model> Sample 1 </tiff:Model>"
         "<exif:ExposureTime>1/125</exif:ExposureTime><exif:FNumber>28/10</exif:FNumber>"
         "<exif:ExposureProgram>3</exif:ExposureProgram>"
         "<exif:ISOSpeedRatings><rdf:Seq><rdf:li>200</rdf:li><rdf:li>400</rdf:li></rdf:Seq></exif:ISOSpeedRatings>"
         "<exif:DateTimeOriginal>2003-05-17T10:11:12+02:00</exif:DateTimeOriginal>"
         "<exif:MeteringMode>5</exif:MeteringMode><exif:LightSource>10</exif:LightSource>"
         "<exif:Contrast>0</exif:Contrast><exif:Saturation>1</exif:Saturation><exif:Sharpness>2</exif:Sharpness>"
         "<exif:FocalLength>182/10</exif:FocalLength><exif:FocalLengthIn35mmFilm>29</exif:FocalLengthIn35mmFilm>"
         "<exif:Flash rdf:parseType=\"Resource\"><exif:Fired>True</exif:Fired><exif:Mode>1</exif:Mode>"
         "<exif:RedEyeMode>True</exif:RedEyeMode></exif:Flash>"
         "<exif:ExposureBiasValue>-1/3</exif:ExposureBiasValue>"
         "<dc:creator><rdf:Seq><rdf:li>A. Photographer</rdf:li></rdf:Seq></dc:creator>"
         "<aux:SerialNumber>42</aux:SerialNumber><aux:Lens>18.0-70.0 mm</aux:Lens>";
}

std::string IccProfile(std::string_view description, std::size_t size) {
  const auto gamma = GammaTag();
  const std::array<std::pair<std::string_view, std::string>, 9> tags{{
      {"desc", DescriptionTag(description)},
      {"cprt", std::string("text\0\0\0\0None", 13)},
      {"wtpt", XyzTag(0.9505, 1, 1.0891)},
      {"rXYZ", XyzTag(0.4361, 0.2225, 0.0139)},
      {"gXYZ", XyzTag(0.3851, 0.7169, 0.0971)},
      {"bXYZ", XyzTag(0.1431, 0.0606, 0.7141)},
      {"rTRC", gamma},
      {"gTRC", gamma},
      {"bTRC", gamma},
  }};
  ByteString table(Endian::Big), data(Endian::Big);
  table.Long(tags.size());
  const std::size_t start = 128 + 4 + 12 * tags.size();
  for (const auto& [name, content] : tags) {
    table.Text(name).Long(start + data.Size()).Long(content.size());
    data.Text(content).Align(4);
  }
  if (start + data.Size() < size) data.Zeros(size - start - data.Size());
  return ProfileHeader(start + data.Size()) + table.Bytes() + data.Bytes();
}

}  // namespace ml::test
