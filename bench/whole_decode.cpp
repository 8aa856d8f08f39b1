#include "whole_decode.h"

#include <chrono>
#include <cstdio>
// jpeglib.h needs the line above.
#include <jpeglib.h>

#include <vector>

namespace ml::bench {

double WholeDecode(const std::string& path, unsigned denominator) {
  using Clock = std::chrono::steady_clock;
  const auto start = Clock::now();
  std::FILE* file = std::fopen(path.c_str(), "rb");
  jpeg_decompress_struct info{};
  jpeg_error_mgr errors{};
  info.err = jpeg_std_error(&errors);
  jpeg_create_decompress(&info);
  jpeg_stdio_src(&info, file);
  jpeg_read_header(&info, TRUE);
  info.scale_num = 1;
  info.scale_denom = denominator;
  jpeg_start_decompress(&info);
  std::vector<JSAMPLE> row(static_cast<std::size_t>(info.output_width) * 3);
  JSAMPROW rows[] = {row.data()};
  while (info.output_scanline < info.output_height) jpeg_read_scanlines(&info, rows, 1);
  jpeg_finish_decompress(&info);
  jpeg_destroy_decompress(&info);
  std::fclose(file);
  return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

}  // namespace ml::bench
