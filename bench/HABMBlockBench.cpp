// HABMBlockBench.cpp: building a wide block through the checked creators and looking every child up by
// name, and the wildcard matcher on a many-star pattern.
#include "blockmodel/HABMBlock.h"

#include "blockmodel/HABMUtils.h"

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

namespace {

std::vector<std::string> names(std::size_t count) {
  std::vector<std::string> out;
  out.reserve(count);
  for (std::size_t i = 0; i < count; ++i) {
    out.push_back("u" + std::to_string(i));
  }
  return out;
}

// Each creator tests the name against its container, so this is quadratic without the name index.
void BM_CreateChildren(benchmark::State& state) {
  auto const all = names(static_cast<std::size_t>(state.range(0)));
  for (auto _ : state) {
    auto top = HABMBlock::createTopBlock("top");
    for (auto const& name : all) {
      top->createSubBlock(name, "m", false);
      top->createAttribute(name, "v");
    }
    benchmark::DoNotOptimize(top.get());
  }
  state.SetItemsProcessed(state.iterations() * state.range(0) * 2);
}

void BM_LookUpChildren(benchmark::State& state) {
  auto const all = names(static_cast<std::size_t>(state.range(0)));
  auto top = HABMBlock::createTopBlock("top");
  for (auto const& name : all) {
    top->createSubBlock(name, "m", false);
    top->createAttribute(name, "v");
  }
  for (auto _ : state) {
    for (auto const& name : all) {
      benchmark::DoNotOptimize(top->getSubBlock(name));
      benchmark::DoNotOptimize(top->findAttribute(name, false));
    }
  }
  state.SetItemsProcessed(state.iterations() * state.range(0) * 2);
}

// Removing every child one by one, first to last: each removal leaves a hole that is closed later, so
// the whole run stays linear.
void BM_RemoveChildrenInOrder(benchmark::State& state) {
  auto const all = names(static_cast<std::size_t>(state.range(0)));
  for (auto _ : state) {
    state.PauseTiming();
    auto top = HABMBlock::createTopBlock("top");
    for (auto const& name : all) {
      top->createAttribute(name, "v");
    }
    state.ResumeTiming();
    for (auto const& name : all) {
      top->removeAttribute(name);
    }
    benchmark::DoNotOptimize(top.get());
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

BENCHMARK(BM_CreateChildren)->Arg(1000)->Arg(10000)->Arg(100000)->Arg(200000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_LookUpChildren)->Arg(1000)->Arg(10000)->Arg(100000)->Arg(200000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_RemoveChildrenInOrder)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

// Thirty "*a" against a long run of "a": exponential for a backtracking matcher.
void BM_WildcardManyStars(benchmark::State& state) {
  std::string pattern;
  for (int i = 0; i < 30; ++i) {
    pattern += "*a";
  }
  std::string const text(static_cast<std::size_t>(state.range(0)), 'a');
  for (auto _ : state) {
    benchmark::DoNotOptimize(HABMUtils::wildcard_match(pattern + "b", text));
  }
}

BENCHMARK(BM_WildcardManyStars)->Arg(10000)->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();
