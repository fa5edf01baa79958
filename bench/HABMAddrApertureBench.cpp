// HABMAddrApertureBench.cpp: reading aperture and remap texts, and the set algebra on large sets.
#include "blockmodel/HABMAddrAperture.h"

#include "blockmodel/HABMAddrApertureUtils.h"
#include "blockmodel/HABMAddrRemap.h"

#include <benchmark/benchmark.h>

#include <random>
#include <string>
#include <vector>

namespace {

using Set = HABMAddrApertureUtils::ApertureSet;
constexpr std::size_t kTexts = 1'000'000;
constexpr unsigned kSetSize = 10'000;

HABMAddrAperture randomAperture(std::mt19937_64& rng) {
  // 4K-granular bases in a 256M window, ranges up to 64K: sets of 10,000 overlap, touch and leave gaps.
  return HABMAddrAperture(HABMAddrValue(0, (rng() % 0x10000) << 12),
                          HABMAddrValue(0, (rng() % 16 + 1) << 12));
}

// Texts in every form the readers take, as files carry them.
std::vector<std::string> const& apertureTexts() {
  static std::vector<std::string> const texts = [] {
    std::mt19937_64 rng(1);
    std::vector<std::string> out;
    out.reserve(kTexts);
    for (std::size_t i = 0; i < kTexts; ++i) {
      HABMAddrAperture const a = randomAperture(rng);
      out.push_back(i % 2 == 0 ? a.getBaseAbrvString(i % 4 == 0 ? 64 : 0) : a.getBaseHighString());
    }
    return out;
  }();
  return texts;
}

std::vector<std::string> const& remapTexts() {
  static std::vector<std::string> const texts = [] {
    std::mt19937_64 rng(2);
    std::vector<std::string> out;
    out.reserve(kTexts);
    for (std::size_t i = 0; i < kTexts; ++i) {
      HABMAddrAperture const s = randomAperture(rng);
      HABMAddrAperture const t = randomAperture(rng);
      HABMAddrRemap const r(s.getBaseAddress(), t.getBaseAddress(), s.getRange());
      switch (i % 3) {
        case 0:
          out.push_back(r.getBaseAbrvString());
          break;
        case 1:
          out.push_back(s.getBaseAbrvString() + ',' + t.getBaseAbrvString());
          break;
        default:
          out.push_back(s.getBaseAbrvString());
          break;
      }
    }
    return out;
  }();
  return texts;
}

Set randomSet(std::uint64_t seed) {
  std::mt19937_64 rng(seed);
  Set s;
  while (s.size() < kSetSize) {
    s.insert(randomAperture(rng));
  }
  return s;
}

void ParseApertures(benchmark::State& state) {
  auto const& texts = apertureTexts();
  for (auto _ : state) {
    for (auto const& t : texts) {
      benchmark::DoNotOptimize(HABMAddrAperture(t));
    }
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kTexts));
}

void ParseRemaps(benchmark::State& state) {
  auto const& texts = remapTexts();
  for (auto _ : state) {
    for (auto const& t : texts) {
      benchmark::DoNotOptimize(HABMAddrRemap(t));
    }
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kTexts));
}

void Compress(benchmark::State& state) {
  Set const s = randomSet(3);
  bool const adjusted = state.range(0) != 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(HABMAddrApertureUtils::compress(s, adjusted, adjusted));
  }
}

void CheckConeRule(benchmark::State& state) {
  Set const requests = randomSet(4);
  Set const served = randomSet(5);
  for (auto _ : state) {
    Set offenders;
    benchmark::DoNotOptimize(HABMAddrApertureUtils::checkConeRule(requests, served, offenders));
  }
}

void GetRelativeComplements(benchmark::State& state) {
  Set const a = randomSet(6);
  Set const b = randomSet(7);
  for (auto _ : state) {
    benchmark::DoNotOptimize(HABMAddrApertureUtils::getRelativeComplements(a, b));
  }
}

}  // namespace

BENCHMARK(ParseApertures)->Unit(benchmark::kMillisecond);
BENCHMARK(ParseRemaps)->Unit(benchmark::kMillisecond);
BENCHMARK(Compress)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK(CheckConeRule)->Unit(benchmark::kMillisecond);
BENCHMARK(GetRelativeComplements)->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
