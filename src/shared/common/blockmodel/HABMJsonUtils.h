// HABMJsonUtils.h: the key vocabulary of block model files and the typed reads of their members.
#pragma once

#include "json/HCRapidJsonFwd.h"

#include <cstdint>
#include <string>

/// Keys of the block model file and the conversions of one JSON member into a model value. The typed
/// getters take the field's default in their result argument and leave it untouched when the member is
/// absent or of a type that cannot be converted.
class HABMJsonUtils {
 public:
  HABMJsonUtils() = delete;

  // One function per key of the file, each returning the key's text ("module_name" for
  // STR_MODULE_NAME). The reader looks for no other key and the writer writes no other.
  static std::string const& STR_ACCESS();
  static std::string const& STR_ADDRESS_APERTURES();
  static std::string const& STR_ADDRESS_ASSIGNMENTS();
  static std::string const& STR_ADDRESS_BLOCKS();
  static std::string const& STR_ADDRESS_BLOCK_REF();
  static std::string const& STR_ADDRESS_REMAPS();
  static std::string const& STR_ADDRESS_SEGMENTS();
  static std::string const& STR_ADDRESS_SPACES();
  static std::string const& STR_ADDRESS_SPACE_REF();
  static std::string const& STR_ATTRIBUTES();
  static std::string const& STR_BASE_ADDRESS();
  static std::string const& STR_BOUNDARY();
  static std::string const& STR_BRIDGES();
  static std::string const& STR_CATEGORY();
  static std::string const& STR_CONFIGURATION();
  static std::string const& STR_CONTENTS();
  static std::string const& STR_DESCRIPTION();
  static std::string const& STR_DEST_ID();
  static std::string const& STR_DIRECTION();
  static std::string const& STR_EDITABLE();
  static std::string const& STR_ENABLEMENT();
  static std::string const& STR_FIELDS();
  static std::string const& STR_GENERICS();
  static std::string const& STR_INSTANCE_NAME();
  static std::string const& STR_INTERFACES();
  static std::string const& STR_INTERFACE_CONNECTIONS();
  static std::string const& STR_LOCATION();
  static std::string const& STR_LOCK();
  static std::string const& STR_LOGICAL_LEFT();
  static std::string const& STR_LOGICAL_PORT();
  static std::string const& STR_LOGICAL_RIGHT();
  static std::string const& STR_MASK();
  static std::string const& STR_MEMORY_MAPS();
  static std::string const& STR_MEMORY_MAP_REF();
  static std::string const& STR_MODE();
  static std::string const& STR_MODULE_NAME();
  static std::string const& STR_NOC_CONNECTIONS();
  static std::string const& STR_NOC_INTERFACES();
  static std::string const& STR_OFFSET();
  static std::string const& STR_PARAMETERS();
  static std::string const& STR_PHYSICAL_LEFT();
  static std::string const& STR_PHYSICAL_PORT();
  static std::string const& STR_PHYSICAL_RIGHT();
  static std::string const& STR_PORTS();
  static std::string const& STR_PORT_CONNECTIONS();
  static std::string const& STR_PORT_MAPS();
  static std::string const& STR_PROTOCOL();
  static std::string const& STR_RANGE();
  static std::string const& STR_REGISTERS();
  static std::string const& STR_RESET();
  static std::string const& STR_SCHEMA();
  static std::string const& STR_SIZE_LEFT();
  static std::string const& STR_SIZE_RIGHT();
  static std::string const& STR_SOURCE();
  static std::string const& STR_SUB_BLOCKS();
  static std::string const& STR_TARGET();
  static std::string const& STR_TARGETS();
  static std::string const& STR_TDEST_ID();
  static std::string const& STR_TOP_BLOCK();
  static std::string const& STR_TRANSPARENT();
  static std::string const& STR_TYPE();
  static std::string const& STR_USAGE();
  static std::string const& STR_VALID();
  static std::string const& STR_VALUE();
  static std::string const& STR_VLNV();
  static std::string const& STR_WIDTH();

  // The parts of the schema text "tessel:schema:block_model:1.0", written at the root of every file.
  static std::string const& SCHEMA_VENDOR();
  static std::string const& SCHEMA_LIBRARY();
  static std::string const& SCHEMA_NAME();
  static std::string const& SCHEMA_VERSION();

  /// The value of the first member named `key`, or null when there is none (then "@90-9@" is sent if
  /// `required`). A value that is not an object has no members.
  static rapidjson::Value const* getJsonValue(rapidjson::Value const& object, std::string const& key,
                                              bool const& required);
  /// Reads a boolean: JSON true/false, or an integer (non-zero is true). A string always reads as false.
  /// False when the member is absent or its type cannot be converted ("@90-8@" is sent for the latter).
  static bool getJsonBoolean(rapidjson::Value const& object, std::string const& key, bool& result,
                             bool const& required);
  /// Reads an int: an integer (a 64-bit one keeps its low 32 bits), a boolean as 1 or 0, or a string
  /// through encodeInt, whose exceptions pass through. False when absent or not convertible.
  static bool getJsonInt(rapidjson::Value const& object, std::string const& key, int& result,
                         bool const& required);
  /// Reads a text: a string, a boolean as "true"/"false", an integer in decimal, or an array whose string
  /// elements are joined. False when absent or not convertible.
  static bool getJsonString(rapidjson::Value const& object, std::string const& key, std::string& result,
                            bool const& required);
  /// The name of a JSON type (a rapidjson::Type) in type errors: "null", "boolean", "object", "array",
  /// "string", "number".
  static std::string getJsonTypeStr(int const& type);
  /// Decimal text of a 32-bit number.
  static std::string decodeInt(int const& value);
  /// Decimal text of a 64-bit number.
  static std::string decodeInt64(std::int64_t const& value);
  /// The number at the start of a decimal text (leading blanks and a sign allowed, trailing text
  /// ignored). Throws std::invalid_argument without digits and std::out_of_range beyond 32 bits.
  static int encodeInt(std::string const& text);
};
