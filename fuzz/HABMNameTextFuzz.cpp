// HABMNameTextFuzz.cpp: the texts of names and patterns: VLNVs, the interface attributes of HDL ports, and
// wildcard patterns, the last against the plain recursion they are defined by.
#include "blockmodel/HABMAttribute.h"
#include "blockmodel/HABMUtils.h"

#include "HABMFuzzCheck.h"

using habm_fuzz::require;

namespace {

void checkVlnv(std::string const& text) {
  std::string parts[4];
  if (!HABMUtils::splitVLNV(text, parts[0], parts[1], parts[2], parts[3])) {
    return;
  }
  std::string again[4];
  require(HABMUtils::splitVLNV(parts[0] + ":" + parts[1] + ":" + parts[2] + ":" + parts[3], again[0],
                               again[1], again[2], again[3]));
  for (int i = 0; i < 4; ++i) {
    require(again[i] == parts[i]);
  }
}

// Reading what was written gives what was written again once the grammars have settled: a trailing "="
// leaves a blank at the end of a value that only the next read trims away, so two rounds settle them.
template <class Encode, class Decode>
void checkSettles(std::string const& text, Encode encode, Decode decode) {
  std::string const twice = decode(encode(decode(encode(text))));
  require(decode(encode(twice)) == twice);
}

// The matcher's definition: a "*" tries every start position but the end of the text.
bool literalMatch(char const* pattern, char const* text) {
  if (*pattern == '\0') {
    return *text == '\0';
  }
  if (*pattern == '*') {
    if (pattern[1] == '\0') {
      return true;
    }
    for (char const* at = text; *at != '\0'; ++at) {
      if (literalMatch(pattern + 1, at)) {
        return true;
      }
    }
    return false;
  }
  return *text != '\0' && (*pattern == '?' || *pattern == *text) && literalMatch(pattern + 1, text + 1);
}

void checkWildcard(std::string const& input) {
  auto const cut = input.find('\n');
  if (cut == std::string::npos || input.find('\0') != std::string::npos) {
    return;
  }
  std::string const pattern = input.substr(0, cut);
  std::string const text = input.substr(cut + 1);
  // The plain recursion is exponential in the stars; keep it to what it can answer.
  if (pattern.size() > 16 || text.size() > 32) {
    return;
  }
  require(HABMUtils::wildcard_match(pattern, text) == literalMatch(pattern.c_str(), text.c_str()));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  std::string const input = habm_fuzz::text(data, size);
  checkVlnv(input);
  checkSettles(input, HABMAttribute::encodeInterfaceInfos, HABMAttribute::decodeInterfaceInfos);
  checkSettles(input, HABMAttribute::encodeInterfaceParameters, HABMAttribute::decodeInterfaceParameters);
  checkSettles(input, HABMAttribute::encodeInterfaceMode, HABMAttribute::decodeInterfaceMode);
  checkSettles(input, HABMAttribute::encodeInterfaceAddressing, HABMAttribute::decodeInterfaceAddressing);
  checkWildcard(input);
  return 0;
}
