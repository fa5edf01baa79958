// HABMJsonWriter.cpp: the document frame, the collection scheme and one marshal per kind of object.
#include "blockmodel/HABMJsonWriter.h"

#include "blockmodel/HABMAttribute.h"
#include "blockmodel/HABMBlock.h"
#include "blockmodel/HABMGeneric.h"
#include "blockmodel/HABMJsonUtils.h"
#include "blockmodel/HABMParameter.h"
#include "blockmodel/HABMPort.h"
#include "blockmodel/HABMPortConnection.h"
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
  addGroup(Keys::STR_BOUNDARY(), boundary);

  Value contents(rapidjson::kObjectType);
  result = marshalCollection(contents, Keys::STR_SUB_BLOCKS(), block.getSubBlocks(), allocator) && result;
  result = marshalCollection(contents, Keys::STR_PORT_CONNECTIONS(), block.getPortConnections(), allocator) &&
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
