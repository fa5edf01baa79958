// HABMScaleBench.cpp: every flow on the same generated designs at sizes a factor 10 apart, with the file
// reads and writes beside what RapidJSON and zlib alone take for the same bytes.
//
// Designs: fan-out 10, depth 3 to 5 (1,111 to 111,111 blocks; depth 6, a million blocks, when
// MZ_BENCH_HUGE is set), 5 ports and 5 attributes per block, NoC interfaces and links on every leaf; for
// the file benchmarks also "wide" designs without NoC objects, 50 ports and 5 attributes per block, depth 2
// to 4 (the second argument is 1). Each
// file benchmark reports `ratio`: the median over its iterations of its time over the floor's, both
// measured in the same iteration; what either returns is destroyed after the clock stops (BM_Teardown
// times the model's destruction). Per-object costs are in `ns_per_block`. Files go to /dev/shm when it
// exists, so that the disk's sync time does not hide the work (MZ_BENCH_DIR overrides).
#include "blockmodel/HABMBlock.h"
#include "blockmodel/HABMBlockChecker.h"
#include "blockmodel/HABMNocPath.h"
#include "blockmodel/HABMSVlogWriter.h"
#include "blockmodel/HABMVlogWriter.h"
#include "blockmodel/HABMXdcWriter.h"
#include "util/HUTFile.h"

#include "BmSynthetic.h"

#include <benchmark/benchmark.h>
#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <malloc.h>
#include <map>
#include <string>
#include <sys/wait.h>
#include <time.h>
#include <type_traits>
#include <unistd.h>
#include <vector>
#include <zlib.h>

namespace {

namespace fs = std::filesystem;

bmtool::SyntheticShape shapeFor(benchmark::State const& state) {
  bool const wide = state.range(1) != 0;
  return {static_cast<unsigned>(state.range(0)), 10, 5, wide ? 50U : 5U, !wide};
}

std::string directory() {
  if (char const* dir = std::getenv("MZ_BENCH_DIR")) {
    return dir;
  }
  return fs::exists("/dev/shm") ? "/dev/shm" : fs::temp_directory_path().string();
}

// One design per size, built once and shared by every benchmark, with its file beside it.
struct Design {
  std::unique_ptr<HABMBlock> top;
  std::string path;
  std::string bytes;
  double blocks = 0;
  double ports = 0;
};

Design const& designFor(benchmark::State const& state) {
  static std::map<long, Design> designs;
  Design& design = designs[state.range(0) * 10 + state.range(1)];
  if (!design.top) {
    bmtool::SyntheticShape const shape = shapeFor(state);
    design.top = bmtool::makeSyntheticDesign(shape);
    design.path = directory() + "/mz_scale_" + std::to_string(::getpid()) + "_" +
                  std::to_string(state.range(0)) + "_" + std::to_string(state.range(1)) + ".bm";
    HABMBlock::writeTopBlock(HUTFile(design.path), *design.top, false);
    std::ifstream in(design.path, std::ios::binary);
    design.bytes.assign(std::istreambuf_iterator<char>(in), {});
    design.blocks = static_cast<double>(bmtool::syntheticBlockCount(shape));
    design.ports = design.blocks * shape.ports;
  }
  return design;
}

// The CPU time of this thread, kernel time included: on a busy machine wall time stretches the work and
// its floor unevenly, and the ratio is what counts.
double cpuSeconds() {
  timespec now{};
  ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

void perBlock(benchmark::State& state, Design const& design) {
  state.counters["blocks"] = design.blocks;
  state.counters["MB"] = static_cast<double>(design.bytes.size()) / 1e6;
  // Inverted rate: seconds per (blocks * 1e-9), that is nanoseconds per block.
  state.counters["ns_per_block"] = benchmark::Counter(
      design.blocks * 1e-9, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

// The CPU time of `work`; what it returns outlives the measurement.
template <class Work>
double timed(Work&& work) {
  double const start = cpuSeconds();
  if constexpr (std::is_void_v<decltype(work())>) {
    work();
    return cpuSeconds() - start;
  } else {
    auto const kept = work();
    return cpuSeconds() - start;
  }
}

// Times `work` and `floor` one after the other in each iteration; the benchmark's time is `work`'s. The
// median ratio, since a busy machine stretches single iterations.
template <class Work, class Floor>
void againstFloor(benchmark::State& state, Design const& design, Work work, Floor floor) {
  double floorTotal = 0;
  std::vector<double> ratios;
  for (auto _ : state) {
    double const floorTime = timed(floor);
    double const workTime = timed(work);
    state.SetIterationTime(workTime);
    floorTotal += floorTime;
    ratios.push_back(workTime / floorTime);
  }
  auto const middle = ratios.begin() + static_cast<std::ptrdiff_t>(ratios.size() / 2);
  std::nth_element(ratios.begin(), middle, ratios.end());
  state.counters["ratio"] = *middle;
  state.counters["floor_ms"] = floorTotal * 1e3 / static_cast<double>(state.iterations());
  perBlock(state, design);
}

void BM_Read(benchmark::State& state) {
  Design const& design = designFor(state);
  againstFloor(
      state, design, [&] { return HABMBlock::readTopBlock(HUTFile(design.path)); },
      [&] {
        auto doc = std::make_unique<rapidjson::Document>();
        doc->Parse(design.bytes.data(), design.bytes.size());
        return doc;
      });
}

// The destruction of a model read from the file.
void BM_Teardown(benchmark::State& state) {
  Design const& design = designFor(state);
  for (auto _ : state) {
    state.PauseTiming();
    auto block = HABMBlock::readTopBlock(HUTFile(design.path));
    state.ResumeTiming();
    block.reset();
  }
  perBlock(state, design);
}

// Writes the document as the floor program would: one buffer, then to a fresh file made durable and
// moved over the target, as the model's writer does.
void writeRaw(std::string const& text, std::string const& path) {
  std::string const temp = path + ".tmp";
  std::FILE* f = std::fopen(temp.c_str(), "wb");
  std::fwrite(text.data(), 1, text.size(), f);
  std::fflush(f);
  ::fsync(::fileno(f));
  std::fclose(f);
  std::rename(temp.c_str(), path.c_str());
}

void BM_Write(benchmark::State& state) {
  Design const& design = designFor(state);
  rapidjson::Document doc;
  doc.Parse(design.bytes.data(), design.bytes.size());
  std::string const out = design.path + ".out";
  std::string const raw = design.path + ".raw";
  againstFloor(
      state, design,
      [&] { benchmark::DoNotOptimize(HABMBlock::writeTopBlock(HUTFile(out), *design.top, false)); },
      [&] {
        rapidjson::StringBuffer buffer;
        rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
        doc.Accept(writer);
        writeRaw(std::string(buffer.GetString(), buffer.GetSize()), raw);
      });
  fs::remove(out);
  fs::remove(raw);
}

// gzip against zlib deflating the same bytes into a gzip stream at its default level.
void BM_WriteGzip(benchmark::State& state) {
  Design const& design = designFor(state);
  std::string const out = design.path + ".out.gz";
  std::string const raw = design.path + ".raw.gz";
  againstFloor(
      state, design,
      [&] { benchmark::DoNotOptimize(HABMBlock::writeTopBlock(HUTFile(out), *design.top, false)); },
      [&] {
        z_stream z{};
        deflateInit2(&z, Z_DEFAULT_COMPRESSION, Z_DEFLATED, 15 + 16, 8, Z_DEFAULT_STRATEGY);
        std::string packed(deflateBound(&z, design.bytes.size()), '\0');
        z.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(design.bytes.data()));
        z.avail_in = static_cast<uInt>(design.bytes.size());
        z.next_out = reinterpret_cast<Bytef*>(packed.data());
        z.avail_out = static_cast<uInt>(packed.size());
        deflate(&z, Z_FINISH);
        packed.resize(z.total_out);
        deflateEnd(&z);
        writeRaw(packed, raw);
      });
  fs::remove(out);
  fs::remove(raw);
}

// A field of /proc/self/status in KiB ("VmRSS", "VmHWM").
double statusKiB(char const* field) {
  std::ifstream status("/proc/self/status");
  std::string line;
  std::string const key = std::string(field) + ":";
  while (std::getline(status, line)) {
    if (line.rfind(key, 0) == 0) {
      return std::stod(line.substr(key.size()));
    }
  }
  return 0;
}

// The peak resident memory that `work` adds, in MiB, measured in a child of its own: the child first hands
// the free heap it inherited back to the system and resets its high-water mark, so that only what `work`
// touches counts.
template <class Work>
double peakMiB(Work work) {
  int pipe[2];
  if (::pipe(pipe) != 0) {
    return 0;
  }
  pid_t const child = ::fork();
  if (child == 0) {
    ::close(pipe[0]);
    ::malloc_trim(0);
    std::ofstream("/proc/self/clear_refs") << "5";
    double const start = statusKiB("VmRSS");
    work();
    double const peak = (statusKiB("VmHWM") - start) / 1024.0;
    ::write(pipe[1], &peak, sizeof peak);
    std::_Exit(0);
  }
  ::close(pipe[1]);
  double peak = 0;
  ::read(pipe[0], &peak, sizeof peak);
  ::close(pipe[0]);
  ::waitpid(child, nullptr, 0);
  return peak;
}

// The heap bytes that a model read from `path` holds once the file's document is gone.
double heapBytesOf(std::string const& path) {
  auto const before = mallinfo2();
  auto const block = HABMBlock::readTopBlock(HUTFile(path));
  auto const after = mallinfo2();
  return static_cast<double>((after.uordblks + after.hblkhd) - (before.uordblks + before.hblkhd));
}

// Peak memory of a read against the DOM parse's, and what the model keeps once the document is gone.
void BM_ReadMemory(benchmark::State& state) {
  Design const& design = designFor(state);
  double model = 0;
  double raw = 0;
  double kept = 0;
  double keptWithPorts = 0;
  double keptWithoutPorts = 0;
  // A block's and a port's own bytes are measured on the same tree without NoC objects: with ports, and
  // without.
  bmtool::SyntheticShape shape = shapeFor(state);
  shape.noc = false;
  std::string const withPorts = design.path + ".ports.bm";
  HABMBlock::writeTopBlock(HUTFile(withPorts), *bmtool::makeSyntheticDesign(shape), false);
  shape.ports = 0;
  std::string const withoutPorts = design.path + ".noports.bm";
  HABMBlock::writeTopBlock(HUTFile(withoutPorts), *bmtool::makeSyntheticDesign(shape), false);
  for (auto _ : state) {
    model = peakMiB([&] { benchmark::DoNotOptimize(HABMBlock::readTopBlock(HUTFile(design.path))); });
    // The floor holds the file's bytes, as a program that parses them from memory must.
    raw = peakMiB([&] {
      std::ifstream in(design.path, std::ios::binary);
      std::string const bytes{std::istreambuf_iterator<char>(in), {}};
      rapidjson::Document doc;
      doc.Parse(bytes.data(), bytes.size());
      benchmark::DoNotOptimize(doc.IsObject());
    });
    kept = heapBytesOf(design.path);
    keptWithPorts = heapBytesOf(withPorts);
    keptWithoutPorts = heapBytesOf(withoutPorts);
  }
  state.counters["peak_MiB"] = model;
  state.counters["floor_peak_MiB"] = raw;
  state.counters["ratio"] = model / raw;
  state.counters["model_B_per_block"] = keptWithoutPorts / design.blocks;
  state.counters["model_B_per_port"] = (keptWithPorts - keptWithoutPorts) / design.ports;
  // Everything, NoC interfaces and links of the leaves included.
  state.counters["model_B_per_noc_block"] = kept / design.blocks;
  std::remove(withPorts.c_str());
  std::remove(withoutPorts.c_str());
  perBlock(state, design);
}

template <class Work>
void perObject(benchmark::State& state, Work work) {
  Design const& design = designFor(state);
  for (auto _ : state) {
    work(design);
  }
  perBlock(state, design);
}

void BM_ValidateAll(benchmark::State& state) {
  perObject(state, [](Design const& d) { HABMBlockChecker::validate_all(*d.top); });
}

void BM_Clone(benchmark::State& state) {
  perObject(state, [](Design const& d) { benchmark::DoNotOptimize(HABMBlock::cloneTopBlock(*d.top)); });
}

// The first-level block "/u0" out, with its crossing links cut at virtual interfaces, and back; on a
// fresh copy each time, since the cut stays.
void BM_SplitMerge(benchmark::State& state) {
  Design const& design = designFor(state);
  for (auto _ : state) {
    state.PauseTiming();
    auto copy = HABMBlock::cloneTopBlock(*design.top);
    state.ResumeTiming();
    auto const part = HABMBlock::splitTopBlock(*copy, "/u0", true);
    benchmark::DoNotOptimize(HABMBlock::mergeTopBlock(*copy, "/u0", *part, false));
    state.PauseTiming();
    copy.reset();
    state.ResumeTiming();
  }
  perBlock(state, design);
}

void BM_CreateNocPaths(benchmark::State& state) {
  perObject(state,
            [](Design const& d) { benchmark::DoNotOptimize(HABMNocPath::createNocPaths(d.top.get())); });
}

// The stub and the wrapper of every block, as a flow that hands each block to synthesis on its own would.
void BM_Stubs(benchmark::State& state) {
  perObject(state, [](Design const& d) {
    HABMVlogWriter::writeStub(HUTFile(d.path + ".v"), *d.top, false);
    for (HABMBlock const* block : d.top->findSubBlocks(std::string(), true)) {
      HABMVlogWriter::writeStub(HUTFile(d.path + ".v"), *block, false);
    }
  });
}

void BM_Wrappers(benchmark::State& state) {
  perObject(state, [](Design const& d) {
    HABMSVlogWriter::writeSVEO(d.path + ".sv", *d.top);
    for (HABMBlock const* block : d.top->findSubBlocks(std::string(), true)) {
      HABMSVlogWriter::writeSVEO(d.path + ".sv", *block);
    }
  });
}

void BM_ConstraintScript(benchmark::State& state) {
  perObject(state,
            [](Design const& d) { HABMXdcWriter::writeXdc(*d.top, HUTFile(d.path + ".tcl"), false, {}); });
}

void sizes(benchmark::internal::Benchmark* b) {
  b->Args({3, 0})->Args({4, 0})->Args({5, 0});
  if (std::getenv("MZ_BENCH_HUGE") != nullptr) {
    b->Args({6, 0});
  }
  b->Unit(benchmark::kMillisecond);
}

void fileSizes(benchmark::internal::Benchmark* b) {
  sizes(b);
  b->Args({2, 1})->Args({3, 1})->Args({4, 1});
}

}  // namespace

// The ratios three times over: the largest size runs one iteration each time.
BENCHMARK(BM_Read)->Apply(fileSizes)->UseManualTime()->Repetitions(3)->ReportAggregatesOnly(true);
BENCHMARK(BM_Write)->Apply(fileSizes)->UseManualTime()->Repetitions(3)->ReportAggregatesOnly(true);
BENCHMARK(BM_WriteGzip)->Apply(fileSizes)->UseManualTime()->Repetitions(3)->ReportAggregatesOnly(true);
BENCHMARK(BM_Teardown)->Apply(fileSizes);
BENCHMARK(BM_ReadMemory)->Apply(fileSizes)->Iterations(1);
BENCHMARK(BM_ValidateAll)->Apply(sizes);
BENCHMARK(BM_Clone)->Apply(sizes);
BENCHMARK(BM_SplitMerge)->Apply(sizes);
BENCHMARK(BM_CreateNocPaths)->Apply(sizes);
BENCHMARK(BM_Stubs)->Apply(sizes);
BENCHMARK(BM_Wrappers)->Apply(sizes);
BENCHMARK(BM_ConstraintScript)->Apply(sizes);

BENCHMARK_MAIN();
