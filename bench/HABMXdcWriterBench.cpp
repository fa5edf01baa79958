// HABMXdcWriterBench.cpp: the constraint script of a design whose subsystems each send from an editable
// NMU through a virtual boundary interface to the next one's OPM NoC RAM; the cost per subsystem should
// not grow with the design.
#include "blockmodel/HABMXdcWriter.h"

#include "blockmodel/HABMAddrAperture.h"
#include "blockmodel/HABMAddrRemap.h"
#include "blockmodel/HABMAttribute.h"
#include "blockmodel/HABMBlock.h"
#include "blockmodel/HABMNocConnection.h"
#include "blockmodel/HABMNocInterface.h"

#include <benchmark/benchmark.h>

#include <memory>
#include <string>

namespace {

using N = HABMNocInterface;

HABMNocInterface* noc(HABMBlock& block, std::string const& name, N::NocMode mode) {
  HABMNocInterface* iface = block.createNocInterface(name);
  iface->setNocMode(mode);
  iface->setNocProtocol(N::PROTOCOL_AXIMM);
  iface->setNocCategory(N::CATEGORY_PL);
  return iface;
}

std::unique_ptr<HABMBlock> design(std::size_t subsystems) {
  auto top = HABMBlock::createTopBlock("top");
  for (std::size_t i = 0; i < subsystems; ++i) {
    HABMBlock* sub = top->createSubBlock("s" + std::to_string(i), "sub", false);
    HABMNocInterface* nmu = noc(*sub->createSubBlock("core", "core", false), "nmu", N::MODE_NMU);
    nmu->setEditable(true);
    nmu->setLocation("NOC_NMU512_X" + std::to_string(i) + "Y0");
    nmu->createParameter(N::READ_TRAFFIC_CLASS(), "best_effort");
    noc(*sub, "vnmu", N::MODE_VNMU)->setEditable(true);
    HABMBlock* ram = sub->createSubBlock("ram", "noc_pl_ram", false);
    ram->createAttribute("OPM_NOC", "NSU_MM");
    noc(*ram, "nsu", N::MODE_NSU)->setApertures({HABMAddrAperture("0x201_0000_0000[1M]")});
    sub->createNocConnection("core/nmu", "vnmu", true)->setEditable(true);
  }
  for (std::size_t i = 0; i < subsystems; ++i) {
    HABMNocConnection* link = top->createNocConnection(
        "s" + std::to_string(i) + "/vnmu", "s" + std::to_string((i + 1) % subsystems) + "/ram/nsu", true);
    link->setEditable(true);
    link->setRemaps({HABMAddrRemap("0x0,0x201_0000_0000[64K]")});
    link->setParameter(HABMNocConnection::READ_BANDWIDTH(), "1200", false);
  }
  return top;
}

void BM_GetXdcInfo(benchmark::State& state) {
  auto const top = design(static_cast<std::size_t>(state.range(0)));
  std::vector<std::pair<std::string, HATSrcInfo>> lines;
  for (auto _ : state) {
    HABMXdcWriter::getXdcInfo(*top, lines, {});
    benchmark::DoNotOptimize(lines.size());
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

BENCHMARK(BM_GetXdcInfo)->Arg(100)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
