// HABMJsonWriter.cpp: the document frame, the collection scheme and one marshal per kind of object.
#include "blockmodel/HABMJsonWriter.h"

#include "blockmodel/HABMAddrAssign.h"
#include "blockmodel/HABMAddrBlock.h"
#include "blockmodel/HABMAddrSegment.h"
#include "blockmodel/HABMAddrSpace.h"
#include "blockmodel/HABMAttribute.h"
#include "blockmodel/HABMBlock.h"
#include "blockmodel/HABMGeneric.h"
#include "blockmodel/HABMJsonUtils.h"
#include "blockmodel/HABMMemoryMap.h"
#include "blockmodel/HABMParameter.h"
#include "blockmodel/HABMPort.h"
#include "blockmodel/HABMPortConnection.h"
#include "blockmodel/HABMRegister.h"
#include "blockmodel/HABMRegisterField.h"
#include "isl/iostreams/filtering_stream.h"
#include "json/HCRapidJsonReadWriteUtils.h"
#include "msg/ComMsgMgr.h"
#include "param/HPAParamMgr.h"
#include "util/HUTEnv.h"

#include <rapidjson/prettywriter.h>
#include <rapidjson/writer.h>

#include <memory>
#include <ostream>
#include <set>

namespace {

using Utils = HCRapidJsonReadWriteUtils;
using Keys = HABMJsonUtils;

constexpr char kPrettyParam[] = "project.prettyBlockModelWriter";

// A RapidJSON output stream over std::ostream that hands the text on in large pieces: the per-character
// path of a filtering stream would dominate the write.
class ChunkedOStream {
 public:
  using Ch = char;
  explicit ChunkedOStream(std::ostream& out) : out_(out) {}
  void Put(char c) {
    if (used_ == sizeof buffer_) {
      Flush();
    }
    buffer_[used_++] = c;
  }
  void Flush() {
    out_.write(buffer_, static_cast<std::streamsize>(used_));
    used_ = 0;
  }

 private:
  std::ostream& out_;
  std::size_t used_ = 0;
  char buffer_[1 << 16];
};

bool prettyParam() {
  return HPAParamMgr::getParamMgr().getValueIfExistAsBool(kPrettyParam, false);
}

template <class T>
bool marshalValueObject(T const& item, rapidjson::Value& object,
                        rapidjson::Document::AllocatorType& allocator) {
  Utils::AddStringProperty(object, Keys::STR_VALUE(), item.getValue(), allocator);
  return true;
}

void addAddress(rapidjson::Value& object, std::string const& key, HABMAddrValue const& value,
                rapidjson::Document::AllocatorType& allocator) {
  Utils::AddStringProperty(object, key, value.getPrettyHexStringValue(0), allocator);
}

// Bit counts and offsets are written as JSON integers, which the reader takes as int.
void addCount(rapidjson::Value& object, std::string const& key, unsigned int value,
              rapidjson::Document::AllocatorType& allocator) {
  Utils::AddIntegrProperty(object, key, static_cast<int>(value), allocator);
}

}  // namespace

bool HABMJsonWriter::writeBlock(HUTFile const& file, HABMBlock const& block, bool const& removeFirst) {
  std::string path;
  if (!file.getFullPath(path)) {
    path = file.getPath();
  }
  using OutStream = isl::iostreams::filtering_stream<isl::iostreams::output>;
  std::unique_ptr<OutStream> stream;
  bool result = false;
  try {
    if (removeFirst && file.exists()) {
      file.rm();
    }
    if (HUTEnv::isHostInsideOrvane() && prettyParam()) {
      stream = std::make_unique<OutStream>(path, std::ios_base::binary);
    } else {
      stream = std::make_unique<OutStream>(path, isl::iostreams::xp_latest(std::ios_base::binary),
                                           std::ios_base::failbit);
    }
    if (stream->good()) {
      result = HABMJsonWriter(file).marshal(block, *stream);
    }
  } catch (...) {
    result = false;
  }
  try {
    if (stream && !result) {
      stream->discard();  // whatever file was there stays as it was
    }
    result = stream && stream->close() && result;
  } catch (...) {
    result = false;
  }
  if (!result) {
    sendMsg::eval(1, __FILE__, __LINE__, "blockmodel", 0x20000000U, "@90-7@%s", path.c_str());
  }
  return result;
}

bool HABMJsonWriter::marshal(HABMBlock const& block, std::ostream& out) const {
  rapidjson::Document document(rapidjson::kObjectType);
  auto& allocator = document.GetAllocator();
  Utils::AddStringProperty(document, Keys::STR_SCHEMA(),
                           Keys::SCHEMA_VENDOR() + ":" + Keys::SCHEMA_LIBRARY() + ":" + Keys::SCHEMA_NAME() +
                               ":" + Keys::SCHEMA_VERSION(),
                           allocator);
  Value top(rapidjson::kObjectType);
  bool const result = marshal(block, top, allocator);
  if (top.MemberCount() > 0) {
    Utils::AddGenericValueProperty(document, Keys::STR_TOP_BLOCK(), top, allocator);
  }
  return result && marshal(document, out);
}

bool HABMJsonWriter::marshal(rapidjson::Document const& document, std::ostream& out) const {
  ChunkedOStream sink(out);
  bool ok = false;
  if (prettyParam()) {
    rapidjson::PrettyWriter<ChunkedOStream> writer(sink);
    writer.SetIndent(' ', 2);
    ok = document.Accept(writer);
  } else {
    rapidjson::Writer<ChunkedOStream> writer(sink);
    ok = document.Accept(writer);
  }
  sink.Flush();
  return ok && out.good();
}

template <class T>
bool HABMJsonWriter::marshalCollection(Value& group, std::string const& key, std::vector<T*> const& children,
                                       Allocator& allocator) const {
  bool result = true;
  Value collection(rapidjson::kObjectType);
  for (T const* child : children) {
    Value object(rapidjson::kObjectType);
    result = marshal(*child, object, allocator) && result;
    if (object.MemberCount() > 0) {
      Utils::AddGenericValueProperty(collection, HABMChildName<T>::of(*child), object, allocator);
    }
  }
  if (collection.MemberCount() > 0) {
    Utils::AddGenericValueProperty(group, key, collection, allocator);
  }
  return result;
}

bool HABMJsonWriter::marshal(HABMBlock const& block, Value& object, Allocator& allocator) const {
  Utils::AddStringProperty(object, Keys::STR_MODULE_NAME(), block.getModuleName(), allocator);
  if (!block.getModuleVlnv().empty()) {
    Utils::AddStringProperty(object, Keys::STR_VLNV(), block.getModuleVlnv(), allocator);
  }
  if (!block.getEnablement().empty()) {
    Utils::AddStringProperty(object, Keys::STR_ENABLEMENT(), block.getEnablement(), allocator);
  }
  if (block.getBaseAddress() != HABMAddrValue::CONST_0()) {
    Utils::AddStringProperty(object, Keys::STR_BASE_ADDRESS(),
                             block.getBaseAddress().getPrettyHexStringValue(0), allocator);
  }
  if (block.getValidated()) {
    Utils::AddBooleanProperty(object, Keys::STR_VALID(), true, allocator);
  }
  if (block.getLocked() != HABMBlock::UNKNOWN) {
    Utils::AddStringProperty(object, Keys::STR_LOCK(), HABMBlock::decodeLockState(block.getLocked()),
                             allocator);
  }
  if (!block.getTransparent()) {
    Utils::AddBooleanProperty(object, Keys::STR_TRANSPARENT(), false, allocator);
  }

  bool result = true;
  // Each group is added after its last collection, and only when it holds something.
  auto addGroup = [&](std::string const& key, Value& group) {
    if (group.MemberCount() > 0) {
      Utils::AddGenericValueProperty(object, key, group, allocator);
    }
  };
  Value configuration(rapidjson::kObjectType);
  result =
      marshalCollection(configuration, Keys::STR_PARAMETERS(), block.getParameters(), allocator) && result;
  result = marshalCollection(configuration, Keys::STR_GENERICS(), block.getGenerics(), allocator) && result;
  result =
      marshalCollection(configuration, Keys::STR_ATTRIBUTES(), block.getAttributes(), allocator) && result;
  addGroup(Keys::STR_CONFIGURATION(), configuration);

  Value boundary(rapidjson::kObjectType);
  result = marshalCollection(boundary, Keys::STR_PORTS(), block.getPorts(), allocator) && result;
  result = marshalCollection(boundary, Keys::STR_MEMORY_MAPS(), block.getMemoryMaps(), allocator) && result;
  result =
      marshalCollection(boundary, Keys::STR_ADDRESS_SPACES(), block.getAddrSpaces(), allocator) && result;
  addGroup(Keys::STR_BOUNDARY(), boundary);

  Value contents(rapidjson::kObjectType);
  result = marshalCollection(contents, Keys::STR_SUB_BLOCKS(), block.getSubBlocks(), allocator) && result;
  result = marshalCollection(contents, Keys::STR_PORT_CONNECTIONS(), block.getPortConnections(), allocator) &&
           result;
  result = marshalCollection(contents, Keys::STR_ADDRESS_ASSIGNMENTS(), block.getAddrAssigns(), allocator) &&
           result;
  addGroup(Keys::STR_CONTENTS(), contents);
  return result;
}

bool HABMJsonWriter::marshal(HABMAttribute const& attribute, Value& object, Allocator& allocator) const {
  return marshalValueObject(attribute, object, allocator);
}

bool HABMJsonWriter::marshal(HABMGeneric const& generic, Value& object, Allocator& allocator) const {
  return marshalValueObject(generic, object, allocator);
}

bool HABMJsonWriter::marshal(HABMParameter const& parameter, Value& object, Allocator& allocator) const {
  return marshalValueObject(parameter, object, allocator);
}

bool HABMJsonWriter::marshal(HABMPort const& port, Value& object, Allocator& allocator) const {
  Utils::AddStringProperty(object, Keys::STR_TYPE(), HABMPort::decodePortType(port.getPortType()), allocator);
  Utils::AddStringProperty(object, Keys::STR_DIRECTION(),
                           HABMPort::decodePortDirection(port.getPortDirection()), allocator);
  if (!port.isWirePort()) {
    // Unsigned, so that bounds above 2^31 keep their text; the reader takes them back through the low 32
    // bits.
    Value left(static_cast<unsigned>(port.getPortLeft()));
    Utils::AddGenericValueProperty(object, Keys::STR_SIZE_LEFT(), left, allocator);
    Value right(static_cast<unsigned>(port.getPortRight()));
    Utils::AddGenericValueProperty(object, Keys::STR_SIZE_RIGHT(), right, allocator);
  }
  return marshalCollection(object, Keys::STR_ATTRIBUTES(), port.getAttributes(), allocator);
}

bool HABMJsonWriter::marshal(HABMPortConnection const& connection, Value& object,
                             Allocator& allocator) const {
  if (connection.getConnectionType() != HABMPortConnection::SOFT) {
    Utils::AddStringProperty(object, Keys::STR_TYPE(),
                             HABMPortConnection::decodeConnectionType(connection.getConnectionType()),
                             allocator);
  }
  std::string const source = connection.getSourcePath(false);
  if (!source.empty()) {
    Utils::AddStringProperty(object, Keys::STR_SOURCE(), source, allocator);
  }
  std::set<std::string> const targets = connection.getTargetPaths(false);
  if (!targets.empty()) {
    Value array(rapidjson::kArrayType);
    for (std::string const& target : targets) {
      array.PushBack(Value(target.c_str(), static_cast<rapidjson::SizeType>(target.size()), allocator),
                     allocator);
    }
    Utils::AddGenericValueProperty(object, Keys::STR_TARGETS(), array, allocator);
  }
  return true;
}

// Address objects. Defaults that the reader restores on its own ("both", "read_write", zero values) are
// left out; what the reader requires is always written.

bool HABMJsonWriter::marshal(HABMAddrSpace const& space, Value& object, Allocator& allocator) const {
  addAddress(object, Keys::STR_RANGE(), space.getRange(), allocator);
  return marshalCollection(object, Keys::STR_ADDRESS_SEGMENTS(), space.getAddrSegments(), allocator);
}

bool HABMJsonWriter::marshal(HABMAddrSegment const& segment, Value& object, Allocator& allocator) const {
  if (segment.getMemoryType() != HABMAddrSegment::TYPE_BOTH) {
    Utils::AddStringProperty(object, Keys::STR_TYPE(),
                             HABMAddrSegment::decodeMemoryType(segment.getMemoryType()), allocator);
  }
  addAddress(object, Keys::STR_OFFSET(), segment.getOffset(), allocator);
  addAddress(object, Keys::STR_RANGE(), segment.getRange(), allocator);
  return true;
}

bool HABMJsonWriter::marshal(HABMMemoryMap const& map, Value& object, Allocator& allocator) const {
  addAddress(object, Keys::STR_RANGE(), map.getRange(), allocator);
  return marshalCollection(object, Keys::STR_ADDRESS_BLOCKS(), map.getAddrBlocks(), allocator);
}

bool HABMJsonWriter::marshal(HABMAddrBlock const& block, Value& object, Allocator& allocator) const {
  Utils::AddStringProperty(object, Keys::STR_TYPE(), HABMAddrBlock::decodeMemoryType(block.getMemoryType()),
                           allocator);
  if (block.getMemoryAccess() != HABMAddrBlock::ACCESS_READ_WRITE) {
    Utils::AddStringProperty(object, Keys::STR_ACCESS(),
                             HABMAddrBlock::decodeMemoryAccess(block.getMemoryAccess()), allocator);
  }
  addAddress(object, Keys::STR_OFFSET(), block.getOffset(), allocator);
  addAddress(object, Keys::STR_RANGE(), block.getRange(), allocator);
  return marshalCollection(object, Keys::STR_REGISTERS(), block.getRegisters(), allocator);
}

bool HABMJsonWriter::marshal(HABMRegister const& reg, Value& object, Allocator& allocator) const {
  addAddress(object, Keys::STR_OFFSET(), reg.getOffset(), allocator);
  addCount(object, Keys::STR_WIDTH(), reg.getWidth(), allocator);
  if (!reg.getDescription().empty()) {
    Utils::AddStringProperty(object, Keys::STR_DESCRIPTION(), reg.getDescription(), allocator);
  }
  if (reg.getAccess() != HABMRegister::ACCESS_READ_WRITE) {
    Utils::AddStringProperty(object, Keys::STR_ACCESS(), HABMRegister::decodeRegisterAccess(reg.getAccess()),
                             allocator);
  }
  if (reg.getValue() != HABMAddrValue::CONST_0()) {
    addAddress(object, Keys::STR_VALUE(), reg.getValue(), allocator);
  }
  if (reg.getReset() != HABMAddrValue::CONST_0()) {
    addAddress(object, Keys::STR_RESET(), reg.getReset(), allocator);
  }
  bool const fields = marshalCollection(object, Keys::STR_FIELDS(), reg.getFields(), allocator);
  return marshalCollection(object, Keys::STR_PARAMETERS(), reg.getParameters(), allocator) && fields;
}

bool HABMJsonWriter::marshal(HABMRegisterField const& field, Value& object, Allocator& allocator) const {
  addCount(object, Keys::STR_OFFSET(), field.getOffset(), allocator);
  addCount(object, Keys::STR_WIDTH(), field.getWidth(), allocator);
  if (field.getAccess() != HABMRegisterField::ACCESS_READ_WRITE) {
    Utils::AddStringProperty(object, Keys::STR_ACCESS(),
                             HABMRegisterField::decodeFieldAccess(field.getAccess()), allocator);
  }
  if (field.getReset() != HABMAddrValue::CONST_0()) {
    addAddress(object, Keys::STR_RESET(), field.getReset(), allocator);
  }
  return true;
}

bool HABMJsonWriter::marshal(HABMAddrAssign const& assign, Value& object, Allocator& allocator) const {
  Utils::AddStringProperty(object, Keys::STR_TYPE(), HABMAddrAssign::decodeAssignType(assign.getAssignType()),
                           allocator);
  Utils::AddStringProperty(object, Keys::STR_SOURCE(), assign.getSourcePath(false), allocator);
  Utils::AddStringProperty(object, Keys::STR_TARGET(), assign.getTargetPath(false), allocator);
  addAddress(object, Keys::STR_OFFSET(), assign.getOffset(), allocator);
  addAddress(object, Keys::STR_RANGE(), assign.getRange(), allocator);
  return true;
}
