#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "metadata/iptc_item.h"

namespace ml::metadata {

/// What the reading of shooting data needs to know of the settings.
struct ExifOptions {
  bool useJpegExifOrientation = false;  ///< "UseJpegExifOrientation": sides of a JPEG as it is shown
  bool iptcComments = false;            ///< "IPTCcomments": an IPTC caption stands for the comment
  bool operator==(const ExifOptions&) const = default;
};

/// Everything known about one image file apart from its pixels. What is shown is kept as ready text; only numbers that
/// are compared or computed with stay numbers. An empty text or a zero means "not known". Built in one step and read
/// only from then on. Several records of one file may exist; one record is not for use by two threads at once.
struct ExifData {
  /// Knows nothing.
  ExifData() = default;
  /// Reads the file at `path`, its companion where its format has one, and nothing but headers. Never throws for what
  /// a file holds: a missing file gives a record with nothing but `path`, a broken one what could be read of it.
  explicit ExifData(const std::string& path, const ExifOptions& options = {});

  // The file
  std::string path;
  std::string displayPath;         ///< shown as the file, also where its companion was read
  std::uint64_t fileSize = 0;      ///< bytes
  std::int64_t shootingTime = 0;   ///< seconds since 1970: `dateTime`, or when the file last changed
  bool exifInvalid = false;        ///< a structure was broken; what follows it is missing
  bool isEos1DRaw = false;         ///< a ".tif" that is in fact a raw file
  bool tiffThumbnailOnly = false;  ///< a large TIFF whose first directory describes a small picture

  // Dates, "YYYY:MM:DD HH:MM:SS" as the camera wrote them
  std::string dateTime;  ///< the one to use
  std::string dateTimeOriginal, dateTimeDigitized;

  // Camera
  std::string make, model, firmware, software, owner, copyright;
  std::string bodySerial;        ///< camera body number
  std::int32_t imageNumber = 0;  ///< the camera's file number
  std::string customFunctions;   ///< a heading and a line each

  // Exposure
  std::string exposureMode;
  std::string shutterSpeed;  ///< "1/250", seconds
  std::string aperture;      ///< "2.8"
  double maxAperture = 0;    ///< f-number
  std::string iso;
  std::uint16_t isoShort = 0;       ///< the standard's sensitivity tag as a number
  double exposureCompensation = 0;  ///< stops
  /// The standard's value, which for cameras with a private one beside it includes the bracketing offset.
  double totalExposureCompensation = 0;
  bool hasTotalExposureCompensation = false;
  double aebCompensation = 0;  ///< bracketing step in stops
  std::int32_t aebShot = 0;    ///< number of the bracketed shot
  std::string meteringMode;
  std::string flash;
  double flashGuideNumber = 0;
  double flashCompensation = 0;  ///< stops

  // Lens and focus
  double focalLength = 0;                     ///< millimetres
  double lensMinFocal = 0, lensMaxFocal = 0;  ///< millimetres
  std::int32_t focalLength35 = 0;             ///< millimetres on 35mm film
  double subjectDistance = 0;                 ///< metres
  std::string focusPoint, afMode, macroFocus, digitalZoom;
  std::int32_t focusPointCode = 0;  ///< the word behind `focusPoint`
  bool imageStabilisation = false;

  // Drive
  std::string driveMode;
  double selfTimer = 0;              ///< seconds
  std::int32_t continuousFrame = 0;  ///< frame of a burst
  std::int32_t stitchShot = 0;       ///< shot of a stitched series

  // Picture
  std::int32_t imageWidth = 0, imageHeight = 0;  ///< pixels, after any turn
  std::int32_t orientation = 0;                  ///< tag 274
  std::int32_t userRotation = 0;                 ///< degrees turned since shooting
  std::int32_t samplesPerPixel = 0;
  std::string imageQuality, whiteBalance, contrast, saturation, sharpness, tone, pictureEffect;
  std::int32_t pictureEffectCode = 0;  ///< number behind `pictureEffect`
  std::int32_t colorMatrix = 0;        ///< 1 to 5
  std::string colorMode, colorSpace, noiseReduction, sharpnessLevel, sharpnessPattern, gamma;
  std::int32_t hueAdjustment = 0;
  bool hasIccProfile = false;
  std::string iccProfileName;  ///< filled on demand

  // As set in the camera, for the development of raw files
  std::int32_t rawColorMatrix = 0, rawContrast = 0, rawSharpness = 0, whiteBalanceCode = 0;

  // Texts by people
  std::string comment;           ///< tag 37510
  std::string imageDescription;  ///< tag 270
  std::vector<IptcItem> iptc;    ///< in file order

  // For those who copy the metadata or write into it. Places count from the start of the EXIF segment's copy or of the
  // file; 0 is none.
  bool dateRecorded = false;  ///< `shootingTime` is a date in the file, not that of its last change
  bool littleEndian = false;
  std::uint32_t ifd0EntryCount = 0, exifIfdEntryCount = 0;
  std::vector<std::byte> exifBlock;                           ///< the first EXIF segment from its length field on
  std::vector<std::byte> photoshopData;                       ///< tag 34377
  IptcSurroundings iptcSurroundings;                          ///< to be written back around `iptc`
  std::uint32_t userCommentPtr = 0, userCommentSize = 0;      ///< in `exifBlock`
  std::uint32_t userCommentOffset = 0, userCommentCount = 0;  ///< in the file
  std::uint32_t imageDescriptionPtr = 0;                      ///< in `exifBlock`
  std::uint32_t imageDescriptionOffset = 0;                   ///< in the file
  std::uint32_t imageDescriptionCount = 0;                    ///< bytes, for either place
  std::uint32_t makerNoteOffset = 0, makerNoteCount = 0;      ///< tag 37500, in the file
};

}  // namespace ml::metadata
