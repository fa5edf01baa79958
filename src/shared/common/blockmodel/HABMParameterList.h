// HABMParameterList.h: the named parameters an interface, a NoC object or a register carries.
#pragma once

#include "blockmodel/HABMChildList.h"

#include <string>
#include <vector>

class HABMParameter;

/// The parameters of one owner (a bus or NoC interface, a NoC connection, a register), in creation order,
/// under the one child discipline: a name must be non-empty, hold no "/" and be free (and, on a NoC
/// connection, be one that the link takes). The owner's traces name it by its path.
template <class Owner>
class HABMParameterList {
 public:
  /// Appends a parameter; null, with a failure trace, when the name is refused. The owner keeps ownership.
  HABMParameter* createParameter(std::string const& name, std::string const& value);
  /// The first parameter of that exact name, or null.
  HABMParameter* getParameter(std::string const& name) const { return parameters_.get(name); }
  /// The parameters in creation order; the owner keeps ownership.
  std::vector<HABMParameter*> getParameters() const { return parameters_.list(); }
  /// True when there is a parameter.
  bool hasParameters() const { return !parameters_.empty(); }
  /// Sets an existing parameter's value, or creates it when `create` is set; null when it is missing and
  /// not created, or when the name is refused.
  HABMParameter* setParameter(std::string const& name, std::string const& value, bool const& create);
  /// Destroys the first parameter of that name; false, silently, when there is none.
  bool removeParameter(std::string const& name);
  /// Destroys every parameter, silently.
  void clearParameters() { parameters_.clear(); }

 protected:
  HABMParameterList() = default;
  ~HABMParameterList() = default;
  HABMParameterList(HABMParameterList const&) = delete;
  HABMParameterList& operator=(HABMParameterList const&) = delete;

  /// Re-creates the parameters of `source` in order, after clearing these.
  void cloneParameters(HABMParameterList const& source);

 private:
  template <habm_detail::ChildKind>
  friend struct habm_detail::Kind;

  HABMChildList<HABMParameter> parameters_;
};
