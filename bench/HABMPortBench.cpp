// HABMPortBench.cpp: a block with many ports and port connections: building it through the checked
// creators, looking every port up by name and by absolute path, writing and reading it as a file.
#include "blockmodel/HABMBlock.h"
#include "blockmodel/HABMPortConnection.h"
#include "util/HUTFile.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace {

std::vector<std::string> portNames(std::size_t count) {
  std::vector<std::string> out;
  out.reserve(count);
  for (std::size_t i = 0; i < count; ++i) {
    out.push_back("data_" + std::to_string(i));
  }
  return out;
}

// One port connection per ten ports, each from one port to the next, as a wide netlist has.
std::unique_ptr<HABMBlock> wideBlock(std::vector<std::string> const& names) {
  auto top = HABMBlock::createTopBlock("top");
  for (auto const& name : names) {
    top->createPort(name, false);
  }
  for (std::size_t i = 0; i + 1 < names.size(); i += 10) {
    top->createPortConnection(names[i], std::set<std::string>{names[i + 1]}, false);
  }
  return top;
}

void BM_CreatePortsAndConnections(benchmark::State& state) {
  auto const names = portNames(static_cast<std::size_t>(state.range(0)));
  for (auto _ : state) {
    auto top = wideBlock(names);
    benchmark::DoNotOptimize(top.get());
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

void BM_GetPortByName(benchmark::State& state) {
  auto const names = portNames(static_cast<std::size_t>(state.range(0)));
  auto const top = wideBlock(names);
  for (auto _ : state) {
    for (auto const& name : names) {
      benchmark::DoNotOptimize(top->getPort(name));
    }
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

void BM_FindPortByPath(benchmark::State& state) {
  auto const names = portNames(static_cast<std::size_t>(state.range(0)));
  auto const top = wideBlock(names);
  std::vector<std::string> paths;
  paths.reserve(names.size());
  for (auto const& name : names) {
    paths.push_back("/" + name);
  }
  for (auto _ : state) {
    for (auto const& path : paths) {
      benchmark::DoNotOptimize(top->findPort(path, true));
    }
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

// The same block through a block model file.
std::string const& wideFile(std::size_t count) {
  static std::map<std::size_t, std::string> files;
  auto& path = files[count];
  if (path.empty()) {
    path = (std::filesystem::temp_directory_path() / ("mz_bench_ports_" + std::to_string(count) + ".bm"))
               .string();
    HABMBlock::writeTopBlock(HUTFile(path), *wideBlock(portNames(count)), true);
  }
  return path;
}

void BM_WriteFile(benchmark::State& state) {
  auto const count = static_cast<std::size_t>(state.range(0));
  auto const top = wideBlock(portNames(count));
  std::string const out = wideFile(count) + ".out";
  for (auto _ : state) {
    benchmark::DoNotOptimize(HABMBlock::writeTopBlock(HUTFile(out), *top, false));
  }
  std::remove(out.c_str());
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

void BM_ReadFile(benchmark::State& state) {
  std::string const& path = wideFile(static_cast<std::size_t>(state.range(0)));
  for (auto _ : state) {
    auto top = HABMBlock::readTopBlock(HUTFile(path));
    benchmark::DoNotOptimize(top.get());
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

BENCHMARK(BM_WriteFile)->Arg(10000)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(BM_ReadFile)->Arg(10000)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond)->Iterations(1);

BENCHMARK(BM_CreatePortsAndConnections)
    ->Arg(10000)
    ->Arg(100000)
    ->Arg(1000000)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1);
BENCHMARK(BM_GetPortByName)
    ->Arg(10000)
    ->Arg(100000)
    ->Arg(1000000)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1);
BENCHMARK(BM_FindPortByPath)
    ->Arg(10000)
    ->Arg(100000)
    ->Arg(1000000)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1);

}  // namespace

BENCHMARK_MAIN();
