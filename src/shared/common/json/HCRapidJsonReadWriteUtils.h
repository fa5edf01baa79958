// HCRapidJsonReadWriteUtils.h: helpers to add members to RapidJSON objects and to word parse errors.
#pragma once

#include <rapidjson/document.h>

#include <string>

/// Small RapidJSON helpers. The Add... functions add one member to an object value; key and string
/// texts are copied into the allocator, values are moved.
class HCRapidJsonReadWriteUtils {
 public:
  using Allocator = rapidjson::Document::AllocatorType;

  static void AddStringProperty(rapidjson::Value& object, std::string const& key, std::string const& value,
                                Allocator& allocator);
  static void AddBooleanProperty(rapidjson::Value& object, std::string const& key, bool value,
                                 Allocator& allocator);
  static void AddIntegrProperty(rapidjson::Value& object, std::string const& key, int value,
                                Allocator& allocator);
  /// Moves `value` into the object; `value` is null afterwards.
  static void AddGenericValueProperty(rapidjson::Value& object, std::string const& key,
                                      rapidjson::Value& value, Allocator& allocator);
  /// The document's parse error in words with the byte offset where it was found, e.g.
  /// "Missing a closing quotation mark in string. (at offset 12)"; empty when the parse succeeded.
  static std::string GetErrorMsgFromDocument(rapidjson::Document const& document);
  /// The same words for the result of a parse that did not go through a document.
  static std::string GetErrorMsgFromParseResult(rapidjson::ParseResult const& result);
};
