#pragma once

#include "rawconvert/nef/site_window.h"

namespace ml::rawconvert {

/// The colours of a run of sites by where the sites of that colour stand: the site itself, those beside it, those
/// above and below, those in the corners.
struct SiteColours {
  SiteRow own, beside, upright, corner;
};

/// Estimate what a run of sites did not record, not below 0, from those of eight directions in which the picture
/// changes least. A green site of three colours: `beside` and `upright` are filled.
void InterpolateGreenSites(const SiteWindow& window, int parity, SiteColours& out);
/// A red or blue site of three colours: `beside`, which is green, and `corner` are filled.
void InterpolateRedBlueSites(const SiteWindow& window, int parity, SiteColours& out);
/// A site of four colours: all are filled.
void InterpolateFourColourSites(const SiteWindow& window, int parity, SiteColours& out);

}  // namespace ml::rawconvert
