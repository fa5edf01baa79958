// HUTFile.h: a file named by its path, with the few file-system questions the libraries ask of it.
#pragma once

#include <string>

/// A file path and what can be asked about the file behind it. Holds only the path text; nothing is
/// opened or cached.
class HUTFile {
 public:
  explicit HUTFile(std::string path) : path_(std::move(path)) {}

  /// The path as given.
  std::string const& getPath() const { return path_; }
  /// The absolute, lexically normalised path. False (and `out` as given) for an empty path.
  bool getFullPath(std::string& out) const;
  /// The file name without its folder and without its last extension: "top" for "/d/top.bm".
  bool getBaseName(std::string& out) const;
  /// True when something exists at the path.
  bool exists() const;
  /// Deletes the file; false when there was nothing to delete or it could not be deleted.
  bool rm() const;

 private:
  std::string path_;
};
