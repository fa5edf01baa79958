// HABMJsonWriter.h: writes a block tree as a block model file (JSON).
#pragma once

#include "util/HUTFile.h"

#include <rapidjson/document.h>

#include <iosfwd>
#include <string>
#include <vector>

class HABMAddrAssign;
class HABMAddrBlock;
class HABMAddrSegment;
class HABMAddrSpace;
class HABMAttribute;
class HABMBlock;
class HABMGeneric;
class HABMMemoryMap;
class HABMParameter;
class HABMPort;
class HABMPortConnection;
class HABMRegister;
class HABMRegisterField;

/// Writes block model files. One `marshal` per kind of object adds that object's members, in a fixed
/// order, to a JSON object; named children go through one collection scheme.
class HABMJsonWriter {
 public:
  /// Writes `block` as the file's "top_block". False, with "@90-7@" and the full path, on any failure;
  /// a file that existed is then left as it was, unless `removeFirst` had it deleted first.
  static bool writeBlock(HUTFile const& file, HABMBlock const& block, bool const& removeFirst);

 private:
  using Value = rapidjson::Value;
  using Allocator = rapidjson::Document::AllocatorType;

  explicit HABMJsonWriter(HUTFile file) : file_(std::move(file)) {}

  bool marshal(HABMBlock const& block, std::ostream& out) const;
  bool marshal(rapidjson::Document const& document, std::ostream& out) const;

  bool marshal(HABMBlock const& block, Value& object, Allocator& allocator) const;
  bool marshal(HABMAttribute const& attribute, Value& object, Allocator& allocator) const;
  bool marshal(HABMGeneric const& generic, Value& object, Allocator& allocator) const;
  bool marshal(HABMParameter const& parameter, Value& object, Allocator& allocator) const;
  bool marshal(HABMPort const& port, Value& object, Allocator& allocator) const;
  bool marshal(HABMPortConnection const& connection, Value& object, Allocator& allocator) const;
  bool marshal(HABMAddrSpace const& space, Value& object, Allocator& allocator) const;
  bool marshal(HABMAddrSegment const& segment, Value& object, Allocator& allocator) const;
  bool marshal(HABMMemoryMap const& map, Value& object, Allocator& allocator) const;
  bool marshal(HABMAddrBlock const& block, Value& object, Allocator& allocator) const;
  bool marshal(HABMRegister const& reg, Value& object, Allocator& allocator) const;
  bool marshal(HABMRegisterField const& field, Value& object, Allocator& allocator) const;
  bool marshal(HABMAddrAssign const& assign, Value& object, Allocator& allocator) const;

  /// Adds `children` under `key` of `group` as an object keyed by the children's names, each marshalled
  /// into its own object; children without members and an empty collection are left out.
  template <class T>
  bool marshalCollection(Value& group, std::string const& key, std::vector<T*> const& children,
                         Allocator& allocator) const;

  HUTFile file_;
};
