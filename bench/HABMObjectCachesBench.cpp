// HABMObjectCachesBench.cpp: what the object caches cost when a tree of 100,000 blocks is destroyed, in a
// process that never loaded a shell and with 10,000 live script objects in the caches.
//
// The benchmarks without a shell must run before the one that fills the caches: once a map has been used
// the caches stay observed for the rest of the process, so they refuse to run after it.
#include "blockmodel/HABMObjectCaches.h"

#include "blockmodel/HABMBlock.h"

#include <benchmark/benchmark.h>

#include <memory>
#include <string>
#include <vector>

namespace {

using hwk::pyinfra::py_native_cache;
using hwk::pyinfra::py_native_cache_base;
using hwk::tcltasks::native_cache;
using hwk::tcltasks::native_cache_base;

constexpr int kGroups = 1000;
constexpr int kLeavesPerGroup = 99;  // with the groups: 100,000 blocks below the top
constexpr int kHandles = 10000;

std::unique_ptr<HABMBlock> makeTree(std::vector<HABMBlock const*>* blocks) {
  auto top = HABMBlock::createTopBlock("top");
  for (int g = 0; g < kGroups; ++g) {
    HABMBlock* group = top->createSubBlock("g" + std::to_string(g), "group", false);
    if (blocks != nullptr) {
      blocks->push_back(group);
    }
    for (int l = 0; l < kLeavesPerGroup; ++l) {
      HABMBlock* leaf = group->createSubBlock("u" + std::to_string(l), "leaf", false);
      if (blocks != nullptr) {
        blocks->push_back(leaf);
      }
    }
  }
  return top;
}

bool observed() {
  return native_cache<HABMBlock*>::observers() || py_native_cache<HABMBlock*>::observers();
}

void setPerBlock(benchmark::State& state) {
  state.SetItemsProcessed(state.iterations() * kGroups * (kLeavesPerGroup + 1));
}

// The two exported invalidations called from outside the library, as a host without a shell would:
// a call and one flag test each. Inside the destructors the flag tests are inlined.
void BM_HookWithoutShell(benchmark::State& state) {
  if (observed()) {
    state.SkipWithError("the caches were used earlier in this process");
    return;
  }
  std::vector<HABMBlock const*> blocks;
  auto top = makeTree(&blocks);
  for (auto _ : state) {
    for (HABMBlock const* block : blocks) {
      hwk::tcltasks::invalidateTcl(block);
      hwk::pyinfra::invalidatePython(block);
    }
    benchmark::ClobberMemory();
  }
  setPerBlock(state);
}

void BM_DestroyTreeWithoutShell(benchmark::State& state) {
  if (observed()) {
    state.SkipWithError("the caches were used earlier in this process");
    return;
  }
  for (auto _ : state) {
    state.PauseTiming();
    auto top = makeTree(nullptr);
    state.ResumeTiming();
    top.reset();
  }
  setPerBlock(state);
}

// 10,000 blocks each stood for by one Tcl and one Python object, as after a script walked part of the
// tree; the stand-in interpreter functions do nothing, so this is the cost of the caches themselves.
void BM_DestroyTreeWithLiveHandles(benchmark::State& state) {
  native_cache_base::interpreter_hooks tcl;
  tcl.mark_invalid = [](Tcl_Obj*) {};
  tcl.decr_refcount = [](Tcl_Obj*) {};
  native_cache_base::install_hooks(tcl);
  py_native_cache_base::interpreter_hooks py;
  py.mark_invalid = [](_object*) {};
  py_native_cache_base::install_hooks(py);
  std::vector<int> scripts(kHandles);
  for (auto _ : state) {
    state.PauseTiming();
    std::vector<HABMBlock const*> blocks;
    auto top = makeTree(&blocks);
    auto& t2n = native_cache<HABMBlock*>::get_t2n_cache();
    auto& n2t = native_cache<HABMBlock*>::get_n2t_cache();
    auto& py2n = py_native_cache<HABMBlock*>::get_py2n_cache();
    auto& n2py = py_native_cache<HABMBlock*>::get_n2py_cache();
    for (std::size_t i = 0; i < scripts.size(); ++i) {
      HABMBlock const* block = blocks[i * blocks.size() / scripts.size()];
      t2n[reinterpret_cast<Tcl_Obj*>(&scripts[i])] = block;
      n2t.emplace(block, reinterpret_cast<Tcl_Obj*>(&scripts[i]));
      py2n[reinterpret_cast<_object*>(&scripts[i])] = block;
      n2py.emplace(block, reinterpret_cast<_object*>(&scripts[i]));
    }
    state.ResumeTiming();
    top.reset();
    if (!t2n.empty() || !py2n.empty()) {
      state.SkipWithError("the caches still hold objects of the destroyed tree");
    }
  }
  setPerBlock(state);
  native_cache_base::install_hooks({});
  py_native_cache_base::install_hooks({});
}

}  // namespace

BENCHMARK(BM_HookWithoutShell)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_DestroyTreeWithoutShell)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_DestroyTreeWithLiveHandles)->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
