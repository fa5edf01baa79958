// HABMAllocFailureTest.cpp: the reader with memory running out at every allocation of a read in turn: each
// read either fails cleanly, with its message and nothing leaked, or gives the whole design; none crashes
// or gives half of one. Built as a program of its own, since it replaces the global allocator.
#include "blockmodel/HABMBlock.h"
#include "msg/ComMsgMgr.h"
#include "util/HUTFile.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <new>

namespace {

// The allocation that fails: counting down to it, when armed.
long countdown = 0;
bool armed = false;
long counted = 0;

void* allocate(std::size_t size) {
  if (armed) {
    ++counted;
    if (countdown > 0 && --countdown == 0) {
      armed = false;  // one failure per read: what handles it may allocate again
      throw std::bad_alloc();
    }
  }
  if (void* p = std::malloc(size == 0 ? 1 : size)) {
    return p;
  }
  throw std::bad_alloc();
}

}  // namespace

void* operator new(std::size_t size) {
  return allocate(size);
}
void* operator new[](std::size_t size) {
  return allocate(size);
}
void operator delete(void* p) noexcept {
  std::free(p);
}
void operator delete[](void* p) noexcept {
  std::free(p);
}
void operator delete(void* p, std::size_t) noexcept {
  std::free(p);
}
void operator delete[](void* p, std::size_t) noexcept {
  std::free(p);
}

namespace {

// One object of most kinds, so that every reader path runs.
constexpr char kDesign[] = R"({"schema":"tessel:schema:block_model:1.0","top_block":{"module_name":"t",
"configuration":{"parameters":{"P":{"value":"1"}},"attributes":{"A":{"value":"a"}}},
"boundary":{"ports":{"clk":{"type":"wire","direction":"in"},"d":{"type":"vector","direction":"out",
"size_left":7,"size_right":0,"attributes":{"MARK_DEBUG":{"value":"true"}}}},
"interfaces":{"S":{"vlnv":"orvane:interface:aximm:1.0","mode":"slave","memory_map_ref":"m",
"address_apertures":[{"offset":"0x0","range":"4K"}],"port_maps":{"WDATA":{"physical_port":"d"}}}},
"noc_interfaces":{"n":{"mode":"nmu","protocol":"aximm","category":"pl","parameters":{"DATA_WIDTH":{"value":"64"}}},
"s":{"mode":"nsu","protocol":"aximm","category":"ddr"}},
"memory_maps":{"m":{"range":"4K","address_blocks":{"b":{"type":"register","offset":"0x0","range":"1K",
"registers":{"r":{"offset":"0x0","width":32,"fields":{"f":{"offset":0,"width":1}}}}}}}},
"address_spaces":{"sp":{"range":"4G","address_segments":{"g":{"offset":"0x0","range":"1K"}}}},
"bridges":{"br":{"source":"S","target":"S","address_remaps":[{"source":"0x0:0xFFF","target":"0x1000:0x1FFF"}]}}},
"contents":{"sub_blocks":{"u":{"module_name":"m","boundary":{"ports":{"i":{"type":"wire","direction":"in"}}}}},
"port_connections":{"c":{"source":"clk","targets":["u/i"]}},
"noc_connections":{"l":{"source":"n","target":"s","parameters":{"READ_LATENCY":{"value":"100"}}}},
"address_assignments":{"a":{"type":"assignment","source":"sp/g","target":"m/b","offset":"0x0","range":"1K"}}}}})";

std::string written(HABMBlock const& block, std::string const& path) {
  EXPECT_TRUE(HABMBlock::writeTopBlock(HUTFile(path), block, false));
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

TEST(HABMAllocFailure, EveryFailedAllocationOfAReadFailsItCleanly) {
  std::string const dir = (std::filesystem::temp_directory_path() / "mz_alloc_failure").string();
  std::filesystem::create_directories(dir);
  std::string const file = dir + "/design.bm";
  std::ofstream(file, std::ios::binary) << kDesign;
  auto const whole = HABMBlock::readTopBlock(HUTFile(file));
  ASSERT_NE(whole, nullptr);
  std::string const expected = written(*whole, dir + "/whole.bm");

  HUTFile const input(file);
  counted = 0;
  armed = true;
  countdown = 0;
  HABMBlock::readTopBlock(input);
  armed = false;
  long const allocations = counted;
  ASSERT_GT(allocations, 100);

  for (long n = 1; n <= allocations; ++n) {
    ComMsgCapture capture;
    std::unique_ptr<HABMBlock> read;
    countdown = n;
    armed = true;
    EXPECT_NO_THROW(read = HABMBlock::readTopBlock(input)) << "allocation " << n;
    armed = false;
    if (read != nullptr) {
      EXPECT_EQ(written(*read, dir + "/read.bm"), expected) << "allocation " << n << " gave half a design";
    } else if (!capture.records().empty()) {
      EXPECT_EQ(capture.records().back().format, "@90-4@%s") << "allocation " << n;
    }
  }
  std::filesystem::remove_all(dir);
}

}  // namespace
