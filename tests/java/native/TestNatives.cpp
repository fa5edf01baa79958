// TestNatives.cpp: native methods of ui.data.blockmodel.TestNatives, which only the Java tests load. They
// make and free designs, values the 119 entry points cannot make, and exceptions of every kind, all
// through the same glue as the real entry points.
#include "blockmodel/HABMAddrAperture.h"
#include "blockmodel/HABMBlock.h"
#include "blockmodel/bindings/HABMJniGlue.h"
#include "blockmodel/bindings/HABMJniTypes.h"
#include "exception/HEXAll.h"
#include "msg/ComMsgMgr.h"
#include "util/HUTFile.h"

#include <cstdint>
#include <memory>
#include <new>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

std::int32_t echoCount = 0;

// One-line helpers, as static members.
struct N {
  using S = std::string const&;
  static HABMBlock* readTopBlock(S path) { return HABMBlock::readTopBlock(HUTFile(path)).release(); }
  static HABMBlock* createTopBlock(S module) { return HABMBlock::createTopBlock(module).release(); }
  static HABMBlock* createSubBlock(HABMBlock& p, S i, S m) { return p.createSubBlock(i, m, false); }
  static void deleteTopBlock(HABMBlock* top) { delete top; }
  static std::string echo(S text) { return ++echoCount, text; }
  static std::int32_t echoCalls() { return echoCount; }
  static HABMAddrAperture makeAperture(S text) { return HABMAddrAperture(text); }
};

std::string utf8Hex(std::string const& text) {
  std::ostringstream out;
  out << std::hex;
  for (char c : text) {
    out << static_cast<unsigned>(static_cast<unsigned char>(c)) << ' ';
  }
  return out.str();
}

/// Throws, by kind: a message, an empty HEXAll, bad_alloc, a standard exception, then anything else.
void throwKind(unsigned int kind, std::string const& text) {
  switch (kind) {
    case 0:
      throw HEXAll(
          ComMsgMgrInstance::createInstance::eval(1, __FILE__, __LINE__, "test", COM_MSG_ERROR, "%s", text));
    case 1:
      throw HEXAll();
    case 2:
      throw std::bad_alloc();
    case 3:
      throw std::runtime_error(text);
  }
  throw 42;
}

/// Apertures from their texts, separated by blanks.
std::set<HABMAddrAperture> makeApertures(std::string const& texts) {
  std::set<HABMAddrAperture> apertures;
  std::istringstream in(texts);
  for (std::string text; in >> text;) {
    apertures.insert(HABMAddrAperture(text));
  }
  return apertures;
}
std::string aperturesText(std::set<HABMAddrAperture> const& apertures) {
  std::string text;
  for (HABMAddrAperture const& aperture : apertures) {
    text += (text.empty() ? "" : " ") + aperture.getBaseAbrvString();
  }
  return text;
}

}  // namespace

using habm_jni::Function;
using ParameterVector = std::vector<HABMParameter*>;

#define TN(NAME, N, ...) HABM_JNI_ENTRY(Java_ui_data_blockmodel_TestNatives_##NAME, N, __VA_ARGS__)

TN(readTopBlock, 1, Function<&N::readTopBlock>)
TN(createTopBlock, 1, Function<&N::createTopBlock>)
TN(createSubBlock, 3, Function<&N::createSubBlock>)
TN(deleteTopBlock, 1, Function<&N::deleteTopBlock>)
TN(echo, 1, Function<&N::echo>)
TN(echoCalls, 0, Function<&N::echoCalls>)
TN(utf8Hex, 1, Function<&utf8Hex>)
TN(throwKind, 2, Function<&throwKind>)
TN(makeAperture, 1, Function<&N::makeAperture>)
TN(makeApertures, 1, Function<&makeApertures>)
TN(aperturesText, 1, Function<&aperturesText>)
TN(parameterCount, 1, Function<&habm_jni::size<ParameterVector>>)
TN(deleteParameters, 1, Function<&habm_jni::destroy<ParameterVector>>)
