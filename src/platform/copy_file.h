#pragma once

#include <stop_token>
#include <string>

#include "platform/edit_options.h"

namespace ml::platform {

struct CopyOptions {
  EditOptions edit = {};
  std::stop_token stop = {};  ///< looked at while a large file is copied
};

/// Makes `to`, where nothing may stand, a file with the content, time and permissions of `from`; links are followed.
/// Throws UserError or Cancelled: then `to` does not exist.
void CopyFile(const std::string& from, const std::string& to, const CopyOptions& options = {});

}  // namespace ml::platform
