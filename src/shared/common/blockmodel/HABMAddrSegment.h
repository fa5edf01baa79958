// HABMAddrSegment.h: a named part of an address space: an aperture with a memory type.
#pragma once

#include "blockmodel/HABMAddrAperture.h"
#include "blockmodel/HABMChildList.h"

#include <string>

class HABMAddrSpace;

/// A segment of an address space: where it lies (one aperture) and what kind of access it serves. Nothing
/// ties it to its space's range or to its siblings; overlaps are representable. Only the space makes one.
class HABMAddrSegment {
 public:
  /// What a segment is for. Its own vocabulary, not that of address blocks.
  enum MemoryType { TYPE_APERTURE, TYPE_BOTH, TYPE_DATA, TYPE_INSTRUCTION, TYPE_RESERVED, TYPE_UNKNOWN };

  HABMAddrSegment(HABMAddrSegment const&) = delete;
  HABMAddrSegment& operator=(HABMAddrSegment const&) = delete;

  /// The owning space; never null.
  HABMAddrSpace const* getParent() const { return parent_; }
  /// The owning space; never null.
  HABMAddrSpace* getParent() { return parent_; }
  /// The name; unique among the space's segments unless generated.
  std::string const& getName() const { return name_; }
  /// The space's path, terminated, then the name ("/u1/s/seg").
  std::string getPath() const;

  /// The memory type; TYPE_BOTH by default.
  MemoryType getMemoryType() const { return memoryType_; }
  /// Sets the memory type.
  void setMemoryType(MemoryType const& memoryType) { memoryType_ = memoryType; }
  /// Where the segment lies; base 0 and range 64K by default.
  HABMAddrAperture const& getAperture() const { return aperture_; }
  /// Replaces base and range.
  void setAperture(HABMAddrAperture const& aperture) { aperture_ = aperture; }
  /// The aperture's base.
  HABMAddrValue getOffset() const { return aperture_.getBaseAddress(); }
  /// Moves the aperture's base; the range stays.
  void setOffset(HABMAddrValue const& offset) { aperture_.setBaseAddress(offset); }
  /// The aperture's range.
  HABMAddrValue getRange() const { return aperture_.getRange(); }
  /// Sets the aperture's range; the base stays.
  void setRange(HABMAddrValue const& range) { aperture_.setRange(range); }

  /// "aperture", "both", "data", "instruction" or "reserved" in any case; TYPE_UNKNOWN for anything else.
  static MemoryType encodeMemoryType(std::string text);
  /// The text of a type; empty for TYPE_UNKNOWN.
  static std::string decodeMemoryType(MemoryType const& memoryType);

 protected:
  friend class HABMAddrSpace;
  template <habm_detail::ChildKind>
  friend struct habm_detail::Kind;

  HABMAddrSegment(HABMAddrSpace* parent, std::string const& name);
  // Copies the memory type and the aperture; the name came with the creator.
  void clone(HABMAddrSegment const& source);

 private:
  HABMAddrSpace* parent_;
  std::string name_;
  MemoryType memoryType_ = TYPE_BOTH;
  HABMAddrAperture aperture_;
};
