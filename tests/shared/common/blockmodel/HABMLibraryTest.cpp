// HABMLibraryTest.cpp: what loading the library registers with its host.
#include "blockmodel/HABMLibrary.h"

#include "param/HPAParamMgr.h"

#include <gtest/gtest.h>

namespace {

TEST(HABMLibraryTest, LoadingRegistersTheHiddenSofteningSwitchOnce) {
  // Nothing has been called yet: the shared library registered it when it was loaded.
  auto const info = HPAParamMgr::getParamMgr().getInfo("blockmodel.softenCanMergeChecks");
  ASSERT_TRUE(info.has_value());
  EXPECT_TRUE(info->registered);
  EXPECT_TRUE(info->hidden);
  EXPECT_EQ(info->defaultValue, "true");
  EXPECT_EQ(info->description,
            "Soften boundary checks to skip ports and interfaces for IP with known issues.");
  EXPECT_TRUE(HPAParamMgr::getParamMgr().getValueIfExistAsBool("blockmodel.softenCanMergeChecks", false));

  HPAParamOverride off("blockmodel.softenCanMergeChecks", "false");
  HABMLibrary::registerParameters();  // a second call must not reset what the host set
  EXPECT_FALSE(HPAParamMgr::getParamMgr().getValueIfExistAsBool("blockmodel.softenCanMergeChecks", true));
}

}  // namespace
