// HABMAddrValueBench.cpp: address value parsing, printing and arithmetic beside a raw 128-bit integer
// doing the same work on the same data.
#include "blockmodel/HABMAddrValue.h"

#include <benchmark/benchmark.h>

#include <random>
#include <string>
#include <vector>

namespace {

using habm_detail::UInt128;
constexpr std::size_t kCount = 1'000'000;

struct Data {
  std::vector<HABMAddrValue> a, b;
  std::vector<UInt128> ra, rb;
  std::vector<std::string> hexTexts;
  std::vector<std::string> mixedTexts;
};

// Values of every width, so that printers and the reader see short and long numbers alike.
Data const& data() {
  static Data const d = [] {
    Data out;
    std::mt19937_64 rng(42);
    auto next = [&rng] {
      unsigned const bits = static_cast<unsigned>(rng() % 129);
      UInt128 v = (UInt128{rng()} << 64) | rng();
      return bits == 128 ? v : v & ((UInt128{1} << bits) - 1);
    };
    for (std::size_t i = 0; i < kCount; ++i) {
      UInt128 const x = next();
      UInt128 const y = next();
      out.ra.push_back(x);
      out.rb.push_back(y);
      out.a.emplace_back(static_cast<std::uint64_t>(x >> 64), static_cast<std::uint64_t>(x));
      out.b.emplace_back(static_cast<std::uint64_t>(y >> 64), static_cast<std::uint64_t>(y));
      out.hexTexts.push_back(out.a.back().getPrettyHexStringValue());
      switch (i % 4) {
        case 0:
          out.mixedTexts.push_back(out.hexTexts.back());
          break;
        case 1:
          out.mixedTexts.push_back(std::to_string(rng() % 4096) + "KMGT"[rng() % 4]);
          break;
        case 2:
          out.mixedTexts.push_back(std::to_string(rng()));
          break;
        default:
          out.mixedTexts.push_back(out.a.back().getBinStringValue());
          break;
      }
    }
    return out;
  }();
  return d;
}

// The least a raw integer needs to read "0x" hex with separators.
UInt128 rawReadHex(std::string const& text) {
  UInt128 v = 0;
  for (std::size_t i = 2; i < text.size(); ++i) {
    char const c = text[i];
    if (c == '_') {
      continue;
    }
    unsigned const d = c <= '9' ? static_cast<unsigned>(c - '0') : static_cast<unsigned>(c - 'A' + 10);
    v = (v << 4) | d;
  }
  return v;
}

std::string rawHex(UInt128 v, bool pretty) {
  char digits[32];
  int n = 0;
  do {
    digits[n++] = "0123456789ABCDEF"[static_cast<unsigned>(v & 0xF)];
    v >>= 4;
  } while (v != 0);
  std::string out = "0x";
  for (int i = n - 1; i >= 0; --i) {
    out += digits[i];
    if (pretty && i > 0 && i % 4 == 0) {
      out += '_';
    }
  }
  return out;
}

std::string rawBin(UInt128 v) {
  std::string out = "b";
  int top = 127;
  while (top > 0 && ((v >> top) & 1) == 0) {
    --top;
  }
  for (int i = top; i >= 0; --i) {
    out += ((v >> i) & 1) != 0 ? '1' : '0';
  }
  return out;
}

std::string rawAbrv(UInt128 v) {
  if (v == 0) {
    return "0";
  }
  unsigned tz = 0;
  unsigned top = 0;
  for (UInt128 t = v; (t & 1) == 0; t >>= 1) {
    ++tz;
  }
  for (UInt128 t = v; t > 1; t >>= 1) {
    ++top;
  }
  unsigned const unit = std::min({tz / 10, top / 10, 8U});
  std::string out = std::to_string(static_cast<std::uint64_t>(v >> (10 * unit)));
  if (unit > 0) {
    out += "KMGTPEZY"[unit - 1];
  }
  return out;
}

// Runs `f` a million times: over all values, or over the first `range(0)` of them again and again, so
// that the same work is measured once streaming from memory and once inside the cache.
template <class F>
void overAll(benchmark::State& state, F&& f) {
  auto const window = state.range(0) > 0 ? static_cast<std::size_t>(state.range(0)) : kCount;
  for (auto _ : state) {
    for (std::size_t done = 0; done < kCount; done += window) {
      for (std::size_t i = 0; i < window; ++i) {
        f(i);
      }
    }
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kCount));
}

void ParseHex_AddrValue(benchmark::State& s) {
  auto const& d = data();
  overAll(s, [&](std::size_t i) { benchmark::DoNotOptimize(HABMAddrValue(d.hexTexts[i])); });
}
void ParseHex_Raw(benchmark::State& s) {
  auto const& d = data();
  overAll(s, [&](std::size_t i) { benchmark::DoNotOptimize(rawReadHex(d.hexTexts[i])); });
}
void ParseMixed_AddrValue(benchmark::State& s) {
  auto const& d = data();
  overAll(s, [&](std::size_t i) { benchmark::DoNotOptimize(HABMAddrValue(d.mixedTexts[i])); });
}

void PrintHex_AddrValue(benchmark::State& s) {
  auto const& d = data();
  overAll(s, [&](std::size_t i) { benchmark::DoNotOptimize(d.a[i].getHexStringValue()); });
}
void PrintHex_Raw(benchmark::State& s) {
  auto const& d = data();
  overAll(s, [&](std::size_t i) { benchmark::DoNotOptimize(rawHex(d.ra[i], false)); });
}
void PrintPretty_AddrValue(benchmark::State& s) {
  auto const& d = data();
  overAll(s, [&](std::size_t i) { benchmark::DoNotOptimize(d.a[i].getPrettyHexStringValue()); });
}
void PrintPretty_Raw(benchmark::State& s) {
  auto const& d = data();
  overAll(s, [&](std::size_t i) { benchmark::DoNotOptimize(rawHex(d.ra[i], true)); });
}
void PrintBin_AddrValue(benchmark::State& s) {
  auto const& d = data();
  overAll(s, [&](std::size_t i) { benchmark::DoNotOptimize(d.a[i].getBinStringValue()); });
}
void PrintBin_Raw(benchmark::State& s) {
  auto const& d = data();
  overAll(s, [&](std::size_t i) { benchmark::DoNotOptimize(rawBin(d.ra[i])); });
}
void PrintInt_AddrValue(benchmark::State& s) {
  auto const& d = data();
  overAll(s, [&](std::size_t i) { benchmark::DoNotOptimize(d.a[i].getIntStringValue()); });
}
void PrintInt_Raw(benchmark::State& s) {
  auto const& d = data();
  overAll(s, [&](std::size_t i) {
    benchmark::DoNotOptimize(std::to_string(static_cast<std::uint64_t>(d.ra[i])));
  });
}
void PrintAbrv_AddrValue(benchmark::State& s) {
  auto const& d = data();
  overAll(s, [&](std::size_t i) { benchmark::DoNotOptimize(d.a[i].getAbrvStringValue()); });
}
void PrintAbrv_Raw(benchmark::State& s) {
  auto const& d = data();
  overAll(s, [&](std::size_t i) { benchmark::DoNotOptimize(rawAbrv(d.ra[i])); });
}

// Arithmetic and comparison: fold each result into an accumulator so that nothing is optimised away.
#define MZ_ARITH_PAIR(NAME, EXPR_VALUE, EXPR_RAW) \
  void NAME##_AddrValue(benchmark::State& s) {    \
    auto const& d = data();                       \
    HABMAddrValue acc;                            \
    overAll(s, [&](std::size_t i) {               \
      auto const& a = d.a[i];                     \
      [[maybe_unused]] auto const& b = d.b[i];    \
      acc ^= (EXPR_VALUE);                        \
    });                                           \
    benchmark::DoNotOptimize(acc);                \
  }                                               \
  void NAME##_Raw(benchmark::State& s) {          \
    auto const& d = data();                       \
    UInt128 acc = 0;                              \
    overAll(s, [&](std::size_t i) {               \
      auto const a = d.ra[i];                     \
      [[maybe_unused]] auto const b = d.rb[i];    \
      acc ^= (EXPR_RAW);                          \
    });                                           \
    benchmark::DoNotOptimize(acc);                \
  }

MZ_ARITH_PAIR(Add, a + b, a + b)
MZ_ARITH_PAIR(Mul, a* b, a* b)
MZ_ARITH_PAIR(Shl, a << static_cast<int>(i & 127), a << (i & 127))
MZ_ARITH_PAIR(Less, HABMAddrValue(a < b ? 1U : 0U), UInt128{a < b ? 1U : 0U})
MZ_ARITH_PAIR(Equal, HABMAddrValue(a == b ? 1U : 0U), UInt128{a == b ? 1U : 0U})
#undef MZ_ARITH_PAIR

}  // namespace

BENCHMARK(ParseHex_AddrValue)->Arg(0)->Unit(benchmark::kMillisecond);
BENCHMARK(ParseHex_Raw)->Arg(0)->Unit(benchmark::kMillisecond);
BENCHMARK(ParseMixed_AddrValue)->Arg(0)->Unit(benchmark::kMillisecond);
BENCHMARK(PrintHex_AddrValue)->Arg(0)->Unit(benchmark::kMillisecond);
BENCHMARK(PrintHex_Raw)->Arg(0)->Unit(benchmark::kMillisecond);
BENCHMARK(PrintPretty_AddrValue)->Arg(0)->Unit(benchmark::kMillisecond);
BENCHMARK(PrintPretty_Raw)->Arg(0)->Unit(benchmark::kMillisecond);
BENCHMARK(PrintBin_AddrValue)->Arg(0)->Unit(benchmark::kMillisecond);
BENCHMARK(PrintBin_Raw)->Arg(0)->Unit(benchmark::kMillisecond);
BENCHMARK(PrintInt_AddrValue)->Arg(0)->Unit(benchmark::kMillisecond);
BENCHMARK(PrintInt_Raw)->Arg(0)->Unit(benchmark::kMillisecond);
BENCHMARK(PrintAbrv_AddrValue)->Arg(0)->Unit(benchmark::kMillisecond);
BENCHMARK(PrintAbrv_Raw)->Arg(0)->Unit(benchmark::kMillisecond);
BENCHMARK(Add_AddrValue)->Arg(0)->Arg(4096)->Unit(benchmark::kMillisecond);
BENCHMARK(Add_Raw)->Arg(0)->Arg(4096)->Unit(benchmark::kMillisecond);
BENCHMARK(Mul_AddrValue)->Arg(0)->Arg(4096)->Unit(benchmark::kMillisecond);
BENCHMARK(Mul_Raw)->Arg(0)->Arg(4096)->Unit(benchmark::kMillisecond);
BENCHMARK(Shl_AddrValue)->Arg(0)->Arg(4096)->Unit(benchmark::kMillisecond);
BENCHMARK(Shl_Raw)->Arg(0)->Arg(4096)->Unit(benchmark::kMillisecond);
BENCHMARK(Less_AddrValue)->Arg(0)->Arg(4096)->Unit(benchmark::kMillisecond);
BENCHMARK(Less_Raw)->Arg(0)->Arg(4096)->Unit(benchmark::kMillisecond);
BENCHMARK(Equal_AddrValue)->Arg(0)->Arg(4096)->Unit(benchmark::kMillisecond);
BENCHMARK(Equal_Raw)->Arg(0)->Arg(4096)->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
