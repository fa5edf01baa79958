// HUTFileTest.cpp: path texts and file existence.
#include "util/HUTFile.h"

#include "util/HUTEnv.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

namespace {

TEST(HUTFileTest, PathTextsAreAbsoluteAndBaseNamesLoseFolderAndExtension) {
  struct {
    char const* path;
    char const* base;
  } const cases[] = {{"/d/top.bm", "top"}, {"top.bm.gz", "top.bm"}, {"/d/e/../noext", "noext"}};
  for (auto const& c : cases) {
    HUTFile const f(c.path);
    std::string base;
    ASSERT_TRUE(f.getBaseName(base)) << c.path;
    EXPECT_EQ(base, c.base);
    std::string full;
    ASSERT_TRUE(f.getFullPath(full));
    EXPECT_EQ(full.front(), '/');
    EXPECT_EQ(full.find("/../"), std::string::npos);
  }
  std::string out = "unchanged";
  EXPECT_FALSE(HUTFile("").getFullPath(out));
  EXPECT_FALSE(HUTFile("/d/").getBaseName(out));
  EXPECT_EQ(out, "unchanged");
}

TEST(HUTFileTest, ExistsAndRemove) {
  auto const p = std::filesystem::temp_directory_path() / "mz_hutfile_test.txt";
  std::ofstream(p) << "x";
  HUTFile const f(p.string());
  EXPECT_TRUE(f.exists());
  EXPECT_TRUE(f.rm());
  EXPECT_FALSE(f.exists());
  EXPECT_FALSE(f.rm());
  EXPECT_FALSE(HUTFile("").exists());
}

TEST(HUTEnvTest, InsideOrvaneOnlyWhenTheHostSaysSo) {
  EXPECT_FALSE(HUTEnv::isHostInsideOrvane());
  HUTEnv::setHostInsideOrvane(true);
  EXPECT_TRUE(HUTEnv::isHostInsideOrvane());
  HUTEnv::setHostInsideOrvane(false);
}

}  // namespace
