// HUTFile.cpp: path questions through std::filesystem, never throwing.
#include "util/HUTFile.h"

#include <filesystem>
#include <system_error>

namespace fs = std::filesystem;

bool HUTFile::getFullPath(std::string& out) const {
  if (path_.empty()) {
    return false;
  }
  std::error_code ec;
  fs::path const full = fs::absolute(fs::path(path_), ec);
  if (ec) {
    return false;
  }
  out = full.lexically_normal().string();
  return true;
}

bool HUTFile::getBaseName(std::string& out) const {
  fs::path const p(path_);
  if (!p.has_filename()) {
    return false;
  }
  out = p.stem().string();
  return true;
}

bool HUTFile::exists() const {
  std::error_code ec;
  return !path_.empty() && fs::exists(fs::path(path_), ec);
}

bool HUTFile::rm() const {
  std::error_code ec;
  return !path_.empty() && fs::remove(fs::path(path_), ec);
}
