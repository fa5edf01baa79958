// HABMPath.cpp: path text functions.
#include "blockmodel/HABMPath.h"

#include "blockmodel/HABMBlock.h"

char const& HABMPath::SEPARATOR() {
  static char const separator = '/';
  return separator;
}

bool HABMPath::is_valid(std::string const& path) {
  return !path.empty();
}

bool HABMPath::is_absolute(std::string const& path) {
  return !path.empty() && path.front() == SEPARATOR();
}

bool HABMPath::is_relative(std::string const& path) {
  return !path.empty() && path.front() != SEPARATOR();
}

bool HABMPath::is_terminated(std::string const& path) {
  return !path.empty() && path.back() == SEPARATOR();
}

bool HABMPath::has_separator(std::string const& path) {
  return path.find(SEPARATOR()) != std::string::npos;
}

std::string HABMPath::terminate(std::string const& path) {
  return is_terminated(path) ? path : path + SEPARATOR();
}

std::string HABMPath::get_path_head(std::string const& path) {
  auto const pos = path.rfind(SEPARATOR());
  return pos == std::string::npos ? std::string() : path.substr(0, pos);
}

std::string HABMPath::get_path_tail(std::string const& path) {
  auto const pos = path.rfind(SEPARATOR());
  return pos == std::string::npos ? path : path.substr(pos + 1);
}

std::vector<std::string> HABMPath::split_path(std::string const& path) {
  char const sep = SEPARATOR();
  auto const first = path.find_first_not_of(sep);
  if (first == std::string::npos) {
    return {std::string()};
  }
  auto const last = path.find_last_not_of(sep);
  std::vector<std::string> levels;
  std::size_t start = first;
  while (start <= last) {
    auto const end = path.find(sep, start);
    auto const stop = (end == std::string::npos || end > last) ? last + 1 : end;
    levels.push_back(path.substr(start, stop - start));
    start = path.find_first_not_of(sep, stop);
    if (start == std::string::npos) {
      break;
    }
  }
  return levels;
}

std::string HABMPath::join_path(std::vector<std::string> const& levels) {
  std::string out(1, SEPARATOR());
  for (std::size_t i = 0; i < levels.size(); ++i) {
    if (i != 0) {
      out += SEPARATOR();
    }
    out += levels[i];
  }
  return out;
}

std::string HABMPath::get_absolute_path(HABMBlock const& block, std::string const& path) {
  if (!is_relative(path)) {
    return path;
  }
  return terminate(block.getInstancePath()) + path;
}

std::string HABMPath::get_relative_path(HABMBlock const& block, std::string const& path) {
  if (!is_absolute(path)) {
    return path;
  }
  std::string const prefix = terminate(block.getInstancePath());
  if (path.size() < prefix.size() || path.compare(0, prefix.size(), prefix) != 0) {
    return std::string();
  }
  // Further separators right after the prefix stand for no level ("//a" is "/a"); kept, they would make
  // an absolute "relative" path that reads back as another one.
  std::size_t const level = path.find_first_not_of(SEPARATOR(), prefix.size());
  return level == std::string::npos ? std::string() : path.substr(level);
}
