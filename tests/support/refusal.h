#pragma once

#include <string>
#include <utility>

#include "platform/errors.h"

namespace ml::test {

/// What the UserError said that left `act`; empty if none did.
template <class Act>
std::string Refusal(Act&& act) {
  try {
    std::forward<Act>(act)();
  } catch (const platform::UserError& error) {
    return error.what();
  }
  return "";
}

}  // namespace ml::test
