#include "options.h"

#include <algorithm>
#include <cctype>
#include <filesystem>

namespace tool {

std::string Extension(const std::string& path) {
  std::string extension = std::filesystem::path(path).extension().string();
  std::transform(extension.begin(), extension.end(), extension.begin(), [](char c) {
    return static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  });
  return extension;
}

}  // namespace tool
