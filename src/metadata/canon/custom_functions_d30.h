#pragma once

#include "metadata/canon/custom_function_line.h"

namespace ml::metadata {

/// The EOS D30 and D60.
inline constexpr CustomFunctionLine kD30Lines[] = {
    {1, 1, 1, "CFn 1: Long exposure noise reduction: ON"},
    {2, 3, 1, "CFn 2: Shutter release: AE lock; AE button: AE + AF"},
    {2, 3, 2, "CFn 2: Shutter release: AE + AF; AE button: AF lock"},
    {2, 3, 3, "CFn 2: Shutter release: AE; AE button: AE + AF"},
    {3, 1, 1, "CFn 3: Mirror lockup: Enable"},
    {4, 1, 1, "CFn 4: Tv/Av and exposure level: 1/3 stop"},
    {5, 3, 1, "CFn 5: AF-assist beam/Flash firing: Does not emit/Fires"},
    {5, 3, 2, "CFn 5: AF-assist beam/Flash firing: Only ext. flash emits/Fires"},
    {5, 3, 3, "CFn 5: AF-assist beam/Flash firing: Emits/Does not fire"},
    {6, 1, 1, "CFn 6: Shutter speed in Av mode: 1/200 (with flash)"},
    {7, 3, 1, "CFn 7: AEB sequence: 0, -, +, cancel when turned off: Disabled"},
    {7, 3, 2, "CFn 7: AEB sequence: -, 0, +, cancel when turned off: Enabled"},
    {7, 3, 3, "CFn 7: AEB sequence: -, 0, +, cancel when turned off: Disabled"},
    {8, 1, 1, "CFn 8: Shutter curtain sync: 2nd-curtain sync"},
    {9, 3, 1, "CFn 9: Lens AF stop button Fn. Switch: AF start"},
    {9, 3, 2, "CFn 9: Lens AF stop button Fn. Switch: AE lock while metering"},
    {10, 1, 1, "CFn 10: Auto reduction of fill flash: Disabled"},
    {11, 3, 1, "CFn 11: Menu button return position: Previous (top if powered off)"},
    {11, 3, 2, "CFn 11: Menu button return position: Previous"},
    {12, 3, 1, "CFn 12: SET button function when shooting: Change quality"},
    {12, 3, 2, "CFn 12: SET button function when shooting: Change ISO speed"},
    {12, 3, 3, "CFn 12: SET button function when shooting: Select parameters"},
};

}  // namespace ml::metadata
