// BmCommandFile.cpp: "bmtool info", "convert", "generate" and "infer": block model files from the command
// line.
#include "blockmodel/HABMBlock.h"
#include "blockmodel/HABMPath.h"
#include "blockmodel/detail/HABMKinds.h"
#include "param/HPAParamMgr.h"
#include "util/HUTFile.h"

#include "BmCli.h"
#include "BmSynthetic.h"

#include <algorithm>
#include <array>
#include <functional>
#include <optional>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

namespace bmtool {

namespace {

using habm_detail::ChildKind;

// The kinds that `info` counts over the whole tree, in the order of its rows.
using CountOrder =
    habm_detail::KindList<ChildKind::ATTRIBUTE, ChildKind::GENERIC, ChildKind::PARAMETER, ChildKind::PORT,
                          ChildKind::PORT_CONNECTION, ChildKind::INTERFACE, ChildKind::INTERFACE_CONNECTION,
                          ChildKind::BRIDGE, ChildKind::NOC_INTERFACE, ChildKind::NOC_CONNECTION,
                          ChildKind::ADDR_SPACE, ChildKind::MEMORY_MAP, ChildKind::ADDR_BLOCK,
                          ChildKind::REGISTER, ChildKind::ADDR_ASSIGN>;

// Calls `visit(block, path)` for every block below and with `top`, parents first and children in their
// order, each path built on the one before it: a deep tree's paths add up to far more text than the tree,
// so none is kept.
template <class Visit>
void forEachBlockPath(HABMBlock const& top, Visit&& visit) {
  std::string path = top.getInstancePath();
  std::vector<std::pair<HABMBlock const*, std::size_t>> stack = {{&top, path.size()}};
  while (!stack.empty()) {
    auto const [block, parentLength] = stack.back();
    stack.pop_back();
    if (block != &top) {
      path.resize(parentLength);
      if (path.empty() || path.back() != HABMPath::SEPARATOR()) {
        path += HABMPath::SEPARATOR();
      }
      path += block->getInstanceName();
    }
    visit(*block, path);
    auto const& subs = block->getSubBlocks();
    for (auto it = subs.rbegin(); it != subs.rend(); ++it) {
      stack.emplace_back(*it, path.size());
    }
  }
}

int runInfo(Invocation const& inv) {
  auto const top = readDesign(inv, inv.positional[0]);
  if (!top) {
    return EXIT_FAILED;
  }
  // The tree's columns are as wide as their widest entry: one walk measures, a second prints.
  std::vector<std::string> const heading = {"instance path", "module", "vlnv"};
  std::vector<std::size_t> widths = {heading[0].size(), heading[1].size(), heading[2].size()};
  std::size_t blocks = 0;
  std::array<std::size_t, 256> perKind{};
  forEachBlockPath(*top, [&](HABMBlock const& b, std::string const& path) {
    widths[0] = std::max(widths[0], path.size());
    widths[1] = std::max(widths[1], b.getModuleName().size());
    widths[2] = std::max(widths[2], b.getModuleVlnv().size());
    ++blocks;
    habm_detail::walkBelow(b, [&](auto kind, auto const&, auto const&) {
      ++perKind[static_cast<std::size_t>(habm_detail::kindId(kind))];
    });
  });
  printRow(*inv.out, heading, widths);
  forEachBlockPath(*top, [&](HABMBlock const& b, std::string const& path) {
    printRow(*inv.out, {path, b.getModuleName(), b.getModuleVlnv()}, widths);
  });
  *inv.out << '\n';
  std::vector<std::vector<std::string>> counts = {{"blocks", std::to_string(blocks)}};
  habm_detail::forEachKind(CountOrder{}, [&](auto kind) {
    counts.push_back({decltype(kind)::LABEL,
                      std::to_string(perKind[static_cast<std::size_t>(habm_detail::kindId(kind))])});
  });
  printTable(*inv.out, counts);
  return EXIT_OK;
}

int runConvert(Invocation const& inv) {
  std::optional<HPAParamOverride> pretty;
  if (inv.hasFlag("--pretty")) {
    pretty.emplace("project.prettyBlockModelWriter", "true");
  }
  auto const top = readDesign(inv, inv.positional[0]);
  return top && writeDesign(inv, inv.positional[1], *top) ? EXIT_OK : EXIT_FAILED;
}

int runGenerate(Invocation const& inv) {
  auto const depth = inv.count("--depth", 3);
  auto const fanout = inv.count("--fanout", 4);
  auto const attrs = inv.count("--attrs", 2);
  auto const ports = inv.count("--ports", 0);
  if (!depth || !fanout || !attrs || !ports) {
    *inv.err << "bmtool generate: --depth, --fanout, --attrs and --ports take whole numbers\n";
    return EXIT_USAGE;
  }
  SyntheticShape const shape{*depth, *fanout, *attrs, *ports, inv.hasFlag("--noc")};
  // Refuse sizes that would not fit in memory rather than dying half-way.
  constexpr std::size_t kMaxBlocks = 20'000'000;
  if (syntheticBlockCount(shape) > kMaxBlocks) {
    *inv.err << "bmtool generate: more than " << kMaxBlocks << " blocks asked for\n";
    return EXIT_USAGE;
  }
  auto const top = makeSyntheticDesign(shape);
  int const code = writeDesign(inv, inv.positional[0], *top) ? EXIT_OK : EXIT_FAILED;
  if (code == EXIT_OK && !inv.quiet) {
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
  return writeDesign(inv, inv.positional[1], *top) ? EXIT_OK : EXIT_FAILED;
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
  c.usage = "bmtool generate OUT [--depth N] [--fanout N] [--attrs N] [--ports N] [--noc]";
  c.help =
      "Writes a design with N levels of sub-blocks (default 3), N sub-blocks per block (default 4),\n"
      "N attributes per block (default 2), plus a generic and a parameter on each block, and N ports\n"
      "per block (default 0). --noc adds NoC interfaces and connections: each leaf block sends to its\n"
      "next sibling, and each first-level block through a virtual NMU to the first leaf of the next.\n";
  c.options = {"--depth", "--fanout", "--attrs", "--ports"};
  c.flags = {"--noc"};
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
