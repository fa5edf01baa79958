// HABMFileWrite.h: the one way the writers of this library put a file on disk; internal to the sources.
#pragma once

#include "isl/iostreams/filtering_stream.h"

#include <memory>
#include <ostream>

namespace habm_detail {

using OutStream = isl::iostreams::filtering_stream<isl::iostreams::output>;

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
