// HCRapidJsonReadWriteUtils.cpp: RapidJSON member helpers and parse error texts.
#include "json/HCRapidJsonReadWriteUtils.h"

#include <rapidjson/error/en.h>

namespace {
rapidjson::Value copyKey(std::string const& key, HCRapidJsonReadWriteUtils::Allocator& allocator) {
  return rapidjson::Value(key.data(), static_cast<rapidjson::SizeType>(key.size()), allocator);
}
}  // namespace

void HCRapidJsonReadWriteUtils::AddStringProperty(rapidjson::Value& object, std::string const& key,
                                                  std::string const& value, Allocator& allocator) {
  rapidjson::Value v(value.data(), static_cast<rapidjson::SizeType>(value.size()), allocator);
  object.AddMember(copyKey(key, allocator), v, allocator);
}

void HCRapidJsonReadWriteUtils::AddBooleanProperty(rapidjson::Value& object, std::string const& key,
                                                   bool value, Allocator& allocator) {
  object.AddMember(copyKey(key, allocator), rapidjson::Value(value), allocator);
}

void HCRapidJsonReadWriteUtils::AddIntegrProperty(rapidjson::Value& object, std::string const& key, int value,
                                                  Allocator& allocator) {
  object.AddMember(copyKey(key, allocator), rapidjson::Value(value), allocator);
}

void HCRapidJsonReadWriteUtils::AddGenericValueProperty(rapidjson::Value& object, std::string const& key,
                                                        rapidjson::Value& value, Allocator& allocator) {
  object.AddMember(copyKey(key, allocator), value, allocator);
}

std::string HCRapidJsonReadWriteUtils::GetErrorMsgFromDocument(rapidjson::Document const& document) {
  return GetErrorMsgFromParseResult(
      rapidjson::ParseResult(document.GetParseError(), document.GetErrorOffset()));
}

std::string HCRapidJsonReadWriteUtils::GetErrorMsgFromParseResult(rapidjson::ParseResult const& result) {
  if (!result.IsError()) {
    return {};
  }
  return std::string(rapidjson::GetParseError_En(result.Code())) + " (at offset " +
         std::to_string(result.Offset()) + ")";
}
