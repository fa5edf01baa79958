// HABMModularBench.cpp: cloning a synthetic design, cutting a tenth of it out with virtual interfaces, and
// merging it back, on designs of 1,111 to 111,111 blocks; and what a clone costs in memory beside its
// original.
#include "blockmodel/HABMBlock.h"
#include "blockmodel/HABMNocConnection.h"
#include "blockmodel/HABMNocInterface.h"
#include "blockmodel/HABMPath.h"
#include "blockmodel/HABMPort.h"

#include "BmSynthetic.h"

#include <benchmark/benchmark.h>

#include <malloc.h>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace {

// The synthetic design (fan-out 10, depth from the argument) with ports and a net from each block to
// each sub-block, and an NMU and an NSU on every leaf. Each leaf drives its next sibling, and `far` leaves,
// evenly spread, also drive the leaf half the design away, over the top: a fifth of those far links cross
// the boundary of "/u0", half of them each way. Each link is drawn in the lowest block that holds both
// ends.
std::unique_ptr<HABMBlock> makeDesign(unsigned depth, std::size_t far) {
  auto top = bmtool::makeSyntheticDesign({depth, 10, 2});
  std::vector<HABMBlock*> blocks = {top.get()};
  std::vector<HABMBlock*> leaves;
  for (std::size_t i = 0; i < blocks.size(); ++i) {
    HABMBlock* block = blocks[i];
    block->createPort("clk", false);
    block->createPort("rst", false)->setPortDirection(HABMPort::DIR_IN);
    for (HABMBlock* sub : block->getSubBlocks()) {
      block->createPortConnection("clk", {sub->getInstanceName() + "/clk"}, true);
      blocks.push_back(sub);
    }
    if (!block->hasSubBlocks()) {
      block->createNocInterface("nmu")->setNocMode(HABMNocInterface::MODE_NMU);
      block->createNocInterface("nsu")->setNocMode(HABMNocInterface::MODE_NSU);
      leaves.push_back(block);
    }
  }
  auto const holds = [](HABMBlock const* holder, HABMBlock const* block) {
    for (; block != nullptr; block = block->getParent()) {
      if (block == holder) {
        return true;
      }
    }
    return false;
  };
  auto const draw = [&holds](HABMBlock* from, HABMBlock* to) {
    HABMBlock* holder = from->getParent();
    while (!holds(holder, to)) {
      holder = holder->getParent();
    }
    holder->createNocConnection(HABMPath::get_relative_path(*holder, from->getInstancePath() + "/nmu"),
                                HABMPath::get_relative_path(*holder, to->getInstancePath() + "/nsu"), true);
  };
  for (std::size_t i = 0; i < leaves.size(); ++i) {
    if (i % 10 != 9) {
      draw(leaves[i], leaves[i + 1]);
    }
    if (i % (leaves.size() / far) == 0) {
      draw(leaves[i], leaves[(i + leaves.size() / 2) % leaves.size()]);
    }
  }
  return top;
}

// The second argument: 0 for 100 far links whatever the size, 1 for one per ten leaves.
std::size_t farLinks(benchmark::State const& state) {
  std::size_t count = 1;
  for (long d = 0; d < state.range(0); ++d) {
    count *= 10;
  }
  return state.range(1) == 0 ? 100 : count / 10;
}

HABMBlock const& designFor(benchmark::State const& state) {
  static std::map<std::pair<long, long>, std::unique_ptr<HABMBlock>> designs;
  auto& design = designs[{state.range(0), state.range(1)}];
  if (!design) {
    design = makeDesign(static_cast<unsigned>(state.range(0)), farLinks(state));
  }
  return *design;
}

void setBlocks(benchmark::State& state) {
  auto const blocks =
      static_cast<double>(bmtool::syntheticBlockCount({static_cast<unsigned>(state.range(0)), 10, 2}));
  state.counters["blocks"] = blocks;
  state.counters["far_links"] = static_cast<double>(farLinks(state));
  state.counters["ns_per_block"] =
      benchmark::Counter(blocks, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void BM_Clone(benchmark::State& state) {
  HABMBlock const& design = designFor(state);
  for (auto _ : state) {
    auto copy = HABMBlock::cloneTopBlock(design);
    state.PauseTiming();
    copy.reset();
    state.ResumeTiming();
  }
  setBlocks(state);
}

void BM_SplitVirtual(benchmark::State& state) {
  HABMBlock const& design = designFor(state);
  for (auto _ : state) {
    state.PauseTiming();
    auto work = HABMBlock::cloneTopBlock(design);
    state.ResumeTiming();
    auto part = HABMBlock::splitTopBlock(*work, "/u0", true);
    benchmark::DoNotOptimize(part.get());
    state.PauseTiming();
    part.reset();
    work.reset();
    state.ResumeTiming();
  }
  setBlocks(state);
}

void BM_Merge(benchmark::State& state) {
  auto stubbed = HABMBlock::cloneTopBlock(designFor(state));
  auto const part = HABMBlock::splitTopBlock(*stubbed, "/u0", true);
  for (auto _ : state) {
    state.PauseTiming();
    auto work = HABMBlock::cloneTopBlock(*stubbed);
    state.ResumeTiming();
    benchmark::DoNotOptimize(HABMBlock::mergeTopBlock(*work, "/u0", *part, true));
    state.PauseTiming();
    work.reset();
    state.ResumeTiming();
  }
  setBlocks(state);
}

// Heap bytes held by the design as built through the creators, and by a clone of it.
void BM_MemoryOfCloneBesideOriginal(benchmark::State& state) {
  auto const blocks =
      static_cast<double>(bmtool::syntheticBlockCount({static_cast<unsigned>(state.range(0)), 10, 2}));
  for (auto _ : state) {
    auto const before = mallinfo2().uordblks;
    auto original = makeDesign(static_cast<unsigned>(state.range(0)), farLinks(state));
    auto const built = mallinfo2().uordblks;
    auto copy = HABMBlock::cloneTopBlock(*original);
    auto const cloned = mallinfo2().uordblks;
    state.counters["original_bytes_per_block"] = static_cast<double>(built - before) / blocks;
    state.counters["clone_bytes_per_block"] = static_cast<double>(cloned - built) / blocks;
  }
}

}  // namespace

BENCHMARK(BM_Clone)->ArgsProduct({{3, 4, 5}, {0}})->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SplitVirtual)->ArgsProduct({{3, 4, 5}, {0, 1}})->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Merge)->ArgsProduct({{3, 4, 5}, {0, 1}})->Unit(benchmark::kMillisecond);
BENCHMARK(BM_MemoryOfCloneBesideOriginal)->Args({5, 0})->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK_MAIN();
