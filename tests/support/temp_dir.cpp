#include "support/temp_dir.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace ml::test {

TempDir::TempDir() {
  std::string name = (std::filesystem::temp_directory_path() / "ml-test-XXXXXX").string();
  if (::mkdtemp(name.data()) == nullptr) throw std::runtime_error("mkdtemp");
  path_ = name;
}

TempDir::~TempDir() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

std::string TempDir::Write(std::string_view name, std::string_view content) const {
  const auto path = *this / name;
  std::filesystem::create_directories(std::filesystem::path(path).parent_path());
  std::ofstream out(path, std::ios::binary);
  out.write(content.data(), static_cast<std::streamsize>(content.size()));
  if (!out.flush()) throw std::runtime_error("cannot write " + path);
  return path;
}

std::optional<std::string> ReadAll(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) return std::nullopt;
  return std::string(std::istreambuf_iterator<char>(in), {});
}

std::optional<std::string> SamplesDir() {
  const char* variable = std::getenv("MARROWLANTERN_SAMPLES");
  const std::string path = variable != nullptr ? variable : ML_SOURCE_DIR "/../shared/samples";
  if (!std::filesystem::is_directory(path)) return std::nullopt;
  return path;
}

}  // namespace ml::test
