#pragma once

#include <string>
#include <string_view>

/// The sentences of the Preferences.
namespace ml::app {

inline constexpr std::string_view kTextTooLong = "This text is too long.";
inline constexpr std::string_view kNoClosingQuotes = "The closing quotes are missing.";
inline constexpr std::string_view kProgramNameTooShort = "There is no program between the quotes.";
inline constexpr std::string_view kNoCommandLine = "Name the program that is to be used.";
inline constexpr std::string_view kNoSuchFile = "There is no such file, or it cannot be read.";
inline constexpr std::string_view kNoProfile = "This file is not a colour profile.";
inline std::string NumberFromTo(int smallest, int largest) {
  return "Takes a whole number from " + std::to_string(smallest) + " to " + std::to_string(largest) + ".";
}

}  // namespace ml::app
