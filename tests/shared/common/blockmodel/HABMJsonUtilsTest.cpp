// HABMJsonUtilsTest.cpp: tolerant typed reads of block model file members and their messages.
#include "blockmodel/HABMJsonUtils.h"

#include "msg/ComMsgMgr.h"

#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include <stdexcept>

namespace {

rapidjson::Document parse(char const* text) {
  rapidjson::Document doc;
  doc.Parse(text);
  EXPECT_FALSE(doc.HasParseError()) << text;
  return doc;
}

TEST(HABMJsonUtilsTest, BooleansReadFromBooleansAndIntegersButStringsAreFalse) {
  struct {
    char const* json;
    bool ok;
    bool value;
  } const cases[] = {
      {R"({"valid":true})", true, true},
      {R"({"valid":"true"})", true, false},
      {R"({"valid":0})", true, false},
      {R"({"valid":5000000000})", true, true},
      {R"({"valid":1.5})", false, true},
      {R"({"valid":null})", false, true},
      {R"({"valid":18446744073709551615})", false, true},
  };
  for (auto const& c : cases) {
    auto const doc = parse(c.json);
    bool value = true;  // the default, left alone on failure
    EXPECT_EQ(HABMJsonUtils::getJsonBoolean(doc, "valid", value, true), c.ok) << c.json;
    EXPECT_EQ(value, c.value) << c.json;
  }
}

TEST(HABMJsonUtilsTest, IntegersKeepTheirLow32BitsAndStringsReadTheirLeadingNumber) {
  struct {
    char const* json;
    bool ok;
    int value;
  } const cases[] = {
      {R"({"n":7})", true, 7},
      {R"({"n":"7"})", true, 7},
      {R"({"n":" -7x"})", true, -7},
      {R"({"n":true})", true, 1},
      {R"({"n":5000000000})", true, 705032704},
      {R"({"n":-1.0})", false, 99},
      {R"({"n":{}})", false, 99},
  };
  for (auto const& c : cases) {
    auto const doc = parse(c.json);
    int value = 99;
    EXPECT_EQ(HABMJsonUtils::getJsonInt(doc, "n", value, false), c.ok) << c.json;
    EXPECT_EQ(value, c.value) << c.json;
  }
  int value = 0;
  EXPECT_THROW(HABMJsonUtils::getJsonInt(parse(R"({"n":"x"})"), "n", value, false), std::invalid_argument);
  EXPECT_THROW(HABMJsonUtils::getJsonInt(parse(R"({"n":"9999999999"})"), "n", value, false),
               std::out_of_range);
}

TEST(HABMJsonUtilsTest, StringsReadFromScalarsAndJoinArraysOfPieces) {
  struct {
    char const* json;
    bool ok;
    char const* value;
  } const cases[] = {
      {R"({"value":"x"})", true, "x"},
      {R"({"value":12})", true, "12"},
      {R"({"value":-5000000000})", true, "-5000000000"},
      {R"({"value":true})", true, "true"},
      {R"({"value":["ab",1,"cd"]})", true, "abcd"},
      {R"({"value":[]})", true, ""},
      {R"({"value":1.5})", false, "default"},
      {R"({"other":"x"})", false, "default"},
  };
  for (auto const& c : cases) {
    auto const doc = parse(c.json);
    std::string value = "default";
    EXPECT_EQ(HABMJsonUtils::getJsonString(doc, "value", value, false), c.ok) << c.json;
    EXPECT_EQ(value, c.value) << c.json;
  }
}

TEST(HABMJsonUtilsTest, MissingAndMistypedMembersSendTheirMessages) {
  ComMsgCapture capture;
  std::string s;
  auto const doc = parse(R"({"a":null,"b":1.5,"dup":"first","dup":"second"})");
  EXPECT_FALSE(HABMJsonUtils::getJsonString(doc, "missing", s, false));  // optional: silent
  EXPECT_TRUE(capture.records().empty());
  EXPECT_EQ(HABMJsonUtils::getJsonValue(doc, "missing", true), nullptr);
  EXPECT_FALSE(HABMJsonUtils::getJsonString(doc, "a", s, true));  // present but null: a type error
  EXPECT_FALSE(HABMJsonUtils::getJsonString(doc, "b", s, false));
  ASSERT_EQ(capture.records().size(), 3U);
  EXPECT_EQ(capture.records()[0].format, "@90-9@%s");
  EXPECT_EQ(capture.records()[0].args, std::vector<std::string>{"missing"});
  EXPECT_EQ(capture.records()[1].format, "@90-8@%s%s");
  EXPECT_EQ(capture.records()[1].args, (std::vector<std::string>{"null", "a"}));
  EXPECT_EQ(capture.records()[2].args, (std::vector<std::string>{"number", "b"}));
  for (auto const& r : capture.records()) {
    EXPECT_EQ(r.mask, 0x20000000U);
    EXPECT_EQ(r.domain, "blockmodel");
  }
  ASSERT_TRUE(HABMJsonUtils::getJsonString(doc, "dup", s, true));
  EXPECT_EQ(s, "first");
  // A value that is not an object has no members.
  EXPECT_EQ(HABMJsonUtils::getJsonValue(parse("[1]"), "a", false), nullptr);
}

TEST(HABMJsonUtilsTest, KeyTextsAndSchema) {
  EXPECT_EQ(HABMJsonUtils::STR_MODULE_NAME(), "module_name");
  EXPECT_EQ(HABMJsonUtils::STR_TOP_BLOCK(), "top_block");
  EXPECT_EQ(HABMJsonUtils::STR_ADDRESS_BLOCK_REF(), "address_block_ref");
  EXPECT_EQ(HABMJsonUtils::SCHEMA_VENDOR() + ":" + HABMJsonUtils::SCHEMA_LIBRARY() + ":" +
                HABMJsonUtils::SCHEMA_NAME() + ":" + HABMJsonUtils::SCHEMA_VERSION(),
            "tessel:schema:block_model:1.0");
  EXPECT_EQ(HABMJsonUtils::decodeInt(-42), "-42");
  EXPECT_EQ(HABMJsonUtils::decodeInt64(INT64_MIN), "-9223372036854775808");
}

}  // namespace
