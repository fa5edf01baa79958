// BmCommandAddr.cpp: "bmtool addr": how address texts read and print.
#include "blockmodel/HABMAddrValue.h"

#include "BmCli.h"

#include <boost/algorithm/string/trim.hpp>
#include <boost/multiprecision/cpp_int.hpp>

#include <algorithm>
#include <cctype>
#include <ostream>
#include <regex>

namespace bmtool {

namespace {

using Exact = boost::multiprecision::cpp_int;

// The magnitude a number text names, without the reader's 128-bit limit; a leading "-" (a deliberate
// negation modulo 2^128) does not count. Only for texts the reader accepted.
Exact magnitude(std::string text) {
  if (!text.empty() && text[0] == '-') {
    text.erase(0, 1);
  }
  return text.empty() || text == "0x" || text == "0X" ? Exact(0) : Exact(text);
}

// Whether a text that reads names a number the reader had to wrap into 128 bits; it reads the text the way
// the reader does, exactly.
bool wraps(std::string text) {
  text.erase(std::remove(text.begin(), text.end(), '_'), text.end());
  boost::algorithm::trim(text);
  if (!text.empty() && text[0] == '#') {
    text.replace(0, 1, "0x");
  }
  Exact const limit = Exact(1) << 128;
  if (text.size() >= 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X')) {
    return magnitude(text) >= limit;
  }
  if (!text.empty() && (text[0] == 'b' || text[0] == 'B')) {
    auto const highest = text.find('1', 1);
    return highest != std::string::npos && text.size() - highest > 128;
  }
  std::string upper = text;
  std::transform(upper.begin(), upper.end(), upper.begin(),
                 [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
  static std::regex const size("^([0-9]+)([KMGTPEZY])B?$");
  std::smatch match;
  if (std::regex_match(upper, match, size)) {
    auto const power = std::string("KMGTPEZY").find(match[2].str()[0]) + 1;
    return magnitude(match[1].str()) * (Exact(1) << (10 * power)) >= limit;
  }
  return magnitude(text) >= limit;
}

std::vector<std::string> describe(std::string const& text) {
  HABMAddrValue const v(text);
  if (!v.isValid()) {
    return {text, "no", "-", "-", "-", "-"};
  }
  return {text,
          wraps(text) ? "wrapped" : "yes",
          v.getHexStringValue(),
          v.getPrettyHexStringValue(),
          v.getBinStringValue(),
          v.getAbrvStringValue()};
}

int runAddr(Invocation const& inv) {
  std::vector<std::vector<std::string>> rows = {{"text", "valid", "hex", "pretty hex", "binary", "size"}};
  bool allValid = true;
  for (auto const& text : inv.positional) {
    rows.push_back(describe(text));
    allValid = allValid && rows.back()[1] != "no";
  }
  printTable(*inv.out, rows);
  return allValid ? EXIT_OK : EXIT_FAILED;
}

}  // namespace

Command makeAddrCommand() {
  Command c;
  c.name = "addr";
  c.summary = "read address texts and print them in every form";
  c.usage = "bmtool addr TEXT...";
  c.help =
      "Reads each TEXT as an address value (hex \"0x1_0000\" or \"#FF\", binary \"b101\", octal \"010\",\n"
      "decimal, negated \"-1\", size \"64K\" or \"1MB\") and prints whether it is valid and its hex,\n"
      "pretty hex, binary and size forms. A value past 128 bits is read modulo 2^128 and marked\n"
      "\"wrapped\". Exits 1 when any TEXT is not valid.\n";
  c.minArgs = 1;
  c.run = runAddr;
  return c;
}

}  // namespace bmtool
