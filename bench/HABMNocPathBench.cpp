// HABMNocPathBench.cpp: finding every NoC path of a design whose subsystems each send through a virtual
// interface on their boundary to the next one's NSU; the cost per path should not grow with the design.
#include "blockmodel/HABMNocPath.h"

#include "blockmodel/HABMBlock.h"
#include "blockmodel/HABMNocConnection.h"
#include "blockmodel/HABMNocInterface.h"

#include <benchmark/benchmark.h>

#include <memory>
#include <string>

namespace {

using N = HABMNocInterface;

void noc(HABMBlock& block, std::string const& name, N::NocMode mode) {
  HABMNocInterface* iface = block.createNocInterface(name);
  iface->setNocMode(mode);
  iface->setNocProtocol(N::PROTOCOL_AXIMM);
  iface->setNocCategory(N::CATEGORY_PL);
}

// Subsystem i holds core/nmu -> vnmu inside it, and nsu; the top links vnmu of i to nsu of i + 1.
std::unique_ptr<HABMBlock> design(std::size_t subsystems) {
  auto top = HABMBlock::createTopBlock("top");
  for (std::size_t i = 0; i < subsystems; ++i) {
    HABMBlock* sub = top->createSubBlock("s" + std::to_string(i), "sub", false);
    noc(*sub->createSubBlock("core", "core", false), "nmu", N::MODE_NMU);
    noc(*sub, "vnmu", N::MODE_VNMU);
    noc(*sub, "nsu", N::MODE_NSU);
    sub->createNocConnection("core/nmu", "vnmu", true);
  }
  for (std::size_t i = 0; i < subsystems; ++i) {
    top->createNocConnection("s" + std::to_string(i) + "/vnmu",
                             "s" + std::to_string((i + 1) % subsystems) + "/nsu", true);
  }
  return top;
}

void BM_CreateNocPaths(benchmark::State& state) {
  auto const top = design(static_cast<std::size_t>(state.range(0)));
  for (auto _ : state) {
    auto const paths = HABMNocPath::createNocPaths(top.get());
    benchmark::DoNotOptimize(paths.size());
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

BENCHMARK(BM_CreateNocPaths)->Arg(100)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
