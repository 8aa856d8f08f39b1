#pragma once

#include <span>
#include <string>

#include "app/session.h"

namespace ml::app {

/// What a run begins with: what `names` lead to, see Session::Open(), or else the directory of the last run where the
/// settings want it.
void FirstLoad(Session& session, std::span<const std::string> names);

}  // namespace ml::app
