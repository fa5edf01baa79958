// HABMJsonValue.h: the JSON value that the reader's functions take, for the reader's sources only.
#pragma once

#include "blockmodel/HABMJsonReader.h"

#include <rapidjson/document.h>

#include <cstddef>
#include <filesystem>
#include <string>
#include <system_error>

class HABMJsonReader::Value {
 public:
  explicit Value(rapidjson::Value const& value) : json(value) {}
  rapidjson::Value const& json;
};

namespace habm_detail {

/// The file's size, a good first guess for the size of its text (exact when it is not compressed): it
/// saves the copies of a growing buffer. Zero when unknown.
inline std::size_t expectedTextSize(std::string const& path) {
  std::error_code ec;
  auto const size = std::filesystem::file_size(std::filesystem::path(path), ec);
  return !ec && size < (std::size_t{1} << 32) ? static_cast<std::size_t>(size) : 0;
}

}  // namespace habm_detail
