// HABMFileWrite.h: how the readers and writers of this library name and put files on disk; internal to the
// sources.
#pragma once

#include "isl/iostreams/filtering_stream.h"
#include "util/HUTFile.h"

#include <memory>
#include <ostream>
#include <string>

namespace habm_detail {

using OutStream = isl::iostreams::filtering_stream<isl::iostreams::output>;

/// The path that files are opened by and messages name: the full path, or the path as given when it
/// has none.
inline std::string fullPathOf(HUTFile const& file) {
  std::string path;
  return file.getFullPath(path) ? path : file.getPath();
}

/// Deletes an existing file first when the caller asked for it; a failed delete is not an error.
inline void removeIfAsked(HUTFile const& file, bool removeFirst) {
  if (removeFirst && file.exists()) {
    file.rm();
  }
}

/// Opens the file with `open()` and fills it with `write(stream)`. The file replaces what stood at its
/// path only when `write` returned true and the stream stayed good; otherwise everything written is
/// discarded. Nothing is thrown: any exception makes the result false.
template <class Open, class Write>
bool writeFileAllOrNothing(Open&& open, Write&& write) {
  std::unique_ptr<OutStream> stream;
  bool result = false;
  try {
    stream = open();
    if (stream && stream->good()) {
      result = write(static_cast<std::ostream&>(*stream)) && stream->good();
    }
  } catch (...) {
    result = false;
  }
  try {
    if (stream && !result) {
      stream->discard();
    }
    result = stream && stream->close() && result;
  } catch (...) {
    result = false;
  }
  return result;
}

}  // namespace habm_detail
