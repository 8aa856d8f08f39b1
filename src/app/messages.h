#pragma once

#include <string>
#include <string_view>

/// The sentences of the window.
namespace ml::app {

inline std::string UnableToSaveOrder(const std::string& directory) {
  return "Unable to save the thumbnail order in:\n" + directory;
}

/// `paths`, each behind a line end.
inline std::string UnableToSave(const std::string& paths) { return "Unable to write to file:" + paths; }
inline std::string TryAgain(const std::string& failure) {
  return failure + "\n\nWhat was changed is lost unless it is saved. Make room and try again?";
}
inline constexpr std::string_view kSaveOrderTitle = "Save current thumbnail order to file";
inline constexpr std::string_view kLoadOrderTitle = "Load thumbnail order from file";
inline constexpr std::string_view kOrderFileFilter =
    "Custom Sort Order files (*.xml)|*.xml|Dat files (*.dat)|*.dat|All files (*.*)|*.*||";
inline constexpr std::string_view kSaveTagsTitle = "Save list of tags to file";
inline constexpr std::string_view kLoadTagsTitle = "Select a tag file to load";
inline constexpr std::string_view kTagFileFilter =
    "Tag files (*.tag)|*.tag|Text files (*.txt)|*.txt|All files (*.*)|*.*||";
inline constexpr std::string_view kIgnoreExtensions = "Ignore file extensions when applying tags";

inline constexpr std::string_view kLoadIptcTitle = "Load IPTC data from file";
inline constexpr std::string_view kSaveIptcTitle = "Save IPTC data to file";
inline constexpr std::string_view kLoadIptcFilter = "IPTC data files (*.ipt)|*.ipt|Adobe file info (*.ffo)|*.ffo||";
inline constexpr std::string_view kSaveIptcFilter = "IPTC data files (*.ipt)|*.ipt||";

inline constexpr std::string_view kChooseProfileTitle = "Choose a colour profile";
inline constexpr std::string_view kProfileFilter = "Colour profiles (*.icc;*.icm)|*.icc;*.icm|All files (*.*)|*.*||";
inline constexpr std::string_view kNotInThisVersion = "Not in this version yet: %1";

inline constexpr std::string_view kNoDirectoryYet = "Open a directory, or drop one here";

}  // namespace ml::app
