// main.cpp: reads a block model file with the installed library and prints its number of blocks.
#include "blockmodel/HABMBlock.h"
#include "msg/ComMsgMgr.h"
#include "util/HUTFile.h"

#include <iostream>
#include <vector>

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "usage: consumer FILE\n";
    return 2;
  }
  ComMsgListenerGuard printer(ComMsgMgr::stderrPrinter());
  auto const top = HABMBlock::readTopBlock(HUTFile(argv[1]));
  if (!top) {
    return 1;
  }
  std::size_t blocks = 0;
  std::vector<HABMBlock const*> stack = {top.get()};
  while (!stack.empty()) {
    HABMBlock const* block = stack.back();
    stack.pop_back();
    ++blocks;
    for (HABMBlock const* sub : block->getSubBlocks()) {
      stack.push_back(sub);
    }
  }
  std::cout << "blocks " << blocks << '\n';
  return 0;
}
