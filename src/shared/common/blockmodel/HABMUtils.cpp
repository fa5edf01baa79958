// HABMUtils.cpp: VLNV splitting and the wildcard matcher.
#include "blockmodel/HABMUtils.h"

#include <boost/algorithm/string/classification.hpp>
#include <boost/algorithm/string/split.hpp>
#include <boost/algorithm/string/trim.hpp>

#include <vector>

bool HABMUtils::splitVLNV(std::string const& vlnv, std::string& vendor, std::string& library,
                          std::string& name, std::string& version) {
  vendor.clear();
  library.clear();
  name.clear();
  version.clear();
  std::string const trimmed = boost::algorithm::trim_copy(vlnv);
  if (trimmed.empty()) {
    return false;
  }
  std::vector<std::string> pieces;
  boost::algorithm::split(pieces, trimmed, boost::algorithm::is_any_of(":"),
                          boost::algorithm::token_compress_on);
  if (pieces.size() != 4) {
    return false;
  }
  vendor = pieces[0];
  library = pieces[1];
  name = pieces[2];
  version = pieces[3];
  return true;
}

// The matcher's answer is defined by a recursion over (pattern position, text position) in which a "*"
// tries every text position except the end. The same recursion is evaluated here bottom-up, one pattern
// position at a time, so a pattern of many stars cannot backtrack exponentially.
bool HABMUtils::wildcard_match(std::string pattern, std::string text) {
  std::size_t const plen = pattern.size();
  std::size_t const tlen = text.size();
  // next[j]: does pattern[i+1..] match text[j..]? Starts as the empty pattern's row.
  std::vector<char> next(tlen + 1, 0);
  next[tlen] = 1;
  std::vector<char> cur(tlen + 1, 0);
  for (std::size_t i = plen; i-- > 0;) {
    char const c = pattern[i];
    if (c == '*') {
      if (i + 1 == plen) {
        std::fill(cur.begin(), cur.end(), 1);
      } else {
        // Any start position from j up to, but not including, the end of the text.
        char anyLater = 0;
        cur[tlen] = 0;
        for (std::size_t j = tlen; j-- > 0;) {
          anyLater = static_cast<char>(anyLater | next[j]);
          cur[j] = anyLater;
        }
      }
    } else {
      cur[tlen] = 0;
      for (std::size_t j = 0; j < tlen; ++j) {
        cur[j] = static_cast<char>((c == '?' || c == text[j]) ? next[j + 1] : 0);
      }
    }
    cur.swap(next);
  }
  return next[0] != 0;
}
