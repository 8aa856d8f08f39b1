#include "support/colour_profiles.h"

#include <lcms2.h>

#include <cstdlib>
#include <utility>

namespace ml::test {
namespace {

cmsToneCurve* SrgbCurve() {
  const double parameters[] = {2.4, 1 / 1.055, 0.055 / 1.055, 1 / 12.92, 0.04045};
  return cmsBuildParametricToneCurve(nullptr, 4, parameters);
}

std::string Take(cmsHPROFILE profile) {
  cmsUInt32Number size = 0;
  if (!cmsSaveProfileToMem(profile, nullptr, &size)) std::abort();
  std::string bytes(size, '\0');
  if (!cmsSaveProfileToMem(profile, bytes.data(), &size)) std::abort();
  cmsCloseProfile(profile);
  return bytes;
}

}  // namespace

std::string EncodeProfile(const RgbProfile& wanted) {
  const cmsCIExyY white = {0.3127, 0.3290, 1};
  cmsCIExyYTRIPLE primaries = {{0.64, 0.33, 1}, {0.30, 0.60, 1}, {0.15, 0.06, 1}};
  if (wanted.swapped) std::swap(primaries.Red, primaries.Blue);
  cmsToneCurve* curve = SrgbCurve();
  cmsToneCurve* curves[] = {curve, curve, curve};
  const auto profile = cmsCreateRGBProfile(&white, &primaries, curves);
  cmsFreeToneCurve(curve);
  const auto* d50 = cmsD50_XYZ();
  const cmsCIEXYZ paper = {d50->X * wanted.mediaWhite, d50->Y * wanted.mediaWhite, d50->Z * wanted.mediaWhite};
  cmsWriteTag(profile, cmsSigMediaWhitePointTag, &paper);
  cmsMLU* name = cmsMLUalloc(nullptr, 1);
  cmsMLUsetASCII(name, "en", "US", wanted.name.c_str());
  cmsWriteTag(profile, cmsSigProfileDescriptionTag, name);
  cmsMLUfree(name);
  return Take(profile);
}

std::string GreyProfile() {
  cmsToneCurve* curve = SrgbCurve();
  const auto profile = cmsCreateGrayProfile(cmsD50_xyY(), curve);
  cmsFreeToneCurve(curve);
  return Take(profile);
}

std::string ProfileOfSpace(const std::string& space) {
  constexpr std::size_t kSpaceField = 16;
  return EncodeProfile({}).replace(kSpaceField, 4, space);
}

}  // namespace ml::test
