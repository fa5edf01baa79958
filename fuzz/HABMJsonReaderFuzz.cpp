// HABMJsonReaderFuzz.cpp: feeds arbitrary bytes to the block model reader. The streamed read must give
// what the whole-document read gives; whatever reads must hold the model's invariants, pass through the
// design-rule checks, write, read back and write again to the same bytes.
#include "blockmodel/HABMBlock.h"
#include "blockmodel/HABMBlockChecker.h"
#include "blockmodel/HABMBridge.h"
#include "blockmodel/HABMJsonReader.h"
#include "blockmodel/HABMNocConnection.h"
#include "msg/ComMsgMgr.h"
#include "util/HUTFile.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

std::string scratch(char const* name) {
  static std::string const dir = [] {
    std::filesystem::path base = std::filesystem::exists("/dev/shm") ? "/dev/shm" : "/tmp";
    auto const d = base / ("mz_fuzz_" + std::to_string(::getpid()));
    std::filesystem::create_directories(d);
    return d.string();
  }();
  return dir + "/" + name;
}

std::string slurp(std::string const& path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

// The one design a file may not hold: a remap whose source passes the top of the address space, which the
// writer refuses rather than write it in a form that reads back as another remap.
bool holdsWrappingRemap(HABMBlock const& top) {
  auto const wraps = [](std::set<HABMAddrRemap> const& remaps) {
    for (HABMAddrRemap const& remap : remaps) {
      HABMAddrAperture const source = remap.getSourceAperture();
      if (source.getRange() != HABMAddrValue::CONST_0() &&
          source.getHighAddress() < source.getBaseAddress()) {
        return true;
      }
    }
    return false;
  };
  std::vector<HABMBlock const*> blocks = {&top};
  for (HABMBlock const* sub : top.findSubBlocks(std::string(), true)) {
    blocks.push_back(sub);
  }
  for (HABMBlock const* block : blocks) {
    for (HABMBridge const* bridge : block->getBridges()) {
      if (wraps(bridge->getRemaps())) {
        return true;
      }
    }
    for (HABMNocConnection const* connection : block->getNocConnections(false)) {
      if (wraps(connection->getRemaps())) {
        return true;
      }
    }
  }
  return false;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(uint8_t const* data, size_t size) {
  std::string const input = scratch("input.bm");
  {
    std::ofstream out(input, std::ios::binary | std::ios::trunc);
    out.write(reinterpret_cast<char const*>(data), static_cast<std::streamsize>(size));
  }
  // The streamed read and the whole-document read say the same and build the same tree.
  ComMsgCapture streamed;
  auto const block = HABMBlock::readTopBlock(HUTFile(input));
  std::vector<std::string> const streamedTexts = streamed.texts();
  ComMsgCapture whole;
  auto reference = HABMBlock::createTopBlock("input");
  bool const read = HABMJsonReader::readBlock(HUTFile(input), *reference, HABMJsonReader::MODE_REPLACE);
  if (read != (block != nullptr) || whole.texts() != streamedTexts) {
    __builtin_trap();
  }
  if (!block) {
    return 0;
  }
  std::string const viaWhole = scratch("whole.bm");
  std::string const viaStream = scratch("stream.bm");
  if (HABMBlock::writeTopBlock(HUTFile(viaWhole), *reference, true) !=
          HABMBlock::writeTopBlock(HUTFile(viaStream), *block, true) ||
      slurp(viaWhole) != slurp(viaStream)) {
    __builtin_trap();
  }
  if (!block->check().empty()) {
    __builtin_trap();
  }
  // Findings go nowhere without a listener; what counts is that any tree is checked without a fault.
  HABMBlockChecker::validate_all(*block);
  std::string const first = scratch("first.bm");
  std::string const second = scratch("second.bm");
  if (!HABMBlock::writeTopBlock(HUTFile(first), *block, true)) {
    if (holdsWrappingRemap(*block)) {
      return 0;
    }
    __builtin_trap();
  }
  auto const again = HABMBlock::readTopBlock(HUTFile(first));
  if (!again || !HABMBlock::writeTopBlock(HUTFile(second), *again, true) || slurp(first) != slurp(second)) {
    __builtin_trap();
  }
  return 0;
}
