#pragma once

#include <vector>

namespace ml::app {

/// The image to go to from `index` by `step` images (negative: back) in a list of `count`; -1 if there is none.
/// With `wraparound` it counts on at the other end, otherwise it stops at the first or the last image.
int StepIndex(int index, int step, int count, bool wraparound);

/// How many images a turn of the wheel goes, in units of one notch, up positive; 20 times as many with Shift.
int WheelStep(int notches, bool shift);

/// 1 or -1: where somebody goes who went from image `from` to image `to`; over the ends of the list where that is the
/// single step that it takes.
int DirectionOf(int from, int to, int count);

/// The images that will probably be looked at after the one at `index`, the likeliest first: the next three in this
/// direction, then the one behind.
std::vector<int> Neighbours(int index, int direction, int count, bool wraparound);

}  // namespace ml::app
