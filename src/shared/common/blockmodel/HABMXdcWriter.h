// HABMXdcWriter.h: writes the NoC interfaces and NoC connections of a block tree as a Tcl constraint
// script.
#pragma once

#include "base/HATSrcInfo.h"
#include "util/HUTFile.h"

#include <string>
#include <utility>
#include <vector>

class HABMBlock;

/// Turns the NoC objects below a block into the commands of the host's constraint shell that recreate
/// them in a later run: editable interfaces and connections are created, the interfaces of OPM NoC
/// modules are looked up, and then their properties are set. Values are written in braces as they stand,
/// so a value with unbalanced braces gives a script that does not parse.
class HABMXdcWriter {
 public:
  /// Writes the script of `block` to `file` behind a copyright header, deleting an existing file first
  /// when `removeFirst` is set; objects on the blocks under `skipPaths` are left out (see getXdcInfo).
  /// False, with "@90-7@" and the full path, on any failure; the file is then not replaced.
  static bool writeXdc(HABMBlock const& block, HUTFile const& file, bool const& removeFirst,
                       std::vector<std::string> const& skipPaths);
  /// Replaces `result` by the lines of the script without the header, each with its origin: a tool's
  /// line of no file, numbered -1 for the opening comment and from 0 on after it. An object is left out
  /// when some entry of `skipPaths` is a byte prefix of its block's path relative to `block` (the empty
  /// entry leaves everything out). Always true.
  static bool getXdcInfo(HABMBlock const& block, std::vector<std::pair<std::string, HATSrcInfo>>& result,
                         std::vector<std::string> const& skipPaths);

  // Commands of the host's constraint shell.
  static std::string const& CREATE_NOC_CONNECTION();
  static std::string const& CREATE_NOC_INTERFACE();
  static std::string const& DELETE_NOC_CONNECTION();
  static std::string const& DELETE_NOC_INTERFACE();
  static std::string const& GET_NOC_CONNECTIONS();
  static std::string const& GET_NOC_INTERFACES();
  /// Two blanks.
  static std::string const& INDENT();

  /// Appends the script of `block` to `lines`, one command per line, with paths relative to `block`;
  /// objects are left out by the skip paths of this writer, measured from the block it was made for.
  /// Always true.
  bool marshal(HABMBlock const& block, std::vector<std::string>& lines) const;

  HABMXdcWriter(HABMXdcWriter const&) = default;
  HABMXdcWriter(HABMXdcWriter&&) = default;
  HABMXdcWriter& operator=(HABMXdcWriter const&) = default;
  HABMXdcWriter& operator=(HABMXdcWriter&&) = default;
  ~HABMXdcWriter() = default;

 private:
  // Keeps a copy of the paths; the signature that hosts link against takes them by reference.
  HABMXdcWriter(HABMBlock const& block,
                std::vector<std::string> const& skipPaths)  // NOLINT(modernize-pass-by-value)
      : block_(&block), skipPaths_(skipPaths) {}

  /// True when the objects on `owner` are to be left out.
  bool isSkipped(HABMBlock const& owner) const;

  HABMBlock const* block_;
  std::vector<std::string> skipPaths_;
};
