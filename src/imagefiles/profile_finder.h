#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace ml::imagefiles {

/// Where the desktop keeps the profiles of all users.
inline constexpr char kSystemProfiles[] = "/usr/share/color/icc";

/// One place where colour profiles are looked for.
struct ProfileFolder {
  std::string path;
  bool andBelow = false;  ///< then in the directories of this one, by their names
};

/// Finds colour profiles by the names of their files. A finder only holds where to look; what lies there is looked up
/// at every call. Safe on several threads at once.
class ProfileFinder {
 public:
  /// `ownFolder`, without "/" at its end, is where a missing sRGB profile is put; it should be one of those searched.
  ProfileFinder(std::vector<ProfileFolder> folders, std::string ownFolder);
  /// The program's, the user's and the system's folders, in this order.
  static ProfileFinder OfSystem();

  /// Full path of the first file called `name`; case counts only where a folder has several. Empty if there is none.
  std::string FindProfile(std::string_view name) const;
  /// Never without a file where one can be written: then the built-in profile, made once in the own folder.
  std::string FindSrgbProfile() const;
  /// Empty if there is none.
  std::string FindAdobeRgbProfile() const;

 private:
  std::vector<ProfileFolder> folders_;
  std::string ownFolder_;
};

}  // namespace ml::imagefiles
