// HABMRegisterField.h: a bit field of a register: a bit range with an access and a reset value.
#pragma once

#include "blockmodel/HABMAddrValue.h"
#include "blockmodel/HABMChildList.h"

#include <string>

class HABMRegister;

/// A named bit range of a register. Nothing checks it against the register's width. Only the register
/// makes one.
class HABMRegisterField {
 public:
  /// The permitted access; the same words as an address block's access, kept as a type of its own.
  enum FieldAccess {
    ACCESS_READ_WRITE,
    ACCESS_READ_ONLY,
    ACCESS_WRITE_ONLY,
    ACCESS_WRITEONCE,
    ACCESS_READ_WRITEONCE,
    ACCESS_UNKNOWN
  };

  HABMRegisterField(HABMRegisterField const&) = delete;
  HABMRegisterField& operator=(HABMRegisterField const&) = delete;

  /// The owning register; never null.
  HABMRegister const* getParent() const { return parent_; }
  /// The owning register; never null.
  HABMRegister* getParent() { return parent_; }
  /// The name, unique among the register's fields.
  std::string const& getName() const { return name_; }
  /// The register's path, terminated, then the name ("/u1/m/regs/ctrl/en").
  std::string getPath() const;

  /// The access. Owners set it on a new field; until then it reads ACCESS_READ_WRITE.
  FieldAccess getAccess() const { return access_; }
  /// Sets the access.
  void setAccess(FieldAccess const& access) { access_ = access; }
  /// The index of the lowest bit; 0 by default.
  unsigned int getOffset() const { return offset_; }
  /// Sets the lowest bit, unchecked.
  void setOffset(unsigned int const& offset) { offset_ = offset; }
  /// The number of bits; 1 by default.
  unsigned int getWidth() const { return width_; }
  /// Sets the number of bits, unchecked.
  void setWidth(unsigned int const& width) { width_ = width; }
  /// The reset value; 0 by default.
  HABMAddrValue const& getReset() const { return reset_; }
  /// Sets the reset value, unchecked.
  void setReset(HABMAddrValue const& reset) { reset_ = reset; }

  /// "read_write", "read_only", "write_only", "writeonce" or "read_writeonce", in any case and with "-"
  /// for "_"; ACCESS_UNKNOWN otherwise.
  static FieldAccess encodeFieldAccess(std::string text);
  /// The text of an access; empty for ACCESS_UNKNOWN.
  static std::string decodeFieldAccess(FieldAccess const& access);

 private:
  friend class HABMRegister;
  template <habm_detail::ChildKind>
  friend struct habm_detail::Kind;

  HABMRegisterField(HABMRegister* parent, std::string const& name);
  // Copies access, offset, width and reset; the name came with the creator.
  void clone(HABMRegisterField const& source);

  HABMRegister* parent_;
  std::string name_;
  // Settled here so that a field read before its owner sets an access holds a defined value.
  FieldAccess access_ = ACCESS_READ_WRITE;
  unsigned int offset_ = 0;
  unsigned int width_ = 1;
  HABMAddrValue reset_;
};
