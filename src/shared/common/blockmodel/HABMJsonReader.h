// HABMJsonReader.h: reads a block model file (JSON) into a block tree.
#pragma once

#include "util/HUTFile.h"

#include <iosfwd>
#include <memory>
#include <set>
#include <string>

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

/// Reads block model files into blocks through the model's own factories and setters, so that every rule
/// of the model holds for a file too. One `unmarshal` per kind of object; named children go through one
/// collection scheme.
class HABMJsonReader {
 public:
  /// MODE_REPLACE empties each child container before reading it; any other value adds to what is there.
  enum Mode { MODE_MERGE = 0, MODE_REPLACE = 1 };

  /// Reads the file's "top_block" into `block`. False, with "@90-4@" and the full path, on any failure;
  /// `block` then keeps what was read before the failure.
  static bool readBlock(HUTFile const& file, HABMBlock& block, Mode const& mode);

  /// Reads the file into a new top block named `name`; null, with "@90-4@" and the full path, on any
  /// failure. The file is read as it streams in, a block at a time, when it can be.
  static std::unique_ptr<HABMBlock> readTopBlock(HUTFile const& file, std::string const& name);

  /// Sends "@90-4@" for the file at `path`; never throws.
  static void reportFailedRead(std::string const& path) noexcept;

  /// The depth of sub-blocks below the top block that a file always holds.
  static constexpr unsigned MAX_BLOCK_DEPTH = 100000;
  /// Documents nested deeper than this are refused as a parse error, and the writer refuses to write one:
  /// each level of sub-blocks nests three deeper, the document's frame two, and a register field sits
  /// nine below its block. It bounds the memory a hostile file can make the reader spend.
  static constexpr unsigned MAX_NESTING = 3 * MAX_BLOCK_DEPTH + 2 + 9;

 private:
  /// One JSON value of the document being read; the JSON library stays in the source.
  class Value;
  /// The parser's handler of a streamed read.
  class Stream;

  HABMJsonReader(HUTFile file, Mode mode) : file_(std::move(file)), mode_(mode) {}

  bool unmarshal(std::istream& in, HABMBlock& block) const;

  /// A block's own fields and the collections read before its sub-blocks; false when its read stops there.
  bool readHead(Value const& object, HABMBlock& block) const;
  /// The collections read after a block's sub-blocks.
  bool readTail(Value const& object, HABMBlock& block) const;
  /// What happens to a block's sub-blocks before the file's are read: in MODE_REPLACE they go.
  void enterSubBlocks(HABMBlock& block) const;
  template <class Kinds>
  bool readCollections(Value const& object, HABMBlock& block, Kinds kinds) const;

  bool unmarshal(Value const& object, HABMBlock& block) const;
  bool unmarshal(Value const& object, HABMAttribute& attribute) const;
  bool unmarshal(Value const& object, HABMGeneric& generic) const;
  bool unmarshal(Value const& object, HABMParameter& parameter) const;
  bool unmarshal(Value const& object, HABMPort& port) const;
  bool unmarshal(Value const& object, HABMPortConnection& connection) const;
  bool unmarshal(Value const& object, HABMAddrSpace& space) const;
  bool unmarshal(Value const& object, HABMAddrSegment& segment) const;
  bool unmarshal(Value const& object, HABMMemoryMap& map) const;
  bool unmarshal(Value const& object, HABMAddrBlock& block) const;
  bool unmarshal(Value const& object, HABMRegister& reg) const;
  bool unmarshal(Value const& object, HABMRegisterField& field) const;
  bool unmarshal(Value const& object, HABMAddrAssign& assign) const;
  bool unmarshal(Value const& object, HABMInterface& iface) const;
  bool unmarshal(Value const& object, HABMPortMap& portMap) const;
  bool unmarshal(Value const& object, HABMAddrAperture& aperture) const;
  bool unmarshal(Value const& object, HABMBridge& bridge) const;
  bool unmarshal(Value const& object, HABMAddrRemap& remap) const;
  bool unmarshal(Value const& object, HABMInterfaceConnection& connection) const;
  bool unmarshal(Value const& object, HABMNocInterface& iface) const;
  bool unmarshal(Value const& object, HABMNocConnection& connection) const;

  /// Reads the array `key` of `object` into a set that starts as `current` (empty in MODE_REPLACE), each
  /// element read into a default value and inserted unless an equal one is there; absent or not an array,
  /// nothing is added. The set is handed to `store` whatever happens, so what was read before a failed
  /// element stays; false when an element failed.
  template <class T, class Store>
  bool unmarshalSet(Value const& object, std::string const& key, std::set<T> const& current,
                    Store&& store) const;

  /// Reads the collection of kind `Kind` of `owner` from `group` (null when the group is absent): in
  /// MODE_REPLACE the owner's container is cleared first; then each member becomes a child through the
  /// kind's public creator and is read into it. False when a child could not be made or read; the other
  /// members are still read.
  template <class Kind>
  bool unmarshalCollection(Value const* group, typename Kind::Owner& owner) const;

  bool replacing() const { return mode_ == MODE_REPLACE; }

  HUTFile file_;
  Mode mode_;
};
