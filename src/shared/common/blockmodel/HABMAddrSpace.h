// HABMAddrSpace.h: an address space of a block: what a master-side interface addresses, with its segments.
#pragma once

#include "base/HATAttrObj.h"
#include "blockmodel/HABMAddrValue.h"
#include "blockmodel/HABMCachedObject.h"
#include "blockmodel/HABMChildList.h"

#include <string>
#include <vector>

class HABMAddrSegment;
class HABMBlock;

/// A named address space on a block: a total range and named segments in creation order. Only the block
/// makes one; the space owns its segments and hands out plain pointers.
class HABMAddrSpace : public HATAttrObj, private HABMCachedObject<HABMAddrSpace> {
 public:
  ~HABMAddrSpace() override;
  HABMAddrSpace(HABMAddrSpace const&) = delete;
  HABMAddrSpace& operator=(HABMAddrSpace const&) = delete;

  /// The owning block; never null.
  HABMBlock const* getParent() const { return parent_; }
  /// The name, unique among the block's address spaces.
  std::string const& getName() const { return name_; }
  /// The total size of the space; 4G by default. Independent of the segments.
  HABMAddrValue const& getRange() const { return range_; }
  /// Sets the total size; the segments are not touched or checked.
  void setRange(HABMAddrValue const& range) { range_ = range; }
  /// The block's instance path, terminated, then the name ("/u1/s"; "/s" on a top block).
  std::string getPath() const;

  /// Appends a segment; an empty name becomes "segment_<count>". Null, silently, for a name with "/" or a
  /// name already taken. The space owns the result.
  HABMAddrSegment* createAddrSegment(std::string const& name);
  /// The first segment of that exact name, or null.
  HABMAddrSegment* getAddrSegment(std::string const& name) const;
  /// The segments in creation order; the space keeps ownership.
  std::vector<HABMAddrSegment*> getAddrSegments() const;
  /// Destroys the first segment of that name; false, silently, when there is none.
  bool removeAddrSegment(std::string const& name);
  /// Destroys every segment, silently.
  void clearAddrSegments();

 private:
  friend class HABMBlock;
  template <habm_detail::ChildKind>
  friend struct habm_detail::Kind;

  HABMAddrSpace(HABMBlock* parent, std::string const& name);
  // Copies the range and the segments of `source` into this space, which already bears its name.
  void clone(HABMAddrSpace const& source);

  HABMBlock* parent_;
  std::string name_;
  HABMAddrValue range_;
  HABMChildList<HABMAddrSegment> addrSegments_;
};
