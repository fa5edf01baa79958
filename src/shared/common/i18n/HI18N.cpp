// HI18N.cpp: UTF-8 <-> UTF-16 with the replacement character for malformed input.
#include "i18n/HI18N.h"

#include <cstddef>
#include <cstdint>

namespace {

constexpr char32_t kReplacement = 0xFFFD;

// The length of the UTF-8 sequence that `lead` opens and the range its second byte must lie in (which
// rules out overlong forms, surrogates and code points past U+10FFFF); 0 for a byte that opens nothing.
struct Lead {
  int length;
  unsigned char low;
  unsigned char high;
};

Lead leadOf(unsigned char lead) {
  if (lead >= 0xC2 && lead <= 0xDF) {
    return {2, 0x80, 0xBF};
  }
  if (lead == 0xE0) {
    return {3, 0xA0, 0xBF};
  }
  if (lead == 0xED) {
    return {3, 0x80, 0x9F};
  }
  if (lead >= 0xE1 && lead <= 0xEF) {
    return {3, 0x80, 0xBF};
  }
  if (lead == 0xF0) {
    return {4, 0x90, 0xBF};
  }
  if (lead >= 0xF1 && lead <= 0xF3) {
    return {4, 0x80, 0xBF};
  }
  if (lead == 0xF4) {
    return {4, 0x80, 0x8F};
  }
  return {0, 0, 0};
}

void appendUtf16(std::u16string& out, char32_t c) {
  if (c < 0x10000) {
    out += static_cast<char16_t>(c);
    return;
  }
  c -= 0x10000;
  out += static_cast<char16_t>(0xD800 + (c >> 10));
  out += static_cast<char16_t>(0xDC00 + (c & 0x3FF));
}

void appendUtf8(std::string& out, char32_t c) {
  auto const byte = [&out](char32_t b) { out += static_cast<char>(static_cast<unsigned char>(b)); };
  if (c < 0x80) {
    byte(c);
  } else if (c < 0x800) {
    byte(0xC0 | (c >> 6));
    byte(0x80 | (c & 0x3F));
  } else if (c < 0x10000) {
    byte(0xE0 | (c >> 12));
    byte(0x80 | ((c >> 6) & 0x3F));
    byte(0x80 | (c & 0x3F));
  } else {
    byte(0xF0 | (c >> 18));
    byte(0x80 | ((c >> 12) & 0x3F));
    byte(0x80 | ((c >> 6) & 0x3F));
    byte(0x80 | (c & 0x3F));
  }
}

bool isHighSurrogate(char16_t u) {
  return u >= 0xD800 && u <= 0xDBFF;
}
bool isLowSurrogate(char16_t u) {
  return u >= 0xDC00 && u <= 0xDFFF;
}

}  // namespace

std::u16string HI18N::convert(std::string_view utf8) {
  std::u16string out;
  out.reserve(utf8.size());
  std::size_t i = 0;
  while (i < utf8.size()) {
    auto const lead = static_cast<unsigned char>(utf8[i]);
    if (lead < 0x80) {
      out += static_cast<char16_t>(lead);
      ++i;
      continue;
    }
    Lead const shape = leadOf(lead);
    if (shape.length == 0) {
      out += static_cast<char16_t>(kReplacement);
      ++i;
      continue;
    }
    // A sequence that breaks off gives one replacement for the bytes read so far, and the byte that broke
    // it starts over: no well-formed character after a bad byte is lost.
    char32_t c = static_cast<char32_t>(lead) & (0x7Fu >> shape.length);
    std::size_t next = i + 1;
    for (int k = 1; k < shape.length; ++k, ++next) {
      unsigned char const b = next < utf8.size() ? static_cast<unsigned char>(utf8[next]) : 0;
      if (next >= utf8.size() || b < (k == 1 ? shape.low : 0x80) || b > (k == 1 ? shape.high : 0xBF)) {
        break;
      }
      c = (c << 6) | static_cast<char32_t>(b & 0x3F);
    }
    if (next - i < static_cast<std::size_t>(shape.length)) {
      out += static_cast<char16_t>(kReplacement);
      i = next;
      continue;
    }
    appendUtf16(out, c);
    i = next;
  }
  return out;
}

std::string HI18N::convert(std::u16string_view utf16) {
  std::string out;
  out.reserve(utf16.size() * 3 / 2);
  for (std::size_t i = 0; i < utf16.size(); ++i) {
    char16_t const u = utf16[i];
    if (isHighSurrogate(u) && i + 1 < utf16.size() && isLowSurrogate(utf16[i + 1])) {
      appendUtf8(out, 0x10000 + ((static_cast<char32_t>(u) - 0xD800) << 10) + (utf16[i + 1] - 0xDC00u));
      ++i;
    } else if (isHighSurrogate(u) || isLowSurrogate(u)) {
      appendUtf8(out, kReplacement);
    } else {
      appendUtf8(out, u);
    }
  }
  return out;
}
