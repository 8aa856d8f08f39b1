#pragma once

namespace ml::platform {

/// The simple case folding of one code point: the lower-case form that all its case variants share.
char32_t FoldCodePoint(char32_t codePoint);

}  // namespace ml::platform
