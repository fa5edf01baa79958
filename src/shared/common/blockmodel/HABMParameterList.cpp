// HABMParameterList.cpp: the parameter members of each owner, forwarded to the child rules through the
// owner's parameter kind.
#include "blockmodel/HABMParameterList.h"

#include "blockmodel/HABMParameter.h"
#include "blockmodel/detail/HABMKinds.h"

using habm_detail::ChildKind;
using habm_detail::Kind;

namespace {

template <class Owner>
struct ParameterKindOf;
template <>
struct ParameterKindOf<HABMInterface> {
  using type = Kind<ChildKind::INTERFACE_PARAMETER>;
};
template <>
struct ParameterKindOf<HABMNocInterface> {
  using type = Kind<ChildKind::NOC_INTERFACE_PARAMETER>;
};
template <>
struct ParameterKindOf<HABMNocConnection> {
  using type = Kind<ChildKind::NOC_CONNECTION_PARAMETER>;
};
template <>
struct ParameterKindOf<HABMRegister> {
  using type = Kind<ChildKind::REGISTER_PARAMETER>;
};

}  // namespace

template <class Owner>
HABMParameter* HABMParameterList<Owner>::createParameter(std::string const& name, std::string const& value) {
  using K = typename ParameterKindOf<Owner>::type;
  return habm_detail::createChild<K>(static_cast<Owner&>(*this), name, false, value).child;
}

template <class Owner>
HABMParameter* HABMParameterList<Owner>::setParameter(std::string const& name, std::string const& value,
                                                      bool const& create) {
  using K = typename ParameterKindOf<Owner>::type;
  return habm_detail::setChildValue<K>(static_cast<Owner&>(*this), name, value, create);
}

template <class Owner>
bool HABMParameterList<Owner>::removeParameter(std::string const& name) {
  using K = typename ParameterKindOf<Owner>::type;
  return habm_detail::removeChild<K>(static_cast<Owner&>(*this), name);
}

template <class Owner>
void HABMParameterList<Owner>::cloneParameters(HABMParameterList const& source) {
  using K = typename ParameterKindOf<Owner>::type;
  clearParameters();
  auto& owner = static_cast<Owner&>(*this);
  auto const rule = habm_detail::nameRuleOf<K>(owner, 0);
  for (HABMParameter const* parameter : source.parameters_) {
    habm_detail::createChildUnder<K>(rule, owner, parameter->getName(), false, parameter->getValue());
  }
}

template class HABMParameterList<HABMInterface>;
template class HABMParameterList<HABMNocInterface>;
template class HABMParameterList<HABMNocConnection>;
template class HABMParameterList<HABMRegister>;
