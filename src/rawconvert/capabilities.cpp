#include "rawconvert/capabilities.h"

namespace ml::rawconvert {
namespace {

constexpr int kOff = 0, kSepia = 4, kBlackAndWhite = 5, kCustom = 6;

CapabilityKind KindOf(const CameraFamily& family) {
  if (family.isNef) return CapabilityKind::Nef;
  if (PathOf(family) == DevelopPath::CameraImage) return CapabilityKind::Eos1D;
  if (family.isD60) return CapabilityKind::EosD60;
  if (family.is10D) return CapabilityKind::Eos10D;
  if (family.hasPhotoEffects) return CapabilityKind::PhotoEffects;
  return family.is8BitOnly ? CapabilityKind::EightBit : CapabilityKind::OtherCanon;
}

Capabilities CanonCapabilities(CapabilityKind kind) {
  const auto steps = kind == CapabilityKind::Eos10D ? LevelSteps::Five : LevelSteps::Three;
  const bool slr = kind == CapabilityKind::Eos10D || kind == CapabilityKind::EosD60;
  return {.kind = kind,
          .contrast = ContrastValues(steps),
          .saturation = ContrastValues(steps),
          .sharpness = SharpnessValues(steps, slr),
          .whiteBalance = WhiteBalanceOther(),
          .exposureCompensation = slr};
}

Capabilities Eos1DCapabilities(bool eos1Ds) {
  return {.kind = CapabilityKind::Eos1D,
          .whiteBalance = WhiteBalanceEos1D(),
          .exposureCompensation = true,
          .colourMatrix = true,
          .falseResolutionFilter = eos1Ds,
          .colourTemperature = true,
          .combined = false};
}

}  // namespace

Capabilities CapabilitiesOf(const CameraFamily& family) {
  const auto kind = KindOf(family);
  if (kind == CapabilityKind::Eos1D) return Eos1DCapabilities(family.isEos1Ds);
  auto result = CanonCapabilities(kind);
  switch (kind) {
    case CapabilityKind::Nef:
      result.contrast = result.sharpness = {};
      result.contrastShown = false;
      result.whiteBalance = WhiteBalanceNef();
      result.combined = false;
      break;
    case CapabilityKind::EosD60:
      result.tone = ToneValues(ToneSteps::Two);
      break;
    case CapabilityKind::Eos10D:
      result.tone = ToneValues(ToneSteps::Four);
      result.whiteBalance = WhiteBalanceEos10D();
      result.colourSpace = result.colourTemperature = true;
      break;
    case CapabilityKind::PhotoEffects:
      result.photoEffect = true;
      break;
    case CapabilityKind::EightBit:
      result.linear = result.combined = false;
      break;
    case CapabilityKind::Eos1D:
    case CapabilityKind::OtherCanon:
      break;
  }
  return result;
}

bool CanDevelop(const Capabilities& camera, Method method) {
  if (method == Method::Linear) return camera.linear;
  return method == Method::Normal || camera.combined;
}

int EffectInForce(int effect, const metadata::ExifData& exif) { return effect < 0 ? exif.pictureEffectCode : effect; }

EnabledControls EnabledBy(const CameraFamily& family, Method method, int effect, const metadata::ExifData& exif) {
  const auto kind = KindOf(family);
  if (kind == CapabilityKind::Eos1D) return {.contrast = false, .saturation = false, .sharpness = false};
  EnabledControls enabled{.contrast = kind != CapabilityKind::Nef && method != Method::Linear,
                          .saturation = method != Method::Linear,
                          .sharpness = kind != CapabilityKind::Nef && method == Method::Normal};
  if (kind != CapabilityKind::PhotoEffects) return enabled;
  const int inForce = EffectInForce(effect, exif);
  if (inForce >= kOff && inForce < kCustom) enabled.contrast = enabled.saturation = enabled.sharpness = false;
  if (inForce == kSepia || inForce == kBlackAndWhite) enabled.whiteBalance = false;
  return enabled;
}

}  // namespace ml::rawconvert
