// HCRapidJsonReadWriteUtilsTest.cpp: member helpers and parse error texts.
#include "json/HCRapidJsonReadWriteUtils.h"

#include <gtest/gtest.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

namespace {

TEST(HCRapidJsonReadWriteUtilsTest, MembersAreAddedInOrderWithCopiedTexts) {
  rapidjson::Document doc(rapidjson::kObjectType);
  auto& a = doc.GetAllocator();
  rapidjson::Value child(rapidjson::kObjectType);
  {
    std::string key = "module_name";
    std::string value = "top";
    HCRapidJsonReadWriteUtils::AddStringProperty(child, key, value, a);
    key.assign("garbage");  // the member must not alias the caller's strings
    value.assign("garbage");
  }
  HCRapidJsonReadWriteUtils::AddBooleanProperty(doc, "flag", true, a);
  HCRapidJsonReadWriteUtils::AddIntegrProperty(doc, "count", -7, a);
  HCRapidJsonReadWriteUtils::AddGenericValueProperty(doc, "child", child, a);
  EXPECT_TRUE(child.IsNull());
  rapidjson::StringBuffer buffer;
  rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
  doc.Accept(writer);
  EXPECT_STREQ(buffer.GetString(), R"({"flag":true,"count":-7,"child":{"module_name":"top"}})");
}

TEST(HCRapidJsonReadWriteUtilsTest, ParseErrorsNameTheProblemAndTheOffset) {
  struct {
    char const* text;
    char const* words;
    char const* offset;
  } const cases[] = {{"", "empty", "(at offset 0)"},
                     {"{} {}", "root", "(at offset 3)"},
                     {"{\"a\":tru}", "Invalid value", "(at offset 8)"}};
  for (auto const& c : cases) {
    rapidjson::Document doc;
    doc.Parse(c.text);
    std::string const msg = HCRapidJsonReadWriteUtils::GetErrorMsgFromDocument(doc);
    EXPECT_NE(msg.find(c.words), std::string::npos) << msg;
    EXPECT_NE(msg.find(c.offset), std::string::npos) << msg;
  }
  rapidjson::Document ok;
  ok.Parse("{}");
  EXPECT_EQ(HCRapidJsonReadWriteUtils::GetErrorMsgFromDocument(ok), "");
}

}  // namespace
