#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <exception>
#include <filesystem>
#include <span>
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

/// Every length up to 4 KiB, the last 256, every 251st between; the whole first, then shorter and shorter.
inline std::vector<std::size_t> PrefixLengths(std::size_t size) {
  constexpr std::size_t kHead = 4096, kTail = 256, kStep = 251;
  std::vector<std::size_t> lengths{size};
  for (std::size_t length = size; length-- > 0;) {
    if (length <= kHead || length + kTail >= size || length % kStep == 0) lengths.push_back(length);
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
template <class... Promised, class Read>
void SweepPrefixes(std::string_view file, Read&& read) {
  for (const auto length : PrefixLengths(file.size())) {
    const auto bytes = std::as_bytes(std::span(file.substr(0, length)));
    const std::vector<std::byte> prefix(bytes.begin(), bytes.end());
    ExpectEndsCleanly<Promised...>(length, [&] { read(std::span<const std::byte>(prefix)); });
  }
}

/// The same for what takes a path: `path`, an existing file, is cut shorter and shorter, down to nothing.
template <class... Promised, class Read>
void SweepPrefixFiles(const std::string& path, Read&& read) {
  for (const auto length : PrefixLengths(std::filesystem::file_size(path))) {
    std::filesystem::resize_file(path, length);
    ExpectEndsCleanly<Promised...>(length, [&] { read(path); });
  }
}

}  // namespace ml::test
