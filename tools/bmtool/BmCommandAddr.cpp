// BmCommandAddr.cpp: "bmtool addr": how address texts read and print.
#include "blockmodel/HABMAddrValue.h"

#include "BmCli.h"

#include <ostream>

namespace bmtool {

namespace {

std::vector<std::string> describe(std::string const& text) {
  HABMAddrValue const v(text);
  if (!v.isValid()) {
    return {text, "no", "-", "-", "-", "-"};
  }
  return {text,
          "yes",
          v.getHexStringValue(),
          v.getPrettyHexStringValue(),
          v.getBinStringValue(),
          v.getAbrvStringValue()};
}

int runAddr(Invocation const& inv) {
  std::vector<std::vector<std::string>> rows = {{"text", "valid", "hex", "pretty hex", "binary", "size"}};
  for (auto const& text : inv.positional) {
    rows.push_back(describe(text));
  }
  printTable(*inv.out, rows);
  return EXIT_OK;
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
      "pretty hex, binary and size forms.\n";
  c.minArgs = 1;
  c.run = runAddr;
  return c;
}

}  // namespace bmtool
