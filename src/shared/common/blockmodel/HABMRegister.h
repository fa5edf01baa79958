// HABMRegister.h: a register of an address block: a word with access, values, bit fields and parameters.
#pragma once

#include "blockmodel/HABMAddrValue.h"
#include "blockmodel/HABMChildList.h"
#include "blockmodel/HABMParameterList.h"

#include <string>
#include <vector>

class HABMAddrBlock;
class HABMParameter;
class HABMRegisterField;

/// A named word inside an address block. The model only stores it: offset, width, values and fields are
/// not checked against each other. Only the address block makes one; the register owns its fields and
/// parameters.
class HABMRegister : public HABMParameterList<HABMRegister> {
 public:
  /// The permitted access; the same words as an address block's access, kept as a type of its own.
  enum RegisterAccess {
    ACCESS_READ_WRITE,
    ACCESS_READ_ONLY,
    ACCESS_WRITE_ONLY,
    ACCESS_WRITEONCE,
    ACCESS_READ_WRITEONCE,
    ACCESS_UNKNOWN
  };

  ~HABMRegister();
  HABMRegister(HABMRegister const&) = delete;
  HABMRegister& operator=(HABMRegister const&) = delete;

  /// The owning address block; never null.
  HABMAddrBlock const* getParent() const { return parent_; }
  /// The owning address block; never null.
  HABMAddrBlock* getParent() { return parent_; }
  /// The name, unique among the address block's registers.
  std::string const& getName() const { return name_; }
  /// The address block's path, terminated, then the name ("/u1/m/regs/ctrl").
  std::string getPath() const;

  /// Free text; empty by default.
  std::string const& getDescription() const { return description_; }
  /// Sets the description.
  void setDescription(std::string const& description) { description_ = description; }
  /// The access; ACCESS_READ_WRITE by default.
  RegisterAccess getAccess() const { return access_; }
  /// Sets the access.
  void setAccess(RegisterAccess const& access) { access_ = access; }
  /// The offset within the address block; 0 by default.
  HABMAddrValue const& getOffset() const { return offset_; }
  /// Sets the offset, unchecked.
  void setOffset(HABMAddrValue const& offset) { offset_ = offset; }
  /// The width in bits; 32 by default.
  unsigned int getWidth() const { return width_; }
  /// Sets the width, unchecked.
  void setWidth(unsigned int const& width) { width_ = width; }
  /// The current value; 0 by default.
  HABMAddrValue const& getValue() const { return value_; }
  /// Sets the current value, unchecked.
  void setValue(HABMAddrValue const& value) { value_ = value; }
  /// The reset value; 0 by default.
  HABMAddrValue const& getReset() const { return reset_; }
  /// Sets the reset value, unchecked.
  void setReset(HABMAddrValue const& reset) { reset_ = reset; }

  /// Appends a field; null, silently, for an empty name, a name with "/" or a taken name. The register owns
  /// the result.
  HABMRegisterField* createField(std::string const& name);
  /// The first field of that exact name, or null.
  HABMRegisterField* getField(std::string const& name) const;
  /// The fields in creation order; the register keeps ownership.
  std::vector<HABMRegisterField*> getFields() const;
  /// Destroys the first field of that name; false, silently, when there is none.
  bool removeField(std::string const& name);
  /// Destroys every field, silently.
  void clearFields();

  /// "read_write", "read_only", "write_only", "writeonce" or "read_writeonce", in any case and with "-"
  /// for "_"; ACCESS_UNKNOWN otherwise.
  static RegisterAccess encodeRegisterAccess(std::string text);
  /// The text of an access; empty for ACCESS_UNKNOWN.
  static std::string decodeRegisterAccess(RegisterAccess const& access);

 private:
  friend class HABMAddrBlock;
  template <habm_detail::ChildKind>
  friend struct habm_detail::Kind;

  HABMRegister(HABMAddrBlock* parent, std::string const& name);
  // Copies the scalars, the fields and the parameters; the name came with the creator.
  void clone(HABMRegister const& source);

  HABMAddrBlock* parent_;
  std::string name_;
  std::string description_;
  RegisterAccess access_ = ACCESS_READ_WRITE;
  HABMAddrValue offset_;
  unsigned int width_ = 32;
  HABMAddrValue value_;
  HABMAddrValue reset_;
  HABMChildList<HABMRegisterField> fields_;
};
