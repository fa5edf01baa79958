// HABMJsonReader.cpp: the document frame, the collection scheme and one unmarshal per kind of object.
#include "blockmodel/HABMJsonReader.h"

#include "blockmodel/HABMAddrAperture.h"
#include "blockmodel/HABMAddrAssign.h"
#include "blockmodel/HABMAddrBlock.h"
#include "blockmodel/HABMAddrRemap.h"
#include "blockmodel/HABMAddrSegment.h"
#include "blockmodel/HABMAddrSpace.h"
#include "blockmodel/HABMAttribute.h"
#include "blockmodel/HABMBlock.h"
#include "blockmodel/HABMBridge.h"
#include "blockmodel/HABMGeneric.h"
#include "blockmodel/HABMInterface.h"
#include "blockmodel/HABMInterfaceConnection.h"
#include "blockmodel/HABMJsonUtils.h"
#include "blockmodel/HABMMemoryMap.h"
#include "blockmodel/HABMParameter.h"
#include "blockmodel/HABMPort.h"
#include "blockmodel/HABMPortConnection.h"
#include "blockmodel/HABMPortMap.h"
#include "blockmodel/HABMRegister.h"
#include "blockmodel/HABMRegisterField.h"
#include "blockmodel/detail/HABMFileWrite.h"
#include "blockmodel/detail/HABMJsonValue.h"
#include "blockmodel/detail/HABMKinds.h"
#include "isl/iostreams/filtering_stream.h"
#include "json/HCRapidJsonReadWriteUtils.h"
#include "msg/ComMsgMgr.h"

#include <rapidjson/document.h>
#include <rapidjson/reader.h>

#include <algorithm>
#include <cstdint>
#include <istream>
#include <vector>

namespace {

using Keys = HABMJsonUtils;
constexpr unsigned int kFileProblem = 0x20000000U;

// Builds the document from the parser's events and refuses nesting beyond a bound, so that neither the
// document nor the reader's walk over it can exhaust the stack.
class DepthLimitedHandler {
 public:
  explicit DepthLimitedHandler(rapidjson::Document& document) : document_(document) {}

  bool Null() { return document_.Null(); }
  bool Bool(bool b) { return document_.Bool(b); }
  bool Int(int i) { return document_.Int(i); }
  bool Uint(unsigned u) { return document_.Uint(u); }
  bool Int64(int64_t i) { return document_.Int64(i); }
  bool Uint64(uint64_t u) { return document_.Uint64(u); }
  bool Double(double d) { return document_.Double(d); }
  bool RawNumber(char const* s, rapidjson::SizeType n, bool copy) { return document_.RawNumber(s, n, copy); }
  bool String(char const* s, rapidjson::SizeType n, bool copy) { return document_.String(s, n, copy); }
  bool Key(char const* s, rapidjson::SizeType n, bool copy) { return document_.Key(s, n, copy); }
  bool StartObject() { return enter() && document_.StartObject(); }
  bool EndObject(rapidjson::SizeType members) {
    --depth_;
    return document_.EndObject(members);
  }
  bool StartArray() { return enter() && document_.StartArray(); }
  bool EndArray(rapidjson::SizeType elements) {
    --depth_;
    return document_.EndArray(elements);
  }

  bool tooDeep() const { return tooDeep_; }

 private:
  bool enter() {
    tooDeep_ = ++depth_ > HABMJsonReader::MAX_NESTING;
    return !tooDeep_;
  }

  rapidjson::Document& document_;
  unsigned depth_ = 0;
  bool tooDeep_ = false;
};

template <class T>
bool unmarshalValueObject(rapidjson::Value const& object, T& item) {
  std::string value;
  if (!Keys::getJsonString(object, Keys::STR_VALUE(), value, true)) {
    return false;
  }
  item.setValue(value);
  return true;
}

// Reads an address text: a required one that is absent gives false; an optional one reads as `fallback`.
bool readAddress(rapidjson::Value const& object, std::string const& key, char const* fallback, bool required,
                 HABMAddrValue& out) {
  std::string text = fallback;
  if (!Keys::getJsonString(object, key, text, required) && required) {
    return false;
  }
  out = HABMAddrValue(text);
  return true;
}

// Reads a text, with the same rule for absence as readAddress.
bool readText(rapidjson::Value const& object, std::string const& key, char const* fallback, bool required,
              std::string& out) {
  out = fallback;
  return Keys::getJsonString(object, key, out, required) || !required;
}

// Reads a required bit count or offset; the file holds it as an int.
bool readCount(rapidjson::Value const& object, std::string const& key, unsigned int& out) {
  int value = 0;
  if (!Keys::getJsonInt(object, key, value, true)) {
    return false;
  }
  out = static_cast<unsigned int>(value);
  return true;
}

// Parses the whole stream into `document`, whose strings then point into `text`; "@90-2@" says why when
// it cannot.
bool parseDocument(std::istream& in, std::string const& path, std::string& text,
                   rapidjson::Document& document) {
  // The whole text is read first and parsed in place: parsing from memory is several times faster than
  // through the character-wise stream adapter, and in place the strings are neither copied nor allocated.
  text.reserve(habm_detail::expectedTextSize(path) + 1);
  constexpr std::size_t kChunk = 1 << 16;
  for (;;) {
    std::size_t const filled = text.size();
    text.resize(filled + std::max(kChunk, text.capacity() - filled));
    in.read(text.data() + filled, static_cast<std::streamsize>(text.size() - filled));
    text.resize(filled + static_cast<std::size_t>(in.gcount()));
    if (!in) {
      break;
    }
  }
  // A stream that broke off (a gzip file cut short or damaged) would otherwise read as whatever text came
  // before the break, often none at all.
  if (in.bad()) {
    sendMsg::eval(1, __FILE__, __LINE__, "blockmodel", kFileProblem, "@90-2@%s",
                  "The file's compressed stream is damaged or cut short.");
    return false;
  }
  rapidjson::ParseResult parsed;
  DepthLimitedHandler handler(document);
  auto generate = [&](rapidjson::Document&) {
    // The text ends in the string's terminator, where the parse stops as it would at the end of memory.
    rapidjson::InsituStringStream stream(text.data());
    rapidjson::Reader reader;
    parsed = reader.Parse<rapidjson::kParseIterativeFlag | rapidjson::kParseInsituFlag>(stream, handler);
    return !parsed.IsError();
  };
  document.Populate(generate);
  if (parsed.IsError()) {
    std::string const why =
        handler.tooDeep() ? "The document nests deeper than " + std::to_string(HABMJsonReader::MAX_NESTING) +
                                " levels. (at offset " + std::to_string(parsed.Offset()) + ")"
                          : HCRapidJsonReadWriteUtils::GetErrorMsgFromParseResult(parsed);
    sendMsg::eval(1, __FILE__, __LINE__, "blockmodel", kFileProblem, "@90-2@%s", why.c_str());
    return false;
  }
  return true;
}

}  // namespace

using habm_detail::ChildKind;
using habm_detail::Kind;

bool HABMJsonReader::readBlock(HUTFile const& file, HABMBlock& block, Mode const& mode) {
  std::string path = file.getPath();
  bool result = false;
  try {
    path = habm_detail::fullPathOf(file);
    isl::iostreams::filtering_stream<isl::iostreams::input> in(path, std::ios_base::binary);
    if (in.good()) {
      result = HABMJsonReader(file, mode).unmarshal(in, block);
    }
  } catch (...) {
    result = false;
  }
  if (!result) {
    reportFailedRead(path);
  }
  return result;
}

void HABMJsonReader::reportFailedRead(std::string const& path) noexcept {
  try {
    sendMsg::eval(1, __FILE__, __LINE__, "blockmodel", kFileProblem, "@90-4@%s", path.c_str());
  } catch (...) {
    // Out of memory even for the message: the caller still learns of the failure by the result.
  }
}

bool HABMJsonReader::unmarshal(std::istream& in, HABMBlock& block) const {
  std::string text;
  rapidjson::Document document;
  if (!parseDocument(in, file_.getPath(), text, document)) {
    return false;
  }
  rapidjson::Value const* top = Keys::getJsonValue(document, Keys::STR_TOP_BLOCK(), true);
  return top != nullptr && unmarshal(Value(*top), block);
}

template <class K>
bool HABMJsonReader::unmarshalCollection(Value const* group, typename K::Owner& owner) const {
  if (group == nullptr) {
    return true;
  }
  if (replacing()) {
    K::list(owner).clear();
  }
  rapidjson::Value const* collection = Keys::getJsonValue(group->json, K::key(), false);
  // A collection that is not an object has no members to read.
  if (collection == nullptr || !collection->IsObject()) {
    return true;
  }
  auto const create = habm_detail::collectionCreator<K>(owner, 0);
  bool result = true;
  for (auto const& member : collection->GetObject()) {
    auto* child = create(std::string(member.name.GetString(), member.name.GetStringLength()));
    result = child != nullptr && unmarshal(Value(member.value), *child) && result;
  }
  return result;
}

template <class T, class Store>
bool HABMJsonReader::unmarshalSet(Value const& object, std::string const& key, std::set<T> const& current,
                                  Store&& store) const {
  std::set<T> items;
  if (!replacing()) {
    items = current;
  }
  bool result = true;
  rapidjson::Value const* array = Keys::getJsonValue(object.json, key, false);
  // Anything but an array holds no elements to read.
  if (array != nullptr && array->IsArray()) {
    for (auto const& element : array->GetArray()) {
      T item;
      if (!unmarshal(Value(element), item)) {
        result = false;
        break;
      }
      items.insert(item);
    }
  }
  store(items);
  return result;
}

namespace {

rapidjson::Value const* groupOf(rapidjson::Value const& json, habm_detail::Group group) {
  switch (group) {
    case habm_detail::Group::CONFIGURATION:
      return Keys::getJsonValue(json, Keys::STR_CONFIGURATION(), false);
    case habm_detail::Group::BOUNDARY:
      return Keys::getJsonValue(json, Keys::STR_BOUNDARY(), false);
    case habm_detail::Group::CONTENTS:
      return Keys::getJsonValue(json, Keys::STR_CONTENTS(), false);
    case habm_detail::Group::NONE:
      break;
  }
  return nullptr;
}

}  // namespace

template <class Kinds>
bool HABMJsonReader::readCollections(Value const& object, HABMBlock& block, Kinds kinds) const {
  // Each collection stops the block's read when it failed; inside one, every member is still read.
  return habm_detail::forEachKindWhile(kinds, [&](auto kind) {
    using K = decltype(kind);
    rapidjson::Value const* group = groupOf(object.json, K::GROUP);
    if (group == nullptr) {
      return unmarshalCollection<K>(nullptr, block);
    }
    Value const wrapped(*group);
    return unmarshalCollection<K>(&wrapped, block);
  });
}

bool HABMJsonReader::readHead(Value const& object, HABMBlock& block) const {
  rapidjson::Value const& json = object.json;
  std::string text;
  if (!Keys::getJsonString(json, Keys::STR_MODULE_NAME(), text, true)) {
    return false;
  }
  block.setModuleName(text);
  text.clear();
  Keys::getJsonString(json, Keys::STR_VLNV(), text, false);
  block.setModuleVlnv(text);
  text.clear();
  Keys::getJsonString(json, Keys::STR_ENABLEMENT(), text, false);
  block.setEnablement(text);
  text = "0x0";
  Keys::getJsonString(json, Keys::STR_BASE_ADDRESS(), text, false);
  block.setBaseAddress(HABMAddrValue(text));
  bool flag = false;
  Keys::getJsonBoolean(json, Keys::STR_VALID(), flag, false);
  block.setValidated(flag);
  text.clear();
  Keys::getJsonString(json, Keys::STR_LOCK(), text, false);
  block.setLocked(HABMBlock::encodeLockState(text));
  flag = true;
  Keys::getJsonBoolean(json, Keys::STR_TRANSPARENT(), flag, false);
  block.setTransparent(flag);
  return readCollections(object, block, habm_detail::ReadBeforeSubBlocks{});
}

bool HABMJsonReader::readTail(Value const& object, HABMBlock& block) const {
  return readCollections(object, block, habm_detail::ReadAfterSubBlocks{});
}

void HABMJsonReader::enterSubBlocks(HABMBlock& block) const {
  if (replacing()) {
    Kind<ChildKind::SUB_BLOCK>::list(block).clear();
  }
}

bool HABMJsonReader::unmarshal(Value const& object, HABMBlock& top) const {
  // A block's sub-blocks are read, whole, between its other collections; the tree is walked on a stack of
  // our own, so that a deep file does not exhaust the thread's.
  // The sub-blocks' collection; null when the contents are absent, or when the collection is not an object
  // and so has no members.
  auto const subBlocksOf = [&](HABMBlock& block, rapidjson::Value const& json) -> rapidjson::Value const* {
    rapidjson::Value const* contents = groupOf(json, habm_detail::Group::CONTENTS);
    if (contents == nullptr) {
      return nullptr;
    }
    enterSubBlocks(block);
    rapidjson::Value const* collection =
        Keys::getJsonValue(*contents, Kind<ChildKind::SUB_BLOCK>::key(), false);
    return collection != nullptr && collection->IsObject() ? collection : nullptr;
  };

  struct Frame {
    HABMBlock* block;
    rapidjson::Value const* json;
    rapidjson::Value const* subBlocks;
    rapidjson::SizeType next;
    bool result;  // of the sub-blocks read so far
  };
  std::vector<Frame> stack;
  // Starts a block's read; false, pushing nothing, when the read stopped before its sub-blocks.
  auto const enter = [&](HABMBlock& block, rapidjson::Value const& json) {
    if (!readHead(Value(json), block)) {
      return false;
    }
    stack.push_back({&block, &json, subBlocksOf(block, json), 0, true});
    return true;
  };
  if (!enter(top, object.json)) {
    return false;
  }
  bool finished = false;
  while (!stack.empty()) {
    Frame& frame = stack.back();
    if (frame.subBlocks != nullptr && frame.next < frame.subBlocks->MemberCount()) {
      auto const& member = frame.subBlocks->MemberBegin()[frame.next++];
      HABMBlock* sub = Kind<ChildKind::SUB_BLOCK>::createFromFile(
          *frame.block, std::string(member.name.GetString(), member.name.GetStringLength()));
      if (sub == nullptr || !enter(*sub, member.value)) {
        frame.result = false;  // nothing was pushed: the frame is still the one read
      }
      continue;
    }
    bool const done = frame.result && readTail(Value(*frame.json), *frame.block);
    stack.pop_back();
    if (stack.empty()) {
      finished = done;
    } else {
      stack.back().result = stack.back().result && done;
    }
  }
  return finished;
}

bool HABMJsonReader::unmarshal(Value const& object, HABMAttribute& attribute) const {
  return unmarshalValueObject(object.json, attribute);
}

bool HABMJsonReader::unmarshal(Value const& object, HABMGeneric& generic) const {
  return unmarshalValueObject(object.json, generic);
}

bool HABMJsonReader::unmarshal(Value const& object, HABMParameter& parameter) const {
  return unmarshalValueObject(object.json, parameter);
}

bool HABMJsonReader::unmarshal(Value const& object, HABMPort& port) const {
  // The type first: a wire resets the bounds, which come after it. A read that stops at a missing field
  // keeps the fields before it.
  std::string text;
  if (!Keys::getJsonString(object.json, Keys::STR_TYPE(), text, true)) {
    return false;
  }
  port.setPortType(HABMPort::encodePortType(text));
  text.clear();
  if (!Keys::getJsonString(object.json, Keys::STR_DIRECTION(), text, true)) {
    return false;
  }
  port.setPortDirection(HABMPort::encodePortDirection(text));
  int left = 0;
  Keys::getJsonInt(object.json, Keys::STR_SIZE_LEFT(), left, false);
  port.setPortLeft(static_cast<std::uint32_t>(left));
  int right = 0;
  Keys::getJsonInt(object.json, Keys::STR_SIZE_RIGHT(), right, false);
  port.setPortRight(static_cast<std::uint32_t>(right));
  return unmarshalCollection<Kind<ChildKind::PORT_ATTRIBUTE>>(&object, port);
}

bool HABMJsonReader::unmarshal(Value const& object, HABMPortConnection& connection) const {
  std::string text = "soft";
  Keys::getJsonString(object.json, Keys::STR_TYPE(), text, false);
  connection.setConnectionType(HABMPortConnection::encodeConnectionType(text));
  text.clear();
  Keys::getJsonString(object.json, Keys::STR_SOURCE(), text, false);
  connection.setSourcePath(text);  // a source outside the block only leaves the net dangling
  if (replacing()) {
    connection.clearTargetPaths();
  }
  rapidjson::Value const* targets = Keys::getJsonValue(object.json, Keys::STR_TARGETS(), false);
  // Anything but an array holds no targets to read, as for the other arrays of the file.
  if (targets == nullptr || !targets->IsArray()) {
    return true;
  }
  bool result = true;
  for (auto const& target : targets->GetArray()) {
    result = target.IsString() &&
             connection.insertTargetPath(std::string(target.GetString(), target.GetStringLength())) && result;
  }
  return result;
}

// Address objects. A required field that is missing stops the object's read there, with the fields before
// it set; an optional one that is missing sets its default.

bool HABMJsonReader::unmarshal(Value const& object, HABMAddrSpace& space) const {
  HABMAddrValue range;
  if (!readAddress(object.json, Keys::STR_RANGE(), "", true, range)) {
    return false;
  }
  space.setRange(range);
  return unmarshalCollection<Kind<ChildKind::ADDR_SEGMENT>>(&object, space);
}

bool HABMJsonReader::unmarshal(Value const& object, HABMAddrSegment& segment) const {
  std::string type;
  readText(object.json, Keys::STR_TYPE(), "both", false, type);
  segment.setMemoryType(HABMAddrSegment::encodeMemoryType(type));
  HABMAddrValue value;
  if (!readAddress(object.json, Keys::STR_OFFSET(), "", true, value)) {
    return false;
  }
  segment.setOffset(value);
  if (!readAddress(object.json, Keys::STR_RANGE(), "", true, value)) {
    return false;
  }
  segment.setRange(value);
  return true;
}

bool HABMJsonReader::unmarshal(Value const& object, HABMMemoryMap& map) const {
  HABMAddrValue range;
  if (!readAddress(object.json, Keys::STR_RANGE(), "", true, range)) {
    return false;
  }
  map.setRange(range);
  return unmarshalCollection<Kind<ChildKind::ADDR_BLOCK>>(&object, map);
}

bool HABMJsonReader::unmarshal(Value const& object, HABMAddrBlock& block) const {
  std::string text;
  if (!readText(object.json, Keys::STR_TYPE(), "", true, text)) {
    return false;
  }
  block.setMemoryType(HABMAddrBlock::encodeMemoryType(text));
  readText(object.json, Keys::STR_ACCESS(), "read_write", false, text);
  block.setMemoryAccess(HABMAddrBlock::encodeMemoryAccess(text));
  HABMAddrValue value;
  if (!readAddress(object.json, Keys::STR_OFFSET(), "", true, value)) {
    return false;
  }
  block.setOffset(value);
  if (!readAddress(object.json, Keys::STR_RANGE(), "", true, value)) {
    return false;
  }
  block.setRange(value);
  return unmarshalCollection<Kind<ChildKind::REGISTER>>(&object, block);
}

bool HABMJsonReader::unmarshal(Value const& object, HABMRegister& reg) const {
  HABMAddrValue value;
  if (!readAddress(object.json, Keys::STR_OFFSET(), "", true, value)) {
    return false;
  }
  reg.setOffset(value);
  unsigned int width = 0;
  if (!readCount(object.json, Keys::STR_WIDTH(), width)) {
    return false;
  }
  reg.setWidth(width);
  std::string text;
  readText(object.json, Keys::STR_DESCRIPTION(), "", false, text);
  reg.setDescription(text);
  readText(object.json, Keys::STR_ACCESS(), "read_write", false, text);
  reg.setAccess(HABMRegister::encodeRegisterAccess(text));
  readAddress(object.json, Keys::STR_VALUE(), "0x0", false, value);
  reg.setValue(value);
  readAddress(object.json, Keys::STR_RESET(), "0x0", false, value);
  reg.setReset(value);
  return unmarshalCollection<Kind<ChildKind::REGISTER_FIELD>>(&object, reg) &&
         unmarshalCollection<Kind<ChildKind::REGISTER_PARAMETER>>(&object, reg);
}

bool HABMJsonReader::unmarshal(Value const& object, HABMRegisterField& field) const {
  unsigned int count = 0;
  if (!readCount(object.json, Keys::STR_OFFSET(), count)) {
    return false;
  }
  field.setOffset(count);
  if (!readCount(object.json, Keys::STR_WIDTH(), count)) {
    return false;
  }
  field.setWidth(count);
  std::string text;
  readText(object.json, Keys::STR_ACCESS(), "read_write", false, text);
  field.setAccess(HABMRegisterField::encodeFieldAccess(text));
  HABMAddrValue reset;
  readAddress(object.json, Keys::STR_RESET(), "0x0", false, reset);
  field.setReset(reset);
  return true;
}

// The paths are stored whatever form they have, as the setters do; only their absence fails.
bool HABMJsonReader::unmarshal(Value const& object, HABMAddrAssign& assign) const {
  std::string text;
  if (!readText(object.json, Keys::STR_TYPE(), "", true, text)) {
    return false;
  }
  assign.setAssignType(HABMAddrAssign::encodeAssignType(text));
  if (!readText(object.json, Keys::STR_SOURCE(), "", true, text)) {
    return false;
  }
  assign.setSourcePath(text);
  if (!readText(object.json, Keys::STR_TARGET(), "", true, text)) {
    return false;
  }
  assign.setTargetPath(text);
  HABMAddrValue value;
  if (!readAddress(object.json, Keys::STR_OFFSET(), "", true, value)) {
    return false;
  }
  assign.setOffset(value);
  if (!readAddress(object.json, Keys::STR_RANGE(), "", true, value)) {
    return false;
  }
  assign.setRange(value);
  return true;
}

// Bus objects.

bool HABMJsonReader::unmarshal(Value const& object, HABMInterface& iface) const {
  std::string text;
  if (!readText(object.json, Keys::STR_VLNV(), "", true, text)) {
    return false;
  }
  iface.setInterfaceVlnv(text);
  if (!readText(object.json, Keys::STR_MODE(), "", true, text)) {
    return false;
  }
  iface.setInterfaceMode(HABMInterface::encodeInterfaceMode(text));
  readText(object.json, Keys::STR_ENABLEMENT(), "", false, text);
  iface.setEnablement(text);
  // Either reference is taken on any interface; of the two, the memory map's is set last and wins.
  readText(object.json, Keys::STR_ADDRESS_SPACE_REF(), "", false, text);
  iface.setAddrSpaceRef(text);
  readText(object.json, Keys::STR_MEMORY_MAP_REF(), "", false, text);
  iface.setMemoryMapRef(text);
  HABMAddrValue base;
  readAddress(object.json, Keys::STR_BASE_ADDRESS(), "0x0", false, base);
  iface.setBaseAddress(base);
  if (!unmarshalSet(object, Keys::STR_ADDRESS_APERTURES(), iface.getApertures(true),
                    [&](std::set<HABMAddrAperture> const& read) { iface.setApertures(read, false); })) {
    return false;
  }
  return unmarshalCollection<Kind<ChildKind::INTERFACE_PARAMETER>>(&object, iface) &&
         unmarshalCollection<Kind<ChildKind::PORT_MAP>>(&object, iface);
}

bool HABMJsonReader::unmarshal(Value const& object, HABMPortMap& portMap) const {
  std::string text;
  if (!readText(object.json, Keys::STR_PHYSICAL_PORT(), "", true, text)) {
    return false;
  }
  portMap.setPhyName(text);
  auto const bound = [&](std::string const& key) {
    int value = -1;
    Keys::getJsonInt(object.json, key, value, false);
    return value;
  };
  portMap.setLogLeft(bound(Keys::STR_LOGICAL_LEFT()));
  portMap.setLogRight(bound(Keys::STR_LOGICAL_RIGHT()));
  portMap.setPhyLeft(bound(Keys::STR_PHYSICAL_LEFT()));
  portMap.setPhyRight(bound(Keys::STR_PHYSICAL_RIGHT()));
  return true;
}

bool HABMJsonReader::unmarshal(Value const& object, HABMAddrAperture& aperture) const {
  HABMAddrValue value;
  if (!readAddress(object.json, Keys::STR_OFFSET(), "", true, value)) {
    return false;
  }
  aperture.setBaseAddress(value);
  if (!readAddress(object.json, Keys::STR_RANGE(), "", true, value)) {
    return false;
  }
  aperture.setRange(value);
  return true;
}

bool HABMJsonReader::unmarshal(Value const& object, HABMBridge& bridge) const {
  std::string text;
  if (!readText(object.json, Keys::STR_SOURCE(), "", true, text)) {
    return false;
  }
  bridge.setSourceName(text);
  if (!readText(object.json, Keys::STR_TARGET(), "", true, text)) {
    return false;
  }
  bridge.setTargetName(text);
  return unmarshalSet(object, Keys::STR_ADDRESS_REMAPS(), bridge.getRemaps(),
                      [&](std::set<HABMAddrRemap> const& read) { bridge.setRemaps(read); });
}

// A remap has one range, the source's: the range in the target text is dropped.
bool HABMJsonReader::unmarshal(Value const& object, HABMAddrRemap& remap) const {
  std::string text;
  if (!readText(object.json, Keys::STR_SOURCE(), "", true, text)) {
    return false;
  }
  HABMAddrAperture const source(text);
  remap.setSourceBaseAddress(source.getBaseAddress());
  remap.setRange(source.getRange());
  if (!readText(object.json, Keys::STR_TARGET(), "", true, text)) {
    return false;
  }
  remap.setTargetBaseAddress(HABMAddrAperture(text).getBaseAddress());
  return true;
}

// The setters' results are not looked at: a path outside the block only leaves the connection dangling.
bool HABMJsonReader::unmarshal(Value const& object, HABMInterfaceConnection& connection) const {
  std::string text;
  readText(object.json, Keys::STR_TYPE(), "soft", false, text);
  connection.setConnectionType(HABMInterfaceConnection::encodeConnectionType(text));
  if (!readText(object.json, Keys::STR_SOURCE(), "", true, text)) {
    return false;
  }
  connection.setSourcePath(text);
  if (!readText(object.json, Keys::STR_TARGET(), "", true, text)) {
    return false;
  }
  connection.setTargetPath(text);
  return true;
}

// NoC objects. Parameters come before the stream destination id, which is checked against one of them.

bool HABMJsonReader::unmarshal(Value const& object, HABMNocInterface& iface) const {
  std::string text;
  if (!readText(object.json, Keys::STR_MODE(), "", true, text)) {
    return false;
  }
  iface.setNocMode(HABMNocInterface::encodeNocMode(text));
  if (!readText(object.json, Keys::STR_PROTOCOL(), "", true, text)) {
    return false;
  }
  iface.setNocProtocol(HABMNocInterface::encodeNocProtocol(text));
  if (!readText(object.json, Keys::STR_CATEGORY(), "", true, text)) {
    return false;
  }
  iface.setNocCategory(HABMNocInterface::encodeNocCategory(text));
  readText(object.json, Keys::STR_MEMORY_MAP_REF(), "", false, text);
  iface.setMemoryMapRef(text);
  if (!unmarshalSet(object, Keys::STR_ADDRESS_APERTURES(), iface.getApertures(),
                    [&](std::set<HABMAddrAperture> const& read) { iface.setApertures(read); })) {
    return false;
  }
  readText(object.json, Keys::STR_LOCATION(), "", false, text);
  iface.setLocation(text);  // a virtual interface refuses one, as it would from a host
  if (!unmarshalCollection<Kind<ChildKind::NOC_INTERFACE_PARAMETER>>(&object, iface)) {
    return false;
  }
  int destId = -1;
  Keys::getJsonInt(object.json, Keys::STR_DEST_ID(), destId, false);
  iface.setDestId(destId);
  readText(object.json, Keys::STR_TDEST_ID(), "", false, text);
  iface.setTdestId(text);
  bool editable = false;
  Keys::getJsonBoolean(object.json, Keys::STR_EDITABLE(), editable, false);
  iface.setEditable(editable);
  return true;
}

bool HABMJsonReader::unmarshal(Value const& object, HABMNocConnection& connection) const {
  std::string text;
  if (!readText(object.json, Keys::STR_SOURCE(), "", true, text)) {
    return false;
  }
  connection.setSourcePath(text);
  if (!readText(object.json, Keys::STR_TARGET(), "", true, text)) {
    return false;
  }
  connection.setTargetPath(text);
  if (!unmarshalSet(object, Keys::STR_ADDRESS_REMAPS(), connection.getRemaps(),
                    [&](std::set<HABMAddrRemap> const& read) { connection.setRemaps(read); })) {
    return false;
  }
  bool const parametersRead =
      unmarshalCollection<Kind<ChildKind::NOC_CONNECTION_PARAMETER>>(&object, connection);
  bool editable = false;
  Keys::getJsonBoolean(object.json, Keys::STR_EDITABLE(), editable, false);
  connection.setEditable(editable);
  return parametersRead;
}
