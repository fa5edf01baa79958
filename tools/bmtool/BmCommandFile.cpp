// BmCommandFile.cpp: "bmtool info", "convert", "generate" and "infer": block model files from the command
// line.
#include "blockmodel/HABMAddrBlock.h"
#include "blockmodel/HABMBlock.h"
#include "blockmodel/HABMMemoryMap.h"
#include "param/HPAParamMgr.h"
#include "util/HUTFile.h"

#include "BmCli.h"
#include "BmSynthetic.h"

#include <algorithm>
#include <functional>
#include <optional>
#include <ostream>

namespace bmtool {

namespace {

// What `info` counts, per block; each kind of object adds a row.
struct CountRow {
  char const* label;
  std::function<std::size_t(HABMBlock const&)> perBlock;
};

std::vector<CountRow> const& countRows() {
  static std::vector<CountRow> const rows = {
      {"blocks", [](HABMBlock const&) { return std::size_t{1}; }},
      {"attributes", [](HABMBlock const& b) { return b.getAttributes().size(); }},
      {"generics", [](HABMBlock const& b) { return b.getGenerics().size(); }},
      {"parameters", [](HABMBlock const& b) { return b.getParameters().size(); }},
      {"ports", [](HABMBlock const& b) { return b.getPorts().size(); }},
      {"port connections", [](HABMBlock const& b) { return b.getPortConnections().size(); }},
      {"interfaces", [](HABMBlock const& b) { return b.getInterfaces().size(); }},
      {"interface connections", [](HABMBlock const& b) { return b.getInterfaceConnections().size(); }},
      {"bridges", [](HABMBlock const& b) { return b.getBridges().size(); }},
      {"address spaces", [](HABMBlock const& b) { return b.getAddrSpaces().size(); }},
      {"memory maps", [](HABMBlock const& b) { return b.getMemoryMaps().size(); }},
      {"address blocks",
       [](HABMBlock const& b) {
         std::size_t n = 0;
         for (HABMMemoryMap const* map : b.getMemoryMaps()) {
           n += map->getAddrBlocks().size();
         }
         return n;
       }},
      {"registers",
       [](HABMBlock const& b) {
         std::size_t n = 0;
         for (HABMMemoryMap const* map : b.getMemoryMaps()) {
           for (HABMAddrBlock const* block : map->getAddrBlocks()) {
             n += block->getRegisters().size();
           }
         }
         return n;
       }},
      {"address assignments", [](HABMBlock const& b) { return b.getAddrAssigns().size(); }},
  };
  return rows;
}

// Every block in depth-first pre-order, without recursion.
std::vector<HABMBlock const*> allBlocks(HABMBlock const& top) {
  std::vector<HABMBlock const*> out;
  std::vector<HABMBlock const*> stack = {&top};
  while (!stack.empty()) {
    HABMBlock const* b = stack.back();
    stack.pop_back();
    out.push_back(b);
    auto const subs = b->getSubBlocks();
    for (auto it = subs.rbegin(); it != subs.rend(); ++it) {
      stack.push_back(*it);
    }
  }
  return out;
}

int runInfo(Invocation const& inv) {
  auto const top = readDesign(inv, inv.positional[0]);
  if (!top) {
    return EXIT_FAILED;
  }
  auto const blocks = allBlocks(*top);
  std::vector<std::vector<std::string>> tree = {{"instance path", "module", "vlnv"}};
  for (HABMBlock const* b : blocks) {
    tree.push_back({b->getInstancePath(), b->getModuleName(), b->getModuleVlnv()});
  }
  printTable(*inv.out, tree);
  *inv.out << '\n';
  std::vector<std::vector<std::string>> counts;
  for (auto const& row : countRows()) {
    std::size_t total = 0;
    for (HABMBlock const* b : blocks) {
      total += row.perBlock(*b);
    }
    counts.push_back({row.label, std::to_string(total)});
  }
  printTable(*inv.out, counts);
  return EXIT_OK;
}

int writeOrSay(std::string const& path, HABMBlock const& block, std::ostream& err) {
  if (!HABMBlock::writeTopBlock(HUTFile(path), block, false)) {
    err << "bmtool: could not write '" << path << "'\n";
    return EXIT_FAILED;
  }
  return EXIT_OK;
}

int runConvert(Invocation const& inv) {
  std::optional<HPAParamOverride> pretty;
  if (inv.hasFlag("--pretty")) {
    pretty.emplace("project.prettyBlockModelWriter", "true");
  }
  auto const top = readDesign(inv, inv.positional[0]);
  return top ? writeOrSay(inv.positional[1], *top, *inv.err) : EXIT_FAILED;
}

int runGenerate(Invocation const& inv) {
  auto const depth = inv.count("--depth", 3);
  auto const fanout = inv.count("--fanout", 4);
  auto const attrs = inv.count("--attrs", 2);
  if (!depth || !fanout || !attrs) {
    *inv.err << "bmtool generate: --depth, --fanout and --attrs take whole numbers\n";
    return EXIT_USAGE;
  }
  SyntheticShape const shape{*depth, *fanout, *attrs};
  // Refuse sizes that would not fit in memory rather than dying half-way.
  constexpr std::size_t kMaxBlocks = 20'000'000;
  if (syntheticBlockCount(shape) > kMaxBlocks) {
    *inv.err << "bmtool generate: more than " << kMaxBlocks << " blocks asked for\n";
    return EXIT_USAGE;
  }
  auto const top = makeSyntheticDesign(shape);
  int const code = writeOrSay(inv.positional[0], *top, *inv.err);
  if (code == EXIT_OK) {
    *inv.out << "wrote " << syntheticBlockCount(shape) << " blocks to " << inv.positional[0] << '\n';
  }
  return code;
}

int runInfer(Invocation const& inv) {
  auto const top = readDesign(inv, inv.positional[0]);
  if (!top) {
    return EXIT_FAILED;
  }
  HABMBlock* block = selectedBlock(inv, *top);
  if (block == nullptr) {
    return EXIT_FAILED;
  }
  block->inferAbstractions();
  return writeOrSay(inv.positional[1], *top, *inv.err);
}

}  // namespace

Command makeInfoCommand() {
  Command c;
  c.name = "info";
  c.summary = "print the block tree of a block model file and count its objects";
  c.usage = "bmtool info FILE";
  c.help =
      "Reads FILE (plain or gzip-compressed JSON) and prints every block's instance path, module name\n"
      "and VLNV, then the number of objects of each kind in the whole tree.\n";
  c.minArgs = 1;
  c.maxArgs = 1;
  c.run = runInfo;
  return c;
}

Command makeConvertCommand() {
  Command c;
  c.name = "convert";
  c.summary = "read a block model file and write it again";
  c.usage = "bmtool convert IN OUT [--pretty]";
  c.help =
      "Reads IN and writes OUT, gzip-compressed when OUT ends in \".gz\". --pretty indents the text.\n"
      "OUT is replaced only when the whole file was written.\n";
  c.flags = {"--pretty"};
  c.minArgs = 2;
  c.maxArgs = 2;
  c.run = runConvert;
  return c;
}

Command makeGenerateCommand() {
  Command c;
  c.name = "generate";
  c.summary = "write a synthetic design of a chosen size";
  c.usage = "bmtool generate OUT [--depth N] [--fanout N] [--attrs N]";
  c.help =
      "Writes a design with N levels of sub-blocks (default 3), N sub-blocks per block (default 4)\n"
      "and N attributes per block (default 2), plus a generic and a parameter on each block.\n";
  c.options = {"--depth", "--fanout", "--attrs"};
  c.minArgs = 1;
  c.maxArgs = 1;
  c.run = runGenerate;
  return c;
}

Command makeInferCommand() {
  Command c;
  c.name = "infer";
  c.summary = "infer bus interfaces and their connections on one block";
  c.usage = "bmtool infer IN OUT [--instance PATH]";
  c.help =
      "Reads IN, rebuilds the interfaces of the block at PATH (the top block by default) from its ports'\n"
      "OV_INTERFACE_... attributes and its interface connections from its nets, and writes the whole\n"
      "design to OUT. The block's earlier interfaces and interface connections are replaced.\n";
  c.options = {"--instance"};
  c.minArgs = 2;
  c.maxArgs = 2;
  c.run = runInfer;
  return c;
}

}  // namespace bmtool
