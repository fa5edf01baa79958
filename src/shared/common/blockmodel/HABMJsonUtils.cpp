// HABMJsonUtils.cpp: key texts and tolerant typed reads of block model file members.
#include "blockmodel/HABMJsonUtils.h"

#include "msg/ComMsgMgr.h"

#include <rapidjson/document.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <stdexcept>

#define HABM_JSON_KEY(NAME, TEXT)            \
  std::string const& HABMJsonUtils::NAME() { \
    static std::string const text(TEXT);     \
    return text;                             \
  }
HABM_JSON_KEY(STR_ACCESS, "access")
HABM_JSON_KEY(STR_ADDRESS_APERTURES, "address_apertures")
HABM_JSON_KEY(STR_ADDRESS_ASSIGNMENTS, "address_assignments")
HABM_JSON_KEY(STR_ADDRESS_BLOCKS, "address_blocks")
HABM_JSON_KEY(STR_ADDRESS_BLOCK_REF, "address_block_ref")
HABM_JSON_KEY(STR_ADDRESS_REMAPS, "address_remaps")
HABM_JSON_KEY(STR_ADDRESS_SEGMENTS, "address_segments")
HABM_JSON_KEY(STR_ADDRESS_SPACES, "address_spaces")
HABM_JSON_KEY(STR_ADDRESS_SPACE_REF, "address_space_ref")
HABM_JSON_KEY(STR_ATTRIBUTES, "attributes")
HABM_JSON_KEY(STR_BASE_ADDRESS, "base_address")
HABM_JSON_KEY(STR_BOUNDARY, "boundary")
HABM_JSON_KEY(STR_BRIDGES, "bridges")
HABM_JSON_KEY(STR_CATEGORY, "category")
HABM_JSON_KEY(STR_CONFIGURATION, "configuration")
HABM_JSON_KEY(STR_CONTENTS, "contents")
HABM_JSON_KEY(STR_DESCRIPTION, "description")
HABM_JSON_KEY(STR_DEST_ID, "dest_id")
HABM_JSON_KEY(STR_DIRECTION, "direction")
HABM_JSON_KEY(STR_EDITABLE, "editable")
HABM_JSON_KEY(STR_ENABLEMENT, "enablement")
HABM_JSON_KEY(STR_FIELDS, "fields")
HABM_JSON_KEY(STR_GENERICS, "generics")
HABM_JSON_KEY(STR_INSTANCE_NAME, "instance_name")
HABM_JSON_KEY(STR_INTERFACES, "interfaces")
HABM_JSON_KEY(STR_INTERFACE_CONNECTIONS, "interface_connections")
HABM_JSON_KEY(STR_LOCATION, "location")
HABM_JSON_KEY(STR_LOCK, "lock")
HABM_JSON_KEY(STR_LOGICAL_LEFT, "logical_left")
HABM_JSON_KEY(STR_LOGICAL_PORT, "logical_port")
HABM_JSON_KEY(STR_LOGICAL_RIGHT, "logical_right")
HABM_JSON_KEY(STR_MASK, "mask")
HABM_JSON_KEY(STR_MEMORY_MAPS, "memory_maps")
HABM_JSON_KEY(STR_MEMORY_MAP_REF, "memory_map_ref")
HABM_JSON_KEY(STR_MODE, "mode")
HABM_JSON_KEY(STR_MODULE_NAME, "module_name")
HABM_JSON_KEY(STR_NOC_CONNECTIONS, "noc_connections")
HABM_JSON_KEY(STR_NOC_INTERFACES, "noc_interfaces")
HABM_JSON_KEY(STR_OFFSET, "offset")
HABM_JSON_KEY(STR_PARAMETERS, "parameters")
HABM_JSON_KEY(STR_PHYSICAL_LEFT, "physical_left")
HABM_JSON_KEY(STR_PHYSICAL_PORT, "physical_port")
HABM_JSON_KEY(STR_PHYSICAL_RIGHT, "physical_right")
HABM_JSON_KEY(STR_PORTS, "ports")
HABM_JSON_KEY(STR_PORT_CONNECTIONS, "port_connections")
HABM_JSON_KEY(STR_PORT_MAPS, "port_maps")
HABM_JSON_KEY(STR_PROTOCOL, "protocol")
HABM_JSON_KEY(STR_RANGE, "range")
HABM_JSON_KEY(STR_REGISTERS, "registers")
HABM_JSON_KEY(STR_RESET, "reset")
HABM_JSON_KEY(STR_SCHEMA, "schema")
HABM_JSON_KEY(STR_SIZE_LEFT, "size_left")
HABM_JSON_KEY(STR_SIZE_RIGHT, "size_right")
HABM_JSON_KEY(STR_SOURCE, "source")
HABM_JSON_KEY(STR_SUB_BLOCKS, "sub_blocks")
HABM_JSON_KEY(STR_TARGET, "target")
HABM_JSON_KEY(STR_TARGETS, "targets")
HABM_JSON_KEY(STR_TDEST_ID, "tdest_id")
HABM_JSON_KEY(STR_TOP_BLOCK, "top_block")
HABM_JSON_KEY(STR_TRANSPARENT, "transparent")
HABM_JSON_KEY(STR_TYPE, "type")
HABM_JSON_KEY(STR_USAGE, "usage")
HABM_JSON_KEY(STR_VALID, "valid")
HABM_JSON_KEY(STR_VALUE, "value")
HABM_JSON_KEY(STR_VLNV, "vlnv")
HABM_JSON_KEY(STR_WIDTH, "width")
HABM_JSON_KEY(SCHEMA_VENDOR, "tessel")
HABM_JSON_KEY(SCHEMA_LIBRARY, "schema")
HABM_JSON_KEY(SCHEMA_NAME, "block_model")
HABM_JSON_KEY(SCHEMA_VERSION, "1.0")
#undef HABM_JSON_KEY

namespace {

constexpr unsigned int kFileProblem = 0x20000000U;

void typeError(rapidjson::Value const& value, std::string const& key) {
  std::string const type = HABMJsonUtils::getJsonTypeStr(value.GetType());
  sendMsg::eval(2, __FILE__, __LINE__, "blockmodel", kFileProblem, "@90-8@%s%s", type.c_str(), key.c_str());
}

}  // namespace

rapidjson::Value const* HABMJsonUtils::getJsonValue(rapidjson::Value const& object, std::string const& key,
                                                    bool const& required) {
  if (object.IsObject()) {
    // Called for every field of every object read: a plain byte comparison of equal lengths.
    auto const keyLength = static_cast<rapidjson::SizeType>(key.size());
    for (auto it = object.MemberBegin(); it != object.MemberEnd(); ++it) {
      auto const& name = it->name;
      if (name.GetStringLength() == keyLength &&
          (keyLength == 0 ||
           (name.GetString()[0] == key[0] && std::memcmp(name.GetString(), key.data(), keyLength) == 0))) {
        return &it->value;
      }
    }
  }
  if (required) {
    sendMsg::eval(1, __FILE__, __LINE__, "blockmodel", kFileProblem, "@90-9@%s", key.c_str());
  }
  return nullptr;
}

bool HABMJsonUtils::getJsonBoolean(rapidjson::Value const& object, std::string const& key, bool& result,
                                   bool const& required) {
  rapidjson::Value const* v = getJsonValue(object, key, required);
  if (v == nullptr) {
    return false;
  }
  if (v->IsBool()) {
    result = v->GetBool();
  } else if (v->IsString()) {
    // Strings never read as true: files written here hold JSON booleans, and a hand-made "true" has
    // always read as false. Kept so that existing files keep their meaning.
    result = false;
  } else if (v->IsInt()) {
    result = v->GetInt() != 0;
  } else if (v->IsInt64()) {
    result = v->GetInt64() != 0;
  } else {
    typeError(*v, key);
    return false;
  }
  return true;
}

bool HABMJsonUtils::getJsonInt(rapidjson::Value const& object, std::string const& key, int& result,
                               bool const& required) {
  rapidjson::Value const* v = getJsonValue(object, key, required);
  if (v == nullptr) {
    return false;
  }
  if (v->IsString()) {
    result = encodeInt(std::string(v->GetString(), v->GetStringLength()));
  } else if (v->IsBool()) {
    result = v->GetBool() ? 1 : 0;
  } else if (v->IsInt()) {
    result = v->GetInt();
  } else if (v->IsInt64()) {
    // The low 32 bits, as two's complement.
    result = static_cast<int>(static_cast<std::uint32_t>(static_cast<std::uint64_t>(v->GetInt64())));
  } else {
    typeError(*v, key);
    return false;
  }
  return true;
}

bool HABMJsonUtils::getJsonString(rapidjson::Value const& object, std::string const& key, std::string& result,
                                  bool const& required) {
  rapidjson::Value const* v = getJsonValue(object, key, required);
  if (v == nullptr) {
    return false;
  }
  if (v->IsString()) {
    result.assign(v->GetString(), v->GetStringLength());
  } else if (v->IsBool()) {
    result = v->GetBool() ? "true" : "false";
  } else if (v->IsInt()) {
    result = decodeInt(v->GetInt());
  } else if (v->IsInt64()) {
    result = decodeInt64(v->GetInt64());
  } else if (v->IsArray()) {
    // A long text may be stored as an array of pieces.
    result.clear();
    for (auto const& piece : v->GetArray()) {
      if (piece.IsString()) {
        result.append(piece.GetString(), piece.GetStringLength());
      }
    }
  } else {
    typeError(*v, key);
    return false;
  }
  return true;
}

std::string HABMJsonUtils::getJsonTypeStr(int const& type) {
  switch (static_cast<rapidjson::Type>(type)) {
    case rapidjson::kNullType:
      return "null";
    case rapidjson::kFalseType:
    case rapidjson::kTrueType:
      return "boolean";
    case rapidjson::kObjectType:
      return "object";
    case rapidjson::kArrayType:
      return "array";
    case rapidjson::kStringType:
      return "string";
    case rapidjson::kNumberType:
      return "number";
  }
  return "null";
}

std::string HABMJsonUtils::decodeInt(int const& value) {
  return std::to_string(value);
}

std::string HABMJsonUtils::decodeInt64(std::int64_t const& value) {
  return std::to_string(value);
}

int HABMJsonUtils::encodeInt(std::string const& text) {
  char const* begin = text.c_str();
  char* end = nullptr;
  errno = 0;
  long const value = std::strtol(begin, &end, 10);
  if (end == begin) {
    throw std::invalid_argument("invalid stoi argument");
  }
  if (errno == ERANGE || value < std::numeric_limits<int>::min() || value > std::numeric_limits<int>::max()) {
    throw std::out_of_range("stoi argument out of range");
  }
  return static_cast<int>(value);
}
