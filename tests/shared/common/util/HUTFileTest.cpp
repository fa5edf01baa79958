// HUTFileTest.cpp: path texts and file existence.
#include "util/HUTFile.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <unistd.h>

namespace {

TEST(HUTFile, FullPathsAreAbsoluteAndNormalAndBaseNamesLoseFolderAndLastExtension) {
  struct {
    std::string path, full, base;
  } const cases[] = {{"/d/e/../noext", "/d/noext", "noext"},
                     {"top.bm.gz", (std::filesystem::current_path() / "top.bm.gz").string(), "top.bm"}};
  for (auto const& c : cases) {
    std::string full, base;
    EXPECT_TRUE(HUTFile(c.path).getFullPath(full) && HUTFile(c.path).getBaseName(base)) << c.path;
    EXPECT_EQ(full, c.full);
    EXPECT_EQ(base, c.base);
  }
  std::string out = "unchanged";
  EXPECT_FALSE(HUTFile("").getFullPath(out) || HUTFile("/d/").getBaseName(out));
  EXPECT_EQ(out, "unchanged");
}

TEST(HUTFile, ExistsUntilRemovedOnce) {
  HUTFile const f(::testing::TempDir() + "mz_hutfile_" + std::to_string(::getpid()));
  std::ofstream(f.getPath()) << "x";
  EXPECT_TRUE(f.exists());
  EXPECT_TRUE(f.rm());
  EXPECT_FALSE(f.exists());
  EXPECT_FALSE(f.rm());
}

}  // namespace
