// HABMAddrAssign.h: an address assignment of a block: a source address object placed at an aperture of a
// target, both named by path.
#pragma once

#include "base/HATAttrObj.h"
#include "blockmodel/HABMAddrAperture.h"
#include "blockmodel/HABMCachedObject.h"
#include "blockmodel/HABMChildList.h"

#include <string>
#include <vector>

class HABMAddrBlock;
class HABMAddrSegment;
class HABMAddrSpace;
class HABMBlock;
class HABMMemoryMap;

/// Records that a source (an address block or segment) is placed at an aperture of a target (an address
/// space, memory map, segment or address block). Both ends are paths kept relative to the owning block and
/// resolved through the top block on every call, so a removed or renamed end only stops resolving. Only
/// the block makes one.
class HABMAddrAssign : public HATAttrObj, private HABMCachedObject<HABMAddrAssign> {
 public:
  /// The kind of the record.
  enum AssignType { TYPE_ASSIGNMENT, TYPE_EXCLUSION, TYPE_INTERNAL, TYPE_UNKNOWN };

  ~HABMAddrAssign() override;
  HABMAddrAssign(HABMAddrAssign const&) = delete;
  HABMAddrAssign& operator=(HABMAddrAssign const&) = delete;

  /// The owning block; never null.
  HABMBlock const* getParent() const { return parent_; }
  /// The name, unique among the block's assignments.
  std::string const& getName() const { return name_; }
  /// The block's instance path, terminated, then the name.
  std::string getPath() const;

  /// The kind; TYPE_ASSIGNMENT by default.
  AssignType getAssignType() const { return assignType_; }
  /// Sets the kind.
  void setAssignType(AssignType const& assignType) { assignType_ = assignType; }
  /// "assignment", "exclusion" or "internal" in any case; TYPE_UNKNOWN otherwise.
  static AssignType encodeAssignType(std::string text);
  /// The text of a kind; empty for TYPE_UNKNOWN.
  static std::string decodeAssignType(AssignType const& assignType);

  /// The assigned span; base and range 0 (not valid) until set.
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

  /// Stores the path made relative to the owning block, whatever it turns out to be; false when that
  /// leaves nothing (an empty path, or an absolute one outside the block or naming the block itself).
  bool setSourcePath(std::string const& path);
  /// As setSourcePath, for the target.
  bool setTargetPath(std::string const& path);
  /// The stored source path, or with `absolute` that path put under the block's instance path; empty
  /// when unset.
  std::string getSourcePath(bool const& absolute) const;
  /// As getSourcePath, for the target.
  std::string getTargetPath(bool const& absolute) const;

  /// The address block that the source path names now, or null.
  HABMAddrBlock* getSourceAddrBlock() const;
  /// The segment that the source path names now, or null.
  HABMAddrSegment* getSourceAddrSegment() const;
  /// The address block that the target path names now, or null.
  HABMAddrBlock* getTargetAddrBlock() const;
  /// The segment that the target path names now, or null.
  HABMAddrSegment* getTargetAddrSegment() const;
  /// The space that the target path names, itself or through one of its segments; null when neither.
  HABMAddrSpace* getTargetAddrSpace() const;
  /// The memory map that the target path names, itself or through one of its address blocks; null when
  /// neither.
  HABMMemoryMap* getTargetMemoryMap() const;

  /// The assignments, in list order, whose absolute source path is the block's path exactly; empty for a
  /// null block.
  static std::vector<HABMAddrAssign*> filterByAddrBlock(std::vector<HABMAddrAssign*> const& assigns,
                                                        HABMAddrBlock const* block);
  /// The assignments, in list order, whose absolute target path is the space's path exactly (a target
  /// that names one of its segments does not count); empty for a null space.
  static std::vector<HABMAddrAssign*> filterByAddrSpace(std::vector<HABMAddrAssign*> const& assigns,
                                                        HABMAddrSpace const* space);

 protected:
  friend class HABMBlock;
  template <habm_detail::ChildKind>
  friend struct habm_detail::Kind;

  HABMAddrAssign(HABMBlock* parent, std::string const& name);
  // Copies the kind, both stored (relative) paths and the aperture; the name came with the creator.
  void clone(HABMAddrAssign const& source);

 private:
  HABMBlock* parent_;
  std::string name_;
  AssignType assignType_ = TYPE_ASSIGNMENT;
  std::string sourcePath_;
  std::string targetPath_;
  HABMAddrAperture aperture_;
};
