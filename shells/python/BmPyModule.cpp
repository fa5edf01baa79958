// BmPyModule.cpp: the Python module "blockmodel": files, the tree and its edits, the checks and the
// writers of the block model.
#include "blockmodel/HABMAddrAperture.h"
#include "blockmodel/HABMAddrSegment.h"
#include "blockmodel/HABMAddrValue.h"
#include "blockmodel/HABMAttribute.h"
#include "blockmodel/HABMBlockChecker.h"
#include "blockmodel/HABMGeneric.h"
#include "blockmodel/HABMInterface.h"
#include "blockmodel/HABMInterfaceConnection.h"
#include "blockmodel/HABMNamedValue.h"
#include "blockmodel/HABMNocPath.h"
#include "blockmodel/HABMParameter.h"
#include "blockmodel/HABMPort.h"
#include "blockmodel/HABMPortConnection.h"
#include "blockmodel/HABMSVlogWriter.h"
#include "blockmodel/HABMVlogWriter.h"
#include "blockmodel/HABMXdcWriter.h"
#include "msg/ComMsgMgr.h"
#include "util/HUTFile.h"

#include "BmPyHandles.h"

#include <functional>
#include <pybind11/operators.h>
#include <pybind11/stl.h>
#include <set>
#include <sstream>
#include <vector>

namespace bmpy {

std::unordered_map<HABMBlock const*, PyObject*>& treeOwners() {
  static std::unordered_map<HABMBlock const*, PyObject*> owners;
  return owners;
}

py::object adoptTree(std::unique_ptr<HABMBlock> top) {
  HABMBlock* native = top.get();
  // Not yet in the owners, so wrap makes a new object for it.
  py::object object = wrap(native);
  auto& handle = object.cast<Handle<HABMBlock>&>();
  handle.keeper = py::object();
  handle.owned = std::move(top);
  treeOwners()[native] = object.ptr();
  return object;
}

namespace {

// Texts reported by the caches' error hook, for tests that corrupt a pair on purpose.
std::vector<std::string>& cacheErrors() {
  static std::vector<std::string> errors;
  return errors;
}

template <class T>
bool markIfOfKind(py::handle object) {
  if (!py::isinstance<Handle<T>>(object)) {
    return false;
  }
  object.cast<Handle<T>&>().native = nullptr;
  return true;
}

void markInvalid(PyObject* object) {
  py::handle h(object);
  (void)(markIfOfKind<HABMBlock>(h) || markIfOfKind<HABMAddrSpace>(h) || markIfOfKind<HABMAddrBlock>(h) ||
         markIfOfKind<HABMAddrAssign>(h) || markIfOfKind<HABMNocInterface>(h) ||
         markIfOfKind<HABMNocConnection>(h));
}

void reportCacheError(char const* text) {
  cacheErrors().emplace_back(text);
  PySys_WriteStderr("blockmodel: %s\n", text);
}

// Collects the messages the library sends while it lives (traces left out).
class MessageCollector {
 public:
  MessageCollector()
      : guard_([this](ComMsgRecord const& record) {
          if (record.shape != ComMsgShape::SCOPED_TRACE) {
            records_.push_back(record);
          }
        }) {}
  std::vector<ComMsgRecord> const& records() const { return records_; }
  bool hasErrors() const {
    for (ComMsgRecord const& record : records_) {
      if ((record.mask & COM_MSG_ERROR) != 0) {
        return true;
      }
    }
    return false;
  }
  std::string joined() const {
    std::string text;
    for (ComMsgRecord const& record : records_) {
      text += (text.empty() ? "" : "; ") + record.text;
    }
    return text;
  }

 private:
  std::vector<ComMsgRecord> records_;
  ComMsgListenerGuard guard_;
};

// A design-rule finding as Python sees it.
struct Finding {
  std::string severity;
  std::string id;
  std::string text;
};

// Python ints of up to 128 bits to and from address values.
HABMAddrValue toAddr(py::handle value) {
  if (py::isinstance<HABMAddrValue>(value)) {
    return value.cast<HABMAddrValue>();
  }
  if (py::isinstance<py::str>(value)) {
    HABMAddrValue parsed(value.cast<std::string>());
    if (!parsed.isValid()) {
      throw py::value_error("not an address: '" + value.cast<std::string>() + "'");
    }
    return parsed;
  }
  py::int_ number = py::reinterpret_borrow<py::int_>(value);
  if (!py::isinstance<py::int_>(value) || number < py::int_(0) ||
      number >= (py::int_(1).attr("__lshift__")(128))) {
    throw py::value_error("an address is an int in [0, 2**128), a text or an AddrValue");
  }
  py::int_ mask((std::uint64_t{0} - 1));
  auto const low = number.attr("__and__")(mask).cast<std::uint64_t>();
  auto const high = number.attr("__rshift__")(64).cast<std::uint64_t>();
  return HABMAddrValue(high, low);
}

py::int_ toInt(HABMAddrValue const& value) {
  py::int_ high(value.getHigh64Value());
  return py::reinterpret_steal<py::int_>(
      PyNumber_Or(high.attr("__lshift__")(64).ptr(), py::int_(value.getUInt64Value()).ptr()));
}

// An enumeration set from its text; the unknown value (what every other text gives) is refused.
template <class E>
E encoded(E value, E unknown, std::string const& text, char const* what) {
  if (value == unknown) {
    throw py::value_error(std::string("not a ") + what + ": '" + text + "'");
  }
  return value;
}

template <class T>
py::list wrapAll(std::vector<T*> const& natives) {
  py::list out;
  for (T* native : natives) {
    out.append(wrap(native));
  }
  return out;
}

template <class C, class P>
py::list childrenOf(py::object const& owner, std::vector<std::string> const& names) {
  py::list out;
  for (std::string const& name : names) {
    out.append(py::cast(Child<C, P>{owner, name}));
  }
  return out;
}

template <class V>
std::vector<std::string> namesOf(std::vector<V*> const& items, std::string const& (V::*name)() const) {
  std::vector<std::string> names;
  for (V* item : items) {
    names.push_back((item->*name)());
  }
  return names;
}

template <class V>
py::dict valuesOf(std::vector<V*> const& items) {
  py::dict out;
  for (V* item : items) {
    out[py::str(item->getName())] = item->getValue();
  }
  return out;
}

// Looks a child up again on each use, so that a removed one raises instead of dangling.
template <class C, class P>
C& resolve(Child<C, P> const& child, C* found, char const* kind) {
  if (found == nullptr) {
    throw StaleObject(std::string("The ") + kind + " '" + child.name +
                      "' no longer exists: it was removed from its owner or renamed.");
  }
  return *found;
}

HABMPort& port(Child<HABMPort, HABMBlock> const& c) {
  return resolve(c, c.parent().getPort(c.name), "port");
}
HABMInterface& interface(Child<HABMInterface, HABMBlock> const& c) {
  return resolve(c, c.parent().getInterface(c.name), "interface");
}
HABMPortConnection& portConnection(Child<HABMPortConnection, HABMBlock> const& c) {
  return resolve(c, c.parent().getPortConnection(c.name), "port connection");
}
HABMInterfaceConnection& interfaceConnection(Child<HABMInterfaceConnection, HABMBlock> const& c) {
  return resolve(c, c.parent().getInterfaceConnection(c.name), "interface connection");
}
HABMMemoryMap& memoryMap(Child<HABMMemoryMap, HABMBlock> const& c) {
  return resolve(c, c.parent().getMemoryMap(c.name), "memory map");
}
HABMAddrSegment& segment(Child<HABMAddrSegment, HABMAddrSpace> const& c) {
  return resolve(c, c.parent().getAddrSegment(c.name), "address segment");
}

using PortRef = Child<HABMPort, HABMBlock>;
using InterfaceRef = Child<HABMInterface, HABMBlock>;
using PortConnectionRef = Child<HABMPortConnection, HABMBlock>;
using InterfaceConnectionRef = Child<HABMInterfaceConnection, HABMBlock>;
using MemoryMapRef = Child<HABMMemoryMap, HABMBlock>;
using SegmentRef = Child<HABMAddrSegment, HABMAddrSpace>;
using BlockH = Handle<HABMBlock>;
using SpaceH = Handle<HABMAddrSpace>;
using AddrBlockH = Handle<HABMAddrBlock>;
using AssignH = Handle<HABMAddrAssign>;
using NocIfH = Handle<HABMNocInterface>;
using NocConnH = Handle<HABMNocConnection>;

// Equality and hashing by the model object, so that two Python objects for one block compare equal.
template <class H, class Class>
void identity(Class& cls) {
  cls.def("__eq__", [](H const& self, py::object const& other) {
    return py::isinstance<H>(other) && other.cast<H const&>().native == self.native && self.native != nullptr;
  });
  cls.def("__hash__", [](H const& self) { return std::hash<void const*>()(&self.get()); });
  cls.def_property_readonly(
      "is_valid", [](H const& self) { return self.native != nullptr; }, "False once the model object died.");
}

void bindValues(py::module_& m) {
  py::class_<HABMAddrValue> addr(m, "AddrValue", "An unsigned 128-bit address.");
  addr.def(py::init([](py::object const& value) { return toAddr(value); }), py::arg("value") = 0)
      .def("__int__", &toInt)
      .def("__index__", &toInt)
      .def("__str__", [](HABMAddrValue const& v) { return v.getPrettyHexStringValue(); })
      .def("__repr__", [](HABMAddrValue const& v) { return "AddrValue('" + v.getHexStringValue() + "')"; })
      .def("__hash__", [](HABMAddrValue const& v) { return py::hash(toInt(v)); })
      .def("hex", [](HABMAddrValue const& v) { return v.getHexStringValue(); })
      .def("abbrev", [](HABMAddrValue const& v) { return v.getAbrvStringValue(); })
      .def_property_readonly("is_pow2", &HABMAddrValue::isPow2)
      .def(py::self + py::self)
      .def(py::self - py::self)
      .def(py::self * py::self)
      .def(py::self / py::self)
      .def(py::self % py::self)
      .def(py::self & py::self)
      .def(py::self | py::self)
      .def(py::self ^ py::self)
      .def(py::self == py::self)
      .def(py::self != py::self)
      .def(py::self < py::self)
      .def(py::self <= py::self)
      .def(py::self > py::self)
      .def(py::self >= py::self)
      .def("__lshift__", [](HABMAddrValue const& v, int n) { return v << n; })
      .def("__rshift__", [](HABMAddrValue const& v, int n) { return v >> n; })
      .def("__invert__", [](HABMAddrValue const& v) { return ~HABMAddrValue(v); });
  // Plain ints and texts mix with address values in arithmetic and comparisons.
  for (char const* op : {"__add__", "__sub__", "__mul__", "__floordiv__", "__mod__", "__and__", "__or__",
                         "__xor__", "__eq__", "__ne__", "__lt__", "__le__", "__gt__", "__ge__"}) {
    std::string const name = std::string(op) == "__floordiv__" ? "__truediv__" : op;
    py::object method = addr.attr(name.c_str());
    addr.attr(op) = py::cpp_function(
        [method](HABMAddrValue const& self, py::object const& other) {
          if (!py::isinstance<HABMAddrValue>(other) && !py::isinstance<py::int_>(other) &&
              !py::isinstance<py::str>(other)) {
            return py::reinterpret_borrow<py::object>(Py_NotImplemented);
          }
          return method(self, toAddr(other));
        },
        py::is_method(addr));
  }
  py::implicitly_convertible<py::int_, HABMAddrValue>();
  py::implicitly_convertible<py::str, HABMAddrValue>();

  py::class_<HABMAddrAperture> aperture(m, "Aperture", "A contiguous span of addresses: a base and a range.");
  aperture
      .def(py::init([](py::object const& base, py::object const& range) {
             return HABMAddrAperture(toAddr(base), toAddr(range));
           }),
           py::arg("base"), py::arg("range"))
      .def(py::init([](std::string const& text) {
             HABMAddrAperture parsed(text);
             if (!parsed.isValid()) {
               throw py::value_error("not an aperture: '" + text + "'");
             }
             return parsed;
           }),
           py::arg("text"))
      .def_property_readonly("base", &HABMAddrAperture::getBaseAddress)
      .def_property_readonly("range", &HABMAddrAperture::getRange)
      .def_property_readonly("high", &HABMAddrAperture::getHighAddress)
      .def_property_readonly("next", &HABMAddrAperture::getNextAddress)
      .def_property_readonly("is_aligned", &HABMAddrAperture::aligned)
      .def("overlaps", &HABMAddrAperture::overlaps)
      .def("issubset", &HABMAddrAperture::subset)
      .def("issuperset", &HABMAddrAperture::superset)
      .def("__contains__",
           [](HABMAddrAperture const& a, py::object const& v) {
             HABMAddrValue const value = toAddr(v);
             return a.isValid() && value >= a.getBaseAddress() && value <= a.getHighAddress();
           })
      .def("__and__", &HABMAddrAperture::intersection)
      .def("__or__", &HABMAddrAperture::unification)
      .def(py::self == py::self)
      .def(py::self != py::self)
      .def(py::self < py::self)
      .def("__hash__",
           [](HABMAddrAperture const& a) {
             return py::hash(py::make_tuple(toInt(a.getBaseAddress()), toInt(a.getRange())));
           })
      .def("__str__", [](HABMAddrAperture const& a) { return a.getBaseAbrvString(); })
      .def("__repr__", [](HABMAddrAperture const& a) { return "Aperture('" + a.getBaseAbrvString() + "')"; });

  py::class_<Finding>(m, "Finding", "One design-rule finding: severity, catalogue id and text.")
      .def_readonly("severity", &Finding::severity)
      .def_readonly("id", &Finding::id)
      .def_readonly("text", &Finding::text)
      .def("__str__", [](Finding const& f) { return f.severity + ": [" + f.id + "] " + f.text; })
      .def("__repr__", [](Finding const& f) { return "<Finding " + f.severity + " " + f.id + ">"; });
}

void bindChildren(py::module_& m) {
  py::class_<PortRef>(m, "Port", "A port of a block, found again by name on each use.")
      .def_property_readonly("name", [](PortRef const& c) { return port(c).getPortName(); })
      .def_property_readonly("path", [](PortRef const& c) { return port(c).getPortPath(); })
      .def_property_readonly("block", [](PortRef const& c) { return c.owner; })
      .def_property(
          "direction",
          [](PortRef const& c) { return HABMPort::decodePortDirection(port(c).getPortDirection()); },
          [](PortRef const& c, std::string const& text) {
            port(c).setPortDirection(
                encoded(HABMPort::encodePortDirection(text), HABMPort::DIR_UNKNOWN, text, "port direction"));
          })
      .def_property_readonly("type",
                             [](PortRef const& c) { return HABMPort::decodePortType(port(c).getPortType()); })
      .def_property(
          "left", [](PortRef const& c) { return port(c).getPortLeft(); },
          [](PortRef const& c, std::uint32_t v) { port(c).setPortLeft(v); })
      .def_property(
          "right", [](PortRef const& c) { return port(c).getPortRight(); },
          [](PortRef const& c, std::uint32_t v) { port(c).setPortRight(v); })
      .def_property_readonly("width", [](PortRef const& c) { return port(c).getPortWidth(); })
      .def("__repr__", [](PortRef const& c) { return "<Port " + port(c).getPortPath() + ">"; });

  py::class_<InterfaceRef>(m, "Interface", "A bus interface of a block, found again by name on each use.")
      .def_property_readonly("name", [](InterfaceRef const& c) { return interface(c).getInterfaceName(); })
      .def_property_readonly("path", [](InterfaceRef const& c) { return interface(c).getInterfacePath(); })
      .def_property_readonly("block", [](InterfaceRef const& c) { return c.owner; })
      .def_property(
          "vlnv", [](InterfaceRef const& c) { return interface(c).getInterfaceVlnv(); },
          [](InterfaceRef const& c, std::string const& v) { interface(c).setInterfaceVlnv(v); })
      .def_property(
          "mode",
          [](InterfaceRef const& c) {
            return HABMInterface::decodeInterfaceMode(interface(c).getInterfaceMode());
          },
          [](InterfaceRef const& c, std::string const& text) {
            interface(c).setInterfaceMode(encoded(HABMInterface::encodeInterfaceMode(text),
                                                  HABMInterface::MODE_UNKNOWN, text, "interface mode"));
          })
      .def_property_readonly("type",
                             [](InterfaceRef const& c) {
                               return HABMInterface::decodeInterfaceType(interface(c).getInterfaceType());
                             })
      .def_property(
          "memory_map_ref", [](InterfaceRef const& c) { return interface(c).getMemoryMapRef(); },
          [](InterfaceRef const& c, std::string const& v) { interface(c).setMemoryMapRef(v); })
      .def_property(
          "addr_space_ref", [](InterfaceRef const& c) { return interface(c).getAddrSpaceRef(); },
          [](InterfaceRef const& c, std::string const& v) { interface(c).setAddrSpaceRef(v); })
      .def("__repr__",
           [](InterfaceRef const& c) { return "<Interface " + interface(c).getInterfacePath() + ">"; });

  py::class_<PortConnectionRef>(m, "PortConnection",
                                "A net drawn in a block, found again by name on each use.")
      .def_property_readonly("name", [](PortConnectionRef const& c) { return portConnection(c).getName(); })
      .def_property_readonly("path", [](PortConnectionRef const& c) { return portConnection(c).getPath(); })
      .def_property_readonly(
          "source_path", [](PortConnectionRef const& c) { return portConnection(c).getSourcePath(false); })
      .def_property_readonly(
          "target_paths", [](PortConnectionRef const& c) { return portConnection(c).getTargetPaths(false); })
      .def_property_readonly("is_valid",
                             [](PortConnectionRef const& c) { return portConnection(c).isValid(); })
      .def("__repr__",
           [](PortConnectionRef const& c) { return "<PortConnection " + portConnection(c).getPath() + ">"; });

  py::class_<InterfaceConnectionRef>(m, "InterfaceConnection",
                                     "A bus link drawn in a block, found again by name on each use.")
      .def_property_readonly("name",
                             [](InterfaceConnectionRef const& c) { return interfaceConnection(c).getName(); })
      .def_property_readonly("path",
                             [](InterfaceConnectionRef const& c) { return interfaceConnection(c).getPath(); })
      .def_property_readonly(
          "source_path",
          [](InterfaceConnectionRef const& c) { return interfaceConnection(c).getSourcePath(false); })
      .def_property_readonly("target_path", [](InterfaceConnectionRef const& c) {
        return interfaceConnection(c).getTargetPath(false);
      });

  py::class_<MemoryMapRef>(m, "MemoryMap", "A memory map of a block, found again by name on each use.")
      .def_property_readonly("name", [](MemoryMapRef const& c) { return memoryMap(c).getName(); })
      .def_property_readonly("path", [](MemoryMapRef const& c) { return memoryMap(c).getPath(); })
      .def_property_readonly("block", [](MemoryMapRef const& c) { return c.owner; })
      .def_property(
          "range", [](MemoryMapRef const& c) { return memoryMap(c).getRange(); },
          [](MemoryMapRef const& c, py::object const& v) { memoryMap(c).setRange(toAddr(v)); })
      .def(
          "create_addr_block",
          [](MemoryMapRef const& c, std::string const& name) {
            HABMAddrBlock* made = memoryMap(c).createAddrBlock(name);
            if (made == nullptr) {
              throw py::value_error("memory map " + memoryMap(c).getPath() + " refuses address block '" +
                                    name + "'");
            }
            return wrap(made);
          },
          py::arg("name"))
      .def("addr_block", [](MemoryMapRef const& c,
                            std::string const& name) { return wrap(memoryMap(c).getAddrBlock(name)); })
      .def("addr_blocks", [](MemoryMapRef const& c) { return wrapAll(memoryMap(c).getAddrBlocks()); })
      .def("remove_addr_block",
           [](MemoryMapRef const& c, std::string const& name) { return memoryMap(c).removeAddrBlock(name); })
      .def("clear_addr_blocks", [](MemoryMapRef const& c) { memoryMap(c).clearAddrBlocks(); })
      .def("__repr__", [](MemoryMapRef const& c) { return "<MemoryMap " + memoryMap(c).getPath() + ">"; });

  py::class_<SegmentRef>(m, "AddrSegment", "A segment of an address space, found again by name on each use.")
      .def_property_readonly("name", [](SegmentRef const& c) { return segment(c).getName(); })
      .def_property_readonly("path", [](SegmentRef const& c) { return segment(c).getPath(); })
      .def_property(
          "aperture", [](SegmentRef const& c) { return segment(c).getAperture(); },
          [](SegmentRef const& c, HABMAddrAperture const& a) { segment(c).setAperture(a); })
      .def_property_readonly("memory_type", [](SegmentRef const& c) {
        return HABMAddrSegment::decodeMemoryType(segment(c).getMemoryType());
      });
}

// The members that every cached kind with a name, a path and a parent block shares.
template <class H, class Class>
void namedMembers(Class& cls) {
  identity<H>(cls);
  cls.def_property_readonly("name", [](H const& h) { return h.get().getName(); })
      .def_property_readonly("path", [](H const& h) { return h.get().getPath(); })
      .def("__repr__", [](H const& h) {
        std::string const kind = kindName<typename H::element_type>();
        return h.native == nullptr ? "<destroyed " + kind + ">" : "<" + kind + " " + h.get().getPath() + ">";
      });
}

template <class Class>
void parameterMembers(Class& cls) {
  using H = typename Class::type;
  cls.def_property_readonly(
         "parameters", [](H const& h) { return valuesOf(h.get().getParameters()); },
         "The parameters by name, in creation order.")
      .def(
          "set_parameter",
          [](H const& h, std::string const& name, std::string const& value) {
            if (h.get().setParameter(name, value, true) == nullptr) {
              throw py::value_error("refused parameter name '" + name + "'");
            }
          },
          py::arg("name"), py::arg("value"))
      .def("remove_parameter",
           [](H const& h, std::string const& name) { return h.get().removeParameter(name); });
}

void bindCached(py::module_& m) {
  py::class_<SpaceH> space(m, "AddrSpace", "An address space of a block.");
  namedMembers<SpaceH>(space);
  space
      .def_property_readonly(
          "block", [](SpaceH const& h) { return wrap(const_cast<HABMBlock*>(h.get().getParent())); })
      .def_property(
          "range", [](SpaceH const& h) { return h.get().getRange(); },
          [](SpaceH const& h, py::object const& v) { h.get().setRange(toAddr(v)); })
      .def(
          "create_segment",
          [](py::object const& self, std::string const& name, HABMAddrAperture const& aperture) {
            HABMAddrSegment* made = self.cast<SpaceH&>().get().createAddrSegment(name);
            if (made == nullptr) {
              throw py::value_error("refused segment name '" + name + "'");
            }
            made->setAperture(aperture);
            return SegmentRef{self, made->getName()};
          },
          py::arg("name"), py::arg("aperture"))
      .def("segments", [](py::object const& self) {
        return childrenOf<HABMAddrSegment, HABMAddrSpace>(
            self, namesOf(self.cast<SpaceH&>().get().getAddrSegments(), &HABMAddrSegment::getName));
      });

  py::class_<AddrBlockH> addrBlock(m, "AddrBlock", "An address block of a memory map.");
  namedMembers<AddrBlockH>(addrBlock);
  addrBlock
      .def_property(
          "aperture", [](AddrBlockH const& h) { return h.get().getAperture(); },
          [](AddrBlockH const& h, HABMAddrAperture const& a) { h.get().setAperture(a); })
      .def_property(
          "memory_type",
          [](AddrBlockH const& h) { return HABMAddrBlock::decodeMemoryType(h.get().getMemoryType()); },
          [](AddrBlockH const& h, std::string const& text) {
            h.get().setMemoryType(encoded(HABMAddrBlock::encodeMemoryType(text), HABMAddrBlock::TYPE_UNKNOWN,
                                          text, "memory type"));
          })
      .def_property(
          "access",
          [](AddrBlockH const& h) { return HABMAddrBlock::decodeMemoryAccess(h.get().getMemoryAccess()); },
          [](AddrBlockH const& h, std::string const& text) {
            h.get().setMemoryAccess(encoded(HABMAddrBlock::encodeMemoryAccess(text),
                                            HABMAddrBlock::ACCESS_UNKNOWN, text, "memory access"));
          });

  py::class_<AssignH> assign(m, "AddrAssign",
                             "An address assignment of a block: a source placed in a target.");
  namedMembers<AssignH>(assign);
  assign
      .def_property_readonly(
          "block", [](AssignH const& h) { return wrap(const_cast<HABMBlock*>(h.get().getParent())); })
      .def_property(
          "type", [](AssignH const& h) { return HABMAddrAssign::decodeAssignType(h.get().getAssignType()); },
          [](AssignH const& h, std::string const& text) {
            h.get().setAssignType(encoded(HABMAddrAssign::encodeAssignType(text),
                                          HABMAddrAssign::TYPE_UNKNOWN, text, "assignment type"));
          })
      .def_property(
          "aperture", [](AssignH const& h) { return h.get().getAperture(); },
          [](AssignH const& h, HABMAddrAperture const& a) { h.get().setAperture(a); })
      .def_property(
          "source_path", [](AssignH const& h) { return h.get().getSourcePath(false); },
          [](AssignH const& h, std::string const& p) {
            if (!h.get().setSourcePath(p)) {
              throw py::value_error("not a path inside the block: '" + p + "'");
            }
          })
      .def_property(
          "target_path", [](AssignH const& h) { return h.get().getTargetPath(false); },
          [](AssignH const& h, std::string const& p) {
            if (!h.get().setTargetPath(p)) {
              throw py::value_error("not a path inside the block: '" + p + "'");
            }
          })
      .def_property_readonly("source_addr_block",
                             [](AssignH const& h) { return wrap(h.get().getSourceAddrBlock()); })
      .def_property_readonly("target_addr_space",
                             [](AssignH const& h) { return wrap(h.get().getTargetAddrSpace()); });

  py::class_<NocIfH> nocIf(m, "NocInterface", "An attachment point of a block to the network on chip.");
  namedMembers<NocIfH>(nocIf);
  parameterMembers(nocIf);
  nocIf
      .def_property_readonly(
          "block", [](NocIfH const& h) { return wrap(const_cast<HABMBlock*>(h.get().getParent())); })
      .def_property(
          "mode", [](NocIfH const& h) { return HABMNocInterface::decodeNocMode(h.get().getNocMode()); },
          [](NocIfH const& h, std::string const& text) {
            h.get().setNocMode(encoded(HABMNocInterface::encodeNocMode(text), HABMNocInterface::MODE_UNKNOWN,
                                       text, "NoC mode"));
          })
      .def_property(
          "protocol",
          [](NocIfH const& h) { return HABMNocInterface::decodeNocProtocol(h.get().getNocProtocol()); },
          [](NocIfH const& h, std::string const& text) {
            h.get().setNocProtocol(encoded(HABMNocInterface::encodeNocProtocol(text),
                                           HABMNocInterface::PROTOCOL_UNKNOWN, text, "NoC protocol"));
          })
      .def_property(
          "category",
          [](NocIfH const& h) { return HABMNocInterface::decodeNocCategory(h.get().getNocCategory()); },
          [](NocIfH const& h, std::string const& text) {
            h.get().setNocCategory(encoded(HABMNocInterface::encodeNocCategory(text),
                                           HABMNocInterface::CATEGORY_UNKNOWN, text, "NoC category"));
          })
      .def_property(
          "location", [](NocIfH const& h) { return h.get().getLocation(); },
          [](NocIfH const& h, std::string const& text) {
            std::string error;
            if (!h.get().setLocation(text, error)) {
              throw py::value_error(error);
            }
          })
      .def_property(
          "tdest_id", [](NocIfH const& h) { return h.get().getTdestId(); },
          [](NocIfH const& h, std::string const& text) {
            std::string error;
            if (!h.get().setTdestId(text, error)) {
              throw py::value_error(error);
            }
          })
      .def_property(
          "dest_id", [](NocIfH const& h) { return h.get().getDestId(); },
          [](NocIfH const& h, std::int32_t id) { h.get().setDestId(id); })
      .def_property(
          "memory_map_ref", [](NocIfH const& h) { return h.get().getMemoryMapRef(); },
          [](NocIfH const& h, std::string const& name) { h.get().setMemoryMapRef(name); })
      .def_property(
          "apertures",
          [](NocIfH const& h) {
            auto const& set = h.get().getApertures();
            return std::vector<HABMAddrAperture>(set.begin(), set.end());
          },
          [](NocIfH const& h, std::vector<HABMAddrAperture> const& list) {
            h.get().setApertures(std::set<HABMAddrAperture>(list.begin(), list.end()));
          })
      .def_property(
          "editable", [](NocIfH const& h) { return h.get().getEditable(); },
          [](NocIfH const& h, bool on) { h.get().setEditable(on); })
      .def_property_readonly("is_source", [](NocIfH const& h) { return h.get().isSource(); })
      .def_property_readonly("is_target", [](NocIfH const& h) { return h.get().isTarget(); })
      .def("source_connections", [](NocIfH const& h) { return wrapAll(h.get().getSourceConnections()); })
      .def("target_connections", [](NocIfH const& h) { return wrapAll(h.get().getTargetConnections()); });

  py::class_<NocConnH> nocConn(m, "NocConnection", "A directed link between two NoC interfaces.");
  namedMembers<NocConnH>(nocConn);
  parameterMembers(nocConn);
  nocConn
      .def_property_readonly(
          "block", [](NocConnH const& h) { return wrap(const_cast<HABMBlock*>(h.get().getParent())); })
      .def_property_readonly("source_path", [](NocConnH const& h) { return h.get().getSourcePath(false); })
      .def_property_readonly("target_path", [](NocConnH const& h) { return h.get().getTargetPath(false); })
      .def_property_readonly("source",
                             [](NocConnH const& h) { return wrap(h.get().getSourceNocInterface()); })
      .def_property_readonly("target",
                             [](NocConnH const& h) { return wrap(h.get().getTargetNocInterface()); })
      .def_property_readonly("is_primary", [](NocConnH const& h) { return h.get().isPrimary(); })
      .def_property(
          "editable", [](NocConnH const& h) { return h.get().getEditable(); },
          [](NocConnH const& h, bool on) { h.get().setEditable(on); })
      .def("valid_parameter_names",
           [](NocConnH const& h) { return HABMNocConnection::getValidParameterNames(h.get()); })
      .def("default_parameter_values",
           [](NocConnH const& h) { return HABMNocConnection::getDefaultParameterValues(h.get()); });
}

// Raises ValueError when the block refused to make a child.
template <class T>
T* made(T* child, HABMBlock const& block, char const* kind, std::string const& name) {
  if (child == nullptr) {
    throw py::value_error("block " + block.getInstancePath() + " refuses " + kind + " '" + name + "'");
  }
  return child;
}

void bindBlock(py::module_& m) {
  py::class_<BlockH> block(m, "Block", "A block: a module and one instance of it, with its children.");
  identity<BlockH>(block);
  block
      .def_property(
          "module_name", [](BlockH const& h) { return h.get().getModuleName(); },
          [](BlockH const& h, std::string const& v) { h.get().setModuleName(v); })
      .def_property(
          "vlnv", [](BlockH const& h) { return h.get().getModuleVlnv(); },
          [](BlockH const& h, std::string const& v) { h.get().setModuleVlnv(v); })
      .def_property_readonly("instance_name", [](BlockH const& h) { return h.get().getInstanceName(); })
      .def_property_readonly("path", [](BlockH const& h) { return h.get().getInstancePath(); })
      .def_property_readonly("depth", [](BlockH const& h) { return h.get().getInstanceDepth(); })
      .def_property_readonly("parent", [](BlockH const& h) { return wrap(h.get().getParent()); })
      .def_property_readonly("top", [](BlockH const& h) { return wrap(h.get().getTop()); })
      .def_property_readonly(
          "owns_tree", [](BlockH const& h) { return h.owned != nullptr; },
          "True for the object that holds its tree: dropping it destroys the tree.")
      .def("__repr__",
           [](BlockH const& h) {
             return h.native == nullptr
                        ? std::string("<destroyed block>")
                        : "<block " + h.get().getInstancePath() + " (" + h.get().getModuleName() + ")>";
           })
      // Attributes, generics and parameters as plain texts.
      .def_property_readonly("attributes", [](BlockH const& h) { return valuesOf(h.get().getAttributes()); })
      .def_property_readonly("generics", [](BlockH const& h) { return valuesOf(h.get().getGenerics()); })
      .def_property_readonly("parameters", [](BlockH const& h) { return valuesOf(h.get().getParameters()); })
      .def("set_attribute",
           [](BlockH const& h, std::string const& name, std::string const& value) {
             made(h.get().setAttribute(name, value, true), h.get(), "attribute", name);
           })
      .def("remove_attribute",
           [](BlockH const& h, std::string const& name) { return h.get().removeAttribute(name); })
      .def("set_parameter",
           [](BlockH const& h, std::string const& name, std::string const& value) {
             made(h.get().setParameter(name, value, true), h.get(), "parameter", name);
           })
      // Sub-blocks.
      .def(
          "create_sub_block",
          [](BlockH const& h, std::string const& instance, std::string const& module) {
            return wrap(
                made(h.get().createSubBlock(instance, module, false), h.get(), "sub-block", instance));
          },
          py::arg("instance_name"), py::arg("module_name"))
      .def("sub_block",
           [](BlockH const& h, std::string const& name) { return wrap(h.get().getSubBlock(name)); })
      .def("sub_blocks", [](BlockH const& h) { return wrapAll(h.get().getSubBlocks()); })
      .def(
          "find_sub_block",
          [](BlockH const& h, std::string const& path) { return wrap(h.get().findSubBlock(path, true)); },
          py::arg("path"))
      .def(
          "find_sub_blocks",
          [](BlockH const& h, std::string const& pattern) {
            return wrapAll(h.get().findSubBlocks(pattern, true));
          },
          py::arg("pattern") = "")
      .def(
          "remove_sub_block",
          [](BlockH const& h, std::string const& name) -> py::object {
            std::unique_ptr<HABMBlock> detached = h.get().removeSubBlock(name);
            if (!detached) {
              return py::none();
            }
            return adoptTree(std::move(detached));
          },
          "Detaches a sub-block and returns it as a new top block that owns its subtree; None when unknown.")
      .def("clear_sub_blocks", [](BlockH const& h) { h.get().clearSubBlocks(); })
      // Ports and port connections.
      .def(
          "create_port",
          [](py::object const& self, std::string const& name, std::string const& direction,
             std::uint32_t left, std::uint32_t right) {
            HABMBlock& b = self.cast<BlockH&>().get();
            auto const dir = encoded(HABMPort::encodePortDirection(direction), HABMPort::DIR_UNKNOWN,
                                     direction, "port direction");
            HABMPort* p = made(b.createPort(name, false), b, "port", name);
            p->setPortDirection(dir);
            if (left != 0 || right != 0) {
              p->setPortType(HABMPort::TYPE_VECTOR);
              p->setPortLeft(left);
              p->setPortRight(right);
            }
            return PortRef{self, name};
          },
          py::arg("name"), py::arg("direction") = "in", py::arg("left") = 0, py::arg("right") = 0)
      .def("port",
           [](py::object const& self, std::string const& name) -> py::object {
             return self.cast<BlockH&>().get().getPort(name) == nullptr ? py::none()
                                                                        : py::cast(PortRef{self, name});
           })
      .def("ports",
           [](py::object const& self) {
             return childrenOf<HABMPort, HABMBlock>(
                 self, namesOf(self.cast<BlockH&>().get().getPorts(), &HABMPort::getPortName));
           })
      .def("remove_port", [](BlockH const& h, std::string const& name) { return h.get().removePort(name); })
      .def("clear_ports", [](BlockH const& h) { h.get().clearPorts(); })
      .def(
          "connect_ports",
          [](py::object const& self, std::string const& source, std::set<std::string> const& targets,
             bool force) {
            HABMBlock& b = self.cast<BlockH&>().get();
            HABMPortConnection* c =
                made(b.createPortConnection(source, targets, force), b, "port connection from", source);
            return PortConnectionRef{self, c->getName()};
          },
          py::arg("source"), py::arg("targets"), py::arg("force") = false)
      .def("port_connections",
           [](py::object const& self) {
             return childrenOf<HABMPortConnection, HABMBlock>(
                 self,
                 namesOf(self.cast<BlockH&>().get().getPortConnections(), &HABMPortConnection::getName));
           })
      .def("remove_port_connection",
           [](BlockH const& h, std::string const& name) { return h.get().removePortConnection(name); })
      .def("clear_port_connections", [](BlockH const& h) { h.get().clearPortConnections(); })
      // Bus interfaces and their links.
      .def(
          "create_interface",
          [](py::object const& self, std::string const& name, std::string const& vlnv,
             std::string const& mode) {
            HABMBlock& b = self.cast<BlockH&>().get();
            auto const m2 = encoded(HABMInterface::encodeInterfaceMode(mode), HABMInterface::MODE_UNKNOWN,
                                    mode, "interface mode");
            HABMInterface* i = made(b.createInterface(name, false), b, "interface", name);
            i->setInterfaceVlnv(vlnv);
            i->setInterfaceMode(m2);
            return InterfaceRef{self, i->getInterfaceName()};
          },
          py::arg("name"), py::arg("vlnv"), py::arg("mode"))
      .def("interface",
           [](py::object const& self, std::string const& name) -> py::object {
             return self.cast<BlockH&>().get().getInterface(name) == nullptr
                        ? py::none()
                        : py::cast(InterfaceRef{self, name});
           })
      .def("interfaces",
           [](py::object const& self) {
             return childrenOf<HABMInterface, HABMBlock>(
                 self, namesOf(self.cast<BlockH&>().get().getInterfaces(), &HABMInterface::getInterfaceName));
           })
      .def("remove_interface",
           [](BlockH const& h, std::string const& name) { return h.get().removeInterface(name); })
      .def("clear_interfaces", [](BlockH const& h) { h.get().clearInterfaces(); })
      .def("interface_connections",
           [](py::object const& self) {
             return childrenOf<HABMInterfaceConnection, HABMBlock>(
                 self, namesOf(self.cast<BlockH&>().get().getInterfaceConnections(),
                               &HABMInterfaceConnection::getName));
           })
      // Address spaces, memory maps and assignments.
      .def("create_addr_space",
           [](BlockH const& h, std::string const& name) {
             return wrap(made(h.get().createAddrSpace(name), h.get(), "address space", name));
           })
      .def("addr_space",
           [](BlockH const& h, std::string const& name) { return wrap(h.get().getAddrSpace(name)); })
      .def("addr_spaces", [](BlockH const& h) { return wrapAll(h.get().getAddrSpaces()); })
      .def("remove_addr_space",
           [](BlockH const& h, std::string const& name) { return h.get().removeAddrSpace(name); })
      .def("clear_addr_spaces", [](BlockH const& h) { h.get().clearAddrSpaces(); })
      .def("create_memory_map",
           [](py::object const& self, std::string const& name) {
             HABMBlock& b = self.cast<BlockH&>().get();
             made(b.createMemoryMap(name), b, "memory map", name);
             return MemoryMapRef{self, name};
           })
      .def("memory_map",
           [](py::object const& self, std::string const& name) -> py::object {
             return self.cast<BlockH&>().get().getMemoryMap(name) == nullptr
                        ? py::none()
                        : py::cast(MemoryMapRef{self, name});
           })
      .def("memory_maps",
           [](py::object const& self) {
             return childrenOf<HABMMemoryMap, HABMBlock>(
                 self, namesOf(self.cast<BlockH&>().get().getMemoryMaps(), &HABMMemoryMap::getName));
           })
      .def("remove_memory_map",
           [](BlockH const& h, std::string const& name) { return h.get().removeMemoryMap(name); })
      .def("clear_memory_maps", [](BlockH const& h) { h.get().clearMemoryMaps(); })
      .def(
          "create_addr_assign",
          [](BlockH const& h, std::string const& name) {
            return wrap(made(h.get().createAddrAssign(name), h.get(), "address assignment", name));
          },
          py::arg("name") = "")
      .def("addr_assign",
           [](BlockH const& h, std::string const& name) { return wrap(h.get().getAddrAssign(name)); })
      .def("addr_assigns", [](BlockH const& h) { return wrapAll(h.get().getAddrAssigns()); })
      .def("remove_addr_assign",
           [](BlockH const& h, std::string const& name) { return h.get().removeAddrAssign(name); })
      .def("clear_addr_assigns", [](BlockH const& h) { h.get().clearAddrAssigns(); })
      // NoC interfaces, connections and paths.
      .def(
          "create_noc_interface",
          [](BlockH const& h, std::string const& name) {
            std::string error;
            HABMNocInterface* made = h.get().createNocInterface(name, error);
            if (made == nullptr) {
              throw py::value_error(error);
            }
            return wrap(made);
          },
          py::arg("name"))
      .def("noc_interface",
           [](BlockH const& h, std::string const& name) { return wrap(h.get().getNocInterface(name)); })
      .def(
          "noc_interfaces",
          [](BlockH const& h, bool excludeIni) { return wrapAll(h.get().getNocInterfaces(excludeIni)); },
          py::arg("exclude_ini") = false)
      .def(
          "find_noc_interface",
          [](BlockH const& h, std::string const& path) { return wrap(h.get().findNocInterface(path, true)); },
          py::arg("path"))
      .def(
          "find_noc_interfaces",
          [](BlockH const& h, std::string const& pattern) {
            return wrapAll(h.get().findNocInterfaces(pattern, true, false));
          },
          py::arg("pattern") = "")
      .def("remove_noc_interface",
           [](BlockH const& h, std::string const& name) { return h.get().removeNocInterface(name); })
      .def("clear_noc_interfaces", [](BlockH const& h) { h.get().clearNocInterfaces(); })
      .def(
          "connect_noc",
          [](BlockH const& h, std::string const& source, std::string const& target, bool force) {
            std::string error;
            HABMNocConnection* made = h.get().createNocConnection(source, target, error, force);
            if (made == nullptr) {
              throw py::value_error(error.empty() ? "cannot connect " + source + " to " + target : error);
            }
            return wrap(made);
          },
          py::arg("source"), py::arg("target"), py::arg("force") = false,
          "Links two NoC interfaces (paths from this block); ValueError with the rule that refused it.")
      .def("noc_connection",
           [](BlockH const& h, std::string const& name) { return wrap(h.get().getNocConnection(name)); })
      .def(
          "noc_connections",
          [](BlockH const& h, bool excludeIni) { return wrapAll(h.get().getNocConnections(excludeIni)); },
          py::arg("exclude_ini") = false)
      .def(
          "find_noc_connections",
          [](BlockH const& h, std::string const& pattern) {
            return wrapAll(h.get().findNocConnections(pattern, true, false));
          },
          py::arg("pattern") = "")
      .def("remove_noc_connection",
           [](BlockH const& h, std::string const& name) { return h.get().removeNocConnection(name); })
      .def("clear_noc_connections", [](BlockH const& h) { h.get().clearNocConnections(); })
      .def(
          "noc_paths",
          [](BlockH const& h) {
            // Paths hold plain pointers; they become dicts of cached objects at once, so they stay safe.
            py::list out;
            for (HABMNocPath const& path : HABMNocPath::createNocPaths(&h.get())) {
              py::dict entry;
              entry["name"] = path.getName();
              entry["connections"] = wrapAll(path.getNocConnections());
              entry["interfaces"] = wrapAll(path.getNocInterfaces());
              entry["nmu"] = wrap(path.getNmuInterface());
              entry["nsu"] = wrap(path.getNsuInterface());
              entry["primary"] = wrap(path.getPrimaryConnection());
              entry["complete"] = path.isCompletePath();
              out.append(entry);
            }
            return out;
          },
          "Every NoC path of the block, by name: dicts of name, connections, interfaces, nmu, nsu, primary "
          "and "
          "complete.")
      // Checks and writers.
      .def(
          "validate_all",
          [](BlockH const& h) {
            std::vector<Finding> findings;
            bool passed = false;
            {
              MessageCollector messages;
              passed = HABMBlockChecker::validate_all(h.get());
              for (ComMsgRecord const& record : messages.records()) {
                if (record.shape == ComMsgShape::DEFERRED) {
                  findings.push_back(
                      {ComMsgMgr::severityWord(record.mask), record.catalogueId(), record.text});
                }
              }
            }
            return py::make_tuple(passed, findings);
          },
          "Runs every design-rule set; (passed, [Finding, ...]).")
      .def(
          "check", [](BlockH const& h) { return h.get().check(); },
          "The broken invariants of the subtree, one sentence each; empty when all hold.")
      .def(
          "write_stub",
          [](BlockH const& h, std::string const& path) {
            MessageCollector messages;
            if (!HABMVlogWriter::writeStub(HUTFile(path), h.get(), true)) {
              throw py::value_error("could not write the stub: " + messages.joined());
            }
          },
          py::arg("path"))
      .def(
          "write_wrapper",
          [](BlockH const& h, std::string const& path) {
            MessageCollector messages;
            if (!HABMSVlogWriter::writeSVEO(path, h.get())) {
              throw py::value_error("could not write the wrapper: " + messages.joined());
            }
          },
          py::arg("path"))
      .def(
          "write_constraints",
          [](BlockH const& h, std::string const& path, std::vector<std::string> const& skip) {
            MessageCollector messages;
            if (!HABMXdcWriter::writeXdc(h.get(), HUTFile(path), true, skip)) {
              throw py::value_error("could not write the constraints: " + messages.joined());
            }
          },
          py::arg("path"), py::arg("skip") = std::vector<std::string>());
}

py::object readFile(std::string const& path, bool lenient) {
  MessageCollector messages;
  std::unique_ptr<HABMBlock> top = HABMBlock::readTopBlock(HUTFile(path));
  if (!top || (!lenient && messages.hasErrors())) {
    PyErr_SetString(PyExc_OSError, ("could not read '" + path + "': " + messages.joined()).c_str());
    throw py::error_already_set();
  }
  return adoptTree(std::move(top));
}

void writeFile(BlockH const& block, std::string const& path) {
  MessageCollector messages;
  if (!HABMBlock::writeTopBlock(HUTFile(path), block.get(), true)) {
    PyErr_SetString(PyExc_OSError, ("could not write '" + path + "': " + messages.joined()).c_str());
    throw py::error_already_set();
  }
}

template <class T>
py::dict cacheState() {
  using cache = hwk::pyinfra::py_native_cache<T*>;
  py::dict state;
  bool const observed = cache::observers();
  state["observers"] = observed;
  state["py2n"] = cache::get_py2n_cache().size();
  state["n2py"] = cache::get_n2py_cache().size();
  cache::observers() = observed;  // looking must not raise the flag
  return state;
}

}  // namespace
}  // namespace bmpy

PYBIND11_MODULE(blockmodel, m) {
  using namespace bmpy;
  m.doc() = R"doc(The block model of a hardware design: read and write block model files, walk and edit the
tree, run the design-rule checks and write the stub, wrapper and constraint script.

Lifetimes. A top block that Python reads or makes (read, create_top_block, clone_top_block, and the
block that Block.remove_sub_block detaches) is owned by its Python object: the tree lives until that
object and every object into its tree are gone. Objects of the six cached kinds - Block, AddrSpace,
AddrBlock, AddrAssign, NocInterface and NocConnection - stand for their model object directly; when it is
destroyed by an edit (a remove... or clear... of its owner, or with a detached tree that is dropped),
every Python object for it turns invalid, and using it raises ReferenceError naming its kind. Two
objects for the same model object compare equal. Ports, interfaces, port and interface connections,
memory maps and address segments are held by their owner's object and their name and are looked up
again on each use: once removed (or renamed by another route) using them raises ReferenceError too.
NoC paths are returned as dicts of the cached objects above.)doc";

  py::register_exception_translator([](std::exception_ptr thrown) {
    try {
      if (thrown) {
        std::rethrow_exception(thrown);
      }
    } catch (StaleObject const& e) {
      PyErr_SetString(PyExc_ReferenceError, e.what());
    }
  });

  bindValues(m);
  bindChildren(m);
  bindCached(m);
  bindBlock(m);

  m.def("read", &readFile, py::arg("path"), py::arg("lenient") = false,
        "Reads a block model file into a new top block; OSError with the library's messages when it cannot "
        "be read (or, unless lenient, when it reads with errors).");
  m.def("write", &writeFile, py::arg("block"), py::arg("path"),
        "Writes a block (as the file's top block); OSError when the write fails, leaving no half file.");
  m.def(
      "create_top_block",
      [](std::string const& module) { return adoptTree(HABMBlock::createTopBlock(module)); },
      py::arg("module_name"));
  m.def(
      "clone_top_block",
      [](BlockH const& source) { return adoptTree(HABMBlock::cloneTopBlock(source.get())); },
      py::arg("block"));

  // Hooks for the caches, and the finalisation flag: once Python finalises, model objects that die
  // leave the caches alone.
  hwk::pyinfra::py_native_cache_base::interpreter_hooks hooks;
  hooks.mark_invalid = &markInvalid;
  hooks.error = &reportCacheError;
  hwk::pyinfra::py_native_cache_base::install_hooks(hooks);
  py::module_::import("atexit").attr("register")(
      py::cpp_function([] { hwk::pyinfra::py_native_cache_base::set_py_exiting(true); }));

  // For tests of the caches themselves.
  m.def("_cache_state", [] {
    py::dict state;
    state["Block"] = cacheState<HABMBlock>();
    state["NocInterface"] = cacheState<HABMNocInterface>();
    state["exiting"] = hwk::pyinfra::py_native_cache_base::py_exiting();
    return state;
  });
  m.def("_cache_errors", [] { return cacheErrors(); });
  m.def("_unlink", [](BlockH const& h) {
    // Drops the object from the first map only, leaving a corrupt pair behind.
    Handle<HABMBlock>::cache::get_py2n_cache().erase(h.self);
  });
}
