# One target a reader, <name>_fuzzer.cpp, its finds in tests/data/fuzz/<name>; behind the name what it links.
set(ML_FUZZERS
  "ciff ml_metadata"
  "decode_dib ml_imaging"
  "decode_jp2 ml_imaging"
  "decode_magick ml_imaging"
  "decode_png ml_imaging"
  "decode_psd ml_imaging"
  "decode_raw ml_imaging"
  "exif ml_metadata"
  "jp2 ml_metadata"
  "jpeg ml_metadata"
  "picture_size ml_metadata"
  "png ml_metadata"
  "psd ml_metadata"
  "riff ml_metadata"
  "tiff_facts ml_metadata"
  "tiff_raw ml_metadata"
  "uncompressed_tiff ml_imaging")
