// HATAttrObj.h: the empty polymorphic base of the host's attributed objects.
#pragma once

/// Base class that lets a host hold model objects through one pointer type. It has no data; its only
/// virtual member is the destructor.
class HATAttrObj {
 public:
  virtual ~HATAttrObj() = default;

 protected:
  HATAttrObj() = default;
  HATAttrObj(HATAttrObj const&) = default;
  HATAttrObj& operator=(HATAttrObj const&) = default;
  HATAttrObj(HATAttrObj&&) = default;
  HATAttrObj& operator=(HATAttrObj&&) = default;
};
