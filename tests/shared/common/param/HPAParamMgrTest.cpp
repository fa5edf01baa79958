// HPAParamMgrTest.cpp: registration, values set by a host and boolean reads of parameters.
#include "param/HPAParamMgr.h"

#include <gtest/gtest.h>

namespace {

HPAParamMgr& mgr() {
  return HPAParamMgr::getParamMgr();
}

TEST(HPAParamMgrTest, UnknownParametersReadAsTheFallback) {
  EXPECT_FALSE(mgr().exists("test.never.seen"));
  EXPECT_TRUE(mgr().getValueIfExistAsBool("test.never.seen", true));
  EXPECT_FALSE(mgr().getValueIfExistAsBool("test.never.seen", false));
}

TEST(HPAParamMgrTest, RegisteredDefaultHoldsUntilAHostSetsAValue) {
  ASSERT_TRUE(mgr().registerBoolParam("test.reg", "A test switch.", true));
  EXPECT_FALSE(mgr().registerBoolParam("test.reg", "again", false));  // first registration stays
  EXPECT_TRUE(mgr().getValueIfExistAsBool("test.reg", false));
  {
    HPAParamOverride off("test.reg", "FALSE");
    EXPECT_TRUE(off.accepted());
    EXPECT_FALSE(mgr().getValueIfExistAsBool("test.reg", true));
  }
  EXPECT_TRUE(mgr().getValueIfExistAsBool("test.reg", false));
  EXPECT_EQ(mgr().getInfo("test.reg")->description, "A test switch.");
}

TEST(HPAParamMgrTest, RegisteredBooleansRefuseOtherTexts) {
  mgr().registerBoolParam("test.strict", "", false);
  std::string why;
  EXPECT_FALSE(mgr().setValue("test.strict", "maybe", &why));
  EXPECT_NE(why.find("test.strict"), std::string::npos);
  EXPECT_FALSE(mgr().getValueIfExistAsBool("test.strict", true));
  for (char const* yes : {"true", "1", "Yes", "ON"}) {
    HPAParamOverride set("test.strict", yes);
    EXPECT_TRUE(mgr().getValueIfExistAsBool("test.strict", false)) << yes;
  }
}

TEST(HPAParamMgrTest, HostSetsUnregisteredParametersFromAssignments) {
  std::string why;
  EXPECT_FALSE(mgr().setFromAssignment("no-equals-sign", &why));
  EXPECT_FALSE(mgr().setFromAssignment("=true", &why));
  ASSERT_TRUE(mgr().setFromAssignment("project.test.flag=true", &why));
  EXPECT_TRUE(mgr().getValueIfExistAsBool("project.test.flag", false));
  // A value that is no boolean text reads as the fallback.
  ASSERT_TRUE(mgr().setFromAssignment("project.test.flag=a=b", &why));
  EXPECT_EQ(*mgr().getInfo("project.test.flag")->value, "a=b");
  EXPECT_TRUE(mgr().getValueIfExistAsBool("project.test.flag", true));
  mgr().resetValue("project.test.flag");
  EXPECT_FALSE(mgr().exists("project.test.flag"));
}

TEST(HPAParamMgrTest, HiddenParametersAreListedOnlyOnRequest) {
  mgr().registerBoolParam("test.hidden", "", true);
  EXPECT_TRUE(mgr().setHidden("test.hidden", true));
  EXPECT_FALSE(mgr().setHidden("test.not.registered", true));
  auto has = [](std::vector<HPAParamMgr::Info> const& list) {
    for (auto const& i : list) {
      if (i.name == "test.hidden") {
        return true;
      }
    }
    return false;
  };
  EXPECT_FALSE(has(mgr().listParams(false)));
  EXPECT_TRUE(has(mgr().listParams(true)));
}

}  // namespace
