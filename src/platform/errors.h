#pragma once

#include <exception>
#include <stdexcept>
#include <string>

namespace ml::platform {

/// A failure that the user is told about; what() is the finished sentence. Ends at the command runner, or
/// in the loop of a batch.
class UserError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// The user cancelled. Not an error: whoever started the work ends it quietly.
class Cancelled : public std::exception {
 public:
  const char* what() const noexcept override { return "cancelled"; }
};

/// A library refused. `reason` and `description` are its own words, either may be empty; what() joins them.
class LibraryError : public std::runtime_error {
 public:
  LibraryError(const std::string& reason, const std::string& description)
      : std::runtime_error(description.empty() ? reason : reason + " (" + description + ")"),
        reason_(reason),
        description_(description) {}
  const std::string& Reason() const noexcept { return reason_; }
  const std::string& Description() const noexcept { return description_; }

 private:
  std::string reason_;
  std::string description_;
};

}  // namespace ml::platform
