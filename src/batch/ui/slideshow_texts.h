#pragma once

#include <string_view>

/// What the slideshow says; a tab stands between the text of a command and its key.
namespace ml::batch::ui::texts {

inline constexpr std::string_view kTitle = "Slideshow";
inline constexpr std::string_view kNothingTagged = "Viewing tagged images only, no images are tagged!";
inline constexpr std::string_view kHowToExit = "Press Escape to exit slideshow mode or";
inline constexpr std::string_view kHowToMenu = "right click the mouse to display a menu of options.";

inline constexpr std::string_view kCaptionTitle = "Slideshow Caption";
inline constexpr std::string_view kCaptionPrompt =
    "Please enter the slideshow &caption format string (use \\n for line breaks):";

inline constexpr std::string_view kPause = "Pause\tCtrl+S", kPlay = "Play\tCtrl+P", kRandom = "Play in random order",
                                  kLoop = "Loop", kTag = "Tag Image\tCursor Up", kUntag = "Untag Image\tCursor Down",
                                  kToggleTag = "Tag or Untag Image\tSpace", kTaggedOnly = "&View tagged images only",
                                  kRotateLeft = "Rotate Left (CCW)\tCtrl+Cursor Left",
                                  kRotateRight = "Rotate Right (CW)\tCtrl+Cursor Right",
                                  kHighQuality = "High Quality\tCtrl+Q", kBlackAndWhite = "Black and White\tCtrl+W",
                                  kEditCaption = "Edit Caption...", kShowCaption = "Show caption\tCtrl+C",
                                  kBottomCaption = "Display caption below image",
                                  kPrevious = "&Previous Image\tCursor Left", kNext = "&Next Image\tCursor Right",
                                  kExit = "&Exit Slideshow\tEscape";

}  // namespace ml::batch::ui::texts
