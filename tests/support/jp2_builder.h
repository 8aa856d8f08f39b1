#pragma once

#include <string>
#include <string_view>

#include "support/sample_photo.h"

/// JPEG 2000 files, box by box around a code stream.
namespace ml::test {

enum class BoxLength {
  Short,  ///< in 32 bits
  Long,   ///< in 64 bits behind the type
  ToEnd,  ///< none: the box is the file's last
};
std::string Jp2Box(std::string_view type, std::string_view content, BoxLength length = BoxLength::Short);
/// A box of a kind that its 16 bytes tell.
std::string Jp2UuidBox(std::string_view uuid, std::string_view content);
/// The kinds of IPTC and XMP.
std::string Jp2IptcBox(std::string_view iptc);
std::string Jp2XmpBox(std::string_view packet);

struct Jp2Encoding {
  int bits = 8;  ///< a sample; 8 or 16
  bool grey = false;
  double rate = 10;                     ///< compression; 1 loses nothing
  std::string profile{};                ///< empty: plain sRGB or grey
  std::string before{};                 ///< ready boxes between header and code stream
  std::string after{};                  ///< ready boxes behind the code stream
  BoxLength length = BoxLength::Short;  ///< of the box with the code stream
};
/// The code stream alone.
std::string EncodeCodeStream(const Picture& picture, const Jp2Encoding& encoding);
std::string EncodeJp2(const Picture& picture, const Jp2Encoding& encoding = {});

}  // namespace ml::test
