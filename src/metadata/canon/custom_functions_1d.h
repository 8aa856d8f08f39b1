#pragma once

#include "metadata/canon/custom_function_line.h"

namespace ml::metadata {

/// The EOS-1D and 1Ds. Two functions concern two dials, and each of their settings stands here once for either.
inline constexpr CustomFunctionLine k1DLines[] = {
    {1, 1, 0, "CFn 0: Focusing screen: New Laser-matte"},
    {2, 1, 1, "CFn 1: Viewfinder display on during exposure"},
    {3, 1, 1, "CFn 2: No exposure without CF card"},
    {4, 1, 1, "CFn 3: Extended ISO sensitivity"},
    {5, 3, 1, "CFn 4: Shutter release: AE lock; AE button: AF"},
    {5, 3, 2, "CFn 4: Shutter release: AF; AE button: AF lock, no AE lock"},
    {5, 3, 3, "CFn 4: Shutter release: AE; AE button: AF, no AE lock"},
    {6, 3, 1, "CFn 5: Manual Tv/Av set: Quick dial/Main dial"},
    {6, 3, 2, "CFn 5: Manual Tv/Av set: Main dial/Quick dial (w/o lens)"},
    {6, 3, 3, "CFn 5: Manual Tv/Av set: Quick dial/Main dial (w/o lens)"},
    {7, 3, 1, "CFn 6: Exposure level increments: 1-stop set, 1/3-stop comp"},
    {7, 3, 2, "CFn 6: Exposure level increments: 1/2-stop set, 1/2-stop comp"},
    {8, 3, 1, "CFn 7: USM lens electronic MF: Turns off after One-Shot AF"},
    {8, 3, 2, "CFn 7: USM lens electronic MF: Always off"},
    {9, 3, 1, "CFn 8: Top LCD panel: ISO, Back LCD panel: Remaining shots"},
    {9, 3, 2, "CFn 8: Top LCD panel: ISO, Back LCD panel: File number"},
    {9, 3, 3, "CFn 8: Top LCD panel: Shots in folder, Back LCD panel: Remaining shots"},
    {10, 3, 1, "CFn 9: Auto bracketing sequence: 0,-,+, No cancellation"},
    {10, 3, 2, "CFn 9: Auto bracketing sequence: -,0,+, Auto cancellation"},
    {10, 3, 3, "CFn 9: Auto bracketing sequence: -,0,+, No cancellation"},
    {11, 3, 1, "CFn 10: AF point illumination: Off"},
    {11, 3, 2, "CFn 10: AF point illumination: On without dimming"},
    {11, 3, 3, "CFn 10: AF point illumination: Brighter"},
    {12, 3, 1, "CFn 11: AF point selection: horizontal=AF selector + Main dial, vertical=AF selector + Quick dial"},
    {12, 3, 1, "CFn 11: AF point selection: horizontal=AF selector + Main dial, vertical=AF selector + Quick dial"},
    {12, 3, 2,
     "CFn 11: AF point selection: when exposure metering active: horizontal=Main dial, vertical=Assist button + Quick "
     "dial"},
    {12, 3, 2,
     "CFn 11: AF point selection: when exposure metering active: horizontal=Main dial, vertical=Assist button + Quick "
     "dial"},
    {12, 3, 3, "CFn 11: AF point selection: horizontal=FEL + Main dial, vertical=FEL + Quick dial"},
    {12, 3, 3, "CFn 11: AF point selection: horizontal=FEL + Main dial, vertical=FEL + Quick dial"},
    {13, 1, 1, "CFn 12: Mirror lockup enabled"},
    {14, 3, 1, "CFn 13: 11 AF points, Spot metering: Active AF point"},
    {14, 3, 2, "CFn 13: 11 AF points, Spot metering: Center AF point"},
    {14, 3, 3, "CFn 13: 9 AF points, Spot metering: Active AF point"},
    {15, 1, 1, "CFn 14: Auto fill flash reduction disabled"},
    {16, 1, 1, "CFn 15: 2nd-curtain flash synchronization"},
    {17, 1, 1, "CFn 16: Safety shift in Av or Tv enabled"},
    {18, 3, 1, "CFn 17: Expand AF activation area to 7 AF points"},
    {18, 3, 2, "CFn 17: Auto expand AF activation area (7 or 13 AF points)"},
    {19, 3, 1, "CFn 18: Assist button switches to registered AF point"},
    {19, 3, 2, "CFn 18: Hold Assist button for registered AF point"},
    {20, 7, 1, "CFn 19: Lens AF stop button: AF start"},
    {20, 7, 2, "CFn 19: Lens AF stop button: AE lock while metering"},
    {20, 7, 3, "CFn 19: Lens AF stop button: AF point: M->Auto/Auto->Ctr"},
    {20, 7, 4, "CFn 19: Lens AF stop button: AF mode: One-Shot<->AI Servo"},
    {20, 7, 5, "CFn 19: Lens AF stop button: IS start"},
    {21, 7, 1, "CFn 20: AI Servo tracking: Slow"},
    {21, 7, 2, "CFn 20: AI Servo tracking: Moderately slow"},
    {21, 7, 3, "CFn 20: AI Servo tracking: Moderately fast"},
    {21, 7, 4, "CFn 20: AI Servo tracking: Fast"},
};

}  // namespace ml::metadata
