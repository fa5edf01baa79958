// HABMUtils.h: small text helpers of the block model: VLNV splitting, wildcard matching and the comment
// headers of generated files.
#pragma once

#include <string>

/// Static text helpers shared by the model classes.
class HABMUtils {
 public:
  HABMUtils() = delete;

  /// Splits "vendor:library:name:version" (trimmed; runs of ":" count as one). True, with the four parts
  /// filled, only for exactly four pieces; otherwise false with all four outputs empty.
  static bool splitVLNV(std::string const& vlnv, std::string& vendor, std::string& library, std::string& name,
                        std::string& version);
  /// Matches `text` against `pattern` ("*" any run, "?" one character, case-sensitive). A "*" followed by
  /// more pattern needs at least one more text character, so "a**" does not match "a". Time is bounded by
  /// pattern length times text length.
  static bool wildcard_match(std::string pattern, std::string text);
  /// The copyright header of a generated file: three lines, each `prefix`, a blank and the text, the
  /// second ending in the current year, the third a rule. Every line ends in a newline.
  static std::string get_copyright_header(std::string const& prefix);
  /// The disclaimer of a generated file: 44 lines, each `prefix` directly followed by the text, five
  /// paragraphs parted by lines of the prefix alone. Every line ends in a newline.
  static std::string get_disclaimer(std::string const& prefix);
};
