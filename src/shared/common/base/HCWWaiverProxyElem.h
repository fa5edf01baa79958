// HCWWaiverProxyElem.h: the base of model objects that a rule waiver of the host can name.
#pragma once

#include "base/HATAttrObj.h"

#include <string>

/// A model object that the host's waiver mechanism can name: it has an object type (which kind of object
/// it is to the host) and a text by which a waiver names it.
class HCWWaiverProxyElem : public HATAttrObj {
 public:
  /// The host's number for this kind of object.
  int getObjType() const { return objType_; }
  /// The text by which a waiver names this object.
  virtual std::string getStringForObj() const = 0;

 protected:
  explicit HCWWaiverProxyElem(int objType) : objType_(objType) {}

 private:
  int objType_;
};
