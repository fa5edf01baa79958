// HABMBlockCheckerBench.cpp: every design-rule set on designs of 10,000 to 200,000 blocks whose
// subsystems talk over the network on chip; the cost per block should not grow with the design.
#include "blockmodel/HABMBlockChecker.h"

#include "blockmodel/HABMAddrAperture.h"
#include "blockmodel/HABMBlock.h"
#include "blockmodel/HABMNocConnection.h"
#include "blockmodel/HABMNocInterface.h"

#include <benchmark/benchmark.h>

#include <memory>
#include <string>
#include <vector>

namespace {

using N = HABMNocInterface;

N* noc(HABMBlock& block, std::string const& name, N::NocMode mode) {
  N* iface = block.createNocInterface(name);
  iface->setNocMode(mode);
  iface->setNocProtocol(N::PROTOCOL_AXIMM);
  iface->setNocCategory(N::CATEGORY_PL);
  iface->createParameter(N::DATA_WIDTH(), "128");
  return iface;
}

// Subsystem i: 40 blocks (core with a 2-level tree of 38 more below it), an NMU in core that sends through
// the subsystem's VNMU to the NSU of subsystem i + 1 (one NoC path per subsystem), and an NSU that nothing
// connects (one notice each). Every 16th subsystem is a run-time swapped region. Four NoC interfaces per
// subsystem: 2,500 subsystems give 100,000 blocks and 10,000 interfaces.
std::unique_ptr<HABMBlock> design(std::size_t subsystems) {
  auto top = HABMBlock::createTopBlock("top");
  for (std::size_t i = 0; i < subsystems; ++i) {
    HABMBlock* sub = top->createSubBlock("s" + std::to_string(i), "sub", false);
    sub->setBlockRsw(i % 16 == 0);
    HABMBlock* core = sub->createSubBlock("core", "core", false);
    for (int a = 0; a < 2; ++a) {
      HABMBlock* cluster = core->createSubBlock("c" + std::to_string(a), "cluster", false);
      for (int b = 0; b < 18; ++b) {
        cluster->createSubBlock("u" + std::to_string(b), "leaf", false);
      }
    }
    noc(*core, "nmu", N::MODE_NMU);
    noc(*sub, "vnmu", N::MODE_VNMU)->setApertures({HABMAddrAperture(0x0, 0x10000)});
    noc(*sub, "nsu", N::MODE_NSU)
        ->setApertures({HABMAddrAperture(HABMAddrValue(0x10000U) * static_cast<unsigned int>(i), 0x10000)});
    noc(*sub, "spare", N::MODE_NSU);
    sub->createNocConnection("core/nmu", "vnmu", true);
  }
  for (std::size_t i = 0; i < subsystems; ++i) {
    top->createNocConnection("s" + std::to_string(i) + "/vnmu",
                             "s" + std::to_string((i + 1) % subsystems) + "/nsu", true);
  }
  return top;
}

void BM_ValidateAll(benchmark::State& state) {
  auto const top = design(static_cast<std::size_t>(state.range(0)));
  for (auto _ : state) {
    benchmark::DoNotOptimize(HABMBlockChecker::validate_all(*top));
  }
  // Items are blocks: 40 per subsystem and the top block.
  state.SetItemsProcessed(state.iterations() * (state.range(0) * 40 + 1));
}

BENCHMARK(BM_ValidateAll)->Arg(250)->Arg(1250)->Arg(2500)->Arg(5000)->Unit(benchmark::kMillisecond);

// Each rule set alone on the largest design, to see where the time goes.
struct RuleSets : HABMBlockChecker {
  using HABMBlockChecker::validate_block_stubs;
  using HABMBlockChecker::validate_noc_connections;
  using HABMBlockChecker::validate_noc_interfaces;
  using HABMBlockChecker::validate_noc_paths;
  using HABMBlockChecker::validate_opm_connections;
  using HABMBlockChecker::validate_rsw_blocks;
};
using RuleSet = bool (*)(HABMBlock const&, std::vector<ComMsgMgrInstance>&);

void BM_RuleSet(benchmark::State& state, RuleSet set) {
  auto const top = design(static_cast<std::size_t>(state.range(0)));
  for (auto _ : state) {
    std::vector<ComMsgMgrInstance> messages;
    benchmark::DoNotOptimize(set(*top, messages));
  }
}

BENCHMARK_CAPTURE(BM_RuleSet, block_stubs, RuleSets::validate_block_stubs)
    ->Arg(2500)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_RuleSet, rsw_blocks, RuleSets::validate_rsw_blocks)
    ->Arg(2500)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_RuleSet, opm_connections, RuleSets::validate_opm_connections)
    ->Arg(2500)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_RuleSet, noc_interfaces, RuleSets::validate_noc_interfaces)
    ->Arg(2500)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_RuleSet, noc_connections, RuleSets::validate_noc_connections)
    ->Arg(2500)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_RuleSet, noc_paths, RuleSets::validate_noc_paths)
    ->Arg(250)
    ->Arg(1250)
    ->Arg(2500)
    ->Arg(5000)
    ->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
