// HCRapidJsonReadWriteUtilsTest.cpp: member helpers and parse error texts.
#include "json/HCRapidJsonReadWriteUtils.h"

#include <gtest/gtest.h>

#include <regex>

namespace {

using U = HCRapidJsonReadWriteUtils;

TEST(HCRapidJsonReadWriteUtils, MembersCopyTheCallersTextsAndTakeOverValues) {
  rapidjson::Document doc(rapidjson::kObjectType);
  rapidjson::Value child(rapidjson::kObjectType);
  std::string key = "module_name", value = "top";
  U::AddStringProperty(child, key, value, doc.GetAllocator());
  key = value = "garbage";  // the member must not alias the caller's strings
  U::AddGenericValueProperty(doc, "child", child, doc.GetAllocator());
  ASSERT_TRUE(doc["child"].HasMember("module_name"));
  EXPECT_STREQ(doc["child"]["module_name"].GetString(), "top");
}

TEST(HCRapidJsonReadWriteUtils, ParseErrorsNameTheProblemAndItsOffset) {
  for (auto const& [text, pattern] : {std::pair{"", "empty.* \\(at offset 0\\)$"},
                                      {"{} {}", "root.* \\(at offset 3\\)$"},
                                      {"{\"a\":tru}", "Invalid value.* \\(at offset 8\\)$"}}) {
    std::string const msg = U::GetErrorMsgFromDocument(rapidjson::Document().Parse(text));
    EXPECT_TRUE(std::regex_search(msg, std::regex(pattern))) << msg;
  }
  EXPECT_EQ(U::GetErrorMsgFromDocument(rapidjson::Document().Parse("{}")), "");
}

}  // namespace
