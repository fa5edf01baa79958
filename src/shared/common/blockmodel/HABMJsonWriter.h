// HABMJsonWriter.h: writes a block tree as a block model file (JSON).
#pragma once

#include "util/HUTFile.h"

#include <iosfwd>
#include <set>
#include <string>
#include <vector>

class HABMAddrAperture;
class HABMAddrAssign;
class HABMAddrBlock;
class HABMAddrSegment;
class HABMAddrSpace;
class HABMAddrRemap;
class HABMAttribute;
class HABMBlock;
class HABMBridge;
class HABMGeneric;
class HABMInterface;
class HABMInterfaceConnection;
class HABMMemoryMap;
class HABMNocConnection;
class HABMNocInterface;
class HABMParameter;
class HABMPort;
class HABMPortConnection;
class HABMPortMap;
class HABMRegister;
class HABMRegisterField;

/// Writes block model files. One `marshal` per kind of object emits that object's members in a fixed
/// order; named children go through one collection scheme.
class HABMJsonWriter {
 public:
  /// Writes `block` as the file's "top_block". False, with "@90-7@" and the full path, on any failure;
  /// a file that existed is then left as it was, unless `removeFirst` had it deleted first.
  static bool writeBlock(HUTFile const& file, HABMBlock const& block, bool const& removeFirst);

  /// Receives the members of the file as the tree is walked.
  class Out;

 private:
  explicit HABMJsonWriter(HUTFile file) : file_(std::move(file)) {}

  /// Emits the whole file for `block`; false when a marshal failed or the stream did.
  bool marshal(HABMBlock const& block, std::ostream& out) const;

  bool marshal(HABMBlock const& block, Out& out) const;
  bool marshal(HABMAttribute const& attribute, Out& out) const;
  bool marshal(HABMGeneric const& generic, Out& out) const;
  bool marshal(HABMParameter const& parameter, Out& out) const;
  bool marshal(HABMPort const& port, Out& out) const;
  bool marshal(HABMPortConnection const& connection, Out& out) const;
  bool marshal(HABMAddrSpace const& space, Out& out) const;
  bool marshal(HABMAddrSegment const& segment, Out& out) const;
  bool marshal(HABMMemoryMap const& map, Out& out) const;
  bool marshal(HABMAddrBlock const& block, Out& out) const;
  bool marshal(HABMRegister const& reg, Out& out) const;
  bool marshal(HABMRegisterField const& field, Out& out) const;
  bool marshal(HABMAddrAssign const& assign, Out& out) const;
  bool marshal(HABMInterface const& iface, Out& out) const;
  bool marshal(HABMPortMap const& portMap, Out& out) const;
  bool marshal(HABMAddrAperture const& aperture, Out& out) const;
  bool marshal(HABMBridge const& bridge, Out& out) const;
  bool marshal(HABMAddrRemap const& remap, Out& out) const;
  bool marshal(HABMInterfaceConnection const& connection, Out& out) const;
  bool marshal(HABMNocInterface const& iface, Out& out) const;
  bool marshal(HABMNocConnection const& connection, Out& out) const;

  /// Writes the children of kind `Kind` of `owner` under the kind's key as an object keyed by their names,
  /// each marshalled into its own object; children without members and an empty collection are left out.
  template <class Kind>
  bool marshalCollection(Out& out, typename Kind::Owner const& owner) const;

  /// Writes the group object `key` of a block, holding the collections of `Kinds` in their order; left out
  /// when none of them has a child to show.
  template <class Kinds>
  bool marshalGroup(Out& out, std::string const& key, HABMBlock const& block, Kinds kinds) const;
  /// Writes the collections of `Kinds` of a block in their order.
  template <class Kinds>
  bool marshalCollections(Out& out, HABMBlock const& block, Kinds kinds) const;

  /// Writes a non-empty set of nameless values under `key` as an array of objects, in the set's order;
  /// an empty set is left out.
  template <class T>
  bool marshalArray(Out& out, std::string const& key, std::set<T> const& items) const;

  HUTFile file_;
};
