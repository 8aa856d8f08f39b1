#pragma once

#include "metadata/canon/custom_function_line.h"

namespace ml::metadata {

/// The EOS 10D.
inline constexpr CustomFunctionLine k10DLines[] = {
    {1, 7, 1, "CFn 1: SET button function when shooting: Change quality"},
    {1, 7, 2, "CFn 1: SET button function when shooting: Change parameters"},
    {1, 7, 3, "CFn 1: SET button function when shooting: Menu display"},
    {1, 7, 4, "CFn 1: SET button function when shooting: Image replay"},
    {2, 1, 1, "CFn 2: Shutter release w/o CF card: Not possible"},
    {3, 1, 1, "CFn 3: Flash sync speed in Av mode: 1/200 (fixed)"},
    {4, 7, 1, "CFn 4: Shutter release: AE lock; AE button: AF"},
    {4, 7, 2, "CFn 4: Shutter release: AF; AE button: AF lock, no AE lock"},
    {4, 7, 3, "CFn 4: Shutter release: AE; AE button: AF, no AE lock"},
    {5, 7, 1, "CFn 5: AF-assist beam/Flash firing: Does not emit/Fires"},
    {5, 7, 2, "CFn 5: AF-assist beam/Flash firing: Only ext. flash emits/Fires"},
    {5, 7, 3, "CFn 5: AF-assist beam/Flash firing: Emits/Does not fire"},
    {6, 1, 1, "CFn 6: Tv/Av and exposure level: 1/3 stop"},
    {7, 7, 1, "CFn 7: AF point registration: bottom"},
    {7, 7, 2, "CFn 7: AF point registration: right"},
    {7, 7, 3, "CFn 7: AF point registration: far right"},
    {7, 7, 4, "CFn 7: AF point registration: all"},
    {7, 7, 5, "CFn 7: AF point registration: far left"},
    {7, 7, 6, "CFn 7: AF point registration: left"},
    {7, 7, 7, "CFn 7: AF point registration: top"},
    {8, 7, 1, "CFn 8: RAW+JPEG mode: small, fine"},
    {8, 7, 2, "CFn 8: RAW+JPEG mode: medium, normal"},
    {8, 7, 3, "CFn 8: RAW+JPEG mode: medium, fine"},
    {8, 7, 4, "CFn 8: RAW+JPEG mode: large, normal"},
    {8, 7, 5, "CFn 8: RAW+JPEG mode: large, fine"},
    {9, 7, 1, "CFn 9: Bracket sequence: 0, -, +, Auto cancel: Disable"},
    {9, 7, 2, "CFn 9: Bracket sequence: -, 0, +, Auto cancel: Enable"},
    {9, 7, 3, "CFn 9: Bracket sequence: -, 0, +, Auto cancel: Disable"},
    {10, 1, 1, "CFn 10: Superimposed display: OFF"},
    {11, 3, 1, "CFn 11: Menu button display position: Previous"},
    {11, 3, 2, "CFn 11: Menu button return position: Top"},
    {12, 1, 1, "CFn 12: Mirror lockup: Enable"},
    {13, 7, 1, "CFn 13: Assist button function: Select home position"},
    {13, 7, 2, "CFn 13: Assist button function: Select HP (while pressing)"},
    {13, 7, 3, "CFn 13: Assist button function: Av+/- (AF point by QCD)"},
    {13, 7, 4, "CFn 13: Assist button function: FE lock"},
    {14, 1, 1, "CFn 14: Auto reduction of fill flash: Disable"},
    {15, 1, 1, "CFn 15: Shutter curtain sync: 2nd-curtain sync"},
    {16, 1, 1, "CFn 16: Safety shift in AV or Tv: Enable"},
    {17, 7, 1, "CFn 17: Lens AF stop button: AF start"},
    {17, 7, 2, "CFn 17: Lens AF stop button: AE lock while metering"},
    {17, 7, 3, "CFn 17: Lens AF stop button: AF point:M->Auto/Auto->center"},
    {17, 7, 4, "CFn 17: Lens AF stop button: Toggle between ONE SHOT & AI SERVO"},
    {17, 7, 5, "CFn 17: Lens AF stop button: IS start"},
};

}  // namespace ml::metadata
