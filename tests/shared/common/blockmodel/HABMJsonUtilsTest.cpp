// HABMJsonUtilsTest.cpp: the typed reads of block model file members: what each JSON value converts to,
// and the messages of missing and mistyped members.
#include "blockmodel/HABMJsonUtils.h"

#include "msg/ComMsgMgr.h"

#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include <sstream>
#include <stdexcept>

namespace {

rapidjson::Document parse(std::string const& text) {
  rapidjson::Document doc;
  doc.Parse(text.c_str());
  EXPECT_FALSE(doc.HasParseError()) << text;
  return doc;
}

// What one getter makes of member "m" of `doc`: the value read, as text; "-" when the getter refused, which
// leaves the default alone; or the exception it threw.
template <class T, class Get>
std::string attempt(rapidjson::Document const& doc, T value, Get get) {
  T const fallback = value;
  try {
    if (!get(doc, "m", value, false)) {
      EXPECT_EQ(value, fallback);
      return "-";
    }
  } catch (std::invalid_argument const&) {
    return "invalid";
  } catch (std::out_of_range const&) {
    return "out of range";
  }
  std::ostringstream text;
  text << std::boolalpha << value;
  return text.str();
}

TEST(HABMJsonUtilsTest, EachGetterConvertsWhatItCanAndMissingAndMistypedMembersSendTheirMessages) {
  // The JSON text of member "m" (null for no member), then what each getter makes of it.
  char const* const cases[][4] = {
      {"true", "true", "1", "true"},
      {"0", "false", "0", "0"},
      {"5000000000", "true", "705032704", "5000000000"},  // an int keeps the low 32 bits
      {"-5000000000", "true", "-705032704", "-5000000000"},
      {"18446744073709551615", "-", "-", "-"},
      {"1.5", "-", "-", "-"},
      {"null", "-", "-", "-"},
      {R"("true")", "false", "invalid", "true"},  // a string never reads as true
      {R"(" -7x")", "false", "-7", " -7x"},       // an int reads the leading number
      {R"("9999999999")", "false", "out of range", "9999999999"},
      {R"(["ab",1,"cd"])", "-", "-", "abcd"},  // a string joins the pieces of an array
      {nullptr, "-", "-", "-"},
  };
  for (auto const& [member, asBoolean, asInt, asString] : cases) {
    std::string const text = member == nullptr ? "{}" : std::string(R"({"m":)") + member + "}";
    SCOPED_TRACE(text);
    auto const doc = parse(text);
    EXPECT_STREQ(attempt(doc, true, HABMJsonUtils::getJsonBoolean).c_str(), asBoolean);
    EXPECT_STREQ(attempt(doc, 99, HABMJsonUtils::getJsonInt).c_str(), asInt);
    EXPECT_STREQ(attempt(doc, std::string("default"), HABMJsonUtils::getJsonString).c_str(), asString);
  }
  // Missing and mistyped members send their messages, and the first of twins counts.
  auto const doc = parse(R"({"a":null,"b":1.5,"twin":"first","twin":"second"})");
  std::string text;
  int number = 0;
  ComMsgCapture capture;
  EXPECT_FALSE(HABMJsonUtils::getJsonString(doc, "missing", text, false));  // optional: silent
  EXPECT_FALSE(HABMJsonUtils::getJsonString(doc, "missing", text, true));
  EXPECT_FALSE(HABMJsonUtils::getJsonString(doc, "a", text, false));  // present but null: a type error
  EXPECT_FALSE(HABMJsonUtils::getJsonInt(doc, "b", number, false));
  std::vector<std::vector<std::string>> sent;
  for (auto const& r : capture.records()) {
    EXPECT_EQ(r.mask, 0x20000000U);
    EXPECT_EQ(r.domain, "blockmodel");
    sent.push_back(r.args);
    sent.back().insert(sent.back().begin(), r.format);
  }
  EXPECT_EQ(sent, (std::vector<std::vector<std::string>>{
                      {"@90-9@%s", "missing"}, {"@90-8@%s%s", "null", "a"}, {"@90-8@%s%s", "number", "b"}}));
  ASSERT_TRUE(HABMJsonUtils::getJsonString(doc, "twin", text, true));
  EXPECT_EQ(text, "first");
}

}  // namespace
