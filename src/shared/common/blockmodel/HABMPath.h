// HABMPath.h: the grammar of object paths in a block tree ("/u0/u1/clk"), as static functions over text.
#pragma once

#include <string>
#include <vector>

class HABMBlock;

/// Static functions over path text. The separator is "/"; an absolute path starts at the tree's root,
/// a relative one at a given block; the empty string is the one invalid path and also means "no path".
class HABMPath {
 public:
  HABMPath() = delete;

  /// The separator character "/"; the reference is to a constant that lives for the whole process.
  static char const& SEPARATOR();

  /// True when the path is not empty.
  static bool is_valid(std::string const& path);
  /// True when the path is not empty and starts with the separator.
  static bool is_absolute(std::string const& path);
  /// True when the path is not empty and does not start with the separator.
  static bool is_relative(std::string const& path);
  /// True when the path is not empty and ends with the separator.
  static bool is_terminated(std::string const& path);
  /// True when the separator occurs anywhere; false for the empty string.
  static bool has_separator(std::string const& path);
  /// The path ending in exactly the separators it had, plus one if it had none at the end; "" gives "/".
  static std::string terminate(std::string const& path);
  /// Everything before the last separator; empty when there is none.
  static std::string get_path_head(std::string const& path);
  /// Everything after the last separator; the whole path when there is none.
  static std::string get_path_tail(std::string const& path);
  /// The levels of a path, outer separators dropped and inner runs counted as one; "" and "/" give one
  /// empty level.
  static std::vector<std::string> split_path(std::string const& path);
  /// The levels joined with the separator behind a leading one; an empty vector gives "/".
  static std::string join_path(std::vector<std::string> const& levels);
  /// A relative path put under the block's instance path; absolute and empty paths come back unchanged.
  static std::string get_absolute_path(HABMBlock const& block, std::string const& path);
  /// An absolute path made relative to the block, or empty when it lies outside the block (or names the
  /// block itself); relative paths come back unchanged.
  static std::string get_relative_path(HABMBlock const& block, std::string const& path);
};
