// HABMAddrBlock.h: an address block of a memory map: an aperture with a memory type, an access and registers.
#pragma once

#include "base/HATAttrObj.h"
#include "blockmodel/HABMAddrAperture.h"
#include "blockmodel/HABMCachedObject.h"
#include "blockmodel/HABMChildList.h"

#include <string>
#include <vector>

class HABMMemoryMap;
class HABMRegister;

/// A named aperture within a memory map, relative to the map, with what lies behind it and its permitted
/// access. Nothing checks it against the map's range or its siblings. Only the map makes one; the block
/// owns its registers.
class HABMAddrBlock : public HATAttrObj, private HABMCachedObject<HABMAddrBlock> {
 public:
  /// What lies behind the block. Its own vocabulary, not that of segments.
  enum MemoryType { TYPE_APERTURE, TYPE_REGISTER, TYPE_MEMORY, TYPE_FLASH, TYPE_RESERVED, TYPE_UNKNOWN };
  /// The permitted access.
  enum MemoryAccess {
    ACCESS_READ_WRITE,
    ACCESS_READ_ONLY,
    ACCESS_WRITE_ONLY,
    ACCESS_WRITEONCE,
    ACCESS_READ_WRITEONCE,
    ACCESS_UNKNOWN
  };

  ~HABMAddrBlock() override;
  HABMAddrBlock(HABMAddrBlock const&) = delete;
  HABMAddrBlock& operator=(HABMAddrBlock const&) = delete;

  /// The owning map; never null.
  HABMMemoryMap const* getParent() const { return parent_; }
  /// The owning map; never null.
  HABMMemoryMap* getParent() { return parent_; }
  /// The name, unique among the map's address blocks.
  std::string const& getName() const { return name_; }
  /// The map's path, terminated, then the name ("/u1/m/regs").
  std::string getPath() const;

  /// The memory type; TYPE_REGISTER by default.
  MemoryType getMemoryType() const { return memoryType_; }
  /// Sets the memory type.
  void setMemoryType(MemoryType const& memoryType) { memoryType_ = memoryType; }
  /// The access; ACCESS_READ_WRITE by default.
  MemoryAccess getMemoryAccess() const { return memoryAccess_; }
  /// Sets the access.
  void setMemoryAccess(MemoryAccess const& memoryAccess) { memoryAccess_ = memoryAccess; }
  /// Where the block lies in its map; base 0 and range 64K by default.
  HABMAddrAperture const& getAperture() const { return aperture_; }
  /// Replaces base and range.
  void setAperture(HABMAddrAperture const& aperture) { aperture_ = aperture; }
  /// The aperture's base, relative to the map.
  HABMAddrValue getOffset() const { return aperture_.getBaseAddress(); }
  /// Moves the aperture's base; the range stays.
  void setOffset(HABMAddrValue const& offset) { aperture_.setBaseAddress(offset); }
  /// The aperture's range.
  HABMAddrValue getRange() const { return aperture_.getRange(); }
  /// Sets the aperture's range; the base stays.
  void setRange(HABMAddrValue const& range) { aperture_.setRange(range); }

  /// Appends a register; null, silently, for an empty name, a name with "/" or a taken name. The block
  /// owns the result.
  HABMRegister* createRegister(std::string const& name);
  /// The first register of that exact name, or null.
  HABMRegister* getRegister(std::string const& name) const;
  /// The registers in creation order; the block keeps ownership.
  std::vector<HABMRegister*> getRegisters() const;
  /// Destroys the first register of that name; false, silently, when there is none.
  bool removeRegister(std::string const& name);
  /// Destroys every register, silently.
  void clearRegisters();

  /// "aperture", "register", "memory", "flash" or "reserved" in any case; TYPE_UNKNOWN otherwise.
  static MemoryType encodeMemoryType(std::string text);
  /// The text of a type; empty for TYPE_UNKNOWN.
  static std::string decodeMemoryType(MemoryType const& memoryType);
  /// "read_write", "read_only", "write_only", "writeonce" or "read_writeonce", in any case and with "-"
  /// for "_"; ACCESS_UNKNOWN otherwise ("write-once" included).
  static MemoryAccess encodeMemoryAccess(std::string text);
  /// The text of an access; empty for ACCESS_UNKNOWN.
  static std::string decodeMemoryAccess(MemoryAccess const& memoryAccess);

 private:
  friend class HABMMemoryMap;
  template <habm_detail::ChildKind>
  friend struct habm_detail::Kind;

  HABMAddrBlock(HABMMemoryMap* parent, std::string const& name);
  // Copies type, access, aperture and the registers; the name came with the creator.
  void clone(HABMAddrBlock const& source);

  HABMMemoryMap* parent_;
  std::string name_;
  MemoryType memoryType_ = TYPE_REGISTER;
  MemoryAccess memoryAccess_ = ACCESS_READ_WRITE;
  HABMAddrAperture aperture_;
  HABMChildList<HABMRegister> registers_;
};
