// BmTclPackage.cpp: the Tcl package "blockmodel": commands over files, the tree and its edits, the checks
// and the writers of the block model, with handles for the cached kinds.
#include "blockmodel/HABMAddrAperture.h"
#include "blockmodel/HABMAddrSegment.h"
#include "blockmodel/HABMAddrValue.h"
#include "blockmodel/HABMAttribute.h"
#include "blockmodel/HABMBlockChecker.h"
#include "blockmodel/HABMInterface.h"
#include "blockmodel/HABMInterfaceConnection.h"
#include "blockmodel/HABMMemoryMap.h"
#include "blockmodel/HABMNocPath.h"
#include "blockmodel/HABMParameter.h"
#include "blockmodel/HABMPort.h"
#include "blockmodel/HABMPortConnection.h"
#include "blockmodel/HABMSVlogWriter.h"
#include "blockmodel/HABMVlogWriter.h"
#include "blockmodel/HABMXdcWriter.h"
#include "msg/ComMsgMgr.h"
#include "util/HUTFile.h"

#include "BmTclHandles.h"

#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace bmtcl {
namespace {

// The arguments of one call and the helpers that convert them; failures throw TclError.
class Call {
 public:
  Call(Tcl_Interp* interp, int objc, Tcl_Obj* const* objv) : interp_(interp), objc_(objc), objv_(objv) {}

  int count() const { return objc_ - 1; }
  std::string text(int i) const { return Tcl_GetString(objv_[i + 1]); }
  Tcl_Obj* obj(int i) const { return objv_[i + 1]; }
  template <class T>
  T& handle(int i) const {
    return nativeOf<T>(objv_[i + 1]);
  }
  HABMBlock& block(int i) const { return handle<HABMBlock>(i); }
  bool flag(int i, char const* name) const { return count() > i && text(i) == name; }
  std::vector<std::string> list(int i) const {
    int n = 0;
    Tcl_Obj** items = nullptr;
    if (Tcl_ListObjGetElements(interp_, objv_[i + 1], &n, &items) != TCL_OK) {
      throw TclError(Tcl_GetStringResult(interp_));
    }
    std::vector<std::string> out;
    for (int k = 0; k < n; ++k) {
      out.emplace_back(Tcl_GetString(items[k]));
    }
    return out;
  }
  std::string const& name() const { return name_; }
  void setName(std::string name) { name_ = std::move(name); }

 private:
  Tcl_Interp* interp_;
  int objc_;
  Tcl_Obj* const* objv_;
  std::string name_;
};

// Values to Tcl.
Tcl_Obj* str(std::string const& text) {
  return Tcl_NewStringObj(text.data(), static_cast<int>(text.size()));
}
Tcl_Obj* boolean(bool on) {
  return Tcl_NewBooleanObj(on ? 1 : 0);
}
Tcl_Obj* listOf(std::vector<std::string> const& texts) {
  Tcl_Obj* out = Tcl_NewListObj(0, nullptr);
  for (std::string const& t : texts) {
    Tcl_ListObjAppendElement(nullptr, out, str(t));
  }
  return out;
}
template <class T>
Tcl_Obj* handles(std::vector<T*> const& natives) {
  Tcl_Obj* out = Tcl_NewListObj(0, nullptr);
  for (T* native : natives) {
    Tcl_ListObjAppendElement(nullptr, out, handleOf<T>(native));
  }
  return out;
}
Tcl_Obj* dictOf(std::vector<std::pair<std::string, Tcl_Obj*>> const& entries) {
  Tcl_Obj* out = Tcl_NewDictObj();
  for (auto const& [key, value] : entries) {
    Tcl_DictObjPut(nullptr, out, str(key), value);
  }
  return out;
}
template <class V>
Tcl_Obj* namedValues(std::vector<V*> const& items) {
  Tcl_Obj* out = Tcl_NewDictObj();
  for (V* item : items) {
    Tcl_DictObjPut(nullptr, out, str(item->getName()), str(item->getValue()));
  }
  return out;
}

HABMAddrValue addr(std::string const& text) {
  HABMAddrValue value(text);
  if (!value.isValid()) {
    throw TclError("not an address: \"" + text + "\"");
  }
  return value;
}
HABMAddrAperture aperture(std::string const& text) {
  HABMAddrAperture value(text);
  if (!value.isValid()) {
    throw TclError("not an aperture: \"" + text + "\"");
  }
  return value;
}
template <class E>
E encoded(E value, E unknown, std::string const& text, char const* what) {
  if (value == unknown) {
    throw TclError(std::string("not a ") + what + ": \"" + text + "\"");
  }
  return value;
}
template <class T>
T* made(T* child, HABMBlock const& block, char const* kind, std::string const& name) {
  if (child == nullptr) {
    throw TclError("block " + block.getInstancePath() + " refuses " + kind + " \"" + name + "\"");
  }
  return child;
}
template <class T>
T& found(T* child, char const* kind, std::string const& name) {
  if (child == nullptr) {
    throw TclError(std::string("no ") + kind + " \"" + name + "\"");
  }
  return *child;
}

// Collects the messages the library sends while it lives (traces left out).
class Messages {
 public:
  Messages()
      : guard_([this](ComMsgRecord const& r) {
          if (r.shape != ComMsgShape::SCOPED_TRACE) {
            records.push_back(r);
          }
        }) {}
  std::vector<ComMsgRecord> records;
  bool hasErrors() const {
    for (ComMsgRecord const& r : records) {
      if ((r.mask & COM_MSG_ERROR) != 0) {
        return true;
      }
    }
    return false;
  }
  std::string joined() const {
    std::string out;
    for (ComMsgRecord const& r : records) {
      out += (out.empty() ? "" : "; ") + r.text;
    }
    return out;
  }

 private:
  ComMsgListenerGuard guard_;
};

// Properties of the cached kinds: a getter giving text and, for the writable ones, a setter.
struct Property {
  std::function<Tcl_Obj*(Tcl_Obj*)> get;
  std::function<void(Tcl_Obj*, std::string const&)> set;
};
using PropertyTable = std::map<std::string, Property>;

template <class T, class G>
Property ro(G getter) {
  return {[getter](Tcl_Obj* h) { return str(getter(nativeOf<T>(h))); }, nullptr};
}
template <class T, class G, class S>
Property rw(G getter, S setter) {
  return {[getter](Tcl_Obj* h) { return str(getter(nativeOf<T>(h))); },
          [setter](Tcl_Obj* h, std::string const& v) { setter(nativeOf<T>(h), v); }};
}

PropertyTable const& propertiesOf(Kind kind) {
  using B = HABMBlock;
  using S = HABMAddrSpace;
  using AB = HABMAddrBlock;
  using AA = HABMAddrAssign;
  using NI = HABMNocInterface;
  using NC = HABMNocConnection;
  static std::map<Kind, PropertyTable> const tables = {
      {Kind::BLOCK,
       {{"module_name", rw<B>([](B& b) { return b.getModuleName(); },
                              [](B& b, std::string const& v) { b.setModuleName(v); })},
        {"vlnv", rw<B>([](B& b) { return b.getModuleVlnv(); },
                       [](B& b, std::string const& v) { b.setModuleVlnv(v); })},
        {"instance_name", ro<B>([](B& b) { return b.getInstanceName(); })},
        {"path", ro<B>([](B& b) { return b.getInstancePath(); })},
        {"depth", ro<B>([](B& b) { return std::to_string(b.getInstanceDepth()); })}}},
      {Kind::ADDR_SPACE,
       {{"name", ro<S>([](S& s) { return s.getName(); })},
        {"path", ro<S>([](S& s) { return s.getPath(); })},
        {"range", rw<S>([](S& s) { return s.getRange().getHexStringValue(); },
                        [](S& s, std::string const& v) { s.setRange(addr(v)); })}}},
      {Kind::ADDR_BLOCK,
       {{"name", ro<AB>([](AB& a) { return a.getName(); })},
        {"path", ro<AB>([](AB& a) { return a.getPath(); })},
        {"memory_map", ro<AB>([](AB& a) { return a.getParent()->getName(); })},
        {"aperture", rw<AB>([](AB& a) { return a.getAperture().getBaseAbrvString(); },
                            [](AB& a, std::string const& v) { a.setAperture(aperture(v)); })},
        {"memory_type", rw<AB>([](AB& a) { return AB::decodeMemoryType(a.getMemoryType()); },
                               [](AB& a, std::string const& v) {
                                 a.setMemoryType(
                                     encoded(AB::encodeMemoryType(v), AB::TYPE_UNKNOWN, v, "memory type"));
                               })},
        {"access", rw<AB>([](AB& a) { return AB::decodeMemoryAccess(a.getMemoryAccess()); },
                          [](AB& a, std::string const& v) {
                            a.setMemoryAccess(
                                encoded(AB::encodeMemoryAccess(v), AB::ACCESS_UNKNOWN, v, "memory access"));
                          })}}},
      {Kind::ADDR_ASSIGN,
       {{"name", ro<AA>([](AA& a) { return a.getName(); })},
        {"path", ro<AA>([](AA& a) { return a.getPath(); })},
        {"type", rw<AA>([](AA& a) { return AA::decodeAssignType(a.getAssignType()); },
                        [](AA& a, std::string const& v) {
                          a.setAssignType(
                              encoded(AA::encodeAssignType(v), AA::TYPE_UNKNOWN, v, "assignment type"));
                        })},
        {"aperture", rw<AA>([](AA& a) { return a.getAperture().getBaseAbrvString(); },
                            [](AA& a, std::string const& v) { a.setAperture(aperture(v)); })},
        {"source_path", rw<AA>([](AA& a) { return a.getSourcePath(false); },
                               [](AA& a, std::string const& v) {
                                 if (!a.setSourcePath(v)) {
                                   throw TclError("not a path inside the block: \"" + v + "\"");
                                 }
                               })},
        {"target_path", rw<AA>([](AA& a) { return a.getTargetPath(false); },
                               [](AA& a, std::string const& v) {
                                 if (!a.setTargetPath(v)) {
                                   throw TclError("not a path inside the block: \"" + v + "\"");
                                 }
                               })}}},
      {Kind::NOC_INTERFACE,
       {{"name", ro<NI>([](NI& n) { return n.getName(); })},
        {"path", ro<NI>([](NI& n) { return n.getPath(); })},
        {"mode", rw<NI>([](NI& n) { return NI::decodeNocMode(n.getNocMode()); },
                        [](NI& n, std::string const& v) {
                          n.setNocMode(encoded(NI::encodeNocMode(v), NI::MODE_UNKNOWN, v, "NoC mode"));
                        })},
        {"protocol", rw<NI>([](NI& n) { return NI::decodeNocProtocol(n.getNocProtocol()); },
                            [](NI& n, std::string const& v) {
                              n.setNocProtocol(
                                  encoded(NI::encodeNocProtocol(v), NI::PROTOCOL_UNKNOWN, v, "NoC protocol"));
                            })},
        {"category", rw<NI>([](NI& n) { return NI::decodeNocCategory(n.getNocCategory()); },
                            [](NI& n, std::string const& v) {
                              n.setNocCategory(
                                  encoded(NI::encodeNocCategory(v), NI::CATEGORY_UNKNOWN, v, "NoC category"));
                            })},
        {"location", rw<NI>([](NI& n) { return n.getLocation(); },
                            [](NI& n, std::string const& v) {
                              std::string error;
                              if (!n.setLocation(v, error)) {
                                throw TclError(error);
                              }
                            })},
        {"tdest_id", rw<NI>([](NI& n) { return n.getTdestId(); },
                            [](NI& n, std::string const& v) {
                              std::string error;
                              if (!n.setTdestId(v, error)) {
                                throw TclError(error);
                              }
                            })},
        {"memory_map_ref", rw<NI>([](NI& n) { return n.getMemoryMapRef(); },
                                  [](NI& n, std::string const& v) { n.setMemoryMapRef(v); })},
        {"editable", rw<NI>([](NI& n) { return std::string(n.getEditable() ? "1" : "0"); },
                            [](NI& n, std::string const& v) { n.setEditable(v == "1" || v == "true"); })}}},
      {Kind::NOC_CONNECTION,
       {{"name", ro<NC>([](NC& c) { return c.getName(); })},
        {"path", ro<NC>([](NC& c) { return c.getPath(); })},
        {"source_path", ro<NC>([](NC& c) { return c.getSourcePath(false); })},
        {"target_path", ro<NC>([](NC& c) { return c.getTargetPath(false); })},
        {"is_primary", ro<NC>([](NC& c) { return std::string(c.isPrimary() ? "1" : "0"); })},
        {"editable", rw<NC>([](NC& c) { return std::string(c.getEditable() ? "1" : "0"); },
                            [](NC& c, std::string const& v) { c.setEditable(v == "1" || v == "true"); })}}},
  };
  return tables.at(kind);
}

Property const& property(Tcl_Obj* h, std::string const& name) {
  PropertyTable const& table = propertiesOf(recordOf(h).kind);
  auto p = table.find(name);
  if (p == table.end()) {
    throw TclError("no property \"" + name + "\" on a " + kindText(recordOf(h).kind));
  }
  return p->second;
}

Tcl_Obj* parametersOf(Tcl_Obj* h) {
  switch (recordOf(h).kind) {
    case Kind::BLOCK:
      return namedValues(nativeOf<HABMBlock>(h).getParameters());
    case Kind::NOC_INTERFACE:
      return namedValues(nativeOf<HABMNocInterface>(h).getParameters());
    case Kind::NOC_CONNECTION:
      return namedValues(nativeOf<HABMNocConnection>(h).getParameters());
    case Kind::ADDR_SPACE:
    case Kind::ADDR_BLOCK:
    case Kind::ADDR_ASSIGN:
      break;
  }
  throw TclError(std::string("a ") + kindText(recordOf(h).kind) + " has no parameters");
}

void setParameterOf(Tcl_Obj* h, std::string const& name, std::string const& value) {
  HABMParameter* set = nullptr;
  switch (recordOf(h).kind) {
    case Kind::BLOCK:
      set = nativeOf<HABMBlock>(h).setParameter(name, value, true);
      break;
    case Kind::NOC_INTERFACE:
      set = nativeOf<HABMNocInterface>(h).setParameter(name, value, true);
      break;
    case Kind::NOC_CONNECTION:
      set = nativeOf<HABMNocConnection>(h).setParameter(name, value, true);
      break;
    case Kind::ADDR_SPACE:
    case Kind::ADDR_BLOCK:
    case Kind::ADDR_ASSIGN:
      throw TclError(std::string("a ") + kindText(recordOf(h).kind) + " has no parameters");
  }
  if (set == nullptr) {
    throw TclError("refused parameter name \"" + name + "\"");
  }
}

Tcl_Obj* parentOf(Tcl_Obj* h) {
  switch (recordOf(h).kind) {
    case Kind::BLOCK:
      return handleOf<HABMBlock>(nativeOf<HABMBlock>(h).getParent());
    case Kind::ADDR_SPACE:
      return handleOf<HABMBlock>(nativeOf<HABMAddrSpace>(h).getParent());
    case Kind::ADDR_BLOCK:
      return handleOf<HABMBlock>(nativeOf<HABMAddrBlock>(h).getParent()->getParent());
    case Kind::ADDR_ASSIGN:
      return handleOf<HABMBlock>(nativeOf<HABMAddrAssign>(h).getParent());
    case Kind::NOC_INTERFACE:
      return handleOf<HABMBlock>(nativeOf<HABMNocInterface>(h).getParent());
    case Kind::NOC_CONNECTION:
      return handleOf<HABMBlock>(nativeOf<HABMNocConnection>(h).getParent());
  }
  return Tcl_NewObj();
}

Tcl_Obj* portInfo(HABMPort const& p) {
  return dictOf({{"name", str(p.getPortName())},
                 {"path", str(p.getPortPath())},
                 {"direction", str(HABMPort::decodePortDirection(p.getPortDirection()))},
                 {"type", str(HABMPort::decodePortType(p.getPortType()))},
                 {"left", Tcl_NewWideIntObj(p.getPortLeft())},
                 {"right", Tcl_NewWideIntObj(p.getPortRight())},
                 {"width", Tcl_NewWideIntObj(static_cast<Tcl_WideInt>(p.getPortWidth()))}});
}

Tcl_Obj* interfaceInfo(HABMInterface const& i) {
  return dictOf({{"name", str(i.getInterfaceName())},
                 {"path", str(i.getInterfacePath())},
                 {"vlnv", str(i.getInterfaceVlnv())},
                 {"mode", str(HABMInterface::decodeInterfaceMode(i.getInterfaceMode()))},
                 {"type", str(HABMInterface::decodeInterfaceType(i.getInterfaceType()))},
                 {"memory_map_ref", str(i.getMemoryMapRef())},
                 {"addr_space_ref", str(i.getAddrSpaceRef())}});
}

template <class V, class N>
std::vector<std::string> namesOf(std::vector<V*> const& items, N name) {
  std::vector<std::string> out;
  for (V* item : items) {
    out.push_back(name(*item));
  }
  return out;
}

Tcl_Obj* readTree(Call const& c) {
  Messages messages;
  std::unique_ptr<HABMBlock> top = HABMBlock::readTopBlock(HUTFile(c.text(0)));
  if (!top || (!c.flag(1, "-lenient") && messages.hasErrors())) {
    throw TclError("could not read \"" + c.text(0) + "\": " + messages.joined());
  }
  HABMBlock const* native = top.get();
  ownTree(std::move(top));
  return handleOf(native);
}

Tcl_Obj* adopt(std::unique_ptr<HABMBlock> top) {
  if (!top) {
    return Tcl_NewObj();
  }
  HABMBlock const* native = top.get();
  ownTree(std::move(top));
  return handleOf(native);
}

Tcl_Obj* addrOp(Call const& c) {
  std::string const op = c.text(0);
  HABMAddrValue const a = addr(c.text(1));
  if (op == "not") {
    return str((~HABMAddrValue(a)).getHexStringValue());
  }
  if (op == "format") {
    return str(a.getPrettyHexStringValue());
  }
  if (c.count() < 3) {
    throw TclError("addr " + op + " needs two values");
  }
  if (op == "shl" || op == "shr") {
    int n = 0;
    if (Tcl_GetIntFromObj(nullptr, c.obj(2), &n) != TCL_OK) {
      throw TclError("not a shift count: \"" + c.text(2) + "\"");
    }
    return str((op == "shl" ? a << n : a >> n).getHexStringValue());
  }
  HABMAddrValue const b = addr(c.text(2));
  static std::map<std::string, std::function<HABMAddrValue(HABMAddrValue const&, HABMAddrValue const&)>> const
      ops = {{"add", [](auto const& x, auto const& y) { return x + y; }},
             {"sub", [](auto const& x, auto const& y) { return x - y; }},
             {"mul", [](auto const& x, auto const& y) { return x * y; }},
             {"div", [](auto const& x, auto const& y) { return x / y; }},
             {"mod", [](auto const& x, auto const& y) { return x % y; }},
             {"and", [](auto const& x, auto const& y) { return x & y; }},
             {"or", [](auto const& x, auto const& y) { return x | y; }},
             {"xor", [](auto const& x, auto const& y) { return x ^ y; }}};
  if (op == "cmp") {
    return Tcl_NewIntObj(a < b ? -1 : (b < a ? 1 : 0));
  }
  auto f = ops.find(op);
  if (f == ops.end()) {
    throw TclError("unknown addr operation \"" + op +
                   "\": must be add, sub, mul, div, mod, and, or, xor, shl, shr, not, cmp or format");
  }
  return str(f->second(a, b).getHexStringValue());
}

Tcl_Obj* apertureOp(Call const& c) {
  std::string const op = c.text(0);
  HABMAddrAperture const a = aperture(c.text(1));
  if (op == "base") {
    return str(a.getBaseAddress().getHexStringValue());
  }
  if (op == "range") {
    return str(a.getRange().getHexStringValue());
  }
  if (op == "high") {
    return str(a.getHighAddress().getHexStringValue());
  }
  if (c.count() < 3) {
    throw TclError("aperture " + op + " needs a second argument");
  }
  if (op == "contains") {
    HABMAddrValue const v = addr(c.text(2));
    return boolean(v >= a.getBaseAddress() && v <= a.getHighAddress());
  }
  HABMAddrAperture const b = aperture(c.text(2));
  if (op == "overlaps") {
    return boolean(a.overlaps(b));
  }
  if (op == "intersection") {
    return str(a.intersection(b).getBaseAbrvString());
  }
  if (op == "union") {
    return str(a.unification(b).getBaseAbrvString());
  }
  throw TclError("unknown aperture operation \"" + op +
                 "\": must be base, range, high, contains, overlaps, intersection or union");
}

struct Command {
  char const* name;
  int minArgs;
  int maxArgs;
  char const* usage;
  std::function<Tcl_Obj*(Call const&)> run;
};

using Blk = HABMBlock;

std::vector<Command> const& commands() {
  static std::vector<Command> const table = {
      // Files and top blocks.
      {"read_top_block", 1, 2, "path ?-lenient?", readTree},
      {"write_top_block", 2, 2, "block path",
       [](Call const& c) {
         Messages messages;
         if (!HABMBlock::writeTopBlock(HUTFile(c.text(1)), c.block(0), true)) {
           throw TclError("could not write \"" + c.text(1) + "\": " + messages.joined());
         }
         return Tcl_NewObj();
       }},
      {"create_top_block", 1, 1, "module_name", [](Call const& c) { return adopt(HABMBlock::createTopBlock(c.text(0))); }},
      {"clone_top_block", 1, 1, "block", [](Call const& c) { return adopt(HABMBlock::cloneTopBlock(c.block(0))); }},
      {"delete_top_block", 1, 1, "block",
       [](Call const& c) {
         if (!dropTree(&c.block(0))) {
           throw TclError("\"" + c.text(0) + "\" is not a top block of this package: remove it from its parent");
         }
         return Tcl_NewObj();
       }},
      // Any handle.
      {"get_property", 2, 2, "handle name", [](Call const& c) { return property(c.obj(0), c.text(1)).get(c.obj(0)); }},
      {"set_property", 3, 3, "handle name value",
       [](Call const& c) {
         Property const& p = property(c.obj(0), c.text(1));
         if (!p.set) {
           throw TclError("property \"" + c.text(1) + "\" is read-only");
         }
         p.set(c.obj(0), c.text(2));
         return Tcl_NewObj();
       }},
      {"report_properties", 1, 1, "handle",
       [](Call const& c) {
         Tcl_Obj* out = Tcl_NewDictObj();
         for (auto const& [name, p] : propertiesOf(recordOf(c.obj(0)).kind)) {
           Tcl_DictObjPut(nullptr, out, str(name), p.get(c.obj(0)));
         }
         return out;
       }},
      {"get_kind", 1, 1, "handle", [](Call const& c) { return str(kindWord(recordOf(c.obj(0)).kind)); }},
      {"is_valid", 1, 1, "handle",
       [](Call const& c) {
         try {
           return boolean(recordOf(c.obj(0)).native != nullptr);
         } catch (TclError const&) {
           return boolean(false);
         }
       }},
      {"get_parent", 1, 1, "handle", [](Call const& c) { return parentOf(c.obj(0)); }},
      {"get_parameters", 1, 1, "handle", [](Call const& c) { return parametersOf(c.obj(0)); }},
      {"set_parameter", 3, 3, "handle name value",
       [](Call const& c) {
         setParameterOf(c.obj(0), c.text(1), c.text(2));
         return Tcl_NewObj();
       }},
      // Sub-blocks.
      {"create_sub_block", 3, 3, "block instance_name module_name",
       [](Call const& c) {
         return handleOf(made(c.block(0).createSubBlock(c.text(1), c.text(2), false), c.block(0), "sub-block", c.text(1)));
       }},
      {"get_sub_block", 2, 2, "block name", [](Call const& c) { return handleOf(c.block(0).getSubBlock(c.text(1))); }},
      {"get_sub_blocks", 1, 1, "block", [](Call const& c) { return handles(c.block(0).getSubBlocks()); }},
      {"find_sub_block", 2, 2, "block path", [](Call const& c) { return handleOf(c.block(0).findSubBlock(c.text(1), true)); }},
      {"find_sub_blocks", 1, 2, "block ?pattern?",
       [](Call const& c) { return handles(c.block(0).findSubBlocks(c.count() > 1 ? c.text(1) : "", true)); }},
      {"remove_sub_block", 2, 2, "block name", [](Call const& c) { return adopt(c.block(0).removeSubBlock(c.text(1))); }},
      {"clear_sub_blocks", 1, 1, "block",
       [](Call const& c) {
         c.block(0).clearSubBlocks();
         return Tcl_NewObj();
       }},
      // Attributes.
      {"get_attributes", 1, 1, "block", [](Call const& c) { return namedValues(c.block(0).getAttributes()); }},
      {"set_attribute", 3, 3, "block name value",
       [](Call const& c) {
         made(c.block(0).setAttribute(c.text(1), c.text(2), true), c.block(0), "attribute", c.text(1));
         return Tcl_NewObj();
       }},
      {"remove_attribute", 2, 2, "block name", [](Call const& c) { return boolean(c.block(0).removeAttribute(c.text(1))); }},
      // Ports and port connections, by name.
      {"create_port", 2, 5, "block name ?direction? ?left right?",
       [](Call const& c) {
         std::string const direction = c.count() > 2 ? c.text(2) : "in";
         auto const dir = encoded(HABMPort::encodePortDirection(direction), HABMPort::DIR_UNKNOWN, direction,
                                  "port direction");
         HABMPort* p = made(c.block(0).createPort(c.text(1), false), c.block(0), "port", c.text(1));
         p->setPortDirection(dir);
         if (c.count() > 4) {
           p->setPortType(HABMPort::TYPE_VECTOR);
           p->setPortLeft(static_cast<std::uint32_t>(std::stoul(c.text(3))));
           p->setPortRight(static_cast<std::uint32_t>(std::stoul(c.text(4))));
         }
         return portInfo(*p);
       }},
      {"get_ports", 1, 1, "block",
       [](Call const& c) { return listOf(namesOf(c.block(0).getPorts(), [](HABMPort& p) { return p.getPortName(); })); }},
      {"get_port", 2, 2, "block name", [](Call const& c) { return portInfo(found(c.block(0).getPort(c.text(1)), "port", c.text(1))); }},
      {"remove_port", 2, 2, "block name", [](Call const& c) { return boolean(c.block(0).removePort(c.text(1))); }},
      {"clear_ports", 1, 1, "block",
       [](Call const& c) {
         c.block(0).clearPorts();
         return Tcl_NewObj();
       }},
      {"connect_ports", 3, 4, "block source targets ?-force?",
       [](Call const& c) {
         std::vector<std::string> const targets = c.list(2);
         HABMPortConnection* made = c.block(0).createPortConnection(
             c.text(1), std::set<std::string>(targets.begin(), targets.end()), c.flag(3, "-force"));
         if (made == nullptr) {
           throw TclError("cannot connect " + c.text(1) + " to " + c.text(2));
         }
         return str(made->getName());
       }},
      {"get_port_connections", 1, 1, "block",
       [](Call const& c) {
         Tcl_Obj* out = Tcl_NewDictObj();
         for (HABMPortConnection* pc : c.block(0).getPortConnections()) {
           std::set<std::string> const targets = pc->getTargetPaths(false);
           Tcl_DictObjPut(nullptr, out, str(pc->getName()),
                          dictOf({{"source", str(pc->getSourcePath(false))},
                                  {"targets", listOf(std::vector<std::string>(targets.begin(), targets.end()))}}));
         }
         return out;
       }},
      {"remove_port_connection", 2, 2, "block name",
       [](Call const& c) { return boolean(c.block(0).removePortConnection(c.text(1))); }},
      // Bus interfaces and their links, by name.
      {"create_interface", 4, 4, "block name vlnv mode",
       [](Call const& c) {
         auto const mode = encoded(HABMInterface::encodeInterfaceMode(c.text(3)), HABMInterface::MODE_UNKNOWN,
                                   c.text(3), "interface mode");
         HABMInterface* i = made(c.block(0).createInterface(c.text(1), false), c.block(0), "interface", c.text(1));
         i->setInterfaceVlnv(c.text(2));
         i->setInterfaceMode(mode);
         return interfaceInfo(*i);
       }},
      {"get_interfaces", 1, 1, "block",
       [](Call const& c) {
         return listOf(namesOf(c.block(0).getInterfaces(), [](HABMInterface& i) { return i.getInterfaceName(); }));
       }},
      {"get_interface", 2, 2, "block name",
       [](Call const& c) { return interfaceInfo(found(c.block(0).getInterface(c.text(1)), "interface", c.text(1))); }},
      {"remove_interface", 2, 2, "block name", [](Call const& c) { return boolean(c.block(0).removeInterface(c.text(1))); }},
      {"get_interface_connections", 1, 1, "block",
       [](Call const& c) {
         Tcl_Obj* out = Tcl_NewDictObj();
         for (HABMInterfaceConnection* ic : c.block(0).getInterfaceConnections()) {
           Tcl_DictObjPut(nullptr, out, str(ic->getName()),
                          dictOf({{"source", str(ic->getSourcePath(false))}, {"target", str(ic->getTargetPath(false))}}));
         }
         return out;
       }},
      // Address spaces and segments.
      {"create_addr_space", 2, 2, "block name",
       [](Call const& c) {
         return handleOf(made(c.block(0).createAddrSpace(c.text(1)), c.block(0), "address space", c.text(1)));
       }},
      {"get_addr_space", 2, 2, "block name", [](Call const& c) { return handleOf(c.block(0).getAddrSpace(c.text(1))); }},
      {"get_addr_spaces", 1, 1, "block", [](Call const& c) { return handles(c.block(0).getAddrSpaces()); }},
      {"remove_addr_space", 2, 2, "block name", [](Call const& c) { return boolean(c.block(0).removeAddrSpace(c.text(1))); }},
      {"clear_addr_spaces", 1, 1, "block",
       [](Call const& c) {
         c.block(0).clearAddrSpaces();
         return Tcl_NewObj();
       }},
      {"create_addr_segment", 3, 3, "addr_space name aperture",
       [](Call const& c) {
         HABMAddrSegment* s = c.handle<HABMAddrSpace>(0).createAddrSegment(c.text(1));
         if (s == nullptr) {
           throw TclError("refused segment name \"" + c.text(1) + "\"");
         }
         s->setAperture(aperture(c.text(2)));
         return str(s->getName());
       }},
      {"get_addr_segments", 1, 1, "addr_space",
       [](Call const& c) {
         Tcl_Obj* out = Tcl_NewDictObj();
         for (HABMAddrSegment* s : c.handle<HABMAddrSpace>(0).getAddrSegments()) {
           Tcl_DictObjPut(nullptr, out, str(s->getName()), str(s->getAperture().getBaseAbrvString()));
         }
         return out;
       }},
      // Memory maps (by name) and their address blocks.
      {"create_memory_map", 2, 2, "block name",
       [](Call const& c) { return str(made(c.block(0).createMemoryMap(c.text(1)), c.block(0), "memory map", c.text(1))->getName()); }},
      {"get_memory_maps", 1, 1, "block",
       [](Call const& c) { return listOf(namesOf(c.block(0).getMemoryMaps(), [](HABMMemoryMap& m) { return m.getName(); })); }},
      {"remove_memory_map", 2, 2, "block name", [](Call const& c) { return boolean(c.block(0).removeMemoryMap(c.text(1))); }},
      {"create_addr_block", 3, 3, "block memory_map name",
       [](Call const& c) {
         HABMMemoryMap& map = found(c.block(0).getMemoryMap(c.text(1)), "memory map", c.text(1));
         return handleOf(made(map.createAddrBlock(c.text(2)), c.block(0), "address block", c.text(2)));
       }},
      {"get_addr_blocks", 2, 2, "block memory_map",
       [](Call const& c) { return handles(found(c.block(0).getMemoryMap(c.text(1)), "memory map", c.text(1)).getAddrBlocks()); }},
      {"remove_addr_block", 3, 3, "block memory_map name",
       [](Call const& c) {
         return boolean(found(c.block(0).getMemoryMap(c.text(1)), "memory map", c.text(1)).removeAddrBlock(c.text(2)));
       }},
      // Address assignments.
      {"create_addr_assign", 1, 2, "block ?name?",
       [](Call const& c) {
         std::string const name = c.count() > 1 ? c.text(1) : "";
         return handleOf(made(c.block(0).createAddrAssign(name), c.block(0), "address assignment", name));
       }},
      {"get_addr_assigns", 1, 1, "block", [](Call const& c) { return handles(c.block(0).getAddrAssigns()); }},
      {"remove_addr_assign", 2, 2, "block name", [](Call const& c) { return boolean(c.block(0).removeAddrAssign(c.text(1))); }},
      {"clear_addr_assigns", 1, 1, "block",
       [](Call const& c) {
         c.block(0).clearAddrAssigns();
         return Tcl_NewObj();
       }},
      // NoC interfaces, connections and paths.
      {"create_noc_interface", 2, 2, "block name",
       [](Call const& c) {
         std::string error;
         HABMNocInterface* made = c.block(0).createNocInterface(c.text(1), error);
         if (made == nullptr) {
           throw TclError(error);
         }
         return handleOf(made);
       }},
      {"get_noc_interface", 2, 2, "block name", [](Call const& c) { return handleOf(c.block(0).getNocInterface(c.text(1))); }},
      {"get_noc_interfaces", 1, 1, "block", [](Call const& c) { return handles(c.block(0).getNocInterfaces(false)); }},
      {"find_noc_interface", 2, 2, "block path", [](Call const& c) { return handleOf(c.block(0).findNocInterface(c.text(1), true)); }},
      {"find_noc_interfaces", 1, 2, "block ?pattern?",
       [](Call const& c) { return handles(c.block(0).findNocInterfaces(c.count() > 1 ? c.text(1) : "", true, false)); }},
      {"remove_noc_interface", 2, 2, "block name", [](Call const& c) { return boolean(c.block(0).removeNocInterface(c.text(1))); }},
      {"clear_noc_interfaces", 1, 1, "block",
       [](Call const& c) {
         c.block(0).clearNocInterfaces();
         return Tcl_NewObj();
       }},
      {"connect_noc", 3, 4, "block source target ?-force?",
       [](Call const& c) {
         std::string error;
         HABMNocConnection* made = c.block(0).createNocConnection(c.text(1), c.text(2), error, c.flag(3, "-force"));
         if (made == nullptr) {
           throw TclError(error.empty() ? "cannot connect " + c.text(1) + " to " + c.text(2) : error);
         }
         return handleOf(made);
       }},
      {"get_noc_connection", 2, 2, "block name", [](Call const& c) { return handleOf(c.block(0).getNocConnection(c.text(1))); }},
      {"get_noc_connections", 1, 1, "block", [](Call const& c) { return handles(c.block(0).getNocConnections(false)); }},
      {"find_noc_connections", 1, 2, "block ?pattern?",
       [](Call const& c) { return handles(c.block(0).findNocConnections(c.count() > 1 ? c.text(1) : "", true, false)); }},
      {"remove_noc_connection", 2, 2, "block name", [](Call const& c) { return boolean(c.block(0).removeNocConnection(c.text(1))); }},
      {"clear_noc_connections", 1, 1, "block",
       [](Call const& c) {
         c.block(0).clearNocConnections();
         return Tcl_NewObj();
       }},
      {"get_noc_paths", 1, 1, "block",
       [](Call const& c) {
         Tcl_Obj* out = Tcl_NewListObj(0, nullptr);
         for (HABMNocPath const& path : HABMNocPath::createNocPaths(&c.block(0))) {
           Tcl_ListObjAppendElement(nullptr, out,
                                    dictOf({{"name", str(path.getName())},
                                            {"connections", handles(path.getNocConnections())},
                                            {"interfaces", handles(path.getNocInterfaces())},
                                            {"nmu", handleOf(path.getNmuInterface())},
                                            {"nsu", handleOf(path.getNsuInterface())},
                                            {"primary", handleOf(path.getPrimaryConnection())},
                                            {"complete", boolean(path.isCompletePath())}}));
         }
         return out;
       }},
      // Checks and writers.
      {"validate_all", 1, 1, "block",
       [](Call const& c) {
         Messages messages;
         bool const passed = HABMBlockChecker::validate_all(c.block(0));
         Tcl_Obj* findings = Tcl_NewListObj(0, nullptr);
         for (ComMsgRecord const& r : messages.records) {
           if (r.shape == ComMsgShape::DEFERRED) {
             Tcl_ListObjAppendElement(nullptr, findings,
                                      dictOf({{"severity", str(ComMsgMgr::severityWord(r.mask))},
                                              {"id", str(r.catalogueId())},
                                              {"text", str(r.text)}}));
           }
         }
         return dictOf({{"passed", boolean(passed)}, {"findings", findings}});
       }},
      {"check", 1, 1, "block", [](Call const& c) { return listOf(c.block(0).check()); }},
      {"write_stub", 2, 2, "block path",
       [](Call const& c) {
         Messages messages;
         if (!HABMVlogWriter::writeStub(HUTFile(c.text(1)), c.block(0), true)) {
           throw TclError("could not write the stub: " + messages.joined());
         }
         return Tcl_NewObj();
       }},
      {"write_wrapper", 2, 2, "block path",
       [](Call const& c) {
         Messages messages;
         if (!HABMSVlogWriter::writeSVEO(c.text(1), c.block(0))) {
           throw TclError("could not write the wrapper: " + messages.joined());
         }
         return Tcl_NewObj();
       }},
      {"write_constraints", 2, 3, "block path ?skip_paths?",
       [](Call const& c) {
         Messages messages;
         std::vector<std::string> const skip = c.count() > 2 ? c.list(2) : std::vector<std::string>();
         if (!HABMXdcWriter::writeXdc(c.block(0), HUTFile(c.text(1)), true, skip)) {
           throw TclError("could not write the constraints: " + messages.joined());
         }
         return Tcl_NewObj();
       }},
      // Address values and apertures as texts.
      {"addr", 2, 3, "operation value ?value?", addrOp},
      {"aperture", 2, 3, "operation aperture ?aperture-or-value?", apertureOp},
      // For tests of the caches themselves.
      {"debug_cache_state", 0, 0, "", [](Call const&) { return cacheState(); }},
      {"debug_cache_errors", 0, 0, "", [](Call const&) { return cacheErrors(); }},
      {"debug_unlink", 1, 1, "handle",
       [](Call const& c) {
         unlinkHandle(c.obj(0));
         return Tcl_NewObj();
       }},
      {"debug_report_at_exit", 0, 0, "",
       [](Call const&) {
         reportAtExit();
         return Tcl_NewObj();
       }},
  };
  return table;
}

int dispatch(ClientData data, Tcl_Interp* interp, int objc, Tcl_Obj* const objv[]) {
  auto const* command = static_cast<Command const*>(data);
  Call const call(interp, objc, objv);
  if (call.count() < command->minArgs || call.count() > command->maxArgs) {
    Tcl_WrongNumArgs(interp, 1, objv, command->usage);
    return TCL_ERROR;
  }
  // No exception may cross into Tcl: every failure becomes the command's error result.
  try {
    Tcl_SetObjResult(interp, command->run(call));
    return TCL_OK;
  } catch (TclError const& e) {
    Tcl_SetObjResult(interp, Tcl_NewStringObj(e.what(), -1));
  } catch (std::exception const& e) {
    Tcl_SetObjResult(interp, Tcl_ObjPrintf("blockmodel::%s: %s", command->name, e.what()));
  }
  return TCL_ERROR;
}

}  // namespace
}  // namespace bmtcl

extern "C" {

/// The package's entry point, called by `load` (through `package require blockmodel`).
int Blockmodel_Init(Tcl_Interp* interp) {
  if (Tcl_PkgRequire(interp, "Tcl", "8.6", 0) == nullptr) {
    return TCL_ERROR;
  }
  bmtcl::installCacheHooks();
  Tcl_Eval(interp, "namespace eval ::blockmodel {}");
  for (bmtcl::Command const& command : bmtcl::commands()) {
    std::string const name = std::string("::blockmodel::") + command.name;
    Tcl_CreateObjCommand(
        interp, name.c_str(), &bmtcl::dispatch,
        const_cast<bmtcl::Command*>(&command),  // NOLINT(cppcoreguidelines-pro-type-const-cast)
        nullptr);
  }
  return Tcl_PkgProvide(interp, "blockmodel", MZ_VERSION);
}

}  // extern "C"
