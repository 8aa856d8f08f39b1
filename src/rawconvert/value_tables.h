#pragma once

#include <span>
#include <string>
#include <string_view>

#include "rawconvert/raw_conversion_settings.h"

namespace ml::rawconvert {

/// A value of a setting and its label. The first row of a list that knows "as shot" is that, with the plain label; what
/// the file says is added by as_shot_labels.h.
struct ValueRow {
  int value = 0;
  std::string_view label;
};

enum class LevelSteps { Three, Five };
std::span<const ValueRow> ContrastValues(LevelSteps steps);
/// With "No sharpening" where the camera has it.
std::span<const ValueRow> SharpnessValues(LevelSteps steps, bool noSharpening);
enum class ToneSteps { Two, Four };
std::span<const ValueRow> ToneValues(ToneSteps steps);
/// White balance of the three kinds of Canon cameras and of NEF files; kAsShot, or 255 for NEF, is the first.
std::span<const ValueRow> WhiteBalanceEos1D();
std::span<const ValueRow> WhiteBalanceEos10D();
std::span<const ValueRow> WhiteBalanceOther();
std::span<const ValueRow> WhiteBalanceNef();
std::span<const ValueRow> SharpeningLevels();
std::span<const ValueRow> SharpeningObjects();
std::span<const ValueRow> ColourMatrices();
std::span<const ValueRow> Methods();
std::span<const ValueRow> NoiseBlendings();
std::span<const ValueRow> OutputFormats();
std::span<const ValueRow> PhotoEffects();
std::span<const ValueRow> ColourSpaces();

/// The value that a list shows for a custom white point, and its label, "Custom [x,y]".
inline constexpr int kCustomPointEntry = 32768;
std::string CustomPointLabel(WhitePoint point);

/// Empty if no row has this value.
std::string_view LabelOf(std::span<const ValueRow> rows, int value);

}  // namespace ml::rawconvert
