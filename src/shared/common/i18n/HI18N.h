// HI18N.h: conversion between the library's UTF-8 strings and the UTF-16 text of hosts such as Java.
#pragma once

#include <string>
#include <string_view>

/// Converts text between UTF-8 and UTF-16. Neither direction fails: a malformed sequence (a stray or
/// truncated UTF-8 byte, an overlong form, an encoded surrogate, an unpaired UTF-16 surrogate) becomes one
/// U+FFFD each, so a host always gets text and well-formed text always comes back unchanged.
class HI18N {
 public:
  /// The UTF-16 form of UTF-8 text; characters beyond the basic plane become surrogate pairs.
  static std::u16string convert(std::string_view utf8);
  /// The UTF-8 form of UTF-16 text; a surrogate pair becomes one four-byte character.
  static std::string convert(std::u16string_view utf16);
};
