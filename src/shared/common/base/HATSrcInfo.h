// HATSrcInfo.h: where a line of a constraint came from, as the host's constraint system records it.
#pragma once

#include <cstdint>

/// The origin of one constraint line: the number of the file that holds it, its line in that file, who
/// produced it and its column. A line that no file holds, such as one a generator hands over in memory,
/// has the file number NO_FILE.
class HATSrcInfo {
 public:
  /// The file number of a line that no file holds.
  static constexpr std::uint16_t NO_FILE = 65535;
  /// Who produced a line: a file the user wrote, a command typed in the shell, or a tool.
  enum Origin : std::uint8_t { ORIGIN_FILE = 0, ORIGIN_SHELL = 1, ORIGIN_TOOL = 2 };

  /// A line of no file, no line number, from a user's file, column 0.
  constexpr HATSrcInfo() = default;
  constexpr HATSrcInfo(std::uint16_t fileId, std::int32_t line, Origin origin, std::uint32_t column)
      : fileId_(fileId), line_(line), origin_(origin), column_(column) {}

  /// The host's number of the file; NO_FILE when no file holds the line.
  constexpr std::uint16_t getFileId() const { return fileId_; }
  /// The line number; -1 when the line has none.
  constexpr std::int32_t getLine() const { return line_; }
  /// Who produced the line.
  constexpr Origin getOrigin() const { return origin_; }
  /// The column the constraint starts at; 0 when unknown.
  constexpr std::uint32_t getColumn() const { return column_; }

  constexpr bool operator==(HATSrcInfo const& other) const {
    return fileId_ == other.fileId_ && line_ == other.line_ && origin_ == other.origin_ &&
           column_ == other.column_;
  }
  constexpr bool operator!=(HATSrcInfo const& other) const { return !(*this == other); }

 private:
  std::uint16_t fileId_ = NO_FILE;
  std::int32_t line_ = -1;
  Origin origin_ = ORIGIN_FILE;
  std::uint32_t column_ = 0;
};
