// HABMVlogWriter.h: writes the boundary of one block as a Verilog stub module.
#pragma once

#include "util/HUTFile.h"

#include <iosfwd>
#include <string>

class HABMBlock;

/// Turns one block into a Verilog module with the block's name, generics and ports and no contents, the
/// ports carrying the interface attributes a later tool reads back. Sub-blocks, connections and address
/// objects play no part.
class HABMVlogWriter {
 public:
  /// Writes the stub of `block` to `file`, deleting an existing file first when `removeFirst` is set.
  /// False, with "@90-7@" and the full path, on any failure; the file is then not replaced.
  static bool writeStub(HUTFile const& file, HABMBlock const& block, bool const& removeFirst);

  /// Two blanks: the indent of every line inside the module.
  static std::string const& INDENT();

  HABMVlogWriter(HABMVlogWriter const&) = default;
  HABMVlogWriter(HABMVlogWriter&&) = default;
  HABMVlogWriter& operator=(HABMVlogWriter const&) = default;
  HABMVlogWriter& operator=(HABMVlogWriter&&) = default;
  ~HABMVlogWriter() = default;

 private:
  explicit HABMVlogWriter(HUTFile file) : file_(std::move(file)) {}

  /// Emits the whole stub; always true, a stream failure surfaces as an exception.
  bool marshal(HABMBlock const& block, std::ostream& out) const;

  HUTFile file_;
};
