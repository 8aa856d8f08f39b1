#pragma once

namespace ml::rawconvert {

/// Why raw data cannot be read; inside the reader only, which makes a sentence of it. A range that is not in the file
/// is metadata::ExifException there.
enum class NefError { UnknownCamera, UnknownLayout, TooLarge, Cut, Damaged };

}  // namespace ml::rawconvert
