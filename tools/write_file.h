#pragma once

#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>

namespace ml::test {

/// Throws std::runtime_error.
inline void WriteFile(const std::filesystem::path& path, const std::string& content) {
  std::ofstream out(path, std::ios::binary);
  out << content;
  if (!out.flush()) throw std::runtime_error("cannot write " + path.string());
}

}  // namespace ml::test
