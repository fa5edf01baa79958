// HABMJsonWriter.cpp: the document frame, the collection scheme and one marshal per kind of object.
#include "blockmodel/HABMJsonWriter.h"

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
#include "blockmodel/HABMJsonReader.h"
#include "blockmodel/HABMJsonUtils.h"
#include "blockmodel/HABMMemoryMap.h"
#include "blockmodel/HABMParameter.h"
#include "blockmodel/HABMPort.h"
#include "blockmodel/HABMPortConnection.h"
#include "blockmodel/HABMPortMap.h"
#include "blockmodel/HABMRegister.h"
#include "blockmodel/HABMRegisterField.h"
#include "blockmodel/detail/HABMFileWrite.h"
#include "blockmodel/detail/HABMKinds.h"
#include "msg/ComMsgMgr.h"
#include "param/HPAParamMgr.h"
#include "util/HUTEnv.h"

#include <rapidjson/prettywriter.h>
#include <rapidjson/writer.h>

#include <algorithm>
#include <cassert>
#include <cstring>
#include <memory>
#include <ostream>
#include <set>
#include <vector>

// Where the members of the document go: the JSON text, emitted as the tree is walked. Building a
// document in memory first would cost more than the text itself (RapidJSON gives every object room for
// sixteen members) for nothing that the file shows.
class HABMJsonWriter::Out {
 public:
  virtual ~Out() = default;
  virtual void key(std::string const& k) = 0;
  virtual void string(std::string const& s) = 0;
  virtual void boolean(bool b) = 0;
  virtual void integer(int i) = 0;
  virtual void unsignedInteger(unsigned u) = 0;
  virtual void startObject() = 0;
  virtual void startArray() = 0;
  virtual void endArray() = 0;
  /// Ends an object; the number of members it got.
  virtual std::size_t endObject() = 0;
  /// Whether every token went out.
  virtual bool ok() const = 0;

  void member(std::string const& k, std::string const& v) {
    key(k);
    string(v);
  }
  void member(std::string const& k, bool v) {
    key(k);
    boolean(v);
  }
  void unsignedMember(std::string const& k, unsigned v) {
    key(k);
    unsignedInteger(v);
  }
  /// Addresses are written in their pretty hex form.
  void address(std::string const& k, HABMAddrValue const& v) { member(k, v.getPrettyHexStringValue(0)); }
  /// Bit counts and offsets are JSON integers, which the reader takes as int.
  void count(std::string const& k, unsigned int v) {
    key(k);
    integer(static_cast<int>(v));
  }
};

namespace {

using habm_detail::ChildKind;
using habm_detail::Kind;
using Keys = HABMJsonUtils;

constexpr char kPrettyParam[] = "project.prettyBlockModelWriter";

// A RapidJSON output stream over std::ostream that hands the text on in large pieces: the per-character
// path of a filtering stream would dominate the write. The writer reserves room for a whole token before
// putting its characters (`PutReserve`, `PutUnsafe` below), so that a character costs one store.
class ChunkedOStream {
 public:
  using Ch = char;
  explicit ChunkedOStream(std::ostream& out) : out_(out), buffer_(kChunk) { rewind(); }
  void Put(char c) {
    reserve(1);
    *cursor_++ = c;
  }
  void putUnsafe(char c) { *cursor_++ = c; }
  /// Puts a string that needs no escapes, quoted.
  void putQuoted(std::string const& text) {
    reserve(text.size() + 2);
    *cursor_++ = '"';
    std::memcpy(cursor_, text.data(), text.size());
    cursor_ += text.size();
    *cursor_++ = '"';
  }
  /// Room for `count` more characters: the buffer is handed on first, and grows for a token that
  /// would not fit it even empty.
  void reserve(std::size_t count) {
    if (static_cast<std::size_t>(end_ - cursor_) < count) {
      Flush();
      if (buffer_.size() < count) {
        buffer_.resize(count);
        rewind();
      }
    }
  }
  void Flush() {
    out_.write(buffer_.data(), cursor_ - buffer_.data());
    cursor_ = buffer_.data();
  }

 private:
  static constexpr std::size_t kChunk = 1 << 16;
  void rewind() {
    cursor_ = buffer_.data();
    end_ = buffer_.data() + buffer_.size();
  }

  std::ostream& out_;
  std::vector<char> buffer_;
  char* cursor_ = nullptr;
  char* end_ = nullptr;
};

// Found by argument-dependent lookup from RapidJSON's writers, before its per-character defaults.
[[maybe_unused]] void PutReserve(ChunkedOStream& stream, std::size_t count) {
  stream.reserve(count);
}
[[maybe_unused]] void PutUnsafe(ChunkedOStream& stream, char c) {
  stream.putUnsafe(c);
}

// The emitter over one of RapidJSON's writers, counting members per open object.
template <class Writer>
class WriterOut final : public HABMJsonWriter::Out {
 public:
  explicit WriterOut(ChunkedOStream& sink) : sink_(sink), writer_(sink) {}
  Writer& writer() { return writer_; }

  void key(std::string const& k) override {
    ++members_.back();
    string(k);
  }
  void string(std::string const& s) override {
    if (isPlain(s)) {
      // The writer puts the separator before it, the text goes in one piece: the writer's own loop
      // stores character by character. Names and values almost never need an escape.
      ok_ = writer_.RawValue("", 0, rapidjson::kStringType) && ok_;
      sink_.putQuoted(s);
    } else {
      ok_ = writer_.String(s.data(), static_cast<rapidjson::SizeType>(s.size()), true) && ok_;
    }
  }
  void boolean(bool b) override { ok_ = writer_.Bool(b) && ok_; }
  void integer(int i) override { ok_ = writer_.Int(i) && ok_; }
  void unsignedInteger(unsigned u) override { ok_ = writer_.Uint(u) && ok_; }
  void startObject() override {
    enter();
    members_.push_back(0);
    ok_ = writer_.StartObject() && ok_;
  }
  void startArray() override {
    enter();
    ok_ = writer_.StartArray() && ok_;
  }
  void endArray() override {
    --depth_;
    ok_ = writer_.EndArray() && ok_;
  }
  std::size_t endObject() override {
    --depth_;
    std::size_t const n = members_.back();
    members_.pop_back();
    ok_ = writer_.EndObject() && ok_;
    return n;
  }
  bool ok() const override { return ok_ && writer_.IsComplete(); }

 private:
  // A file the reader would refuse as too deep is not written at all.
  void enter() { ok_ = ++depth_ <= HABMJsonReader::MAX_NESTING && ok_; }
  // What RapidJSON's writers escape: the control characters, the quote and the backslash.
  static bool isPlain(std::string const& text) {
    for (char const c : text) {
      if (static_cast<unsigned char>(c) < 0x20 || c == '"' || c == '\\') {
        return false;
      }
    }
    return true;
  }

  ChunkedOStream& sink_;
  Writer writer_;
  std::vector<std::size_t> members_ = {0};
  unsigned depth_ = 0;
  bool ok_ = true;
};

bool prettyParam() {
  return HPAParamMgr::getParamMgr().getValueIfExistAsBool(kPrettyParam, false);
}

template <class T>
bool marshalValueObject(T const& item, HABMJsonWriter::Out& out) {
  out.member(Keys::STR_VALUE(), item.getValue());
  return true;
}

// Whether a child's object gets any member: the collection scheme leaves out children that would be
// empty, and must know before it names them. Only a kind whose every member is optional overloads this.
template <class T>
bool emitsMembers(T const&) {
  return true;
}

bool emitsMembers(HABMPortConnection const& connection) {
  return connection.getConnectionType() != HABMPortConnection::SOFT ||
         !connection.getSourcePath(false).empty() || !connection.getTargetPaths(false).empty();
}

template <class List>
bool anyEmitsMembers(List const& children) {
  return std::any_of(children.begin(), children.end(), [](auto const* c) { return emitsMembers(*c); });
}

// Whether a group of a block's collections has a child to show.
template <class Kinds>
bool groupHasMembers(HABMBlock const& block, Kinds kinds) {
  bool any = false;
  habm_detail::forEachKind(kinds,
                           [&](auto kind) { any = any || anyEmitsMembers(decltype(kind)::list(block)); });
  return any;
}

}  // namespace

bool HABMJsonWriter::writeBlock(HUTFile const& file, HABMBlock const& block, bool const& removeFirst) {
  std::string const path = habm_detail::fullPathOf(file);
  bool const result = habm_detail::writeFileAllOrNothing(
      [&] {
        habm_detail::removeIfAsked(file, removeFirst);
        using habm_detail::OutStream;
        return HUTEnv::isHostInsideOrvane() && prettyParam()
                   ? std::make_unique<OutStream>(path, std::ios_base::binary)
                   : std::make_unique<OutStream>(path, isl::iostreams::xp_latest(std::ios_base::binary),
                                                 std::ios_base::failbit);
      },
      [&](std::ostream& out) { return HABMJsonWriter(file).marshal(block, out); });
  if (!result) {
    sendMsg::eval(1, __FILE__, __LINE__, "blockmodel", 0x20000000U, "@90-7@%s", path.c_str());
  }
  return result;
}

bool HABMJsonWriter::marshal(HABMBlock const& block, std::ostream& out) const {
  ChunkedOStream sink(out);
  bool ok = false;
  // A failed marshal leaves a partial text behind; the caller then discards the file.
  auto emit = [&](auto& emitter) {
    emitter.startObject();
    emitter.member(Keys::STR_SCHEMA(), Keys::SCHEMA_VENDOR() + ":" + Keys::SCHEMA_LIBRARY() + ":" +
                                           Keys::SCHEMA_NAME() + ":" + Keys::SCHEMA_VERSION());
    emitter.key(Keys::STR_TOP_BLOCK());
    emitter.startObject();
    bool const result = marshal(block, emitter);
    emitter.endObject();
    emitter.endObject();
    return result && emitter.ok();
  };
  if (prettyParam()) {
    WriterOut<rapidjson::PrettyWriter<ChunkedOStream>> emitter(sink);
    emitter.writer().SetIndent(' ', 2);
    ok = emit(emitter);
  } else {
    WriterOut<rapidjson::Writer<ChunkedOStream>> emitter(sink);
    ok = emit(emitter);
  }
  sink.Flush();
  return ok && out.good();
}

template <class K>
bool HABMJsonWriter::marshalCollection(Out& out, typename K::Owner const& owner) const {
  auto const& children = K::list(owner);
  if (!anyEmitsMembers(children)) {
    return true;
  }
  bool result = true;
  out.key(K::key());
  out.startObject();
  for (auto const* child : children) {
    if (!emitsMembers(*child)) {
      continue;
    }
    out.key(HABMChildName<typename K::Child>::of(*child));
    out.startObject();
    result = marshal(*child, out) && result;
    [[maybe_unused]] std::size_t const members = out.endObject();
    assert(members > 0 && "emitsMembers() promised members that marshal() did not write");
  }
  out.endObject();
  return result;
}

template <class Kinds>
bool HABMJsonWriter::marshalGroup(Out& out, std::string const& key, HABMBlock const& block,
                                  Kinds kinds) const {
  if (!groupHasMembers(block, kinds)) {
    return true;
  }
  out.key(key);
  out.startObject();
  bool const result = marshalCollections(out, block, kinds);
  out.endObject();
  return result;
}

template <class Kinds>
bool HABMJsonWriter::marshalCollections(Out& out, HABMBlock const& block, Kinds kinds) const {
  bool result = true;
  habm_detail::forEachKind(
      kinds, [&](auto kind) { result = marshalCollection<decltype(kind)>(out, block) && result; });
  return result;
}

template <class T>
bool HABMJsonWriter::marshalArray(Out& out, std::string const& key, std::set<T> const& items) const {
  if (items.empty()) {
    return true;
  }
  bool result = true;
  out.key(key);
  out.startArray();
  for (T const& item : items) {
    out.startObject();
    result = marshal(item, out) && result;
    out.endObject();
  }
  out.endArray();
  return result;
}

bool HABMJsonWriter::marshal(HABMBlock const& top, Out& out) const {
  // The sub-blocks are written inside their parent's contents, the rest of which follows them; the tree is
  // walked on a stack of our own, so that a deep hierarchy does not exhaust the thread's.
  using SubBlocks = HABMChildList<HABMBlock>;
  struct Frame {
    HABMBlock const* block;
    SubBlocks::Iterator next;
    SubBlocks::Iterator end;
    bool contents;
  };
  bool result = true;
  std::vector<Frame> stack;
  // Writes a block's members up to its sub-blocks, and opens its contents when it has any.
  auto const open = [&](HABMBlock const& block) {
    out.member(Keys::STR_MODULE_NAME(), block.getModuleName());
    if (!block.getModuleVlnv().empty()) {
      out.member(Keys::STR_VLNV(), block.getModuleVlnv());
    }
    if (!block.getEnablement().empty()) {
      out.member(Keys::STR_ENABLEMENT(), block.getEnablement());
    }
    if (block.getBaseAddress() != HABMAddrValue::CONST_0()) {
      out.address(Keys::STR_BASE_ADDRESS(), block.getBaseAddress());
    }
    if (block.getValidated()) {
      out.member(Keys::STR_VALID(), true);
    }
    if (block.getLocked() != HABMBlock::UNKNOWN) {
      out.member(Keys::STR_LOCK(), HABMBlock::decodeLockState(block.getLocked()));
    }
    if (!block.getTransparent()) {
      out.member(Keys::STR_TRANSPARENT(), false);
    }
    // A group stands in the file only when one of its collections has a child to show.
    result = marshalGroup(out, Keys::STR_CONFIGURATION(), block, habm_detail::WriteConfiguration{}) && result;
    result = marshalGroup(out, Keys::STR_BOUNDARY(), block, habm_detail::WriteBoundary{}) && result;
    auto const& subBlocks = Kind<ChildKind::SUB_BLOCK>::list(block);
    bool const contents =
        !subBlocks.empty() || groupHasMembers(block, habm_detail::WriteContentsAfterSubBlocks{});
    if (contents) {
      out.key(Keys::STR_CONTENTS());
      out.startObject();
      if (!subBlocks.empty()) {
        out.key(Kind<ChildKind::SUB_BLOCK>::key());
        out.startObject();
      }
    }
    stack.push_back({&block, subBlocks.begin(), subBlocks.end(), contents});
  };
  open(top);
  while (!stack.empty()) {
    Frame& frame = stack.back();
    if (frame.next != frame.end) {
      HABMBlock const* sub = *frame.next;
      ++frame.next;
      out.key(sub->getInstanceName());
      out.startObject();
      open(*sub);
      continue;
    }
    if (frame.contents) {
      if (!Kind<ChildKind::SUB_BLOCK>::list(*frame.block).empty()) {
        out.endObject();
      }
      result = marshalCollections(out, *frame.block, habm_detail::WriteContentsAfterSubBlocks{}) && result;
      out.endObject();
    }
    stack.pop_back();
    if (!stack.empty()) {
      out.endObject();  // the sub-block's own object, which its parent opened
    }
  }
  return result;
}

bool HABMJsonWriter::marshal(HABMAttribute const& attribute, Out& out) const {
  return marshalValueObject(attribute, out);
}

bool HABMJsonWriter::marshal(HABMGeneric const& generic, Out& out) const {
  return marshalValueObject(generic, out);
}

bool HABMJsonWriter::marshal(HABMParameter const& parameter, Out& out) const {
  return marshalValueObject(parameter, out);
}

bool HABMJsonWriter::marshal(HABMPort const& port, Out& out) const {
  out.member(Keys::STR_TYPE(), HABMPort::decodePortType(port.getPortType()));
  out.member(Keys::STR_DIRECTION(), HABMPort::decodePortDirection(port.getPortDirection()));
  if (!port.isWirePort()) {
    // Unsigned, so that bounds above 2^31 keep their text; the reader takes them back through the low 32
    // bits.
    out.unsignedMember(Keys::STR_SIZE_LEFT(), static_cast<unsigned>(port.getPortLeft()));
    out.unsignedMember(Keys::STR_SIZE_RIGHT(), static_cast<unsigned>(port.getPortRight()));
  }
  return marshalCollection<Kind<ChildKind::PORT_ATTRIBUTE>>(out, port);
}

bool HABMJsonWriter::marshal(HABMPortConnection const& connection, Out& out) const {
  if (connection.getConnectionType() != HABMPortConnection::SOFT) {
    out.member(Keys::STR_TYPE(), HABMPortConnection::decodeConnectionType(connection.getConnectionType()));
  }
  std::string const source = connection.getSourcePath(false);
  if (!source.empty()) {
    out.member(Keys::STR_SOURCE(), source);
  }
  std::set<std::string> const targets = connection.getTargetPaths(false);
  if (!targets.empty()) {
    out.key(Keys::STR_TARGETS());
    out.startArray();
    for (std::string const& target : targets) {
      out.string(target);
    }
    out.endArray();
  }
  return true;
}

// Address objects. Defaults that the reader restores on its own ("both", "read_write", zero values) are
// left out; what the reader requires is always written.

bool HABMJsonWriter::marshal(HABMAddrSpace const& space, Out& out) const {
  out.address(Keys::STR_RANGE(), space.getRange());
  return marshalCollection<Kind<ChildKind::ADDR_SEGMENT>>(out, space);
}

bool HABMJsonWriter::marshal(HABMAddrSegment const& segment, Out& out) const {
  if (segment.getMemoryType() != HABMAddrSegment::TYPE_BOTH) {
    out.member(Keys::STR_TYPE(), HABMAddrSegment::decodeMemoryType(segment.getMemoryType()));
  }
  out.address(Keys::STR_OFFSET(), segment.getOffset());
  out.address(Keys::STR_RANGE(), segment.getRange());
  return true;
}

bool HABMJsonWriter::marshal(HABMMemoryMap const& map, Out& out) const {
  out.address(Keys::STR_RANGE(), map.getRange());
  return marshalCollection<Kind<ChildKind::ADDR_BLOCK>>(out, map);
}

bool HABMJsonWriter::marshal(HABMAddrBlock const& block, Out& out) const {
  out.member(Keys::STR_TYPE(), HABMAddrBlock::decodeMemoryType(block.getMemoryType()));
  if (block.getMemoryAccess() != HABMAddrBlock::ACCESS_READ_WRITE) {
    out.member(Keys::STR_ACCESS(), HABMAddrBlock::decodeMemoryAccess(block.getMemoryAccess()));
  }
  out.address(Keys::STR_OFFSET(), block.getOffset());
  out.address(Keys::STR_RANGE(), block.getRange());
  return marshalCollection<Kind<ChildKind::REGISTER>>(out, block);
}

bool HABMJsonWriter::marshal(HABMRegister const& reg, Out& out) const {
  out.address(Keys::STR_OFFSET(), reg.getOffset());
  out.count(Keys::STR_WIDTH(), reg.getWidth());
  if (!reg.getDescription().empty()) {
    out.member(Keys::STR_DESCRIPTION(), reg.getDescription());
  }
  if (reg.getAccess() != HABMRegister::ACCESS_READ_WRITE) {
    out.member(Keys::STR_ACCESS(), HABMRegister::decodeRegisterAccess(reg.getAccess()));
  }
  if (reg.getValue() != HABMAddrValue::CONST_0()) {
    out.address(Keys::STR_VALUE(), reg.getValue());
  }
  if (reg.getReset() != HABMAddrValue::CONST_0()) {
    out.address(Keys::STR_RESET(), reg.getReset());
  }
  bool const fields = marshalCollection<Kind<ChildKind::REGISTER_FIELD>>(out, reg);
  return marshalCollection<Kind<ChildKind::REGISTER_PARAMETER>>(out, reg) && fields;
}

bool HABMJsonWriter::marshal(HABMRegisterField const& field, Out& out) const {
  out.count(Keys::STR_OFFSET(), field.getOffset());
  out.count(Keys::STR_WIDTH(), field.getWidth());
  if (field.getAccess() != HABMRegisterField::ACCESS_READ_WRITE) {
    out.member(Keys::STR_ACCESS(), HABMRegisterField::decodeFieldAccess(field.getAccess()));
  }
  if (field.getReset() != HABMAddrValue::CONST_0()) {
    out.address(Keys::STR_RESET(), field.getReset());
  }
  return true;
}

bool HABMJsonWriter::marshal(HABMAddrAssign const& assign, Out& out) const {
  out.member(Keys::STR_TYPE(), HABMAddrAssign::decodeAssignType(assign.getAssignType()));
  out.member(Keys::STR_SOURCE(), assign.getSourcePath(false));
  out.member(Keys::STR_TARGET(), assign.getTargetPath(false));
  out.address(Keys::STR_OFFSET(), assign.getOffset());
  out.address(Keys::STR_RANGE(), assign.getRange());
  return true;
}

// Bus objects. Only one address reference is written, the one the interface's side uses; the mode and the
// bus definition are always written, even when unknown or empty.

bool HABMJsonWriter::marshal(HABMInterface const& iface, Out& out) const {
  out.member(Keys::STR_VLNV(), iface.getInterfaceVlnv());
  out.member(Keys::STR_MODE(), HABMInterface::decodeInterfaceMode(iface.getInterfaceMode()));
  if (!iface.getEnablement().empty()) {
    out.member(Keys::STR_ENABLEMENT(), iface.getEnablement());
  }
  if (iface.isSourceInterface()) {
    if (!iface.getAddrSpaceRef().empty()) {
      out.member(Keys::STR_ADDRESS_SPACE_REF(), iface.getAddrSpaceRef());
    }
  } else if (!iface.getMemoryMapRef().empty()) {
    out.member(Keys::STR_MEMORY_MAP_REF(), iface.getMemoryMapRef());
  }
  if (iface.getBaseAddress() != HABMAddrValue::CONST_0()) {
    out.address(Keys::STR_BASE_ADDRESS(), iface.getBaseAddress());
  }
  // As stored, relative to the base address.
  bool result = marshalArray(out, Keys::STR_ADDRESS_APERTURES(), iface.getApertures(false));
  result = marshalCollection<Kind<ChildKind::INTERFACE_PARAMETER>>(out, iface) && result;
  return marshalCollection<Kind<ChildKind::PORT_MAP>>(out, iface) && result;
}

bool HABMJsonWriter::marshal(HABMPortMap const& portMap, Out& out) const {
  out.member(Keys::STR_PHYSICAL_PORT(), portMap.getPhyName());
  // A negative bound means no range and is left out.
  auto const bound = [&](std::string const& key, int value) {
    if (value >= 0) {
      out.key(key);
      out.integer(value);
    }
  };
  bound(Keys::STR_LOGICAL_LEFT(), portMap.getLogLeft());
  bound(Keys::STR_LOGICAL_RIGHT(), portMap.getLogRight());
  bound(Keys::STR_PHYSICAL_LEFT(), portMap.getPhyLeft());
  bound(Keys::STR_PHYSICAL_RIGHT(), portMap.getPhyRight());
  return true;
}

bool HABMJsonWriter::marshal(HABMAddrAperture const& aperture, Out& out) const {
  out.address(Keys::STR_OFFSET(), aperture.getBaseAddress());
  out.address(Keys::STR_RANGE(), aperture.getRange());
  return true;
}

bool HABMJsonWriter::marshal(HABMBridge const& bridge, Out& out) const {
  out.member(Keys::STR_SOURCE(), bridge.getSourceName());
  out.member(Keys::STR_TARGET(), bridge.getTargetName());
  return marshalArray(out, Keys::STR_ADDRESS_REMAPS(), bridge.getRemaps());
}

bool HABMJsonWriter::marshal(HABMAddrRemap const& remap, Out& out) const {
  // A source that passes the top of the address space has no high address that reads back as itself:
  // rather no file than one that changes the design.
  HABMAddrAperture const source = remap.getSourceAperture();
  if (source.getRange() != HABMAddrValue::CONST_0() && source.getHighAddress() < source.getBaseAddress()) {
    return false;
  }
  out.member(Keys::STR_SOURCE(), remap.getSourceAperture().getBaseHighString(0));
  out.member(Keys::STR_TARGET(), remap.getTargetAperture().getBaseHighString(0));
  return true;
}

bool HABMJsonWriter::marshal(HABMInterfaceConnection const& connection, Out& out) const {
  if (connection.getConnectionType() != HABMPortConnection::SOFT) {
    out.member(Keys::STR_TYPE(),
               HABMInterfaceConnection::decodeConnectionType(connection.getConnectionType()));
  }
  out.member(Keys::STR_SOURCE(), connection.getSourcePath(false));
  out.member(Keys::STR_TARGET(), connection.getTargetPath(false));
  return true;
}

// NoC objects. A destination id of -1 means none and is left out; 0 is written.

bool HABMJsonWriter::marshal(HABMNocInterface const& iface, Out& out) const {
  out.member(Keys::STR_MODE(), HABMNocInterface::decodeNocMode(iface.getNocMode()));
  out.member(Keys::STR_PROTOCOL(), HABMNocInterface::decodeNocProtocol(iface.getNocProtocol()));
  out.member(Keys::STR_CATEGORY(), HABMNocInterface::decodeNocCategory(iface.getNocCategory()));
  if (!iface.getMemoryMapRef().empty()) {
    out.member(Keys::STR_MEMORY_MAP_REF(), iface.getMemoryMapRef());
  }
  bool result = marshalArray(out, Keys::STR_ADDRESS_APERTURES(), iface.getApertures());
  if (!iface.getLocation().empty()) {
    out.member(Keys::STR_LOCATION(), iface.getLocation());
  }
  if (iface.getDestId() >= 0) {
    out.key(Keys::STR_DEST_ID());
    out.integer(iface.getDestId());
  }
  if (!iface.getTdestId().empty()) {
    out.member(Keys::STR_TDEST_ID(), iface.getTdestId());
  }
  result = marshalCollection<Kind<ChildKind::NOC_INTERFACE_PARAMETER>>(out, iface) && result;
  if (iface.getEditable()) {
    out.member(Keys::STR_EDITABLE(), true);
  }
  return result;
}

bool HABMJsonWriter::marshal(HABMNocConnection const& connection, Out& out) const {
  out.member(Keys::STR_SOURCE(), connection.getSourcePath(false));
  out.member(Keys::STR_TARGET(), connection.getTargetPath(false));
  bool result = marshalArray(out, Keys::STR_ADDRESS_REMAPS(), connection.getRemaps());
  result = marshalCollection<Kind<ChildKind::NOC_CONNECTION_PARAMETER>>(out, connection) && result;
  if (connection.getEditable()) {
    out.member(Keys::STR_EDITABLE(), true);
  }
  return result;
}
