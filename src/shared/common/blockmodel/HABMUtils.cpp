// HABMUtils.cpp: VLNV splitting, the wildcard matcher and the comment headers of generated files.
#include "blockmodel/HABMUtils.h"

#include <boost/algorithm/string/classification.hpp>
#include <boost/algorithm/string/split.hpp>
#include <boost/algorithm/string/trim.hpp>

#include <array>
#include <ctime>
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

namespace {

// The disclaimer's lines; an empty line parts two paragraphs. Each non-empty text brings its own indent.
constexpr std::array<char const*, 44> kDisclaimer = {
    // Confidentiality (3 lines).
    " This file holds confidential and proprietary information of the mz_blockmodel",
    " project. It is made available under the terms of the agreement under which you",
    " received it, and may be used, copied and distributed only within those terms.",
    "",
    // Warranties and liability (21 lines).
    " DISCLAIMER",
    " This file and the design information in it are provided \"AS IS\", with all",
    " faults. To the greatest extent the applicable law permits, the mz_blockmodel",
    " project and its contributors disclaim all warranties and conditions, express,",
    " implied or statutory, including but not limited to warranties of",
    " merchantability, of fitness for a particular purpose, of title and of",
    " non-infringement.",
    " The mz_blockmodel project and its contributors shall not be liable, whether",
    " in contract, in tort (negligence included) or under any other theory of",
    " liability, for any loss or damage of any kind arising out of or in connection",
    " with this file or its use, including direct, indirect, special, incidental or",
    " consequential loss or damage, loss of data, profits, goodwill or revenue, the",
    " cost of substitute goods or services, and any loss or damage suffered because",
    " of an action brought by a third party, even if such loss or damage was",
    " reasonably foreseeable or the project had been advised of its possibility.",
    " Where the applicable law does not allow the exclusion or limitation of",
    " liability, that liability is limited to the least extent the law permits.",
    " You are responsible for checking that the design behaves as you intend in",
    " your own system, under your own conditions of operation, before you rely on",
    " it. Nothing in this notice limits a right that you have under the applicable",
    " law and that cannot be limited by agreement.",
    "",
    // Critical applications (13 lines).
    " CRITICAL APPLICATIONS",
    " The design information in this file is not designed or intended to be",
    " fail-safe, nor for use in any application that requires fail-safe",
    " performance, such as life-support or safety devices or systems, Class III",
    " medical devices, nuclear facilities, or any other application in which the",
    " failure of the design could lead to death, personal injury or severe",
    " property or environmental damage (individually and collectively, \"Critical",
    " Applications\"). Use of the design in Critical Applications is at your sole",
    " risk, and you take on the whole responsibility for it, including for",
    " compliance with every law and regulation that applies to such use and for",
    " every safety warning, fail-safe and redundancy measure that it needs. No",
    " part of this notice is meant to invite or to allow such use.",
    " Contact the mz_blockmodel project before any such use is considered.",
    "",
    // Copyright notice (2 lines).
    " THIS COPYRIGHT NOTICE AND DISCLAIMER MUST BE RETAINED AS PART OF THIS FILE AT",
    " ALL TIMES.",
    "",
    " DO NOT MODIFY THIS FILE.",
};

}  // namespace

std::string HABMUtils::get_copyright_header(std::string const& prefix) {
  std::time_t const now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  std::string text;
  text += prefix + " Copyright (C) 2019-2022 The mz_blockmodel project. All rights reserved.\n";
  text += prefix + " Copyright (C) 2023-" + std::to_string(local.tm_year + 1900) +
          " The mz_blockmodel project. All rights reserved.\n";
  text += prefix + " " + std::string(79, '-') + "\n";
  return text;
}

std::string HABMUtils::get_disclaimer(std::string const& prefix) {
  std::string text;
  for (char const* line : kDisclaimer) {
    text += prefix;
    text += line;
    text += '\n';
  }
  return text;
}
