#pragma once

namespace ml::app {

/// The image to go to from `index` by `step` images (negative: back) in a list of `count`; -1 if there is none.
/// With `wraparound` it counts on at the other end, otherwise it stops at the first or the last image.
int StepIndex(int index, int step, int count, bool wraparound);

/// How many images a turn of the wheel goes, in units of one notch, up positive; 20 times as many with Shift.
int WheelStep(int notches, bool shift);

}  // namespace ml::app
