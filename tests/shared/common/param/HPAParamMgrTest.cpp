// HPAParamMgrTest.cpp: registration, values set by a host and boolean reads of parameters.
#include "param/HPAParamMgr.h"

#include <gtest/gtest.h>

namespace {

HPAParamMgr& mgr() {
  return HPAParamMgr::getParamMgr();
}

TEST(HPAParamMgr, ARegisteredDefaultHoldsUntilAHostSetsABooleanText) {
  mgr().setFromAssignment("test.reg=maybe");  // set early, and no boolean: dropped on registration
  mgr().registerBoolParam("test.reg", "A test switch.", true);
  std::string why;
  EXPECT_FALSE(mgr().setValue("test.reg", "maybe", &why));
  EXPECT_NE(why.find("'test.reg'"), std::string::npos) << why;
  {
    HPAParamOverride off("test.reg", "FALSE");
    HPAParamOverride("test.reg", "on");  // gone at once: puts FALSE back
    EXPECT_FALSE(mgr().getValueIfExistAsBool("test.reg", true));
  }
  EXPECT_FALSE(mgr().registerBoolParam("test.reg", "again", false));  // changes nothing
  EXPECT_TRUE(mgr().getValueIfExistAsBool("test.reg", false));
}

TEST(HPAParamMgr, OnlyTheEightBooleanWordsInAnyCaseReadAsValuesOtherTextsGiveTheFallback) {
  std::string read;  // T, F or - for no boolean
  for (char const* text : {"true", "1", "Yes", "ON", "FALSE", "0", "no", "Off", "maybe", "", " 1"}) {
    auto const value = HPAParamMgr::parseBool(text);
    read += value ? (*value ? 'T' : 'F') : '-';
  }
  EXPECT_EQ(read, "TTTTFFFF---");
  ASSERT_TRUE(mgr().setFromAssignment("test.flag=a=b"));  // a name the host sets without registration
  EXPECT_EQ(mgr().getInfo("test.flag")->value, "a=b");
  // Not a boolean word: each read gives its own fallback.
  EXPECT_NE(mgr().getValueIfExistAsBool("test.flag", true), mgr().getValueIfExistAsBool("test.flag", false));
  mgr().resetValue("test.flag");  // forgets an unregistered name altogether
  EXPECT_FALSE(mgr().exists("test.flag"));
}

TEST(HPAParamMgr, HiddenParametersAreListedOnlyOnRequest) {
  mgr().registerBoolParam("test.hidden", "", true);
  EXPECT_TRUE(mgr().setHidden("test.hidden", true));  // the only hidden one here
  EXPECT_EQ(mgr().listParams(false).size() + 1, mgr().listParams(true).size());
}

}  // namespace
