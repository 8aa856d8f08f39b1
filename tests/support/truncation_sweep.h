#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <exception>
#include <filesystem>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace ml::test {

/// Runs `act`; of the exceptions only those listed may leave it.
template <class... Promised, class Act>
void ExpectOnly(Act&& act) {
  if constexpr (sizeof...(Promised) == 0) {
    act();
  } else {
    []<class First, class... Rest>(auto& inner, std::type_identity<First>, std::type_identity<Rest>...) {
      try {
        ExpectOnly<Rest...>(inner);
      } catch (const First&) {
        return;
      }
    }(act, std::type_identity<Promised>()...);
  }
}

/// For what takes so long that not every length can be tried; whatever else reads such files tries them all.
constexpr std::size_t kCoarse = 31;

/// Every length up to 4 KiB and the last 256, or every `step`th of them, and every 251st between; the whole first,
/// then shorter and shorter.
inline std::vector<std::size_t> PrefixLengths(std::size_t size, std::size_t step = 1) {
  constexpr std::size_t kHead = 4096, kTail = 256, kBodyStep = 251;
  std::vector<std::size_t> lengths{size};
  for (std::size_t length = size; length-- > 0;) {
    const bool dense = length <= kHead || length + kTail >= size;
    if (length % (dense ? step : kBodyStep) == 0) lengths.push_back(length);
  }
  return lengths;
}

/// Calls `read` with each of these prefixes of `file` as a string of its own, for tests that know what comes out.
template <class Read>
void ForEachPrefix(std::string_view file, Read&& read) {
  for (const auto length : PrefixLengths(file.size())) read(std::string(file.substr(0, length)));
}

/// What leaves `act` besides the exceptions promised fails the test, naming the length of the prefix.
template <class... Promised, class Act>
void ExpectEndsCleanly(std::size_t length, Act&& act) {
  try {
    ExpectOnly<Promised...>(act);
  } catch (const std::exception& error) {
    ADD_FAILURE() << "the first " << length << " bytes: " << error.what();
  } catch (...) {
    ADD_FAILURE() << "the first " << length << " bytes: an exception of another kind";
  }
}

/// Calls `read` with prefixes of `file`, each in memory of exactly its size, so that a sanitizer sees whatever
/// reads behind its end.
template <class Read>
void SweepPrefixes(std::string_view file, std::size_t step, Read&& read) {
  for (const auto length : PrefixLengths(file.size(), step)) {
    const std::vector<char> prefix(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(length));
    ExpectEndsCleanly(length, [&] { read(prefix); });
  }
}

/// The same for what takes a path: `path`, an existing file, is cut shorter and shorter, down to nothing.
template <class... Promised, class Read>
void SweepPrefixFiles(const std::string& path, std::size_t step, Read&& read) {
  for (const auto length : PrefixLengths(std::filesystem::file_size(path), step)) {
    std::filesystem::resize_file(path, length);
    ExpectEndsCleanly<Promised...>(length, [&] { read(path); });
  }
}

}  // namespace ml::test
